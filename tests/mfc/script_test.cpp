// Resource scripts: what is understood, what is refused, and the module's own one.
#include <fstream>
#include <random>
#include <sstream>

#include "host/mfc/dialog_builder.h"
#include "mfc/support.h"
#include "support/scratch.h"

using namespace host;

namespace {

std::string Show(const ControlTemplate& control) {
    std::ostringstream out;
    out << test::Narrow(control.windowClass) << " " << control.id << " '"
        << test::Narrow(control.text) << "' " << control.place.left << "," << control.place.top
        << "," << control.place.right - control.place.left << ","
        << control.place.bottom - control.place.top << " " << std::hex << control.style;
    if (control.exStyle != 0) out << "/" << control.exStyle;
    return out.str();
}

// Includes "more.h" and "loop.h" exist.
std::optional<std::wstring> Include(const std::wstring& name) {
    if (name == L"more.h") return L"#define IDC_MORE 77\n#define STYLES (WS_GROUP|WS_TABSTOP)\n";
    if (name == L"loop.h") return L"#include \"loop.h\"\n";
    return {};
}

ScriptFault Parse(const std::string& text, ResourceScript& script) {
    return ParseResourceScript(Widen(text), L"t.rc", Include, script);
}

struct ControlCase {
    const char* name;
    const char* statement;
    const char* shown;
};
const ControlCase kControls[] = {
    {"label", "LTEXT \"a\", -1, 1, 2, 3, 4", "static -1 'a' 1,2,3,4 50020000"},
    {"centred label", "CTEXT \"a\", IDC_STATIC, 1, 2, 3, 4", "static -1 'a' 1,2,3,4 50020001"},
    {"edit has no text", "EDITTEXT 5, 1, 2, 3, 4, ES_AUTOHSCROLL", "edit 5 '' 1,2,3,4 50810080"},
    {"button", "PUSHBUTTON \"b\", 6, 1, 2, 3, 4", "button 6 'b' 1,2,3,4 50010000"},
    {"default button", "DEFPUSHBUTTON \"b\", IDOK, 1, 2, 3, 4", "button 1 'b' 1,2,3,4 50010001"},
    {"NOT clears a default", "PUSHBUTTON \"b\", 6, 1, 2, 3, 4, NOT WS_VISIBLE | WS_GROUP",
     "button 6 'b' 1,2,3,4 40030000"},
    {"NOT after its own bit", "PUSHBUTTON \"b\", 6, 1, 2, 3, 4, WS_GROUP | NOT WS_TABSTOP",
     "button 6 'b' 1,2,3,4 50020000"},
    {"CONTROL has no tab stop of its own",
     "CONTROL \"r\", 8, \"Button\", BS_AUTORADIOBUTTON, 1, 2, 3, 4",
     "button 8 'r' 1,2,3,4 50000009"},
    {"class without quotes", "CONTROL \"r\", 8, STATIC, 0, 1, 2, 3, 4",
     "static 8 'r' 1,2,3,4 50000000"},
    {"extended style", "CONTROL \"\", 9, \"SysListView32\", LVS_REPORT, 1, 2, 3, 4, 0x200",
     "syslistview32 9 '' 1,2,3,4 50000001/200"},
    {"quote inside a text", "LTEXT \"say \"\"hi\"\"\", 9, 1, 2, 3, 4",
     "static 9 'say \"hi\"' 1,2,3,4 50020000"},
    {"escapes", "LTEXT \"a\\tb\\\\c\", 9, 1, 2, 3, 4", "static 9 'a\tb\\c' 1,2,3,4 50020000"},
    {"Chinese", "LTEXT \"包络线：\", 9, 1, 2, 3, 4", "static 9 '包络线：' 1,2,3,4 50020000"},
    {"macro of an included file", "LTEXT \"a\", IDC_MORE, 1, 2, 3, 4, STYLES",
     "static 77 'a' 1,2,3,4 50030000"},
    {"sums and parentheses", "LTEXT \"a\", (IDC_MORE - 7) + 1, 1+1, -2, 3, 4",
     "static 71 'a' 2,-2,3,4 50020000"},
    {"comments and line ends", "LTEXT \"a // b\", 9, // one\n /* two\n lines */ 1, 2,\n 3, 4",
     "static 9 'a // b' 1,2,3,4 50020000"},
    {"branch not taken",
     "#ifdef NOWHERE\n what \"is this\n#else\nLTEXT \"a\", 9, 1, 2, 3, 4\n#endif",
     "static 9 'a' 1,2,3,4 50020000"},
    {"condition",
     "#if !defined(NOWHERE) && (defined RC_INVOKED) && IDC_MORE == 77\n"
     "LTEXT \"a\", 9, 1, 2, 3, 4\n#elif 1\nnever\n#endif",
     "static 9 'a' 1,2,3,4 50020000"},
};

TEST(ResourceScript, Controls) {
    for (const ControlCase& c : kControls) {
        SCOPED_TRACE(c.name);
        ResourceScript script;
        const std::string text = std::string("#include \"more.h\"\n#include <afxres.h>\n") +
                                 "#pragma code_page(65001)\n7 DIALOGEX 0,0,9,9\nBEGIN\n" +
                                 c.statement + "\nEND\n";
        ASSERT_EQ(test::Narrow(Parse(text, script)), "");
        ASSERT_EQ(script.dialogs.at(7).controls.size(), 1u);
        EXPECT_EQ(Show(script.dialogs.at(7).controls[0]), c.shown);
    }
}

TEST(ResourceScript, DialogStatementsAndTexts) {
    ResourceScript script;
    ASSERT_EQ(
        test::Narrow(Parse("LANGUAGE LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED\n"
                           "3 DIALOG DISCARDABLE 1, 2, 30, 40\nCAPTION \"c\"\nFONT 8, \"F\"\n{\n}\n"
                           "4 DIALOGEX 0, 0, 5, 6, 99\nSTYLE WS_CHILD\nEXSTYLE WS_EX_TOPMOST\n"
                           "FONT 9, \"G\", FW, 1, 0x86\nBEGIN\nEND\n"
                           "STRINGTABLE\nBEGIN\n 5 \"five\"\n 6, \"six\\n\"\nEND\n",
                           script)),
        "t.rc(10): FW is not defined");
    ASSERT_EQ(test::Narrow(Parse("3 DIALOG DISCARDABLE 1, 2, 30, 40\nCAPTION \"c\"\nFONT 8, "
                                 "\"F\"\n{\n}\n4 DIALOGEX 0, 0, 5, 6, 99\nSTYLE WS_CHILD\n"
                                 "EXSTYLE WS_EX_TOPMOST\nFONT 9, \"G\", 700, 1, 0x86\nBEGIN\nEND\n"
                                 "STRINGTABLE\nBEGIN\n 5 \"five\"\n 6, \"six\\n\"\nEND\n",
                                 script)),
              "");
    EXPECT_EQ(script.dialogs.at(3).style, WS_POPUP | WS_BORDER | WS_SYSMENU | WS_CAPTION);
    EXPECT_EQ(script.dialogs.at(3).caption, L"c");
    EXPECT_EQ(script.dialogs.at(4).style, WS_CHILD);
    EXPECT_EQ(script.dialogs.at(4).exStyle, WS_EX_TOPMOST);
    EXPECT_EQ(script.dialogs.at(4).fontWeight, 700);
    EXPECT_TRUE(script.dialogs.at(4).isItalic);
    EXPECT_EQ(script.strings.at(5), L"five");
    EXPECT_EQ(script.strings.at(6), L"six\n");
}

struct FaultCase {
    const char* text;
    const char* fault;
};
const FaultCase kFaults[] = {
    {"1 DIALOGEX 0,0,1\nBEGIN\nEND", "t.rc(2): a comma is missing before BEGIN"},
    {"1 DIALOGEX 0,0,1,-1\nBEGIN\nEND", "t.rc(1): a size must not be negative"},
    {"1 DIALOGEX 0,0,1,99999\nBEGIN\nEND", "t.rc(1): a place must lie within 16 bits"},
    {"0 DIALOGEX 0,0,1,1\nBEGIN\nEND", "t.rc(1): the number of a dialog must be positive"},
    {"1 DIALOGEX 0,0,1,1\nBEGIN", "t.rc(2): END is missing"},
    {"1 DIALOGEX 0,0,1,1\n", "t.rc(1): unknown statement the end of the script before BEGIN"},
    {"1 DIALOGEX 0,0,1,1\nSTYLE WS_FOO\nBEGIN\nEND", "t.rc(2): WS_FOO is not defined"},
    {"1 DIALOGEX 0,0,1,1\nFONT 0, \"F\"\nBEGIN\nEND", "t.rc(2): a font has 1 to 100 points"},
    {"1 DIALOGEX 0,0,1,1\nMENU 7\nBEGIN\nEND", "t.rc(2): unknown statement MENU before BEGIN"},
    {"1 DIALOGEX 0,0,1,1\nBEGIN\nCOMBOBOX 4, 1, 1, 1, 1\nEND",
     "t.rc(3): unknown control statement COMBOBOX"},
    {"1 DIALOGEX 0,0,1,1\nBEGIN\nLTEXT 4, 1, 1, 1, 1\nEND", "t.rc(3): a text is missing before 4"},
    {"1 DIALOGEX 0,0,1,1\nBEGIN\nLTEXT \"a\", NONE, 1, 1, 1, 1\nEND",
     "t.rc(3): NONE is not defined"},
    {"1 DIALOGEX 0,0,1,1\nBEGIN\nEDITTEXT 4,1,1,1,1\n\nEDITTEXT 4,1,1,1,1\nEND",
     "t.rc(5): the dialog has two controls with the number 4"},
    {"1 DIALOGEX 0,0,1,1\nBEGIN\nEND\n1 DIALOGEX 0,0,1,1\nBEGIN\nEND",
     "t.rc(4): the dialog 1 is there twice"},
    {"1 ICON \"a.ico\"", "t.rc(1): resources of the kind ICON are not known"},
    {"LTEXT", "t.rc(1): LTEXT is not defined"},
    {"\n\"open", "t.rc(2): the text has no end"},
    {"a /* open", "t.rc(1): the comment has no end"},
    {"\"a\\q\"", "t.rc(1): unknown escape in a text"},
    {"12x", "t.rc(1): this is no number"},
    {"99999999999", "t.rc(1): the number has more than 32 bits"},
    {"#include \"none.h\"", "t.rc(1): cannot read the included file none.h"},
    {"#include \"loop.h\"", "loop.h(1): loop.h includes itself"},
    {"#include nothing", "t.rc(1): #include needs a file name"},
    {"\n#if 1\n", "t.rc(3): #endif is missing"},
    {"#endif", "t.rc(1): #endif without #if"},
    {"#else", "t.rc(1): #else without #if"},
    {"#if (1", "t.rc(1): ) is missing"},
    {"#if 1 2\n#endif", "t.rc(1): the condition cannot be understood"},
    {"#frob", "t.rc(1): unknown directive #frob"},
    {"#error stop here", "t.rc(1): #error stop here"},
    {"#define A A\nA DIALOGEX 0,0,1,1", "t.rc(2): A is defined by itself"},
    {"STRINGTABLE\nBEGIN\n1 \"a\"\n1 \"b\"\nEND", "t.rc(4): the text 1 is there twice"},
};

TEST(ResourceScript, FaultsNameTheLine) {
    for (const FaultCase& c : kFaults) {
        ResourceScript script;
        script.strings[1] = L"before";
        EXPECT_EQ(test::Narrow(Parse(c.text, script)), c.fault) << c.text;
        EXPECT_EQ(script.strings.size(), 1u) << "a fault must leave the result alone";
    }
}

TEST(ResourceScript, NestedMacrosCannotGrowWithoutBound) {
    std::string text = "#define A0 x x\n";
    for (int i = 1; i < 30; ++i) {
        const std::string before = "A" + std::to_string(i - 1);
        text += "#define A" + std::to_string(i) + " " + before + " " + before + "\n";
    }
    ResourceScript script;
    EXPECT_EQ(test::Narrow(Parse(text + "A29", script)), "t.rc(31): the script is too long");
    const std::string deep(5000, '(');
    EXPECT_EQ(test::Narrow(Parse("#if " + deep, script)),
              "t.rc(1): the condition is nested too deeply");
    EXPECT_EQ(test::Narrow(Parse(deep, script)), "t.rc(1): the number is nested too deeply");
    EXPECT_EQ(test::Narrow(Parse("#if " + std::string(5000, '!'), script)),
              "t.rc(1): the condition is nested too deeply");
}

std::string ReadFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

// Any damage gives a fault or a script, never a crash (run under the sanitizers).
TEST(ResourceScript, DamagedScripts) {
    const std::string whole =
        ReadFile("plugin/ui/res/resource.h") + ReadFile("plugin/ui/res/QZEncircleLine.rc");
    ASSERT_GT(whole.size(), 1000u);
    const char kBytes[] = "\"\\#(){},|-0x/*\n A";
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string text = whole;
        for (unsigned hit = 0; hit <= seed % 5; ++hit) {
            const std::size_t at = random() % text.size();
            if (random() % 3 == 0) {
                text.erase(at, random() % 40);
            } else {
                text[at] = kBytes[random() % (sizeof(kBytes) - 1)];
            }
        }
        ResourceScript script;
        const ScriptFault fault = ParseResourceScript(
            Widen(text), L"t.rc", [](const std::wstring&) { return std::wstring(); }, script);
        EXPECT_TRUE(fault.empty() || fault.find(L"(") != std::wstring::npos);
    }
}

struct FileCase {
    const char* name;
    std::string bytes;
    const char* fault;
};

TEST(ResourceScript, FileEncodings) {
    const std::string body = "1 DIALOGEX 0,0,1,1\nCAPTION \"线\"\nBEGIN\nEND\n";
    std::string wide = "\xFF\xFE";
    for (const wchar_t ch : Widen(body)) {
        wide += static_cast<char>(ch & 0xFF);
        wide += static_cast<char>(ch >> 8);
    }
    const FileCase cases[] = {
        {"UTF-8 declared", "#pragma code_page(65001)\n" + body, ""},
        {"UTF-8 with a mark", "\xEF\xBB\xBF#pragma code_page(65001)\n" + body, ""},
        {"UTF-16", wide, ""},
        {"UTF-8 not declared", body,
         "x.rc(1): texts beyond ASCII need #pragma code_page(65001) and UTF-8"},
    };
    const std::string path = test::ScratchFolder() + "x.rc";
    for (const FileCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::ofstream(path, std::ios::binary) << c.bytes;
        ResourceScript script;
        EXPECT_EQ(test::Narrow(ReadResourceScript(Widen(path), script)), c.fault);
        if (*c.fault == 0) {
            EXPECT_EQ(script.dialogs.at(1).caption, L"线");
        }
    }
    std::remove(path.c_str());
    ResourceScript script;
    EXPECT_NE(ReadResourceScript(Widen(path), script), L"");
}

}  // namespace
