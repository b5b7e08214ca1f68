#include "host/db/hatch_curves.h"

#include <algorithm>
#include <cmath>

#include "dbelipse.h"
#include "dbents.h"
#include "dbpl.h"
#include "dbspline.h"
#include "host/db/access.h"
#include "host/db/entity_tools.h"
#include "host/base/angles.h"

namespace host {

namespace {

using Curves = std::vector<std::unique_ptr<AcDbCurve>>;

class Plotter {
public:
    explicit Plotter(const HatchData& data)
        : m_data(data), m_toWorld(AcGeMatrix3d::planeToWorld(data.normal)) {}

    AcGePoint3d Point(const AcGePoint2d& p) const {
        return m_toWorld * AcGePoint3d(p.x, p.y, m_data.elevation);
    }
    AcGeVector3d Vector(const AcGeVector2d& v) const {
        return m_toWorld * AcGeVector3d(v.x, v.y, 0.0);
    }

    std::unique_ptr<AcDbCurve> Polyline(const HatchLoop& loop) const {
        auto polyline = std::make_unique<AcDbPolyline>();
        Access::Normal(*polyline) = m_data.normal;
        Access::Elevation(*polyline) = m_data.elevation;
        Access::Closed(*polyline) = loop.closed;
        auto& vertices = Access::Vertices(*polyline);
        for (const HatchVertex& vertex : loop.vertices)
            vertices.push_back({vertex.point, vertex.bulge, -1.0, -1.0, 0});
        return polyline;
    }

    std::unique_ptr<AcDbCurve> Edge(const HatchEdge& edge) const {
        switch (edge.kind) {
            case HatchEdgeKind::kLine:
                return std::make_unique<AcDbLine>(Point(edge.start), Point(edge.end));
            case HatchEdgeKind::kArc:
                return Arc(edge);
            case HatchEdgeKind::kEllipse:
                return Ellipse(edge);
            case HatchEdgeKind::kSpline:
                return Spline(edge);
        }
        return nullptr;
    }

private:
    // Angles as an arc that runs counter-clockwise has them.
    static void Forward(const HatchEdge& edge, double& start, double& end) {
        start = edge.counterClockwise ? edge.startAngle : -edge.endAngle;
        end = edge.counterClockwise ? edge.endAngle : -edge.startAngle;
    }

    std::unique_ptr<AcDbCurve> Arc(const HatchEdge& edge) const {
        double start = 0.0, end = 0.0;
        Forward(edge, start, end);
        // A turn that is full but for rounding in the file is a circle.
        constexpr double kFullTurnTol = 1e-8;
        if (std::fabs(end - start) >= kTwoPi - kFullTurnTol)
            return std::make_unique<AcDbCircle>(Point(edge.center), m_data.normal, edge.radius);
        return std::make_unique<AcDbArc>(Point(edge.center), m_data.normal, edge.radius, start,
                                         end);
    }

    std::unique_ptr<AcDbCurve> Ellipse(const HatchEdge& edge) const {
        if (!(edge.major.length() > kZeroLength && edge.radius > 0.0)) return nullptr;
        double start = 0.0, end = 0.0;
        Forward(edge, start, end);
        return std::make_unique<AcDbEllipse>(Point(edge.center), m_data.normal, Vector(edge.major),
                                             edge.radius, start, end);
    }

    std::unique_ptr<AcDbCurve> Spline(const HatchEdge& edge) const {
        auto spline = std::make_unique<AcDbSpline>();
        Access::Degree(*spline) = edge.degree;
        Access::Knots(*spline) = edge.knots;
        Access::Weights(*spline) = edge.weights;
        Access::Periodic(*spline) = edge.periodic;
        for (const AcGePoint2d& p : edge.points) Access::Controls(*spline).push_back(Point(p));
        for (const AcGePoint2d& p : edge.fitPoints) Access::FitPoints(*spline).push_back(Point(p));
        return spline;
    }

    const HatchData& m_data;
    AcGeMatrix3d m_toWorld;
};

struct Chord {
    AcGePoint2d from, to;
};

// The boundary as chords in the plane of the hatch.
std::vector<Chord> ChordsOf(const HatchData& data, const Curves& boundary) {
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(data.normal);
    std::vector<Chord> chords;
    for (const auto& curve : boundary) {
        AcDbVoidPtrArray pieces;
        if (curve->explode(pieces) != Acad::eOk) pieces.append(curve->clone());
        for (int i = 0; i < pieces.length(); ++i) {
            const std::unique_ptr<AcDbCurve> piece(
                static_cast<AcDbCurve*>(static_cast<AcDbEntity*>(pieces[i])));
            AcGeCurve3d* raw = nullptr;
            AcDbExtents box;
            if (piece->getAcGeCurve(raw) != Acad::eOk || piece->getGeomExtents(box) != Acad::eOk)
                continue;
            const std::unique_ptr<AcGeCurve3d> geometry(raw);
            AcGeInterval interval;
            geometry->getInterval(interval);
            AcGePoint3dArray points;
            AcGeDoubleArray params;
            const double size = box.minPoint().distanceTo(box.maxPoint());
            if (!(size > 0.0)) continue;
            geometry->getSamplePoints(interval.lowerBound(), interval.upperBound(),
                                      size * kHatchChord, points, params);
            for (int k = 1; k < points.length(); ++k) {
                const AcGePoint3d a = toPlane * points[k - 1], b = toPlane * points[k];
                chords.push_back({AcGePoint2d(a.x, a.y), AcGePoint2d(b.x, b.y)});
            }
        }
    }
    return chords;
}

// One family of pattern lines across the chords.
class Family {
public:
    Family(const HatchPatternLine& line, const std::vector<Chord>& chords)
        : m_line(line),
          m_chords(chords),
          m_along(std::cos(line.angle), std::sin(line.angle)),
          m_across(-m_along.y, m_along.x) {
        m_pitch = m_line.offset.dotProduct(m_across);
        for (const Chord& chord : chords)
            for (const AcGePoint2d& p : {chord.from, chord.to}) {
                const double row = (p - line.base).dotProduct(m_across) / m_pitch;
                m_low = (std::min)(m_low, row);
                m_high = (std::max)(m_high, row);
            }
    }

    bool IsUsable() const {
        return std::fabs(m_pitch) > kZeroLength && m_high - m_low < kMaxPatternLines;
    }

    void Draw(const Plotter& plotter, Curves& out) const {
        if (!(m_low <= m_high)) return;  // no chords
        const double first = std::ceil(m_low);
        const int rows = static_cast<int>(std::floor(m_high) - first) + 1;
        for (int row = 0; row < rows; ++row) {
            const AcGePoint2d origin = m_line.base + m_line.offset * (first + row);
            const std::vector<double> cuts = Cuts(origin);
            for (size_t i = 0; i + 1 < cuts.size(); i += 2)
                Dashes(plotter, origin, cuts[i], cuts[i + 1], out);
        }
    }

private:
    // Where the row crosses the chords, rising along it. A chord counts at its lower end only, so
    // that corners are met once.
    std::vector<double> Cuts(const AcGePoint2d& origin) const {
        std::vector<double> cuts;
        for (const Chord& chord : m_chords) {
            const AcGeVector2d from = chord.from - origin, to = chord.to - origin;
            const double a = from.dotProduct(m_across), b = to.dotProduct(m_across);
            if ((a <= 0.0) == (b <= 0.0)) continue;
            const double t = a / (a - b);
            cuts.push_back(from.dotProduct(m_along) * (1.0 - t) + to.dotProduct(m_along) * t);
        }
        std::sort(cuts.begin(), cuts.end());
        return cuts;
    }

    void Dashes(const Plotter& plotter, const AcGePoint2d& origin, double from, double to,
                Curves& out) const {
        double period = 0.0;
        for (const double dash : m_line.dashes) period += std::fabs(dash);
        const auto draw = [&](double a, double b) {
            if (a <= b)
                out.push_back(std::make_unique<AcDbLine>(plotter.Point(origin + m_along * a),
                                                         plotter.Point(origin + m_along * b)));
        };
        if (!(period > 0.0) || (to - from) / period > kMaxPatternLines) {
            draw(from, to);
            return;
        }
        const double first = std::floor(from / period);
        const int periods = static_cast<int>(std::ceil(to / period) - first);
        for (int i = 0; i < periods; ++i) {
            double at = (first + i) * period;
            for (const double dash : m_line.dashes) {
                if (dash >= 0.0) draw((std::max)(at, from), (std::min)(at + dash, to));
                at += std::fabs(dash);
            }
        }
    }

    const HatchPatternLine& m_line;
    const std::vector<Chord>& m_chords;
    AcGeVector2d m_along, m_across;
    double m_pitch = 0.0;
    double m_low = HUGE_VAL;
    double m_high = -HUGE_VAL;
};

}  // namespace

Curves CurvesOf(const HatchData& data) {
    const Plotter plotter(data);
    Curves curves;
    for (const HatchLoop& loop : data.loops) {
        if (loop.IsPolyline()) {
            if (loop.vertices.size() > 1) curves.push_back(plotter.Polyline(loop));
            continue;
        }
        for (const HatchEdge& edge : loop.edges)
            if (std::unique_ptr<AcDbCurve> curve = plotter.Edge(edge))
                curves.push_back(std::move(curve));
    }
    return curves;
}

Curves PatternOf(const HatchData& data) {
    Curves boundary = CurvesOf(data);
    const std::vector<Chord> chords = ChordsOf(data, boundary);
    const Plotter plotter(data);
    Curves lines;
    for (const HatchPatternLine& line : data.patternLines) {
        const Family family(line, chords);
        if (!family.IsUsable()) return boundary;
        family.Draw(plotter, lines);
    }
    return lines;
}

}  // namespace host
