#include "apps/qzenvelope/InputFiles.h"

#include <glob.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

#include "host/dwg/drawing_file.h"
#include "host/sys/file_identity.h"
#include "host/sys/file_io.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;
namespace {

namespace fs = std::filesystem;

bool IsDrawingName(const fs::path& path) {
    std::string end = path.extension().string();
    for (char& c : end)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return end == ".dxf" || host::dwg::IsDwgPath(path.string());
}

// Hidden files are somebody's own business: half written ones, and those of other systems.
bool IsHidden(const fs::path& path) { return path.filename().string().rfind('.', 0) == 0; }

class Folders {
public:
    Folders(bool recursive, const std::string& out)
        : m_recursive(recursive), m_out(host::IdentityOf(out)) {}

    std::vector<std::string> Read(const fs::path& folder) {
        std::vector<std::string> files;
        Add(folder, files);
        return files;
    }

private:
    bool IsOut(const fs::path& path) const {
        const host::FileIdentity identity = host::IdentityOf(path.string());
        return identity.kind == host::FileIdentity::kFile && identity == m_out;
    }

    void Add(const fs::path& folder, std::vector<std::string>& files) {
        std::error_code error;
        std::vector<fs::path> entries;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
            entries.push_back(entry.path());
        if (error)
            throw Failure(Fault::Input,
                          folder.string() + Tr(": the folder cannot be read: ") + error.message());
        std::sort(entries.begin(), entries.end());
        for (const fs::path& entry : entries) {
            if (IsHidden(entry)) continue;
            // Links to folders are not followed: they may lead round in a circle.
            if (fs::is_directory(fs::symlink_status(entry, error))) {
                if (m_recursive && !IsOut(entry)) Add(entry, files);
            } else if (IsDrawingName(entry) && fs::is_regular_file(entry, error)) {
                files.push_back(entry.string());
            }
        }
    }

    bool m_recursive;
    host::FileIdentity m_out;
};

std::vector<std::string> Matches(const std::string& pattern) {
    std::vector<std::string> found;
    glob_t result{};
    if (::glob(pattern.c_str(), 0, nullptr, &result) == 0)
        found.assign(result.gl_pathv, result.gl_pathv + result.gl_pathc);
    ::globfree(&result);
    return found;
}

// Two sums of 64 bits each by FNV-1a (Fowler, Noll, Vo), the second over the first's steps.
struct Sum {
    std::uint64_t one = 0xcbf29ce484222325u, other = 0x84222325cbf29ce4u;

    void Add(std::string_view bytes) {
        for (const char c : bytes) {
            one = (one ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
            other = (other ^ (one >> 32) ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
        }
    }
    std::string Text(std::size_t size) const {
        char text[80];
        std::snprintf(text, sizeof text, "%016llx%016llx-%zx", static_cast<unsigned long long>(one),
                      static_cast<unsigned long long>(other), size);
        return text;
    }
};

}  // namespace

std::vector<std::string> ExpandInputs(const std::vector<std::string>& words, bool recursive,
                                      const std::string& out) {
    Folders folders(recursive, out);
    std::vector<std::string> files;
    for (const std::string& word : words) {
        std::error_code error;
        std::vector<std::string> found = {word};
        const bool isPattern =
            word.find_first_of("*?[") != std::string::npos && !fs::exists(word, error);
        if (isPattern) {
            found = Matches(word);
            if (found.empty())
                throw Failure(Fault::Input, word + Tr(": no file matches the pattern"));
        }
        for (const std::string& path : found) {
            if (!fs::is_directory(path, error)) {
                if (!isPattern || IsDrawingName(path)) files.push_back(path);
                continue;
            }
            const std::vector<std::string> inside = folders.Read(path);
            if (inside.empty() && !isPattern)
                throw Failure(Fault::Input, path +
                                                Tr(": the folder holds no drawing (.dxf, .dwg)") +
                                                (recursive ? ""
                                                           : Tr("; --recursive looks into its "
                                                                "folders too")));
            files.insert(files.end(), inside.begin(), inside.end());
        }
    }
    return files;
}

std::vector<std::string> DrawingsIn(const std::string& folder, bool recursive,
                                    const std::string& out) {
    return Folders(recursive, out).Read(folder);
}

std::vector<std::string> ShareOf(const std::vector<std::string>& list, const Shard& shard) {
    std::vector<std::string> share;
    for (size_t i = shard.number - 1; i < list.size(); i += shard.count) share.push_back(list[i]);
    return share;
}

std::string MarkOf(const std::string& path) {
    host::FileBytes bytes;
    host::FileError error;
    std::error_code ignored;
    // A pipe would be empty afterwards.
    if (!fs::is_regular_file(path, ignored) || !host::ReadWholeFile(path, bytes, error)) return {};
    Sum sum;
    sum.Add(bytes.View());
    return sum.Text(bytes.size);
}

std::string MarkOfText(const std::string& text) {
    Sum sum;
    sum.Add(text);
    return sum.Text(text.size());
}

}  // namespace app
