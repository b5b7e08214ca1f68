// Values of entities: read from both kinds of records, and the same again after writing them.
#include <cmath>
#include <functional>
#include <set>

#include "drawing_text.h"

namespace {

using namespace test;

void Ok(Acad::ErrorStatus es) { EXPECT_EQ(Acad::eOk, es); }

std::string Number(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.6g", std::fabs(value) < 1e-9 ? 0.0 : value);
    return buffer;
}

std::string PointText(const AcGePoint3d& p) {
    return Number(p.x) + "," + Number(p.y) + "," + Number(p.z);
}

// "AcDbLine 0,0,0..4,5,0" with the box of what is drawn, and for curves where they start and end.
std::string Describe(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForRead) != Acad::eOk) return "cannot be opened";
    std::string text;
    for (const ACHAR* c = entity->isA()->name(); *c != 0; ++c) text += static_cast<char>(*c);
    AcDbExtents box;
    if (entity->getGeomExtents(box) == Acad::eOk)
        text += " " + PointText(box.minPoint()) + ".." + PointText(box.maxPoint());
    if (const AcDbCurve* curve = AcDbCurve::cast(entity)) {
        AcGePoint3d start, end;
        if (curve->getStartPoint(start) == Acad::eOk && curve->getEndPoint(end) == Acad::eOk)
            text += " from " + PointText(start) + " to " + PointText(end);
    }
    Ok(entity->close());
    return text;
}

struct ValueCase {
    const char* tags;  // R12 style: no subclass marks
    const char* facts;
};

const ValueCase kValues[] = {
    {"0|LINE|8|0|10|1.0|20|2.0|30|3.0|11|4.0|21|5.0|31|6.0",
     "AcDbLine 1,2,3..4,5,6 from 1,2,3 to 4,5,6"},
    {"0|LINE|8|0|38|7.0|10|1.0|20|2.0|11|4.0|21|5.0", "AcDbLine 1,2,7..4,5,7 from 1,2,7 to 4,5,7"},
    {"0|CIRCLE|8|0|10|1.0|20|2.0|30|0.0|40|3.0", "AcDbCircle -2,-1,0..4,5,0 from 4,2,0 to 4,2,0"},
    {"0|ARC|8|0|10|0.0|20|0.0|30|0.0|40|2.0|50|-90.0|51|450.0",
     "AcDbArc 0,-2,0..2,2,0 from 0,-2,0 to 0,2,0"},
    // Seen from below, x runs the other way.
    {"0|ARC|8|0|10|5.0|20|0.0|30|0.0|40|2.0|50|0.0|51|90.0|210|0.0|220|0.0|230|-1.0",
     "AcDbArc -7,0,0..-5,2,0 from -7,0,0 to -5,2,0"},
    {"0|ELLIPSE|8|0|10|0.0|20|0.0|30|0.0|11|4.0|21|0.0|31|0.0|40|0.5|41|0.0|42|1.5707963267948966",
     "AcDbEllipse 0,0,0..4,2,0 from 4,0,0 to 0,2,0"},
    {"0|SPLINE|8|0|70|8|71|3|72|8|73|4|74|0|40|0.0|40|0.0|40|0.0|40|0.0|40|1.0|40|1.0|40|1.0|40|1."
     "0|10|"
     "0.0|20|0.0|30|0.0|10|0.0|20|4.0|30|0.0|10|4.0|20|4.0|30|0.0|10|4.0|20|0.0|30|0.0",
     "AcDbSpline 0,0,0..4,3,0 from 0,0,0 to 4,0,0"},
    {"0|LWPOLYLINE|8|0|90|2|70|1|38|1.5|10|0.0|20|0.0|42|1.0|10|4.0|20|0.0|42|1.0",
     "AcDbPolyline 0,-2,1.5..4,2,1.5 from 0,0,1.5 to 0,0,1.5"},
    {"0|POLYLINE|8|0|66|1|10|0.0|20|0.0|30|2.0|70|0|0|VERTEX|8|0|10|0.0|20|0.0|30|2.0|42|-1.0|0|"
     "VERTEX|8|"
     "0|10|4.0|20|0.0|30|2.0|0|SEQEND|8|0",
     "AcDb2dPolyline 0,0,2..4,2,2 from 0,0,2 to 4,0,2"},
    {"0|POLYLINE|8|0|66|1|70|9|0|VERTEX|8|0|10|0.0|20|0.0|30|0.0|70|32|0|VERTEX|8|0|10|4.0|20|0.0|"
     "30|3.0|"
     "70|32|0|SEQEND|8|0",
     "AcDb3dPolyline 0,0,0..4,0,3 from 0,0,0 to 0,0,0"},
    // Control vertices of a fitted polyline are not drawn.
    {"0|POLYLINE|8|0|66|1|70|4|75|6|0|VERTEX|8|0|10|0.0|20|9.0|70|16|0|VERTEX|8|0|10|0.0|20|0.0|70|"
     "8|0|"
     "VERTEX|8|0|10|4.0|20|1.0|70|8|0|SEQEND|8|0",
     "AcDb2dPolyline 0,0,0..4,1,0 from 0,0,0 to 4,1,0"},
    {"0|POLYLINE|8|0|66|1|70|64|71|2|72|1|0|VERTEX|8|0|10|1.0|20|1.0|30|1.0|70|192|0|VERTEX|8|0|10|"
     "2.0|"
     "20|3.0|30|1.0|70|192|0|VERTEX|8|0|10|0.0|20|0.0|30|0.0|70|128|71|1|72|2|0|SEQEND|8|0",
     "AcDbZombieEntity 1,1,1..2,3,1"},
    {"0|POINT|8|0|10|1.0|20|2.0|30|3.0", "AcDbPoint 1,2,3..1,2,3"},
    {"0|SOLID|8|0|10|0.0|20|0.0|30|0.0|11|2.0|21|0.0|31|0.0|12|0.0|22|3.0|32|0.0",
     "AcDbSolid 0,0,0..2,3,0"},
    {"0|3DFACE|8|0|10|0.0|20|0.0|30|0.0|11|2.0|21|0.0|31|1.0|12|0.0|22|3.0|32|0.0|13|0.0|23|3.0|33|"
     "0.0",
     "AcDbFace 0,0,0..2,3,1"},
    {"0|LEADER|8|0|71|1|72|0|76|2|10|0.0|20|0.0|30|0.0|10|4.0|20|5.0|30|0.0",
     "AcDbLeader 0,0,0..4,5,0 from 0,0,0 to 4,5,0"},
    {"0|HATCH|8|0|10|0.0|20|0.0|30|0.0|2|SOLID|70|1|71|0|91|1|92|1|93|2|72|1|10|0.0|20|0.0|11|4.0|"
     "21|0.0|"
     "72|2|10|2.0|20|0.0|40|2.0|50|0.0|51|180.0|73|1|97|0|75|0|76|1|98|0",
     "AcDbHatch 0,0,0..4,2,0"},
    {"0|INSERT|8|0|2|PART|10|10.0|20|0.0|30|0.0|41|2.0|42|2.0|43|2.0|50|90.0",
     "AcDbBlockReference 4,0,0..10,8,0"},
    {"0|INSERT|8|0|2|PART|10|0.0|20|0.0|30|0.0|70|2|71|3|44|10.0|45|20.0",
     "AcDbMInsertBlock 0,0,0..14,43,0"},
    {"0|DIMENSION|8|0|2|PART|70|0|10|0.0|20|0.0|30|0.0|11|0.0|21|0.0|31|0.0|13|0.0|23|0.0|14|4.0|"
     "24|0.0",
     "AcDbRotatedDimension 0,0,0..4,3,0"},
    {"0|RAY|8|0|10|0.0|20|0.0|30|0.0|11|1.0|21|0.0|31|0.0", "AcDbRay"},
    {"0|VIEWPORT|8|0|10|5.0|20|5.0|30|0.0|40|4.0|41|2.0|69|2", "AcDbViewport 3,4,0..7,6,0"},
    {"0|WIPEOUT|8|0|10|0.0|20|0.0|30|0.0|11|8.0|21|0.0|31|0.0|12|0.0|22|8.0|32|0.0|13|1.0|23|1.0|"
     "71|1|91|"
     "2|14|-0.5|24|-0.5|14|0.5|24|0.5",
     "AcDbWipeout 0,0,0..8,8,0"}};

const char kBlocks[] =
    "0|BLOCK|8|0|2|PART|70|0|10|0.0|20|0.0|30|0.0|3|PART|0|LINE|8|0|10|0.0|20|0.0|30|0.0|11|4.0|21|"
    "3.0|"
    "31|0.0|0|ENDBLK";

std::string Drawing(const std::string& version, const std::string& entities) {
    return Lines(Header(version) + Section("BLOCKS", kBlocks) + Section("ENTITIES", entities) +
                 "0|EOF");
}

TEST(Codec, Values) {
    for (const ValueCase& c : kValues) {
        SCOPED_TRACE(c.tags);
        for (const char* version : {"AC1009", "AC1015", "AC1032"}) {
            Loaded drawing(Drawing(version, c.tags));
            ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
            ASSERT_EQ(1u, drawing.ModelSpace().size());
            EXPECT_EQ(c.facts, Describe(drawing.ModelSpace()[0]));
        }
    }
}

TEST(Codec, Texts) {
    Loaded drawing(Drawing(
        "AC1015",
        "0|TEXT|5|A0|8|0|10|1.0|20|2.0|30|0.0|40|2.5|1|T-01|50|90.0|72|1|11|5.0|21|6.0|31|0.0|73|2|"
        "0|MTEXT|5|A1|8|0|10|1.0|20|2.0|30|0.0|40|2.5|41|50.0|71|5|3|first |3|second "
        "\\U+|1|4E2D|50|90.0|"
        "0|INSERT|5|A2|8|0|66|1|2|PART|10|0.0|20|0.0|30|0.0|0|ATTRIB|5|A3|8|0|10|0.0|20|0.0|30|0.0|"
        "40|1.0|"
        "1|T-77|2|TOOL|70|1|0|SEQEND|8|0"));
    AcDbText* text = nullptr;
    ASSERT_EQ(Acad::eOk, acdbOpenObject(text, drawing.Id(0xA0)));
    EXPECT_STREQ(L"T-01", text->textStringConst());
    EXPECT_EQ(AcGePoint3d(5, 6, 0), text->alignmentPoint());
    EXPECT_EQ(AcDb::kTextCenter, text->horizontalMode());
    EXPECT_EQ(AcDb::kTextVertMid, text->verticalMode());
    Ok(text->close());
    AcDbMText* paragraph = nullptr;
    ASSERT_EQ(Acad::eOk, acdbOpenObject(paragraph, drawing.Id(0xA1)));
    ACHAR* contents = paragraph->contents();
    EXPECT_STREQ(L"first second \u4e2d", contents);
    acutDelString(contents);
    EXPECT_NEAR(1.0, paragraph->direction().y, 1e-15);
    Ok(paragraph->close());
    AcDbBlockReference* reference = nullptr;
    ASSERT_EQ(Acad::eOk, acdbOpenObject(reference, drawing.Id(0xA2)));
    const std::unique_ptr<AcDbObjectIterator> it(reference->attributeIterator());
    ASSERT_FALSE(it->done());
    EXPECT_EQ(drawing.Id(0xA3), it->objectId());
    AcDbAttribute* attribute = nullptr;
    ASSERT_EQ(Acad::eOk, reference->openAttribute(attribute, it->objectId(), AcDb::kForRead));
    EXPECT_STREQ(L"TOOL", attribute->tagConst());
    EXPECT_STREQ(L"T-77", attribute->textStringConst());
    EXPECT_TRUE(attribute->isInvisible());
    Ok(attribute->close());
    Ok(reference->close());
}

// What numbers of narrow types and kinds became: "256 weight -1 mode 0/0 units 4 new -1".
std::string Kinds(Loaded& drawing) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, drawing.ModelSpace()[0], AcDb::kForRead) != Acad::eOk) return "none";
    std::ostringstream text;
    text << entity->colorIndex() << (entity->visibility() == AcDb::kVisible ? "" : " hidden")
         << " weight " << entity->lineWeight();
    if (const AcDbText* const line = AcDbText::cast(entity))
        text << " mode " << line->horizontalMode() << "/" << line->verticalMode();
    if (const AcDbMInsertBlock* const grid = AcDbMInsertBlock::cast(entity))
        text << " grid " << grid->columns() << "x" << grid->rows();
    if (const AcDbSpline* const spline = AcDbSpline::cast(entity))
        text << " degree " << spline->degree();
    text << " units " << static_cast<int>(drawing.db.insunits()) << " new "
         << drawing.db.celweight();
    Ok(entity->close());
    return text.str();
}

// A number that its type cannot hold, and a kind that there is not, count as not stated; what is
// made of them could be anything.
TEST(Codec, NumbersThatDoNotFitCountAsNotStated) {
    const char kText[] = "0|TEXT|8|0|10|1.0|20|2.0|30|0.0|40|2.5|1|T|", kLine[] = "0|LINE|8|0|";
    const struct {
        std::string header, entity;
        const char* facts;
    } kCases[] = {
        {"9|$INSUNITS|70|5|9|$CELWEIGHT|370|30", kText + std::string("72|4|73|3|370|211|60|1"),
         "256 hidden weight 211 mode 4/3 units 5 new 30"},
        {"9|$INSUNITS|70|65540|9|$CELWEIGHT|370|31", kText + std::string("72|6|73|-1|370|212|60|0"),
         "256 weight -1 mode 0/0 units 4 new -1"},
        {"9|$INSUNITS|70|-1|9|$CELWEIGHT|370|65536",
         kText + std::string("72|4294967297|73|65537|370|65541"),
         "256 weight -1 mode 0/0 units 4 new -1"},
        {"9|$INSUNITS|70|25", kLine + std::string("62|-9223372036854775808|370|-4|11|1.0|21|0.0"),
         "256 weight -1 units 4 new -1"},
        {"9|$INSUNITS|70|24", kLine + std::string("62|-1e30|370|-3|11|1.0|21|0.0"),
         "256 weight -3 units 24 new -1"},
        {"9|$INSUNITS|70|0", "0|INSERT|8|0|2|PART|10|0.0|20|0.0|30|0.0|70|-5|71|3",
         "256 weight -1 grid 1x3 units 0 new -1"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.header + " " + c.entity);
        Loaded drawing(Lines(Header("AC1032", c.header) + Section("BLOCKS", kBlocks) +
                             Section("ENTITIES", c.entity) + "0|EOF"));
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        EXPECT_EQ(c.facts, Kinds(drawing));
    }
}

// All the drawings at hand and one with every kind of entity.
std::vector<std::string> Drawings() {
    std::vector<std::string> drawings;
    std::string all;
    for (const ValueCase& c : kValues) all += (all.empty() ? "" : "|") + std::string(c.tags);
    for (const char* version : {"AC1009", "AC1015", "AC1032"})
        drawings.push_back(Drawing(version, all));
    for (const auto& file : SharedDrawings()) drawings.push_back(FileContent(file));
    return drawings;
}

std::vector<std::string> DescribeAll(Loaded& drawing) {
    std::vector<std::string> all;
    for (AcDbObjectId id : drawing.ModelSpace()) all.push_back(Describe(id));
    return all;
}

// A turn by an odd angle changes every value; what is read back must lie where it lay in memory.
TEST(Codec, MovedEntitiesReadBackAlike) {
    const AcGeMatrix3d turn =
        AcGeMatrix3d::rotation(0.3, AcGeVector3d::kZAxis, AcGePoint3d(10, 20, 0)) *
        AcGeMatrix3d::translation(AcGeVector3d(100, -50, 5));
    for (const std::string& bytes : Drawings()) {
        Loaded drawing(bytes);
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        SCOPED_TRACE(bytes.substr(0, 300));
        for (AcDbObjectId id : drawing.ModelSpace()) {
            AcDbEntity* entity = nullptr;
            ASSERT_EQ(Acad::eOk, acdbOpenObject(entity, id, AcDb::kForWrite));
            static_cast<void>(entity->transformBy(turn));  // not every class can be moved
            Ok(entity->close());
        }
        Loaded again(drawing.Written());
        ASSERT_TRUE(again.result.ok()) << again.result.message;
        EXPECT_EQ(DescribeAll(drawing), DescribeAll(again));
    }
}

// Copies carry what their class does not know, under handles of their own.
TEST(Codec, CopiesReadBackAlike) {
    for (const std::string& bytes : Drawings()) {
        Loaded drawing(bytes);
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        SCOPED_TRACE(bytes.substr(0, 300));
        AcDbObjectIdArray ids;
        for (AcDbObjectId id : drawing.ModelSpace()) ids.append(id);
        AcDbIdMapping map;
        ASSERT_EQ(Acad::eOk, drawing.db.deepCloneObjects(ids, drawing.db.currentSpaceId(), map));
        const std::vector<std::string> memory = DescribeAll(drawing);
        ASSERT_EQ(2u * static_cast<unsigned>(ids.length()), memory.size());
        Loaded again(drawing.Written());
        ASSERT_TRUE(again.result.ok()) << again.result.message;
        EXPECT_EQ(memory, DescribeAll(again));
        std::set<Adesk::UInt64> handles;
        for (AcDbObjectId id : again.ModelSpace()) handles.insert(id.handle());
        EXPECT_EQ(memory.size(), handles.size());
    }
}

// The chain comes back with its codes, order, types and exact values.
TEST(Codec, XrecordChains) {
    AcDbDatabase db(true, true);
    AcDbDictionary* root = nullptr;
    Ok(db.getNamedObjectsDictionary(root, AcDb::kForWrite));
    auto* record = new AcDbXrecord;
    AcDbObjectId id;
    Ok(root->setAt(L"Values", record, id));
    resbuf* head = acutNewRb(1000);
    Ok(acutNewString(L"in front", head->resval.rstring));
    resbuf* tail = head;
    const auto add = [&](int code) {
        tail = tail->rbnext = acutNewRb(code);
        tail->resval = {};
        return tail;
    };
    Ok(acutNewString(L"", add(1)->resval.rstring));
    Ok(acutNewString(L"\u5200^\n\\U+1234 ", add(300)->resval.rstring));
    add(10)->resval.rpoint[2] = 1.0 / 3.0;
    add(40)->resval.rreal = 1e-300;
    add(90)->resval.rlong = -2000000000;
    add(91)->resval.rlong = 91;
    add(70)->resval.rint = -7;
    add(160)->resval.mnInt64 = -5000000000;
    add(290)->resval.rint = 1;
    add(280)->resval.rint = 3;
    add(330)->resval.rlname[0] = db.layerZero().asOldId();
    add(1071)->resval.rlong = 5;
    add(102);
    Ok(acutNewString(L"{BRACE", tail->resval.rstring));
    Ok(record->setFromRbChain(*head));
    Ok(record->close());
    Ok(root->close());
    for (int version : {1009, 1015, 1032}) {
        SCOPED_TRACE(version);
        std::string bytes;
        host::dxf::Report report;
        host::dxf::WriteOptions options;
        options.version = version;
        ASSERT_TRUE(host::dxf::WriteToString(db, bytes, report, options).ok());
        Loaded again(bytes);
        AcDbDictionary* named = nullptr;
        Ok(again.db.getNamedObjectsDictionary(named, AcDb::kForRead));
        AcDbObject* object = nullptr;
        ASSERT_EQ(Acad::eOk, named->getAt(L"VALUES", object, AcDb::kForRead));
        Ok(named->close());
        resbuf* chain = nullptr;
        Ok(AcDbXrecord::cast(object)->rbChain(&chain));
        Ok(object->close());
        const resbuf* node = chain;
        for (const resbuf* old = head; old != nullptr; old = old->rbnext, node = node->rbnext) {
            ASSERT_NE(nullptr, node) << old->restype;
            ASSERT_EQ(old->restype, node->restype);
            switch (old->restype) {
                case 1:
                case 102:
                case 300:
                case 1000:
                    EXPECT_STREQ(old->resval.rstring, node->resval.rstring);
                    break;
                case 10:
                    EXPECT_EQ(old->resval.rpoint[2], node->resval.rpoint[2]);
                    break;
                case 40:
                    EXPECT_EQ(old->resval.rreal, node->resval.rreal);
                    break;
                case 90:
                case 91:
                case 1071:
                    EXPECT_EQ(old->resval.rlong, node->resval.rlong);
                    break;
                case 160:
                    EXPECT_EQ(old->resval.mnInt64, node->resval.mnInt64);
                    break;
                case 330: {
                    AcDbObjectId layer;
                    layer.setFromOldId(node->resval.rlname[0]);
                    EXPECT_EQ(again.db.layerZero(), layer);
                    break;
                }
                default:
                    EXPECT_EQ(old->resval.rint, node->resval.rint) << old->restype;
                    break;
            }
        }
        EXPECT_EQ(nullptr, node);
        acutRelRb(chain);
    }
    acutRelRb(head);
}

}  // namespace
