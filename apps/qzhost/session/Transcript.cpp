#include "apps/qzhost/session/Transcript.h"

#include "host/base/format.h"

namespace app {

void Transcript::Print(const std::wstring& text) {
    std::wstring out;
    for (const wchar_t c : text) {
        if (c == L'\r' || (c == L'\n' && m_atStart)) continue;
        out += c;
        m_atStart = c == L'\n';
    }
    if (!out.empty()) m_sink(host::Narrow(out));
}

void Transcript::Line(const std::wstring& text) {
    Finish();
    std::wstring out;
    for (const wchar_t c : text) {
        if (c == L'\n')
            out += L"\n     ";
        else
            out += c;
    }
    Print(out);
    Finish();
}

void Transcript::Answer(const std::wstring& text) {
    Print(text);
    Finish();
}

void Transcript::Finish() {
    if (!m_atStart) Print(L"\n");
}

}  // namespace app
