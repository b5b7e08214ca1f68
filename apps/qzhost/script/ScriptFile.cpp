#include "apps/qzhost/script/ScriptFile.h"

#include <cwctype>
#include <sstream>

#include "host/base/format.h"

namespace app {
namespace {

std::wstring Trimmed(const std::wstring& text) {
    size_t from = 0, to = text.size();
    while (from < to && std::iswspace(static_cast<wint_t>(text[from]))) ++from;
    while (to > from && std::iswspace(static_cast<wint_t>(text[to - 1]))) --to;
    return text.substr(from, to - from);
}

ScriptLine MakeLine(int number, const std::wstring& text) {
    ScriptLine line{number, Trimmed(text), {}};
    std::wistringstream in(line.text);
    for (std::wstring word; in >> word;) line.words.push_back(word);
    return line;
}

}  // namespace

std::wstring ScriptLine::Rest(size_t count) const {
    size_t at = 0;
    for (size_t i = 0; i < count && i < words.size(); ++i)
        at = text.find(words[i], at) + words[i].size();
    return Trimmed(text.substr(at));
}

std::vector<ScriptLine> ParseScript(const std::string& utf8) {
    std::vector<ScriptLine> lines;
    std::istringstream in(utf8);
    int number = 0;
    for (std::string raw; std::getline(in, raw);) {
        if (++number == 1 && raw.rfind("\xEF\xBB\xBF", 0) == 0) raw.erase(0, 3);
        ScriptLine line = MakeLine(number, host::Widen(raw));
        if (!line.words.empty() && line.text[0] != L'#') lines.push_back(std::move(line));
    }
    return lines;
}

std::optional<ScriptLine> InnerLine(const ScriptLine& line) {
    if (line.words.size() < 2) return {};
    return MakeLine(line.number, line.Rest(1));
}

bool NeedsWindows(const ScriptLine& line) {
    const std::optional<ScriptLine> inner = InnerLine(line);
    return line.Verb() == L"screenshot" ||
           (line.Verb() == L"later" && inner && NeedsWindows(*inner));
}

}  // namespace app
