// CString: the text class of MFC.
#pragma once

#include <cstdarg>

#include "host_wintypes.h"
#include "tchar.h"

template <class Char, class Traits = void>
class CStringT;

// Wide text with value semantics. Copies share one buffer until one of them changes; copying costs
// one atomic increment, so records may carry texts through vectors. A buffer may be shared between
// threads, a single object not. Positions and counts are in elements of wchar_t.
// Wrong positions: GetAt and operator[] need 0 <= i <= GetLength() (the end reads as 0); everywhere
// else positions and counts are cut to the text.
template <>
class CStringT<wchar_t, void> {
public:
    typedef wchar_t XCHAR;          // an element
    typedef const wchar_t* PCXSTR;  // text to read
    typedef wchar_t* PXSTR;         // text to write

    CStringT() noexcept;                       // the empty text; allocates nothing
    CStringT(const CStringT& other) noexcept;  // shares the buffer
    CStringT(CStringT&& other) noexcept;
    CStringT(PCXSTR text);  // a null pointer gives the empty text
    // Unlike Windows, narrow text is UTF-8 whatever the system's code page; bytes that are not give
    // U+FFFD each.
    CStringT(const char* text);
    explicit CStringT(wchar_t ch, int count = 1);  // so many times
    CStringT(PCXSTR text, int length);             // may hold zeros
    ~CStringT();

    CStringT& operator=(const CStringT& other) noexcept;
    CStringT& operator=(CStringT&& other) noexcept;
    CStringT& operator=(PCXSTR text);  // null empties it
    CStringT& operator=(const char* text);
    CStringT& operator=(wchar_t ch);  // one character

    int GetLength() const noexcept;  // elements before the end mark; O(1)
    bool IsEmpty() const noexcept { return GetLength() == 0; }
    void Empty() noexcept;  // gives the buffer back
    XCHAR GetAt(int i) const { return m_pszData[i]; }
    XCHAR operator[](int i) const { return m_pszData[i]; }
    void SetAt(int i, XCHAR ch);                             // 0 <= i < GetLength()
    PCXSTR GetString() const noexcept { return m_pszData; }  // valid until the text changes
    operator PCXSTR() const noexcept { return m_pszData; }
    void SetString(PCXSTR text) { *this = text; }
    // The first elements of a text, which may be this one's own.
    void SetString(PCXSTR text, int length);

    // Room for minLength elements and the end mark, holding the present text; to be followed by
    // ReleaseBuffer, where -1 means up to the first 0.
    PXSTR GetBuffer(int minLength = 0);
    // The same, and the text has that length afterwards, its new part undefined.
    PXSTR GetBufferSetLength(int length);
    void ReleaseBuffer(int newLength = -1);  // the pointer is no longer valid
    void ReleaseBufferSetLength(int newLength) { ReleaseBuffer(newLength); }
    void Preallocate(int length) { GetBuffer(length); }  // room for growth without moving
    void FreeExtra() {}                                  // does nothing: room is kept

    CStringT Left(int count) const;                                    // the first ones
    CStringT Right(int count) const;                                   // the last ones
    CStringT Mid(int first) const { return Mid(first, GetLength()); }  // all from a place on
    CStringT Mid(int first, int count) const;
    // The beginning, as far as its characters are, or are not, of the set.
    CStringT SpanIncluding(PCXSTR set) const;
    CStringT SpanExcluding(PCXSTR set) const;

    // The position, or -1. A search of the empty text finds it at start.
    int Find(PCXSTR text, int start = 0) const;
    int Find(XCHAR ch, int start = 0) const;
    int ReverseFind(XCHAR ch) const;  // the last place
    int FindOneOf(PCXSTR set) const;  // the first place of any of the set

    // Less than, equal to or greater than 0. CompareNoCase lower-cases single characters; Collate
    // does the same as Compare: this host has no collation of its own.
    int Compare(PCXSTR text) const { return std::wcscmp(m_pszData, text); }
    int CompareNoCase(PCXSTR text) const { return _tcsicmp(m_pszData, text); }
    int Collate(PCXSTR text) const { return Compare(text); }
    int CollateNoCase(PCXSTR text) const { return CompareNoCase(text); }

    // O(length of what is added) on average; the argument may be this text.
    CStringT& operator+=(const CStringT& other);
    CStringT& operator+=(PCXSTR text);
    CStringT& operator+=(wchar_t ch);  // one character
    void Append(PCXSTR text) { *this += text; }
    void Append(PCXSTR text, int length);
    void Append(const CStringT& other) { *this += other; }
    void AppendChar(XCHAR ch) { *this += ch; }  // the same by name

    // Microsoft's format rules: %s and %c are wide, %S, %hs, %C narrow; %d %i %u %x %X %o with h,
    // l, ll, I32, I64, I, z, j, t; %f %e %g %a with the C library's meaning, always a decimal
    // point; %p, %%; flags, width, precision, both also as *. %n is refused. Arguments may be this
    // text.
    void Format(PCXSTR format, ...);
    // The format is a string resource of the current module.
    void Format(UINT formatId, ...);
    void FormatV(PCXSTR format, va_list args);
    void AppendFormat(PCXSTR format, ...);  // behind the present text
    void AppendFormat(UINT formatId, ...);
    void AppendFormatV(PCXSTR format, va_list args);

    // Return how many were replaced or removed; Insert and Delete the new length.
    int Replace(XCHAR oldChar, XCHAR newChar);    // every one of them
    int Replace(PCXSTR oldText, PCXSTR newText);  // from the left, without overlaps
    int Remove(XCHAR ch);                         // every one of them
    int Insert(int i, XCHAR ch);                  // before that place
    int Insert(int i, PCXSTR text);
    int Delete(int i, int count = 1);  // from that place on

    CStringT& MakeUpper();  // single letters, as CompareNoCase sees them
    CStringT& MakeLower();
    CStringT& MakeReverse();         // last element first
    CStringT& Truncate(int length);  // longer texts are cut, shorter ones stay

    // Without arguments blanks go (space, tab, line ends), else the given characters.
    CStringT& Trim() { return TrimRight().TrimLeft(); }
    CStringT& Trim(XCHAR ch) { return TrimRight(ch).TrimLeft(ch); }
    CStringT& Trim(PCXSTR set) { return TrimRight(set).TrimLeft(set); }
    CStringT& TrimLeft();  // at the beginning only
    CStringT& TrimLeft(XCHAR ch);
    CStringT& TrimLeft(PCXSTR set);
    CStringT& TrimRight();  // at the end only
    CStringT& TrimRight(XCHAR ch);
    CStringT& TrimRight(PCXSTR set);

    // The next token at or after start; separators before it are skipped. start moves behind the
    // token, and to -1 with an empty result when there is none left.
    CStringT Tokenize(PCXSTR separators, int& start) const;

    // Takes the text of a string resource of the current module; FALSE, and the text unchanged,
    // when there is none (or no module has resources, as in programs without windows).
    BOOL LoadString(UINT id);

private:
    void Assign(PCXSTR text, int length);  // text may lie in this buffer
    void MakeRoom(int length);             // a buffer of its own with that much room
    void Release() noexcept;               // one sharer less; the last frees

    PXSTR m_pszData;  // behind a header that holds the count of sharers, the length and the room
};

// Both builds' names: there is no narrow build here.
typedef CStringT<wchar_t> CStringW;
typedef CStringW CString;

// The two one behind the other, O(length).
CString operator+(const CString& a, const CString& b);
CString operator+(const CString& a, const wchar_t* b);
CString operator+(const wchar_t* a, const CString& b);
CString operator+(const CString& a, wchar_t b);
CString operator+(wchar_t a, const CString& b);

// A text with a text or a pointer on either side.
inline bool operator==(const CString& a, const CString& b) { return a.Compare(b) == 0; }
inline bool operator==(const CString& a, const wchar_t* b) { return a.Compare(b) == 0; }
inline bool operator==(const wchar_t* a, const CString& b) { return 0 == b.Compare(a); }
inline bool operator!=(const CString& a, const CString& b) { return a.Compare(b) != 0; }
inline bool operator!=(const CString& a, const wchar_t* b) { return a.Compare(b) != 0; }
inline bool operator!=(const wchar_t* a, const CString& b) { return 0 != b.Compare(a); }
inline bool operator<(const CString& a, const CString& b) { return a.Compare(b) < 0; }
inline bool operator<(const CString& a, const wchar_t* b) { return a.Compare(b) < 0; }
inline bool operator<(const wchar_t* a, const CString& b) { return 0 < b.Compare(a); }
inline bool operator>(const CString& a, const CString& b) { return a.Compare(b) > 0; }
inline bool operator>(const CString& a, const wchar_t* b) { return a.Compare(b) > 0; }
inline bool operator>(const wchar_t* a, const CString& b) { return 0 > b.Compare(a); }
inline bool operator<=(const CString& a, const CString& b) { return a.Compare(b) <= 0; }
inline bool operator<=(const CString& a, const wchar_t* b) { return a.Compare(b) <= 0; }
inline bool operator<=(const wchar_t* a, const CString& b) { return 0 <= b.Compare(a); }
inline bool operator>=(const CString& a, const CString& b) { return a.Compare(b) >= 0; }
inline bool operator>=(const CString& a, const wchar_t* b) { return a.Compare(b) >= 0; }
inline bool operator>=(const wchar_t* a, const CString& b) { return 0 >= b.Compare(a); }
