#pragma once

#include "dao/COleVariant.h"

namespace plumb {

// Tagged values as text and numbers, and made from them. A value of a type that is not named gives nothing:
// an empty text, 0, false.

// Singles and doubles have at most that many decimals, and commas between groups; yes/no is "-1" or "0";
// trailing blanks of a text are dropped.
CString VariantToText(const COleVariant& value, int decimals);
long VariantToLong(const COleVariant& value);     // singles and doubles are cut towards zero
double VariantToDouble(const COleVariant& value); // yes/no is 0
bool VariantToBool(const COleVariant& value);     // true for a yes/no of -1 alone

COleVariant MakeLongVariant(long value);
COleVariant MakeTextVariant(const CString& value);
COleVariant MakeBoolVariant(bool value);

} // namespace plumb
