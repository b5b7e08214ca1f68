#include "host/ed/point_text.h"

#include <charconv>
#include <cmath>

#include "host/base/angles.h"
#include "host/base/plain_number.h"

namespace host {
namespace {

// Quarter turns give exact zeros.
AcGeVector3d Direction(double degrees) {
    const double quarters = degrees / 90.0;
    if (quarters == std::floor(quarters)) {
        static const AcGeVector3d kQuarters[] = {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
        const double turn = std::fmod(quarters, 4.0);
        return kQuarters[static_cast<int>(turn < 0.0 ? turn + 4.0 : turn)];
    }
    return AcGeVector3d(std::cos(degrees * kDegree), std::sin(degrees * kDegree), 0.0);
}

}  // namespace

bool ParsePoint(const std::wstring& text, const AcGePoint3d& reference, AcGePoint3d& point) {
    const wchar_t* at = text.c_str();
    const wchar_t* const end = at + text.size();
    const bool isRelative = *at == L'@';
    if (isRelative) ++at;
    double values[3] = {0.0, 0.0, 0.0};
    if (!ReadNumber(at, values[0])) return false;
    AcGeVector3d step;
    if (*at == L'<') {
        if (!ReadNumber(++at, values[1])) return false;
        step = Direction(values[1]) * values[0];
    } else {
        int count = 1;
        while (count < 3 && *at == L',')
            if (!ReadNumber(++at, values[count++])) return false;
        if (count == 1) return false;
        step.set(values[0], values[1], values[2]);
    }
    if (at != end) return false;
    point = isRelative ? reference + step : AcGePoint3d() + step;
    return true;
}

std::wstring NumberText(double value) {
    char text[400];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6);
    std::wstring out(text, end.ptr);
    if (out.find(L'.') == std::wstring::npos) return out;
    out.erase(out.find_last_not_of(L'0') + 1);
    if (out.back() == L'.') out.pop_back();
    return out == L"-0" ? L"0" : out;
}

std::wstring PointText(const AcGePoint3d& point) {
    return NumberText(point.x) + L"," + NumberText(point.y);
}

}  // namespace host
