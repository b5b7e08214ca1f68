#include "product/check/SourceCurves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "DrawnWalk.h"
#include "EncircleLayers.h"
#include "product/base/Failure.h"
#include "product/base/Text.h"

namespace product {
namespace {

// How much a centre line may rise, of its length.
constexpr double kHorizontal = 1e-6;
// Steps along a curve that is neither line nor arc, between two of which it can hardly turn unseen.
constexpr double kLeastSteps = 32;

std::string Upper(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

bool HoldsAny(const std::string& text, const std::vector<const char*>& words) {
    return std::any_of(words.begin(), words.end(),
                       [&](const char* word) { return text.find(word) != std::string::npos; });
}

bool IsCentreLayer(const std::string& name) {
    static const std::vector<const char*> kWords = {"CENTER", "CENTRE", "AXIS", "中心", "轴线"};
    return HoldsAny(Upper(name), kWords);
}

bool IsIgnoredLayer(const CString& name) {
    return name.CompareNoCase(kDimensionLayer) == 0 || name.CompareNoCase(kEnvelopeLayer) == 0;
}

CurveKind KindOf(const AcDbCurve& curve, const SLinetype& linetype) {
    if (linetype.m_kind == ELinetypeKind::Centre) return CurveKind::Centre;
    if (!linetype.IsContinuous()) return CurveKind::Dashed;
    const bool isRound = curve.isKindOf(AcDbCircle::desc()) ||
                         (curve.isKindOf(AcDbEllipse::desc()) && curve.isClosed());
    return isRound ? CurveKind::Round : CurveKind::Contour;
}

// Hands on the curves of the items that a walk comes by.
class Hander {
public:
    Hander(CDrawnWalk& walk, const std::function<void(const SourceCurve&)>& use)
        : m_walk(walk), m_use(use) {}

    void Look(const SDrawnItem& item) {
        if (item.m_nDepth == 0) return Take(item.m_entity, item);
        // In its place, as exploding the blocks around it would leave it.
        AcDbEntity* made = nullptr;
        if (item.m_entity.getTransformedCopy(item.m_place, made) != Acad::eOk) return;
        const std::unique_ptr<AcDbEntity> copy(made);
        Take(*copy, item);
    }

private:
    void Take(const AcDbEntity& entity, const SDrawnItem& item) {
        if (entity.isKindOf(AcDb2dPolyline::desc()) || entity.isKindOf(AcDb3dPolyline::desc()))
            return TakePieces(entity, item);
        const auto* curve = AcDbCurve::cast(&entity);
        if (curve == nullptr || entity.isKindOf(AcDbLeader::desc()) ||
            entity.isKindOf(AcDbRay::desc()) || entity.isKindOf(AcDbXline::desc()))
            return;
        const CString& layer = m_walk.LayerName(item.m_layerId);
        const CurveKind kind = IsIgnoredLayer(layer)
                                   ? CurveKind::Ignored
                                   : KindOf(*curve, m_walk.Linetypes().Look(item.m_linetypeId));
        m_use({*curve, kind, ToUtf8(layer.GetString()), item.m_pickedId});
    }

    void TakePieces(const AcDbEntity& whole, const SDrawnItem& item) {
        AcDbVoidPtrArray made;
        if (whole.explode(made) != Acad::eOk) return;
        std::vector<std::unique_ptr<AcDbEntity>> pieces;
        for (int i = 0; i < made.length(); ++i)
            pieces.emplace_back(static_cast<AcDbEntity*>(made[i]));
        for (const auto& piece : pieces) Take(*piece, item);
    }

    CDrawnWalk& m_walk;
    const std::function<void(const SourceCurve&)>& m_use;
};

// The longest horizontal line of each kind so far.
class AxisSearch {
public:
    void Look(const SourceCurve& source) {
        if (source.kind == CurveKind::Ignored) return;
        const bool byType = source.kind == CurveKind::Centre;
        if (!byType && !IsCentreLayer(source.layer)) return;
        AcGePoint3d start, end;
        double parameter = 0;
        const bool isStraight =
            source.curve.isKindOf(AcDbLine::desc()) ||
            (source.curve.isKindOf(AcDbPolyline::desc()) && !source.curve.isClosed() &&
             source.curve.getEndParam(parameter) == Acad::eOk && parameter == 1 &&
             !AcDbPolyline::cast(&source.curve)->hasBulges());
        if (!isStraight || source.curve.getStartPoint(start) != Acad::eOk ||
            source.curve.getEndPoint(end) != Acad::eOk)
            return;
        const double length = std::abs(end.x - start.x);
        if (!(std::abs(end.y - start.y) <= kHorizontal * length)) return;
        Best& best = byType ? m_byType : m_byLayer;
        if (!(length > best.length)) return;
        best.length = length;
        best.middle = {(start.x + end.x) / 2, (start.y + end.y) / 2};
    }

    std::optional<Point> Found() const {
        for (const Best* best : {&m_byType, &m_byLayer})
            if (best->length > 0) return best->middle;
        return std::nullopt;
    }

private:
    struct Best {
        double length = 0;
        Point middle;
    };
    Best m_byType, m_byLayer;
};

void AppendArc(const Point& centre, double radius, double from, double sweep, double tolerance,
               std::vector<Point>& points) {
    const double step = 2 * std::acos(std::max(0.0, 1 - std::min(1.0, tolerance / radius)));
    const double wanted = std::ceil(std::abs(sweep) / std::max(step, 1e-3));
    const int steps = static_cast<int>(std::clamp(wanted, 1.0, double{kMostChords}));
    for (int i = points.empty() ? 0 : 1; i <= steps; ++i) {
        const double angle = from + sweep * i / steps;
        points.push_back(
            {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
    }
}

void AppendEdge(const Vertex& from, const Point& to, double tolerance, std::vector<Point>& points) {
    if (points.empty()) points.push_back({from.x, from.y});
    if (from.bulge != 0 && (from.x != to.x || from.y != to.y)) {
        const plane::Curve arc = plane::MakeCurve({from.x, from.y}, to, from.bulge);
        const double start = plane::AngleOf(arc.from - arc.centre);
        AppendArc(arc.centre, arc.radius, start, arc.Sweep(), tolerance, points);
        points.back() = to;
    } else {
        points.push_back(to);
    }
}

std::vector<Point> PolylineChords(const AcDbPolyline& polyline, double tolerance) {
    std::vector<Vertex> vertices(polyline.numVerts());
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        if (polyline.getPointAt(i, point) != Acad::eOk ||
            polyline.getBulgeAt(i, vertices[i].bulge) != Acad::eOk)
            return {};
        vertices[i].x = point.x;
        vertices[i].y = point.y;
        if (polyline.normal().z < 0) vertices[i].bulge = -vertices[i].bulge;
    }
    return ChordsOf(vertices, polyline.isClosed(), tolerance);
}

double DistanceToChord(const Point& p, const Point& a, const Point& b) {
    const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
    const double along =
        square > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / square, 0.0, 1.0) : 0;
    return std::hypot(p.x - a.x - along * dx, p.y - a.y - along * dy);
}

// Equal steps of the parameter; halved steps until no chord is far from its curve's middle.
std::vector<Point> SampledChords(const AcDbCurve& curve, double tolerance) {
    double from = 0, to = 0;
    if (curve.getStartParam(from) != Acad::eOk || curve.getEndParam(to) != Acad::eOk) return {};
    const auto at = [&](double parameter, Point& point) {
        AcGePoint3d found;
        if (curve.getPointAtParam(parameter, found) != Acad::eOk) return false;
        point = {found.x, found.y};
        return true;
    };
    struct Span {
        double from, to;
        Point start, end;
    };
    std::vector<Span> open;
    Point last;
    if (!at(from, last)) return {};
    std::vector<Point> points{last};
    for (double i = kLeastSteps; i >= 1; --i) {
        Span span{from + (to - from) * (i - 1) / kLeastSteps,
                  from + (to - from) * i / kLeastSteps,
                  {},
                  {}};
        if (!at(span.from, span.start) || !at(span.to, span.end)) return {};
        open.push_back(span);
    }
    while (!open.empty()) {
        const Span span = open.back();
        open.pop_back();
        const double middle = (span.from + span.to) / 2;
        Point point;
        if (!at(middle, point)) return {};
        if (DistanceToChord(point, span.start, span.end) <= tolerance ||
            points.size() + open.size() >= kMostChords) {
            points.push_back(span.end);
            continue;
        }
        open.push_back({middle, span.to, point, span.end});
        open.push_back({span.from, middle, span.start, point});
    }
    return points;
}

}  // namespace

void ForEachCurve(const AcArray<AcDbObjectId>& ids, bool intoBlocks,
                  const std::function<void(const SourceCurve&)>& use) {
    if (ids.isEmpty()) return;
    SDrawnOptions options;
    options.m_bIntoBlocks = intoBlocks;
    // What was picked counts, and the engine takes blocks apart whatever their layers show.
    options.m_bWithHidden = true;
    CDrawnWalk walk(ids[0].database(), options);
    Hander hander(walk, use);
    walk.Walk(ids, [&hander](const SDrawnItem& item) { hander.Look(item); });
    for (const SDrawnFault& fault : walk.Faults())
        if (fault.m_kind == SDrawnFault::TooMuch)
            throw Failure(Fault::NoResult, ToUtf8(fault.Text().GetString()));
}

std::optional<Point> FindAxis(const AcArray<AcDbObjectId>& ids) {
    for (const bool intoBlocks : {false, true}) {
        AxisSearch search;
        ForEachCurve(ids, intoBlocks, [&](const SourceCurve& source) { search.Look(source); });
        if (const auto found = search.Found()) return found;
    }
    return std::nullopt;
}

std::vector<Point> ChordsOf(const AcDbCurve& curve, double tolerance) {
    AcGePoint3d start, end;
    if (curve.isKindOf(AcDbLine::desc())) {
        if (curve.getStartPoint(start) != Acad::eOk || curve.getEndPoint(end) != Acad::eOk)
            return {};
        return {{start.x, start.y}, {end.x, end.y}};
    }
    if (const auto* polyline = AcDbPolyline::cast(&curve))
        return PolylineChords(*polyline, tolerance);
    return SampledChords(curve, tolerance);
}

std::vector<Point> ChordsOf(const std::vector<Vertex>& ring, bool closed, double tolerance) {
    std::vector<Point> points;
    const size_t edges = ring.empty() ? 0 : ring.size() - (closed ? 0 : 1);
    for (size_t i = 0; i < edges; ++i) {
        const Vertex& next = ring[(i + 1) % ring.size()];
        AppendEdge(ring[i], {next.x, next.y}, tolerance, points);
    }
    return points;
}

}  // namespace product
