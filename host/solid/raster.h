// Drawing into an image with depth: what the pictures of solids need.
#pragma once

#include <cstddef>
#include <vector>

#include "host/solid/png.h"

namespace host::solid {

struct Colour {
    double r = 0.0, g = 0.0, b = 0.0;  // 0..1
};

// x right, y down in pixels; depth grows away from the viewer.
struct ScreenPoint {
    double x = 0.0, y = 0.0, depth = 0.0;
};

class Canvas {
public:
    // White.
    Canvas(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }

    // A triangle whose corner colours blend; hidden where something nearer was drawn.
    // cost   linear in the pixels of its rows.
    void FillTriangle(const ScreenPoint (&p)[3], const Colour (&c)[3]);

    // A line of a width in pixels; hidden where something nearer than bias stands before it.
    void DrawLine(const ScreenPoint& a, const ScreenPoint& b, double width, const Colour& colour,
                  double bias);

    // The inside of a closed polygon (even-odd).
    void FillPolygon(const std::vector<ScreenPoint>& polygon, const Colour& colour);

    // Puts another canvas at a place of this one, depth left out.
    void Put(const Canvas& other, int left, int top);

    // Averages squares of two by two pixels into one.
    Image Halved() const;

private:
    void Set(int x, int y, const Colour& colour);
    // Of a row's pixels from one on: marks those before which nothing nearer stands, and takes
    // their depth over; false when there is none.
    bool MarkNearer(float depth, float step, int count, std::size_t from);
    // Fills those that are marked by a value that grows by a step a pixel.
    void FillMarked(float value, float step, int count, float* out) const;
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_, height_;
    std::vector<float> depth_;
    std::vector<float> rgb_[3];  // red, green, blue: each a plane, so that rows are filled at once
    std::vector<unsigned char> nearer_;  // of the row being filled
};

}  // namespace host::solid
