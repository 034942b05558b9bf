#include "util/VariantText.h"

#include "util/NumberText.h"

#include <algorithm>
#include <limits>

namespace plumb {

namespace {

CString withoutTrailingBlanks(CString text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::int32_t longOf(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(value > Limits::min())) return value <= Limits::min() ? Limits::min() : 0; // not a number: 0
    return value < Limits::max() ? static_cast<std::int32_t>(value) : Limits::max();
}

} // namespace

CString VariantToText(const COleVariant& value, int decimals) {
    switch (value.vt()) {
    case VT_I2:
    case VT_I4:
    case VT_UI1: return IntToText(static_cast<long>(value.whole()));
    case VT_R4:
    case VT_R8: return DoubleToTextWithCommas(value.real(), decimals);
    case VT_DATE: return withoutTrailingBlanks(dateText(value.real()));
    case VT_BSTR: return withoutTrailingBlanks(value.text());
    case VT_BOOL: return value.whole() == -1 ? "-1" : "0";
    default: return {};
    }
}

long VariantToLong(const COleVariant& value) {
    switch (value.vt()) {
    case VT_I2:
    case VT_I4:
    case VT_UI1:
    case VT_BOOL: return static_cast<long>(value.whole());
    case VT_R4:
    case VT_R8: return longOf(value.real());
    default: return 0;
    }
}

double VariantToDouble(const COleVariant& value) {
    switch (value.vt()) {
    case VT_I2:
    case VT_I4:
    case VT_UI1: return static_cast<double>(value.whole());
    case VT_R4:
    case VT_R8: return value.real();
    default: return 0.0;
    }
}

bool VariantToBool(const COleVariant& value) {
    return value.vt() == VT_BOOL && value.whole() == -1;
}

COleVariant MakeLongVariant(long value) {
    return {static_cast<std::int32_t>(value)};
}
COleVariant MakeTextVariant(const CString& value) {
    return {value};
}
COleVariant MakeBoolVariant(bool value) {
    return {static_cast<std::int16_t>(value ? -1 : 0), VT_BOOL};
}

} // namespace plumb
