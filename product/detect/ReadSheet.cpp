#include "product/detect/ReadSheet.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "DrawnShape.h"
#include "DrawnWalk.h"
#include "EncircleLayers.h"
#include "product/base/Text.h"

namespace product::detect {
namespace {

constexpr double kChordAngle = 0.17;  // radians that one chord of an arc turns at most

// The points of a stroke from its curves.
void AddChords(Stroke& stroke) {
    const plane::Point& from = stroke.curves.front().from;
    stroke.points.push_back({from.x, from.y});
    for (const plane::Curve& curve : stroke.curves) {
        const double turns = std::ceil(std::abs(curve.Sweep()) / kChordAngle);
        // Even, so that an arc's middle is one of its points.
        const int steps = curve.IsArc() ? 2 * std::max(1, static_cast<int>(turns / 2 + 0.5)) : 1;
        for (int k = 1; k <= steps; ++k) {
            const plane::Point p = plane::PointAt(curve, static_cast<double>(k) / steps);
            stroke.points.push_back({p.x, p.y});
        }
    }
}

class Reader {
public:
    Reader(AcDbDatabase& database, double tolerance, const ItemFilter& takes, ReadResult& out)
        : m_walk(&database), m_tolerance(tolerance), m_takes(takes), m_out(out) {}

    void Read(const AcArray<AcDbObjectId>& ids) {
        m_walk.Walk(ids, [this](const SDrawnItem& item) { Take(item); });
        for (const SDrawnFault& fault : m_walk.Faults())
            m_out.faults.push_back(ToUtf8(fault.Text()));
        for (const Stroke& stroke : m_out.sheet.strokes) m_out.sheet.box.Add(BoxOf(stroke));
    }

private:
    void Take(const SDrawnItem& item) {
        if (!item.IsShown() || item.IsLocked() || IsIgnored(item.m_layerId)) return;
        if (m_takes && !m_takes(m_walk.LayerName(item.m_layerId), item.m_entity.isA())) return;
        SDrawnShape shape;
        const bool isDrawn = GetDrawnShape(item.m_entity, item.m_place, m_tolerance, shape);
        if (!shape.m_bSound && m_told.insert(item.m_id).second)
            m_out.faults.push_back(
                ToUtf8(SDrawnFault{SDrawnFault::Unsound, item.m_id, CString()}.Text()));
        if (isDrawn) {
            AddShape(item, shape);
        } else if (const auto* text = AcDbText::cast(&item.m_entity)) {
            AddText(item, ToUtf8(text->textStringConst()), text->height(), text->rotation());
        } else if (const auto* lines = AcDbMText::cast(&item.m_entity)) {
            AddText(item, Contents(*lines), lines->textHeight(), lines->rotation());
        } else if (const auto* solid = AcDbSolid::cast(&item.m_entity)) {
            AddHead(item, *solid);
        }
    }

    bool IsIgnored(const AcDbObjectId& layerId) {
        const CString& name = m_walk.LayerName(layerId);
        return name.CompareNoCase(kDimensionLayer) == 0 || name.CompareNoCase(kEnvelopeLayer) == 0;
    }

    int EntityOf(const AcDbObjectId& picked) {
        AcArray<AcDbObjectId>& entities = m_out.entities;
        if (entities.isEmpty() || entities.last() != picked) entities.append(picked);
        return entities.length() - 1;
    }

    StrokeKind KindOf(const AcDbObjectId& linetypeId) {
        switch (m_walk.Linetypes().Look(linetypeId).m_kind) {
            case ELinetypeKind::Continuous:
                return StrokeKind::Contour;
            case ELinetypeKind::Centre:
                return StrokeKind::Centre;
            default:
                return StrokeKind::Hidden;
        }
    }

    void AddShape(const SDrawnItem& item, const SDrawnShape& shape) {
        const StrokeKind kind = KindOf(item.m_linetypeId);
        const int entity = EntityOf(item.m_pickedId);
        for (size_t i = 0; i < shape.m_curves.size();) {
            // A round thing on its own and a spline are one stroke each.
            size_t end = i + 1;
            if (shape.m_bRound)
                end = shape.m_curves.size();
            else if (shape.m_smoothOf[i] != SDrawnShape::kExact)
                while (end < shape.m_curves.size() && shape.m_smoothOf[end] == shape.m_smoothOf[i])
                    ++end;
            Stroke stroke;
            stroke.kind = kind;
            stroke.entity = entity;
            stroke.isFullCircle = shape.m_bRound;
            stroke.curves.assign(shape.m_curves.begin() + static_cast<std::ptrdiff_t>(i),
                                 shape.m_curves.begin() + static_cast<std::ptrdiff_t>(end));
            const plane::Curve& first = stroke.curves.front();
            if (first.IsArc() && (shape.m_bRound || stroke.curves.size() == 1)) {
                stroke.isArc = true;
                stroke.centre = {first.centre.x, first.centre.y};
                stroke.radius = first.radius;
            }
            AddChords(stroke);
            if (std::all_of(stroke.points.begin(), stroke.points.end(),
                            [](Point p) { return std::isfinite(p.x) && std::isfinite(p.y); }))
                m_out.sheet.strokes.push_back(std::move(stroke));
            i = end;
        }
    }

    static std::string Contents(const AcDbMText& lines) {
        ACHAR* text = lines.contents();
        const std::string contents = text != nullptr ? ToUtf8(text) : std::string();
        acutDelString(text);
        return contents;
    }

    void AddText(const SDrawnItem& item, const std::string& value, double height, double rotation) {
        AcDbExtents extents;
        if (item.m_entity.getGeomExtents(extents) != Acad::eOk) return;
        const AcGePoint3d low = extents.minPoint(), high = extents.maxPoint();
        AcGePoint3d middle((low.x + high.x) / 2, (low.y + high.y) / 2, 0.0);
        AcGeVector3d along(std::cos(rotation), std::sin(rotation), 0.0);
        middle.transformBy(item.m_place);
        along.transformBy(item.m_place);
        NoteText text;
        text.at = {middle.x, middle.y};
        text.height = height * along.length();
        text.halfLength = std::hypot(high.x - low.x, high.y - low.y) / 2 * along.length();
        text.angle = std::atan2(along.y, along.x);
        text.isNumber = IsNumber(value);
        m_out.sheet.texts.push_back(text);
    }

    // Digits with the signs of diameters, radii, angles and tolerances around them.
    static bool IsNumber(const std::string& value) {
        const std::string plain = PlainText(value);
        size_t digits = 0, letters = 0;
        for (const char c : plain) {
            digits += c >= '0' && c <= '9';
            letters += (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        }
        return digits > 0 && letters <= 2 + digits / 2;
    }

    void AddHead(const SDrawnItem& item, const AcDbSolid& solid) {
        AcGePoint3d corner[4];
        for (Adesk::UInt16 i = 0; i < 4; ++i) {
            if (solid.getPointAt(i, corner[i]) != Acad::eOk) return;
            corner[i].transformBy(item.m_place);
        }
        // A triangle: two corners are one. The tip is the corner farthest from the other two.
        Point p[3];
        int count = 0;
        for (const AcGePoint3d& c : corner) {
            const Point q{c.x, c.y};
            const bool known =
                std::any_of(p, p + count, [&](Point k) { return Distance(k, q) == 0; });
            if (known) continue;
            if (count == 3) return;
            p[count++] = q;
        }
        if (count < 3) return;
        int tip = 0;
        double shortest = Distance(p[1], p[2]);
        for (int i = 1; i < 3; ++i)
            if (const double side = Distance(p[(i + 1) % 3], p[(i + 2) % 3]); side < shortest) {
                shortest = side;
                tip = i;
            }
        const Point &a = p[(tip + 1) % 3], &b = p[(tip + 2) % 3];
        m_out.sheet.heads.push_back({p[tip], {0.5 * (a.x + b.x), 0.5 * (a.y + b.y)}});
    }

    CDrawnWalk m_walk;
    double m_tolerance;
    const ItemFilter& m_takes;
    ReadResult& m_out;
    std::set<AcDbObjectId> m_told;  // in faults already: a block may show it many times
};

double SizeOf(const AcArray<AcDbObjectId>& ids) {
    Box box;
    for (int i = 0; i < ids.length(); ++i) {
        AcDbExtents extents;
        const AcDbObjectPointer<AcDbEntity> entity(ids[i], AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk || entity->getGeomExtents(extents) != Acad::eOk)
            continue;
        box.Add(Point{extents.minPoint().x, extents.minPoint().y});
        box.Add(Point{extents.maxPoint().x, extents.maxPoint().y});
    }
    return Diagonal(box);
}

}  // namespace

ReadResult ReadSheet(AcDbDatabase& database, const AcArray<AcDbObjectId>& ids, double tolerance,
                     const ItemFilter& takes) {
    ReadResult result;
    if (!(tolerance > 0)) tolerance = std::max(1e-5 * SizeOf(ids), 1e-9);
    Reader(database, tolerance, takes, result).Read(ids);
    return result;
}

Sheet SheetOf(const std::vector<plane::Curve>& curves) {
    Sheet sheet;
    for (const plane::Curve& curve : curves) {
        Stroke stroke;
        stroke.curves.push_back(curve);
        if (curve.IsArc()) {
            stroke.isArc = true;
            stroke.centre = {curve.centre.x, curve.centre.y};
            stroke.radius = curve.radius;
        }
        AddChords(stroke);
        sheet.box.Add(BoxOf(stroke));
        sheet.strokes.push_back(std::move(stroke));
    }
    return sheet;
}

}  // namespace product::detect
