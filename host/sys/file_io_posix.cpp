#include "host/sys/file_io.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "host/sys/file_identity.h"
#include "host/sys/link_target_posix.h"
#include "host/sys/process_end.h"
#include "host/sys/temporary_files_posix.h"

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

// No drawing comes near it; a file without end would fill the memory.
constexpr std::size_t kMostBytes = std::size_t{4} << 30;

bool FailTooLarge(FileError& error) {
    error = {EFBIG, "is larger than 4 GB"};
    return false;
}

// Waits until somebody writes into a pipe, then lets reads wait for the rest.
bool WaitForData(int fd, FileError& error) {
    constexpr int kPatience = 10000;  // milliseconds
    pollfd pipe{fd, POLLIN, 0};
    const int ready = ::poll(&pipe, 1, kPatience);
    if (ready < 0) return Fail(error, errno);
    if (ready == 0) {
        error = {ETIMEDOUT, "is a pipe into which nobody has written for 10 s"};
        return false;
    }
    return ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK) == 0 || Fail(error, errno);
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
        if (size > kMostBytes) return FailTooLarge(error);
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

// The content is on disk when this returns true, under whatever name the file has, if any.
bool Fill(int fd, mode_t mode, const struct stat* old, const std::vector<std::string_view>& pieces,
          FileError& error) {
    if (!WriteAll(fd, pieces, error)) return false;
    // Only the superuser may give a file away; others keep the rights and become the owner.
    if (old != nullptr && ::fchown(fd, old->st_uid, old->st_gid) != 0 && errno != EPERM)
        return Fail(error, errno);
    if (::fchmod(fd, mode) != 0) return Fail(error, errno);
    return ::fsync(fd) == 0 || Fail(error, errno);
}

// A file's place: its folder, with a slash at the end, and what is to be there.
struct Place {
    std::string target, folder;
    const struct stat* old = nullptr;  // null: no file is there yet
    mode_t mode = 0;
};

// The name of a temporary file while it is there: removed when the process is ended.
class TemporaryName {
public:
    explicit TemporaryName(const std::string& folder) : path_(NewTemporaryName(folder)) {
        SetTemporaryFile(path_.c_str());
    }
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;
    ~TemporaryName() {
        if (!isGone_) ::unlink(path_.c_str());
        SetTemporaryFile(nullptr);
    }
    const char* get() const { return path_.c_str(); }
    // Takes the target's place.
    bool MoveTo(const std::string& target) {
        isGone_ = ::rename(path_.c_str(), target.c_str()) == 0;
        return isGone_;
    }

private:
    std::string path_;
    bool isGone_ = false;
};

enum class Attempt { kDone, kFailed, kUnsupported };

// By a file without a name, of which a kill leaves nothing: it gets its name when it is whole.
Attempt WriteNameless(const Place& place, const std::vector<std::string_view>& pieces,
                      FileError& error) {
    Descriptor file(::open(place.folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
    if (file.get() < 0)
        return errno == ENOSPC || errno == EACCES || errno == ENOENT || errno == EROFS
                   ? (Fail(error, errno), Attempt::kFailed)
                   : Attempt::kUnsupported;
    if (!Fill(file.get(), place.mode, place.old, pieces, error)) return Attempt::kFailed;
    const std::string open = "/proc/self/fd/" + std::to_string(file.get());
    const auto link = [&open](const char* name) {
        return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    };
    // A name that is taken cannot be given; the file goes there by way of another.
    if (place.old == nullptr && link(place.target.c_str())) return Attempt::kDone;
    TemporaryName name(place.folder);
    if (!link(name.get())) return Attempt::kUnsupported;
    return name.MoveTo(place.target) ? Attempt::kDone : (Fail(error, errno), Attempt::kFailed);
}

bool WriteNamed(const Place& place, const std::vector<std::string_view>& pieces, FileError& error) {
    TemporaryName name(place.folder);
    Descriptor file(::open(name.get(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600));
    if (file.get() < 0) return Fail(error, errno);
    if (!Fill(file.get(), place.mode, place.old, pieces, error)) return false;
    if (!file.Close()) return Fail(error, errno);
    return name.MoveTo(place.target) || Fail(error, errno);
}

}  // namespace

bool ReadWholeFile(const std::string& path, FileBytes& out, FileError& error) {
    // A pipe that nobody writes to would be waited for when it is opened.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.get() < 0) return Fail(error, errno);
    struct stat info {};
    if (::fstat(file.get(), &info) != 0) return Fail(error, errno);
    if (S_ISDIR(info.st_mode)) {
        error = {EISDIR, "is a folder, not a file"};
        return false;
    }
    if (S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode)) {
        error = {ENODEV, "is a device, not a file"};
        return false;
    }
    if (S_ISFIFO(info.st_mode) && !WaitForData(file.get(), error)) return false;
    if (S_ISREG(info.st_mode) && static_cast<std::size_t>(info.st_size) > kMostBytes)
        return FailTooLarge(error);
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

    Place place;
    place.target = target;
    const std::size_t slash = target.rfind('/');
    place.folder = slash == std::string::npos ? "./" : target.substr(0, slash + 1);
    place.old = exists ? &old : nullptr;
    place.mode = exists ? old.st_mode & 07777 : NewFileMode();
    SweepTemporaryFiles(place.folder);
    const Attempt attempt = WriteNameless(place, pieces, error);
    if (attempt == Attempt::kFailed) return false;
    if (attempt == Attempt::kUnsupported && !WriteNamed(place, pieces, error)) return false;
    // The rename itself must reach the disk. Some file systems cannot flush a folder; the file is
    // whole there all the same.
    Descriptor directory(::open(place.folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() >= 0) ::fsync(directory.get());
    return true;
}

}  // namespace host
