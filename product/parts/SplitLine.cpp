#include "product/parts/SplitLine.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "product/base/Failure.h"
#include "product/base/Text.h"
#include "product/parts/CutRing.h"
#include "product/parts/Heights.h"

namespace product {
namespace {

using host::solid::Piece;
using host::solid::Profile;

constexpr double kLean = 1e-4;       // radians that a line may leave the perpendicular by
constexpr double kNearShare = 1e-3;  // of the diameter: what ends where it should within that much
constexpr size_t kMostTold = 6;      // places in a refusal

// What is drawn at one place, as heights over the axis.
struct Across {
    double at = 0;
    std::vector<std::pair<double, double>> spans;
    std::string name;
};

// Least and greatest of the contour's heights next to a place, and whether it has a corner there.
struct Contour {
    double least = 0, greatest = 0;
    bool isCorner = false;
};

// Heights of a piece just before and just behind a place, as far as it is there.
void AddHeights(const Piece& piece, double at, double step, Contour& contour, bool& isFirst) {
    for (const double x : {at - step, at + step}) {
        const std::optional<double> y = HeightAt(piece, x);
        if (!y) continue;
        contour.least = isFirst ? *y : std::min(contour.least, *y);
        contour.greatest = isFirst ? *y : std::max(contour.greatest, *y);
        isFirst = false;
    }
}

class Search {
public:
    Search(const Profile& profile, bool isTipHigh, bool isHalfDrawn)
        : m_profile(profile),
          m_reach(ReachOf(profile)),
          m_tolerance(kNearShare * Measure(profile).largestDiameter),
          m_isTipHigh(isTipHigh),
          m_isHalfDrawn(isHalfDrawn) {}

    SplitLine Find(const std::vector<DrawnLine>& lines) {
        std::vector<Across> found = Together(lines);
        std::vector<const Across*> plain, beyond, corners;
        for (const Across& across : found) {
            const Contour contour = ContourAt(across.at);
            const std::optional<bool> reaches = Covers(across, contour);
            if (!reaches) continue;
            (contour.isCorner ? corners : plain).push_back(&across);
            if (!contour.isCorner && *reaches) beyond.push_back(&across);
        }
        if (plain.size() > 1 && beyond.size() == 1) return Taken(*beyond.front());
        if (plain.size() == 1) return Taken(*plain.front());
        if (plain.empty() && corners.size() == 1) return Taken(*corners.front());
        if (plain.empty() && corners.empty())
            throw Failure(Fault::NoResult,
                          "no line is drawn across the whole section; say where the cutting part "
                          "ends with --split LENGTH");
        const bool areCorners = plain.empty();
        throw Failure(Fault::NoResult,
                      (areCorners ? "lines are drawn across the section at corners of the contour "
                                    "only, at "
                                  : "more than one line is drawn across the whole section, at ") +
                          Places(areCorners ? corners : plain) +
                          " from the tip; say which with --split LENGTH");
    }

private:
    SplitLine Taken(const Across& across) const { return {across.at, across.name}; }

    // Lines at right angles to the axis, those at one place together.
    std::vector<Across> Together(const std::vector<DrawnLine>& lines) const {
        std::vector<Across> across;
        const host::solid::Frame& frame = m_profile.frame;
        for (const DrawnLine& line : lines) {
            const auto in = [&](const plane::Point& p) {
                const AcGeVector3d v = AcGePoint3d(p.x, p.y, 0) - frame.origin;
                return plane::Point{v.dotProduct(frame.axis), v.dotProduct(frame.radial)};
            };
            const plane::Point a = in(line.from), b = in(line.to);
            const double at = 0.5 * (a.x + b.x), height = std::fabs(b.y - a.y);
            if (height <= 0 || std::fabs(b.x - a.x) > kLean * height) continue;
            if (at <= m_reach.low + m_tolerance || at >= m_reach.high - m_tolerance) continue;
            across.push_back({at, {{std::min(a.y, b.y), std::max(a.y, b.y)}}, line.name});
        }
        std::stable_sort(across.begin(), across.end(),
                         [](const Across& a, const Across& b) { return a.at < b.at; });
        std::vector<Across> together;
        for (Across& one : across) {
            if (!together.empty() && one.at - together.back().at < 0.01 * m_tolerance)
                together.back().spans.push_back(one.spans.front());
            else
                together.push_back(std::move(one));
        }
        for (Across& one : together) std::sort(one.spans.begin(), one.spans.end());
        return together;
    }

    Contour ContourAt(double at) const {
        Contour contour;
        bool isFirst = true;
        for (const Piece& piece : m_profile.chains.front().pieces) {
            AddHeights(piece, at, 0.1 * m_tolerance, contour, isFirst);
            for (const plane::Point& end : {piece.from, piece.to})
                if (std::fabs(end.x - at) < m_tolerance && end.y > 0) contour.isCorner = true;
        }
        return contour;
    }

    // Whether a line reaches beyond the contour on both sides; nothing when it does not reach it.
    std::optional<bool> Covers(const Across& across, const Contour& contour) const {
        for (size_t i = 0; i < across.spans.size();) {
            double low = across.spans[i].first, high = across.spans[i].second;
            for (++i; i < across.spans.size() && across.spans[i].first <= high + m_tolerance; ++i)
                high = std::max(high, across.spans[i].second);
            const bool above = high >= contour.least - m_tolerance;
            const bool below = low <= -contour.least + m_tolerance;
            // One half is drawn: from the axis to the contour.
            const bool isHalf = (above && low <= m_tolerance) || (below && high >= -m_tolerance);
            if ((above && below) || (m_isHalfDrawn && isHalf))
                return high > contour.greatest + m_tolerance &&
                       low < -contour.greatest - m_tolerance;
        }
        return std::nullopt;
    }

    std::string Places(const std::vector<const Across*>& lines) const {
        std::vector<double> lengths;
        for (const Across* line : lines)
            lengths.push_back(m_isTipHigh ? m_reach.high - line->at : line->at - m_reach.low);
        std::sort(lengths.begin(), lengths.end());
        std::string text;
        for (size_t i = 0; i < lengths.size() && i < kMostTold; ++i)
            text += (i > 0 ? ", " : "") + Figure(lengths[i]);
        return lengths.size() > kMostTold ? text + ", ..." : text;
    }

    const Profile& m_profile;
    const Reach m_reach;
    const double m_tolerance;
    const bool m_isTipHigh, m_isHalfDrawn;
};

}  // namespace

SplitLine FindSplitLine(const Profile& profile, const std::vector<DrawnLine>& lines, bool isTipHigh,
                        bool isHalfDrawn) {
    return Search(profile, isTipHigh, isHalfDrawn).Find(lines);
}

}  // namespace product
