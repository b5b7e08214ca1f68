// A small drawing, and a folder to save it to.
#pragma once

#include <gmock/gmock.h>

#include "drawing_text.h"
#include "support/scratch.h"

namespace test {

class Save : public testing::Test {
protected:
    Save() { EXPECT_TRUE(drawing.result.ok()) << drawing.result.message; }
    host::dxf::Result To(const std::filesystem::path& path) {
        host::dxf::Report report;
        return host::dxf::WriteFile(drawing.db, path.string(), report);
    }
    void Put(const std::filesystem::path& path, const std::string& text) {
        std::ofstream(path, std::ios::binary) << text;
    }
    std::size_t FilesInFolder() {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                                      std::filesystem::directory_iterator()));
    }

    const std::string bytes = Lines(Section("ENTITIES", Line("A1")) + "0|EOF");
    Loaded drawing{bytes};
    const TempFolder temp;
    const std::filesystem::path folder = temp.path;
};

}  // namespace test
