#include "host/solid/stamp.h"

#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace host::solid {

namespace {

constexpr long long kDay = 86400;

struct Moment {
    long long days;        // since 1970
    int year, month, day;  // month 0 is January
    int hour, minute, second;
};

// Civil date from a day count: years start in March, eras have 400 years (Howard Hinnant, 2013).
Moment MomentOf(std::time_t date) {
    const long long seconds = static_cast<long long>(date);
    const long long days = seconds / kDay - (seconds % kDay < 0 ? 1 : 0);
    const int rest = static_cast<int>(seconds - days * kDay);
    const long long shifted = days + 719468;
    const long long era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
    const int dayOfEra = static_cast<int>(shifted - era * 146097);
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int month = monthFromMarch < 10 ? monthFromMarch + 2 : monthFromMarch - 10;
    return {days,        static_cast<int>(era * 400 + yearOfEra) + (month < 2 ? 1 : 0),
            month,       dayOfYear - (153 * monthFromMarch + 2) / 5 + 1,
            rest / 3600, rest / 60 % 60,
            rest % 60};
}

}  // namespace

std::time_t StampTime() {
    const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
    if (fixed != nullptr) {
        long long seconds = 0;
        const char* end = fixed + std::strlen(fixed);
        const auto read = std::from_chars(fixed, end, seconds);
        if (read.ec == std::errc() && read.ptr == end && end != fixed)
            return static_cast<std::time_t>(seconds);
    }
    return std::time(nullptr);
}

std::string DateText(std::time_t date) {
    static const char* const kDays[] = {"Thu", "Fri", "Sat", "Sun", "Mon", "Tue", "Wed"};
    static const char* const kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const Moment m = MomentOf(date);
    char text[64];
    std::snprintf(text, sizeof text, "%s %s %2d %02d:%02d:%02d %04d",
                  kDays[static_cast<std::size_t>((m.days % 7 + 7) % 7)],
                  kMonths[static_cast<std::size_t>(m.month)], m.day, m.hour, m.minute, m.second,
                  m.year);
    return text;
}

std::string IsoDateText(std::time_t date) {
    const Moment m = MomentOf(date);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", m.year, m.month + 1, m.day,
                  m.hour, m.minute, m.second);
    return text;
}

}  // namespace host::solid
