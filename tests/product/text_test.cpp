// Texts of a drawing made plain.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "product/base/Text.h"

namespace {

TEST(Text, CodesBecomeWhatTheyShow) {
    const struct {
        const char* text;
        const char* plain;
    } cases[] = {
        {"%%c25 h6", "\u230025 h6"},
        {"%%C8 %%p0.1", "\u23008 \u00B10.1"},
        {"45%%d", "45\u00B0"},
        {"%%uunder%%u", "under"},
        {"100%%%", "100%"},
        {"%%065%%066", "AB"},
        {"50%", "50%"},
        {"%%", ""},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(c.plain, product::PlainText(c.text)) << c.text;
}

TEST(Text, LinesLoseTheirFormatting) {
    using Lines = std::vector<std::string>;
    const struct {
        const char* text;
        Lines lines;
    } cases[] = {
        {"one\\Ptwo", {"one", "two"}},
        {"{\\fArial|b0|i0;bold} \\H2.5x;high", {"bold high"}},
        {"\\A1;%%c25{\\H0.7x;\\S+0.1^-0.2;}", {"\u230025+0.1/-0.2"}},
        {"a\\\\b \\{c\\}", {"a\\b {c}"}},
        {"\\Lunderlined\\l", {"underlined"}},
        {"", {""}},
        {"ends with \\", {"ends with \\"}},
        {"\\S1/2", {"1/2"}},
    };
    for (const auto& c : cases) EXPECT_EQ(c.lines, product::PlainLines(c.text)) << c.text;
}

TEST(Text, Utf8) {
    EXPECT_EQ("\u5C3A\u5BF8\u7EBF", product::ToUtf8(_T("\u5C3A\u5BF8\u7EBF")));
    EXPECT_EQ("", product::ToUtf8(nullptr));
    const ACHAR pair[] = {static_cast<ACHAR>(0xD83D), static_cast<ACHAR>(0xDD27), 0};
    EXPECT_EQ("\xF0\x9F\x94\xA7", product::ToUtf8(pair));
    const ACHAR lone[] = {static_cast<ACHAR>(0xD83D), _T('x'), 0};
    EXPECT_EQ("\uFFFDx", product::ToUtf8(lone));
}

TEST(Text, FiguresKeepTheirTenThousandthsFarOut) {
    EXPECT_EQ("0", product::Figure(0));
    EXPECT_EQ("-12.5", product::Figure(-12.5));
    EXPECT_EQ("1e-05", product::Figure(1e-5));
    EXPECT_EQ("100", product::Figure(100));
    EXPECT_EQ("220.0043", product::Figure(220.00432));
    EXPECT_EQ("1000060.5", product::Figure(1000060.5));
    EXPECT_EQ("-2000000.0001", product::Figure(-2000000.0001));
    EXPECT_EQ("1e+300", product::Figure(1e300));
}

}  // namespace
