// Names of exported files.
#include <gtest/gtest.h>

#include "StdAfx.h"

#include "ExportNames.h"
#include "FileName.h"
#include "host/base/format.h"

namespace {

CString Wide(const char* text) { return CString(host::Widen(text).c_str()); }
std::string Narrow(const CString& text) { return host::Narrow(text.GetString()); }

TEST(FileNames, LoseWhatNoFileMayHold) {
    const struct {
        const char* text;
        const char* name;
    } cases[] = {{"T-01", "T-01"},   {"刀具 3", "刀具 3"}, {"a/b\\c", "a_b_c"},
                 {"D10*?", "D10__"}, {"x.", "x_"},         {"x ", "x_"},
                 {"", "_"},          {"nul", "nul_"},      {"COM1.a", "COM1_.a"},
                 {"a\tb", "a_b"},    {"CONE", "CONE"},     {".a", ".a"}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.name, Narrow(MakeFileName(Wide(c.text))));
        EXPECT_EQ(std::string(c.text) == c.name, IsFileName(Wide(c.text))) << c.text;
        EXPECT_TRUE(IsFileName(MakeFileName(Wide(c.text)))) << c.text;
    }
}

TEST(ExportNames, NoTwoToolsWriteOneFile) {
    CExportNames names;
    const char* const tools[] = {"A", "a", "A-2", "A", "B/1", "B?1", "A"};
    for (const char* const tool : tools) names.Expect(Wide(tool));
    std::vector<std::string> taken;
    for (const char* const tool : tools) taken.push_back(Narrow(names.Take(Wide(tool))));
    EXPECT_EQ((std::vector<std::string>{"A", "a-3", "A-2", "A-4", "B_1", "B_1-2", "A-5"}), taken);
}

}  // namespace
