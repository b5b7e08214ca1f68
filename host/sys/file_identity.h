// Which file a path means, whatever its spelling, and which files must not be written now.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "host/sys/file_io.h"

namespace host {

// Where the content of a file lies. Links are followed, "./" and doubled slashes mean nothing, and
// the case of letters counts only where the file system says so.
struct FileIdentity {
    enum Kind {
        kFile,     // an existing file or folder: device and inode alone
        kMissing,  // nothing yet: the folder that it would be in, and its name there
        kStream    // a device, pipe or socket: nothing that is replaced
    } kind = kStream;
    std::uint64_t device = 0, inode = 0;  // of the nearest folder that exists, for kMissing
    // kMissing: the rest of the path, ASCII letters small: many file systems ignore their case, and
    // of two names that are not there yet nothing tells whether this one does.
    std::string name;

    bool operator<(const FileIdentity& other) const {
        return std::tie(kind, device, inode, name) <
               std::tie(other.kind, other.device, other.inode, other.name);
    }
    bool operator==(const FileIdentity& other) const { return !(*this < other || other < *this); }
};

// path  UTF-8 or whatever bytes the system takes. Never fails: a path that cannot be looked at is
//       as good as missing.
FileIdentity IdentityOf(const std::string& path);

// Keeps a file from being written by this process: an input, a drawing that is open, the script
// that runs. WriteFileAtomically refuses it for as long as this lives, by whatever name it is
// called. Not for use by more than one thread.
class FileInUse {
public:
    FileInUse() = default;
    // what  completes "PATH: cannot be written: ", a remedy included
    FileInUse(const std::string& path, const std::string& what);
    ~FileInUse() { Release(); }
    FileInUse(FileInUse&& other) noexcept;
    FileInUse& operator=(FileInUse&& other) noexcept;
    void Release();

private:
    int m_claim = 0;  // 0: none
};

// True, with the reason filled, when somebody keeps the file from being written.
bool IsFileInUse(const std::string& path, FileError& error);

}  // namespace host
