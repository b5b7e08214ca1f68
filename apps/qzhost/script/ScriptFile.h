// Scripts as text: one action a line.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace app {

struct ScriptLine {
    int number = 0;  // in the file, from 1
    std::wstring text;
    std::vector<std::wstring> words;

    const std::wstring& Verb() const { return words.front(); }
    // What follows the first `count` words, as it stands there.
    std::wstring Rest(size_t count) const;
};

// Lines with something on them; those that begin with '#' are comments.
std::vector<ScriptLine> ParseScript(const std::string& utf8);

// The line of an action inside another line, behind its first word; nothing when there is none.
std::optional<ScriptLine> InnerLine(const ScriptLine& line);

// True for a line, or one inside it, that takes a picture.
bool NeedsWindows(const ScriptLine& line);

}  // namespace app
