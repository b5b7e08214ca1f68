// qzhost: the embedded host as a program, on the desktop or headless with a script.
#include <QApplication>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>

#include "apps/qzhost/desktop/Desktop.h"
#include "apps/qzhost/session/HostProgram.h"
#include "apps/qzhost/script/ScriptRunner.h"
#include "apps/qzhost/settings/Settings.h"
#include "apps/qzhost/words/Words.h"
#include "host/ed/session.h"
#include "host/base/format.h"
#include "host/dwg/drawing_file.h"
#include "host/dxf/dxf_file.h"
#include "host/sys/file_identity.h"
#include "host/sys/process_end.h"

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kUsage = 2 };

struct Options {
    std::string script;
    std::string log;
    std::vector<std::string> drawings;
    std::vector<std::string> modules;
    std::string dwgConverter;  // command; empty: the one that is found
    std::string language;      // "en", "zh"; empty: the one that was chosen, or the locale's
    bool noModule = false;
};

bool LoadModules(const Options& options) {
    std::vector<std::wstring> modules;
    if (!options.noModule && options.modules.empty()) modules.push_back(app::UsualModule());
    for (const std::string& module : options.modules) modules.push_back(host::Widen(module));
    bool allLoaded = true;
    for (const std::wstring& module : modules)
        if (!app::LoadModule(module)) {
            std::cerr << "qzhost: the module " << host::Narrow(module) << " cannot be loaded\n";
            allLoaded = false;
        }
    return allLoaded;
}

// isOnce  what is open already is not opened again
bool OpenDrawings(const Options& options, bool isOnce) {
    host::Session& session = host::Session::Get();
    bool allOpened = true;
    for (const std::string& drawing : options.drawings)
        if ((isOnce ? session.OpenOnce(host::Widen(drawing))
                    : session.Open(host::Widen(drawing))) == nullptr) {
            std::cerr << "qzhost: the drawing " << drawing << " cannot be opened\n";
            allOpened = false;
        }
    return allOpened;
}

// What the window library says about running without a display is no news to a script's reader.
void ReportWindowLibrary(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg && !text.startsWith("QStandardPaths:") &&
        !text.contains("propagateSizeHints"))
        std::cerr << "qzhost: " << text.toStdString() << "\n";
}

int RunScript(const Options& options, int& argc, char** argv) {
    host::FileBytes text;
    host::FileError error;
    if (!host::ReadWholeFile(options.script, text, error)) {
        std::cerr << "qzhost: cannot read the script " << options.script << ": " << error.reason
                  << "\n";
        return kUsage;
    }
    const host::FileInUse keep(options.script, "is the script that runs; choose another name");
    const std::vector<app::ScriptLine> lines = app::ParseScript(std::string(text.View()));
    // Pictures are taken of windows that nobody sees.
    std::unique_ptr<QApplication> qt;
    std::unique_ptr<app::Desktop> desktop;
    if (std::any_of(lines.begin(), lines.end(), app::NeedsWindows)) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(ReportWindowLibrary);
        qt = std::make_unique<QApplication>(argc, argv);
        desktop = std::make_unique<app::Desktop>();
        desktop->show();
    }
    app::Transcript transcript([&desktop](const std::string& piece) {
        std::cout << piece << std::flush;
        if (desktop != nullptr) desktop->Line().Output().Print(host::Widen(piece));
    });
    app::ScriptRunner runner(options.script, lines, transcript);
    if (desktop != nullptr) runner.onUpdateDisplay = [&desktop] { desktop->Refresh(); };
    bool isGood = OpenDrawings(options, false) && LoadModules(options);
    if (isGood && !runner.Run()) {
        std::cerr << runner.Failure() << "\n";
        isGood = false;
    }
    for (const std::wstring& line : app::EndHost()) {
        std::cerr << "qzhost: left at the end: " << host::Narrow(line) << "\n";
        isGood = false;
    }
    transcript.Finish();
    if (!std::cout.flush()) {
        std::cerr << "qzhost: the standard output cannot be written\n";
        isGood = false;
    }
    return isGood ? kDone : kFailed;
}

int RunDesktop(const Options& options, int& argc, char** argv) {
    const char* const kDisplays[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    if (std::none_of(std::begin(kDisplays), std::end(kDisplays), qEnvironmentVariableIsSet)) {
        std::cerr << "qzhost: there is no display for the desktop; run a script with --script, see "
                     "qzhost --help\n";
        return kFailed;
    }
    QApplication qt(argc, argv);
    QApplication::setOrganizationName("QZHost");
    QApplication::setApplicationName("QZHost");
    // A caret that blinks has the whole window put together anew twice a second, with the solid in
    // it: 2 to 3 % of a processor while nothing happens.
    QApplication::setCursorFlashTime(0);
    app::UseLanguage(options.language.empty() ? app::Settings().Language()
                                              : QString::fromStdString(options.language));
    app::Desktop desktop(true);
    if (!options.log.empty() && !desktop.Line().LogTo(options.log)) {
        std::cerr << "qzhost: cannot write the log " << options.log << "\n";
        return kFailed;
    }
    desktop.show();
    // What cannot be opened or loaded is told on the command line.
    // What is rescued takes the place of the drawing as it was saved last.
    desktop.OfferRescue();
    static_cast<void>(OpenDrawings(options, true));
    if (host::Session::Get().Current() == nullptr) host::Session::Get().New();
    static_cast<void>(LoadModules(options));
    return QApplication::exec();
}

// Before everything else that is made before main().
struct CleanEnd {
    CleanEnd() { host::EndCleanly("qzhost"); }
};
__attribute__((init_priority(101))) const CleanEnd g_cleanEnd;

}  // namespace

int main(int argc, char** argv) {
    CLI::App parser{"The embedded host: opens drawings, loads modules, runs their commands."};
    Options options;
    parser.add_option("--script", options.script, "run this script without a display");
    parser.add_option("--log", options.log,
                      "write what the desktop's command line says to this file");
    parser.add_option("--module", options.modules, "load this module instead of the usual one");
    parser.add_option("--language", options.language, "en or zh, for this session")
        ->check(CLI::IsMember({"en", "zh"}));
    parser.add_flag("--no-module", options.noModule, "load no module at the start");
    parser.add_option("--dwg-converter", options.dwgConverter,
                      "command that converts between DWG and DXF, with {in} and {out} for the "
                      "files (QZ_DWG_CONVERTER, else ODAFileConverter or dwg2dxf)");
    parser.add_option("drawings", options.drawings, "DXF or DWG drawings to open");
    try {
        parser.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return parser.exit(e) == 0 ? kDone : kUsage;
    }
    host::dwg::SetConverter(options.dwgConverter);
    // For modules that read and write drawings by databases of their own.
    host::dxf::Install();
    return options.script.empty() ? RunDesktop(options, argc, argv)
                                  : RunScript(options, argc, argv);
}
