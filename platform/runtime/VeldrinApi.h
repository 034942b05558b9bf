#pragma once

// Marks what the shared host library shows to the program and to modules. Everything else in it is
// hidden, so exception types and class descriptors that cross the border must carry this mark too.
#define VELDRIN_API __attribute__((visibility("default")))
