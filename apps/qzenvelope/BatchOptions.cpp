#include "apps/qzenvelope/BatchOptions.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <set>

#include "apps/qzenvelope/Language.h"
#include "apps/qzenvelope/PartOptions.h"
#include "product/base/Text.h"
#include "product/base/Words.h"

namespace app {
namespace {

// More than any machine that draws tools has processors.
constexpr int kMostJobs = 256;

}  // namespace

void DeclareBatch(CLI::App& command, BatchOptions& options, OptionTexts& texts) {
    command.add_option("DRAWING", options.inputs,
                       Tr("drawings, DXF or DWG files, folders of them, and patterns in quotes"));
    BatchRequest& request = options.request;
    command.add_option("--out", request.out,
                       Tr("folder for the drawings with envelopes and a TOOL.sat each (out)"));
    command.add_option("--report", options.report, Tr("write a page to look at, an HTML file"));
    command
        .add_option("--jobs", options.jobs,
                    Tr("drawings worked on at a time (one for each processor)"))
        ->check(CLI::Range(1, kMostJobs));
    command.add_option("--task", request.tasks, Tr("run this stored task; may be repeated (all)"))
        ->expected(1)
        ->take_all();
    command.add_flag("--from-frames", request.fromFrames,
                     Tr("find the tools by their frames although the drawing stores tasks"));
    command.add_option("--tools", options.tools,
                       Tr("CSV file that names the tools: name,centre x,centre y,x1,y1,x2,y2"));
    command.add_flag("--recursive", options.recursive, Tr("take the folders inside folders, too"));
    command.add_option("--watch", options.watch,
                       Tr("compute what comes into this folder until Ctrl-C, and keep one page "
                          "(OUT/index.html) up to date"));
    command.add_flag("--force", options.force,
                     Tr("compute drawings again that have not changed since an earlier batch"));
    command.add_option("--shard", texts.shard,
                       Tr("K/N: take every N-th drawing only, beginning with the K-th"));
    command.add_option("--json-lines", options.jsonLines,
                       Tr("write the results one line a drawing, for qzenvelope report"));
    command.add_option("--table", options.table,
                       Tr("write a table of the tools: .csv for spreadsheets, or .json"));
    command
        .add_option(
            "--name", texts.name,
            Tr("what tools are called: frames: by their frames, stored tasks or tools file; "
               "file: by the drawing's file (frames)"))
        ->check(CLI::IsMember({"frames", "file"}));
    command.add_option("--name-pattern", request.name.pattern,
                       Tr("call each tool by the text near it that matches: * any run, ? any "
                          "character, # a digit, @ a letter"));
    command.add_flag("--strict", options.isStrict,
                     Tr("exit status 1, too, when something is worth a look"));
    command.add_flag("--step", request.step, Tr("write each solid as STEP too"));
    command.add_flag("--stl", request.stl, Tr("write each solid as STL too"));
    command.add_flag("--profile", request.profile,
                     Tr("write each solid's profile as a drawing, TOOL-profile.dxf"));
}

namespace {

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
                      "--shard: " + Quoted(text) + Tr(" is no share; give K/N with K from 1 to N"));
    return shard;
}

// Every option that was given, but for those that change no drawing's result: a new option counts
// unless it is named here.
std::string FingerprintOf(const CLI::App& command) {
    static const std::set<std::string> kIdle = {
        "DRAWING", "--out",   "--report",     "--table",        "--json-lines", "--jobs",
        "--json",  "--watch", "--force",      "--shard",        "--recursive",  "--strict",
        "--lang",  "--tools", "--time-limit", "--memory-limit", "--help"};
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

}  // namespace

void CheckTable(const std::string& table) {
    if (!table.empty() && !EndsWith(table, ".csv") && !EndsWith(table, ".json"))
        throw Failure(Fault::Request,
                      "--table: " + Quoted(table) +
                          Tr(" is no kind of table; give a name that ends with .csv "
                             "or .json"));
}

namespace {

// Ways to name the tools that exclude one another, and files of unknown kinds.
void CheckBatch(const BatchOptions& options) {
    if (options.inputs.empty() && options.watch.empty())
        throw Failure(
            Fault::Request,
            Tr("no drawing is named; name drawings, folders or patterns, or a folder with "
               "--watch"));
    if (!options.inputs.empty() && !options.watch.empty())
        throw Failure(Fault::Request,
                      Tr("--watch takes the drawings of its folder; name no others"));
    CheckTable(options.table);
    const char* const remedy = Tr("; use one of the two");
    if (!options.tools.empty() && !options.request.tasks.empty())
        throw Failure(
            Fault::Request,
            std::string(Tr("--tools names the tools, --task takes stored ones")) + remedy);
    if (options.request.fromFrames && !options.request.tasks.empty())
        throw Failure(
            Fault::Request,
            std::string(Tr("--from-frames passes over the stored tasks, --task takes them")) +
                remedy);
    if (options.request.fromFrames && !options.tools.empty())
        throw Failure(
            Fault::Request,
            std::string(Tr("--tools names the tools, --from-frames finds them")) + remedy);
}

}  // namespace

void ReadBatch(const CLI::App& command, const OptionTexts& texts, BatchOptions& options) {
    BatchRequest& request = options.request;
    request.withPage = !options.report.empty() || !options.jsonLines.empty();
    options.shard = ShardOf(texts.shard);
    // Remarks are remembered in words.
    options.fingerprint = FingerprintOf(command) + Language();
    request.parts = ReadParts(texts.parts);
    request.name.byFile = texts.name == "file";
    CheckBatch(options);
}

}  // namespace app
