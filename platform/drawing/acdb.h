#pragma once

#include "drawing/AcDbObjectId.h"

// Small services over the current drawing that are plain functions.

// Name of a status for messages: "eWasErased". Never null.
VELDRIN_API const char* acadErrorStatusText(Acad::ErrorStatus status);
