#include "product/detect/Symmetry.h"

#include <algorithm>
#include <cmath>

namespace product::detect {
namespace {

constexpr size_t kMostPartners = 16;
constexpr size_t kMostLooks = 400;  // at strokes that begin at one place along the line

// What a mirror image in a level line keeps of a stroke, and what it turns round.
struct Shape {
    double left, right;  // range along the line
    double height;       // of its box
    double radius;       // 0 of a line
    double lean;         // right end above left end; an arc: its middle above its chord
    double middle;       // of its box, across the line
    int stroke;
};

struct Vote {
    double offset, weight;
    int a, b;
};

Shape ShapeOf(const Stroke& stroke, int index) {
    const Box box = BoxOf(stroke);
    Shape shape{box.low.x,
                box.high.x,
                box.Height(),
                stroke.isArc ? stroke.radius : 0,
                0,
                (box.low.y + box.high.y) / 2,
                index};
    const Point a = stroke.From(), b = stroke.To();
    shape.lean = b.x >= a.x ? b.y - a.y : a.y - b.y;
    if (stroke.isArc) {
        const Point middle = stroke.points[stroke.points.size() / 2];
        shape.lean = middle.y - (a.y + b.y) / 2;
    }
    return shape;
}

bool IsMirrored(const Shape& a, const Shape& b, double tolerance) {
    return std::abs(a.left - b.left) <= tolerance && std::abs(a.right - b.right) <= tolerance &&
           std::abs(a.height - b.height) <= tolerance &&
           std::abs(a.radius - b.radius) <= tolerance + 1e-6 * a.radius &&
           std::abs(a.lean + b.lean) <= 2 * tolerance;
}

std::vector<Vote> VotesOf(const Sheet& sheet, const std::vector<char>& use, double tolerance) {
    std::vector<Shape> shapes;
    for (size_t i = 0; i < sheet.strokes.size(); ++i)
        if (use[i]) shapes.push_back(ShapeOf(sheet.strokes[i], static_cast<int>(i)));
    std::sort(shapes.begin(), shapes.end(), [](const Shape& a, const Shape& b) {
        return a.left < b.left || (a.left == b.left && a.middle < b.middle);
    });
    std::vector<Vote> votes;
    for (size_t i = 0; i < shapes.size(); ++i) {
        const Shape& a = shapes[i];
        const double length = sheet.strokes[a.stroke].Length();
        // Level lines are on every line's own middle; upright ones and rounds say where it is.
        if (a.height > 10 * tolerance && IsMirrored(a, a, tolerance))
            votes.push_back({a.middle, length, a.stroke, a.stroke});
        std::vector<std::pair<double, size_t>> partners;
        const size_t last = std::min(shapes.size(), i + kMostLooks);
        for (size_t k = i + 1; k < last && shapes[k].left <= a.left + tolerance; ++k)
            if (IsMirrored(a, shapes[k], tolerance))
                partners.push_back({std::abs(shapes[k].middle - a.middle), k});
        if (partners.size() > kMostPartners) {
            std::nth_element(partners.begin(), partners.begin() + kMostPartners, partners.end());
            partners.resize(kMostPartners);
        }
        for (const auto& [apart, k] : partners)
            if (apart > tolerance)
                votes.push_back(
                    {(a.middle + shapes[k].middle) / 2, 2 * length, a.stroke, shapes[k].stroke});
    }
    std::sort(votes.begin(), votes.end(), [](const Vote& a, const Vote& b) {
        return a.offset < b.offset || (a.offset == b.offset && a.a < b.a);
    });
    return votes;
}

}  // namespace

std::vector<MirrorLine> FindMirrorLines(const Sheet& sheet, const std::vector<char>& use,
                                        double tolerance, size_t most) {
    const std::vector<Vote> votes = VotesOf(sheet, use, tolerance);
    std::vector<MirrorLine> lines;
    for (size_t i = 0; i < votes.size();) {
        size_t end = i;
        double sum = 0, weight = 0;
        MirrorLine line;
        while (end < votes.size() && votes[end].offset <= votes[i].offset + 2 * tolerance) {
            const Vote& vote = votes[end++];
            sum += vote.weight * vote.offset;
            weight += vote.weight;
            line.strokes.push_back(vote.a);
            line.strokes.push_back(vote.b);
        }
        i = end;
        line.offset = sum / weight;
        std::sort(line.strokes.begin(), line.strokes.end());
        line.strokes.erase(std::unique(line.strokes.begin(), line.strokes.end()),
                           line.strokes.end());
        for (const int stroke : line.strokes) line.weight += sheet.strokes[stroke].Length();
        lines.push_back(std::move(line));
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const MirrorLine& a, const MirrorLine& b) { return a.weight > b.weight; });
    if (lines.size() > most) lines.resize(most);
    return lines;
}

}  // namespace product::detect
