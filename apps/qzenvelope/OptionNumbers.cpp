#include "apps/qzenvelope/OptionNumbers.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <limits>

#include "product/base/Text.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

std::vector<double> ReadNumbers(const std::string& option, const std::string& text, size_t count,
                                const char* remedy) {
    const auto refuse = [&](const std::string& why) -> Failure {
        return {Fault::Request, option + ": " + Quoted(text) + " " + why + "; " + remedy};
    };
    std::vector<double> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (;;) {
        while (at != end && *at == ' ') ++at;
        if (at != end && *at == '+') ++at;
        double number = 0;
        const auto [next, error] = std::from_chars(at, end, number);
        if (error == std::errc::result_out_of_range) throw refuse(Tr("is out of range"));
        if (error != std::errc()) throw refuse(Tr("is not a number"));
        if (!std::isfinite(number)) throw refuse(Tr("is not a finite number"));
        numbers.push_back(number);
        at = next;
        while (at != end && *at == ' ') ++at;
        if (at == end) break;
        if (*at != ',') throw refuse(Tr("has something that is no number in it"));
        ++at;
    }
    if (numbers.size() != count)
        throw refuse(Tr("has ") + std::to_string(numbers.size()) + Tr(" number") +
                     (numbers.size() == 1 ? "" : "s") + Tr(" where ") + std::to_string(count) +
                     (count == 1 ? Tr(" is") : Tr(" are")) + Tr(" needed"));
    return numbers;
}

namespace {

using Exact = ToolParameters::ExactLengths;

// A length of the step-by-step envelopes, of the exact one, or of both; of none of them: the chord
// tolerance, which is the solid's.
struct LengthOption {
    const char* name;
    std::string LengthTexts::*text;
    double ToolParameters::*steps;
    double Exact::*exact;
    bool mayBeZero;
    const char* help;
    const char* usual;  // what stands for the exact envelope's default, or the solid's
};

const LengthOption kLengths[] = {
    {"--point-tolerance", &LengthTexts::point, &ToolParameters::pointTolerance, &Exact::point,
     false, Noted("points closer than this are one"),
     Noted("5e-6 of the tool's size, 0.0005 at most")},
    {"--side-length", &LengthTexts::side, &ToolParameters::sideLength, &Exact::side, true,
     Noted("how far in the faces of both ends may lie"),
     Noted("a tenth of the tool's size, 5 at most")},
    {"--overshoot", &LengthTexts::overshoot, nullptr, &Exact::overshoot, false,
     Noted("exact: free ends no longer than this are overshoots"),
     Noted("a hundredth of the tool's size, 0.5 at most")},
    {"--curve-tolerance", &LengthTexts::curve, nullptr, &Exact::curve, false,
     Noted("exact: the arcs that stand for splines leave them by no more"),
     Noted("1e-5 of the tool's size, 0.001 at most")},
    {"--line-tolerance", &LengthTexts::line, &ToolParameters::lineTolerance, nullptr, false,
     Noted("algorithms 1, 2, 3, hatch: for tests between lines"), nullptr},
    {"--horver-tolerance", &LengthTexts::horVer, &ToolParameters::horVerTolerance, nullptr, false,
     Noted("algorithms 1, 2, 3, hatch: a line is horizontal or vertical within this"), nullptr},
    {"--arc-precision", &LengthTexts::precision, &ToolParameters::arcPrecision, nullptr, false,
     Noted("algorithms 1, 2, 3, hatch: arcs and splines become chords about this long"), nullptr},
    {"--chord-tolerance", &LengthTexts::chord, nullptr, nullptr, false,
     Noted("triangles of --stl leave the solid by no more"), Noted("a thousandth of its diameter")},
};

// As people write it: 1e-6, not 1e-06.
std::string Short(double number) {
    std::string text = Figure(number);
    if (const size_t at = text.find("e-0"); at != std::string::npos) text.erase(at + 2, 1);
    return text;
}

// "points closer than this are one (exact: 5e-6 of the tool's size; else 0.0005)".
std::string HelpOf(const LengthOption& length) {
    const ToolParameters usual;
    std::string text = std::string(Tr(length.help)) + " (";
    if (length.exact != nullptr && length.steps != nullptr) text += Tr("exact: ");
    if (length.usual != nullptr) text += Tr(length.usual);
    if (length.exact != nullptr && length.steps != nullptr) text += Tr("; else ");
    if (length.steps != nullptr) text += Short(usual.*length.steps);
    return text + ")";
}

}  // namespace

void ReadLengths(const LengthTexts& texts, ToolParameters& parameters, double& chordTolerance) {
    for (const LengthOption& length : kLengths) {
        const std::string& text = texts.*length.text;
        if (text.empty()) continue;
        const double number =
            ReadNumbers(length.name, text, 1, Tr("give a length in drawing units"))[0];
        if (number < 0 || (number == 0 && !length.mayBeZero))
            throw Failure(Fault::Request,
                          std::string(length.name) + ": " + text +
                              (number < 0 ? Tr(" is negative") : Tr(" leaves no length")) +
                              Tr("; give a positive length in drawing units"));
        if (length.steps != nullptr) parameters.*length.steps = number;
        // There 0 stands for the default.
        if (length.exact != nullptr)
            parameters.exact.*length.exact =
                number > 0 ? number : std::numeric_limits<double>::min();
        if (length.steps == nullptr && length.exact == nullptr) chordTolerance = number;
    }
}

std::vector<std::string> IdleLengths(const LengthTexts& texts, Algorithm algorithm) {
    std::vector<std::string> idle;
    for (const LengthOption& length : kLengths) {
        const bool isSolids = length.steps == nullptr && length.exact == nullptr;
        const bool isUsed =
            algorithm == Algorithm::Exact ? length.exact != nullptr : length.steps != nullptr;
        if (!(texts.*length.text).empty() && !isUsed && !isSolids) idle.emplace_back(length.name);
    }
    return idle;
}

void DeclareLengths(CLI::App& command, LengthTexts& texts) {
    for (const LengthOption& length : kLengths)
        command.add_option(length.name, texts.*length.text, HelpOf(length));
}

namespace {

struct LimitOption {
    const char* name;
    std::string LimitTexts::*text;
    const char* help;
};
const LimitOption kLines = {
    "--limit", &LimitTexts::lines,
    Noted("lines that a drawing may come to, blocks taken apart, curves cut into "
          "chords and all broken where they meet (2000000)")};
const LimitOption kSeconds = {"--time-limit", &LimitTexts::seconds,
                              Noted("end after so many seconds; of a batch each tool (no limit)")};
const LimitOption kMegabytes = {
    "--memory-limit", &LimitTexts::megabytes,
    Noted("end when more megabytes are needed, of each process (no limit)")};

void ReadLimit(const LimitOption& option, const LimitTexts& texts, double& value) {
    const std::string& text = texts.*option.text;
    if (text.empty()) return;
    const double number = ReadNumbers(option.name, text, 1, Tr("give a positive number"))[0];
    if (number <= 0)
        throw Failure(Fault::Request, std::string(option.name) + ": " + text +
                                          Tr(" leaves nothing to do; give a positive number"));
    value = number;
}

}  // namespace

void DeclareLimits(CLI::App& command, LimitTexts& texts, bool lines) {
    if (lines) command.add_option(kLines.name, texts.*kLines.text, Tr(kLines.help));
    for (const LimitOption* option : {&kSeconds, &kMegabytes})
        command.add_option(option->name, texts.*option->text, Tr(option->help));
}

void ReadLimits(const LimitTexts& texts, Options& options) {
    ToolParameters& parameters = options.compute.request.parameters;
    ReadLimit(kLines, texts, parameters.limit);
    options.batch.request.parameters.limit = parameters.limit;
    ReadLimit(kSeconds, texts, options.timeLimit);
    options.batch.timeLimit = options.timeLimit;
    ReadLimit(kMegabytes, texts, options.memoryLimit);
}

std::vector<std::string> NumberOptionNames() {
    std::vector<std::string> names;
    for (const LengthOption& length : kLengths) names.emplace_back(length.name);
    for (const LimitOption& limit : {kLines, kSeconds, kMegabytes}) names.emplace_back(limit.name);
    return names;
}

}  // namespace app
