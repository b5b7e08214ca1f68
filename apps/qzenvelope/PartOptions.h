// Options about a tool's parts and where its solids stand.
#pragma once

#include <string>

#include "apps/qzenvelope/Options.h"

namespace CLI {
class App;
}

namespace app {

// As typed; empty: not given.
struct PartTexts {
    std::string split, tip, zero, direction, cutColour, restColour;
};

void DeclareParts(CLI::App& command, PartTexts& texts);

// fails  Failure with Request that names the option
PartRequest ReadParts(const PartTexts& texts);

}  // namespace app
