#include "host/solid/profile.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>

#include "host/base/angles.h"
#include "host/solid/join.h"
#include "host/solid/outline.h"
#include "host/solid/tolerance.h"
#include "plane/meeting.h"

namespace host::solid {

namespace {

using Fault = Refusal::Fault;

struct FaultText {
    Fault fault;
    Acad::ErrorStatus status;
    const char* text;
    bool hasPlace;
};
const FaultText kFaults[] = {
    {Fault::kNone, Acad::eOk, "the profile can be revolved", false},
    {Fault::kNotFinite, Acad::eInvalidInput, "the profile has a corner that is no finite number",
     false},
    {Fault::kTooFar, Acad::eOutOfRange, "the profile reaches farther than the modeller resolves",
     true},
    {Fault::kOpen, Acad::eInvalidInput, "the profile is open: its end does not meet its start",
     true},
    {Fault::kNotPlanar, Acad::eNotPlanarEntity, "the profile does not lie in one plane", false},
    {Fault::kAxisDirection, Acad::eInvalidAxis, "the axis has no direction", false},
    {Fault::kAxisOffPlane, Acad::eInvalidAxis, "the axis does not lie in the profile's plane",
     true},
    {Fault::kCrossesItself, Acad::eSelfIntersecting, "the profile crosses or touches itself", true},
    {Fault::kCrossesAxis, Acad::eGeneralModelingFailure, "the profile crosses the axis", true},
    {Fault::kTouchesAxis, Acad::eGeneralModelingFailure,
     "the profile touches the axis in a single point, where the solid would have no thickness",
     true},
    {Fault::kNoArea, Acad::eDegenerateGeometry, "the profile encloses no area", false},
    {Fault::kWrongKind, Acad::eWrongObjectType,
     "the entity is no closed curve that can be revolved", false}};

const FaultText& TextOf(Fault fault) {
    return *std::find_if(std::begin(kFaults), std::end(kFaults),
                         [&](const FaultText& row) { return row.fault == fault; });
}

std::string PlaceText(const AcGePoint3d& p) {
    char text[100];
    if (p.z == 0.0)
        std::snprintf(text, sizeof text, "(%.9g, %.9g)", p.x, p.y);
    else
        std::snprintf(text, sizeof text, "(%.9g, %.9g, %.9g)", p.x, p.y, p.z);
    return text;
}

Refusal RefuseAt(Fault fault, const Frame& frame, const Point& place) {
    Refusal refusal;
    refusal.fault = fault;
    refusal.at = frame.At(place);
    return refusal;
}

// True when everything lies within the tolerance of one line: then there is no area to speak of,
// and saying that is plainer than naming one of the places where the outline lies on itself.
bool IsFlat(const std::vector<Piece>& ring) {
    const Point start = ring.front().from;
    Point far = start;
    for (const Piece& piece : ring)
        for (const Point& p : {piece.to, piece.Middle()})
            if (Distance(start, p) > Distance(start, far)) far = p;
    const Piece line = plane::MakeLine(start, far);
    return std::all_of(ring.begin(), ring.end(), [&](const Piece& piece) {
        return Distance(line, piece.to) <= kPositionTol &&
               Distance(line, piece.Middle()) <= kPositionTol;
    });
}

Refusal CheckAgainstAxis(const Frame& frame, const std::vector<Piece>& ring) {
    const Piece* below = nullptr;
    for (const Piece& piece : ring) {
        if (Farthest(piece, Vector{0.0, -1.0}).y >= -kPositionTol) continue;
        if (below == nullptr) below = &piece;
        if (const auto place = AxisPoint(piece, kPositionTol))
            return RefuseAt(Fault::kCrossesAxis, frame, *place);
    }
    if (below != nullptr) return RefuseAt(Fault::kCrossesAxis, frame, below->from);
    for (const Piece& piece : ring) {
        // An end on the axis is looked at with its neighbour.
        if (!piece.IsArc() || piece.from.y == 0.0 || piece.to.y == 0.0) continue;
        const Point lowest = Farthest(piece, Vector{0.0, -1.0});
        if (lowest.y < kPositionTol) return RefuseAt(Fault::kTouchesAxis, frame, lowest);
    }
    return {};
}

bool LiesOnAxis(const Piece& piece) {
    return !piece.IsArc() && piece.from.y == 0.0 && piece.to.y == 0.0;
}

Refusal SplitAtAxis(const Frame& frame, const std::vector<Piece>& ring,
                    std::vector<Chain>& chains) {
    const std::size_t n = ring.size();
    std::size_t start = n;
    for (std::size_t i = 0; i < n; ++i) {
        const Piece &before = ring[(i + n - 1) % n], &piece = ring[i];
        if (piece.from.y != 0.0 || LiesOnAxis(piece)) continue;
        if (!LiesOnAxis(before)) return RefuseAt(Fault::kTouchesAxis, frame, piece.from);
        if (start == n) start = i;
    }
    if (start == n) {
        chains.push_back({ring, true});
        return {};
    }
    bool onAxis = true;
    for (std::size_t k = 0; k < n; ++k) {
        const Piece& piece = ring[(start + k) % n];
        if (LiesOnAxis(piece)) {
            onAxis = true;
            continue;
        }
        if (onAxis) chains.emplace_back();
        onAxis = false;
        chains.back().pieces.push_back(piece);
    }
    return {};
}

// An arc whose centre is on the axis but for noise gets it there, by its ends, to be a true sphere.
void CentreOnAxis(Piece& piece) {
    if (!piece.IsArc() || piece.centre.y == 0.0 || std::fabs(piece.centre.y) >= kPositionTol)
        return;
    const Vector chord = piece.Chord();
    if (std::fabs(chord.x) < kPositionTol) return;
    const double x =
        0.5 * (piece.from.x + piece.to.x) + 0.5 * chord.y * (piece.from.y + piece.to.y) / chord.x;
    const Point centre{x, 0.0};
    if (Distance(centre, piece.centre) > 2.0 * kPositionTol) return;
    piece = plane::MakeArcOnCircle(piece.from, piece.to, centre, Distance(centre, piece.from),
                                   piece.bulge > 0.0);
}

// The chain that encloses the others reaches farthest along the axis.
void PutOutsideFirst(std::vector<Chain>& chains) {
    const auto reach = [](const Chain& chain) {
        return std::fabs(chain.pieces.back().to.x - chain.pieces.front().from.x);
    };
    std::stable_sort(chains.begin(), chains.end(),
                     [&](const Chain& a, const Chain& b) { return reach(a) > reach(b); });
}

// What does not depend on where the axis lies: pieces, simple, with an area (signed).
Refusal CleanAndCheck(const Outline& outline, const AcGePoint3d& axisPoint,
                      const AcGeVector3d& axisDir, Frame& frame, std::vector<Piece>& ring,
                      double& area) {
    std::vector<Corner> corners;
    if (Refusal refusal = PlaceOnAxis(outline, axisPoint, axisDir, frame, corners)) return refusal;
    ring = CleanRing(corners);
    if (ring.empty() || IsFlat(ring)) return RefuseAt(Fault::kNoArea, frame, {});
    // Two pieces share their corners; if they share more, they are one arc there and back, and what
    // there is to say is that it encloses nothing.
    if (ring.size() > 2)
        if (const auto meeting = FindSelfMeeting(ring, kPositionTol))
            return RefuseAt(Fault::kCrossesItself, frame, meeting->at);
    const plane::Integrals sum = Integrate(ring);
    area += sum.area;
    // Thinner than the tolerance all along: a ring of length L and width w encloses about w L / 2.
    if (std::fabs(area) <= 0.5 * kPositionTol * sum.length)
        return RefuseAt(Fault::kNoArea, frame, {});
    return {};
}

}  // namespace

std::string Refusal::Text() const {
    const FaultText& row = TextOf(fault);
    std::string text = row.text;
    if (row.hasPlace) text += ", at " + PlaceText(at);
    if (fault == Fault::kOpen) {
        char gap[60];
        std::snprintf(gap, sizeof gap, ", the gap is %.9g", at.distanceTo(other));
        text += " and " + PlaceText(other) + gap;
    }
    if (corner >= 0 && !row.hasPlace) text += " (corner " + std::to_string(corner + 1) + ")";
    return text;
}

Acad::ErrorStatus Refusal::Status() const { return TextOf(fault).status; }

Refusal Prepare(const Outline& outline, const AcGePoint3d& axisPoint, const AcGeVector3d& axisDir,
                Profile& out) {
    Profile profile;
    std::vector<Piece> ring;
    double area = 0.0;
    const Frame& frame = profile.frame;
    if (Refusal refusal = CleanAndCheck(outline, axisPoint, axisDir, profile.frame, ring, area))
        return refusal;
    if (Refusal refusal = CheckAgainstAxis(frame, ring)) return refusal;
    if (area < 0.0) {
        std::reverse(ring.begin(), ring.end());
        for (Piece& piece : ring) piece = piece.Reversed();
    }
    if (Refusal refusal = SplitAtAxis(frame, ring, profile.chains)) return refusal;
    for (Chain& chain : profile.chains) {
        JoinNeighbours(chain);
        for (Piece& piece : chain.pieces) CentreOnAxis(piece);
    }
    PutOutsideFirst(profile.chains);
    out = std::move(profile);
    return {};
}

Refusal CheckOutline(const Outline& outline, double& area) {
    Frame frame;
    std::vector<Piece> ring;
    double signedArea = 0.0;
    // Any line of the plane serves as an axis for coordinates.
    if (Refusal refusal =
            CleanAndCheck(outline, outline.origin, outline.u, frame, ring, signedArea))
        return refusal;
    area = std::fabs(signedArea);
    return {};
}

Measures Measure(const Profile& profile) {
    double moment = 0.0, surface = 0.0;
    plane::Box box;
    for (const Chain& chain : profile.chains)
        for (const Piece& piece : chain.pieces) {
            const plane::Integrals sum = Integrate(piece);
            moment += sum.moment;
            surface += sum.lengthMoment;
            box.Add(BoxOf(piece));
        }
    // Volume and area of revolution by the centroids (Pappus and Guldin).
    return {kTwoPi * moment, kTwoPi * surface, 2.0 * box.high.y, box.high.x - box.low.x};
}

}  // namespace host::solid
