#include "product/parts/Placing.h"

#include "product/parts/CutRing.h"

namespace product {
namespace {

using host::solid::Frame;
using host::solid::Profile;

double ZeroOf(const Profile& profile, const Axis& axis, bool isTipHigh,
              const Placement& placement) {
    const Reach reach = ReachOf(profile);
    const auto foot = [&](const Point& p) {
        return (AcGePoint3d(p.x, p.y, 0) - profile.frame.origin).dotProduct(profile.frame.axis);
    };
    switch (placement.zero) {
        case Placement::Zero::Shank:
            return isTipHigh ? reach.low : reach.high;
        case Placement::Zero::AxisStart:
            return foot(axis.from);
        case Placement::Zero::At:
            return foot(placement.at);
        case Placement::Zero::Tip:
        case Placement::Zero::AsDrawn:
            break;
    }
    return isTipHigh ? reach.high : reach.low;
}

// Where the tip points.
AcGeVector3d PointsTo(const Profile& profile, bool isTipHigh, Placement::Direction direction) {
    switch (direction) {
        case Placement::Direction::Left:
            return {-1, 0, 0};
        case Placement::Direction::Right:
            return {1, 0, 0};
        case Placement::Direction::Up:
            return {0, 0, 1};
        case Placement::Direction::Down:
            return {0, 0, -1};
        case Placement::Direction::AsDrawn:
            break;
    }
    const bool isRight = (profile.frame.axis.x >= 0) == isTipHigh;
    return {isRight ? 1.0 : -1.0, 0, 0};
}

}  // namespace

ToolPlace PlaceOf(const Profile& profile, const Axis& axis, bool isTipHigh,
                  const Placement& placement) {
    ToolPlace place;
    place.zero = ZeroOf(profile, axis, isTipHigh, placement);
    const AcGeVector3d tip = PointsTo(profile, isTipHigh, placement.direction);
    place.frame.axis = isTipHigh ? tip : -tip;
    place.frame.radial = tip.z != 0 ? AcGeVector3d(1, 0, 0) : AcGeVector3d(0, 1, 0);
    return place;
}

Profile Placed(const Profile& profile, const ToolPlace& place) {
    Profile placed = profile;
    placed.frame = place.frame;
    for (host::solid::Chain& chain : placed.chains)
        for (host::solid::Piece& piece : chain.pieces) {
            piece.from.x -= place.zero;
            piece.to.x -= place.zero;
            piece.centre.x -= place.zero;
        }
    return placed;
}

}  // namespace product
