// Files that a test makes. The tests of one program run side by side in several processes, so every
// process needs a folder of its own.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace test {

// A new folder, gone with all in it when the object goes.
struct TempFolder {
    std::filesystem::path path;
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "qz-test-XXXXXX").string();
        path = ::mkdtemp(name.data());
    }
    ~TempFolder() {
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        std::filesystem::remove_all(path);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
};

// The folder of this process, with a slash at its end.
inline std::string ScratchFolder() {
    static const TempFolder kFolder;
    return kFolder.path.string() + "/";
}

}  // namespace test
