#include "host/solid/shapes.h"

#include <cmath>
#include <cstddef>

#include "dbents.h"
#include "host/db/access.h"
#include "host/db/entity_tools.h"
#include "host/solid/sat_text.h"

namespace host::solid {

namespace {

const AcGeVector3d kWorldAxes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

// How far the solid reaches in a world direction: its points are origin + axis x + y times any unit
// vector across the axis, so that the profile's farthest point in (along, across) decides.
double Reach(const Profile& profile, const AcGeVector3d& direction) {
    const double along = direction.dotProduct(profile.frame.axis);
    const double across = std::sqrt((std::max)(0.0, 1.0 - along * along));
    const AcGeVector2d flat(along, across);
    double reach = -HUGE_VAL;
    for (const Chain& chain : profile.chains)
        for (const Piece& piece : chain.pieces)
            reach = (std::max)(reach, Farthest(piece, flat).asVector().dotProduct(flat));
    return reach + direction.dotProduct(profile.frame.origin.asVector());
}

// The scale of a similarity; 0, with the status set, for other matrices.
double ScaleOf(const AcGeMatrix3d& matrix, Acad::ErrorStatus& status) {
    const double scale = (matrix * AcGeVector3d::kXAxis).length();
    if (!(scale > 0.0) || !std::isfinite(scale))
        status = Acad::eInvalidInput;
    else if (!IsSimilarity(matrix))
        status = Acad::eCannotScaleNonUniformly;
    else
        return scale;
    return 0.0;
}

Piece Moved(Piece piece, double scale, double shift) {
    for (AcGePoint2d* p : {&piece.from, &piece.to, &piece.centre}) {
        p->x = p->x * scale + shift;
        p->y *= scale;
    }
    piece.radius *= scale;
    return piece;
}

}  // namespace

AcDbExtents RevolvedShape::Extents() const {
    double low[3], high[3];
    for (int i = 0; i < 3; ++i) {
        high[i] = Reach(profile_, kWorldAxes[i]);
        low[i] = -Reach(profile_, -kWorldAxes[i]);
    }
    return AcDbExtents(AcGePoint3d(low[0], low[1], low[2]), AcGePoint3d(high[0], high[1], high[2]));
}

std::shared_ptr<const Shape> RevolvedShape::Transformed(const AcGeMatrix3d& matrix,
                                                        Acad::ErrorStatus& status) const {
    const double scale = ScaleOf(matrix, status);
    if (scale == 0.0) return nullptr;
    Profile moved = profile_;
    Frame& frame = moved.frame;
    frame.axis = (matrix * frame.axis).normal();
    frame.radial = (matrix * frame.radial).normal();
    // The frame's origin stays the axis's point nearest to the world's origin.
    const AcGePoint3d image = matrix * frame.origin;
    const double shift = image.asVector().dotProduct(frame.axis);
    frame.origin = image - frame.axis * shift;
    for (Chain& chain : moved.chains)
        for (Piece& piece : chain.pieces) piece = Moved(piece, scale, shift);
    status = Acad::eOk;
    return std::make_shared<RevolvedShape>(std::move(moved));
}

// Unlike AutoCAD, which makes surfaces and regions of the faces.
Acad::ErrorStatus RevolvedShape::Explode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }

std::string RevolvedShape::StoredText() const {
    SatOptions options;
    options.version = SatVersion::k400;
    options.date = StampTime();
    return SatText({&profile_}, options);
}

AcDbExtents RegionShape::Extents() const {
    AcDbExtents box;
    const std::size_t n = outline_.corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const OutlineCorner& corner = outline_.corners[i];
        const Piece piece =
            MakePiece(corner.point, outline_.corners[(i + 1) % n].point, corner.bulge);
        box.addPoint(outline_.At(piece.from));
        for (const AcGeVector3d& axis : kWorldAxes) {
            const AcGeVector2d flat(axis.dotProduct(outline_.u), axis.dotProduct(outline_.v));
            box.addPoint(outline_.At(Farthest(piece, flat)));
            box.addPoint(outline_.At(Farthest(piece, -flat)));
        }
    }
    return box;
}

std::shared_ptr<const Shape> RegionShape::Transformed(const AcGeMatrix3d& matrix,
                                                      Acad::ErrorStatus& status) const {
    const double scale = ScaleOf(matrix, status);
    if (scale == 0.0) return nullptr;
    Outline moved = outline_;
    moved.origin = matrix * outline_.origin;
    moved.u = (matrix * outline_.u).normal();
    moved.v = (matrix * outline_.v).normal();
    for (OutlineCorner& corner : moved.corners) corner.point = corner.point * scale;
    status = Acad::eOk;
    return std::make_shared<RegionShape>(std::move(moved), area_ * scale * scale);
}

Acad::ErrorStatus RegionShape::Explode(AcDbVoidPtrArray& pieces) const {
    const std::size_t n = outline_.corners.size();
    const AcGeVector3d normal = outline_.u.crossProduct(outline_.v);
    for (std::size_t i = 0; i < n; ++i) {
        const OutlineCorner& corner = outline_.corners[i];
        const AcGePoint2d next = outline_.corners[(i + 1) % n].point;
        if (corner.bulge == 0.0) {
            pieces.append(new AcDbLine(outline_.At(corner.point), outline_.At(next)));
            continue;
        }
        // Arcs run counter-clockwise about their normal, angles count from the OCS x axis.
        const Piece arc = MakePiece(corner.point, next, corner.bulge);
        const AcGePoint3d centre = outline_.At(arc.centre);
        const AcGePoint2d first = corner.bulge > 0.0 ? arc.from : arc.to;
        const AcGePoint2d last = corner.bulge > 0.0 ? arc.to : arc.from;
        const AcGeVector3d x = PlaneOf(normal).x;
        pieces.append(new AcDbArc(centre, normal, arc.radius,
                                  x.angleTo(outline_.At(first) - centre, normal),
                                  x.angleTo(outline_.At(last) - centre, normal)));
    }
    return Acad::eOk;
}

// A region's sheet body is not written; see docs on what a drawing keeps.
std::string RegionShape::StoredText() const { return {}; }

const Profile* ProfileOf(const AcDb3dSolid& solid) {
    const auto* shape = dynamic_cast<const RevolvedShape*>(Access::ShapeOf(solid).get());
    return shape == nullptr ? nullptr : &shape->GetProfile();
}

const RegionShape* RegionOf(const AcDbRegion& region) {
    return dynamic_cast<const RegionShape*>(Access::ShapeOf(region).get());
}

}  // namespace host::solid
