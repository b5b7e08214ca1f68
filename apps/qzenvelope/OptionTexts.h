// Options as they were typed, before they are understood.
#pragma once

#include <string>

#include "apps/qzenvelope/OptionNumbers.h"
#include "apps/qzenvelope/PartOptions.h"

namespace app {

// Text of the options that are not taken over as they stand.
struct OptionTexts {
    std::string centre, axis, window, crossing, half, algorithm, units, name, shard, language;
    LengthTexts lengths;
    LimitTexts limits;
    PartTexts parts;
};

}  // namespace app
