// How high a profile stands over its axis, place by place.
#pragma once

#include <optional>

#include "host/solid/profile.h"

namespace product {

// Height of a piece at a place along the axis; of an arc that passes there twice the greater one.
// Nothing where it is not, and for a piece straight across the axis.
std::optional<double> HeightAt(const host::solid::Piece& piece, double x);

// The greatest height of a profile there; 0 beside it. cost  O(pieces)
double HeightAt(const host::solid::Profile& profile, double x);

// Where two solids about one axis differ most.
struct HeightDifference {
    double most = 0;  // in height, positive where the first is greater
    double at = 0;
};

// Compares heights at the corners of both, next to them and between; what lies below the greatest
// height is not seen.
// cost  O(n^2) for n pieces, with at most some thousand places
HeightDifference Compare(const host::solid::Profile& first, const host::solid::Profile& second);

}  // namespace product
