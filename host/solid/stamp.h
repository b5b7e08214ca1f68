// Dates in written files: the same for the same input when the build system fixes the clock.
#pragma once

#include <ctime>
#include <string>

namespace host::solid {

// The seconds that SOURCE_DATE_EPOCH names when it is set to a whole number, else the clock.
std::time_t StampTime();

// The time as files of this kind hold it: "Mon Jan  5 10:00:00 2026", 24 characters, universal
// time.
std::string DateText(std::time_t date);

// The same moment as "2026-01-05T10:00:00".
std::string IsoDateText(std::time_t date);

}  // namespace host::solid
