#include "host/mfc/window_driver.h"

namespace host {

int WindowDriver::ShowBox(const BoxRequest& request) {
    switch (request.type & MB_TYPEMASK) {
        case MB_ABORTRETRYIGNORE:
            return IDABORT;
        case MB_YESNO:
        case MB_YESNOCANCEL:
            return IDYES;
        case MB_RETRYCANCEL:
            return IDRETRY;
        default:
            return IDOK;
    }
}

bool WindowDriver::Capture(const std::wstring&, std::wstring& reason) {
    reason = L"there is no display to take a picture of";
    return false;
}

}  // namespace host
