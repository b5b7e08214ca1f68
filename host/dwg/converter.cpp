#include "host/dwg/converter.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "host/dwg/drawing_file.h"
#include "host/sys/run_program.h"

namespace host::dwg {
namespace {

namespace fs = std::filesystem;

constexpr double kUsualLimit = 300;   // seconds that a conversion may take
constexpr double kVersionLimit = 10;  // and the question for the version
constexpr std::size_t kMostSaid = 400;

std::string& AskedConverter() {
    static std::string command;
    return command;
}

double TimeLimit() {
    const char* const text = std::getenv("QZ_DWG_TIME_LIMIT");
    const double seconds = text != nullptr ? std::strtod(text, nullptr) : 0;
    return seconds > 0 ? seconds : kUsualLimit;
}

// On one line, its end, which has the reason, in preference.
std::string OneLine(const std::string& output) {
    std::string line;
    for (const char c : output) {
        const bool isBreak = static_cast<unsigned char>(c) < 0x20;
        if (isBreak && (line.empty() || line.back() == ' ')) continue;
        line += isBreak ? ' ' : c;
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    if (line.size() > kMostSaid) line = "... " + line.substr(line.size() - kMostSaid);
    return line;
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

// A way to convert one file.
struct Way {
    std::vector<std::string> command;  // empty: there is none
    std::string how, reason;
    std::string result;  // where the file comes out
};

Way ByTemplate(const std::string& command, const char* source, const std::string& from,
               const std::string& to) {
    Way way;
    if (command.find("{in}") == std::string::npos || command.find("{out}") == std::string::npos) {
        way.reason = std::string(source) + " '" + command +
                     "' lacks {in} or {out}, which stand for the two files";
        return way;
    }
    for (const std::string& word : WordsOf(command))
        way.command.push_back(Replaced(Replaced(word, "{in}", from), "{out}", to));
    way.how = way.command.front();
    way.result = to;
    return way;
}

std::string VersionOf(const std::string& program) {
    const ProgramEnd end = RunProgram({program, "--version"}, kVersionLimit);
    if (!end.isStarted || end.isLate || end.status != 0) return "dwg2dxf";
    return OneLine(end.output.substr(0, end.output.find('\n')));
}

Way ByDwg2dxf(const std::string& program, const std::string& from, const std::string& to) {
    Way way;
    if (IsDwgPath(to)) {
        way.reason = "the converter " + program +
                     " makes DXF files only; write to a name that "
                     "ends in .dxf, or install ODAFileConverter";
        return way;
    }
    way.command = {program, "-y", "-o", to, from};
    way.how = VersionOf(program) + " (" + program + ")";
    way.result = to;
    return way;
}

// It takes folders: of the one that the file lies in, the file alone by its name.
Way ByOda(const std::string& program, const std::string& from, const std::string& to,
          const std::string& folder) {
    Way way;
    const fs::path out = fs::path(folder) / "converted";
    std::error_code error;
    fs::create_directory(out, error);
    const std::string kind = IsDwgPath(to) ? "DWG" : "DXF";
    way.command = {
        program, fs::path(from).parent_path().string(), out.string(), "ACAD2018", kind, "0",
        "1",     fs::path(from).filename().string()};
    way.how = "ODAFileConverter (" + program + ")";
    way.result = (out / fs::path(from).stem()).string() + (IsDwgPath(to) ? ".dwg" : ".dxf");
    return way;
}

Way FindWay(const std::string& from, const std::string& to, const std::string& folder) {
    if (!AskedConverter().empty()) return ByTemplate(AskedConverter(), "--dwg-converter", from, to);
    const char* const set = std::getenv("QZ_DWG_CONVERTER");
    if (set != nullptr && *set != '\0') return ByTemplate(set, "QZ_DWG_CONVERTER", from, to);
    if (const std::string oda = FindProgram("ODAFileConverter"); !oda.empty())
        return ByOda(oda, from, to, folder);
    if (const std::string dwg2dxf = FindProgram("dwg2dxf"); !dwg2dxf.empty())
        return ByDwg2dxf(dwg2dxf, from, to);
    Way way;
    way.reason =
        "there is no converter for DWG; install ODAFileConverter or dwg2dxf, name one with "
        "--dwg-converter 'COMMAND {in} {out}', or save the drawing as DXF";
    return way;
}

std::string Seconds(double seconds) {
    std::string text = std::to_string(seconds);
    return text.substr(0, text.find_last_not_of(".0") + 1) + " s";
}

}  // namespace

void SetConverter(const std::string& command) { AskedConverter() = command; }

bool HasConverter() {
    const char* const named = std::getenv("QZ_DWG_CONVERTER");
    return !AskedConverter().empty() || (named != nullptr && *named != '\0') ||
           !FindProgram("ODAFileConverter").empty() || !FindProgram("dwg2dxf").empty();
}

std::vector<std::string> WordsOf(const std::string& command) {
    std::vector<std::string> words;
    std::string word;
    bool isWord = false;
    char quote = 0;
    for (const char c : command) {
        if (quote != 0) {
            if (c == quote)
                quote = 0;
            else
                word += c;
        } else if (c == '"' || c == '\'') {
            quote = c;
            isWord = true;
        } else if (c == ' ' || c == '\t') {
            if (isWord) words.push_back(word);
            word.clear();
            isWord = false;
        } else {
            word += c;
            isWord = true;
        }
    }
    if (isWord) words.push_back(word);
    return words;
}

Conversion Convert(const std::string& from, const std::string& to, const std::string& folder) {
    Conversion conversion;
    const Way way = FindWay(from, to, folder);
    conversion.reason = way.reason;
    if (way.command.empty()) return conversion;
    conversion.how = way.how;
    const double limit = TimeLimit();
    const ProgramEnd end = RunProgram(way.command, limit);
    conversion.said = OneLine(end.output);
    const std::string what = "the converter " + way.how;
    if (!end.isStarted)
        conversion.reason = what + " cannot be started: " + end.output;
    else if (end.isLate)
        conversion.reason = what + " took longer than " + Seconds(limit) + " and was ended";
    else if (end.signal != 0)
        conversion.reason = what + " was ended by signal " + std::to_string(end.signal);
    else if (end.status != 0)
        conversion.reason = what + " failed with status " + std::to_string(end.status);
    else if (std::error_code error; !fs::is_regular_file(way.result, error))
        conversion.reason = what + " made no file";
    if (!conversion.reason.empty()) {
        if (end.isStarted && !conversion.said.empty()) conversion.reason += ": " + conversion.said;
        return conversion;
    }
    std::error_code error;
    if (way.result != to) fs::rename(way.result, to, error);
    conversion.isDone = !error;
    if (error) conversion.reason = what + ": its file cannot be taken: " + error.message();
    return conversion;
}

}  // namespace host::dwg
