// The SDK's own text class.
#pragma once

#include <string>

#include "adesk.h"

// Wide text with value semantics.
class AcString {
public:
    AcString() = default;
    AcString(const ACHAR* text) : m_text(text ? text : ACRX_T("")) {}
    AcString(const ACHAR* text, unsigned int length) : m_text(text, length) {}
    explicit AcString(ACHAR ch) : m_text(1, ch) {}  // one character
    AcString(const char* utf8);                     // bytes that are no UTF-8 give U+FFFD each

    operator const ACHAR*() const { return m_text.c_str(); }
    const ACHAR* kACharPtr() const { return m_text.c_str(); }
    const ACHAR* constPtr() const { return m_text.c_str(); }
    const ACHAR* kwszPtr() const { return m_text.c_str(); }
    bool isEmpty() const { return m_text.empty(); }  // true without a character
    unsigned int length() const { return static_cast<unsigned int>(m_text.size()); }
    AcString& setEmpty() {  // keeps the room that the text had
        m_text.clear();
        return *this;
    }

    AcString& operator=(const ACHAR* text) {  // A null pointer empties it
        m_text = text ? text : ACRX_T("");
        return *this;
    }
    AcString& operator+=(const ACHAR* text) {  // at the end; O(length of the added text) on average
        m_text += text;
        return *this;
    }
    AcString& append(const ACHAR* text) { return *this += text; }

    // Less than, equal to or greater than 0; without case: simple lower-casing, no collation.
    int compare(const ACHAR* text) const { return std::wcscmp(m_text.c_str(), text); }
    int compareNoCase(const ACHAR* text) const { return _tcsicmp(m_text.c_str(), text); }
    bool operator==(const ACHAR* text) const { return compare(text) == 0; }
    bool operator!=(const ACHAR* text) const { return compare(text) != 0; }
    bool operator==(const AcString& other) const { return m_text == other.m_text; }
    bool operator!=(const AcString& other) const { return m_text != other.m_text; }
    bool operator<(const AcString& other) const { return m_text < other.m_text; }

    // The position, or -1.
    int find(const ACHAR* text) const;
    AcString substr(int start, int count) const;  // a negative count means all the rest
    AcString& makeUpper();  // single letters only; some languages' rules need more
    AcString& makeLower();  // likewise

    // Microsoft's rules, as CString::Format.
    AcString& format(const ACHAR* fmt, ...);

private:
    std::wstring m_text;
};
