#include "host/solid/shapes.h"

#include <cmath>
#include <cstddef>

#include "dbents.h"
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
    const Vector flat{along, across};
    double reach = -HUGE_VAL;
    for (const Chain& chain : profile.chains)
        for (const Piece& piece : chain.pieces)
            reach = (std::max)(reach, Dot(Farthest(piece, flat) - Point{}, flat));
    return reach + direction.dotProduct(profile.frame.origin.asVector());
}

// The scale of a similarity; other matrices are refused.
Acad::ErrorStatus GetScale(const AcGeMatrix3d& matrix, double& scale) {
    const double length = (matrix * AcGeVector3d(1, 0, 0)).length();
    if (!(length > 0.0) || !std::isfinite(length)) return Acad::eInvalidInput;
    if (!IsSimilarity(matrix)) return Acad::eCannotScaleNonUniformly;
    scale = length;
    return Acad::eOk;
}

Piece ScaledAndShifted(Piece piece, double scale, double shift) {
    for (Point* p : {&piece.from, &piece.to, &piece.centre}) {
        p->x = p->x * scale + shift;
        p->y *= scale;
    }
    piece.radius *= scale;
    return piece;
}

}  // namespace

Acad::ErrorStatus RevolvedShape::Extents(AcDbExtents& extents) const {
    double low[3], high[3];
    for (int i = 0; i < 3; ++i) {
        high[i] = Reach(profile_, kWorldAxes[i]);
        low[i] = -Reach(profile_, -kWorldAxes[i]);
    }
    return extents.set(AcGePoint3d(low[0], low[1], low[2]), AcGePoint3d(high[0], high[1], high[2]));
}

Acad::ErrorStatus RevolvedShape::Moved(const AcGeMatrix3d& matrix,
                                       std::shared_ptr<const Shape>& moved) const {
    double scale = 0.0;
    if (const Acad::ErrorStatus es = GetScale(matrix, scale); es != Acad::eOk) return es;
    Profile profile = profile_;
    Frame& frame = profile.frame;
    frame.axis = (matrix * frame.axis).normal();
    frame.radial = (matrix * frame.radial).normal();
    // The frame's origin stays the axis's point nearest to the world's origin.
    const AcGePoint3d image = matrix * frame.origin;
    const double shift = image.asVector().dotProduct(frame.axis);
    frame.origin = image - frame.axis * shift;
    for (Chain& chain : profile.chains)
        for (Piece& piece : chain.pieces) piece = ScaledAndShifted(piece, scale, shift);
    moved = std::make_shared<RevolvedShape>(std::move(profile));
    return Acad::eOk;
}

// Unlike AutoCAD, which makes surfaces and regions of the faces.
Acad::ErrorStatus RevolvedShape::Explode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }

Acad::ErrorStatus RevolvedShape::Area(double& area) const {
    area = Measure(profile_).area;
    return Acad::eOk;
}

Acad::ErrorStatus RevolvedShape::Volume(double& volume) const {
    volume = Measure(profile_).volume;
    return Acad::eOk;
}

std::string RevolvedShape::StoredText() const {
    SatOptions options;
    options.version = SatVersion::k400;
    options.date = StampTime();
    return SatText({&profile_}, options);
}

Acad::ErrorStatus RegionShape::Extents(AcDbExtents& extents) const {
    AcDbExtents box;
    const std::size_t n = outline_.corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Corner& corner = outline_.corners[i];
        const Piece piece =
            plane::MakeCurve(corner.point, outline_.corners[(i + 1) % n].point, corner.bulge);
        box.addPoint(outline_.At(piece.from));
        for (const AcGeVector3d& axis : kWorldAxes) {
            const Vector flat{axis.dotProduct(outline_.u), axis.dotProduct(outline_.v)};
            box.addPoint(outline_.At(Farthest(piece, flat)));
            box.addPoint(outline_.At(Farthest(piece, -flat)));
        }
    }
    return FinishExtents(box, extents);
}

Acad::ErrorStatus RegionShape::Moved(const AcGeMatrix3d& matrix,
                                     std::shared_ptr<const Shape>& moved) const {
    double scale = 0.0;
    if (const Acad::ErrorStatus es = GetScale(matrix, scale); es != Acad::eOk) return es;
    Outline outline = outline_;
    outline.origin = matrix * outline_.origin;
    outline.u = (matrix * outline_.u).normal();
    outline.v = (matrix * outline_.v).normal();
    for (Corner& corner : outline.corners)
        corner.point = {corner.point.x * scale, corner.point.y * scale};
    moved = std::make_shared<RegionShape>(std::move(outline), area_ * scale * scale);
    return Acad::eOk;
}

Acad::ErrorStatus RegionShape::Explode(AcDbVoidPtrArray& pieces) const {
    const std::size_t n = outline_.corners.size();
    const AcGeVector3d normal = outline_.u.crossProduct(outline_.v);
    for (std::size_t i = 0; i < n; ++i) {
        const Corner& corner = outline_.corners[i];
        const Point next = outline_.corners[(i + 1) % n].point;
        if (corner.bulge == 0.0) {
            pieces.append(new AcDbLine(outline_.At(corner.point), outline_.At(next)));
            continue;
        }
        // Arcs run counter-clockwise about their normal, angles count from the OCS x axis.
        const Piece arc = plane::MakeCurve(corner.point, next, corner.bulge);
        const AcGePoint3d centre = outline_.At(arc.centre);
        const Point first = corner.bulge > 0.0 ? arc.from : arc.to;
        const Point last = corner.bulge > 0.0 ? arc.to : arc.from;
        const AcGeVector3d x = PlaneOf(normal).x;
        pieces.append(new AcDbArc(centre, normal, arc.radius,
                                  x.angleTo(outline_.At(first) - centre, normal),
                                  x.angleTo(outline_.At(last) - centre, normal)));
    }
    return Acad::eOk;
}

Acad::ErrorStatus RegionShape::Area(double& area) const {
    area = area_;
    return Acad::eOk;
}

const Profile* ProfileOf(const ModelledEntity& entity) {
    // Shapes are shared; the entity keeps this one alive while it is open.
    const auto* shape = dynamic_cast<const RevolvedShape*>(ShapeOfEntity(entity).get());
    return shape == nullptr ? nullptr : &shape->GetProfile();
}

}  // namespace host::solid
