// CString's editing and searching, and the small rest of MFC that has no windows.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "AcString.h"
#include "acestext.h"
#include "afx.h"
#include "host/base/format.h"
#include "host/base/string_table.h"

namespace {

std::string Utf8(const wchar_t* text) { return host::Narrow(text); }

TEST(CStringTest, Editing) {
    const struct {
        const char* name;
        const wchar_t* text;
        void (*edit)(CString&);
        const char* result;
    } kCases[] = {
        {"left", L"abcd", [](CString& s) { s = s.Left(2); }, "ab"},
        {"left of too much", L"abcd", [](CString& s) { s = s.Left(9); }, "abcd"},
        {"left of less than nothing", L"abcd", [](CString& s) { s = s.Left(-1); }, ""},
        {"right", L"abcd", [](CString& s) { s = s.Right(3); }, "bcd"},
        {"mid", L"abcd", [](CString& s) { s = s.Mid(1, 2); }, "bc"},
        {"mid to the end", L"abcd", [](CString& s) { s = s.Mid(2); }, "cd"},
        {"mid behind the end", L"abcd", [](CString& s) { s = s.Mid(7, 2); }, ""},
        {"mid too long", L"abcd", [](CString& s) { s = s.Mid(3, 2147483647); }, "d"},
        {"replace text", L"a.b.c", [](CString& s) { EXPECT_EQ(s.Replace(L".", L"::"), 2); },
         "a::b::c"},
        {"replace does not look at what it wrote", L"aa",
         [](CString& s) { EXPECT_EQ(s.Replace(L"a", L"aa"), 2); }, "aaaa"},
        {"replace by nothing", L"a--b--", [](CString& s) { EXPECT_EQ(s.Replace(L"--", L""), 2); },
         "ab"},
        {"replace nothing", L"ab", [](CString& s) { EXPECT_EQ(s.Replace(L"", L"x"), 0); }, "ab"},
        {"replace overlapping", L"aaa", [](CString& s) { EXPECT_EQ(s.Replace(L"aa", L"b"), 1); },
         "ba"},
        {"replace characters", L"a/b/c", [](CString& s) { EXPECT_EQ(s.Replace(L'/', L'\\'), 2); },
         "a\\b\\c"},
        {"remove", L"a b c", [](CString& s) { EXPECT_EQ(s.Remove(L' '), 2); }, "abc"},
        {"insert", L"ad", [](CString& s) { EXPECT_EQ(s.Insert(1, L"bc"), 4); }, "abcd"},
        {"insert behind the end", L"ad", [](CString& s) { s.Insert(9, L'x'); }, "adx"},
        {"insert itself", L"ab", [](CString& s) { s.Insert(1, s); }, "aabb"},
        {"delete", L"abcd", [](CString& s) { EXPECT_EQ(s.Delete(1, 2), 2); }, "ad"},
        {"delete too much", L"abcd", [](CString& s) { EXPECT_EQ(s.Delete(2, 99), 2); }, "ab"},
        {"delete behind the end", L"abcd", [](CString& s) { EXPECT_EQ(s.Delete(9), 4); }, "abcd"},
        {"trim blanks", L" \t a b \r\n", [](CString& s) { s.Trim(); }, "a b"},
        {"trim all", L"   ", [](CString& s) { s.Trim(); }, ""},
        {"trim left only", L"  a ", [](CString& s) { s.TrimLeft(); }, "a "},
        {"trim right only", L"  a ", [](CString& s) { s.TrimRight(); }, "  a"},
        {"trim a character", L"**a*", [](CString& s) { s.Trim(L'*'); }, "a"},
        {"trim a set", L"<{a}>", [](CString& s) { s.Trim(L"<>{}"); }, "a"},
        {"upper", L"aä刀z1", [](CString& s) { s.MakeUpper(); }, "AÄ刀Z1"},
        {"lower", L"AÄЖ刀Z1", [](CString& s) { s.MakeLower(); }, "aäж刀z1"},
        {"reverse", L"abc", [](CString& s) { s.MakeReverse(); }, "cba"},
        {"span", L"12ab", [](CString& s) { s = s.SpanIncluding(L"0123456789"); }, "12"},
        {"span up to", L"12ab", [](CString& s) { s = s.SpanExcluding(L"ab"); }, "12"},
        {"append itself", L"ab", [](CString& s) { s += s; }, "abab"},
        {"append its own tail", L"abc", [](CString& s) { s += s.GetString() + 1; }, "abcbc"},
        {"assign its own tail", L"abc", [](CString& s) { s = s.GetString() + 1; }, "bc"},
        {"set at", L"abc", [](CString& s) { s.SetAt(1, L'x'); }, "axc"},
        {"character", L"abc", [](CString& s) { s = L'x'; }, "x"},
        {"null", L"abc", [](CString& s) { s = static_cast<const wchar_t*>(nullptr); }, ""},
        {"sum", L"b", [](CString& s) { s = L"a" + s + L'c' + CString(L"d") + L"e"; }, "abcde"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        CString text(c.text);
        const CString shared = text;  // changing one must not change the other
        c.edit(text);
        EXPECT_EQ(Utf8(text), c.result);
        EXPECT_EQ(text.GetLength(), static_cast<int>(std::wcslen(text)));
        EXPECT_EQ(Utf8(shared), Utf8(c.text));
        CString alone(c.text);  // the same on a buffer of its own
        c.edit(alone);
        EXPECT_EQ(Utf8(alone), c.result);
    }
}

TEST(CStringTest, Searching) {
    const CString text(L"layer.cut.layer");
    EXPECT_EQ(text.Find(L"layer"), 0);
    EXPECT_EQ(text.Find(L"layer", 1), 10);
    EXPECT_EQ(text.Find(L"none"), -1);
    EXPECT_EQ(text.Find(L"", 3), 3);
    EXPECT_EQ(text.Find(L"r", 99), -1);
    EXPECT_EQ(text.Find(L"r", -1), -1);
    EXPECT_EQ(text.Find(L'.'), 5);
    EXPECT_EQ(text.Find(L'.', 6), 9);
    EXPECT_EQ(text.Find(L'x'), -1);
    EXPECT_EQ(text.ReverseFind(L'.'), 9);
    EXPECT_EQ(text.ReverseFind(L'x'), -1);
    EXPECT_EQ(text.FindOneOf(L"tc"), 6);
    EXPECT_EQ(text.FindOneOf(L"xz"), -1);
}

TEST(CStringTest, Tokenize) {
    const struct {
        const wchar_t *text, *separators;
        std::vector<std::string> tokens;
    } kCases[] = {
        {L"a,b;c", L",;", {"a", "b", "c"}},
        {L",,a,,b,,", L",", {"a", "b"}},
        {L"abc", L",", {"abc"}},
        {L"", L",", {}},
        {L",,,", L",", {}},
        {L"a b", L",", {"a b"}},
    };
    for (const auto& c : kCases) {
        const CString text(c.text);
        std::vector<std::string> tokens;
        int at = 0;
        for (CString token = text.Tokenize(c.separators, at); at != -1;
             token = text.Tokenize(c.separators, at))
            tokens.push_back(Utf8(token));
        EXPECT_EQ(tokens, c.tokens) << Utf8(c.text);
    }
}

TEST(CStringTest, Comparing) {
    const CString a(L"Layer");
    EXPECT_TRUE(a == L"Layer" && L"Layer" == a && a == CString(L"Layer") && a != L"layer");
    EXPECT_TRUE(a < L"layer" && L"layer" > a && a <= a && a >= L"L");
    EXPECT_EQ(a.CompareNoCase(L"lAYER"), 0);
    EXPECT_LT(a.CompareNoCase(L"layers"), 0);
    EXPECT_GT(a.CompareNoCase(L"LAYE"), 0);
    EXPECT_EQ(_tcsicmp(L"标注Ä", L"标注ä"), 0);
    EXPECT_LT(_tcsicmp(L"_", L"A"), 0);  // lower-cased first: '_' is 95, 'a' 97
    EXPECT_EQ(_tcsnicmp(L"ABx", L"aby", 2), 0);
}

TEST(CStringTest, Buffers) {
    CString text(L"ab");
    const CString shared = text;
    std::wcscpy(text.GetBuffer(10), L"12345");
    text.ReleaseBuffer();
    EXPECT_EQ(Utf8(text), "12345");
    EXPECT_EQ(Utf8(shared), "ab");
    text.GetBuffer(3)[2] = L'x';
    text.ReleaseBuffer(3);
    EXPECT_EQ(Utf8(text), "12x");
    CString empty;
    empty.GetBuffer(0)[0] = 0;
    empty.ReleaseBuffer();
    EXPECT_TRUE(empty.IsEmpty() && CString().IsEmpty());
    empty.ReleaseBuffer(0);
    EXPECT_EQ(CString()[0], 0);
    EXPECT_EQ(Utf8(CString(L'x', 3)), "xxx");
    EXPECT_EQ(Utf8(CString(L"abc", 2)), "ab");
    EXPECT_EQ(Utf8(CString("刀")), "刀");
    CString moved = std::move(text);
    EXPECT_EQ(Utf8(moved), "12x");
    CString grown;
    for (int i = 0; i < 100000; ++i) grown += L'x';
    EXPECT_EQ(grown.GetLength(), 100000);
}

bool TestLoader(UINT id, CString& out) {
    if (id != 7) return false;
    out = L"seven %d";
    return true;
}

TEST(CStringTest, Resources) {
    CString text(L"kept");
    EXPECT_FALSE(text.LoadString(7));
    host::SetStringLoader(TestLoader);
    EXPECT_FALSE(text.LoadString(8));
    EXPECT_EQ(Utf8(text), "kept");
    EXPECT_TRUE(text.LoadString(7));
    text.Format(7u, 5);
    EXPECT_EQ(Utf8(text), "seven 5");
    host::SetStringLoader(nullptr);
}

class Base : public CObject {
    DECLARE_DYNAMIC(Base)
};
class Derived : public Base {
    DECLARE_DYNCREATE(Derived)
};
IMPLEMENT_DYNAMIC(Base, CObject)
IMPLEMENT_DYNCREATE(Derived, Base)

TEST(Mfc, RuntimeClasses) {
    const Derived derived;
    EXPECT_TRUE(derived.IsKindOf(RUNTIME_CLASS(Base)) && derived.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(Base().IsKindOf(RUNTIME_CLASS(Derived)));
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(Derived)->CreateObject());
    EXPECT_STREQ(made->GetRuntimeClass()->m_lpszClassName, "Derived");
    EXPECT_EQ(RUNTIME_CLASS(Base)->CreateObject(), nullptr);
}

TEST(Mfc, Time) {
    const CTime time(2026, 2, 28, 23, 59, 58);
    EXPECT_EQ(Utf8(time.Format(L"%Y-%m-%d %H:%M:%S")), "2026-02-28 23:59:58");
    EXPECT_EQ(CTime(time.GetTime() + 2).GetMonth(), 3);
    EXPECT_EQ(CTime(time.GetTime() + 2).GetDay(), 1);
    EXPECT_TRUE(time < CTime(time.GetTime() + 1) && CTime::GetCurrentTime() > CTime(1600000000));
}

TEST(AcStringTest, Basics) {
    AcString text(L"Ab");
    EXPECT_TRUE(text == L"Ab" && text != L"ab" && text.compareNoCase(L"aB") == 0);
    text += L"cd";
    EXPECT_EQ(text.length(), 4u);
    EXPECT_EQ(Utf8(text.substr(1, 2)), "bc");
    EXPECT_EQ(Utf8(text.substr(1, -1)), "bcd");
    EXPECT_EQ(text.find(L"cd"), 2);
    EXPECT_EQ(text.find(L"x"), -1);
    EXPECT_TRUE(AcString(static_cast<const ACHAR*>(nullptr)).isEmpty());
}

TEST(ErrorText, Names) {
    EXPECT_EQ(Utf8(acadErrorStatusText(Acad::eOk)), "eOk");
    EXPECT_EQ(Utf8(acadErrorStatusText(Acad::eWasErased)), "eWasErased");
    EXPECT_EQ(Utf8(acadErrorStatusText(static_cast<Acad::ErrorStatus>(100))), "eUnknownStatus");
}

}  // namespace
