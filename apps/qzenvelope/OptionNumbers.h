// Numbers on the command line.
#pragma once

#include <string>
#include <vector>

#include "apps/qzenvelope/Options.h"

namespace CLI {
class App;
}

namespace app {

// A word as messages show it.
std::string Quoted(const std::string& text);

// Reads "X,Y,...": exactly `count` finite numbers, in C notation whatever the locale is.
// fails  Failure with Request that names the option and ends with the remedy
std::vector<double> ReadNumbers(const std::string& option, const std::string& text, size_t count,
                                const char* remedy);

// Text of the options that take a length, as typed; empty: not given.
struct LengthTexts {
    std::string point, line, horVer, precision, side, overshoot, curve, chord;
};

// Names of the options that were given and that an algorithm does not use.
std::vector<std::string> IdleLengths(const LengthTexts& texts, product::Algorithm algorithm);

void DeclareLengths(CLI::App& command, LengthTexts& texts);

// Reads those that were given; the others keep their values.
// fails  Failure with Request for what is no number, negative, or zero where that leaves no length
void ReadLengths(const LengthTexts& texts, ToolParameters& parameters, double& chordTolerance);

// Text of the options that bound a run, as typed; empty: not given.
struct LimitTexts {
    std::string lines, seconds, megabytes;
};

// lines  whether the command computes envelopes
void DeclareLimits(CLI::App& command, LimitTexts& texts, bool lines);

// fails  Failure with kUsage for what is no positive number
void ReadLimits(const LimitTexts& texts, Options& options);

// Names of the options that take numbers.
std::vector<std::string> NumberOptionNames();

}  // namespace app
