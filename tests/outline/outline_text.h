// Contours and outlines as text.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plane/text.h"
#include "plugin/outline/OutlineLaw.h"

namespace test {

// The curves of the text's chains, numbered in order.
inline std::vector<outline::Contour> ParseContour(const std::string& text) {
    std::vector<outline::Contour> contour;
    for (const plane::Curve& c : plane::ParseCurves(text))
        contour.push_back({c, static_cast<int>(contour.size()), false});
    return contour;
}

inline std::string Show(const outline::Envelope& envelope) {
    return plane::Show(envelope.edges, 9);
}

}  // namespace test
