// Places on a solid and what lies between two of them.
#pragma once

#include <QString>
#include <optional>

#include "apps/qzhost/solid/Camera.h"
#include "apps/qzhost/solid/SolidBody.h"

namespace app {

// A place on the surface of a solid of revolution itself, not of the triangles that show it; or on
// the plane of a section.
struct SolidPlace {
    AcGePoint3d at;
    double along = 0.0;  // the axis, as the profile counts
    double radius = 0.0;
    bool isCorner = false;
};

// The place that a pixel shows; a corner of the profile when its circle passes within some pixels.
//
// isCut   what lies in front of the profile's plane is left out, as in a section
// result  none where the ray meets nothing
// cost    linear in the triangles
std::optional<SolidPlace> PlaceAt(const SolidBody& body, const Camera& camera, const QPointF& pixel,
                                  bool isCut);

// "x 12.5  ⌀ 20", and of two places how they lie to one another.
QString TextOf(const SolidPlace& place);
QString TextBetween(const SolidPlace& from, const SolidPlace& to);

}  // namespace app
