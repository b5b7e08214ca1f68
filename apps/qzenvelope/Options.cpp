#include "apps/qzenvelope/Options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>

#include "apps/qzenvelope/BatchOptions.h"
#include "apps/qzenvelope/HelpTexts.h"
#include "apps/qzenvelope/Language.h"
#include "apps/qzenvelope/OptionTexts.h"
#include "apps/qzenvelope/Version.h"
#include "product/base/Text.h"
#include "product/base/Words.h"

namespace app {
namespace {

// In the order in which the help names them.
constexpr Algorithm kAlgorithms[] = {Algorithm::Exact, Algorithm::Live, Algorithm::Hatch,
                                     Algorithm::First, Algorithm::Second};

std::vector<std::string> AlgorithmNames() {
    std::vector<std::string> names;
    for (const Algorithm algorithm : kAlgorithms) names.emplace_back(NameOf(algorithm));
    return names;
}

Algorithm AlgorithmOf(const std::string& name) {
    return *std::find_if(std::begin(kAlgorithms), std::end(kAlgorithms),
                         [&](Algorithm algorithm) { return name == NameOf(algorithm); });
}

void ReadPlaces(const OptionTexts& texts, bool isAuto, ToolRequest& request) {
    if (!texts.axis.empty()) {
        if (!texts.centre.empty())
            throw Failure(Fault::Request,
                          Tr("--centre and --axis both say where the axis is; use one"));
        const auto n =
            ReadNumbers("--axis", texts.axis, 4, Tr("give two points X1,Y1,X2,Y2 of the axis"));
        request.axis = Axis{{n[0], n[1]}, {n[2], n[3]}};
        if (n[0] == n[2] && n[1] == n[3])
            throw Failure(Fault::Request, "--axis: " + Quoted(texts.axis) +
                                              Tr(" has no length; give two points that are apart"));
    } else if (!texts.centre.empty()) {
        const auto n =
            ReadNumbers("--centre", texts.centre, 2, Tr("give X,Y of a point on the axis"));
        request.axis = Axis::Level({n[0], n[1]});
    }
    if (isAuto && (request.axis || request.ignoresAxis))
        throw Failure(Fault::Request,
                      Tr("--auto looks for the axis itself; leave --centre, --axis and "
                         "--no-axis out"));
    if (!texts.window.empty() && !texts.crossing.empty())
        throw Failure(Fault::Request,
                      Tr("--window and --crossing both say what is picked; use one"));
    const char* const option = texts.crossing.empty() ? "--window" : "--crossing";
    const std::string& corners = texts.crossing.empty() ? texts.window : texts.crossing;
    if (corners.empty()) return;
    const auto n = ReadNumbers(option, corners, 4, Tr("give two corners X1,Y1,X2,Y2"));
    Box window;
    window.Add(Point{n[0], n[1]});
    window.Add(Point{n[2], n[3]});
    if (window.Width() == 0 || window.Height() == 0)
        throw Failure(Fault::Request,
                      std::string(option) + ": " + Quoted(corners) +
                          Tr(" has no area; give two opposite corners X1,Y1,X2,Y2"));
    request.rule.window = window;
    request.rule.isCrossing = !texts.crossing.empty();
}

void RequireSolidsAxis(const ToolRequest& request) {
    const bool isSolid = request.solid.Any() || !request.profile.empty() || request.parts.IsSplit();
    if (request.ignoresAxis && !request.axis && isSolid)
        throw Failure(Fault::Request,
                      Tr("a solid needs its axis; add --centre X,Y, a point on the tool's axis"));
}

void DeclareTool(CLI::App& command, ToolParameters& parameters, bool& json, OptionTexts& texts) {
    command
        .add_option(
            "--half", texts.half,
            Tr("the half to envelop, left of the axis' direction: upper; right of it: lower; "
               "or both, which is what the turning tool sweeps (exact: both; else upper)"))
        ->check(CLI::IsMember({NameOf(Half::Upper), NameOf(Half::Lower), NameOf(Half::Both)}));
    command
        .add_option(
            "--algorithm", texts.algorithm,
            Tr("exact: from the true curves, about an axis in any direction; 3: step by step, "
               "as the plug-in's dialogs do, the outline seen from the sides of a level axis; "
               "hatch: the boundary traced around the tool; 1, 2: earlier forms of 3, whose "
               "arcs stay chords: 1 may reach across the axis, 2 puts the envelope 1000 units "
               "to the right (exact)"))
        ->check(CLI::IsMember(AlgorithmNames()));
    command.add_flag("--take-circles", parameters.takeCircles,
                     Tr("exact: full circles and ellipses are part of the contour"));
    command.add_flag("--include-dashed", parameters.includeDashed,
                     Tr("keep dashed and centre lines"));
    command.add_flag("--vertical-ends", parameters.verticalEnds,
                     Tr("close both ends by vertical lines down to the axis"));
    DeclareLengths(command, texts.lengths);
    DeclareParts(command, texts.parts);
    command.add_flag("--json", json, Tr("print one JSON object and nothing else"));
}

Half HalfOf(const std::string& name, Algorithm algorithm) {
    for (const Half half : {Half::Upper, Half::Lower, Half::Both})
        if (name == NameOf(half)) return half;
    return algorithm == Algorithm::Exact ? Half::Both : Half::Upper;
}

// ignoresAxis  only the engine's steps know an outline without one
void ReadTool(const OptionTexts& texts, bool ignoresAxis, ToolParameters& parameters,
              double& chordTolerance, std::vector<std::string>& warnings) {
    parameters.algorithm = !texts.algorithm.empty() ? AlgorithmOf(texts.algorithm)
                           : ignoresAxis            ? Algorithm::Live
                                                    : Algorithm::Exact;
    const bool isExact = parameters.algorithm == Algorithm::Exact;
    if (isExact && ignoresAxis)
        throw Failure(
            Fault::Request,
            Tr("the exact envelope has an axis; leave --no-axis out, or use --algorithm 3"));
    parameters.half = HalfOf(texts.half, parameters.algorithm);
    if (!isExact && parameters.half == Half::Both)
        throw Failure(Fault::Request,
                      Tr("--half both is of the exact envelope; use --half upper or "
                         "lower, or --algorithm exact"));
    if (!isExact && parameters.takeCircles)
        throw Failure(Fault::Request,
                      Tr("--take-circles is of the exact envelope; use --algorithm exact"));
    ReadLengths(texts.lengths, parameters, chordTolerance);
    for (const std::string& name : IdleLengths(texts.lengths, parameters.algorithm))
        warnings.push_back(name + Tr(" changes nothing with --algorithm ") +
                           NameOf(parameters.algorithm));
}

void DeclarePatterns(CLI::App& command, const char* name, std::vector<std::string>& patterns,
                     const char* help) {
    command.add_option(name, patterns, help)->expected(1)->take_all();
}

void DeclareCompute(CLI::App& command, ComputeOptions& options, OptionTexts& texts) {
    ToolRequest& request = options.request;
    command.add_option("IN", request.input, Tr("the drawing, a DXF or DWG file"))->required();
    command.add_option("--centre,--center", texts.centre, Tr("X,Y of a point on the tool's axis"));
    command.add_option("--axis", texts.axis,
                       Tr("X1,Y1,X2,Y2: the tool's axis in any direction, by two points"));
    command.add_option("--window", texts.window,
                       Tr("X1,Y1,X2,Y2: pick inside this rectangle only"));
    command.add_option("--crossing", texts.crossing,
                       Tr("X1,Y1,X2,Y2: pick inside this rectangle, and what crosses it"));
    DeclarePatterns(
        command, "--layer", request.rule.layers,
        Tr("pick on these layers only: a name, * and ? stand for anything; may be repeated"));
    DeclarePatterns(command, "--exclude-layer", request.rule.withoutLayers,
                    Tr("pick nothing on these layers; may be repeated"));
    DeclarePatterns(command, "--exclude-type", request.rule.withoutTypes,
                    Tr("pick none of this type: INSERT, SPLINE, ...; may be repeated"));
    DeclareTool(command, request.parameters, options.json, texts);
    command.add_flag("--no-axis", request.ignoresAxis,
                     Tr("pass no axis: the outline of all four sides"));
    command.add_flag("--strict", options.isStrict,
                     Tr("exit status 1, too, when something is worth a look"));
    command.add_option("-o,--output", request.output, Tr("write the drawing with its envelope"));
    command.add_option("--svg", request.svg,
                       Tr("write a picture: drawing, envelope, shaded solid"));
    command.add_option("--sat", request.solid.sat, Tr("write the solid as SAT, version 7.0"));
    command.add_option("--step", request.solid.step, Tr("write the solid as STEP, AP214"));
    command.add_option("--stl", request.solid.stl, Tr("write the solid as binary STL"));
    command.add_option("--units", texts.units,
                       Tr("unit of the drawing, whatever its header says: mm, cm, m, inch, ..."));
    command.add_option("--png", request.solid.png,
                       Tr("write a picture of the solid above its profile"));
    command.add_option("--profile", request.profile,
                       Tr("write a drawing of the solid's closed profile alone, where --zero and "
                          "--direction say"));
    command.footer(ComputeFooter());
}

// The parser takes "-5,0" for options; joined to the option it belongs to it is a value.
std::vector<std::string> JoinValues(const std::vector<std::string>& arguments) {
    std::vector<std::string> takers = NumberOptionNames();
    takers.insert(takers.end(), {"--centre", "--center", "--axis", "--window", "--crossing",
                                 "--split", "--zero"});
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

// What the parser found wrong, which it says in English: in another language with a lead in that.
std::string ParserWords(const CLI::ParseError& error) {
    static const struct {
        const char *name, *lead;
    } kLeads[] = {{"ExtrasError", Noted("there is no such option, or a word too many: ")},
                  {"RequiredError", Noted("something that is needed is missing: ")},
                  {"ArgumentMismatch", Noted("an option has too few values, or too many: ")},
                  {"ValidationError", Noted("a value is not allowed: ")},
                  {"ConversionError", Noted("a value cannot be understood: ")}};
    std::string text = error.what();
    if (Language() == "en") return text;
    for (const auto& kind : kLeads)
        if (error.get_name() == kind.name) text = Tr(kind.lead) + text;
    return text;
}

// The parser's own message does not name the word that is no command.
void RequireCommand(const std::vector<std::string>& arguments, const CLI::App& app) {
    const char* const remedy =
        Tr("; use compute, batch, report, info or copy, see qzenvelope --help");
    if (arguments.empty())
        throw Failure(Fault::Request, std::string(Tr("no command given")) + remedy);
    if (!arguments[0].empty() && arguments[0][0] == '-') return;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        if (command->get_name() == arguments[0]) return;
    throw Failure(Fault::Request, Tr("there is no command ") + Quoted(arguments[0]) + remedy);
}

}  // namespace

ExitStatus StatusOf(Fault fault) {
    return fault == Fault::Request || fault == Fault::Input ? kUsage : kNoResult;
}

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    OptionTexts texts;
    bool isAuto = false;
    CLI::App app(Tr("Computes the envelope line of a rotating tool from its drawing."),
                 "qzenvelope");
    app.set_version_flag("--version", VersionText(), Tr("tell version and commit"));
    app.require_subcommand(1);
    app.footer(MainFooter());
    CLI::App& compute = *app.add_subcommand("compute", Tr("compute the envelope of one tool"));
    DeclareCompute(compute, options.compute, texts);
    compute.add_flag("--auto", isAuto, Tr("find the tools and their axes, as without --centre"));
    CLI::App& batch = *app.add_subcommand("batch", Tr("compute every tool of many drawings"));
    DeclareBatch(batch, options.batch, texts);
    DeclareTool(batch, options.batch.request.parameters, options.batch.json, texts);
    batch.footer(BatchFooter());
    CLI::App& info = *app.add_subcommand(
        "info", Tr("list layers, entities, frames with their tool numbers, stored tasks, faults"));
    info.add_option("DRAWING", options.info.input, Tr("the drawing, a DXF file"))->required();
    info.add_flag("--json", options.info.json, Tr("print one JSON object and nothing else"));
    CLI::App& report = *app.add_subcommand(
        "report", Tr("put the results of batches together: pages, an index, a table"));
    report.add_option("RESULTS", options.report.inputs, Tr("files that batch --json-lines wrote"))
        ->required();
    report.add_option(
        "--report", options.report.report,
        Tr("write the index of the pages, an HTML file; pages and pictures lie beside it"));
    report.add_option("--table", options.report.table,
                      Tr("write a table of all tools: .csv for spreadsheets, or .json"));
    CLI::App& copy =
        *app.add_subcommand("copy", Tr("read a drawing and write it back: nothing is lost"));
    copy.add_option("IN", options.copy.input, Tr("the drawing to read"))->required();
    copy.add_option("OUT", options.copy.output, Tr("the file to write; may be IN"))->required();

    for (CLI::App* command : {&compute, &batch, &info, &report, &copy, &app}) {
        command
            ->add_option("--lang", texts.language,
                         Tr("language of what is said here: zh or en (that of the locale)"))
            ->check(CLI::IsMember({"zh", "en"}));
        command->set_help_flag("-h,--help", Tr("print this help"));
        command->get_formatter()->label("Usage", Tr("Usage"));
        command->get_formatter()->label("Positionals", Tr("Positionals"));
        command->get_formatter()->label("Subcommands", Tr("Commands"));
        command->get_formatter()->label("SUBCOMMAND", Tr("COMMAND"));
        command->get_formatter()->label("OPTIONS", Tr("OPTIONS"));
        command->get_formatter()->label("REQUIRED", Tr("REQUIRED"));
        command->get_formatter()->label("TEXT", Tr("TEXT"));
    }
    for (CLI::App* command : {&compute, &batch, &info, &copy}) {
        DeclareLimits(*command, texts.limits, command == &compute || command == &batch);
        command->add_option(
            "--dwg-converter", options.dwgConverter,
            Tr("command that converts between DWG and DXF, with {in} and {out} for the "
               "files (QZ_DWG_CONVERTER, else ODAFileConverter or dwg2dxf)"));
    }

    for (CLI::App* command : {&compute, &batch, &info, &report, &copy, &app})
        for (CLI::Option* option : command->get_options()) option->group(Tr("Options"));
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
        const std::string name = compute  ? " compute"
                                 : batch  ? " batch"
                                 : info   ? " info"
                                 : copy   ? " copy"
                                 : report ? " report"
                                          : "";
        throw Failure(Fault::Request,
                      ParserWords(error) + Tr("; see qzenvelope") + name + " --help");
    }
    ReadLimits(texts.limits, options);
    if (info) options.command = Options::Command::Info;
    if (copy) options.command = Options::Command::Copy;
    if (report) {
        options.command = Options::Command::Report;
        CheckTable(options.report.table);
        if (options.report.report.empty() && options.report.table.empty())
            throw Failure(Fault::Request, Tr("nothing is to be written; give --report or --table"));
    }
    if (compute) {
        options.command = Options::Command::Compute;
        ToolRequest& request = options.compute.request;
        ReadTool(texts, request.ignoresAxis, request.parameters, request.solid.chordTolerance,
                 options.warnings);
        ReadPlaces(texts, isAuto, request);
        request.parts = ReadParts(texts.parts);
        RequireSolidsAxis(request);
        if (!texts.units.empty()) {
            request.solid.units = UnitOf(texts.units);
            if (!request.solid.units)
                throw Failure(Fault::Request, "--units: " + Quoted(texts.units) +
                                                  Tr(" is no unit; use mm, cm, m, inch or ft"));
        }
        options.compute.findsTools = !request.axis && !request.ignoresAxis;
    }
    if (batch) {
        options.command = Options::Command::Batch;
        BatchRequest& request = options.batch.request;
        ReadTool(texts, false, request.parameters, request.chordTolerance, options.warnings);
        ReadBatch(batch, texts, options.batch);
    }
    return options;
}

}  // namespace app
