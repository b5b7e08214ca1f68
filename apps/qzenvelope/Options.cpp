#include "apps/qzenvelope/Options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <set>

#include "apps/qzenvelope/OptionNumbers.h"
#include "apps/qzenvelope/PartOptions.h"
#include "apps/qzenvelope/Version.h"
#include "product/base/Text.h"

namespace app {
namespace {

const char* const kMainFooter =
    "Examples:\n"
    "  qzenvelope compute tool.dxf -o out.dxf --svg out.svg\n"
    "  qzenvelope batch sheet1.dxf sheet2.dxf --out out --report out/index.html\n"
    "  qzenvelope info tool.dxf --json\n"
    "  qzenvelope copy tool.dxf same.dxf\n"
    "Each command has its own --help.\n"
    "Exit status: 0 done; 1 no envelope, or a file could not be written; 2 usage, or an input\n"
    "that cannot be read; 121 not enough memory, 122 --time-limit; 130 Ctrl-C.";

const char* const kComputeFooter =
    "What is picked: without --window everything in model space. With --window the entities whose\n"
    "extents lie inside it, in file order, as far as they are displayed: those on layers that are\n"
    "off or frozen and invisible ones are not. The dimension layer, dashed and centre lines, "
    "texts,\n"
    "dimensions, hatches, circles and ellipses never become part of the envelope, nor do entities\n"
    "on locked layers; the summary lists what was left out. An envelope of an earlier run (layer\n"
    "TempEncircleLine) among the picked entities is replaced.\n"
    "Without --centre and --axis the tools of the drawing are found, with their axes and what\n"
    "belongs to them; of several the files are numbered from left to right. --centre means the\n"
    "horizontal line through that point. The exact envelope changes nothing but the polyline; "
    "after\n"
    "the other algorithms every layer is switched on. Each tool ends with a verdict: sure, or "
    "worth\n"
    "a look and why.\n"
    "For --sat, --step, --stl and --png the envelope is revolved about the axis into a solid; an\n"
    "envelope that crosses itself or the axis has none, and the message says where.\n"
    "The input is never overwritten unless -o names it; without -o only the summary is printed.\n"
    "\n"
    "Examples:\n"
    "  qzenvelope compute sheet.dxf -o out.dxf\n"
    "  qzenvelope compute drill.dxf --centre 140,120 --window 50,100,230,140 -o out.dxf\n"
    "  qzenvelope compute mill.dxf --axis -120,60,-120,0 --half lower --svg mill.svg\n"
    "  qzenvelope compute mill.dxf --centre=-120,60 --json\n"
    "  qzenvelope compute mill.dxf --centre -120,60 --sat mill.sat --step mill.stp --png "
    "mill.png\n";

const char* const kBatchFooter =
    "The tools are found by their frames: each block reference that carries a tool number\n"
    "(TUKANGE_NAME_IDENTITY, as extended data, Xrecord or attribute) is one tool; what lies "
    "inside\n"
    "the frame is its drawing, and its axis is found there. Without frames the tools are found as\n"
    "by compute. A drawing that\n"
    "stores a task list is run as stored, with the parameters of each task; --from-frames passes\n"
    "over it. --tools names the tools of drawings without frames, one a line:\n"
    "  name,centre x,centre y,x1,y1,x2,y2[,drawing]\n"
    "with two corners of the window around the tool; a last column keeps a line to one drawing.\n"
    "\n"
    "The output folder receives each drawing under its own name, with the envelopes and the task\n"
    "list, and TOOL.sat for each tool. Tools of one name get numbered files, with a warning. A "
    "tool\n"
    "that fails never stops the rest. Every file is written whole or not at all: a run that was\n"
    "stopped can simply be started again.\n"
    "\n"
    "Exit status: 0 everything done; 1 a tool or a file failed, the summary says which and why;\n"
    "2 usage, or a drawing that cannot be read.\n"
    "\n"
    "Examples:\n"
    "  qzenvelope batch sheet.dxf --out out --report out/index.html\n"
    "  qzenvelope batch *.dxf --jobs 2 --step --arc-precision 0.1\n"
    "  qzenvelope batch cutters.dxf --tools cutters.csv\n";

// More than any machine that draws tools has processors.
constexpr int kMostJobs = 256;

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

// Text of the options that are not taken over as they stand.
struct Texts {
    std::string centre, axis, window, crossing, half, algorithm, units, name, shard;
    LengthTexts lengths;
    LimitTexts limits;
    PartTexts parts;
};

void ReadPlaces(const Texts& texts, bool isAuto, ToolRequest& request) {
    if (!texts.axis.empty()) {
        if (!texts.centre.empty())
            throw Failure(Fault::Request,
                          "--centre and --axis both say where the axis is; use one");
        const auto n =
            ReadNumbers("--axis", texts.axis, 4, "give two points X1,Y1,X2,Y2 of the axis");
        request.axis = Axis{{n[0], n[1]}, {n[2], n[3]}};
        if (n[0] == n[2] && n[1] == n[3])
            throw Failure(Fault::Request, "--axis: " + Quoted(texts.axis) +
                                              " has no length; give two points that are apart");
    } else if (!texts.centre.empty()) {
        const auto n = ReadNumbers("--centre", texts.centre, 2, "give X,Y of a point on the axis");
        request.axis = Axis::Level({n[0], n[1]});
    }
    if (isAuto && (request.axis || request.ignoresAxis))
        throw Failure(Fault::Request,
                      "--auto looks for the axis itself; leave --centre, --axis and "
                      "--no-axis out");
    if (!texts.window.empty() && !texts.crossing.empty())
        throw Failure(Fault::Request, "--window and --crossing both say what is picked; use one");
    const char* const option = texts.crossing.empty() ? "--window" : "--crossing";
    const std::string& corners = texts.crossing.empty() ? texts.window : texts.crossing;
    if (corners.empty()) return;
    const auto n = ReadNumbers(option, corners, 4, "give two corners X1,Y1,X2,Y2");
    Box window;
    window.Add(Point{n[0], n[1]});
    window.Add(Point{n[2], n[3]});
    if (window.Width() == 0 || window.Height() == 0)
        throw Failure(Fault::Request, std::string(option) + ": " + Quoted(corners) +
                                          " has no area; give two opposite corners X1,Y1,X2,Y2");
    request.rule.window = window;
    request.rule.isCrossing = !texts.crossing.empty();
}

void RequireSolidsAxis(const ToolRequest& request) {
    const bool isSolid = request.solid.Any() || !request.profile.empty() || request.parts.IsSplit();
    if (request.ignoresAxis && !request.axis && isSolid)
        throw Failure(Fault::Request,
                      "a solid needs its axis; add --centre X,Y, a point on the tool's axis");
}

void DeclareTool(CLI::App& command, ToolParameters& parameters, bool& json, Texts& texts) {
    command
        .add_option("--half", texts.half,
                    "the half to envelop, left of the axis' direction: upper; right of it: lower; "
                    "or both, which is what the turning tool sweeps (exact: both; else upper)")
        ->check(CLI::IsMember({NameOf(Half::Upper), NameOf(Half::Lower), NameOf(Half::Both)}));
    command
        .add_option("--algorithm", texts.algorithm,
                    "exact: from the true curves, about an axis in any direction; 3: step by step, "
                    "as the plug-in's dialogs do, the outline seen from the sides of a level axis; "
                    "hatch: the boundary traced around the tool; 1, 2: earlier forms of 3, whose "
                    "arcs stay chords: 1 may reach across the axis, 2 puts the envelope 1000 units "
                    "to the right (exact)")
        ->check(CLI::IsMember(AlgorithmNames()));
    command.add_flag("--take-circles", parameters.takeCircles,
                     "exact: full circles and ellipses are part of the contour");
    command.add_flag("--include-dashed", parameters.includeDashed, "keep dashed and centre lines");
    command.add_flag("--vertical-ends", parameters.verticalEnds,
                     "close both ends by vertical lines down to the axis");
    DeclareLengths(command, texts.lengths);
    DeclareParts(command, texts.parts);
    command.add_flag("--json", json, "print one JSON object and nothing else");
}

Half HalfOf(const std::string& name, Algorithm algorithm) {
    for (const Half half : {Half::Upper, Half::Lower, Half::Both})
        if (name == NameOf(half)) return half;
    return algorithm == Algorithm::Exact ? Half::Both : Half::Upper;
}

// ignoresAxis  only the engine's steps know an outline without one
void ReadTool(const Texts& texts, bool ignoresAxis, ToolParameters& parameters,
              double& chordTolerance, std::vector<std::string>& warnings) {
    parameters.algorithm = !texts.algorithm.empty() ? AlgorithmOf(texts.algorithm)
                           : ignoresAxis            ? Algorithm::Live
                                                    : Algorithm::Exact;
    const bool isExact = parameters.algorithm == Algorithm::Exact;
    if (isExact && ignoresAxis)
        throw Failure(Fault::Request,
                      "the exact envelope has an axis; leave --no-axis out, or use --algorithm 3");
    parameters.half = HalfOf(texts.half, parameters.algorithm);
    if (!isExact && parameters.half == Half::Both)
        throw Failure(Fault::Request,
                      "--half both is of the exact envelope; use --half upper or "
                      "lower, or --algorithm exact");
    if (!isExact && parameters.takeCircles)
        throw Failure(Fault::Request,
                      "--take-circles is of the exact envelope; use --algorithm exact");
    ReadLengths(texts.lengths, parameters, chordTolerance);
    for (const std::string& name : IdleLengths(texts.lengths, parameters.algorithm))
        warnings.push_back(name + " changes nothing with --algorithm " +
                           NameOf(parameters.algorithm));
}

void DeclarePatterns(CLI::App& command, const char* name, std::vector<std::string>& patterns,
                     const char* help) {
    command.add_option(name, patterns, help)->expected(1)->take_all();
}

void DeclareCompute(CLI::App& command, ComputeOptions& options, Texts& texts) {
    ToolRequest& request = options.request;
    command.add_option("IN", request.input, "the drawing, a DXF or DWG file")->required();
    command.add_option("--centre,--center", texts.centre, "X,Y of a point on the tool's axis");
    command.add_option("--axis", texts.axis,
                       "X1,Y1,X2,Y2: the tool's axis in any direction, by two points");
    command.add_option("--window", texts.window, "X1,Y1,X2,Y2: pick inside this rectangle only");
    command.add_option("--crossing", texts.crossing,
                       "X1,Y1,X2,Y2: pick inside this rectangle, and what crosses it");
    DeclarePatterns(
        command, "--layer", request.rule.layers,
        "pick on these layers only: a name, * and ? stand for anything; may be repeated");
    DeclarePatterns(command, "--exclude-layer", request.rule.withoutLayers,
                    "pick nothing on these layers; may be repeated");
    DeclarePatterns(command, "--exclude-type", request.rule.withoutTypes,
                    "pick none of this type: INSERT, SPLINE, ...; may be repeated");
    DeclareTool(command, request.parameters, options.json, texts);
    command.add_flag("--no-axis", request.ignoresAxis,
                     "pass no axis: the outline of all four sides");
    command.add_flag("--strict", options.isStrict,
                     "exit status 1, too, when something is worth a look");
    command.add_option("-o,--output", request.output, "write the drawing with its envelope");
    command.add_option("--svg", request.svg, "write a picture: drawing, envelope, shaded solid");
    command.add_option("--sat", request.solid.sat, "write the solid as SAT, version 7.0");
    command.add_option("--step", request.solid.step, "write the solid as STEP, AP214");
    command.add_option("--stl", request.solid.stl, "write the solid as binary STL");
    command.add_option("--units", texts.units,
                       "unit of the drawing, whatever its header says: mm, cm, m, inch, ...");
    command.add_option("--png", request.solid.png,
                       "write a picture of the solid above its profile");
    command.add_option("--profile", request.profile,
                       "write a drawing of the solid's closed profile alone, where --zero and "
                       "--direction say");
    command.footer(kComputeFooter);
}

void DeclareBatch(CLI::App& command, BatchOptions& options, Texts& texts) {
    command.add_option("DRAWING", options.inputs,
                       "drawings, DXF or DWG files, folders of them, and patterns in quotes");
    BatchRequest& request = options.request;
    command.add_option("--out", request.out,
                       "folder for the drawings with envelopes and a TOOL.sat each (out)");
    command.add_option("--report", options.report, "write a page to look at, an HTML file");
    command
        .add_option("--jobs", options.jobs, "drawings worked on at a time (one for each processor)")
        ->check(CLI::Range(1, kMostJobs));
    command.add_option("--task", request.tasks, "run this stored task; may be repeated (all)")
        ->expected(1)
        ->take_all();
    command.add_flag("--from-frames", request.fromFrames,
                     "find the tools by their frames although the drawing stores tasks");
    command.add_option("--tools", options.tools,
                       "CSV file that names the tools: name,centre x,centre y,x1,y1,x2,y2");
    command.add_flag("--recursive", options.recursive, "take the folders inside folders, too");
    command.add_option("--watch", options.watch,
                       "compute what comes into this folder until Ctrl-C, and keep one page "
                       "(OUT/index.html) up to date");
    command.add_flag("--force", options.force,
                     "compute drawings again that have not changed since an earlier batch");
    command.add_option("--shard", texts.shard,
                       "K/N: take every N-th drawing only, beginning with the K-th");
    command.add_option("--json-lines", options.jsonLines,
                       "write the results one line a drawing, for qzenvelope report");
    command.add_option("--table", options.table,
                       "write a table of the tools: .csv for spreadsheets, or .json");
    command
        .add_option("--name", texts.name,
                    "what tools are called: frames: by their frames, stored tasks or tools file; "
                    "file: by the drawing's file (frames)")
        ->check(CLI::IsMember({"frames", "file"}));
    command.add_option("--name-pattern", request.name.pattern,
                       "call each tool by the text near it that matches: * any run, ? any "
                       "character, # a digit, @ a letter");
    command.add_flag("--strict", options.isStrict,
                     "exit status 1, too, when something is worth a look");
    command.add_flag("--step", request.step, "write each solid as STEP too");
    command.add_flag("--stl", request.stl, "write each solid as STL too");
    command.add_flag("--profile", request.profile,
                     "write each solid's profile as a drawing, TOOL-profile.dxf");
    DeclareTool(command, request.parameters, options.json, texts);
    command.footer(kBatchFooter);
}

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

Shard ShardOf(const std::string& text) {
    Shard shard;
    if (text.empty()) return shard;
    const char* const end = text.data() + text.size();
    const auto [slash, fault] = std::from_chars(text.data(), end, shard.number);
    bool isGood = fault == std::errc() && slash != end && *slash == '/';
    if (isGood) {
        const auto [last, other] = std::from_chars(slash + 1, end, shard.count);
        isGood = other == std::errc() && last == end;
    }
    if (!isGood || shard.number < 1 || shard.count < shard.number)
        throw Failure(Fault::Request,
                      "--shard: " + Quoted(text) + " is no share; give K/N with K from 1 to N");
    return shard;
}

// Every option that was given, but for those that change no drawing's result: a new option counts
// unless it is named here.
std::string FingerprintOf(const CLI::App& command) {
    static const std::set<std::string> kIdle = {
        "DRAWING",     "--out",   "--report",     "--table",        "--json-lines",
        "--jobs",      "--json",  "--watch",      "--force",        "--shard",
        "--recursive", "--tools", "--time-limit", "--memory-limit", "--help"};
    std::string text;
    for (const CLI::Option* option : command.get_options()) {
        const std::string name = option->get_single_name();
        const std::string key =
            option->get_lnames().empty() ? name : "--" + option->get_lnames()[0];
        if (option->count() == 0 || kIdle.count(key) != 0) continue;
        text += key;
        for (const std::string& value : option->results()) text += " " + Quoted(value);
        text += "\n";
    }
    return text;
}

void CheckTable(const std::string& table) {
    if (!table.empty() && !EndsWith(table, ".csv") && !EndsWith(table, ".json"))
        throw Failure(Fault::Request, "--table: " + Quoted(table) +
                                          " is no kind of table; give a name that ends with .csv "
                                          "or .json");
}

// Ways to name the tools that exclude one another, and files of unknown kinds.
void CheckBatch(const BatchOptions& options) {
    if (options.inputs.empty() && options.watch.empty())
        throw Failure(Fault::Request,
                      "no drawing is named; name drawings, folders or patterns, or a folder with "
                      "--watch");
    if (!options.inputs.empty() && !options.watch.empty())
        throw Failure(Fault::Request, "--watch takes the drawings of its folder; name no others");
    CheckTable(options.table);
    const char* const remedy = "; use one of the two";
    if (!options.tools.empty() && !options.request.tasks.empty())
        throw Failure(Fault::Request,
                      std::string("--tools names the tools, --task takes stored ones") + remedy);
    if (options.request.fromFrames && !options.request.tasks.empty())
        throw Failure(
            Fault::Request,
            std::string("--from-frames passes over the stored tasks, --task takes them") + remedy);
    if (options.request.fromFrames && !options.tools.empty())
        throw Failure(Fault::Request,
                      std::string("--tools names the tools, --from-frames finds them") + remedy);
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

// The parser's own message does not name the word that is no command.
void RequireCommand(const std::vector<std::string>& arguments, const CLI::App& app) {
    const char* const remedy = "; use compute, batch, report, info or copy, see qzenvelope --help";
    if (arguments.empty()) throw Failure(Fault::Request, std::string("no command given") + remedy);
    if (!arguments[0].empty() && arguments[0][0] == '-') return;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        if (command->get_name() == arguments[0]) return;
    throw Failure(Fault::Request, "there is no command " + Quoted(arguments[0]) + remedy);
}

}  // namespace

ExitStatus StatusOf(Fault fault) {
    return fault == Fault::Request || fault == Fault::Input ? kUsage : kNoResult;
}

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    Texts texts;
    bool isAuto = false;
    CLI::App app("Computes the envelope line of a rotating tool from its drawing.", "qzenvelope");
    app.set_version_flag("--version", VersionText());
    app.require_subcommand(1);
    app.footer(kMainFooter);
    CLI::App& compute = *app.add_subcommand("compute", "compute the envelope of one tool");
    DeclareCompute(compute, options.compute, texts);
    compute.add_flag("--auto", isAuto, "find the tools and their axes, as without --centre");
    CLI::App& batch = *app.add_subcommand("batch", "compute every tool of many drawings");
    DeclareBatch(batch, options.batch, texts);
    CLI::App& info = *app.add_subcommand(
        "info", "list layers, entities, frames with their tool numbers, stored tasks, faults");
    info.add_option("DRAWING", options.info.input, "the drawing, a DXF file")->required();
    info.add_flag("--json", options.info.json, "print one JSON object and nothing else");
    CLI::App& report = *app.add_subcommand(
        "report", "put the results of batches together: pages, an index, a table");
    report.add_option("RESULTS", options.report.inputs, "files that batch --json-lines wrote")
        ->required();
    report.add_option(
        "--report", options.report.report,
        "write the index of the pages, an HTML file; pages and pictures lie beside it");
    report.add_option("--table", options.report.table,
                      "write a table of all tools: .csv for spreadsheets, or .json");
    CLI::App& copy =
        *app.add_subcommand("copy", "read a drawing and write it back: nothing is lost");
    copy.add_option("IN", options.copy.input, "the drawing to read")->required();
    copy.add_option("OUT", options.copy.output, "the file to write; may be IN")->required();

    for (CLI::App* command : {&compute, &batch, &info, &copy}) {
        DeclareLimits(*command, texts.limits, command == &compute || command == &batch);
        command->add_option(
            "--dwg-converter", options.dwgConverter,
            "command that converts between DWG and DXF, with {in} and {out} for the "
            "files (QZ_DWG_CONVERTER, else ODAFileConverter or dwg2dxf)");
    }

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
                      std::string(error.what()) + "; see qzenvelope" + name + " --help");
    }
    ReadLimits(texts.limits, options);
    if (info) options.command = Options::Command::Info;
    if (copy) options.command = Options::Command::Copy;
    if (report) {
        options.command = Options::Command::Report;
        CheckTable(options.report.table);
        if (options.report.report.empty() && options.report.table.empty())
            throw Failure(Fault::Request, "nothing is to be written; give --report or --table");
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
                                                  " is no unit; use mm, cm, m, inch or ft");
        }
        options.compute.findsTools = !request.axis && !request.ignoresAxis;
    }
    if (batch) {
        options.command = Options::Command::Batch;
        BatchRequest& request = options.batch.request;
        ReadTool(texts, false, request.parameters, request.chordTolerance, options.warnings);
        request.withPage = !options.batch.report.empty() || !options.batch.jsonLines.empty();
        options.batch.shard = ShardOf(texts.shard);
        options.batch.fingerprint = FingerprintOf(batch);
        request.parts = ReadParts(texts.parts);
        request.name.byFile = texts.name == "file";
        CheckBatch(options.batch);
    }
    return options;
}

}  // namespace app
