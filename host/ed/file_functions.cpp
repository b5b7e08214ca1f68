// The operating system's files under the names that Windows gives them.
#include <algorithm>
#include <chrono>
#include <cwchar>
#include <filesystem>
#include <string>

#include "host/base/format.h"
#include "host/sys/process.h"
#include "host_winuser.h"

namespace {

std::filesystem::path PathOf(LPCTSTR name) {
    std::wstring slashed = name == nullptr ? L"" : name;
    std::replace(slashed.begin(), slashed.end(), L'\\', L'/');
    return std::filesystem::u8path(host::Narrow(slashed));
}

}  // namespace

BOOL MoveFileEx(LPCTSTR lpExistingFileName, LPCTSTR lpNewFileName, DWORD dwFlags) {
    const std::filesystem::path from = PathOf(lpExistingFileName), to = PathOf(lpNewFileName);
    std::error_code failed;
    if (!(dwFlags & MOVEFILE_REPLACE_EXISTING) && std::filesystem::exists(to, failed)) return FALSE;
    if (std::filesystem::is_directory(to, failed)) return FALSE;
    std::filesystem::rename(from, to, failed);
    if (!failed) return TRUE;
    if (failed != std::errc::cross_device_link || !(dwFlags & MOVEFILE_COPY_ALLOWED)) return FALSE;
    return std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing,
                                      failed) &&
           std::filesystem::remove(from, failed);
}

BOOL DeleteFile(LPCTSTR lpFileName) {
    std::error_code failed;
    const std::filesystem::path path = PathOf(lpFileName);
    return !std::filesystem::is_directory(path, failed) && std::filesystem::remove(path, failed);
}

DWORD GetFileAttributes(LPCTSTR lpFileName) {
    std::error_code failed;
    const std::filesystem::file_status status = std::filesystem::status(PathOf(lpFileName), failed);
    if (!std::filesystem::exists(status)) return INVALID_FILE_ATTRIBUTES;
    return std::filesystem::is_directory(status) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
}

DWORD GetTempPath(DWORD nBufferLength, LPTSTR lpBuffer) {
    std::error_code failed;
    std::wstring path = host::Widen(std::filesystem::temp_directory_path(failed).u8string());
    if (failed) return 0;
    if (path.empty() || (path.back() != L'/' && path.back() != L'\\')) path += L'/';
    if (path.size() >= nBufferLength) return static_cast<DWORD>(path.size() + 1);
    std::wmemcpy(lpBuffer, path.c_str(), path.size() + 1);
    return static_cast<DWORD>(path.size());
}

DWORD GetCurrentProcessId() { return host::ProcessNumber(); }

ULONGLONG GetTickCount64() {
    return static_cast<ULONGLONG>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                      std::chrono::steady_clock::now().time_since_epoch())
                                      .count());
}
