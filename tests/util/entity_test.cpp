// The utility layer's work on a drawing.
#include "support/test_drawing.h"
#include "plugin/util/AddEntity.h"
#include "plugin/util/ArcReader.h"
#include "plugin/util/CurrentLayerGuard.h"
#include "plugin/util/EraseEntity.h"
#include "plugin/util/LayerTools.h"

namespace {

using test::TestDrawing;

TEST(AddEntity, LinesAreByLayerWhateverTheSettings) {
    TestDrawing d;
    ASSERT_EQ(Acad::eOk, d.db().setCeltype(d.LinetypeId(L"DASHED")));
    EXPECT_TRUE(AddLine({0, 0, 0}, {1e-7, 0, 0}, 256, ACDB_MODEL_SPACE).isNull());
    EXPECT_TRUE(AddLine({0, 0, 0}, {1, 0, 0}, 256, _T("no such block")).isNull());
    const AcDbObjectId id = AddLine({0, 0, 0}, {1, 0, 0}, 256, ACDB_MODEL_SPACE);
    AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    ASSERT_EQ(Acad::eOk, line.openStatus()) << "left open";
    EXPECT_EQ(d.db().byLayerLinetype(), line->linetypeId());
    EXPECT_EQ(256, line->colorIndex());
}

TEST(EraseEntity, SaysWhetherItIsGone) {
    TestDrawing d("L 0,0 1,0 | L@LOCKED 0,0 2,0 | L 0,0 3,0 | L 0,0 4,0");
    d.Layer("LOCKED", "", "lock");
    EXPECT_FALSE(EraseById(AcDbObjectId::kNull));
    EXPECT_TRUE(EraseById(d.ids()[0]));
    EXPECT_TRUE(EraseById(d.ids()[0])) << "erased already";
    EXPECT_FALSE(EraseById(d.ids()[1]));

    AcDbDictionary* dictionary = nullptr;
    ASSERT_EQ(Acad::eOk, d.db().getNamedObjectsDictionary(dictionary));
    AcDbObjectId groupsId;
    const Acad::ErrorStatus es = dictionary->getAt(_T("ACAD_GROUP"), groupsId);
    ASSERT_EQ(Acad::eOk, dictionary->close());
    ASSERT_EQ(Acad::eOk, es);
    AcDbObjectId groupId;
    {
        AcDbObjectPointer<AcDbDictionary> groups(groupsId, AcDb::kForWrite);
        auto* group = new AcDbGroup;
        ASSERT_EQ(Acad::eOk, groups->setAt(_T("G"), group, groupId));
        ASSERT_EQ(Acad::eOk, group->append(d.ids()[2]));
        ASSERT_EQ(Acad::eOk, group->append(d.ids()[3]));
        ASSERT_EQ(Acad::eOk, group->close());
    }
    EXPECT_TRUE(EraseById(groupId));
    EXPECT_FALSE(groupId.isErased()) << "only its entities go";
    EXPECT_TRUE(d.ids()[2].isErased());
    EXPECT_TRUE(d.ids()[3].isErased());
}

TEST(ArcReader, MirroredArcsAreReadInTheWorld) {
    TestDrawing d("A 1,2 5 10 100 | A 1,2 5 10 100 m | L 0,0 1,0");
    SArc plain;
    SArc mirrored;
    ASSERT_TRUE(ReadArc(d.ids()[0], plain));
    ASSERT_TRUE(ReadArc(d.ids()[1], mirrored));
    EXPECT_NEAR(plain.m_dStartAngle, mirrored.m_dStartAngle, 1e-12);
    EXPECT_NEAR(plain.m_dEndAngle, mirrored.m_dEndAngle, 1e-12);
    EXPECT_EQ(test::Show(plain.m_start), test::Show(mirrored.m_start));
    EXPECT_EQ(test::Show(plain.m_end), test::Show(mirrored.m_end));
    AcGePoint3d start(7, 7, 7);
    AcGePoint3d end;
    EXPECT_EQ(kNoArc, GetArcEndPoints(d.ids()[2], start, end));
    EXPECT_EQ(kNoArc, GetArcCentre(d.ids()[2], start));
    EXPECT_EQ(7.0, start.x);
    EXPECT_EQ(0, GetArcCentre(d.ids()[1], start));
    EXPECT_EQ("1,2", test::Show(start));
}

TEST(ArcReader, PointOnArc) {
    struct Case {
        const char* name;
        const char* arc;
        double angle;   // of the point, degrees
        double radius;  // of the point
        bool on;
        double distance;
    };
    const Case cases[] = {
        {"inside", "A 0,0 10 0 90", 45, 10, true, 0},
        {"off by less than the tolerance", "A 0,0 10 0 90", 45, 10.009, true, 0.009},
        {"off by more", "A 0,0 10 0 90", 45, 10.011, false, 0.011},
        {"past the end by half the tolerance", "A 0,0 10 0 90", 90.29, 10, true, 0.0506},
        {"past the end by more", "A 0,0 10 0 90", 90.6, 10, false, 0.1047},
        {"before the start at angle 0: no turn is tried", "A 0,0 10 0 90", 359.8, 10, false,
         0.0349},
        {"a rounding below a full turn is 0", "A 0,0 10 0 90", 360 - 1e-9, 10, true, 0},
        {"through angle 0", "A 0,0 10 270 90", 0, 10, true, 0},
        {"through angle 0, outside", "A 0,0 10 270 90", 180, 10, false, 14.1421},
        {"through angle 0, near the end", "A 0,0 10 270 90", 90.3, 10, true, 0.0524},
        {"ends at 0", "A 0,0 10 180 360", 270, 10, true, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TestDrawing d(c.arc);
        const AcGePoint3d pt(c.radius * std::cos(c.angle * test::kDegree),
                             c.radius * std::sin(c.angle * test::kDegree), 0);
        EXPECT_EQ(c.on, IsPointOnArc(d.ids()[0], pt, 0.01));
        SArc arc;
        ASSERT_TRUE(ReadArc(d.ids()[0], arc));
        EXPECT_NEAR(c.distance, GetDistanceToArc(arc, pt), 1e-4);
    }
    TestDrawing d("L 0,0 1,0");
    EXPECT_FALSE(IsPointOnArc(d.ids()[0], AcGePoint3d(), 0.01));
}

TEST(CurrentLayerGuard, MakesTheLayerUsableAndGivesTheFormerBack) {
    TestDrawing d;
    d.Layer("Work", "", "lock off freeze").Layer("Mine");
    ASSERT_EQ(Acad::eOk, d.db().setClayer(FindLayer(_T("MINE"))));
    {
        CCurrentLayerGuard guard(_T("wORK"));
        EXPECT_FALSE(guard.IsLayerNew());
        EXPECT_EQ(FindLayer(_T("Work")), d.db().clayer());
        AcDbObjectPointer<AcDbLayerTableRecord> layer(d.db().clayer(), AcDb::kForRead);
        EXPECT_FALSE(layer->isFrozen() || layer->isLocked() || layer->isOff());
        ASSERT_EQ(Acad::eOk, layer.close());
        CCurrentLayerGuard inner(_T("New"));
        EXPECT_TRUE(inner.IsLayerNew());
        EXPECT_EQ(FindLayer(_T("New")), d.db().clayer());
    }
    EXPECT_EQ(FindLayer(_T("Mine")), d.db().clayer());
}

TEST(LayerTools, ShowLeavesWhatIsRightUntouched) {
    TestDrawing d;
    d.Layer("A", "DASHED").Layer("B", "", "off");
    ShowAllLayers(false);
    ShowAllLayers(true);
    for (const SLayerLinetype& layer : GetLayerLinetypes()) {
        AcDbObjectPointer<AcDbLayerTableRecord> record(layer.m_layerId, AcDb::kForRead);
        EXPECT_FALSE(record->isOff());
        EXPECT_EQ(layer.m_strName == _T("A"), layer.m_linetypeId == d.LinetypeId(L"DASHED"));
    }
    EXPECT_EQ(3u, GetLayerLinetypes().size());
    EXPECT_EQ(CString(_T("A")), GetLayerName(FindLayer(_T("a"))));
    EXPECT_TRUE(FindLayer(_T("none")).isNull());
    EXPECT_TRUE(GetLayerName(AcDbObjectId::kNull).IsEmpty());
}

}  // namespace
