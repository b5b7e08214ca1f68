#include <cmath>

#include "dbcolor.h"

namespace {

// The index palette: 1..9 and 250..255 by table, 10..249 as 24 hues of 5 values in two saturations.
struct Rgb {
    int red, green, blue;
};

constexpr Rgb kFirstColors[10] = {{0, 0, 0},       {255, 0, 0},    {255, 255, 0}, {0, 255, 0},
                                  {0, 255, 255},   {0, 0, 255},    {255, 0, 255}, {255, 255, 255},
                                  {128, 128, 128}, {192, 192, 192}};
constexpr int kGreys[6] = {51, 80, 105, 130, 190, 255};
constexpr double kValues[5] = {1.0, 0.65, 0.5, 0.3, 0.15};

// A hue in sixths of the circle as red, green, blue in 0..1.
double HueChannel(double hue, double offset) {
    const double at = std::fmod(hue + offset, 6.0);
    const double ramp = at < 3.0 ? at : 6.0 - at;  // 0 at the channel's own hue, 3 opposite
    return ramp <= 1.0 ? 1.0 : ramp >= 2.0 ? 0.0 : 2.0 - ramp;
}

Rgb ColorOfIndex(int index) {
    if (index < 10) return kFirstColors[index];
    if (index >= 250) return {kGreys[index - 250], kGreys[index - 250], kGreys[index - 250]};
    const int spoke = index / 10 - 1;  // quarters of a sixth of the circle
    const double hue = spoke / 4.0;
    const double value = kValues[index % 10 / 2] * 255.0;
    const double floor = index % 2 == 0 ? 0.0 : 0.5;  // odd indices are half saturated
    const auto channel = [&](double offset) {
        return static_cast<int>(value * (floor + (1.0 - floor) * HueChannel(hue, offset)));
    };
    return {channel(0.0), channel(4.0), channel(2.0)};
}

int NearestIndex(const AcCmEntityColor& color) {
    int best = 7;
    int bestDistance = 1 << 30;
    for (int index = 1; index < 256; ++index) {
        const Rgb rgb = ColorOfIndex(index);
        const int dr = rgb.red - color.red(), dg = rgb.green - color.green(),
                  db = rgb.blue - color.blue();
        const int distance = dr * dr + dg * dg + db * db;
        if (distance >= bestDistance) continue;
        best = index;
        bestDistance = distance;
    }
    return best;
}

}  // namespace

Adesk::UInt16 AcCmEntityColor::colorIndex() const {
    switch (colorMethod()) {
        case kByLayer:
            return kACIbyLayer;
        case kByBlock:
            return kACIbyBlock;
        case kByACI:
            return static_cast<Adesk::UInt16>(m_value & 0xFF);
        case kByColor:
            return static_cast<Adesk::UInt16>(NearestIndex(*this));
        default:
            return kACInone;
    }
}

Acad::ErrorStatus AcCmEntityColor::setColorIndex(Adesk::UInt16 index) {
    if (index > kACInone) return Acad::eInvalidInput;
    const ColorMethod method = index == kACIbyBlock   ? kByBlock
                               : index == kACIbyLayer ? kByLayer
                               : index == kACInone    ? kNone
                                                      : kByACI;
    m_value = Adesk::UInt32(method) << 24 | (method == kByACI ? index : 0u);
    return Acad::eOk;
}

Acad::ErrorStatus AcCmEntityColor::setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
    *this = AcCmEntityColor(red, green, blue);
    return Acad::eOk;
}
