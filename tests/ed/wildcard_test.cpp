#include <gtest/gtest.h>

#include "host/ed/prompts.h"
#include "host/ed/text_compare.h"
#include "host/ed/typed_text.h"

using namespace host;

TEST(Wildcards, MatchNamesAsSelectionFiltersDo) {
    struct Row {
        const wchar_t* text;
        const wchar_t* pattern;
        bool matches;
    };
    const Row rows[] = {
        {L"LWPOLYLINE", L"lwpolyline", true},
        {L"LWPOLYLINE", L"*POLYLINE", true},
        {L"LINE", L"*POLYLINE,LINE", true},
        {L"LINE", L"ARC,CIRCLE", false},
        {L"A1", L"@#", true},
        {L"AA", L"@#", false},
        {L"A-1", L"A.1", true},
        {L"AB1", L"A.1", false},
        {L"B", L"[abc]", true},
        {L"D", L"[abc]", false},
        {L"D", L"[~abc]", true},
        {L"M", L"[a-z]", true},
        {L"5", L"[a-z]", false},
        {L"x*y", L"x`*y", true},
        {L"xzy", L"x`*y", false},
        {L"LINE", L"~LINE", false},
        {L"ARC", L"~LINE", true},
        {L"", L"*", true},
        {L"", L"?", false},
        {L"尺寸线", L"尺寸*", true},
        {L"a,b", L"a`,b", true},
        {L"[", L"[", true},
        {L"aaaaaaaaaaaaaaaaaaaaaaaaaaaab", L"*a*a*a*a*a*a*a*a*a*c", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.matches, MatchesWildcards(row.text, row.pattern))
            << "pattern " << std::string(row.pattern, row.pattern + std::wcslen(row.pattern));
}

TEST(TypedText, SplitsAtEnterAndBlanks) {
    TypedText typed;
    typed.Append(L"_.DELCONSTRAINT\nALL\r\n\nA NAME\n");
    EXPECT_EQ(L"_.DELCONSTRAINT", typed.Next(false));
    EXPECT_EQ(L"ALL", typed.Next(false));
    EXPECT_EQ(L"", typed.Next(false));
    EXPECT_EQ(L"A NAME", typed.Next(true));
    EXPECT_TRUE(typed.IsEmpty());
}
