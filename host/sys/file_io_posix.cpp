#include "host/sys/file_io.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "host/sys/file_identity.h"
#include "host/sys/link_target_posix.h"

namespace host {

namespace {

// Owns a descriptor; Close() reports what the destructor cannot.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    int get() const { return fd_; }
    bool Close() {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd) == 0;
    }

private:
    int fd_;
};

bool Fail(FileError& error, int code) {
    error.code = code;
    error.reason = std::strerror(code);
    return false;
}

// Reads until the end or until size bytes are there; grows when the file is longer than it said.
bool ReadAll(int fd, std::size_t expected, FileBytes& out, FileError& error) {
    constexpr std::size_t kStep = std::size_t{1} << 16;
    std::size_t capacity = expected + 1, size = 0;
    std::unique_ptr<char[]> data(new char[capacity]);
    for (;;) {
        if (size == capacity) {
            const std::size_t larger = (std::max)(capacity * 2, kStep);
            std::unique_ptr<char[]> moved(new char[larger]);
            std::memcpy(moved.get(), data.get(), size);
            data = std::move(moved);
            capacity = larger;
        }
        const ssize_t got = ::read(fd, data.get() + size, capacity - size);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return Fail(error, errno);
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    out.data = std::move(data);
    out.size = size;
    return true;
}

bool WriteAll(int fd, const std::vector<std::string_view>& pieces, FileError& error) {
    constexpr std::size_t kBatch = 256;  // well under IOV_MAX
    std::size_t index = 0, offset = 0;
    while (index < pieces.size()) {
        iovec parts[kBatch];
        std::size_t count = 0;
        for (std::size_t i = index; i < pieces.size() && count < kBatch; ++i, ++count) {
            const std::size_t skip = i == index ? offset : 0;
            parts[count].iov_base = const_cast<char*>(pieces[i].data() + skip);
            parts[count].iov_len = pieces[i].size() - skip;
        }
        const ssize_t put = ::writev(fd, parts, static_cast<int>(count));
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) return Fail(error, errno);
        std::size_t left = static_cast<std::size_t>(put);
        while (index < pieces.size() && left >= pieces[index].size() - offset) {
            left -= pieces[index].size() - offset;
            offset = 0;
            ++index;
        }
        offset += left;
    }
    return true;
}

mode_t NewFileMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

bool WriteDirectly(const std::string& path, const std::vector<std::string_view>& pieces,
                   FileError& error) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.get() < 0) return Fail(error, errno);
    if (!WriteAll(file.get(), pieces, error)) return false;
    return file.Close() || Fail(error, errno);
}

// The content is on disk under the temporary name when this returns true.
bool FillTemporary(int fd, mode_t mode, const struct stat* old,
                   const std::vector<std::string_view>& pieces, FileError& error) {
    Descriptor file(fd);
    if (!WriteAll(file.get(), pieces, error)) return false;
    // Only the superuser may give a file away; others keep the rights and become the owner.
    if (old != nullptr && ::fchown(file.get(), old->st_uid, old->st_gid) != 0 && errno != EPERM)
        return Fail(error, errno);
    if (::fchmod(file.get(), mode) != 0) return Fail(error, errno);
    if (::fsync(file.get()) != 0) return Fail(error, errno);
    return file.Close() || Fail(error, errno);
}

}  // namespace

bool ReadWholeFile(const std::string& path, FileBytes& out, FileError& error) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.get() < 0) return Fail(error, errno);
    struct stat info {};
    if (::fstat(file.get(), &info) != 0) return Fail(error, errno);
    if (S_ISDIR(info.st_mode)) {
        error = {EISDIR, "is a folder, not a file"};
        return false;
    }
    return ReadAll(file.get(), S_ISREG(info.st_mode) ? static_cast<std::size_t>(info.st_size) : 0,
                   out, error);
}

bool WriteFileAtomically(const std::string& path, const std::vector<std::string_view>& pieces,
                         FileError& error) {
    if (IsFileInUse(path, error)) return false;
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) {
        error = {EISDIR, "is a folder, not a file"};
        return false;
    }
    // By the given name: what the links of open streams lead to, "pipe:[12]", is no path.
    if (exists && !S_ISREG(old.st_mode)) return WriteDirectly(path, pieces, error);
    std::string target;
    if (!ResolveLinks(path, target)) return Fail(error, ELOOP);
    if (exists && ::access(target.c_str(), W_OK) != 0) return Fail(error, errno);

    const std::size_t slash = target.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : target.substr(0, slash + 1);
    std::string temporary = folder + "/.save-XXXXXX";
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0) return Fail(error, errno);
    if (!FillTemporary(fd, exists ? old.st_mode & 07777 : NewFileMode(), exists ? &old : nullptr,
                       pieces, error) ||
        (::rename(temporary.c_str(), target.c_str()) != 0 && !Fail(error, errno))) {
        ::unlink(temporary.c_str());
        return false;
    }
    // The rename itself must reach the disk. Some file systems cannot flush a folder; the file is
    // whole there all the same.
    Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() >= 0) ::fsync(directory.get());
    return true;
}

}  // namespace host
