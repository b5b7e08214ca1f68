// The SDK's own text class.
#pragma once

#include <string>

#include "adesk.h"

// Wide text with value semantics.
class AcString {
public:
    AcString() = default;
    // A null pointer gives the empty text.
    AcString(const ACHAR* text) : m_text(text ? text : ACRX_T("")) {}
    // The first characters of a text, which may hold zeros.
    AcString(const ACHAR* text, unsigned int length) : m_text(text, length) {}
    explicit AcString(ACHAR ch) : m_text(1, ch) {}  // one character
    AcString(const char* utf8);                     // bytes that are no UTF-8 give U+FFFD each

    // The text with its end mark; valid until the object changes. All four names mean the same.
    operator const ACHAR*() const { return m_text.c_str(); }
    const ACHAR* kACharPtr() const { return m_text.c_str(); }
    const ACHAR* constPtr() const { return m_text.c_str(); }
    const ACHAR* kwszPtr() const { return m_text.c_str(); }
    bool isEmpty() const { return m_text.empty(); }  // true without a character
    // in elements of ACHAR, not in letters
    unsigned int length() const { return static_cast<unsigned int>(m_text.size()); }
    // Keeps the room that the text had.
    AcString& setEmpty() {
        m_text.clear();
        return *this;
    }

    // A null pointer empties it.
    AcString& operator=(const ACHAR* text) {
        m_text = text ? text : ACRX_T("");
        return *this;
    }
    // At the end; O(length of the added text) on average.
    AcString& operator+=(const ACHAR* text) {
        m_text += text;
        return *this;
    }
    AcString& append(const ACHAR* text) { return *this += text; }

    // Less than, equal to or greater than 0; without case: simple lower-casing, no collation.
    int compare(const ACHAR* text) const { return std::wcscmp(m_text.c_str(), text); }
    int compareNoCase(const ACHAR* text) const { return _tcsicmp(m_text.c_str(), text); }
    // By the characters' numbers, with case.
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
