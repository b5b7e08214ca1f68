#include <cmath>
#include <memory>

#include "plane/point.h"
#include "product/picture/PictureBuilder.h"

namespace product {
namespace {

// Pieces of a curve between two of its knots, each drawn as one cubic.
constexpr int kCubicsPerSpan = 3;
constexpr int kCubicsWithoutKnots = 48;
// A plane tilted by more than this (cosine) shows its circles as ellipses.
constexpr double kFlatCosine = 1 - 1e-9;

Point Flat(const AcGePoint3d& p) { return {p.x, p.y}; }

bool IsFlat(const AcGeVector3d& normal) { return std::abs(normal.z) >= kFlatCosine; }

// The unit circle's plane of an arc or circle in a flat plane.
Affine PlaceOf(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius) {
    const AcGeMatrix3d m = AcGeMatrix3d::planeToWorld(normal);
    return {m(0, 0) * radius, m(1, 0) * radius, m(0, 1) * radius,
            m(1, 1) * radius, centre.x,         centre.y};
}

// Parameters between which the curve is smooth.
std::vector<double> SmoothSpans(const AcGeCurve3d& curve) {
    AcGeInterval interval;
    curve.getInterval(interval);
    const double from = interval.lowerBound(), to = interval.upperBound();
    std::vector<double> spans{from};
    if (const auto* nurb = dynamic_cast<const AcGeNurbCurve3d*>(&curve)) {
        for (int i = 0; i < nurb->numKnots(); ++i)
            if (nurb->knotAt(i) > spans.back() && nurb->knotAt(i) < to)
                spans.push_back(nurb->knotAt(i));
    } else {
        for (int i = 1; i < kCubicsWithoutKnots; ++i)
            spans.push_back(from + (to - from) * i / kCubicsWithoutKnots);
    }
    spans.push_back(to);
    return spans;
}

// A cubic that leaves and enters with the curve's own derivatives (Hermite form: the control points
// lie a third of the derivative away). They are taken just inside the piece, for a knot may be a
// kink.
void AddCubic(const AcGeCurve3d& curve, double from, double to, Path& path) {
    const double inside = 1e-9 * (to - from);
    AcGeVector3dArray leaving, entering;
    const AcGePoint3d start = curve.evalPoint(from + inside, 1, leaving);
    const AcGePoint3d end = curve.evalPoint(to - inside, 1, entering);
    const AcGeVector3d a = leaving[0] * ((to - from) / 3), b = entering[0] * ((to - from) / 3);
    path.CubicTo({start.x + a.x, start.y + a.y}, {end.x - b.x, end.y - b.y}, Flat(end));
}

Path CurvePath(const AcGeCurve3d& curve) {
    Path path;
    const std::vector<double> spans = SmoothSpans(curve);
    path.MoveTo(Flat(curve.evalPoint(spans.front())));
    const int pieces = spans.size() > kCubicsWithoutKnots ? 1 : kCubicsPerSpan;
    for (size_t i = 0; i + 1 < spans.size(); ++i)
        for (int k = 0; k < pieces; ++k) {
            const double step = (spans[i + 1] - spans[i]) / pieces;
            AddCubic(curve, spans[i] + k * step, spans[i] + (k + 1) * step, path);
        }
    return path;
}

}  // namespace

void PictureBuilder::DrawLine(const AcDbEntity& entity, Shapes& out) {
    const auto& line = *AcDbLine::cast(&entity);
    Path path;
    path.MoveTo(Flat(line.startPoint()));
    path.LineTo(Flat(line.endPoint()));
    AddStroke(std::move(path), out);
}

void PictureBuilder::DrawArc(const AcDbEntity& entity, Shapes& out) {
    const auto& arc = *AcDbArc::cast(&entity);
    if (!IsFlat(arc.normal())) return DrawAnyCurve(entity, out);
    Path path;
    path.AddEllipse(PlaceOf(arc.center(), arc.normal(), arc.radius()), arc.startAngle(),
                    arc.startAngle() + arc.totalAngle());
    AddStroke(std::move(path), out);
}

void PictureBuilder::DrawCircle(const AcDbEntity& entity, Shapes& out) {
    const auto& circle = *AcDbCircle::cast(&entity);
    if (!IsFlat(circle.normal())) return DrawAnyCurve(entity, out);
    Path path;
    path.AddEllipse(PlaceOf(circle.center(), circle.normal(), circle.radius()), 0,
                    2 * plane::kHalfTurn);
    AddStroke(std::move(path), out);
}

void PictureBuilder::DrawEllipse(const AcDbEntity& entity, Shapes& out) {
    const auto& ellipse = *AcDbEllipse::cast(&entity);
    if (!IsFlat(ellipse.normal())) return DrawAnyCurve(entity, out);
    const AcGeVector3d major = ellipse.majorAxis(), minor = ellipse.minorAxis();
    double end = ellipse.endAngle();
    if (end <= ellipse.startAngle()) end += 2 * plane::kHalfTurn;
    Path path;
    path.AddEllipse({major.x, major.y, minor.x, minor.y, ellipse.center().x, ellipse.center().y},
                    ellipse.startAngle(), end);
    AddStroke(std::move(path), out);
}

void PictureBuilder::DrawPolyline(const AcDbEntity& entity, Shapes& out) {
    const auto& polyline = *AcDbPolyline::cast(&entity);
    if (!IsFlat(polyline.normal())) return DrawPieces(entity, out);
    std::vector<Vertex> vertices(polyline.numVerts());
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        double bulge = 0;
        if (polyline.getPointAt(i, point) != Acad::eOk ||
            polyline.getBulgeAt(i, bulge) != Acad::eOk)
            return;
        vertices[i] = {point.x, point.y, polyline.normal().z > 0 ? bulge : -bulge};
    }
    Path path;
    path.AddRing(vertices, polyline.isClosed());
    AddStroke(std::move(path), out);
}

void PictureBuilder::DrawPieces(const AcDbEntity& entity, Shapes& out) {
    AcDbVoidPtrArray pieces;
    if (entity.explode(pieces) != Acad::eOk) return;
    for (int i = 0; i < pieces.length(); ++i) {
        const std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(pieces[i]));
        if (!piece->isKindOf(AcDbPolyline::desc())) Draw(*piece, out);
    }
}

// All lines of a pattern in one shape: there may be thousands.
void PictureBuilder::DrawHatch(const AcDbEntity& entity, Shapes& out) {
    AcDbVoidPtrArray pieces;
    if (entity.explode(pieces) != Acad::eOk) return;
    m_ink = Ink::Hatch;
    Path lines;
    for (int i = 0; i < pieces.length(); ++i) {
        const std::unique_ptr<AcDbEntity> piece(static_cast<AcDbEntity*>(pieces[i]));
        if (const auto* line = AcDbLine::cast(piece.get())) {
            lines.MoveTo(Flat(line->startPoint()));
            lines.LineTo(Flat(line->endPoint()));
        } else {
            Draw(*piece, out);
        }
    }
    AddStroke(std::move(lines), out);
}

void PictureBuilder::DrawLeader(const AcDbEntity& entity, Shapes& out) {
    const auto& leader = *AcDbLeader::cast(&entity);
    Path path;
    for (int i = 0; i < leader.numVertices(); ++i) {
        if (i == 0) path.MoveTo(Flat(leader.vertexAt(i)));
        if (i > 0) path.LineTo(Flat(leader.vertexAt(i)));
    }
    m_ink = Ink::Dimension;
    AddStroke(std::move(path), out);
}

void PictureBuilder::DrawFourCorners(const AcDbEntity& entity, Shapes& out) {
    const auto* corners = dynamic_cast<const host::FourCorners*>(&entity);
    if (corners == nullptr) return;
    static const Adesk::UInt16 kRound[] = {0, 1, 3, 2};
    Path path;
    for (int i = 0; i < 4; ++i) {
        AcGePoint3d point;
        if (corners->getPointAt(kRound[i], point) != Acad::eOk) return;
        if (i == 0) path.MoveTo(Flat(point));
        if (i > 0) path.LineTo(Flat(point));
    }
    path.Close();
    m_ink = Ink::Solid;
    AddStroke(std::move(path), out);
}

void PictureBuilder::DrawAnyCurve(const AcDbEntity& entity, Shapes& out) {
    AcGeCurve3d* made = nullptr;
    if (AcDbCurve::cast(&entity)->getAcGeCurve(made) != Acad::eOk || made == nullptr) return;
    const std::unique_ptr<AcGeCurve3d> curve(made);
    AddStroke(CurvePath(*curve), out);
}

}  // namespace product
