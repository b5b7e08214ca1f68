// Files that a test makes. The tests of one program run side by side in several processes, so every
// process needs a folder of its own.
#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace test {

// A new folder, gone with all in it when the object goes.
struct TempFolder {
    std::filesystem::path path;
    TempFolder() {
        std::random_device random;
        do {
            path = std::filesystem::temp_directory_path() / ("qz-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path));
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
    return kFolder.path.generic_string() + "/";
}

}  // namespace test
