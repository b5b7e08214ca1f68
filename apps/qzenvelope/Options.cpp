#include "apps/qzenvelope/Options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace app {
namespace {

const char* const kVersion = "qzenvelope 1.0";

const char* const kMainFooter =
    "Examples:\n"
    "  qzenvelope compute tool.dxf --centre 60,0 -o out.dxf --svg out.svg\n"
    "  qzenvelope info tool.dxf --json\n"
    "  qzenvelope copy tool.dxf same.dxf\n"
    "Each command has its own --help.\n"
    "Exit status: 0 done; 1 no envelope, or a file could not be written; 2 usage, or an input "
    "that\n"
    "cannot be read.";

const char* const kComputeFooter =
    "What is picked: without --window everything in model space. With --window the entities whose\n"
    "extents lie inside it, in file order, as far as they are displayed: those on layers that are\n"
    "off or frozen and invisible ones are not. The dimension layer, dashed and centre lines, "
    "texts,\n"
    "dimensions, hatches, circles and ellipses never become part of the envelope, nor do entities\n"
    "on locked layers; the summary lists what was left out. An envelope of an earlier run (layer\n"
    "TempEncircleLine) among the picked entities is replaced.\n"
    "The axis is the horizontal line through the centre. After a run every layer is switched on.\n"
    "For --sat, --step, --stl and --png the envelope is revolved about the axis into a solid; an\n"
    "envelope that crosses itself or the axis has none, and the message says where.\n"
    "The input is never overwritten unless -o names it; without -o only the summary is printed.\n"
    "\n"
    "Examples:\n"
    "  qzenvelope compute drill.dxf --centre 140,120 --window 50,100,230,140 -o out.dxf\n"
    "  qzenvelope compute mill.dxf --centre -120,60 --half lower --svg mill.svg\n"
    "  qzenvelope compute mill.dxf --centre=-120,60 --json\n"
    "  qzenvelope compute mill.dxf --centre -120,60 --sat mill.sat --step mill.stp --png "
    "mill.png\n";

const char* const kAlgorithms[] = {"3", "hatch", "1", "2"};

Algorithm AlgorithmOf(const std::string& name) {
    const auto found = std::find(std::begin(kAlgorithms), std::end(kAlgorithms), name);
    return static_cast<Algorithm>(found - std::begin(kAlgorithms));
}

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

// Reads "X,Y,...": exactly `count` finite numbers, in C notation whatever the locale is.
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

// Text of the options that take numbers, as typed.
struct NumberTexts {
    std::string centre, window, point, line, horVer, precision, side, chord;
};

struct LengthOption {
    const char* name;
    std::string NumberTexts::*text;
    double ComputeOptions::*value;
    bool mayBeZero;
    const char* help;
};

const LengthOption kLengths[] = {
    {"--point-tolerance", &NumberTexts::point, &ComputeOptions::pointTolerance, false,
     "points closer than this are one (0.0005)"},
    {"--line-tolerance", &NumberTexts::line, &ComputeOptions::lineTolerance, false,
     "for tests between lines (0.001)"},
    {"--horver-tolerance", &NumberTexts::horVer, &ComputeOptions::horVerTolerance, false,
     "a line is horizontal or vertical within this (1e-6)"},
    {"--arc-precision", &NumberTexts::precision, &ComputeOptions::arcPrecision, false,
     "arcs and splines become chords about this long (0.3)"},
    {"--side-length", &NumberTexts::side, &ComputeOptions::sideLength, true,
     "how far in the left and right ends are looked for (5)"},
    {"--chord-tolerance", &NumberTexts::chord, &ComputeOptions::chordTolerance, false,
     "triangles of --stl leave the solid by no more (a thousandth of its diameter)"},
};

void ReadLengths(const NumberTexts& texts, ComputeOptions& options) {
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

void ReadPlaces(const NumberTexts& texts, ComputeOptions& options) {
    if (!texts.centre.empty()) {
        const auto n = ReadNumbers("--centre", texts.centre, 2, "give X,Y of a point on the axis");
        options.centre = Point{n[0], n[1]};
    } else if (!options.noAxis) {
        throw Failure(
            kUsage, "no centre given; add --centre X,Y, a point on the tool's axis, or --no-axis");
    }
    if (!options.centre && options.WantsSolidFile())
        throw Failure(kUsage,
                      "a solid needs its axis; add --centre X,Y, a point on the tool's axis");
    if (texts.window.empty()) return;
    const auto n = ReadNumbers("--window", texts.window, 4, "give two corners X1,Y1,X2,Y2");
    Box window;
    window.Add(Point{n[0], n[1]});
    window.Add(Point{n[2], n[3]});
    if (window.Width() == 0 || window.Height() == 0)
        throw Failure(kUsage, "--window: " + Quoted(texts.window) +
                                  " has no area; give two opposite corners X1,Y1,X2,Y2");
    options.window = window;
}

void DeclareCompute(CLI::App& command, ComputeOptions& options, NumberTexts& texts,
                    std::string& half, std::string& algorithm) {
    command.add_option("IN", options.input, "the drawing, a DXF file")->required();
    command.add_option("--centre,--center", texts.centre, "X,Y of a point on the tool's axis");
    command.add_option("--window", texts.window, "X1,Y1,X2,Y2: pick inside this rectangle only");
    command.add_option("--half", half, "the half to envelop: upper or lower (upper)")
        ->check(CLI::IsMember({"upper", "lower"}));
    command
        .add_option("--algorithm", algorithm,
                    "3: the outline seen from the sides; hatch: the boundary traced around the "
                    "tool, with its exact arcs; 1, 2: earlier forms of 3, whose arcs stay chords; "
                    "2 puts the envelope 1000 units to the right (3)")
        ->check(CLI::IsMember(
            std::vector<std::string>(std::begin(kAlgorithms), std::end(kAlgorithms))));
    command.add_flag("--include-dashed", options.includeDashed, "keep dashed and centre lines");
    command.add_flag("--vertical-ends", options.verticalEnds,
                     "close both ends by vertical lines down to the axis");
    command.add_flag("--no-axis", options.noAxis, "pass no axis: the outline of all four sides");
    for (const LengthOption& length : kLengths)
        command.add_option(length.name, texts.*length.text, length.help);
    command.add_option("-o,--output", options.output, "write the drawing with its envelope");
    command.add_option("--svg", options.svg, "write a picture: drawing, envelope, shaded solid");
    command.add_option("--sat", options.sat, "write the solid as SAT, version 7.0");
    command.add_option("--step", options.step, "write the solid as STEP, AP214");
    command.add_option("--stl", options.stl, "write the solid as binary STL");
    command.add_option("--png", options.png, "write a picture of the solid above its profile");
    command.add_flag("--json", options.json, "print one JSON object and nothing else");
    command.footer(kComputeFooter);
}

// The parser takes "-5,0" for options; joined to the option it belongs to it is a value.
std::vector<std::string> JoinValues(const std::vector<std::string>& arguments) {
    std::vector<std::string> takers = {"--centre", "--center", "--window"};
    for (const LengthOption& length : kLengths) takers.emplace_back(length.name);
    std::vector<std::string> joined;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const bool takes = std::find(takers.begin(), takers.end(), arguments[i]) != takers.end();
        if (takes && i + 1 < arguments.size() && arguments[i + 1].rfind("--", 0) != 0)
            joined.push_back(arguments[i] + "=" + arguments[i + 1]), ++i;
        else
            joined.push_back(arguments[i]);
    }
    return joined;
}

// The parser's own message does not name the word that is no command.
void RequireCommand(const std::vector<std::string>& arguments, const CLI::App& app) {
    const char* const remedy = "; use compute, info or copy, see qzenvelope --help";
    if (arguments.empty()) throw Failure(kUsage, std::string("no command given") + remedy);
    if (!arguments[0].empty() && arguments[0][0] == '-') return;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        if (command->get_name() == arguments[0]) return;
    throw Failure(kUsage, "there is no command " + Quoted(arguments[0]) + remedy);
}

}  // namespace

const char* NameOf(Algorithm algorithm) { return kAlgorithms[static_cast<int>(algorithm)]; }

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    NumberTexts texts;
    std::string half = "upper", algorithm = "3";
    CLI::App app("Computes the envelope line of a rotating tool from its drawing.", "qzenvelope");
    app.set_version_flag("--version", kVersion);
    app.require_subcommand(1);
    app.footer(kMainFooter);
    CLI::App& compute = *app.add_subcommand("compute", "compute the envelope of one tool");
    DeclareCompute(compute, options.compute, texts, half, algorithm);
    CLI::App& info = *app.add_subcommand(
        "info", "list layers, entities, frames with their tool numbers, stored tasks, faults");
    info.add_option("DRAWING", options.info.input, "the drawing, a DXF file")->required();
    info.add_flag("--json", options.info.json, "print one JSON object and nothing else");
    CLI::App& copy =
        *app.add_subcommand("copy", "read a drawing and write it back: nothing is lost");
    copy.add_option("IN", options.copy.input, "the drawing to read")->required();
    copy.add_option("OUT", options.copy.output, "the file to write; may be IN")->required();

    RequireCommand(arguments, app);
    std::vector<std::string> reversed = JoinValues(arguments);
    std::reverse(reversed.begin(), reversed.end());
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& error) {
        std::ostringstream out, err;
        if (app.exit(error, out, err) == 0) {
            options.text = out.str();
            return options;
        }
        const std::string name = compute ? " compute" : info ? " info" : copy ? " copy" : "";
        throw Failure(kUsage, std::string(error.what()) + "; see qzenvelope" + name + " --help");
    }
    if (info) options.command = Options::Command::Info;
    if (copy) options.command = Options::Command::Copy;
    if (compute) {
        options.command = Options::Command::Compute;
        options.compute.lowerHalf = half == "lower";
        options.compute.algorithm = AlgorithmOf(algorithm);
        ReadLengths(texts, options.compute);
        ReadPlaces(texts, options.compute);
    }
    return options;
}

}  // namespace app
