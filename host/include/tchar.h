// Text macros and the wide C string functions under their neutral names, Unicode build only.
#pragma once

#include <cwchar>

#include "host_wintypes.h"

// A text of the build's own characters. All three mean the same.
#define _T(text) HOST_WIDEN(text)
#define _TEXT(text) HOST_WIDEN(text)
#define TEXT(text) HOST_WIDEN(text)
#define HOST_WIDEN(text) L##text

typedef wchar_t _TCHAR;

// The C library's functions of the same meaning.
inline std::size_t _tcslen(const TCHAR* text) { return std::wcslen(text); }
inline int _tcscmp(const TCHAR* a, const TCHAR* b) { return std::wcscmp(a, b); }
inline int _tcsncmp(const TCHAR* a, const TCHAR* b, std::size_t n) { return std::wcsncmp(a, b, n); }
inline const TCHAR* _tcsstr(const TCHAR* text, const TCHAR* part) {
    return std::wcsstr(text, part);
}
inline TCHAR* _tcsstr(TCHAR* text, const TCHAR* part) { return std::wcsstr(text, part); }
inline const TCHAR* _tcschr(const TCHAR* text, TCHAR ch) { return std::wcschr(text, ch); }
inline TCHAR* _tcschr(TCHAR* text, TCHAR ch) { return std::wcschr(text, ch); }
inline const TCHAR* _tcsrchr(const TCHAR* text, TCHAR ch) { return std::wcsrchr(text, ch); }
inline TCHAR* _tcsrchr(TCHAR* text, TCHAR ch) { return std::wcsrchr(text, ch); }

// Compare without case: character by character after simple lower-casing, no collation. Less than,
// equal to or greater than 0 by the first pair of lower-cased characters that differ.
int _tcsicmp(const TCHAR* a, const TCHAR* b);
int _tcsnicmp(const TCHAR* a, const TCHAR* b, std::size_t n);

// The number at the start of the text, leading blanks skipped; 0 when there is none. Integers stop
// at the ends of their range. None of them follows the process locale: the decimal point is a
// point.
int _ttoi(const TCHAR* text);
std::int64_t _ttoi64(const TCHAR* text);
double _tstof(const TCHAR* text);

// As _tstof; *end receives where the number ends, or text itself when there is none. Too large a
// number is infinite, too small a one 0. Takes decimal and hexadecimal numbers, inf and nan.
double _tcstod(const TCHAR* text, TCHAR** end);

#ifndef _WIN32  // there the C library has these
inline int _wtoi(const wchar_t* text) { return _ttoi(text); }
inline std::int64_t _wtoi64(const wchar_t* text) { return _ttoi64(text); }
inline double _wtof(const wchar_t* text) { return _tstof(text); }
inline int _wcsicmp(const wchar_t* a, const wchar_t* b) { return _tcsicmp(a, b); }
#endif
