#include "product/check/SourceCurves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <unordered_map>

#include "EncircleLayers.h"
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

// Chain lines: the names of the line type files that come with CAD systems, and their Chinese ones.
bool IsCentreName(const std::string& name) {
    static const std::vector<const char*> kWords = {"CENTER",    "CENTRE",    "DASHDOT",
                                                    "ISO04W100", "ISO08W100", "ISO10W100",
                                                    "中心",      "点划",      "点画"};
    return HoldsAny(Upper(name), kWords);
}

bool IsCentreLayer(const std::string& name) {
    static const std::vector<const char*> kWords = {"CENTER", "CENTRE", "AXIS", "中心", "轴线"};
    return HoldsAny(Upper(name), kWords);
}

bool IsContinuousName(const std::string& name) {
    const std::string upper = Upper(name);
    return upper == "CONTINUOUS" || upper == "BYLAYER" || upper == "BYBLOCK";
}

class Walker {
public:
    explicit Walker(const std::function<void(const SourceCurve&)>& use) : m_use(use) {}

    void Walk(const AcDbObjectId& id, int depth) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) return;
        m_picked = id;
        Walk(*entity.object(), depth);
    }

private:
    struct Layer {
        std::string name;
        bool isIgnored = false;
        CurveKind kind = CurveKind::Contour;  // of what takes its line type from the layer
    };

    void Walk(const AcDbEntity& entity, int depth) {
        const bool isBlock = entity.isKindOf(AcDbBlockReference::desc());
        if (isBlock && depth == 0) return;
        if (isBlock || entity.isKindOf(AcDb2dPolyline::desc()) ||
            entity.isKindOf(AcDb3dPolyline::desc())) {
            WalkPieces(entity, depth - (isBlock ? 1 : 0));
            return;
        }
        const auto* curve = AcDbCurve::cast(&entity);
        if (curve == nullptr || entity.isKindOf(AcDbLeader::desc()) ||
            entity.isKindOf(AcDbRay::desc()) || entity.isKindOf(AcDbXline::desc()))
            return;
        const Layer& layer = LayerOf(entity.layerId());
        m_use({*curve, KindOf(*curve, layer), layer.name, m_picked});
    }

    void WalkPieces(const AcDbEntity& whole, int depth) {
        AcDbVoidPtrArray made;
        if (whole.explode(made) != Acad::eOk) return;
        std::vector<std::unique_ptr<AcDbEntity>> pieces;
        for (int i = 0; i < made.length(); ++i)
            pieces.emplace_back(static_cast<AcDbEntity*>(made[i]));
        for (const auto& piece : pieces) Walk(*piece, depth);
    }

    CurveKind KindOf(const AcDbCurve& curve, const Layer& layer) {
        if (layer.isIgnored) return CurveKind::Ignored;
        const AcDbObjectId byLayer =
            curve.database() != nullptr
                ? curve.database()->byLayerLinetype()
                : acdbHostApplicationServices()->workingDatabase()->byLayerLinetype();
        const CurveKind kind =
            curve.linetypeId() == byLayer ? layer.kind : KindOfLinetype(curve.linetypeId());
        if (kind != CurveKind::Contour) return kind;
        const bool isRound = curve.isKindOf(AcDbCircle::desc()) ||
                             (curve.isKindOf(AcDbEllipse::desc()) && curve.isClosed());
        return isRound ? CurveKind::Round : CurveKind::Contour;
    }

    static CurveKind KindOfLinetype(const AcDbObjectId& linetypeId) {
        AcString name;
        if (acdbSymUtil()->getSymbolName(name, linetypeId) != Acad::eOk) return CurveKind::Contour;
        const std::string text = ToUtf8(name);
        if (IsCentreName(text)) return CurveKind::Centre;
        return IsContinuousName(text) ? CurveKind::Contour : CurveKind::Dashed;
    }

    const Layer& LayerOf(const AcDbObjectId& layerId) {
        const auto [at, isNew] = m_layers.try_emplace(layerId);
        if (!isNew) return at->second;
        Layer& layer = at->second;
        AcDbLayerTableRecordPointer record(layerId, AcDb::kForRead);
        AcString name;
        if (record.openStatus() != Acad::eOk || record->getName(name) != Acad::eOk) return layer;
        layer.name = ToUtf8(name);
        layer.isIgnored =
            name.compareNoCase(kDimensionLayer) == 0 || name.compareNoCase(kEnvelopeLayer) == 0;
        layer.kind = KindOfLinetype(record->linetypeObjectId());
        return layer;
    }

    const std::function<void(const SourceCurve&)>& m_use;
    AcDbObjectId m_picked;
    std::unordered_map<AcDbObjectId, Layer> m_layers;
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
        const Circle circle = CircleOf(from, to);
        const double start = std::atan2(from.y - circle.centre.y, from.x - circle.centre.x);
        AppendArc(circle.centre, circle.radius, start, Sweep(from.bulge), tolerance, points);
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

void ForEachCurve(const AcArray<AcDbObjectId>& ids, int depth,
                  const std::function<void(const SourceCurve&)>& use) {
    Walker walker(use);
    for (int i = 0; i < ids.length(); ++i) walker.Walk(ids[i], depth);
}

std::optional<Point> FindAxis(const AcArray<AcDbObjectId>& ids) {
    for (const int depth : {0, kAnyDepth}) {
        AxisSearch search;
        ForEachCurve(ids, depth, [&](const SourceCurve& source) { search.Look(source); });
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
