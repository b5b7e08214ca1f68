// What the command line asks for.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "product/tool/Outline.h"

namespace app {

enum ExitStatus { kDone = 0, kNoResult = 1, kUsage = 2 };

// A refusal that ends the program: one sentence for standard error that says what to do.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& text)
        : std::runtime_error(text), m_status(status) {}
    ExitStatus Status() const { return m_status; }

private:
    ExitStatus m_status;
};

// The engine's pipelines.
enum class Algorithm { Live, Hatch, First, Second };

// As --algorithm and reports name them: 3, hatch, 1, 2.
const char* NameOf(Algorithm algorithm);

// What is stated alike for one tool and for many.
struct ToolOptions {
    bool lowerHalf = false;
    Algorithm algorithm = Algorithm::Live;
    bool includeDashed = false;
    bool verticalEnds = false;
    // Drawing units; the defaults are the engine's own.
    double pointTolerance = 0.0005;
    double lineTolerance = 0.001;
    double horVerTolerance = 1e-6;
    double arcPrecision = 0.3;
    double sideLength = 5.0;
    double chordTolerance = 0;  // of STL files; 0: a thousandth of the largest diameter
    bool json = false;
};

struct ComputeOptions : ToolOptions {
    std::string input;
    std::optional<Point> centre;  // unset only with noAxis
    std::optional<Box> window;
    bool noAxis = false;
    std::string output;  // empty: the drawing is not written
    std::string svg;     // empty: no picture
    // Files of the revolved solid; empty: not written.
    std::string sat, step, stl, png;

    bool WantsSolidFile() const {
        return !sat.empty() || !step.empty() || !stl.empty() || !png.empty();
    }
};

struct BatchOptions : ToolOptions {
    std::vector<std::string> inputs;
    std::string out = "out";         // folder of the drawings and solids
    std::string report;              // the page's file; empty: none
    std::string tools;               // file that names the tools; empty: none
    std::vector<std::string> tasks;  // stored tasks to run; empty: all
    bool fromFrames = false;         // although the drawing stores tasks
    bool step = false, stl = false;  // beside the SAT files
    int jobs = 0;                    // drawings at a time; 0: one for each processor
};

struct InfoOptions {
    std::string input;
    bool json = false;
};

struct CopyOptions {
    std::string input, output;
};

struct Options {
    enum class Command { Compute, Batch, Info, Copy, Nothing } command = Command::Nothing;
    ComputeOptions compute;
    BatchOptions batch;
    InfoOptions info;
    CopyOptions copy;
    std::string text;  // Nothing: the help or the version, to be printed
};

// Reads the arguments after the program's name. Values may follow their option after '=' or as the
// next argument, negative numbers too.
//
// fails    Failure with kUsage for anything that is no sensible request: unknown options, numbers
//          that are not numbers, lengths that are not positive, windows without area, no centre
Options ParseOptions(const std::vector<std::string>& arguments);

}  // namespace app
