#include "StdAfx.h"

#include "StrokeEnds.h"

#include <algorithm>
#include <cmath>

namespace outline {
namespace {

// Directions that differ by less are one.
constexpr double kSameDirection = 1e-3;  // radians

plane::Vector InwardOf(const plane::Curve& c, bool isStart) {
    return isStart ? c.StartDirection() : -c.EndDirection();
}

bool IsSameDirection(const plane::Vector& a, const plane::Vector& b) {
    return plane::Dot(a, b) > 0.0 && std::fabs(plane::Cross(a, b)) <= kSameDirection;
}

// Of the places that lie nearer than g, those that a line is drawn to: the nearest, and the
// outermost in each direction, since others lie between these.
void AddJoins(int end, const plane::Point& p, const std::vector<plane::Point>& places, double tiny,
              std::vector<Join>& joins) {
    const auto pick = [&](const auto& less) {
        return *std::min_element(places.begin(), places.end(), less);
    };
    const plane::Point picked[] = {
        pick([&](const plane::Point& a, const plane::Point& b) {
            return plane::Distance(a, p) < plane::Distance(b, p);
        }),
        pick([](const plane::Point& a, const plane::Point& b) { return a.x < b.x; }),
        pick([](const plane::Point& a, const plane::Point& b) { return a.x > b.x; }),
        pick([](const plane::Point& a, const plane::Point& b) { return a.y > b.y; })};
    for (int i = 0; i < 4; ++i) {
        bool isNew = plane::Distance(picked[i], p) > tiny;
        for (int k = 0; k < i; ++k) isNew = isNew && plane::Distance(picked[i], picked[k]) > tiny;
        if (isNew) joins.push_back({plane::MakeLine(p, picked[i]), end});
    }
}

// The shorter of both lies along the longer.
bool IsAlong(const plane::Curve& a, const plane::Curve& b, double g) {
    const bool isShorter = a.Length() <= b.Length();
    const plane::Curve &part = isShorter ? a : b, &whole = isShorter ? b : a;
    // The far end first: it tells most pairs apart.
    for (const double share : {1.0, 0.0, 0.5, 0.25, 0.75})
        if (plane::Distance(whole, plane::PointAt(part, share)) > g) return false;
    return true;
}

bool Leaves(const plane::Curve& c, const StrokeEnd& end, double g) {
    return (plane::Distance(c.from, end.at) <= g &&
            IsSameDirection(InwardOf(c, true), end.inward)) ||
           (plane::Distance(c.to, end.at) <= g && IsSameDirection(InwardOf(c, false), end.inward));
}

}  // namespace

bool IsTwin(const Contour& stroke, const Contour& own, const StrokeEnd& end, double g) {
    return Leaves(stroke.curve, end, g) && IsAlong(stroke.curve, own.curve, g);
}

StrokeEnds FindEnds(const std::vector<Contour>& strokes, const CurveTree& tree,
                    const Measures& measures) {
    StrokeEnds found;
    found.ends.resize(2 * strokes.size());
    std::vector<plane::Point> places;
    // In the order of the tree: neighbours ask for the same part of it one after the other.
    for (const int i : tree.Order()) {
        const plane::Curve& c = strokes[i].curve;
        for (const bool isStart : {true, false}) {
            StrokeEnd& end = found.ends[2 * i + (isStart ? 0 : 1)];
            end.at = isStart ? c.from : c.to;
            end.inward = InwardOf(c, isStart);
            end.stroke = i;
            end.isStart = isStart;
            end.isFree = end.at.y > measures.g;
            bool isMet = false;  // to the last digit: no line is needed
            places.clear();
            tree.Visit(end.at, measures.g, [&](int k) {
                if (k == i) return true;
                const plane::Curve& other = strokes[k].curve;
                const double distance = plane::Distance(other, end.at);
                if (distance > measures.g) return true;
                if (distance > measures.tiny) places.push_back(plane::NearestPoint(other, end.at));
                if (IsTwin(strokes[k], strokes[i], end, measures.g)) {
                    end.hasTwin = true;
                    return true;
                }
                end.isFree = false;
                isMet = distance <= measures.tiny;
                return !isMet;
            });
            if (!isMet && !places.empty())
                AddJoins(2 * i + (isStart ? 0 : 1), end.at, places, measures.tiny, found.joins);
        }
    }
    return found;
}

void LookAtEnds(std::vector<StrokeEnd>& ends, const ProfileIndex& profile,
                const Measures& measures) {
    const double step = 2 * measures.tiny;
    for (StrokeEnd& end : ends) {
        const double r = end.at.y, s = end.at.x;
        if (r <= measures.g) continue;
        end.isSeen = profile.HighestIn(s - 2 * measures.g, s + 2 * measures.g) <= r + measures.g;
        if (!end.isSeen) continue;
        end.falls[0] = profile.HeightBeside(s - step, -1) < r - measures.g;
        end.falls[1] = profile.HeightBeside(s + step, 1) < r - measures.g;
    }
}

WayBack FindWayBack(const std::vector<Contour>& strokes, const CurveTree& tree,
                    const StrokeEnd& end, double g, double reach) {
    const plane::Curve& c = strokes[end.stroke].curve;
    plane::Curve path = end.isStart ? c : c.Reversed();
    const double length = path.Length();
    WayBack back;
    // Somewhat farther, so that what touches right there is not missed.
    const double limit = reach + 2 * g;
    if (length > limit) path = plane::PartOf(path, path.from, plane::PointAt(path, limit / length));
    const auto contact = tree.FirstAlong(path, g, [&](int k) {
        return k == end.stroke || (end.hasTwin && IsTwin(strokes[k], strokes[end.stroke], end, g));
    });
    back.length = contact ? contact->length : length;
    back.at = contact ? contact->at : (end.isStart ? c.to : c.from);
    back.isWhole = !contact && length <= limit;
    back.isFarther = back.length > reach;
    return back;
}

}  // namespace outline
