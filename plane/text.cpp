#include "plane/text.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace plane {
namespace {

std::string Number(double value, int digits) {
    if (value == 0.0) return "0";  // not "-0"
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
    return std::string(buffer, end.ptr);
}

[[noreturn]] void Refuse(std::string_view word) {
    throw std::invalid_argument("\"" + std::string(word) +
                                "\" is no corner; write x,y or x,y(bulge)");
}

// Takes a number from the front of a text.
double TakeNumber(std::string_view& rest, std::string_view word) {
    double value = 0.0;
    const auto end = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (end.ec != std::errc()) Refuse(word);
    rest.remove_prefix(static_cast<std::size_t>(end.ptr - rest.data()));
    return value;
}

void TakeSign(std::string_view& rest, char sign, std::string_view word) {
    if (rest.empty() || rest.front() != sign) Refuse(word);
    rest.remove_prefix(1);
}

Corner CornerOf(std::string_view word) {
    std::string_view rest = word;
    Corner corner;
    corner.point.x = TakeNumber(rest, word);
    TakeSign(rest, ',', word);
    corner.point.y = TakeNumber(rest, word);
    if (rest.empty()) return corner;
    TakeSign(rest, '(', word);
    corner.bulge = TakeNumber(rest, word);
    TakeSign(rest, ')', word);
    if (!rest.empty()) Refuse(word);
    return corner;
}

std::string ShowCorner(const Point& p, double bulge, int digits) {
    return Show(p, digits) + (bulge == 0.0 ? "" : "(" + Number(bulge, digits) + ")");
}

}  // namespace

std::string Show(const Point& p, int digits) {
    return Number(p.x, digits) + "," + Number(p.y, digits);
}

std::string Show(const std::vector<Corner>& corners, int digits) {
    std::string text;
    for (const Corner& corner : corners)
        text += (text.empty() ? "" : " ") + ShowCorner(corner.point, corner.bulge, digits);
    return text;
}

std::string Show(const std::vector<Curve>& curves, int digits) {
    std::string text;
    for (std::size_t i = 0; i < curves.size(); ++i) {
        const Curve& curve = curves[i];
        if (!text.empty()) text += " ";
        text += ShowCorner(curve.from, curve.bulge, digits);
        if (i + 1 < curves.size() && curves[i + 1].from == curve.to) continue;
        text += " " + Show(curve.to, digits);
        if (i + 1 < curves.size()) text += " |";
    }
    return text;
}

std::vector<Corner> ParseCorners(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    std::vector<Corner> corners;
    while (true) {
        const std::size_t begin = text.find_first_not_of(kBlanks);
        if (begin == std::string_view::npos) return corners;
        text.remove_prefix(begin);
        const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
        corners.push_back(CornerOf(word));
        text.remove_prefix(word.size());
    }
}

std::vector<Curve> ParseCurves(std::string_view text) {
    std::vector<Curve> curves;
    while (true) {
        const std::size_t bar = text.find('|');
        for (const Curve& curve : CurvesOf(ParseCorners(text.substr(0, bar)), false))
            curves.push_back(curve);
        if (bar == std::string_view::npos) return curves;
        text.remove_prefix(bar + 1);
    }
}

}  // namespace plane
