#include "host/ed/entity_properties.h"

#include <cmath>

#include "dbents.h"
#include "dbpl.h"
#include "dbsymutl.h"
#include "host/base/plain_number.h"
#include "host/db/line_weights.h"
#include "host/ed/point_text.h"
#include "host/ed/text_compare.h"

namespace host {
namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

using Status = Acad::ErrorStatus;

// A number of any size, and one above zero.
Status Number(const std::wstring& text, double& value) {
    return ReadWholeNumber(text, value) ? Acad::eOk : Acad::eInvalidInput;
}
Status Positive(const std::wstring& text, double& value) {
    return ReadWholeNumber(text, value) && value > 0.0 ? Acad::eOk : Acad::eInvalidInput;
}
Status Point(const std::wstring& text, const AcGePoint3d& former, AcGePoint3d& point) {
    point = former;
    if (!ParsePoint(text, former, point)) return Acad::eInvalidInput;
    if (text.find(L',') == text.rfind(L',')) point.z = former.z;
    return Acad::eOk;
}

std::wstring ColourText(const AcDbEntity& entity) {
    const AcCmEntityColor colour = entity.entityColor();
    if (colour.isByLayer()) return L"ByLayer";
    if (colour.isByBlock()) return L"ByBlock";
    if (!colour.isByColor()) return std::to_wstring(colour.colorIndex());
    return std::to_wstring(colour.red()) + L"," + std::to_wstring(colour.green()) + L"," +
           std::to_wstring(colour.blue());
}

Status SetColour(AcDbEntity& entity, const std::wstring& text) {
    if (EqualsNoCase(text.c_str(), L"BYLAYER")) return entity.setColorIndex(256);
    if (EqualsNoCase(text.c_str(), L"BYBLOCK")) return entity.setColorIndex(0);
    double number = 0.0;
    if (!ReadWholeNumber(text, number) || number < 1.0 || number > 255.0 ||
        number != std::floor(number))
        return Acad::eInvalidInput;
    return entity.setColorIndex(static_cast<Adesk::UInt16>(number));
}

std::wstring WeightText(const AcDbEntity& entity) {
    switch (const int weight = entity.lineWeight()) {
        case AcDb::kLnWtByLayer:
            return L"ByLayer";
        case AcDb::kLnWtByBlock:
            return L"ByBlock";
        case AcDb::kLnWtByLwDefault:
            return L"Default";
        default:
            return NumberText(weight / 100.0);
    }
}

Status SetWeight(AcDbEntity& entity, const std::wstring& text) {
    if (EqualsNoCase(text.c_str(), L"BYLAYER")) return entity.setLineWeight(AcDb::kLnWtByLayer);
    if (EqualsNoCase(text.c_str(), L"BYBLOCK")) return entity.setLineWeight(AcDb::kLnWtByBlock);
    if (EqualsNoCase(text.c_str(), L"DEFAULT")) return entity.setLineWeight(AcDb::kLnWtByLwDefault);
    double millimetres = 0.0;
    if (!ReadWholeNumber(text, millimetres) || millimetres < 0.0 || millimetres > 2.11)
        return Acad::eInvalidInput;
    return entity.setLineWeight(NearestLineWeight(millimetres));
}

std::wstring LayerText(const AcDbEntity& entity) {
    AcString name;
    return entity.layer(name) == Acad::eOk ? name.kACharPtr() : L"";
}
std::wstring LinetypeText(const AcDbEntity& entity) {
    AcString name;
    return entity.linetype(name) == Acad::eOk ? name.kACharPtr() : L"";
}

// A property of every entity.
struct Common {
    const wchar_t* name;
    std::wstring (*get)(const AcDbEntity&);
    Status (*set)(AcDbEntity&, const std::wstring&);
};
const Common kCommon[] = {
    {L"LAyer", LayerText,
     [](AcDbEntity& e, const std::wstring& v) { return e.setLayer(v.c_str()); }},
    {L"Color", ColourText, SetColour},
    {L"LType", LinetypeText,
     [](AcDbEntity& e, const std::wstring& v) { return e.setLinetype(v.c_str()); }},
    {L"LTScale", [](const AcDbEntity& e) { return NumberText(e.linetypeScale()); },
     [](AcDbEntity& e, const std::wstring& v) {
         double scale = 1.0;
         const Status es = Positive(v, scale);
         return es == Acad::eOk ? e.setLinetypeScale(scale) : es;
     }},
    {L"LWeight", WeightText, SetWeight},
};

// A property of one class.
template <class Entity>
struct Own {
    const wchar_t* name;
    std::wstring (*get)(const Entity&);
    Status (*set)(Entity&, const std::wstring&);  // null: only shown
};

template <class Entity, Status (Entity::*kSet)(double)>
Status SetPositive(Entity& entity, const std::wstring& text) {
    double value = 0.0;
    const Status es = Positive(text, value);
    return es == Acad::eOk ? (entity.*kSet)(value) : es;
}
template <class Entity, Status (Entity::*kSet)(double)>
Status SetDegrees(Entity& entity, const std::wstring& text) {
    double value = 0.0;
    const Status es = Number(text, value);
    return es == Acad::eOk ? (entity.*kSet)(value * kDegree) : es;
}
template <class Entity, AcGePoint3d (Entity::*kGet)() const,
          Status (Entity::*kSet)(const AcGePoint3d&)>
Status SetPlace(Entity& entity, const std::wstring& text) {
    AcGePoint3d point;
    const Status es = Point(text, (entity.*kGet)(), point);
    return es == Acad::eOk ? (entity.*kSet)(point) : es;
}

const Own<AcDbLine> kLine[] = {
    {L"Start", [](const AcDbLine& e) { return PointText(e.startPoint()); },
     SetPlace<AcDbLine, &AcDbLine::startPoint, &AcDbLine::setStartPoint>},
    {L"End", [](const AcDbLine& e) { return PointText(e.endPoint()); },
     SetPlace<AcDbLine, &AcDbLine::endPoint, &AcDbLine::setEndPoint>},
    {L"LENgth",
     [](const AcDbLine& e) { return NumberText(e.startPoint().distanceTo(e.endPoint())); },
     nullptr},
};
const Own<AcDbCircle> kCircle[] = {
    {L"CEnter", [](const AcDbCircle& e) { return PointText(e.center()); },
     SetPlace<AcDbCircle, &AcDbCircle::center, &AcDbCircle::setCenter>},
    {L"Radius", [](const AcDbCircle& e) { return NumberText(e.radius()); },
     SetPositive<AcDbCircle, &AcDbCircle::setRadius>},
};
const Own<AcDbArc> kArc[] = {
    {L"CEnter", [](const AcDbArc& e) { return PointText(e.center()); },
     SetPlace<AcDbArc, &AcDbArc::center, &AcDbArc::setCenter>},
    {L"Radius", [](const AcDbArc& e) { return NumberText(e.radius()); },
     SetPositive<AcDbArc, &AcDbArc::setRadius>},
    {L"STARTAngle", [](const AcDbArc& e) { return NumberText(e.startAngle() / kDegree); },
     SetDegrees<AcDbArc, &AcDbArc::setStartAngle>},
    {L"ENDAngle", [](const AcDbArc& e) { return NumberText(e.endAngle() / kDegree); },
     SetDegrees<AcDbArc, &AcDbArc::setEndAngle>},
    {L"LENgth", [](const AcDbArc& e) { return NumberText(e.length()); }, nullptr},
};
const Own<AcDbPolyline> kPolyline[] = {
    {L"Vertices", [](const AcDbPolyline& e) { return std::to_wstring(e.numVerts()); }, nullptr},
    {L"CLosed", [](const AcDbPolyline& e) { return std::wstring(e.isClosed() ? L"Yes" : L"No"); },
     [](AcDbPolyline& e, const std::wstring& v) {
         const bool isYes = EqualsNoCase(v.c_str(), L"YES") || EqualsNoCase(v.c_str(), L"Y");
         if (!isYes && !EqualsNoCase(v.c_str(), L"NO") && !EqualsNoCase(v.c_str(), L"N"))
             return Acad::eInvalidInput;
         e.setClosed(isYes);
         return Acad::eOk;
     }},
    {L"AREa",
     [](const AcDbPolyline& e) {
         double area = 0.0;
         return e.getArea(area) == Acad::eOk ? NumberText(area) : std::wstring();
     },
     nullptr},
};
const Own<AcDbText> kText[] = {
    {L"Text", [](const AcDbText& e) { return std::wstring(e.textStringConst()); },
     [](AcDbText& e, const std::wstring& v) { return e.setTextString(v.c_str()); }},
    {L"Height", [](const AcDbText& e) { return NumberText(e.height()); },
     SetPositive<AcDbText, &AcDbText::setHeight>},
    {L"ROtation", [](const AcDbText& e) { return NumberText(e.rotation() / kDegree); },
     SetDegrees<AcDbText, &AcDbText::setRotation>},
};
const Own<AcDbBlockReference> kReference[] = {
    {L"POsition", [](const AcDbBlockReference& e) { return PointText(e.position()); },
     SetPlace<AcDbBlockReference, &AcDbBlockReference::position, &AcDbBlockReference::setPosition>},
    {L"ROtation", [](const AcDbBlockReference& e) { return NumberText(e.rotation() / kDegree); },
     SetDegrees<AcDbBlockReference, &AcDbBlockReference::setRotation>},
};

// Calls visit(entity as its class, rows of the class) for the class that it is of.
template <class Visit>
void VisitOwn(AcDbEntity& entity, Visit visit) {
    if (auto* const line = AcDbLine::cast(&entity)) return visit(*line, kLine);
    if (auto* const circle = AcDbCircle::cast(&entity)) return visit(*circle, kCircle);
    if (auto* const arc = AcDbArc::cast(&entity)) return visit(*arc, kArc);
    if (auto* const polyline = AcDbPolyline::cast(&entity)) return visit(*polyline, kPolyline);
    if (auto* const text = AcDbText::cast(&entity)) return visit(*text, kText);
    if (auto* const block = AcDbBlockReference::cast(&entity)) return visit(*block, kReference);
}

template <class Rows>
void AppendNames(const Rows& rows, std::vector<std::wstring>& names) {
    for (const auto& row : rows) {
        bool isKnown = row.set == nullptr;
        for (const std::wstring& name : names) isKnown = isKnown || name == row.name;
        if (!isKnown) names.push_back(row.name);
    }
}

}  // namespace

std::vector<EntityProperty> PropertiesOf(const AcDbEntity& entity) {
    std::vector<EntityProperty> properties;
    for (const Common& row : kCommon) properties.push_back({row.name, row.get(entity), true});
    VisitOwn(const_cast<AcDbEntity&>(entity), [&](const auto& own, const auto& rows) {
        for (const auto& row : rows)
            properties.push_back({row.name, row.get(own), row.set != nullptr});
    });
    return properties;
}

Acad::ErrorStatus SetProperty(AcDbEntity& entity, const std::wstring& name,
                              const std::wstring& value) {
    for (const Common& row : kCommon)
        if (EqualsNoCase(row.name, name.c_str())) return row.set(entity, value);
    Status status = Acad::eNotApplicable;
    VisitOwn(entity, [&](auto& own, const auto& rows) {
        for (const auto& row : rows)
            if (row.set != nullptr && EqualsNoCase(row.name, name.c_str()))
                status = row.set(own, value);
    });
    return status;
}

std::vector<std::wstring> PropertyKeywords() {
    std::vector<std::wstring> names;
    AppendNames(kCommon, names);
    AppendNames(kLine, names);
    AppendNames(kCircle, names);
    AppendNames(kArc, names);
    AppendNames(kPolyline, names);
    AppendNames(kText, names);
    AppendNames(kReference, names);
    return names;
}

}  // namespace host
