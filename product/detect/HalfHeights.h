// How high the strokes of both halves reach, place by place along an axis.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "product/detect/Stroke.h"

namespace product::detect {

// Heights over a fixed number of equal stretches of the axis.
class HalfHeights {
public:
    // strokes  indices of the sheet's strokes that take part; the axis is level at r = offset
    HalfHeights(const Sheet& sheet, const std::vector<int>& strokes, double offset, double start,
                double end);

    // Share of the stretches with anything in them at which both halves reach the same height
    // within the tolerance. A step that falls into one stretch may show in its neighbour.
    double Agreement(double tolerance) const;
    // The greatest difference of two ways to reach a height, and where along the axis; a step that
    // falls into one stretch may show in a neighbour.
    struct Difference {
        double height = 0;
        double at = 0;
    };
    // Above the axis against below it, where something is drawn on both sides.
    Difference BetweenHalves() const;
    // How much of the length has something on one side only, and the middle of its longest stretch.
    // A single stretch is none: a step may fall into it.
    Difference WithoutOther() const;
    // The same with teeth smoothed away: the greatest and the least of both halves within a
    // fiftieth of the length.
    Difference BetweenHalvesOfTeeth() const;
    // Another contour's heights, above the axis and below it whichever is greater, against these.
    // Stretches in which nothing of these is drawn do not count.
    Difference To(const HalfHeights& other, bool above, bool below) const;

    // Share of the stretches between two places at which both halves reach the same height within
    // the tolerance, and at which the given side reaches at least a height; a neighbour's height
    // will do.
    double AgreementBetween(double from, double to, double tolerance) const;
    double ReachingBetween(double from, double to, bool above, double height) const;
    // The greater height of both sides there.
    double At(double place) const;
    // Whether the greater height of both sides is the same all along, within the tolerance.
    bool IsLevel(double tolerance) const;

    // Share of the stretches at which the outline is as high as at the same distance from the other
    // end, within the tolerance.
    double AgreementTurnedRound(double tolerance) const;
    // Where between two places something higher than a line at that height stands on it, the line
    // itself being the highest on both sides.
    std::optional<double> StandingBetween(double from, double to, double height,
                                          double tolerance) const;

    // Whether one side has next to nothing.
    bool IsOneSided() const;
    // Share of the stretches with anything in them.
    double Cover() const;

private:
    static constexpr int kCount = 256;
    std::vector<double> m_above, m_below;

    double m_start = 0, m_step = 0;

    int Cell(double place) const;
    void Add(Point a, Point b);
    bool IsWithoutOther(int i) const;
    // The heights above and below, made equal where only one side has any.
    std::pair<std::vector<double>, std::vector<double>> WhereBothAre() const;
    Difference Greatest(const std::vector<double>& a, const std::vector<double>& b) const;
};

}  // namespace product::detect
