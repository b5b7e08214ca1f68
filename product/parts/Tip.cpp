#include "product/parts/Tip.h"

#include <algorithm>
#include <cmath>

#include "product/base/Failure.h"
#include "product/parts/CutRing.h"

namespace product {
namespace {

using host::solid::Chain;
using host::solid::Piece;
using host::solid::Profile;

// An end that leans less than this (radians) is flat: hollow ground faces lean a degree or two.
constexpr double kFlat = 0.09;
// Of the axis' direction along x or y, below which it has no left or right, no top or bottom.
constexpr double kLeast = 1e-6;

const Chain& Outside(const Profile& profile) { return profile.chains.front(); }

// The piece that reaches the axis at the high end comes first: material lies left of travel.
bool ComesToPoint(const Profile& profile, bool isHigh) {
    const Chain& chain = Outside(profile);
    if (chain.closed) return false;
    const Piece& piece = isHigh ? chain.pieces.front() : chain.pieces.back();
    const plane::Point& tip = isHigh ? piece.from : piece.to;
    const plane::Point& other = isHigh ? piece.to : piece.from;
    const double lean = isHigh ? tip.x - other.x : other.x - tip.x;
    // Looking inwards it is a centre hole.
    return lean > 0 && std::atan2(lean, other.y) > kFlat;
}

// Length of the first cylinder from an end on.
double EndCylinder(const Profile& profile, bool isHigh) {
    std::vector<Piece> pieces = Outside(profile).pieces;
    if (!isHigh) std::reverse(pieces.begin(), pieces.end());
    for (const Piece& piece : pieces)
        if (!piece.IsArc() && piece.from.y == piece.to.y && piece.from.y > 0)
            return std::fabs(piece.to.x - piece.from.x);
    return 0;
}

Tip Said(const Profile& profile, TipSide side) {
    const AcGeVector3d& along = profile.frame.axis;
    Tip tip;
    tip.isSure = true;
    tip.why = "as --tip says";
    if (side == TipSide::Start || side == TipSide::End) {
        tip.isHigh = side == TipSide::End;
        return tip;
    }
    const bool isLevel = side == TipSide::Left || side == TipSide::Right;
    const double share = isLevel ? along.x : along.y;
    if (std::fabs(share) < kLeast)
        throw Failure(Fault::Request, std::string("--tip: the axis has no ") +
                                          (isLevel ? "left or right end; use top or bottom"
                                                   : "upper or lower end; use left or right") +
                                          ", start or end");
    tip.isHigh = (share > 0) == (side == TipSide::Right || side == TipSide::Top);
    return tip;
}

}  // namespace

Tip TipOf(const Profile& profile, TipSide side) {
    if (side != TipSide::Auto) return Said(profile, side);
    Tip tip;
    const bool high = ComesToPoint(profile, true), low = ComesToPoint(profile, false);
    if (high != low) {
        tip.isHigh = high;
        tip.isSure = true;
        tip.why = "only this end comes to a point or a rounding";
        return tip;
    }
    tip.isHigh = EndCylinder(profile, true) <= EndCylinder(profile, false);
    tip.why = "its cylinder is the shorter one";
    return tip;
}

const char* EndName(const Profile& profile, bool isHigh) {
    const AcGeVector3d& axis = profile.frame.axis;
    if (std::fabs(axis.x) >= std::fabs(axis.y)) return (axis.x > 0) == isHigh ? "right" : "left";
    return (axis.y > 0) == isHigh ? "upper" : "lower";
}

}  // namespace product
