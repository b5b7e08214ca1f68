// DIST, ID and LIST.
#include <cmath>

#include "acedads.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "dbpl.h"
#include "host/base/angles.h"
#include "host/ed/command_tools.h"
#include "host/ed/entity_query.h"
#include "host/ed/point_text.h"
#include "host/ed/session.h"

namespace host {
namespace {

std::wstring Degrees(double angle) { return NumberText(angle / kDegree) + L"\u00B0"; }

// What sets a class apart, one line each.
std::vector<std::wstring> Geometry(const AcDbEntity& entity) {
    std::vector<std::wstring> lines;
    if (const auto* const line = AcDbLine::cast(&entity)) {
        lines.push_back(L"from " + PointText(line->startPoint()) + L" to " +
                        PointText(line->endPoint()));
        const AcGeVector3d along = line->endPoint() - line->startPoint();
        lines.push_back(L"length " + NumberText(along.length()) + L", angle " +
                        Degrees(std::atan2(along.y, along.x)));
    } else if (const auto* const arc = AcDbArc::cast(&entity)) {
        lines.push_back(L"center " + PointText(arc->center()) + L", radius " +
                        NumberText(arc->radius()));
        lines.push_back(L"start angle " + Degrees(arc->startAngle()) + L", end angle " +
                        Degrees(arc->endAngle()) + L", length " + NumberText(arc->length()));
    } else if (const auto* const circle = AcDbCircle::cast(&entity)) {
        lines.push_back(L"center " + PointText(circle->center()) + L", radius " +
                        NumberText(circle->radius()) + L", diameter " +
                        NumberText(2 * circle->radius()));
    } else if (const auto* const polyline = AcDbPolyline::cast(&entity)) {
        double area = 0.0, end = 0.0, length = 0.0;
        std::wstring said = std::to_wstring(polyline->numVerts()) + L" vertices, " +
                            (polyline->isClosed() ? L"closed" : L"open");
        if (polyline->getEndParam(end) == Acad::eOk &&
            polyline->getDistAtParam(end, length) == Acad::eOk)
            said += L", length " + NumberText(length);
        if (polyline->getArea(area) == Acad::eOk) said += L", area " + NumberText(area);
        lines.push_back(said);
    } else if (const auto* const text = AcDbText::cast(&entity)) {
        lines.push_back(L"\"" + std::wstring(text->textStringConst()) + L"\" at " +
                        PointText(text->position()) + L", height " + NumberText(text->height()));
    } else if (const auto* const block = AcDbBlockReference::cast(&entity)) {
        lines.push_back(L"at " + PointText(block->position()));
    }
    return lines;
}

void Describe(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) return;
    AcString layer, linetype;
    if (entity->layer(layer) != Acad::eOk || entity->linetype(linetype) != Acad::eOk) return;
    ACHAR handle[17];
    entity->objectId().handle().getIntoAsciiBuffer(handle);
    const ACHAR* const name = entity->isA()->dxfName();
    Say(std::wstring(name == nullptr ? entity->isA()->name() : name) + L"  layer " +
        layer.kACharPtr() + L"  color " + std::to_wstring(entity->colorIndex()) + L"  linetype " +
        linetype.kACharPtr() + L"  handle " + handle);
    for (const std::wstring& line : Geometry(*entity)) Say(L"    " + line);
    AcDbExtents box;
    if (entity->getGeomExtents(box) == Acad::eOk)
        Say(L"    from " + PointText(box.minPoint()) + L" to " + PointText(box.maxPoint()) + L", " +
            NumberText(box.maxPoint().x - box.minPoint().x) + L" x " +
            NumberText(box.maxPoint().y - box.minPoint().y));
}

}  // namespace

CommandEnd MeasureDistance(AcApDocument*) {
    const Answer from = AskPoint(L"\nSpecify first point: ");
    if (from.kind != Answer::kGiven) return CommandEnd::kCancelled;
    PointRequest request;
    request.base = &from.point;
    const Answer to = AskPoint(L"\nSpecify second point: ", request);
    if (to.kind != Answer::kGiven) return CommandEnd::kCancelled;
    const AcGeVector3d out = to.point - from.point;
    Say(L"Distance = " + NumberText(out.length()) + L",  Angle in XY Plane = " +
        Degrees(std::atan2(out.y, out.x)));
    Say(L"Delta X = " + NumberText(out.x) + L",  Delta Y = " + NumberText(out.y) +
        L",  Delta Z = " + NumberText(out.z));
    return CommandEnd::kEnded;
}

CommandEnd TellPoint(AcApDocument*) {
    const Answer at = AskPoint(L"\nSpecify point: ");
    if (at.kind != Answer::kGiven) return CommandEnd::kCancelled;
    Say(L"X = " + NumberText(at.point.x) + L"     Y = " + NumberText(at.point.y) + L"     Z = " +
        NumberText(at.point.z));
    return CommandEnd::kEnded;
}

CommandEnd ListEntities(AcApDocument* document) {
    SelectionSet entities = document->imp().pickFirst;
    if (entities.empty()) {
        ads_name set;
        if (acedSSGet(nullptr, nullptr, nullptr, nullptr, set) != RTNORM)
            return CommandEnd::kCancelled;
        entities = *FindSelectionSet(set);
        acedSSFree(set);
    }
    for (const AcDbObjectId id : entities) Describe(id);
    return CommandEnd::kEnded;
}

}  // namespace host
