#include "apps/qzenvelope/OptionNumbers.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>

namespace app {

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

std::vector<double> ReadNumbers(const std::string& option, const std::string& text, size_t count,
                                const char* remedy) {
    const auto refuse = [&](const std::string& why) -> Failure {
        return {kUsage, option + ": " + Quoted(text) + " " + why + "; " + remedy};
    };
    std::vector<double> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (;;) {
        while (at != end && *at == ' ') ++at;
        if (at != end && *at == '+') ++at;
        double number = 0;
        const auto [next, error] = std::from_chars(at, end, number);
        if (error == std::errc::result_out_of_range) throw refuse("is out of range");
        if (error != std::errc()) throw refuse("is not a number");
        if (!std::isfinite(number)) throw refuse("is not a finite number");
        numbers.push_back(number);
        at = next;
        while (at != end && *at == ' ') ++at;
        if (at == end) break;
        if (*at != ',') throw refuse("has something that is no number in it");
        ++at;
    }
    if (numbers.size() != count)
        throw refuse("has " + std::to_string(numbers.size()) + " number" +
                     (numbers.size() == 1 ? "" : "s") + " where " + std::to_string(count) +
                     (count == 1 ? " is" : " are") + " needed");
    return numbers;
}

namespace {

struct LengthOption {
    const char* name;
    std::string LengthTexts::*text;
    double ToolOptions::*value;
    bool mayBeZero;
    const char* help;
};

const LengthOption kLengths[] = {
    {"--point-tolerance", &LengthTexts::point, &ToolOptions::pointTolerance, false,
     "points closer than this are one (0.0005)"},
    {"--line-tolerance", &LengthTexts::line, &ToolOptions::lineTolerance, false,
     "for tests between lines (0.001)"},
    {"--horver-tolerance", &LengthTexts::horVer, &ToolOptions::horVerTolerance, false,
     "a line is horizontal or vertical within this (1e-6)"},
    {"--arc-precision", &LengthTexts::precision, &ToolOptions::arcPrecision, false,
     "arcs and splines become chords about this long (0.3)"},
    {"--side-length", &LengthTexts::side, &ToolOptions::sideLength, true,
     "how far in the left and right ends are looked for (5)"},
    {"--chord-tolerance", &LengthTexts::chord, &ToolOptions::chordTolerance, false,
     "triangles of --stl leave the solid by no more (a thousandth of its diameter)"},
};

}  // namespace

void ReadLengths(const LengthTexts& texts, ToolOptions& options) {
    for (const LengthOption& length : kLengths) {
        const std::string& text = texts.*length.text;
        if (text.empty()) continue;
        const double number =
            ReadNumbers(length.name, text, 1, "give a length in drawing units")[0];
        if (number < 0 || (number == 0 && !length.mayBeZero))
            throw Failure(kUsage, std::string(length.name) + ": " + text +
                                      (number < 0 ? " is negative" : " leaves no length") +
                                      "; give a positive length in drawing units");
        options.*length.value = number;
    }
}

void DeclareLengths(CLI::App& command, LengthTexts& texts) {
    for (const LengthOption& length : kLengths)
        command.add_option(length.name, texts.*length.text, length.help);
}

std::vector<std::string> LengthOptionNames() {
    std::vector<std::string> names;
    for (const LengthOption& length : kLengths) names.emplace_back(length.name);
    return names;
}

}  // namespace app
