#include "dao/COleVariant.h"

#include <chrono>
#include <cmath>

#include <fmt/format.h>

COleVariant::COleVariant(std::int16_t value, VARENUM type) : m_type(type) {
    if (type == VT_BOOL && value != 0) value = -1;
    m_value = std::int64_t{value};
}

COleVariant COleVariant::null() {
    COleVariant value;
    value.m_type = VT_NULL;
    return value;
}

COleVariant COleVariant::date(double days) {
    COleVariant value(days);
    value.m_type = VT_DATE;
    return value;
}

const CString& COleVariant::text() const {
    static const CString kNone;
    const CString* text = std::get_if<CString>(&m_value);
    return text ? *text : kNone;
}

const std::vector<COleVariant>& COleVariant::items() const {
    static const std::vector<COleVariant> kNone;
    const auto* items = std::get_if<std::vector<COleVariant>>(&m_value);
    return items ? *items : kNone;
}

CString dateText(double days) {
    using namespace std::chrono;
    constexpr double kFarthest = 3.0e6; // days; some thousands of years to either side
    if (!(std::abs(days) <= kFarthest)) return {};
    constexpr sys_days kDayZero = year{1899} / December / 30;
    constexpr double kSecondsADay = 86400.0;
    // The fraction counts forwards from midnight before day 0 too.
    double whole = std::trunc(days);
    double rest = std::round(std::abs(days - whole) * kSecondsADay);
    if (rest >= kSecondsADay) {
        rest = 0.0;
        whole += 1.0;
    }
    const year_month_day day(kDayZero + std::chrono::days(static_cast<int>(whole)));
    const hh_mm_ss time(seconds(static_cast<int>(rest)));
    const CString date = fmt::format("{:04}-{:02}-{:02}", static_cast<int>(day.year()),
                                     static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    const CString clock = fmt::format("{:02}:{:02}:{:02}", time.hours().count(), time.minutes().count(),
                                      time.seconds().count());
    if (whole == 0.0) return clock;
    return rest == 0.0 ? date : date + " " + clock;
}
