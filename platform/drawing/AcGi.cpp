#include "drawing/AcGi.h"

AcGiDrawable::~AcGiDrawable() = default;
