#include "host/sys/file_identity.h"

#include <cerrno>
#include <map>
#include <utility>

namespace host {
namespace {

struct Claim {
    FileIdentity file;
    std::string what;
};

std::map<int, Claim>& Claims() {
    static std::map<int, Claim> claims;
    return claims;
}

}  // namespace

FileInUse::FileInUse(const std::string& path, const std::string& what) {
    static int last = 0;
    const FileIdentity file = IdentityOf(path);
    if (file.kind == FileIdentity::kStream) return;
    m_claim = ++last;
    Claims()[m_claim] = {file, what};
}

FileInUse::FileInUse(FileInUse&& other) noexcept : m_claim(std::exchange(other.m_claim, 0)) {}

FileInUse& FileInUse::operator=(FileInUse&& other) noexcept {
    std::swap(m_claim, other.m_claim);
    other.Release();
    return *this;
}

void FileInUse::Release() { Claims().erase(std::exchange(m_claim, 0)); }

bool IsFileInUse(const std::string& path, FileError& error) {
    if (Claims().empty()) return false;
    const FileIdentity file = IdentityOf(path);
    for (const auto& [number, claim] : Claims())
        if (claim.file == file) {
            error = {EBUSY, claim.what};
            return true;
        }
    return false;
}

}  // namespace host
