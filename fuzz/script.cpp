// Sessions of the host with the module loaded: whatever a person does, in any order, the host comes
// to its end with nothing left open, locked or shown. Bytes choose the lines of a script; they name
// no file but those in a folder of the target's own.
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "apps/qzhost/script/ScriptRunner.h"
#include "apps/qzhost/session/HostProgram.h"
#include "fuzz/check.h"
#include "host/base/format.h"
#include "host/ed/session.h"
#include "host/mfc/host_frame.h"

namespace {

// #n a number from 0 to 9, #p a point, #t a text, #d a dialog with a control, #f the folder
const char* const kLines[] = {"new",
                              "open #f/tool.dxf",
                              "close",
                              "activate #n",
                              "save",
                              "command QZTOOLDESIGNProfileAuto3D",
                              "command QZTOOLDESIGNProfilesAuto3D",
                              "command QZENVELOPEMETHOD",
                              "press #d",
                              "press 186 1021",
                              "press 186 1025",
                              "press 188 1018",
                              "press 188 1022",
                              "press 188 1037",
                              "press 188 1019",
                              "press 188 1035",
                              "press 190 1",
                              "press 241 1",
                              "set #d #t",
                              "set 186 1023 #t",
                              "set 190 1040 #t",
                              "get #d",
                              "rows 188 1017",
                              "rows 188 1021",
                              "select-rows 188 1017 #n",
                              "select-rows 188 1021 #n #n",
                              "double-click 188 1017 #n",
                              "double-click 188 1021 #n",
                              "menu 188 1017 #n",
                              "menu 188 1021 #n #t",
                              "select all",
                              "select window -10,-10 70,30",
                              "select window #p #p",
                              "select previous",
                              "point #p",
                              "point 0,10",
                              "string #t",
                              "escape",
                              "file #f/out.sat",
                              "folder #f",
                              "close-dialog 186",
                              "close-dialog 188",
                              "cancel-dialog 186",
                              "cancel-dialog 188",
                              "cancel-dialog 190",
                              "key 186 enter",
                              "key 188 escape",
                              "key 190 enter",
                              "later press #d",
                              "later cancel-dialog 186",
                              "ahead escape",
                              "dump dialogs",
                              "dump entities",
                              "command LINE",
                              "command PLINE",
                              "command ARC",
                              "command MOVE",
                              "command ROTATE",
                              "command MIRROR",
                              "command ERASE",
                              "command EXPLODE",
                              "command PROPERTIES",
                              "command LAYER",
                              "command ZOOM",
                              "command U",
                              "command REDO"};
const int kDialogs[] = {186, 188, 190, 207, 241};
// Drawn: half a pin with a groove, and its axis.
const char* const kTool[] = {"0,10 0,16",   "0,16 20,16",  "20,16 20,14", "20,14 30,14",
                             "30,14 30,16", "30,16 60,16", "60,16 60,10", "0,10 60,10"};

std::string g_folder;

class Bytes {
public:
    Bytes(const uint8_t* data, size_t size) : m_at(data), m_end(data + size) {}
    bool IsEmpty() const { return m_at == m_end; }
    unsigned Next() { return IsEmpty() ? 0 : *m_at++; }

private:
    const uint8_t *m_at, *m_end;
};

std::string Filled(char what, Bytes& bytes) {
    if (what == 'n') return std::to_string(bytes.Next() % 10);
    if (what == 'f') return g_folder;
    if (what == 'd')
        return std::to_string(kDialogs[bytes.Next() % std::size(kDialogs)]) + " " +
               std::to_string(1 + (bytes.Next() % 52 == 0 ? 0 : 1006 + bytes.Next() % 40));
    if (what == 'p') {
        const unsigned x = bytes.Next(), y = bytes.Next();
        return std::to_string(x / 2.0 - 20.0) + "," + std::to_string(y / 4.0 - 10.0);
    }
    static const char kLetters[] = "0123456789.,-+e@<>= xnau_*\\'";
    std::string text;
    for (unsigned i = bytes.Next() % 10; i > 0; --i)
        text += kLetters[bytes.Next() % (sizeof kLetters - 1)];
    return text;
}

std::string ScriptOf(Bytes bytes) {
    constexpr int kMostLines = 40;
    std::string script;
    for (int i = 0; i < kMostLines && !bytes.IsEmpty(); ++i) {
        const std::string line = kLines[bytes.Next() % std::size(kLines)];
        for (size_t at = 0; at < line.size(); ++at)
            script += line[at] == '#' ? Filled(line[++at], bytes) : std::string(1, line[at]);
        script += '\n';
    }
    return script;
}

void WriteTool() {
    std::ofstream file(g_folder + "/tool.dxf");
    file << "0\nSECTION\n2\nENTITIES\n";
    for (const char* const line : kTool) {
        double x, y, u, v;
        FUZZ_CHECK(std::sscanf(line, "%lf,%lf %lf,%lf", &x, &y, &u, &v) == 4);
        file << "0\nLINE\n8\n0\n10\n"
             << x << "\n20\n"
             << y << "\n11\n"
             << u << "\n21\n"
             << v << "\n";
    }
    file << "0\nENDSEC\n0\nEOF\n";
    FUZZ_CHECK(file.flush().good());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* const place = std::getenv("TMPDIR");
    g_folder = std::string(place == nullptr ? "/tmp" : place) + "/fuzz-script-XXXXXX";
    FUZZ_CHECK(mkdtemp(g_folder.data()) != nullptr);
    std::atexit([] {
        for (const char* const name : {"/tool.dxf", "/out.sat"})
            std::remove((g_folder + name).c_str());
        static_cast<void>(std::remove(g_folder.c_str()));
    });
    static_cast<void>(host::Session::Get());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    WriteTool();  // an earlier input may have saved it
    const std::string text = ScriptOf(Bytes(data, size));
    host::MakeHostWindows();
    FUZZ_CHECK(host::Session::Get().Open(host::Widen(g_folder + "/tool.dxf")) != nullptr);
    FUZZ_CHECK(app::LoadModule(app::UsualModule()));
    std::string said;
    app::Transcript transcript([&said](const std::string& piece) { said += piece; });
    {
        app::ScriptRunner runner("fuzz.scr", app::ParseScript(text), transcript);
        // A line that cannot be done ends the session, with its place.
        FUZZ_CHECK(runner.Run() || runner.Failure().rfind("fuzz.scr:", 0) == 0);
    }
    const app::Lines left = app::EndHost();
    for (const std::wstring& line : left)
        std::fprintf(stderr, "%sleft: %s\n", text.c_str(), host::Narrow(line).c_str());
    FUZZ_CHECK(left.empty());
    return 0;
}
