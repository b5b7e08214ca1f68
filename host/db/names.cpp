#include "host/db/names.h"

#include <cwchar>

#include "host/base/letter_case.h"

namespace {

constexpr size_t kMaxNameLength = 255;

}  // namespace

namespace host {

std::wstring FoldName(const ACHAR* name) {
    std::wstring folded(name);
    for (wchar_t& ch : folded) ch = LowerCase(ch);
    return folded;
}

bool SameName(const ACHAR* a, const ACHAR* b) {
    for (; *a != 0 && LowerCase(*a) == LowerCase(*b); ++a, ++b) {
    }
    return LowerCase(*a) == LowerCase(*b);
}

bool IsValidName(const ACHAR* name, bool allowAsterisk, bool allowVerticalBar) {
    if (name == nullptr || *name == 0 || std::wcslen(name) > kMaxNameLength) return false;
    if (allowAsterisk && *name == L'*') ++name;
    for (; *name != 0; ++name) {
        if (*name < 32) return false;
        if (*name == L'|' && allowVerticalBar) continue;
        if (std::wcschr(L"<>/\\\":;?*|,=`", *name) != nullptr) return false;
    }
    return true;
}

}  // namespace host
