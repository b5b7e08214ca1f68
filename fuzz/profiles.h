// Profiles out of bytes, for the targets that make solids.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fuzz/check.h"
#include "host/solid/profile.h"

namespace fuzz {

// Corners on a grid, so that touching, closing and coinciding happen.
inline host::solid::Outline OutlineOf(const uint8_t* data, size_t size) {
    host::solid::Outline outline;
    static const double kBulges[] = {0, 0, 0, 0, 0.41421356237309503, -0.41421356237309503, 1, 0.1};
    for (size_t i = 0; i + 2 < size && i < 60; i += 3)
        outline.corners.push_back({{data[i] / 4.0, data[i + 1] / 8.0}, kBulges[data[i + 2] % 8]});
    return outline;
}

// False when the outline is refused, which always has a reason.
inline bool ProfileOf(const uint8_t* data, size_t size, host::solid::Profile& profile) {
    const host::solid::Refusal refusal =
        Prepare(OutlineOf(data, size), AcGePoint3d(), AcGeVector3d(1, 0, 0), profile);
    FUZZ_CHECK(!refusal || !refusal.Text().empty());
    return !refusal;
}

}  // namespace fuzz
