#include "mfc/support.h"

#include <cstdio>
#include <fstream>

#include "support/scratch.h"

void test::HostTest::UseDialog(const std::string& statements, const std::string& style) {
    const std::string path = ScratchFolder() + "dialog.rc";
    std::ofstream(path) << "#pragma code_page(65001)\n100 DIALOGEX 0, 0, 200, 100\nSTYLE " << style
                        << "\nCAPTION \"Test\"\nFONT 9, \"MS Shell Dlg\"\nBEGIN\n"
                        << statements << "\nEND\n";
    host::SetResourceScript(AfxGetInstanceHandle(), host::Widen(path));
    // Read now: the file is one of many of the same name.
    std::wstring reason;
    ASSERT_NE(host::FindDialog(AfxGetInstanceHandle(), 100, reason), nullptr) << Narrow(reason);
    std::remove(path.c_str());
}
