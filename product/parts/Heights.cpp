#include "product/parts/Heights.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/solid/tolerance.h"

namespace product {
namespace {

using host::solid::Chain;
using host::solid::Piece;
using host::solid::Profile;

constexpr size_t kMostPlaces = 4000;

void AddPlaces(const Profile& profile, std::vector<double>& places) {
    for (const Chain& chain : profile.chains)
        for (const Piece& piece : chain.pieces) places.push_back(piece.from.x);
}

}  // namespace

std::optional<double> HeightAt(const Piece& piece, double x) {
    const plane::Box box = BoxOf(piece);
    if (x < box.low.x || x > box.high.x || box.low.x == box.high.x) return std::nullopt;
    if (!piece.IsArc()) {
        const double share = (x - piece.from.x) / (piece.to.x - piece.from.x);
        return piece.from.y + share * (piece.to.y - piece.from.y);
    }
    const double away = x - piece.centre.x;
    // Next to the chord's line the centre of a wide arc would cost digits; heights of that kind
    // are compared to a thousandth and no finer.
    const double rise = std::sqrt(std::max(0.0, piece.radius * piece.radius - away * away));
    double best = -1;
    for (const double y : {piece.centre.y + rise, piece.centre.y - rise})
        if (Distance(piece, plane::Point{x, y}) <= 1e-6 * piece.radius + host::solid::kPositionTol)
            best = std::max(best, y);
    return best >= 0 ? std::optional<double>(best) : std::nullopt;
}

double HeightAt(const Profile& profile, double x) {
    double best = 0;
    for (const Chain& chain : profile.chains)
        for (const Piece& piece : chain.pieces)
            if (const std::optional<double> height = HeightAt(piece, x))
                best = std::max(best, *height);
    return best;
}

HeightDifference Compare(const Profile& first, const Profile& second) {
    std::vector<double> corners;
    AddPlaces(first, corners);
    AddPlaces(second, corners);
    std::sort(corners.begin(), corners.end());
    std::vector<double> places;
    const size_t stride = corners.size() / kMostPlaces + 1;
    for (size_t i = 0; i + 1 < corners.size(); i += stride) {
        const double width = corners[i + 1] - corners[i];
        // Corners that should be one may lie a little apart.
        if (width > 1e-4)
            for (const double share : {0.01, 0.25, 0.5, 0.75, 0.99})
                places.push_back(corners[i] + share * width);
    }
    HeightDifference difference;
    for (const double x : places) {
        const double apart = HeightAt(first, x) - HeightAt(second, x);
        if (std::fabs(apart) > std::fabs(difference.most)) difference = {apart, x};
    }
    return difference;
}

}  // namespace product
