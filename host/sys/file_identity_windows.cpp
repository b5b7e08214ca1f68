// The same by the kernel of Windows.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <cwctype>
#include <string>

#include "host/base/format.h"
#include "host/sys/file_identity.h"

namespace host {

FileIdentity IdentityOf(const std::string& path) {
    const std::wstring wide = Widen(path);
    FileIdentity identity;
    const HANDLE file =
        ::CreateFileW(wide.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        BY_HANDLE_FILE_INFORMATION info{};
        if (::GetFileInformationByHandle(file, &info)) {
            identity.kind = FileIdentity::kFile;
            identity.device = info.dwVolumeSerialNumber;
            identity.inode = (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow;
        }
        ::CloseHandle(file);
        return identity;
    }
    // The system makes one spelling of what is not there, but for the case of letters.
    wchar_t full[32768];
    const DWORD length = ::GetFullPathNameW(wide.c_str(), 32768, full, nullptr);
    std::wstring name(full, length < 32768 ? length : 0);
    for (wchar_t& c : name) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    identity.kind = FileIdentity::kMissing;
    identity.name = Narrow(name);
    return identity;
}

}  // namespace host
