// Drawings in a line of text, and what is in a drawing as text.
//
// Entities are separated by "|". A word begins with the type letter, then, each optional, "@" and a
// layer, "%" and a line type (ByLayer without). Layers and line types are made when first named;
// TestDrawing::Layer() gives a layer its properties before.
//   L x,y x,y                 line
//   A x,y r a0 a1 [m]         arc, degrees counter-clockwise; m: stored with the normal (0,0,-1)
//   P x,y(b) x,y ... [c]      light polyline with bulges, c: closed
//   H x,y(b) x,y ... [c]      heavy 2D polyline       Q x,y,z ... [c]   3D polyline
//   C x,y r                   circle
//   E x,y mx,my ratio a0 a1   elliptical arc, degrees of its parameter
//   S x,y x,y x,y x,y         Bezier curve as a spline
//   T x,y word                text
//   I name x,y [s | sx,sy] [rotation]          block reference
//   M name x,y rows,columns dy,dx              array insert
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "arxHeaders.h"

namespace test {

constexpr double kDegree = 3.14159265358979323846 / 180;

inline std::wstring Widen(const std::string& text) { return {text.begin(), text.end()}; }

inline std::string Narrow(const ACHAR* text) {
    std::string out;
    for (; *text != 0; ++text) out += *text < 128 ? static_cast<char>(*text) : '?';
    return out;
}

inline void Check(Acad::ErrorStatus es) { ASSERT_EQ(Acad::eOk, es) << "in the test's own drawing"; }

inline std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, separator);) {
        if (part.find_first_not_of(' ') != std::string::npos) parts.push_back(part);
    }
    return parts;
}

// "1,2" or "1,2(0.5)"
struct Vertex {
    AcGePoint3d point;
    double bulge = 0.0;
};

inline Vertex ParseVertex(const std::string& text) {
    Vertex v;
    const std::vector<std::string> parts = Split(text.substr(0, text.find('(')), ',');
    v.point.set(std::stod(parts.at(0)), parts.size() > 1 ? std::stod(parts[1]) : 0.0,
                parts.size() > 2 ? std::stod(parts[2]) : 0.0);
    if (text.find('(') != std::string::npos) v.bulge = std::stod(text.substr(text.find('(') + 1));
    return v;
}

inline AcGePoint3d ParsePoint(const std::string& text) { return ParseVertex(text).point; }

// Six significant digits, no negative zero.
inline std::string Show(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.6g", std::fabs(value) < 5e-10 ? 0.0 : value);
    return text;
}

inline std::string Show(const AcGePoint3d& p) { return Show(p.x) + "," + Show(p.y); }

// "x,y(bulge) ..." with the bulges that are not 0.
inline std::string Show(const AcDbPolyline& polyline) {
    std::string text;
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d p;
        double bulge = 0.0;
        Check(polyline.getPointAt(i, p));
        Check(polyline.getBulgeAt(i, bulge));
        text += (i > 0 ? " " : "") + Show(p);
        if (std::fabs(bulge) > 1e-9) text += "(" + Show(bulge) + ")";
    }
    return text + (polyline.isClosed() ? " c" : "");
}

// A drawing of its own, or one that is there, the working database for its life.
class TestDrawing {
public:
    explicit TestDrawing(const std::string& entities = "")
        : m_own(std::make_unique<AcDbDatabase>(true, true)), m_db(*m_own) {
        m_former = acdbHostApplicationServices()->workingDatabase();
        acdbHostApplicationServices()->setWorkingDatabase(&m_db);
        Add(entities);
    }
    TestDrawing(AcDbDatabase& db, const std::string& entities) : m_db(db) {
        m_former = acdbHostApplicationServices()->workingDatabase();
        acdbHostApplicationServices()->setWorkingDatabase(&m_db);
        Add(entities);
    }
    ~TestDrawing() { acdbHostApplicationServices()->setWorkingDatabase(m_former); }
    TestDrawing(const TestDrawing&) = delete;
    TestDrawing& operator=(const TestDrawing&) = delete;

    AcDbDatabase& db() { return m_db; }
    // What Add() made, in order.
    const AcDbObjectIdArray& ids() const { return m_ids; }

    // flags: "lock", "freeze", "off", in any combination.
    TestDrawing& Layer(const std::string& name, const std::string& linetype = "",
                       const std::string& flags = "") {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(LayerId(Widen(name)), AcDb::kForWrite);
        if (!linetype.empty()) Check(layer->setLinetypeObjectId(LinetypeId(Widen(linetype))));
        layer->setIsLocked(flags.find("lock") != std::string::npos);
        layer->setIsOff(flags.find("off") != std::string::npos);
        if (flags.find("freeze") != std::string::npos) Check(layer->setIsFrozen(true));
        return *this;
    }

    // Adds entities to model space.
    TestDrawing& Add(const std::string& entities) {
        AddTo(acdbSymUtil()->blockModelSpaceId(&m_db), entities, &m_ids);
        return *this;
    }

    // Defines a block; its entities are not among ids().
    TestDrawing& Block(const std::string& name, const std::string& entities) {
        AcDbObjectPointer<AcDbBlockTable> table(m_db.blockTableId(), AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        Check(record->setName(Widen(name).c_str()));
        AcDbObjectId id;
        Check(table->add(id, record));
        Check(record->close());
        Check(table.close());
        AddTo(id, entities, nullptr);
        return *this;
    }

    AcDbObjectId LayerId(const std::wstring& name) {
        return FindOrAdd<AcDbLayerTable, AcDbLayerTableRecord>(m_db.layerTableId(), name);
    }
    AcDbObjectId LinetypeId(const std::wstring& name) {
        return FindOrAdd<AcDbLinetypeTable, AcDbLinetypeTableRecord>(m_db.linetypeTableId(), name);
    }

    // Every entity of model space, one a line: handle, class, layer, line type, box.
    std::string Dump() {
        std::string text;
        AcDbObjectPointer<AcDbBlockTableRecord> block(acdbSymUtil()->blockModelSpaceId(&m_db),
                                                      AcDb::kForRead);
        AcDbBlockTableRecordIterator* raw = nullptr;
        Check(block->newIterator(raw));
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
        for (; !it->done(); it->step()) {
            AcDbObjectId id;
            Check(it->getEntityId(id));
            AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            text += DumpOne(*entity) + "\n";
        }
        return text;
    }

private:
    template <class Table, class Record>
    AcDbObjectId FindOrAdd(AcDbObjectId tableId, const std::wstring& name) {
        AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
        AcDbObjectId id;
        if (table->getAt(name.c_str(), id) == Acad::eOk) return id;
        auto* record = new Record;
        Check(record->setName(name.c_str()));
        Check(table->add(id, record));
        Check(record->close());
        return id;
    }

    static std::string DumpOne(const AcDbEntity& entity) {
        ACHAR handle[AcDbHandle::kStrSiz] = {};
        entity.objectId().handle().getIntoAsciiBuffer(handle, AcDbHandle::kStrSiz);
        AcString layer;
        AcString linetype;
        Check(entity.layer(layer));
        Check(entity.linetype(linetype));
        AcDbExtents box;
        static_cast<void>(entity.getGeomExtents(box));  // texts and the like may have none
        return Narrow(handle) + " " + Narrow(entity.isA()->name()) + " " + Narrow(layer) + " " +
               Narrow(linetype) + " " + Show(box.minPoint()) + " " + Show(box.maxPoint());
    }

    void AddTo(AcDbObjectId ownerId, const std::string& entities, AcDbObjectIdArray* ids) {
        for (const std::string& text : Split(entities, '|')) {
            const std::vector<std::string> words = Split(text, ' ');
            AcDbEntity* entity = Make(words);
            ASSERT_NE(nullptr, entity) << text;
            const std::string& head = words[0];
            const size_t layerAt = head.find('@');
            const size_t typeAt = head.find('%');
            if (layerAt != std::string::npos) {
                const size_t length = typeAt == std::string::npos ? typeAt : typeAt - layerAt - 1;
                Check(entity->setLayer(LayerId(Widen(head.substr(layerAt + 1, length)))));
            }
            if (typeAt != std::string::npos) {
                Check(entity->setLinetype(LinetypeId(Widen(head.substr(typeAt + 1)))));
            }
            AcDbObjectPointer<AcDbBlockTableRecord> owner(ownerId, AcDb::kForWrite);
            AcDbObjectId id;
            Check(owner->appendAcDbEntity(id, entity));
            Check(entity->close());
            if (ids != nullptr) ids->append(id);
        }
    }

    AcDbObjectId BlockId(const std::string& name) {
        AcDbObjectPointer<AcDbBlockTable> table(m_db.blockTableId(), AcDb::kForRead);
        AcDbObjectId id;
        Check(table->getAt(Widen(name).c_str(), id));
        return id;
    }

    AcDbEntity* Make(const std::vector<std::string>& words) {
        switch (words[0][0]) {
            case 'L':
                return new AcDbLine(ParsePoint(words.at(1)), ParsePoint(words.at(2)));
            case 'A':
                return MakeArc(words);
            case 'P':
            case 'H':
            case 'Q':
                return MakePolyline(words);
            case 'C':
                return new AcDbCircle(ParsePoint(words.at(1)), AcGeVector3d::kZAxis,
                                      std::stod(words.at(2)));
            case 'E':
                return new AcDbEllipse(ParsePoint(words.at(1)), AcGeVector3d::kZAxis,
                                       ParsePoint(words.at(2)).asVector(), std::stod(words.at(3)),
                                       std::stod(words.at(4)) * kDegree,
                                       std::stod(words.at(5)) * kDegree);
            case 'S':
                return MakeSpline(words);
            case 'T': {
                auto* text = new AcDbText;
                Check(text->setPosition(ParsePoint(words.at(1))));
                Check(text->setHeight(1.0));
                Check(text->setTextString(Widen(words.at(2)).c_str()));
                return text;
            }
            case 'I':
            case 'M':
                return MakeReference(words);
            default:
                return nullptr;
        }
    }

    static AcDbEntity* MakeArc(const std::vector<std::string>& words) {
        const AcGePoint3d centre = ParsePoint(words.at(1));
        const double radius = std::stod(words.at(2));
        const double start = std::stod(words.at(3)) * kDegree;
        const double end = std::stod(words.at(4)) * kDegree;
        if (words.size() < 6) return new AcDbArc(centre, radius, start, end);
        const double pi = 180 * kDegree;
        return new AcDbArc(centre, AcGeVector3d(0, 0, -1), radius, pi - end, pi - start);
    }

    static AcDbEntity* MakePolyline(const std::vector<std::string>& words) {
        const bool closed = words.back() == "c";
        AcGePoint3dArray points;
        AcGeDoubleArray bulges;
        auto* light = words[0][0] == 'P' ? new AcDbPolyline : nullptr;
        for (size_t i = 1; i < words.size() - (closed ? 1 : 0); ++i) {
            const Vertex v = ParseVertex(words[i]);
            points.append(v.point);
            bulges.append(v.bulge);
            if (light != nullptr) {
                Check(light->addVertexAt(static_cast<unsigned int>(i - 1),
                                         AcGePoint2d(v.point.x, v.point.y), v.bulge));
            }
        }
        if (light != nullptr) {
            light->setClosed(closed);
            return light;
        }
        if (words[0][0] == 'H') {
            return new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0, closed, 0, 0, &bulges);
        }
        return new AcDb3dPolyline(AcDb::k3dSimplePoly, points, closed);
    }

    static AcDbEntity* MakeSpline(const std::vector<std::string>& words) {
        AcGePoint3dArray controls;
        AcGeDoubleArray knots;
        for (size_t i = 1; i < words.size(); ++i) controls.append(ParsePoint(words[i]));
        const int count = controls.length();
        for (int i = 0; i < 2 * count; ++i) knots.append(i < count ? 0.0 : 1.0);
        return new AcDbSpline(count - 1, false, false, false, controls, knots, AcGeDoubleArray());
    }

    AcDbEntity* MakeReference(const std::vector<std::string>& words) {
        const AcDbObjectId block = BlockId(words.at(1));
        const AcGePoint3d at = ParsePoint(words.at(2));
        if (words[0][0] == 'M') {
            const AcGePoint3d counts = ParsePoint(words.at(3));
            const AcGePoint3d steps = ParsePoint(words.at(4));
            return new AcDbMInsertBlock(at, block, static_cast<Adesk::UInt16>(counts.y),
                                        static_cast<Adesk::UInt16>(counts.x), steps.y, steps.x);
        }
        auto* reference = new AcDbBlockReference(at, block);
        if (words.size() > 3) {
            const AcGePoint3d scale = ParsePoint(words[3]);
            const double y = words[3].find(',') == std::string::npos ? scale.x : scale.y;
            Check(reference->setScaleFactors(AcGeScale3d(scale.x, y, std::fabs(scale.x))));
        }
        if (words.size() > 4) Check(reference->setRotation(std::stod(words[4]) * kDegree));
        return reference;
    }

    std::unique_ptr<AcDbDatabase> m_own;
    AcDbDatabase& m_db;
    AcDbDatabase* m_former = nullptr;
    AcDbObjectIdArray m_ids;
};

}  // namespace test
