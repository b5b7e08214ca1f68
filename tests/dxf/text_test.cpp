// Code pages, escapes and numbers.
#include <cmath>
#include <random>

#include "drawing_text.h"
#include "host/dxf/group_code.h"
#include "host/dxf/text_codec.h"

namespace {

using namespace test;
using host::dxf::TextCodec;

struct PageCase {
    const char* codePage;
    const char* bytes;
    const wchar_t* text;
};

const PageCase kPages[] = {
    {"ANSI_936", "\xd6\xd0\xd0\xc4\xcf\xdf\xb2\xe3", L"中心线层"},
    {"ansi_936", "\x80", L"€"},
    // The second byte of these characters is a backslash, a brace and a caret.
    {"ANSI_936", "\x81\x5c\x55+4e2d", L"乗U+4e2d"},
    {"ANSI_936", "\x81\x7b \x81\x5e ", L"亄 乛 "},
    {"gb2312", "\xb5\xb6\xbe\xdf", L"刀具"},
    {"ANSI_932", "\x83\x65\x83\x58\x83\x67 \x95\x5c", L"テスト 表"},
    {"dos932", "\x93\xfa", L"日"},
    {"ANSI_949", "\xb5\xb5\xb8\xe9", L"도면"},
    {"ANSI_950", "\xb9\xcf\xb3\x5c", L"圖許"},
    {"BIG5", "\xb9\xcf", L"圖"},
    {"johab", "\x88\x61", L"가"},
    {"ANSI_1250", "\x9a\xe8", L"šč"},
    {"ANSI_1251", "\xcf\xf0", L"Пр"},
    {"ANSI_1252", "\xe4\xdf\x80", L"äß€"},
    {"ANSI_1253", "\xc1\xe2", L"Αβ"},
    {"ANSI_1254", "\xfe\xdd", L"şİ"},
    {"ANSI_1255", "\xf9\xec", L"של"},
    {"ANSI_1256", "\xc8\xed", L"بي"},
    {"ANSI_1257", "\xf0\xe6", L"šę"},
    {"ANSI_1258", "\xd5\xf0", L"Ơđ"},
    {"ANSI_874", "\xa1\xd2", L"กา"},
    {"DOS850", "\x84\xe1", L"äß"},
    {"dos437", "\x84\xe9", L"äΘ"},
    {"DOS866", "\x8f\xe0", L"Пр"},
    {"iso8859-1", "\xe4", L"ä"},
    {"mac-roman", "\x8a", L"ä"},
    {"ascii", "plain", L"plain"},
    {"ANSI_65001", "\xe4\xb8\xad", L"中"}};

TEST(Text, CodePages) {
    for (const PageCase& c : kPages) {
        SCOPED_TRACE(std::string(c.codePage) + " " + c.bytes);
        const std::string charset = host::dxf::CharsetOfCodePage(c.codePage);
        ASSERT_NE("", charset);
        const TextCodec codec(
            charset == "UTF-8" ? TextCodec::Mode::kUtf8 : TextCodec::Mode::kCodePage, charset);
        EXPECT_EQ(c.text, codec.Decode(c.bytes));
        EXPECT_EQ(c.text, codec.Decode(codec.Encode(c.text)));
    }
    for (const char* unknown : {"", "ANSI_", "ANSI_12", "KOI8", "ANSI_12521"})
        EXPECT_EQ("", host::dxf::CharsetOfCodePage(unknown)) << unknown;
}

struct EscapeCase {
    const char* bytes;
    const wchar_t* text;
    const char* written;  // in ANSI_1252; null: as read
};

const EscapeCase kEscapes[] = {
    {"\\U+4E2D\\U+5fC3", L"中心", "\\U+4E2D\\U+5FC3"},
    {"\\U+00E4", L"ä", "\xe4"},
    {"\\M+5D6D0", L"中", "\\U+4E2D"},
    {"\\M+193FA \\M+2B9CF \\M+3B5B5", L"日 圖 도", "\\U+65E5 \\U+5716 \\U+B3C4"},
    {"\\U+D83D\\U+DE00", L"\U0001F600", nullptr},
    {"line^Jtab^Icaret^ end", L"line\ntab\tcaret^end", nullptr},
    {"\\U+12", L"\\U+12", nullptr},
    {"\\M+9ABCD", L"\\M+9ABCD", "\\U+005CM+9ABCD"},
    {"\\U+005CU+4E2D", L"\\U+4E2D", nullptr},
    {"\\A1;\\H2.5x;{\\C1;text}", L"\\A1;\\H2.5x;{\\C1;text}", nullptr},
    {"%%c20", L"%%c20", nullptr},
    {"^", L"^", "^ "},
    {" blanks  ", L" blanks  ", nullptr},
    {"", L"", nullptr}};

TEST(Text, Escapes) {
    const TextCodec codec(TextCodec::Mode::kCodePage, "CP1252");
    for (const EscapeCase& c : kEscapes) {
        SCOPED_TRACE(c.bytes);
        EXPECT_EQ(c.text, codec.Decode(c.bytes));
        EXPECT_EQ(c.written == nullptr ? c.bytes : c.written, codec.Encode(c.text));
        EXPECT_EQ(c.text, codec.Decode(codec.Encode(c.text)));
    }
}

// Any text comes back, whatever the page; any bytes come back through the wide form of UTF-8.
TEST(Text, RandomStringsComeBack) {
    std::mt19937 random(20260101);
    const wchar_t alphabet[] = L"aU+M5\\^ \t\n4E2D中é€𐍈\x7f\x1f~{}";
    for (const char* charset : {"CP936", "CP932", "CP1252", "UTF-8"}) {
        const TextCodec codec(
            std::string(charset) == "UTF-8" ? TextCodec::Mode::kUtf8 : TextCodec::Mode::kCodePage,
            charset);
        for (int round = 0; round < 2000; ++round) {
            std::wstring text;
            for (unsigned i = random() % 20; i > 0; --i)
                text += alphabet[random() % (std::size(alphabet) - 1)];
            EXPECT_EQ(text, codec.Decode(codec.Encode(text))) << charset << " round " << round;
        }
    }
    for (int round = 0; round < 2000; ++round) {
        std::string bytes;
        for (unsigned i = random() % 12; i > 0; --i) bytes += static_cast<char>(random());
        EXPECT_EQ(bytes, host::dxf::Utf8FromWide(host::dxf::WideFromUtf8(bytes)));
    }
}

struct RecognisedCase {
    const char* name;
    const char* version;
    const char* codePage;
    const char* layer;  // bytes
    const wchar_t* text;
    const char* notes;
    const char* added;  // bytes of a new text "中"
};

const RecognisedCase kRecognised[] = {
    {"GBK as declared", "AC1015", "ANSI_936", "\xd6\xd0", L"中", "", "\xd6\xd0"},
    {"UTF-8 from R2007 on", "AC1021", "ANSI_1252", "\xe4\xb8\xad", L"中", "", "\xe4\xb8\xad"},
    {"UTF-8 before R2007", "AC1015", "ANSI_936", "\xe4\xb8\xad\xe5\xbf\x83", L"中心",
     "$DWGCODEPAGE ANSI_936: text is UTF-8 although the file says otherwise\n", "\xe4\xb8\xad"},
    {"UTF-8 umlauts before R2007", "AC1015", "ANSI_1252", "\xc3\xa4", L"ä",
     "$DWGCODEPAGE ANSI_1252: text is UTF-8 although the file says otherwise\n", "\xe4\xb8\xad"},
    {"GBK that would also be UTF-8", "AC1015", "ANSI_936", "\xc4\xaa", L"莫", "", "\xd6\xd0"},
    {"GBK in a file of R2010", "AC1024", "ANSI_936", "\xd6\xd0\xd0\xc4", L"中心",
     "ANSI_936: text that is not UTF-8 in a file of R2007 or later is read by its code page\n",
     "\xd6\xd0"},
    {"one broken string among UTF-8", "AC1024", "ANSI_1252", "\xe4\xb8\xad\xe5\xbf", L"ä¸\u00adå¿",
     "ANSI_1252: text that is not UTF-8 in a file of R2007 or later is read by its code page\n",
     "\xe4\xb8\xad"},
    {"unknown page", "AC1015", "KLINGON", "\xe4", L"ä",
     "KLINGON: unknown code page, read as ANSI_1252\n", "\\U+4E2D"},
    {"no page", "AC1015", "", "\xe4", L"ä", "", "\\U+4E2D"}};

TEST(Text, CodePageOfAFile) {
    for (const RecognisedCase& c : kRecognised) {
        SCOPED_TRACE(c.name);
        const bool mixed = std::string(c.name).rfind("one broken", 0) == 0;
        std::string content =
            Header(c.version,
                   *c.codePage ? std::string("9|$DWGCODEPAGE|3|") + c.codePage : std::string()) +
            Section("TABLES", std::string("0|TABLE|2|LAYER|70|2|0|LAYER|2|0|70|0|62|"
                                          "7|6|CONTINUOUS|0|LAYER|2|") +
                                  c.layer + "|70|0|62|7|6|CONTINUOUS|0|ENDTAB") +
            Section("ENTITIES", "0|TEXT|5|A0|8|" + std::string(c.layer) +
                                    "|10|0.0|20|0.0|30|0.0|40|1.0|1|" +
                                    (mixed ? "\xe4\xb8\xad\xe5\xbf\x83\xe5\xb1\x82" : "x")) +
            "0|EOF";
        Loaded drawing(Lines(content));
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        EXPECT_EQ(c.notes, drawing.Notes());
        AcDbText* text = nullptr;
        ASSERT_EQ(Acad::eOk, acdbOpenObject(text, drawing.Id(0xA0), AcDb::kForWrite));
        AcString layer;
        EXPECT_EQ(Acad::eOk, text->layer(layer));
        EXPECT_STREQ(c.text, layer.kACharPtr());
        EXPECT_EQ(Acad::eOk, text->setTextString(L"中"));
        EXPECT_EQ(Acad::eOk, text->close());
        EXPECT_NE(std::string::npos, drawing.Written().find(std::string("\n1\n") + c.added + "\n"));
    }
}

struct NumberCase {
    const char* text;
    bool real, whole;
    double value;
};

const NumberCase kNumbers[] = {
    {"1", true, true, 1},       {" 1.50 ", true, true, 1.5},
    {"-.5", true, true, -0.5},  {"+3.", true, true, 3},
    {"1e-7", true, true, 1e-7}, {"1.25E+02", true, true, 125},
    {"0.1", true, true, 0.1},   {"5e-324", true, true, 5e-324},
    {"1e-400", true, true, 0},  {"1.7976931348623157e308", true, true, 1.7976931348623157e308},
    {"-0.0", true, true, -0.0}, {"0000012", true, true, 12},
    {"", false, false, 0},      {"-", false, false, 0},
    {".", false, false, 0},     {"1e", false, false, 0},
    {"1.2.3", false, false, 0}, {"0x10", false, false, 0},
    {"inf", false, false, 0},   {"nan", false, false, 0},
    {"1e400", false, false, 0}, {"1,5", false, false, 0},
    {"1 2", false, false, 0},   {"12a", false, false, 0},
    {"\t7\r", true, true, 7},   {"1d5", false, false, 0}};

TEST(Numbers, Forms) {
    for (const NumberCase& c : kNumbers) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(c.real, host::dxf::IsRealText(c.text));
        EXPECT_EQ(c.whole, host::dxf::IsIntText(c.text));
        if (!c.real) continue;
        const double value = host::dxf::RealFromText(c.text);
        EXPECT_EQ(c.value, value);
        EXPECT_EQ(std::signbit(c.value), std::signbit(value));
    }
    EXPECT_FALSE(host::dxf::IsRealText(std::string(400, '9')));
    EXPECT_TRUE(host::dxf::IsRealText("0." + std::string(400, '9')));
    EXPECT_EQ(INT64_MAX, host::dxf::IntFromText("99999999999999999999"));
    EXPECT_EQ(-3, host::dxf::IntFromText(" -3.9"));
}

// What is written reads back exactly and looks like a real number.
TEST(Numbers, ShortestFormsReadBack) {
    EXPECT_EQ("0.0", host::dxf::TextFromReal(0));
    EXPECT_EQ("12.5", host::dxf::TextFromReal(12.5));
    EXPECT_EQ("-0.1", host::dxf::TextFromReal(-0.1));
    EXPECT_EQ("1.0e+20", host::dxf::TextFromReal(1e20));
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) continue;
        const std::string text = host::dxf::TextFromReal(value);
        EXPECT_TRUE(host::dxf::IsRealText(text)) << text;
        EXPECT_NE(std::string::npos, text.find('.')) << text;
        EXPECT_EQ(value, host::dxf::RealFromText(text)) << text;
    }
}

}  // namespace
