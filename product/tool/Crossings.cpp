#include "product/tool/Crossings.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include "plugin/engine/BoxIndex.h"

namespace product {
namespace {

// Pairs of boxes that are looked at, some seconds' worth. Lines whose boxes meet more often than
// that without crossing do not end up in many pieces.
constexpr double kMostPairs = 2e8;

struct Segment {
    AcGePoint3d from, to;

    bool operator<(const Segment& other) const {
        return std::tie(from.x, from.y, to.x, to.y) <
               std::tie(other.from.x, other.from.y, other.to.x, other.to.y);
    }
    bool operator==(const Segment& other) const { return !(*this < other || other < *this); }
    // Twice the signed area of the triangle with p.
    double Side(const AcGePoint3d& p) const {
        return (to.x - from.x) * (p.y - from.y) - (to.y - from.y) * (p.x - from.x);
    }
};

// Each place once: a line drawn many times has no crossings with itself, and comparing all pairs of
// its copies would take long.
std::vector<Segment> Lines(const AcArray<AcDbObjectId>& ids) {
    std::vector<Segment> segments;
    for (int i = 0; i < ids.length(); ++i) {
        const AcDbObjectPointer<AcDbLine> line(ids[i], AcDb::kForRead);
        if (line.openStatus() != Acad::eOk) continue;
        Segment segment{line->startPoint(), line->endPoint()};
        if (std::tie(segment.to.x, segment.to.y) < std::tie(segment.from.x, segment.from.y))
            std::swap(segment.from, segment.to);
        segments.push_back(segment);
    }
    std::sort(segments.begin(), segments.end());
    segments.erase(std::unique(segments.begin(), segments.end()), segments.end());
    return segments;
}

bool Cross(const Segment& a, const Segment& b) {
    return a.Side(b.from) * a.Side(b.to) < 0 && b.Side(a.from) * b.Side(a.to) < 0;
}

struct Enough {};

}  // namespace

double CountCrossings(const AcArray<AcDbObjectId>& ids, double limit) {
    const std::vector<Segment> segments = Lines(ids);
    std::vector<SFlatBox> boxes;
    for (const Segment& segment : segments) boxes.push_back(SFlatBox::Of(segment.from, segment.to));
    double crossings = 0, pairs = 0;
    try {
        CBoxIndex(boxes).ForEachPair(0.0, [&](int a, int b) {
            if (Cross(segments[static_cast<size_t>(a)], segments[static_cast<size_t>(b)]))
                ++crossings;
            if (++pairs >= kMostPairs || crossings >= limit) throw Enough();
        });
    } catch (const Enough&) {
        // What is counted so far is a least figure too.
    }
    return crossings;
}

}  // namespace product
