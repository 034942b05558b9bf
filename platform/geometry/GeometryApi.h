#pragma once

// Geometry stands below the run-time room and so carries its own mark for what the library shows.
#define VELDRIN_GEOMETRY_API __attribute__((visibility("default")))
