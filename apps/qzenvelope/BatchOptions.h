// The options that only a batch has.
#pragma once

#include <string>

#include "apps/qzenvelope/Options.h"
#include "apps/qzenvelope/OptionTexts.h"

namespace CLI {
class App;
}

namespace app {

void DeclareBatch(CLI::App& command, BatchOptions& options, OptionTexts& texts);

// Takes what was parsed, after the options that a tool has.
//
// command  of the batch, for what was given of it
// fails    Failure with Request for a share that is none, ways to name the tools that exclude one
//          another, files of unknown kinds, and nothing to be done
void ReadBatch(const CLI::App& command, const OptionTexts& texts, BatchOptions& options);

// fails  Failure with Request for a table that is neither .csv nor .json
void CheckTable(const std::string& table);

}  // namespace app
