// One change in the drawing changes just its tags in the file.
#include <functional>

#include "drawing_text.h"
#include "line_diff.h"

namespace {

using namespace test;

// Opens an object for write, changes it, closes it.
template <class T>
void Change(Loaded& drawing, Adesk::UInt64 handle, const std::function<void(T&)>& change) {
    T* object = nullptr;
    ASSERT_EQ(Acad::eOk, acdbOpenObject(object, drawing.Id(handle), AcDb::kForWrite));
    change(*object);
    EXPECT_EQ(Acad::eOk, object->close());
}

void Ok(Acad::ErrorStatus es) { EXPECT_EQ(Acad::eOk, es); }

const char kLayers[] =
    "0|TABLE|2|LTYPE|5|5|330|0|100|AcDbSymbolTable|70|3|"
    "0|LTYPE|5|14|330|5|100|AcDbSymbolTableRecord|100|AcDbLinetypeTableRecord|2|ByBlock|70|0|3||72|"
    "65|73|0|40|0.0|"
    "0|LTYPE|5|15|330|5|100|AcDbSymbolTableRecord|100|AcDbLinetypeTableRecord|2|ByLayer|70|0|3||72|"
    "65|73|0|40|0.0|"
    "0|LTYPE|5|16|330|5|100|AcDbSymbolTableRecord|100|AcDbLinetypeTableRecord|2|Continuous|70|0|3||"
    "72|65|73|0|40|0.0|0|ENDTAB|"
    "0|TABLE|2|LAYER|5|2|330|0|100|AcDbSymbolTable|70|2|"
    "0|LAYER|5|10|330|2|100|AcDbSymbolTableRecord|100|AcDbLayerTableRecord|2|0|70|0|62|7|6|"
    "Continuous|370|-3|390|F|"
    "0|LAYER|5|11|330|2|100|AcDbSymbolTableRecord|100|AcDbLayerTableRecord|2|AXIS|70|64|62|1|6|"
    "Continuous|370|-3|390|F|0|ENDTAB|"
    "0|TABLE|2|APPID|5|9|330|0|100|AcDbSymbolTable|70|1|"
    "0|APPID|5|12|330|9|100|AcDbSymbolTableRecord|100|AcDbRegAppTableRecord|2|ACAD|70|0|0|ENDTAB|"
    "0|TABLE|2|BLOCK_RECORD|5|1|330|0|100|AcDbSymbolTable|70|1|0|BLOCK_RECORD|5|1F|330|1|100|"
    "AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|*Model_Space|340|0|0|ENDTAB";

std::string Entity(const std::string& type, const std::string& handle, const std::string& rest) {
    return "0|" + type + "|5|" + handle + "|330|1F|100|AcDbEntity|8|AXIS|" + rest;
}

std::string BaseDrawing() {
    return Lines(
        Header("AC1015", "9|$CLAYER|8|0|9|$HANDSEED|5|100") + Section("TABLES", kLayers) +
        Section("BLOCKS",
                "0|BLOCK|5|20|330|1F|100|AcDbEntity|8|0|100|AcDbBlockBegin|2|*Model_Space|"
                "70|0|10|0.0|20|0.0|30|0.0|3|*Model_Space|1||0|ENDBLK|5|21|330|1F|100|"
                "AcDbEntity|8|0|100|AcDbBlockEnd") +
        Section(
            "ENTITIES",
            Entity(
                "LINE", "30",
                "999|why|100|AcDbLine|10|1.000|20|2.|30|.0|11|3e0|21|4|31|0|1001|ACAD|1000|data") +
                "|" +
                Entity("ARC", "31",
                       "62|5|100|AcDbCircle|10|0.0|20|0.0|30|0.0|40|5.00|1040|9.0|100|AcDbArc|50|"
                       "30.0|51|90.00") +
                "|" +
                Entity("LWPOLYLINE", "32",
                       "100|AcDbPolyline|90|2|70|0|43|0.0|10|0.0|20|0.0|42|0.50|10|4.0|20|0.0") +
                "|" +
                Entity("TEXT", "33",
                       "100|AcDbText|10|1.0|20|1.0|30|0.0|40|2.5|1|T-01|999|kept|41|0.8|100|"
                       "AcDbText") +
                "|" + Entity("MYSTERY", "34", "100|AcDbMystery|40|1.0|62|3") + "|" +
                Entity("POLYLINE", "35",
                       "66|1|100|AcDb2dPolyline|10|0.0|20|0.0|30|0.0|"
                       "0|VERTEX|5|36|330|35|100|AcDbEntity|8|AXIS|100|AcDbVertex|100|AcDb2dVertex|"
                       "10|0.0|20|0.0|30|0.0|"
                       "0|VERTEX|5|37|330|35|100|AcDbEntity|8|AXIS|100|AcDbVertex|100|AcDb2dVertex|"
                       "10|4.0|20|0.0|30|0.0|"
                       "0|SEQEND|5|38|330|35|100|AcDbEntity|8|AXIS") +
                "|" +
                Entity("CIRCLE", "39",
                       "100|AcDbCircle|10|1.0|20|2.0|30|3.0|40|1.0|210|0.0|220|0.0|230|-1.0")) +
        Section("OBJECTS",
                "0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1|3|TASKS|350|40|3|OTHER|350|41|"
                "0|XRECORD|5|40|330|C|100|AcDbXrecord|280|1|1|text|70|5|"
                "0|SOMETHING|5|41|330|C|100|AcDbSomething|40|1.0") +
        "0|EOF");
}

struct ChangeCase {
    const char* name;
    std::function<void(Loaded&)> change;
    const char* diff;
};

const ChangeCase kChanges[] = {
    {"layer off",
     [](Loaded& d) { Change<AcDbLayerTableRecord>(d, 0x11, [](auto& l) { l.setIsOff(true); }); },
     "-1|+-1"},
    {"layer frozen keeps the flag bits of others",
     [](Loaded& d) {
         Change<AcDbLayerTableRecord>(d, 0x11, [](auto& l) { Ok(l.setIsFrozen(true)); });
     },
     "-64|+65"},
    {"layer of an entity",
     [](Loaded& d) { Change<AcDbEntity>(d, 0x30, [](auto& e) { Ok(e.setLayer(L"0")); }); },
     "-AXIS|+0"},
    {"layer of an entity of unknown class",
     [](Loaded& d) { Change<AcDbEntity>(d, 0x34, [](auto& e) { Ok(e.setLayer(L"0")); }); },
     "-AXIS|+0"},
    {"colour where there was none",
     [](Loaded& d) { Change<AcDbEntity>(d, 0x30, [](auto& e) { Ok(e.setColorIndex(3)); }); },
     "+62|+3"},
    {"colour back to ByLayer",
     [](Loaded& d) { Change<AcDbEntity>(d, 0x31, [](auto& e) { Ok(e.setColorIndex(256)); }); },
     "-62|-5"},
    {"invisible",
     [](Loaded& d) {
         Change<AcDbEntity>(d, 0x30, [](auto& e) { Ok(e.setVisibility(AcDb::kInvisible)); });
     },
     "+60|+1"},
    {"one coordinate of a line",
     [](Loaded& d) {
         Change<AcDbLine>(d, 0x30, [](auto& l) { Ok(l.setEndPoint(AcGePoint3d(3, 5.25, 0))); });
     },
     "-4|+5.25"},
    {"start angle of an arc",
     [](Loaded& d) {
         Change<AcDbArc>(d, 0x31, [](auto& a) { Ok(a.setStartAngle(3.14159265358979323846 / 4)); });
     },
     "-30.0|+45.0"},
    {"bulge of a light polyline",
     [](Loaded& d) { Change<AcDbPolyline>(d, 0x32, [](auto& p) { Ok(p.setBulgeAt(0, 0.25)); }); },
     "-0.50|+0.25"},
    {"vertex more",
     [](Loaded& d) {
         Change<AcDbPolyline>(d, 0x32, [](auto& p) { Ok(p.addVertexAt(2, AcGePoint2d(9, 9))); });
     },
     "-2|+3|-0.50|+0.5|+10|+9.0|+20|+9.0"},
    {"closed", [](Loaded& d) { Change<AcDbPolyline>(d, 0x32, [](auto& p) { p.setClosed(true); }); },
     "-0|+1"},
    {"text",
     [](Loaded& d) {
         Change<AcDbText>(d, 0x33, [](auto& t) { Ok(t.setTextString(L"T^2 \u4e2d\n")); });
     },
     "-T-01|+T^ 2 \\U+4E2D^J"},
    {"vertex of a heavy polyline",
     [](Loaded& d) { Change<AcDb2dVertex>(d, 0x37, [](auto& v) { Ok(v.setBulge(1.0)); }); },
     "+42|+1.0"},
    {"erased polyline goes with its vertices",
     [](Loaded& d) { Change<AcDbEntity>(d, 0x35, [](auto& e) { Ok(e.erase()); }); },
     "-POLYLINE|-5|-35|-330|-1F|-100|-AcDbEntity|-8|-AXIS|-66|-1|-100|-AcDb2dPolyline|-10|-0.0|"
     "-20|-0.0|-30|-0.0|-0|-VERTEX|-5|-36|-330|-35|-100|-AcDbEntity|-8|-AXIS|-100|-AcDbVertex|-100|"
     "-AcDb2dVertex|-10|-0.0|-20|-0.0|-30|-0.0|-0|-VERTEX|-5|-37|-330|-35|-100|-AcDbEntity|-8|"
     "-AXIS|-100|-AcDbVertex|-100|-AcDb2dVertex|-10|-4.0|-20|-0.0|-30|-0.0|-0|-SEQEND|-5|-38|-330|"
     "-35|-100|-AcDbEntity|-8|-AXIS|-0"},
    {"centre in a plane that looks down",
     [](Loaded& d) {
         Change<AcDbCircle>(d, 0x39, [](auto& c) {
             EXPECT_EQ(AcGePoint3d(-1, 2, -3), c.center());
             Ok(c.setCenter(AcGePoint3d(-7, 2, -3)));
         });
     },
     "-1.0|+7.0"},
    {"erased record leaves its dictionary",
     [](Loaded& d) { Change<AcDbObject>(d, 0x40, [](auto& o) { Ok(o.erase()); }); },
     "-TASKS|-350|-40|-3|-XRECORD|-5|-40|-330|-C|-100|-AcDbXrecord|-280|-1|-1|-text|-70|-5|-0"},
    {"current layer", [](Loaded& d) { Ok(d.db.setClayer(d.Id(0x11))); }, "-0|+AXIS"},
    {"erased and un-erased is unchanged",
     [](Loaded& d) {
         Change<AcDbEntity>(d, 0x30, [](auto& e) {
             Ok(e.erase());
             Ok(e.erase(false));
         });
     },
     ""},
    {"a value set to what it was",
     [](Loaded& d) { Change<AcDbLine>(d, 0x30, [](auto& l) { Ok(l.setEndPoint(l.endPoint())); }); },
     ""},
    {"extended data of another application",
     [](Loaded& d) {
         Change<AcDbEntity>(d, 0x31, [](auto& e) {
             resbuf value{nullptr, 1071, {}}, head{&value, 1001, {}};
             ACHAR name[] = L"ACAD";
             head.resval.rstring = name;
             value.resval.rlong = 77;
             Ok(e.setXData(&head));
         });
     },
     "+1001|+ACAD|+1071|+77"},
    {"extended data replaced",
     [](Loaded& d) {
         Change<AcDbEntity>(d, 0x30, [](auto& e) {
             resbuf value{nullptr, 1000, {}}, head{&value, 1001, {}};
             ACHAR name[] = L"ACAD", text[] = L"other";
             head.resval.rstring = name;
             value.resval.rstring = text;
             Ok(e.setXData(&head));
         });
     },
     "-data|+other"},
    {"content of a record",
     [](Loaded& d) {
         Change<AcDbXrecord>(d, 0x40, [](auto& x) {
             resbuf* chain = acutNewRb(1000);
             Ok(acutNewString(L"", chain->resval.rstring));
             chain->rbnext = acutNewRb(290);
             chain->rbnext->resval.rint = 1;
             Ok(x.setFromRbChain(*chain));
             acutRelRb(chain);
         });
     },
     "+1000|+|+290|-text|-70|-5"}};

TEST(Change, OnlyTheChangedTags) {
    const std::string before = BaseDrawing();
    for (const ChangeCase& c : kChanges) {
        SCOPED_TRACE(c.name);
        Loaded drawing(before);
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        c.change(drawing);
        const std::string after = drawing.Written();
        EXPECT_EQ(c.diff, Diff(before, after));
        // Reading the result and writing it again changes nothing more.
        Loaded again(after);
        ASSERT_TRUE(again.result.ok()) << again.result.message;
        EXPECT_EQ(after, again.Written());
    }
}

TEST(Change, BinaryDrawings) {
    const std::string text = BaseDrawing();
    for (const ChangeCase& c : kChanges) {
        SCOPED_TRACE(c.name);
        Loaded inText(text), inBinary(BinaryOf(text, true));
        ASSERT_TRUE(inBinary.result.ok()) << inBinary.result.message;
        c.change(inText);
        c.change(inBinary);
        EXPECT_EQ(BinaryOf(inText.Written(), true), inBinary.Written());
    }
}

}  // namespace
