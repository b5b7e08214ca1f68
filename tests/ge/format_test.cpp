// Microsoft's format rules, and numbers read from text.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "AcString.h"
#include "afx.h"
#include "host/base/format.h"

namespace {

std::string Utf8(const wchar_t* text) { return host::Narrow(text); }

template <class... Args>
std::string Formatted(const wchar_t* format, Args... args) {
    CString text;
    text.Format(format, args...);
    return Utf8(text);
}

#define EXPECT_FORMAT(expected, ...) EXPECT_EQ(Formatted(__VA_ARGS__), expected)

TEST(Format, TextAndCharacters) {
    EXPECT_FORMAT("tool=x", L"tool=%s", L"x");
    EXPECT_FORMAT("wide 刀具 narrow äb", L"wide %s narrow %S", L"刀具", "äb");
    EXPECT_FORMAT("n w w n", L"%hs %ls %ws %hS", "n", L"w", L"w", "n");
    EXPECT_FORMAT("A刀B", L"%c%c%C", 'A', L'刀', 'B');
    EXPECT_FORMAT("[   ab][ab   ][  a]", L"[%5s][%-5s][%3.1s]", L"ab", L"ab", L"ab");
    EXPECT_FORMAT("[   ab][ab   ]", L"[%*s][%*s]", 5, L"ab", -5, L"ab");
    EXPECT_FORMAT("[a][]", L"[%.*s][%.0s]", 1, L"ab", L"ab");
    EXPECT_FORMAT("[(null)][(null)]", L"[%s][%S]", static_cast<const wchar_t*>(nullptr),
                  static_cast<const char*>(nullptr));
    EXPECT_FORMAT("100%", L"%d%%", 100);
    EXPECT_FORMAT("", L"");
    const wchar_t unended[] = {L'x', L'y'};
    EXPECT_FORMAT("xy", L"%.2s", unended);
}

TEST(Format, Integers) {
    EXPECT_FORMAT("-5 5 +5  5", L"%d %i %+d % d", -5, 5, 5, 5);
    EXPECT_FORMAT("4294967295 ff FF 0xff 0XFF 17 017 0", L"%u %x %X %#x %#X %o %#o %#x",
                  0xFFFFFFFFu, 255, 255, 255, 255, 15, 15, 0);
    EXPECT_FORMAT("[   42][42   ][00042][  042][-0042]", L"[%5d][%-5d][%05d][%5.3d][%05d]", 42, 42,
                  42, 42, -42);
    EXPECT_FORMAT("[   0x2a][0x00002a]", L"[%#7x][%#08x]", 42, 42);
    EXPECT_FORMAT("[][     ]", L"[%.0d][%5.0d]", 0, 0);
    const long long big = std::numeric_limits<long long>::min();
    EXPECT_FORMAT("-9223372036854775808 -9223372036854775808", L"%lld %I64d", big, big);
    EXPECT_FORMAT("18446744073709551615", L"%llu", ~0ull);
    EXPECT_FORMAT("-2147483648 7 9", L"%d %I32d %zu", std::numeric_limits<int>::min(), 7,
                  static_cast<std::size_t>(9));
    EXPECT_FORMAT("-1 255 1", L"%hd %hhu %hu", 65535, -1, 65537);
}

TEST(Format, Reals) {
    EXPECT_FORMAT("1.500000 1.50 2 -0.0", L"%f %.2f %.0f %.1f", 1.5, 1.5, 1.5, -0.0);
    EXPECT_FORMAT("0.0005 1e-06 0.3 5 1e+20 123457", L"%g %g %g %g %g %g", 0.0005, 1e-6, 0.3, 5.0,
                  1e20, 123456.7);
    EXPECT_FORMAT("0.0005 0.3 0.10000000000000001", L"%.15g %.15g %.17g", 0.0005, 0.3, 0.1);
    EXPECT_FORMAT("1.500000e+00 1.5E-07 2.e+00", L"%e %.1E %#.0e", 1.5, 1.5e-7, 2.0);
    EXPECT_FORMAT("[  1.5][001.5][-01.5][1.5  ][+1.5]", L"[%5.1f][%05.1f][%05.1f][%-5.1f][%+.1f]",
                  1.5, 1.5, -1.5, 1.5, 1.5);
    EXPECT_FORMAT("1.50000 5. 1.00000e+06 100000.", L"%#g %#.0f %#g %#g", 1.5, 5.0, 1e6, 1e5);
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_FORMAT("inf -INF   nan -nan(ind)", L"%f %G %5f %g", inf, -inf, std::nan(""),
                  -std::nan(""));
    EXPECT_FORMAT("[   inf]", L"[%06f]", inf);
}

// The same as the C library for every flag, width and precision of the numbers.
TEST(Format, NumbersMatchTheCLibrary) {
    std::mt19937_64 random(99);
    const char* const kFlags[] = {"", "-", "+", " ", "0", "#", "-#", "+0", " 0", "#0", "+-", "#+0"};
    for (int round = 0; round < 60000; ++round) {
        std::string format = std::string("%") + kFlags[random() % 12];
        if (random() % 2) format += std::to_string(1 + random() % 30);
        if (random() % 2) format += "." + std::to_string(random() % 25);
        char expected[800];
        const double scale = std::pow(10.0, static_cast<int>(random() % 40) - 20);
        const double real =
            static_cast<double>(static_cast<std::int64_t>(random())) * 1e-19 * scale;
        const int number = static_cast<int>(random()) >> (random() % 32);
        const bool whole = random() % 2;
        const std::string letters = whole ? "diuxXo" : "eEfFgG";
        const char letter = letters[random() % 6];
        // A sign of what has none is the C library's own affair.
        if (std::strchr("uxXo", letter))
            format.erase(std::remove_if(format.begin(), format.end(),
                                        [](char c) { return c == '+' || c == ' '; }),
                         format.end());
        format += letter;
        const std::wstring wide(format.begin(), format.end());
        std::string actual;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        if (whole) {
            std::snprintf(expected, sizeof(expected), format.c_str(), number);
            actual = Formatted(wide.c_str(), number);
        } else {
            std::snprintf(expected, sizeof(expected), format.c_str(), real);
            actual = Formatted(wide.c_str(), real);
        }
#pragma GCC diagnostic pop
        ASSERT_EQ(actual, expected) << format << " " << number << " " << real;
    }
}

TEST(Format, BadFormatsAreCopied) {
    EXPECT_FORMAT("50% done %q %", L"50%% done %q %");
    EXPECT_FORMAT("%n 1", L"%n %d", 1);
}

TEST(Format, ArgumentsMayBeTheTextItself) {
    CString text(L"ab");
    text.Format(L"%s-%s", text.GetString(), text.GetString());
    EXPECT_EQ(Utf8(text), "ab-ab");
    text.AppendFormat(L"+%d%s", 7, text.GetString());
    EXPECT_EQ(Utf8(text), "ab-ab+7ab-ab");
    AcString other;
    EXPECT_EQ(Utf8(other.format(L"%s %d", L"x", 3)), "x 3");
}

TEST(Numbers, FromText) {
    const struct {
        const wchar_t* text;
        double value;
        int taken;
    } kCases[] = {
        {L"0.0005", 0.0005, 6},
        {L"  -3.5e2x", -350, 8},
        {L"+7", 7, 2},
        {L".5", 0.5, 2},
        {L"5.", 5, 2},
        {L"1e", 1, 1},
        {L"1e+", 1, 1},
        {L"abc", 0, 0},
        {L"", 0, 0},
        {L"-", 0, 0},
        {L"--1", 0, 0},
        {L"+-1", 0, 0},
        {L"0x1Fp1", 62, 6},
        {L"0xg", 0, 1},
        {L"1,5", 1, 1},
        {L"0x-1", 0, 1},
        {L"1e999", HUGE_VAL, 5},
        {L"-1e999", -HUGE_VAL, 6},
        {L"1e-999", 0, 6},
        {L"1e-99999", 0, 8},
        {L"1e99999", HUGE_VAL, 7},
        {L"5e-324", 5e-324, 6},
        {L"2刀", 2, 1},
        {L"\t 4", 4, 3},
        {L"0.1000000000000000055511151231257827", 0.1, 36},
        {L"inf", HUGE_VAL, 3},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(Utf8(c.text));
        wchar_t* end = nullptr;
        EXPECT_EQ(_tcstod(c.text, &end), c.value);
        EXPECT_EQ(end - c.text, c.taken);
    }
    EXPECT_TRUE(std::isnan(_tstof(L"nan")));
    EXPECT_EQ(_ttoi(L" -42x"), -42);
    EXPECT_EQ(_ttoi(L"99999999999"), std::numeric_limits<int>::max());
    EXPECT_EQ(_ttoi(L"-99999999999"), std::numeric_limits<int>::min());
    EXPECT_EQ(_ttoi(L"x"), 0);
    EXPECT_EQ(_ttoi64(L"-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(_ttoi64(L"9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(_ttoi64(L"9223372036854775808"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(_ttoi64(L"99999999999999999999"), std::numeric_limits<std::int64_t>::max());
}

TEST(Numbers, RoundTripAtSeventeenDigits) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof(value));
        if (!std::isfinite(value)) continue;
        CString text;
        text.Format(L"%.17g", value);
        ASSERT_EQ(_tstof(text), value) << Utf8(text);
    }
}

TEST(Unicode, WideAndNarrow) {
    EXPECT_EQ(host::Narrow(L"a\u00e4\u5200"), "aä刀");
    EXPECT_EQ(host::Narrow(host::Widen("x\U0001F527y")), "x\U0001F527y");
    const struct {
        const char *bytes, *result;
    } kBroken[] = {{"a\xFFz", "a\uFFFDz"},
                   {"\xC3", "\uFFFD"},
                   {"\xC0\x80", "\uFFFD\uFFFD"},            // not the shortest form
                   {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},  // half a surrogate pair
                   {"\xF5\x80\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}};
    for (const auto& c : kBroken) EXPECT_EQ(host::Narrow(host::Widen(c.bytes)), c.result);
    EXPECT_EQ(host::Narrow(std::wstring(1, static_cast<wchar_t>(0xD800))), "\uFFFD");
}

}  // namespace
