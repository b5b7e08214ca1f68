// CString: its buffer, and building and cutting of texts.
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

#include "cstringt.h"
#include "host/base/format.h"
#include "host/base/host_assert.h"

namespace {

// Stands before the characters. A text that is never written to and never freed, the empty one, has
// no count of sharers.
struct Header {
    std::atomic<int> sharers;
    int length;
    int room;
};

struct EmptyText {
    Header header;
    wchar_t end;
};

static_assert(offsetof(EmptyText, end) == sizeof(Header), "characters follow the header at once");

EmptyText g_empty = {{{0}, 0, 0}, 0};

Header* HeaderOf(const wchar_t* text) {
    return reinterpret_cast<Header*>(const_cast<wchar_t*>(text)) - 1;
}

bool IsStatic(const Header* header) { return header == &g_empty.header; }

// Room for that many characters and the end mark; the characters are not set.
wchar_t* NewBuffer(int room) {
    HOST_ASSERT(room >= 0, "a text has more characters than fit an int");
    void* const memory =
        std::malloc(sizeof(Header) + (static_cast<std::size_t>(room) + 1) * sizeof(wchar_t));
    if (!memory) throw std::bad_alloc();
    Header* const header = new (memory) Header{{1}, 0, room};
    return reinterpret_cast<wchar_t*>(header + 1);
}

wchar_t* Share(wchar_t* text) {
    Header* const header = HeaderOf(text);
    if (!IsStatic(header)) header->sharers.fetch_add(1, std::memory_order_relaxed);
    return text;
}

int LengthOf(const wchar_t* text) { return text ? static_cast<int>(std::wcslen(text)) : 0; }

}  // namespace

CString::CStringT() noexcept : m_pszData(&g_empty.end) {}

CString::CStringT(const CStringT& other) noexcept : m_pszData(Share(other.m_pszData)) {}

CString::CStringT(CStringT&& other) noexcept : m_pszData(other.m_pszData) {
    other.m_pszData = &g_empty.end;
}

CString::CStringT(PCXSTR text) : CStringT() { Assign(text, LengthOf(text)); }

CString::CStringT(const char* text) : CStringT() { *this = text; }

CString::CStringT(wchar_t ch, int count) : CStringT() {
    std::fill_n(GetBuffer(count), (std::max)(count, 0), ch);
    ReleaseBuffer((std::max)(count, 0));
}

CString::CStringT(PCXSTR text, int length) : CStringT() { Assign(text, length); }

CString::~CStringT() { Release(); }

void CString::Release() noexcept {
    Header* const header = HeaderOf(m_pszData);
    if (!IsStatic(header) && header->sharers.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(header);
    m_pszData = &g_empty.end;
}

CString& CString::operator=(const CStringT& other) noexcept {
    wchar_t* const shared = Share(other.m_pszData);
    Release();
    m_pszData = shared;
    return *this;
}

CString& CString::operator=(CStringT&& other) noexcept {
    std::swap(m_pszData, other.m_pszData);
    return *this;
}

CString& CString::operator=(PCXSTR text) {
    Assign(text, LengthOf(text));
    return *this;
}

CString& CString::operator=(const char* text) {
    const std::wstring wide = host::Widen(text ? text : "");
    Assign(wide.data(), static_cast<int>(wide.size()));
    return *this;
}

CString& CString::operator=(wchar_t ch) {
    Assign(&ch, 1);
    return *this;
}

void CString::SetString(PCXSTR text, int length) { Assign(text, length); }

// The text may be part of this one.
void CString::Assign(PCXSTR text, int length) {
    if (length <= 0) {
        Release();
        return;
    }
    const bool inside = text >= m_pszData && text <= m_pszData + GetLength();
    Header* const header = HeaderOf(m_pszData);
    if (!inside && !IsStatic(header) && header->sharers == 1 && header->room >= length) {
        std::copy_n(text, length, m_pszData);
    } else {
        wchar_t* const fresh = NewBuffer(length);
        std::copy_n(text, length, fresh);
        Release();
        m_pszData = fresh;
    }
    ReleaseBuffer(length);
}

int CString::GetLength() const noexcept { return HeaderOf(m_pszData)->length; }

void CString::Empty() noexcept { Release(); }

// Makes the buffer this text's own, with room for length characters; the present text is kept.
void CString::MakeRoom(int length) {
    const Header* const header = HeaderOf(m_pszData);
    if (!IsStatic(header) && header->sharers == 1 && header->room >= length) return;
    const int present = header->length;
    // Half as much again: appending character by character must not copy each time.
    const bool grows = !IsStatic(header) && length > present;
    wchar_t* const fresh = NewBuffer((std::max)({length, present, grows ? present / 2 * 3 : 0}));
    std::copy_n(m_pszData, present + 1, fresh);
    Release();
    m_pszData = fresh;
    HeaderOf(fresh)->length = present;
}

CString::PXSTR CString::GetBuffer(int minLength) {
    MakeRoom((std::max)(minLength, GetLength()));
    return m_pszData;
}

CString::PXSTR CString::GetBufferSetLength(int length) {
    MakeRoom(length);
    ReleaseBuffer(length);
    return m_pszData;
}

void CString::ReleaseBuffer(int newLength) {
    MakeRoom(0);  // a text that was not asked for its buffer may still be shared
    Header* const header = HeaderOf(m_pszData);
    const int length = newLength < 0 ? static_cast<int>(std::wcslen(m_pszData)) : newLength;
    HOST_ASSERT(length <= header->room, "a text was set longer than its buffer");
    header->length = length;
    m_pszData[length] = 0;
}

void CString::SetAt(int i, XCHAR ch) { GetBuffer()[i] = ch; }

CString& CString::operator+=(const CStringT& other) {
    Append(other.m_pszData, other.GetLength());
    return *this;
}

CString& CString::operator+=(PCXSTR text) {
    Append(text, LengthOf(text));
    return *this;
}

CString& CString::operator+=(wchar_t ch) {
    Append(&ch, 1);
    return *this;
}

// The text may be part of this one: then it is found again in the moved buffer.
void CString::Append(PCXSTR text, int length) {
    if (length <= 0) return;
    const int present = GetLength();
    const bool inside = text >= m_pszData && text <= m_pszData + present;
    const std::ptrdiff_t offset = inside ? text - m_pszData : 0;
    MakeRoom(present + length);
    std::copy_n(inside ? m_pszData + offset : text, length, m_pszData + present);
    ReleaseBuffer(present + length);
}

CString operator+(const CString& a, const CString& b) {
    CString sum = a;
    return sum += b;
}

CString operator+(const CString& a, const wchar_t* b) {
    CString sum = a;
    return sum += b;
}

CString operator+(const wchar_t* a, const CString& b) {
    CString sum = a;
    return sum += b;
}

CString operator+(const CString& a, wchar_t b) {
    CString sum = a;
    return sum += b;
}

CString operator+(wchar_t a, const CString& b) {
    CString sum(a);
    return sum += b;
}
