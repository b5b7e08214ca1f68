// Text on its way to the command line: what sendStringToExecute queued.
#pragma once

#include <string>
#include <vector>

namespace host {

// A stream of keystrokes. A line end is Enter; where blanks are not part of the answer, a blank is
// Enter too.
class TypedText {
public:
    void Append(const std::wstring& text);
    bool IsEmpty() const { return m_position == m_text.size(); }

    // Takes the next answer, without the Enter that ended it; empty for Enter alone. The end of the
    // text ends an answer as well. Call only when not empty.
    std::wstring Next(bool spacesAllowed);

    // Forgets the rest, as Esc does.
    void Clear();
    // Forgets what came in one piece with the answer taken last.
    void DropPiece();

private:
    std::wstring m_text;
    size_t m_position = 0;
    std::vector<size_t> m_ends;  // of the pieces that were appended
};

}  // namespace host
