#include <algorithm>
#include <cstdarg>

#include "AcString.h"
#include "host/base/format.h"
#include "host/base/letter_case.h"

AcString::AcString(const char* utf8) : m_text(host::Widen(utf8 ? utf8 : "")) {}

int AcString::find(const ACHAR* text) const {
    const std::size_t at = m_text.find(text);
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

AcString AcString::substr(int start, int count) const {
    const std::size_t from = static_cast<std::size_t>((std::max)(start, 0));
    AcString part;
    if (from < m_text.size())
        part.m_text =
            m_text.substr(from, count < 0 ? std::wstring::npos : static_cast<std::size_t>(count));
    return part;
}

AcString& AcString::makeUpper() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), host::UpperCase);
    return *this;
}

AcString& AcString::makeLower() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), host::LowerCase);
    return *this;
}

AcString& AcString::format(const ACHAR* fmt, ...) {
    std::wstring text;
    va_list args;
    va_start(args, fmt);
    host::AppendFormatted(text, fmt, args);
    va_end(args);
    m_text = text;
    return *this;
}
