// What the command line asks for.
#pragma once

#include <string>
#include <vector>

#include "product/base/Failure.h"
#include "product/tool/ToolRequest.h"

namespace app {

// The program speaks of requests, drawings and results in the product's own words.
using namespace product;  // NOLINT: this is a program's namespace, nobody includes it from below

enum ExitStatus { kDone = 0, kNoResult = 1, kUsage = 2 };

// A refusal as the program's end.
ExitStatus StatusOf(Fault fault);

struct ComputeOptions {
    ToolRequest request;
    bool findsTools = false;  // no axis was named: every tool that is found
    bool isStrict = false;    // what is worth a look is a failure
    bool json = false;
};

// Every count-th drawing of a list, beginning with the number-th.
struct Shard {
    size_t number = 1, count = 1;
};

struct BatchOptions {
    BatchRequest request;
    std::vector<std::string> inputs;
    std::string report;      // the page's file; empty: none
    std::string tools;       // file that names the tools; empty: none
    std::string table;       // of the tools, .csv or .json; empty: none
    std::string jsonLines;   // results drawing by drawing; empty: none
    std::string watch;       // folder whose drawings are computed as they come in; empty: none
    bool recursive = false;  // folders' folders, too
    bool force = false;      // unchanged drawings, too
    Shard shard;
    std::string fingerprint;  // of all options that change what is computed
    int jobs = 0;             // drawings at a time; 0: one for each processor
    double timeLimit = 0;     // of each tool, seconds; 0: none
    bool isStrict = false;    // what is worth a look is a failure
    bool json = false;
};

// Results of batches put together.
struct ReportOptions {
    std::vector<std::string> inputs;
    std::string report, table;  // empty: none
    bool json = false;
};

struct InfoOptions {
    std::string input;
    bool json = false;
};

struct CopyOptions {
    std::string input, output;
};

struct Options {
    enum class Command { Compute, Batch, Report, Info, Copy, Nothing } command = Command::Nothing;
    ComputeOptions compute;
    BatchOptions batch;
    InfoOptions info;
    CopyOptions copy;
    ReportOptions report;
    double timeLimit = 0;               // seconds; 0: none; of a batch for each tool
    double memoryLimit = 0;             // megabytes of each process; 0: none
    std::string dwgConverter;           // command; empty: the one that is found
    std::vector<std::string> warnings;  // options that change nothing
    std::string text;                   // Nothing: the help or the version, to be printed
};

// Reads the arguments after the program's name. Values may follow their option after '=' or as the
// next argument, negative numbers too.
//
// fails    Failure with Request for anything that is no sensible one: unknown options, numbers that
//          are not numbers, lengths that are not positive, windows without area, no centre
Options ParseOptions(const std::vector<std::string>& arguments);

}  // namespace app
