#include "host/ed/typed_text.h"

#include <algorithm>

namespace host {

void TypedText::Append(const std::wstring& text) {
    m_text += text;
    m_ends.push_back(m_text.size());
}

std::wstring TypedText::Next(bool spacesAllowed) {
    const wchar_t* const ends = spacesAllowed ? L"\n\r" : L" \n\r";
    const size_t end = m_text.find_first_of(ends, m_position);
    std::wstring answer = m_text.substr(m_position, end - m_position);
    if (end == std::wstring::npos) {
        Clear();
        return answer;
    }
    m_position = end + 1;
    if (m_text[end] == L'\r' && m_position < m_text.size() && m_text[m_position] == L'\n')
        ++m_position;
    if (IsEmpty()) Clear();
    return answer;
}

void TypedText::DropPiece() {
    // The piece of the last character taken; a piece that was used up is not the next one.
    const auto end = std::lower_bound(m_ends.begin(), m_ends.end(), m_position);
    if (end != m_ends.end()) m_position = *end;
    if (IsEmpty()) Clear();
}

void TypedText::Clear() {
    m_text.clear();
    m_ends.clear();
    m_position = 0;
}

}  // namespace host
