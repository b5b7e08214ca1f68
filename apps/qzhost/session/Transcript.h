// What a session said, as one reads it on a command line.
#pragma once

#include <functional>
#include <string>

namespace app {

// Joins what comes in pieces to lines. A line end at the beginning of a line is dropped: prompts
// begin with one and messages end with one, whatever stands before or behind.
class Transcript {
public:
    using Sink = std::function<void(const std::string&)>;  // UTF-8, whole lines and pieces
    explicit Transcript(Sink sink) : m_sink(std::move(sink)) {}

    // Text as it comes; '\n' begins a new line.
    void Print(const std::wstring& text);
    // A line of its own; further lines of the text are set in.
    void Line(const std::wstring& text);
    // Behind what was asked, on the same line.
    void Answer(const std::wstring& text);
    // Ends a line that is not ended.
    void Finish();

private:
    Sink m_sink;
    bool m_atStart = true;
};

}  // namespace app
