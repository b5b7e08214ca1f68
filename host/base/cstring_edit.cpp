// CString: searching, changing and formatting.
#include <algorithm>

#include "cstringt.h"
#include "host/base/format.h"
#include "host/base/letter_case.h"
#include "host/base/string_table.h"

namespace {

host::StringLoader g_loader = nullptr;

// What Trim takes away when it is not told.
const wchar_t kBlanks[] = L" \t\n\v\f\r\x85\xA0\x3000";

int Cut(int value, int low, int high) { return (std::min)((std::max)(value, low), high); }

}  // namespace

void host::SetStringLoader(StringLoader loader) { g_loader = loader; }

BOOL CString::LoadString(UINT id) { return g_loader && g_loader(id, *this) ? TRUE : FALSE; }

CString CString::Left(int count) const { return Mid(0, count); }

CString CString::Right(int count) const {
    const int kept = Cut(count, 0, GetLength());
    return Mid(GetLength() - kept, kept);
}

CString CString::Mid(int first, int count) const {
    const int from = Cut(first, 0, GetLength());
    const int kept = Cut(count, 0, GetLength() - from);
    return kept == GetLength() ? *this : CString(m_pszData + from, kept);
}

CString CString::SpanIncluding(PCXSTR set) const {
    return Left(static_cast<int>(std::wcsspn(m_pszData, set)));
}

CString CString::SpanExcluding(PCXSTR set) const {
    return Left(static_cast<int>(std::wcscspn(m_pszData, set)));
}

int CString::Find(PCXSTR text, int start) const {
    if (start < 0 || start > GetLength()) return -1;
    const wchar_t* const found = std::wcsstr(m_pszData + start, text);
    return found ? static_cast<int>(found - m_pszData) : -1;
}

int CString::Find(XCHAR ch, int start) const {
    if (start < 0 || start >= GetLength()) return -1;
    const wchar_t* const end = m_pszData + GetLength();
    const wchar_t* const found = std::find(const_cast<const wchar_t*>(m_pszData) + start, end, ch);
    return found == end ? -1 : static_cast<int>(found - m_pszData);
}

int CString::ReverseFind(XCHAR ch) const {
    int i = GetLength() - 1;
    while (i >= 0 && m_pszData[i] != ch) --i;
    return i;
}

int CString::FindOneOf(PCXSTR set) const {
    const int i = static_cast<int>(std::wcscspn(m_pszData, set));
    return m_pszData[i] ? i : -1;
}

void CString::Format(PCXSTR format, ...) {
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}

void CString::Format(UINT formatId, ...) {
    CString format;
    if (!format.LoadString(formatId)) return;
    va_list args;
    va_start(args, formatId);
    FormatV(format, args);
    va_end(args);
}

void CString::FormatV(PCXSTR format, va_list args) {
    std::wstring text;
    host::AppendFormatted(text, format, args);
    Assign(text.data(), static_cast<int>(text.size()));
}

void CString::AppendFormat(PCXSTR format, ...) {
    va_list args;
    va_start(args, format);
    AppendFormatV(format, args);
    va_end(args);
}

void CString::AppendFormat(UINT formatId, ...) {
    CString format;
    if (!format.LoadString(formatId)) return;
    va_list args;
    va_start(args, formatId);
    AppendFormatV(format, args);
    va_end(args);
}

void CString::AppendFormatV(PCXSTR format, va_list args) {
    std::wstring text;
    host::AppendFormatted(text, format, args);
    Append(text.data(), static_cast<int>(text.size()));
}

int CString::Replace(XCHAR oldChar, XCHAR newChar) {
    const int length = GetLength();
    const int count = static_cast<int>(std::count(m_pszData, m_pszData + length, oldChar));
    if (count > 0 && oldChar != newChar) {
        wchar_t* const text = GetBuffer();
        std::replace(text, text + length, oldChar, newChar);
    }
    return count;
}

int CString::Replace(PCXSTR oldText, PCXSTR newText) {
    const int oldLength = oldText ? static_cast<int>(std::wcslen(oldText)) : 0;
    if (oldLength == 0) return 0;
    CString result;
    int count = 0, from = 0;
    for (int at = Find(oldText); at >= 0; at = Find(oldText, from), ++count) {
        result.Append(m_pszData + from, at - from);
        if (newText) result.Append(newText);
        from = at + oldLength;
    }
    if (count > 0) {
        result.Append(m_pszData + from, GetLength() - from);
        *this = std::move(result);
    }
    return count;
}

int CString::Remove(XCHAR ch) {
    const int length = GetLength();
    wchar_t* const text = GetBuffer();
    const int kept = static_cast<int>(std::remove(text, text + length, ch) - text);
    ReleaseBuffer(kept);
    return length - kept;
}

int CString::Insert(int i, XCHAR ch) {
    const wchar_t text[] = {ch, 0};
    return Insert(i, text);
}

int CString::Insert(int i, PCXSTR text) {
    const int at = Cut(i, 0, GetLength());
    CString result = Left(at);
    result += text;
    result.Append(m_pszData + at, GetLength() - at);
    *this = std::move(result);
    return GetLength();
}

int CString::Delete(int i, int count) {
    const int at = Cut(i, 0, GetLength());
    const int gone = Cut(count, 0, GetLength() - at);
    if (gone > 0) {
        const int length = GetLength();
        wchar_t* const text = GetBuffer();
        std::copy(text + at + gone, text + length, text + at);
        ReleaseBuffer(length - gone);
    }
    return GetLength();
}

CString& CString::MakeUpper() {
    wchar_t* const text = GetBuffer();
    std::transform(text, text + GetLength(), text, host::UpperCase);
    return *this;
}

CString& CString::MakeLower() {
    wchar_t* const text = GetBuffer();
    std::transform(text, text + GetLength(), text, host::LowerCase);
    return *this;
}

CString& CString::MakeReverse() {
    wchar_t* const text = GetBuffer();
    std::reverse(text, text + GetLength());
    return *this;
}

CString& CString::Truncate(int length) {
    if (length < GetLength()) Delete(length, GetLength());
    return *this;
}

CString& CString::TrimLeft() { return TrimLeft(kBlanks); }
CString& CString::TrimRight() { return TrimRight(kBlanks); }

CString& CString::TrimLeft(XCHAR ch) {
    const wchar_t set[] = {ch, 0};
    return TrimLeft(set);
}

CString& CString::TrimRight(XCHAR ch) {
    const wchar_t set[] = {ch, 0};
    return TrimRight(set);
}

CString& CString::TrimLeft(PCXSTR set) {
    Delete(0, static_cast<int>(std::wcsspn(m_pszData, set)));
    return *this;
}

CString& CString::TrimRight(PCXSTR set) {
    int length = GetLength();
    while (length > 0 && m_pszData[length - 1] && std::wcschr(set, m_pszData[length - 1])) --length;
    return Truncate(length);
}

CString CString::Tokenize(PCXSTR separators, int& start) const {
    if (start >= 0 && start <= GetLength()) {
        const wchar_t* const from = m_pszData + start;
        const int skipped = static_cast<int>(std::wcsspn(from, separators));
        const int length = static_cast<int>(std::wcscspn(from + skipped, separators));
        if (length > 0) {
            const int first = start + skipped;
            start = first + length + 1;  // behind the separator that ended the token
            return CString(m_pszData + first, length);
        }
    }
    start = -1;
    return CString();
}
