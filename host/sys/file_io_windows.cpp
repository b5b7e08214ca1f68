// The same files by the C library and the kernel of Windows.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "host/sys/file_identity.h"
#include "host/base/format.h"

namespace host {

namespace {

// One call of the C library moves no more than an int can count.
constexpr std::size_t kLargestMove = std::size_t{1} << 30;

bool Fail(FileError& error, int code) {
    error.code = code;
    error.reason = std::strerror(code);
    return false;
}

bool FailBySystem(FileError& error) {
    switch (::GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return Fail(error, ENOENT);
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return Fail(error, ENOSPC);
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_UNABLE_TO_REMOVE_REPLACED:
            return Fail(error, EACCES);
        default:
            return Fail(error, EIO);
    }
}

// Owns a descriptor; Close() reports what the destructor cannot.
class Descriptor {
public:
    Descriptor(const std::wstring& path, int flags) {
        ::_wsopen_s(&m_fd, path.c_str(), flags | _O_BINARY | _O_NOINHERIT, _SH_DENYNO, _S_IWRITE);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (m_fd >= 0) ::_close(m_fd);
    }
    int get() const { return m_fd; }
    bool Close() { return ::_close(std::exchange(m_fd, -1)) == 0; }

private:
    int m_fd = -1;
};

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool ReadAll(int fd, std::size_t expected, FileBytes& out, FileError& error) {
    std::size_t capacity = expected + 1, size = 0;
    std::unique_ptr<char[]> data(new char[capacity]);
    for (;;) {
        if (size == capacity) {
            std::unique_ptr<char[]> moved(new char[capacity * 2]);
            std::memcpy(moved.get(), data.get(), size);
            data = std::move(moved);
            capacity *= 2;
        }
        const auto step = static_cast<unsigned int>((std::min)(capacity - size, kLargestMove));
        const int got = ::_read(fd, data.get() + size, step);
        if (got < 0) return Fail(error, errno);
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    out.data = std::move(data);
    out.size = size;
    return true;
}

// The content is on disk when this returns true.
bool Fill(const std::wstring& path, const std::vector<std::string_view>& pieces, FileError& error) {
    Descriptor file(path, _O_WRONLY);
    if (file.get() < 0) return Fail(error, errno);
    // One call a piece would be slow: the pieces of a drawing are small and many.
    constexpr std::size_t kBatch = std::size_t{1} << 20;
    std::string batch;
    const auto put = [&](std::string_view bytes) {
        while (!bytes.empty()) {
            const auto step = static_cast<unsigned int>((std::min)(bytes.size(), kLargestMove));
            const int done = ::_write(file.get(), bytes.data(), step);
            if (done <= 0) return Fail(error, done < 0 ? errno : ENOSPC);
            bytes.remove_prefix(static_cast<std::size_t>(done));
        }
        return true;
    };
    for (const std::string_view piece : pieces) {
        batch.append(piece);
        if (batch.size() < kBatch) continue;
        if (!put(batch)) return false;
        batch.clear();
    }
    if (!put(batch)) return false;
    if (::_commit(file.get()) != 0) return Fail(error, errno);
    return file.Close() || Fail(error, errno);
}

// A file that is a link stays one: what it leads to is written. path itself when nothing is there.
std::wstring TargetOf(const std::wstring& path) {
    const HANDLE file = ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return path;
    wchar_t target[32768];  // the longest path of the system
    const DWORD length = ::GetFinalPathNameByHandleW(file, target, 32768, FILE_NAME_NORMALIZED);
    ::CloseHandle(file);
    return length > 0 && length < 32768 ? std::wstring(target, length) : path;
}

}  // namespace

bool ReadWholeFile(const std::string& path, FileBytes& out, FileError& error) {
    const std::wstring wide = Widen(path);
    if (IsFolder(wide)) {
        error = {EISDIR, "is a folder, not a file"};
        return false;
    }
    Descriptor file(wide, _O_RDONLY);
    if (file.get() < 0) return Fail(error, errno);
    const long long size = ::_filelengthi64(file.get());
    return ReadAll(file.get(), size > 0 ? static_cast<std::size_t>(size) : 0, out, error);
}

bool WriteFileAtomically(const std::string& path, const std::vector<std::string_view>& pieces,
                         FileError& error) {
    if (IsFileInUse(path, error)) return false;
    if (IsFolder(Widen(path))) {
        error = {EISDIR, "is a folder, not a file"};
        return false;
    }
    const std::wstring target = TargetOf(Widen(path));
    const bool exists = ::_waccess(target.c_str(), 0) == 0;
    constexpr int kMayWrite = 2;
    if (exists && ::_waccess(target.c_str(), kMayWrite) != 0) return Fail(error, errno);

    const std::size_t slash = target.find_last_of(L"\\/");
    const std::wstring folder = slash == std::wstring::npos ? L"." : target.substr(0, slash + 1);
    if (!IsFolder(folder)) return Fail(error, ENOENT);
    wchar_t temporary[MAX_PATH];
    if (::GetTempFileNameW(folder.c_str(), L"sav", 0, temporary) == 0) return FailBySystem(error);
    if (!Fill(temporary, pieces, error)) {
        ::DeleteFileW(temporary);
        return false;
    }
    // Replacing keeps the old file's rights; a new one has those of its folder.
    const BOOL moved = exists
                           ? ::ReplaceFileW(target.c_str(), temporary, nullptr, 0, nullptr, nullptr)
                           : ::MoveFileExW(temporary, target.c_str(), MOVEFILE_WRITE_THROUGH);
    if (moved) return true;
    FailBySystem(error);
    ::DeleteFileW(temporary);
    return false;
}

}  // namespace host
