#include "acestext.h"

namespace {

#define HOST_ERROR_STATUS_TEXT(name) _T(#name),
const ACHAR* const kTexts[] = {HOST_ERROR_STATUS_LIST(HOST_ERROR_STATUS_TEXT)};

}  // namespace

const ACHAR* acadErrorStatusText(Acad::ErrorStatus es) {
    const auto i = static_cast<std::size_t>(es);
    return i < sizeof(kTexts) / sizeof(kTexts[0]) ? kTexts[i] : _T("eUnknownStatus");
}
