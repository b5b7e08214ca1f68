#include "host/ed/outline.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "dbblkref.h"
#include "dbcurve.h"
#include "dbdim.h"
#include "dbents.h"
#include "dbpl.h"

namespace host {
namespace {

constexpr int kCurveSteps = 64;
// Block references in block references; a drawing that refers to itself must end somewhere.
constexpr int kMaxDepth = 32;

void AppendCurve(const AcDbCurve& curve, std::vector<Piece>& pieces) {
    double from = 0.0, to = 0.0;
    if (curve.getStartParam(from) != Acad::eOk || curve.getEndParam(to) != Acad::eOk) return;
    const int steps = curve.isA() == AcDbLine::desc() ? 1 : kCurveSteps;
    AcGePoint3d last;
    if (curve.getPointAtParam(from, last) != Acad::eOk) return;
    for (int i = 1; i <= steps; ++i) {
        AcGePoint3d next;
        const double param = i == steps ? to : from + (to - from) * i / steps;
        if (curve.getPointAtParam(param, next) != Acad::eOk) return;
        pieces.push_back({last, next});
        last = next;
    }
}

void AppendFrame(const AcDbEntity& entity, std::vector<Piece>& pieces) {
    AcDbExtents box;
    if (entity.getGeomExtents(box) != Acad::eOk) return;
    const AcGePoint3d a = box.minPoint(), c = box.maxPoint();
    const AcGePoint3d b(c.x, a.y, a.z), d(a.x, c.y, a.z);
    for (const Piece& piece : {Piece{a, b}, Piece{b, c}, Piece{c, d}, Piece{d, a}})
        pieces.push_back(piece);
}

bool IsCompound(const AcDbEntity& entity) {
    return entity.isKindOf(AcDbBlockReference::desc()) || entity.isKindOf(AcDbDimension::desc()) ||
           entity.isKindOf(AcDbPolyline::desc()) || entity.isKindOf(AcDb2dPolyline::desc()) ||
           entity.isKindOf(AcDb3dPolyline::desc());
}

void Append(const AcDbEntity& entity, std::vector<Piece>& pieces, int depth) {
    AcDbVoidPtrArray parts;
    if (depth < kMaxDepth && IsCompound(entity) && entity.explode(parts) == Acad::eOk) {
        for (int i = 0; i < parts.length(); ++i) {
            const std::unique_ptr<AcDbEntity> part(static_cast<AcDbEntity*>(parts[i]));
            Append(*part, pieces, depth + 1);
        }
    } else if (const AcDbCurve* curve = AcDbCurve::cast(&entity)) {
        AppendCurve(*curve, pieces);
    } else {
        AppendFrame(entity, pieces);
    }
}

}  // namespace

void AppendOutline(const AcDbEntity& entity, std::vector<Piece>& pieces) {
    Append(entity, pieces, 0);
}

double DistanceToPiece(const AcGePoint3d& point, const Piece& piece) {
    const double dx = piece.second.x - piece.first.x, dy = piece.second.y - piece.first.y;
    const double px = point.x - piece.first.x, py = point.y - piece.first.y;
    const double square = dx * dx + dy * dy;
    const double t = square == 0.0 ? 0.0 : (std::clamp)((px * dx + py * dy) / square, 0.0, 1.0);
    return std::hypot(px - t * dx, py - t * dy);
}

bool MeetsRectangle(const Piece& piece, const AcGePoint3d& min, const AcGePoint3d& max) {
    // Clips the piece to the rectangle, one border after the other (Liang and Barsky, 1984).
    const double dx = piece.second.x - piece.first.x, dy = piece.second.y - piece.first.y;
    const double slope[4] = {-dx, dx, -dy, dy};
    const double room[4] = {piece.first.x - min.x, max.x - piece.first.x, piece.first.y - min.y,
                            max.y - piece.first.y};
    double from = 0.0, to = 1.0;
    for (int i = 0; i < 4; ++i) {
        if (slope[i] == 0.0) {
            if (room[i] < 0.0) return false;
        } else if (slope[i] < 0.0) {
            from = (std::max)(from, room[i] / slope[i]);
        } else {
            to = (std::min)(to, room[i] / slope[i]);
        }
    }
    return from <= to;
}

}  // namespace host
