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

// The pixels from low to high whose middles lie in between, cut to the canvas.
struct Span {
    int first, last;
    Span(double low, double high, int size)
        : first((std::max)(0, static_cast<int>(std::ceil((std::max)(low, -1.0) - 0.5)))),
          last((std::min)(size - 1,
                          static_cast<int>(std::floor((std::min)(high, size + 1.0) - 0.5)))) {}
};

}  // namespace

Canvas::Canvas(int width, int height)
    : width_(width),
      height_(height),
      depth_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
             std::numeric_limits<float>::infinity()),
      rgb_(3 * depth_.size(), 1.0f) {}

void Canvas::Set(int x, int y, const Colour& colour) {
    float* const pixel = &rgb_[3 * IndexOf(x, y)];
    pixel[0] = static_cast<float>(colour.r);
    pixel[1] = static_cast<float>(colour.g);
    pixel[2] = static_cast<float>(colour.b);
}

void Canvas::FillTriangle(const ScreenPoint (&p)[3], const Colour (&c)[3]) {
    const double area = Side(p[0], p[1], p[2].x, p[2].y);
    if (area == 0.0) return;
    const auto [top, bottom] = std::minmax({p[0].y, p[1].y, p[2].y});
    const Span rows(top, bottom, height_);
    for (int y = rows.first; y <= rows.last; ++y) {
        // Along a row each corner's weight is linear in x; all three are positive in between.
        double weight[3], slope[3], left = -1.0, right = width_ + 1.0;
        for (std::size_t i = 0; i < 3; ++i) {
            const ScreenPoint &a = p[(i + 1) % 3], &b = p[(i + 2) % 3];
            weight[i] = Side(a, b, 0.0, y + 0.5) / area;
            slope[i] = -(b.y - a.y) / area;
            if (slope[i] > 0.0) left = (std::max)(left, -weight[i] / slope[i]);
            if (slope[i] < 0.0) right = (std::min)(right, -weight[i] / slope[i]);
            if (slope[i] == 0.0 && weight[i] < 0.0) right = -1.0;
        }
        const Span columns(left, right, width_);
        float* const depths = &depth_[IndexOf(0, y)];
        float* const pixels = &rgb_[3 * IndexOf(0, y)];
        for (int x = columns.first; x <= columns.last; ++x) {
            const double u = weight[0] + slope[0] * (x + 0.5);
            const double v = weight[1] + slope[1] * (x + 0.5), w = 1.0 - u - v;
            const float depth =
                static_cast<float>(u * p[0].depth + v * p[1].depth + w * p[2].depth);
            if (depth >= depths[x]) continue;
            depths[x] = depth;
            float* const pixel = pixels + 3 * static_cast<std::ptrdiff_t>(x);
            pixel[0] = static_cast<float>(u * c[0].r + v * c[1].r + w * c[2].r);
            pixel[1] = static_cast<float>(u * c[0].g + v * c[1].g + w * c[2].g);
            pixel[2] = static_cast<float>(u * c[0].b + v * c[1].b + w * c[2].b);
        }
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
    for (int y = (std::max)(0, -top); y < other.height_ && y + top < height_; ++y)
        for (int x = (std::max)(0, -left); x < other.width_ && x + left < width_; ++x) {
            const float* const pixel = &other.rgb_[3 * (static_cast<std::size_t>(y) *
                                                            static_cast<std::size_t>(other.width_) +
                                                        static_cast<std::size_t>(x))];
            Set(x + left, y + top, {pixel[0], pixel[1], pixel[2]});
        }
}

Image Canvas::Reduced(int factor) const {
    Image image;
    image.width = width_ / factor;
    image.height = height_ / factor;
    image.pixels.resize(static_cast<std::size_t>(3 * image.width) *
                        static_cast<std::size_t>(image.height));
    unsigned char* out = image.pixels.data();
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            float sum[3] = {};
            for (int j = 0; j < factor; ++j) {
                const float* from = &rgb_[3 * IndexOf(x * factor, y * factor + j)];
                for (int i = 0; i < factor; ++i, from += 3)
                    for (int channel = 0; channel < 3; ++channel) sum[channel] += from[channel];
            }
            for (const float channel : sum) {
                const float mean = channel / static_cast<float>(factor * factor);
                // As double the half added is exact, so that this rounds to the nearest.
                *out++ = static_cast<unsigned char>(
                    static_cast<double>((std::clamp)(mean, 0.0f, 1.0f) * 255.0f) + 0.5);
            }
        }
    return image;
}

}  // namespace host::solid
