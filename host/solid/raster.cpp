#include "host/solid/raster.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace host::solid {

namespace {

double Side(const ScreenPoint& a, const ScreenPoint& b, double x, double y) {
    return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

// The pixels whose middles lie from low on and before high, cut to the canvas.
struct Span {
    int first, last;
    Span(double low, double high, int size)
        : first(Ceiling((std::clamp)(low - 0.5, 0.0, size + 1.0))),
          last((std::min)(size, Ceiling((std::clamp)(high - 0.5, 0.0, size + 1.0))) - 1) {}

private:
    // Of what is not negative; a call of the library's own would cost more than all the rest.
    static int Ceiling(double value) {
        const int whole = static_cast<int>(value);
        return whole + (whole < value ? 1 : 0);
    }
};

// What is linear over a triangle: the weights of its corners, or anything blended by them.
struct Blend {
    double at = 0.0, dx = 0.0, dy = 0.0;  // at the canvas' corner, a pixel to the right, one down

    Blend operator*(double factor) const { return {at * factor, dx * factor, dy * factor}; }
    Blend operator+(const Blend& other) const {
        return {at + other.at, dx + other.dx, dy + other.dy};
    }
    float From(double x, double y) const { return static_cast<float>(at + dx * x + dy * y); }
    float Step() const { return static_cast<float>(dx); }
};

struct Blends {
    Blend weight[3];

    Blends(const ScreenPoint (&p)[3], double area) {
        for (std::size_t i = 0; i < 3; ++i) {
            const ScreenPoint &a = p[(i + 1) % 3], &b = p[(i + 2) % 3];
            weight[i] = {Side(a, b, 0.0, 0.0) / area, -(b.y - a.y) / area, (b.x - a.x) / area};
        }
    }
    Blend Of(double p, double q, double r) const {
        return weight[0] * p + weight[1] * q + weight[2] * r;
    }
};

// Along a row each corner's weight is linear in x; in between all three are positive.
class Rim {
public:
    Rim(const Blend& weight)
        : m_weight(weight), m_at(-weight.at / weight.dx), m_dy(-weight.dy / weight.dx) {}

    void Narrow(double y, double& left, double& right) const {
        if (m_weight.dx > 0.0) left = (std::max)(left, m_at + m_dy * y);
        if (m_weight.dx < 0.0) right = (std::min)(right, m_at + m_dy * y);
        if (m_weight.dx == 0.0 && m_weight.at + m_weight.dy * y < 0.0) right = -1.0;
    }

private:
    Blend m_weight;
    double m_at, m_dy;  // of the x where the weight is none
};

}  // namespace

Canvas::Canvas(int width, int height)
    : width_(width),
      height_(height),
      depth_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
             std::numeric_limits<float>::infinity()),
      nearer_(static_cast<std::size_t>(width)) {
    for (std::vector<float>& plane : rgb_) plane.assign(depth_.size(), 1.0f);
}

void Canvas::Set(int x, int y, const Colour& colour) {
    const std::size_t at = IndexOf(x, y);
    rgb_[0][at] = static_cast<float>(colour.r);
    rgb_[1][at] = static_cast<float>(colour.g);
    rgb_[2][at] = static_cast<float>(colour.b);
}

bool Canvas::MarkNearer(float depth, float step, int count, std::size_t from) {
    float* const depths = &depth_[from];
    bool isAny = false;
    for (int i = 0; i < count; ++i) {
        const float here = depth + step * static_cast<float>(i);
        const bool isNearer = here < depths[i];
        nearer_[static_cast<std::size_t>(i)] = isNearer ? 1 : 0;
        depths[i] = isNearer ? here : depths[i];
        isAny |= isNearer;
    }
    return isAny;
}

void Canvas::FillMarked(float value, float step, int count, float* out) const {
    for (int i = 0; i < count; ++i) {
        const float here = value + step * static_cast<float>(i);
        out[i] = nearer_[static_cast<std::size_t>(i)] != 0 ? here : out[i];
    }
}

void Canvas::FillTriangle(const ScreenPoint (&p)[3], const Colour (&c)[3]) {
    const double area = Side(p[0], p[1], p[2].x, p[2].y);
    if (area == 0.0) return;
    const auto [top, bottom] = std::minmax({p[0].y, p[1].y, p[2].y});
    const Span rows(top, bottom, height_);
    const Blends blends(p, area);
    const Blend depth = blends.Of(p[0].depth, p[1].depth, p[2].depth);
    const Blend colour[3] = {blends.Of(c[0].r, c[1].r, c[2].r), blends.Of(c[0].g, c[1].g, c[2].g),
                             blends.Of(c[0].b, c[1].b, c[2].b)};
    const Rim rims[3] = {blends.weight[0], blends.weight[1], blends.weight[2]};
    for (int row = rows.first; row <= rows.last; ++row) {
        const double y = row + 0.5;
        double left = -1.0, right = width_ + 1.0;
        for (const Rim& rim : rims) rim.Narrow(y, left, right);
        const Span columns(left, right, width_);
        const int count = columns.last - columns.first + 1;
        if (count <= 0) continue;
        const std::size_t from = IndexOf(columns.first, row);
        const double x = columns.first + 0.5;
        if (!MarkNearer(depth.From(x, y), depth.Step(), count, from)) continue;
        for (std::size_t channel = 0; channel < 3; ++channel)
            FillMarked(colour[channel].From(x, y), colour[channel].Step(), count,
                       &rgb_[channel][from]);
    }
}

void Canvas::DrawLine(const ScreenPoint& a, const ScreenPoint& b, double width,
                      const Colour& colour, double bias) {
    const double dx = b.x - a.x, dy = b.y - a.y, length2 = dx * dx + dy * dy, half = 0.5 * width;
    const auto [left, right] = std::minmax(a.x, b.x);
    const auto [top, bottom] = std::minmax(a.y, b.y);
    const Span rows(top - half, bottom + half, height_), columns(left - half, right + half, width_);
    // Only at the very edge do the squares not say what the distance itself says.
    constexpr double kDoubt = 1e-12;
    const double surely = half * half * (1.0 - kDoubt), never = half * half * (1.0 + kDoubt);
    for (int y = rows.first; y <= rows.last; ++y)
        for (int x = columns.first; x <= columns.last; ++x) {
            const double qx = x + 0.5 - a.x, qy = y + 0.5 - a.y;
            const double t =
                length2 > 0.0 ? (std::clamp)((qx * dx + qy * dy) / length2, 0.0, 1.0) : 0.0;
            const double ex = qx - t * dx, ey = qy - t * dy, distance2 = ex * ex + ey * ey;
            if (distance2 > never || (distance2 > surely && std::hypot(ex, ey) > half)) continue;
            const double depth = a.depth + t * (b.depth - a.depth) - bias;
            if (depth <= static_cast<double>(depth_[IndexOf(x, y)])) Set(x, y, colour);
        }
}

void Canvas::FillPolygon(const std::vector<ScreenPoint>& polygon, const Colour& colour) {
    std::vector<double> crossings;
    for (int y = 0; y < height_; ++y) {
        const double row = y + 0.5;
        crossings.clear();
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const ScreenPoint &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
            if ((a.y <= row) != (b.y <= row))
                crossings.push_back(a.x + (b.x - a.x) * (row - a.y) / (b.y - a.y));
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const Span columns(crossings[i], crossings[i + 1], width_);
            for (int x = columns.first; x <= columns.last; ++x) Set(x, y, colour);
        }
    }
}

void Canvas::Put(const Canvas& other, int left, int top) {
    const int first = (std::max)(0, -left), last = (std::min)(other.width_, width_ - left);
    if (first >= last) return;
    for (int y = (std::max)(0, -top); y < other.height_ && y + top < height_; ++y)
        for (int channel = 0; channel < 3; ++channel)
            std::copy_n(&other.rgb_[channel][other.IndexOf(first, y)], last - first,
                        &rgb_[channel][IndexOf(first + left, y + top)]);
}

Image Canvas::Halved() const {
    Image image;
    image.width = width_ / 2;
    image.height = height_ / 2;
    image.pixels.resize(static_cast<std::size_t>(3 * image.width) *
                        static_cast<std::size_t>(image.height));
    unsigned char* out = image.pixels.data();
    for (int y = 0; y < image.height; ++y)
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const float* const upper = &rgb_[channel][IndexOf(0, 2 * y)];
            const float* const lower = upper + width_;
            unsigned char* const row = out + 3 * y * static_cast<std::ptrdiff_t>(image.width);
            for (int x = 0; x < image.width; ++x) {
                const float sum = upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1];
                // Rounded to the nearest.
                row[3 * static_cast<std::size_t>(x) + channel] = static_cast<unsigned char>(
                    (std::clamp)(sum * (255.0f / 4.0f), 0.0f, 255.0f) + 0.5f);
            }
        }
    return image;
}

}  // namespace host::solid
