#include "apps/qzhost/solid/SolidMeasure.h"

#include <cmath>

namespace app {
namespace {

constexpr double kCornerPixels = 8.0;

// Where the ray enters a triangle, as a distance along it; none when it passes by (Möller and
// Trumbore, 1997).
std::optional<double> Enter(const AcGePoint3d& from, const AcGeVector3d& along,
                            const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
    const AcGeVector3d ab = b - a, ac = c - a;
    const AcGeVector3d p = along.crossProduct(ac);
    const double det = ab.dotProduct(p);
    if (det == 0.0) return {};
    const AcGeVector3d t = from - a;
    const double u = t.dotProduct(p) / det;
    if (u < 0.0 || u > 1.0) return {};
    const AcGeVector3d q = t.crossProduct(ab);
    const double v = along.dotProduct(q) / det;
    if (v < 0.0 || u + v > 1.0) return {};
    return ac.dotProduct(q) / det;
}

SolidPlace PlaceOf(const host::solid::Frame& frame, const AcGePoint3d& at) {
    SolidPlace place;
    place.at = at;
    const AcGeVector3d out = at - frame.origin;
    place.along = out.dotProduct(frame.axis);
    place.radius = (out - frame.axis * place.along).length();
    return place;
}

// Moves the place within its half plane about the axis.
void MoveTo(const host::solid::Frame& frame, const plane::Point& to, SolidPlace& place) {
    const AcGeVector3d out = place.at - (frame.origin + frame.axis * place.along);
    const AcGeVector3d away = place.radius > 0.0 ? out / place.radius : frame.radial;
    place.along = to.x;
    place.radius = to.y;
    place.at = frame.origin + frame.axis * to.x + away * to.y;
}

// Triangles lie beside the surface; what is measured lies on it.
void MoveToSurface(const host::solid::Profile& profile, SolidPlace& place) {
    const plane::Point at{place.along, place.radius};
    std::optional<plane::Point> nearest;
    double best = 0.0;
    for (const host::solid::Chain& chain : profile.chains)
        for (const host::solid::Piece& piece : chain.pieces) {
            const plane::Point foot = plane::NearestPoint(piece, at);
            const double off = std::hypot(foot.x - at.x, foot.y - at.y);
            if (nearest && off >= best) continue;
            best = off;
            nearest = foot;
        }
    if (nearest) MoveTo(profile.frame, *nearest, place);
}

// The corner that the place lies on, or all but.
void SnapToCorner(const host::solid::Profile& profile, double within, SolidPlace& place) {
    double best = within;
    plane::Point nearest;
    for (const host::solid::Chain& chain : profile.chains)
        for (const host::solid::Piece& piece : chain.pieces)
            for (const plane::Point& corner : {piece.from, piece.to}) {
                const double off = std::hypot(corner.x - place.along, corner.y - place.radius);
                if (off >= best) continue;
                best = off;
                nearest = corner;
                place.isCorner = true;
            }
    if (place.isCorner) MoveTo(profile.frame, nearest, place);
}

QString Number(double value) {
    return QString::number(std::fabs(value) < 5e-7 ? 0.0 : value, 'g', 8);
}

}  // namespace

std::optional<SolidPlace> PlaceAt(const SolidBody& body, const Camera& camera, const QPointF& pixel,
                                  bool isCut) {
    if (!body.HasShape()) return {};
    AcGePoint3d from;
    AcGeVector3d along;
    camera.RayOf(pixel, from, along);
    const host::solid::Frame& frame = body.run.profile->frame;
    const AcGeVector3d normal = frame.Normal();
    const host::solid::Mesh& mesh = body.mesh;
    std::optional<double> nearest;
    bool isFromInside = false;
    for (const auto& triangle : mesh.triangles) {
        const AcGePoint3d* const corner[3] = {&mesh.points[static_cast<size_t>(triangle[0])],
                                              &mesh.points[static_cast<size_t>(triangle[1])],
                                              &mesh.points[static_cast<size_t>(triangle[2])]};
        const std::optional<double> t = Enter(from, along, *corner[0], *corner[1], *corner[2]);
        if (!t || *t < 0.0 || (nearest && *t >= *nearest)) continue;
        if (isCut && (from + along * *t - frame.origin).dotProduct(normal) > 0.0) continue;
        nearest = t;
        const AcGeVector3d outward =
            (*corner[1] - *corner[0]).crossProduct(*corner[2] - *corner[0]);
        isFromInside = outward.dotProduct(along) > 0.0;
    }
    if (!nearest) return {};
    AcGePoint3d at = from + along * *nearest;
    // Seen from inside it is the section's plane that lies before it.
    const double toward = along.dotProduct(normal);
    const bool isOnSection = isCut && isFromInside && toward != 0.0;
    if (isOnSection) at = from + along * ((frame.origin - from).dotProduct(normal) / toward);
    SolidPlace place = PlaceOf(frame, at);
    if (!isOnSection) MoveToSurface(*body.run.profile, place);
    SnapToCorner(*body.run.profile, kCornerPixels / camera.scale, place);
    return place;
}

QString TextOf(const SolidPlace& place) {
    return QString("x %1   \u2300 %2").arg(Number(place.along), Number(2.0 * place.radius));
}

QString TextBetween(const SolidPlace& from, const SolidPlace& to) {
    return QString("%1   \u0394x %2   \u0394\u2300 %3")
        .arg(Number(from.at.distanceTo(to.at)), Number(to.along - from.along),
             Number(2.0 * (to.radius - from.radius)));
}

}  // namespace app
