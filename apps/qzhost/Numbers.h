// Numbers and points as the desktop writes them.
#pragma once

#include <charconv>
#include <string>

#include "gepnt3d.h"

namespace app {

// At most six decimals, without zeros at the end.
inline std::wstring NumberText(double value) {
    char text[400];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6);
    std::wstring out(text, end.ptr);
    out.erase(out.find_last_not_of(L'0') + 1);
    if (!out.empty() && out.back() == L'.') out.pop_back();
    return out == L"-0" ? L"0" : out;
}

inline std::wstring PointText(const AcGePoint3d& point) {
    return NumberText(point.x) + L"," + NumberText(point.y);
}

}  // namespace app
