// The one application of a test program with windows that nobody sees. For one source of a program.
#pragma once

#include <QApplication>

#if defined(__SANITIZE_ADDRESS__)
// The font library keeps a few records to the end of the process.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
#endif

namespace test {

inline QApplication& Application() {
    static QApplication* const application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int count = 1;
        static char name[] = "offscreen_tests";
        static char* arguments[] = {name, nullptr};
        return new QApplication(count, arguments);
    }();
    return *application;
}

}  // namespace test
