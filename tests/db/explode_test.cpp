// What entities fall into.

#include <functional>

#include "db_test.h"
#include "dbray.h"

namespace test {
namespace {

class Explode : public DbTest {
protected:
    AcDbBlockReference* Insert(AcDbObjectId block, const AcGePoint3d& at = AcGePoint3d()) {
        return new AcDbBlockReference(at, block);
    }
    // Block of an outline, an arc and a circle.
    AcDbObjectId Part(const ACHAR* name) {
        const AcDbObjectId block = AddBlock(name);
        Add(new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(2, 1, 0)), block);
        Add(new AcDbArc(AcGePoint3d(1, 0, 0), 1.0, 0.0, kPi / 2), block);
        Add(new AcDbCircle(AcGePoint3d(3, 0, 0), AcGeVector3d::kZAxis, 0.5), block);
        return block;
    }
};

struct PolylineCase {
    const char* name;
    const char* vertices;
    bool closed;
    double normalZ;
    const char* pieces;
};

// Arcs are stored counter-clockwise about the polyline's normal whatever way the segment runs.
const PolylineCase kPolylines[] = {
    {"open", "0,0 4,0 4,2", false, 1, "L 0,0 4,0 | L 4,0 4,2"},
    {"closing segment last", "0,0 4,0 4,2", true, 1, "L 0,0 4,0 | L 4,0 4,2 | L 4,2 0,0"},
    {"half circle", "0,0(1) 4,0", false, 1, "A 2,0 r2 180..0"},
    {"half circle, clockwise", "0,0(-1) 4,0", false, 1, "A 2,0 r2 0..180"},
    {"quarter", "2,0(0.41421356237309503) 0,2", false, 1, "A 0,0 r2 0..90"},
    {"two half circles", "0,0(1) 4,0(1)", true, 1, "A 2,0 r2 180..0 | A 2,0 r2 0..180"},
    {"zero length", "1,1 1,1 2,1", false, 1, "L 1,1 1,1 | L 1,1 2,1"},
    {"seen from below", "0,0(1) 4,0", false, -1, "A -2,0 r2 180..0 -z"},
    {"single vertex", "1,1", false, 1, ""},
};

TEST_F(Explode, Polylines) {
    for (const PolylineCase& c : kPolylines) {
        SCOPED_TRACE(c.name);
        const auto polyline = Polyline(c.vertices, c.closed);
        EXPECT_OK(polyline->setNormal(AcGeVector3d(0, 0, c.normalZ)));
        EXPECT_EQ(c.pieces, Show(Pieces(*polyline)));
    }
}

TEST_F(Explode, HeavyPolylines) {
    AcGePoint3dArray vertices;
    AcGeDoubleArray bulges;
    for (const AcGePoint3d& p : {AcGePoint3d(0, 0, 9), AcGePoint3d(4, 0, 9), AcGePoint3d(4, 4, 9)})
        vertices.append(p);
    for (const double bulge : {1.0, 0.0, 0.0}) bulges.append(bulge);
    AcDb2dPolyline flat(AcDb::k2dSimplePoly, vertices, 3.0, true, 0, 0, &bulges);
    EXPECT_EQ("A 2,0,3 r2 180..0 | L 4,0,3 4,4,3 | L 4,4,3 0,0,3", Show(Pieces(flat)));
    // Of a splined one the fitted vertices are drawn, its frame is not.
    AcGePoint3dArray fitted;
    fitted.append(AcGePoint3d(0, 0, 0));
    fitted.append(AcGePoint3d(3, 1, 0));
    AcDb2dPolyline splined(AcDb::k2dQuadSplinePoly, vertices, 0.0, false, 0, 0, nullptr, &fitted);
    EXPECT_EQ("L 0,0 3,1", Show(Pieces(splined)));
    AcDb3dPolyline space(AcDb::k3dSimplePoly, vertices, false);
    EXPECT_EQ("L 0,0,9 4,0,9 | L 4,0,9 4,4,9", Show(Pieces(space)));
    // The same once it is in the drawing and its vertices are objects of their own.
    const AcDbObjectId id = Add(static_cast<AcDbEntity*>(static_cast<AcRxObject*>(flat.clone())));
    AcDbObjectPointer<AcDb2dPolyline> resident(id, AcDb::kForRead);
    EXPECT_EQ("A 2,0,3 r2 180..0 | L 4,0,3 4,4,3 | L 4,4,3 0,0,3", Show(Pieces(*resident)));
}

TEST_F(Explode, WhatHasNoPieces) {
    const std::unique_ptr<AcDbEntity> kWhole[] = {
        std::make_unique<AcDbLine>(),   std::make_unique<AcDbArc>(),
        std::make_unique<AcDbCircle>(), std::make_unique<AcDbEllipse>(),
        std::make_unique<AcDbSpline>(), std::make_unique<AcDbText>(),
        std::make_unique<AcDbPoint>(),  std::make_unique<AcDbXline>()};
    for (const auto& entity : kWhole) {
        const Pieces pieces(*entity);
        EXPECT_EQ(Acad::eNotApplicable, pieces.Status());
        EXPECT_EQ(0, pieces.Count());
    }
    AcDbRotatedDimension dimension;
    EXPECT_EQ(Acad::eCannotExplodeEntity, Pieces(dimension).Status());
}

struct InsertCase {
    const char* name;
    AcGePoint3d position;
    AcGeScale3d scale;
    double rotation;  // degrees
    const char* pieces;
};

const InsertCase kInserts[] = {
    {"as it is", {0, 0, 0}, {1, 1, 1}, 0, "L 0,0 2,1 | A 1,0 r1 0..90 | C 3,0 r0.5"},
    {"moved", {10, 5, 0}, {1, 1, 1}, 0, "L 10,5 12,6 | A 11,5 r1 0..90 | C 13,5 r0.5"},
    {"turned", {0, 0, 0}, {1, 1, 1}, 90, "L 0,0 -1,2 | A 0,1 r1 90..180 | C 0,3 r0.5"},
    {"scaled", {0, 0, 0}, {2, 2, 2}, 0, "L 0,0 4,2 | A 2,0 r2 0..90 | C 6,0 r1"},
    {"mirrored", {0, 0, 0}, {-1, 1, 1}, 0, "L 0,0 -2,1 | A -1,0 r1 0..90 -z | C -3,0 r0.5"},
    {"mirrored twice", {0, 0, 0}, {-1, -1, 1}, 0, "L 0,0 -2,-1 | A -1,0 r1 180..270 | C -3,0 r0.5"},
    {"unequal", {0, 0, 0}, {2, 1, 1}, 0, "L 0,0 4,1 | E 2,0 2x1 | E 6,0 1x0.5"},
};

TEST_F(Explode, BlockReferences) {
    const AcDbObjectId part = Part(L"PART");
    for (const InsertCase& c : kInserts) {
        SCOPED_TRACE(c.name);
        std::unique_ptr<AcDbBlockReference> insert(Insert(part, c.position));
        EXPECT_OK(insert->setScaleFactors(c.scale));
        EXPECT_OK(insert->setRotation(c.rotation * kPi / 180.0));
        EXPECT_EQ(c.pieces, Show(Pieces(*insert)));
    }
}

TEST_F(Explode, PiecesKeepTheirOwnProperties) {
    const AcDbObjectId block = AddBlock(L"B");
    const AcDbObjectId layer = AddLayer(L"INSIDE");
    auto* line = new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 0, 0));
    EXPECT_OK(line->setLayer(layer));
    EXPECT_OK(line->setColorIndex(0));
    const AcDbObjectId inside = Add(line, block);
    auto* insert = Insert(block);
    EXPECT_OK(insert->setColorIndex(3));
    const AcDbObjectId id = Add(insert);
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForRead);
    const Pieces pieces(*reference);
    ASSERT_EQ(1, pieces.Count());
    EXPECT_EQ(layer, pieces[0].layerId());
    EXPECT_EQ(0, pieces[0].colorIndex());
    EXPECT_TRUE(pieces[0].objectId().isNull());
    EXPECT_FALSE(inside.isErased());
    const auto polyline = Polyline("0,0 1,0");
    EXPECT_OK(polyline->setLayer(layer));
    EXPECT_OK(polyline->setColorIndex(5));
    EXPECT_OK(polyline->setVisibility(AcDb::kInvisible));
    const Pieces parts(*polyline);
    EXPECT_EQ(layer, parts[0].layerId());
    EXPECT_EQ(5, parts[0].colorIndex());
}

TEST_F(Explode, NestedArrayedAndForeign) {
    const AcDbObjectId part = Part(L"PART");
    const AcDbObjectId outer = AddBlock(L"OUTER", AcGePoint3d(1, 1, 0));
    auto* inner = Insert(part, AcGePoint3d(5, 0, 0));
    EXPECT_OK(inner->setRotation(kPi / 2));
    Add(inner, outer);
    std::unique_ptr<AcDbBlockReference> nested(Insert(outer, AcGePoint3d(10, 10, 0)));
    const Pieces once(*nested);
    ASSERT_EQ("AcDbBlockReference", Show(once));
    EXPECT_EQ("L 14,9 13,11 | A 14,10 r1 90..180 | C 14,12 r0.5", Show(Pieces(once[0])));
    AcDbMInsertBlock array(AcGePoint3d(), part, 3, 2, 10.0, 20.0);
    const Pieces cells(array);
    ASSERT_EQ(18, cells.Count());
    EXPECT_EQ("L 10,0 12,1", Show(cells[3]));
    EXPECT_EQ("L 20,20 22,21", Show(cells[15]));
    // One entity that cannot follow makes the whole call fail, with nothing handed out.
    const AcDbObjectId withText = AddBlock(L"TEXT");
    Add(new AcDbLine, withText);
    Add(new AcDbText(AcGePoint3d(), L"abc", AcDbObjectId(), 2.5), withText);
    std::unique_ptr<AcDbBlockReference> stretched(Insert(withText));
    EXPECT_OK(stretched->setScaleFactors(AcGeScale3d(1, 2, 1)));
    EXPECT_EQ("eCannotScaleNonUniformly", Show(Pieces(*stretched)));
    EXPECT_EQ("eCannotExplodeEntity", Show(Pieces(AcDbBlockReference())));
}

TEST_F(Explode, AttributesVanish) {
    const AcDbObjectId block = AddBlock(L"FRAME");
    Add(new AcDbLine(AcGePoint3d(), AcGePoint3d(1, 0, 0)), block);
    Add(new AcDbAttributeDefinition(AcGePoint3d(), L"0", L"TOOL", L"Tool number?"), block);
    const AcDbObjectId id = Add(Insert(block));
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    auto* attribute = new AcDbAttribute(AcGePoint3d(50, 0, 0), L"0008", L"TOOL");
    EXPECT_OK(attribute->setHeight(2.0));
    ASSERT_OK(reference->appendAttribute(attribute));
    EXPECT_OK(attribute->close());
    EXPECT_EQ("L 0,0 1,0 | AcDbAttributeDefinition", Show(Pieces(*reference)));
    const std::unique_ptr<AcDbObjectIterator> it(reference->attributeIterator());
    AcDbObjectPointer<AcDbAttribute> found(it->objectId(), AcDb::kForRead);
    EXPECT_STREQ(L"TOOL", found->tagConst());
    EXPECT_STREQ(L"0008", found->textStringConst());
    EXPECT_GT(BoxOf(*reference).maxPoint().x, 50.0);
    EXPECT_OK(found.close());
    ASSERT_OK(found.open(it->objectId(), AcDb::kForWrite));
    EXPECT_OK(found->setInvisible(true));
    EXPECT_NEAR(1.0, BoxOf(*reference).maxPoint().x, 1e-12);
}

// Points spread over a curve.
std::vector<AcGePoint3d> Samples(const AcDbCurve& curve, int count) {
    double first = 0.0, last = 0.0;
    EXPECT_OK(curve.getStartParam(first));
    EXPECT_OK(curve.getEndParam(last));
    std::vector<AcGePoint3d> points(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        EXPECT_OK(curve.getPointAtParam(first + (last - first) * i / (count - 1),
                                        points[static_cast<size_t>(i)]));
    return points;
}

double DistanceTo(const Pieces& pieces, const AcGePoint3d& point) {
    double nearest = 1e300;
    for (int i = 0; i < pieces.Count(); ++i) {
        AcGePoint3d on;
        if (AcDbCurve::cast(&pieces[i])->getClosestPointTo(point, on) == Acad::eOk)
            nearest = std::fmin(nearest, on.distanceTo(point));
    }
    return nearest;
}

// The pieces of a polyline in any plane cover it and have its box and its length.
TEST_F(Explode, RandomPolylinesAreTheirPieces) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        AcDbPolyline polyline;
        const int count = random.Int(2, 7);
        for (int i = 0; i < count; ++i)
            EXPECT_OK(polyline.addVertexAt(0, AcGePoint2d(random.Real(-9, 9), random.Real(-9, 9)),
                                           random.Int(0, 1) != 0 ? random.Real(-2, 2) : 0.0));
        polyline.setClosed(random.Int(0, 1) != 0);
        EXPECT_OK(polyline.setElevation(random.Real(-3, 3)));
        EXPECT_OK(polyline.setNormal(random.Int(0, 3) == 0 ? AcGeVector3d(0, 0, -1)
                                                           : random.Direction()));
        const Pieces pieces(polyline);
        AcDbExtents box;
        double length = 0.0;
        for (int i = 0; i < pieces.Count(); ++i) {
            box.addExt(BoxOf(pieces[i]));
            const AcDbCurve& piece = *AcDbCurve::cast(&pieces[i]);
            double last = 0.0, own = 0.0;
            EXPECT_OK(piece.getEndParam(last));
            EXPECT_OK(piece.getDistAtParam(last, own));
            length += own;
        }
        ExpectSameBox(BoxOf(polyline), box, 1e-9);
        double last = 0.0, whole = 0.0;
        EXPECT_OK(polyline.getEndParam(last));
        EXPECT_OK(polyline.getDistAtParam(last, whole));
        EXPECT_NEAR(whole, length, 1e-9 * (1.0 + length));
        for (const AcGePoint3d& point : Samples(polyline, 40))
            EXPECT_LT(DistanceTo(pieces, point), 1e-9);
    }
}

// Turning, mirroring and scaling a curve is turning, mirroring and scaling its points.
TEST_F(Explode, RandomMovesMoveThePoints) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        std::vector<std::unique_ptr<AcDbCurve>> curves;
        const AcGeVector3d normal = random.Direction();
        curves.push_back(std::make_unique<AcDbLine>(random.Point(), random.Point()));
        curves.push_back(std::make_unique<AcDbArc>(random.Point(), normal, random.Real(0.5, 5),
                                                   random.Real(0, 6), random.Real(0, 6)));
        curves.push_back(
            std::make_unique<AcDbEllipse>(random.Point(), normal, normal.perpVector() * 4.0,
                                          random.Real(0.2, 0.9), random.Real(0, 3), 4.0));
        auto polyline = Polyline("0,0(0.5) 4,0 4,3(-0.7)", true);
        EXPECT_OK(polyline->setNormal(normal));
        curves.push_back(std::move(polyline));
        AcGeMatrix3d matrix = AcGeMatrix3d::rotation(random.Real(0, 6), random.Direction());
        matrix = AcGeMatrix3d::scaling(random.Real(0.3, 3)) * matrix;
        if (random.Int(0, 1) != 0) {
            AcGeMatrix3d mirror;
            mirror(0, 0) = -1.0;
            matrix = mirror * matrix;
        }
        matrix = AcGeMatrix3d::translation(random.Direction() * 20.0) * matrix;
        for (const auto& curve : curves) {
            SCOPED_TRACE(Show(*curve));
            AcDbEntity* made = nullptr;
            ASSERT_OK(curve->getTransformedCopy(matrix, made));
            const std::unique_ptr<AcDbEntity> moved(made);
            const std::vector<AcGePoint3d> before = Samples(*curve, 9);
            const std::vector<AcGePoint3d> after = Samples(*AcDbCurve::cast(made), 9);
            for (size_t i = 0; i < before.size(); ++i)
                EXPECT_LT((matrix * before[i]).distanceTo(after[i]), 1e-8);
        }
    }
}

// Exploding a nested, turned, mirrored, unequally scaled reference all the way down gives the
// points that its transforms give, and its box.
TEST_F(Explode, RandomReferencesAreTheirPieces) {
    const AcDbObjectId part = Part(L"PART");
    const AcDbObjectId outer = AddBlock(L"OUTER", AcGePoint3d(1, 2, 0));
    auto* inner = Insert(part, AcGePoint3d(2, 3, 0));
    EXPECT_OK(inner->setRotation(0.7));
    EXPECT_OK(inner->setScaleFactors(AcGeScale3d(-1.5, 1.5, 1.5)));
    Add(inner, outer);
    Add(Polyline("0,0 5,0 5,5", true).release(), outer);
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        AcDbMInsertBlock reference(random.Point(), outer, 2, 3, 7.0, -4.0);
        EXPECT_OK(reference.setRotation(random.Real(0, 6)));
        const double size = random.Real(0.5, 2.0);
        const double sign = random.Int(0, 1) != 0 ? -1.0 : 1.0;
        EXPECT_OK(reference.setScaleFactors(AcGeScale3d(size * sign, size, size)));
        EXPECT_OK(reference.setNormal(random.Direction()));
        AcDbExtents box;
        const std::function<void(const AcDbEntity&)> add = [&](const AcDbEntity& entity) {
            if (entity.isKindOf(AcDbBlockReference::desc())) {
                const Pieces pieces(entity);
                ASSERT_OK(pieces.Status());
                for (int i = 0; i < pieces.Count(); ++i) add(pieces[i]);
            } else {
                box.addExt(BoxOf(entity));
            }
        };
        add(reference);
        ExpectSameBox(BoxOf(reference), box, 1e-8);
        // A reference that was moved shows the moved box, for moves that keep right angles.
        const AcGeMatrix3d matrix = AcGeMatrix3d::rotation(random.Real(0, 6), random.Direction());
        AcDbEntity* made = nullptr;
        ASSERT_OK(reference.getTransformedCopy(matrix, made));
        const std::unique_ptr<AcDbEntity> moved(made);
        const AcGeMatrix3d expected = matrix * reference.blockTransform();
        const AcGeMatrix3d actual = AcDbBlockReference::cast(made)->blockTransform();
        AcGeTol tol;
        tol.setEqualPoint(1e-8);
        tol.setEqualVector(1e-8);
        EXPECT_TRUE(expected.isEqualTo(actual, tol));
    }
}

TEST_F(Explode, HatchesAndTexts) {
    AcDbMText text;
    EXPECT_OK(text.setTextHeight(2.0));
    EXPECT_OK(text.setContents(L"{\\fArial|b0;first}\\Psecond \\H1.5x;line"));
    const Pieces lines(text);
    ASSERT_EQ(2, lines.Count());
    EXPECT_STREQ(L"first", AcDbText::cast(&lines[0])->textStringConst());
    EXPECT_STREQ(L"second line", AcDbText::cast(&lines[1])->textStringConst());
    EXPECT_GT(AcDbText::cast(&lines[0])->position().y, AcDbText::cast(&lines[1])->position().y);
    AcDbLeader leader;
    for (const double x : {0.0, 1.0, 3.0}) leader.appendVertex(AcGePoint3d(x, 0, 0));
    EXPECT_EQ("L 0,0 1,0 | L 1,0 3,0", Show(Pieces(leader)));
}

}  // namespace
}  // namespace test
