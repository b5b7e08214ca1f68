#include <climits>
#include <sys/stat.h>
#include <unistd.h>

#include "host/sys/file_identity.h"
#include "host/sys/link_target_posix.h"

namespace host {
namespace {

std::string SmallLetters(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

FileIdentity Existing(const struct stat& info) {
    FileIdentity file;
    file.kind = S_ISREG(info.st_mode) || S_ISDIR(info.st_mode) ? FileIdentity::kFile
                                                               : FileIdentity::kStream;
    file.device = info.st_dev;
    file.inode = info.st_ino;
    return file;
}

// Cuts the last name off a path; what is left is "" for a name alone.
std::string CutName(std::string& path) {
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    const std::size_t slash = path.rfind('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    path.erase(slash == std::string::npos ? 0 : slash + 1);
    return name;
}

}  // namespace

bool ResolveLinks(std::string path, std::string& target) {
    constexpr int kMaxLinks = 40;  // as the system itself gives up
    for (int i = 0; i < kMaxLinks; ++i) {
        char buffer[PATH_MAX];
        const ssize_t length = ::readlink(path.c_str(), buffer, sizeof buffer);
        if (length < 0) {
            target = path;
            return true;
        }
        const std::string link(buffer, static_cast<std::size_t>(length));
        const std::size_t slash = path.rfind('/');
        path = link.rfind('/', 0) == 0 || slash == std::string::npos
                   ? link
                   : path.substr(0, slash + 1) + link;
    }
    return false;
}

FileIdentity IdentityOf(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) == 0) return Existing(info);
    std::string folder = path;
    ResolveLinks(path, folder);
    FileIdentity file;
    file.kind = FileIdentity::kMissing;
    while (!folder.empty() && folder != "/") {
        const std::string name = CutName(folder);
        if (name != "." && !name.empty())
            file.name = file.name.empty() ? name : name + "/" + file.name;
        if (::stat(folder.empty() ? "." : folder.c_str(), &info) == 0) break;
    }
    file.name = SmallLetters(file.name);
    file.device = info.st_dev;
    file.inode = info.st_ino;
    return file;
}

}  // namespace host
