// A small drawing, shapes as one line of text, and the checks that every test of the database
// wants.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "arxHeaders.h"

namespace test {

constexpr double kPi = 3.14159265358979323846;

#define EXPECT_OK(expression) EXPECT_EQ(Acad::eOk, (expression))
#define ASSERT_OK(expression) ASSERT_EQ(Acad::eOk, (expression))

// So that a failure shows the status by name.
inline std::string NameOf(Acad::ErrorStatus es) {
    std::string name;
    for (const ACHAR* at = acadErrorStatusText(es); *at != 0; ++at) name += static_cast<char>(*at);
    return name;
}

// A side database that is the working one while the test runs.
class DbTest : public ::testing::Test {
protected:
    DbTest() { acdbHostApplicationServices()->setWorkingDatabase(&db); }
    ~DbTest() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    AcDbObjectId ModelSpace() { return acdbSymUtil()->blockModelSpaceId(&db); }

    // Appends to model space, or to another block, and closes.
    AcDbObjectId Add(AcDbEntity* entity, AcDbObjectId block = AcDbObjectId()) {
        AcDbObjectId id;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_OK(acdbOpenObject(space, block.isNull() ? ModelSpace() : block, AcDb::kForWrite));
        EXPECT_OK(space->appendAcDbEntity(id, entity));
        EXPECT_OK(space->close());
        EXPECT_OK(entity->close());
        return id;
    }

    AcDbObjectId AddLayer(const ACHAR* name) {
        AcDbLayerTablePointer table(db.layerTableId(), AcDb::kForWrite);
        auto* record = new AcDbLayerTableRecord;
        EXPECT_OK(record->setName(name));
        AcDbObjectId id;
        EXPECT_OK(table->add(id, record));
        EXPECT_OK(record->close());
        return id;
    }

    AcDbObjectId AddBlock(const ACHAR* name, const AcGePoint3d& origin = AcGePoint3d()) {
        AcDbBlockTablePointer table(db.blockTableId(), AcDb::kForWrite);
        auto* record = new AcDbBlockTableRecord;
        EXPECT_OK(record->setName(name));
        EXPECT_OK(record->setOrigin(origin));
        AcDbObjectId id;
        EXPECT_OK(table->add(id, record));
        EXPECT_OK(record->close());
        return id;
    }

    void Erase(AcDbObjectId id) {
        AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
        ASSERT_OK(object.openStatus());
        EXPECT_OK(object->erase());
    }

    std::vector<AcDbObjectId> Entities(bool skipDeleted = true) {
        std::vector<AcDbObjectId> ids;
        AcDbBlockTableRecordPointer space(ModelSpace(), AcDb::kForRead);
        AcDbBlockTableRecordIterator* made = nullptr;
        EXPECT_OK(space->newIterator(made, true, skipDeleted));
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
        for (; !it->done(); it->step(true, skipDeleted)) {
            AcDbObjectId id;
            EXPECT_OK(it->getEntityId(id));
            ids.push_back(id);
        }
        return ids;
    }

    AcDbDatabase db{true, true};
};

inline std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", std::fabs(value) < 1e-9 ? 0.0 : value);
    return text;
}

inline std::string Show(const AcGePoint3d& p) {
    std::string text = Number(p.x) + "," + Number(p.y);
    if (std::fabs(p.z) > 1e-9) text += "," + Number(p.z);
    return text;
}

inline double Degrees(double angle) { return angle * 180.0 / kPi; }

// "L 0,0 4,0", "A 0,0 r2 0..90 -z" (centre, radius, OCS angles in degrees, normal when it is not
// +z), "C 0,0 r2", "E 0,0 2,0 ratio0.5 0..360", others by their class name.
inline std::string Show(const AcDbEntity& entity) {
    if (const AcDbLine* line = AcDbLine::cast(&entity))
        return "L " + Show(line->startPoint()) + " " + Show(line->endPoint());
    if (const AcDbArc* arc = AcDbArc::cast(&entity))
        return "A " + Show(arc->center()) + " r" + Number(arc->radius()) + " " +
               Number(Degrees(arc->startAngle())) + ".." + Number(Degrees(arc->endAngle())) +
               (arc->normal().z < 0 ? " -z" : "");
    if (const AcDbCircle* circle = AcDbCircle::cast(&entity))
        return "C " + Show(circle->center()) + " r" + Number(circle->radius());
    if (const AcDbEllipse* ellipse = AcDbEllipse::cast(&entity))
        return "E " + Show(ellipse->center()) + " " + Number(ellipse->majorAxis().length()) + "x" +
               Number(ellipse->minorAxis().length());
    std::string name;
    for (const ACHAR* at = entity.isA()->name(); *at != 0; ++at) name += static_cast<char>(*at);
    return name;
}

// The pieces of an exploded entity; deletes them at the end.
class Pieces {
public:
    explicit Pieces(const AcDbEntity& entity) : m_status(entity.explode(m_pieces)) {}
    Pieces(const Pieces&) = delete;
    Pieces& operator=(const Pieces&) = delete;
    ~Pieces() {
        for (int i = 0; i < m_pieces.length(); ++i) delete &(*this)[i];
    }
    Acad::ErrorStatus Status() const { return m_status; }
    int Count() const { return m_pieces.length(); }
    AcDbEntity& operator[](int i) const { return *static_cast<AcDbEntity*>(m_pieces[i]); }

private:
    AcDbVoidPtrArray m_pieces;
    Acad::ErrorStatus m_status;
};

inline std::string Show(const Pieces& pieces) {
    std::string text = pieces.Status() == Acad::eOk ? "" : NameOf(pieces.Status());
    for (int i = 0; i < pieces.Count(); ++i) text += (i > 0 ? " | " : "") + Show(pieces[i]);
    return text;
}

// "0,0 4,0(0.5) 4,4": vertices, bulges in brackets.
inline std::unique_ptr<AcDbPolyline> Polyline(const std::string& text, bool closed = false) {
    auto polyline = std::make_unique<AcDbPolyline>();
    std::istringstream in(text);
    std::string word;
    while (in >> word) {
        double x = 0.0, y = 0.0, bulge = 0.0;
        std::sscanf(word.c_str(), "%lf,%lf(%lf", &x, &y, &bulge);
        EXPECT_OK(polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(x, y), bulge));
    }
    polyline->setClosed(closed);
    return polyline;
}

inline AcDbExtents BoxOf(const AcDbEntity& entity) {
    AcDbExtents box;
    EXPECT_OK(entity.getGeomExtents(box));
    return box;
}

inline void ExpectSameBox(const AcDbExtents& a, const AcDbExtents& b, double tol) {
    EXPECT_LE(a.minPoint().distanceTo(b.minPoint()), tol)
        << Show(a.minPoint()) << " and " << Show(b.minPoint());
    EXPECT_LE(a.maxPoint().distanceTo(b.maxPoint()), tol)
        << Show(a.maxPoint()) << " and " << Show(b.maxPoint());
}

// Random numbers and shapes; the seed is printed by the failing test's trace.
class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    double Real(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    AcGePoint3d Point(double size = 10.0) {
        return AcGePoint3d(Real(-size, size), Real(-size, size), Real(-size, size));
    }
    AcGeVector3d Direction() { return (Point() - AcGePoint3d()).normal(); }

private:
    std::mt19937 m_engine;
};

}  // namespace test
