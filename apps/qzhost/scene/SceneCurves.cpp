#include "apps/qzhost/scene/SceneCurves.h"

#include <algorithm>
#include <cmath>

#include "arxHeaders.h"
#include "host/base/angles.h"
#include "host/ed/outline.h"

namespace app {
namespace {

constexpr double kFar = 1e6;         // drawing units that a ray is drawn to
constexpr double kArrow = 2.5;       // length of a leader's arrow head, drawing units
constexpr double kPointMark = 0.02;  // half the cross of a point, drawing units

QPointF Flat(const AcGePoint3d& p) { return QPointF(p.x, p.y); }
QPointF Flat(const AcGeVector3d& v) { return QPointF(v.x, v.y); }

class Parts {
public:
    explicit Parts(SceneChunk& chunk) : m_chunk(chunk) {}

    void Begin(ScenePart::Kind kind) {
        ScenePart part;
        part.kind = kind;
        part.first = static_cast<unsigned>(m_chunk.points.size());
        m_chunk.parts.push_back(part);
    }
    void Point(const QPointF& point) {
        m_chunk.points.push_back(point);
        ++m_chunk.parts.back().count;
    }
    void Path(std::initializer_list<QPointF> points) {
        Begin(ScenePart::kLine);
        for (const QPointF& point : points) Point(point);
    }
    void Arc(const QPointF& centre, const QPointF& major, const QPointF& minor, double start,
             double sweep) {
        Begin(ScenePart::kArc);
        for (const QPointF& point : {centre, major, minor, QPointF(start, sweep)}) Point(point);
    }
    bool HasPath() const {
        return !m_chunk.parts.empty() && m_chunk.parts.back().kind == ScenePart::kLine;
    }
    QPointF Last() const { return m_chunk.points.back(); }

private:
    SceneChunk& m_chunk;
};

// The axes of the plane of a normal.
void Axes(const AcGeVector3d& normal, double radius, QPointF& u, QPointF& v) {
    const AcGeMatrix3d m = AcGeMatrix3d::planeToWorld(normal);
    u = QPointF(m(0, 0), m(1, 0)) * radius;
    v = QPointF(m(0, 1), m(1, 1)) * radius;
}

void AddBulge(Parts& parts, const QPointF& from, const QPointF& to, double bulge) {
    const QPointF chord = to - from;
    const QPointF left(-chord.y(), chord.x());
    const QPointF centre = (from + to) / 2 + left * ((1.0 / bulge - bulge) / 4.0);
    const QPointF out = from - centre;
    parts.Arc(centre, out, QPointF(-out.y(), out.x()), 0.0, 4.0 * std::atan(bulge));
}

// Chords that the sides of a wide arc are drawn with.
constexpr int kWideChords = 32;

// A segment with a width, as a face: both sides of its middle line, which may be an arc.
void AddWide(Parts& parts, const QPointF& from, const QPointF& to, double bulge, double startWidth,
             double endWidth) {
    const QPointF chord = to - from, left(-chord.y(), chord.x());
    const double length = std::hypot(chord.x(), chord.y());
    if (!(length > 0.0)) return;
    std::vector<QPointF> sides[2];
    const int chords = bulge == 0.0 ? 1 : kWideChords;
    const QPointF centre =
        bulge == 0.0 ? QPointF() : (from + to) / 2 + left * ((1.0 / bulge - bulge) / 4.0);
    for (int i = 0; i <= chords; ++i) {
        const double t = static_cast<double>(i) / chords;
        const double half = (startWidth + (endWidth - startWidth) * t) / 2.0;
        QPointF at = from + chord * t, across = left / length;
        if (bulge != 0.0) {
            const double turn = 4.0 * std::atan(bulge) * t;
            const QPointF out = from - centre;
            at = centre + out * std::cos(turn) + QPointF(-out.y(), out.x()) * std::sin(turn);
            across = (at - centre) / std::hypot(out.x(), out.y());
        }
        sides[0].push_back(at + across * half);
        sides[1].push_back(at - across * half);
    }
    parts.Begin(ScenePart::kFill);
    for (const QPointF& point : sides[0]) parts.Point(point);
    for (auto point = sides[1].rbegin(); point != sides[1].rend(); ++point) parts.Point(*point);
}

void AddPolyline(const AcDbPolyline& line, Parts& parts) {
    const unsigned count = line.numVerts();
    const unsigned segments = count < 2 ? 0 : line.isClosed() ? count : count - 1;
    bool isOnPath = false;
    // Bulges turn the other way when the plane is looked at from below.
    const double side = line.normal().z < 0.0 ? -1.0 : 1.0;
    for (unsigned i = 0; i < segments; ++i) {
        AcGePoint3d from, to;
        double bulge = 0.0, startWidth = 0.0, endWidth = 0.0;
        if (line.getPointAt(i, from) != Acad::eOk ||
            line.getPointAt((i + 1) % count, to) != Acad::eOk ||
            line.getBulgeAt(i, bulge) != Acad::eOk ||
            line.getWidthsAt(i, startWidth, endWidth) != Acad::eOk)
            return;
        if (startWidth > 0.0 || endWidth > 0.0)
            AddWide(parts, Flat(from), Flat(to), bulge * side, startWidth, endWidth);
        if (bulge != 0.0 && !from.isEqualTo(to)) {
            AddBulge(parts, Flat(from), Flat(to), bulge * side);
            isOnPath = false;
            continue;
        }
        if (!isOnPath || startWidth > 0.0 || endWidth > 0.0) parts.Path({Flat(from)});
        isOnPath = true;
        parts.Point(Flat(to));
    }
}

void AddOutline(const AcDbEntity& entity, Parts& parts) {
    std::vector<host::Piece> pieces;
    host::AppendOutline(entity, pieces);
    bool isOnPath = false;
    for (const host::Piece& piece : pieces) {
        if (!isOnPath || parts.Last() != Flat(piece.first)) parts.Path({Flat(piece.first)});
        isOnPath = true;
        parts.Point(Flat(piece.second));
    }
}

// Corners come in the order of a Z.
void AddFour(const host::FourCorners& solid, Parts& parts) {
    parts.Begin(ScenePart::kFill);
    for (const Adesk::UInt16 corner : {0, 1, 3, 2}) {
        AcGePoint3d point;
        if (solid.getPointAt(corner, point) == Acad::eOk) parts.Point(Flat(point));
    }
}

void AddFace(const AcDbFace& face, Parts& parts) {
    AcGePoint3d corners[4];
    for (Adesk::UInt16 i = 0; i < 4; ++i)
        if (face.getVertexAt(i, corners[i]) != Acad::eOk) return;
    for (Adesk::UInt16 i = 0; i < 4; ++i) {
        bool isVisible = true;
        if (face.isEdgeVisibleAt(i, isVisible) == Acad::eOk && isVisible)
            parts.Path({Flat(corners[i]), Flat(corners[(i + 1) % 4])});
    }
}

// The loops of a solid hatch, as chords, in one path each.
void AddSolidHatch(const AcDbHatch& hatch, Parts& parts) {
    AcDbVoidPtrArray loops;
    if (hatch.explode(loops) != Acad::eOk) return;
    parts.Begin(ScenePart::kFill);
    for (int i = 0; i < loops.length(); ++i) {
        const std::unique_ptr<AcDbEntity> curve(static_cast<AcDbEntity*>(loops[i]));
        std::vector<host::Piece> pieces;
        host::AppendOutline(*curve, pieces);
        for (const host::Piece& piece : pieces) {
            parts.Point(Flat(piece.first));
            parts.Point(Flat(piece.second));
        }
    }
}

void AddUnbounded(const host::UnboundedLine& line, bool isRay, Parts& parts) {
    const QPointF base = Flat(line.basePoint()), along = Flat(line.unitDir()) * kFar;
    parts.Path({isRay ? base : base - along, base + along});
}

// The arrow of a leader, of the usual shape: three times as long as wide.
void AddArrow(const AcDbLeader& leader, Parts& parts) {
    if (!leader.hasArrowHead() || leader.numVertices() < 2) return;
    const QPointF tip = Flat(leader.vertexAt(0)), next = Flat(leader.vertexAt(1));
    const double length = std::hypot(next.x() - tip.x(), next.y() - tip.y());
    if (length < 2.0 * kArrow) return;
    const QPointF back = (next - tip) * (kArrow / length);
    const QPointF side = QPointF(-back.y(), back.x()) / 6.0;
    parts.Begin(ScenePart::kFill);
    for (const QPointF& corner : {tip, tip + back + side, tip + back - side}) parts.Point(corner);
}

}  // namespace

void AppendCurves(const AcDbEntity& entity, SceneChunk& chunk) {
    Parts parts(chunk);
    QPointF u, v;
    if (const auto* const line = AcDbLine::cast(&entity)) {
        parts.Path({Flat(line->startPoint()), Flat(line->endPoint())});
    } else if (const auto* const arc = AcDbArc::cast(&entity)) {
        Axes(arc->normal(), arc->radius(), u, v);
        parts.Arc(Flat(arc->center()), u, v, arc->startAngle(), arc->totalAngle());
    } else if (const auto* const circle = AcDbCircle::cast(&entity)) {
        Axes(circle->normal(), circle->radius(), u, v);
        parts.Arc(Flat(circle->center()), u, v, 0.0, host::kTwoPi);
    } else if (const auto* const ellipse = AcDbEllipse::cast(&entity)) {
        double from = 0.0, to = host::kTwoPi;
        if (ellipse->getStartParam(from) != Acad::eOk || ellipse->getEndParam(to) != Acad::eOk)
            return;
        parts.Arc(Flat(ellipse->center()), Flat(ellipse->majorAxis()), Flat(ellipse->minorAxis()),
                  from, to - from);
    } else if (const auto* const polyline = AcDbPolyline::cast(&entity)) {
        AddPolyline(*polyline, parts);
    } else if (const auto* const solid = dynamic_cast<const host::FourCorners*>(&entity)) {
        AddFour(*solid, parts);
    } else if (const auto* const face = AcDbFace::cast(&entity)) {
        AddFace(*face, parts);
    } else if (const auto* const hatch = AcDbHatch::cast(&entity)) {
        AddSolidHatch(*hatch, parts);
    } else if (const auto* const point = AcDbPoint::cast(&entity)) {
        const QPointF at = Flat(point->position());
        parts.Path({at - QPointF(kPointMark, 0), at + QPointF(kPointMark, 0)});
        parts.Path({at - QPointF(0, kPointMark), at + QPointF(0, kPointMark)});
    } else if (const auto* const unbounded = dynamic_cast<const host::UnboundedLine*>(&entity)) {
        AddUnbounded(*unbounded, entity.isKindOf(AcDbRay::desc()), parts);
    } else {
        AddOutline(entity, parts);
        if (const auto* const leader = AcDbLeader::cast(&entity)) AddArrow(*leader, parts);
    }
}

}  // namespace app
