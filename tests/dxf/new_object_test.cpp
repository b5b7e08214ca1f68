// What is made in a drawing stands where and how its version wants it.
#include <functional>
#include <gmock/gmock.h>

#include "drawing_text.h"
#include "line_diff.h"

namespace {

using namespace test;

void Ok(Acad::ErrorStatus es) { EXPECT_EQ(Acad::eOk, es); }

AcDbObjectId AddLine(AcDbDatabase& db, const wchar_t* layer = nullptr,
                     const wchar_t* space = ACDB_MODEL_SPACE) {
    AcDbBlockTable* table = nullptr;
    AcDbBlockTableRecord* block = nullptr;
    Ok(db.getBlockTable(table, AcDb::kForRead));
    Ok(table->getAt(space, block, AcDb::kForWrite));
    Ok(table->close());
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(9, 0, 0));
    AcDbObjectId id;
    Ok(block->appendAcDbEntity(id, line));
    if (layer != nullptr) Ok(line->setLayer(layer));
    Ok(line->close());
    Ok(block->close());
    return id;
}

void AddLayer(AcDbDatabase& db, const wchar_t* name) {
    AcDbLayerTable* table = nullptr;
    Ok(db.getLayerTable(table, AcDb::kForWrite));
    auto* layer = new AcDbLayerTableRecord;
    Ok(layer->setName(name));
    Ok(table->add(layer));
    Ok(layer->close());
    Ok(table->close());
}

const char kR2000Tables[] =
    "0|TABLE|2|LTYPE|5|5|330|0|100|AcDbSymbolTable|70|3|"
    "0|LTYPE|5|14|330|5|100|AcDbSymbolTableRecord|100|AcDbLinetypeTableRecord|2|ByBlock|70|0|3||72|"
    "65|"
    "73|0|40|0.0|"
    "0|LTYPE|5|15|330|5|100|AcDbSymbolTableRecord|100|AcDbLinetypeTableRecord|2|ByLayer|70|0|3||72|"
    "65|"
    "73|0|40|0.0|"
    "0|LTYPE|5|16|330|5|100|AcDbSymbolTableRecord|100|AcDbLinetypeTableRecord|2|Continuous|70|0|3||"
    "72|"
    "65|73|0|40|0.0|0|ENDTAB|"
    "0|TABLE|2|LAYER|5|2|330|0|100|AcDbSymbolTable|70|1|"
    "0|LAYER|5|10|330|2|100|AcDbSymbolTableRecord|100|AcDbLayerTableRecord|2|0|70|0|62|7|6|"
    "Continuous|"
    "370|-3|390|F|0|ENDTAB|"
    "0|TABLE|2|BLOCK_RECORD|5|1|330|0|100|AcDbSymbolTable|70|2|"
    "0|BLOCK_RECORD|5|1F|330|1|100|AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|*Model_Space|"
    "340|0|"
    "0|BLOCK_RECORD|5|1B|330|1|100|AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|*Paper_Space|"
    "340|0|"
    "0|BLOCK_RECORD|5|1C|330|1|100|AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|*Paper_Space0|"
    "340|0|"
    "0|ENDTAB";

std::string Block(const std::string& name, const std::string& owner, const std::string& handles) {
    return "0|BLOCK|5|" + handles + "0|330|" + owner + "|100|AcDbEntity|8|0|100|AcDbBlockBegin|2|" +
           name + "|70|0|10|0.0|20|0.0|30|0.0|3|" + name + "|1||0|ENDBLK|5|" + handles + "1|330|" +
           owner + "|100|AcDbEntity|8|0|100|AcDbBlockEnd";
}

std::string R2000() {
    return Lines(Header("AC1015", "9|$HANDSEED|5|100") + Section("TABLES", kR2000Tables) +
                 Section("BLOCKS", Block("*Model_Space", "1F", "2") + "|" +
                                       Block("*Paper_Space", "1B", "3") + "|" +
                                       Block("*Paper_Space0", "1C", "4")) +
                 Section("ENTITIES", "") +
                 Section("OBJECTS", "0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1") + "0|EOF");
}

std::string R12(const std::string& handle) {
    return Lines(
        Header("AC1009") +
        Section("TABLES", "0|TABLE|2|LAYER|70|1|0|LAYER|2|0|70|0|62|7|6|CONTINUOUS|0|ENDTAB") +
        Section("ENTITIES", "0|POINT|" + (handle.empty() ? "" : "5|" + handle + "|") +
                                "8|0|10|1.0|20|1.0|30|0.0") +
        "0|EOF");
}

struct NewCase {
    const char* name;
    std::string before;
    std::function<void(Loaded&)> change;
    const char* diff;
};

TEST(NewObject, OnlyWhatIsNewIsAdded) {
    const NewCase cases[] = {
        {"line in model space", R2000(), [](Loaded& d) { AddLine(d.db); },
         "-100|+10D|+LINE|+5|+10C|+330|+1F|+100|+AcDbEntity|+8|+0|+100|+AcDbLine|+10|+0.0|+20|+"
         "0.0|"
         "+30|+0.0|+11|+9.0|+21|+0.0|+31|+0.0|+0"},
        {"line on the sheet in use", R2000(),
         [](Loaded& d) { AddLine(d.db, nullptr, ACDB_PAPER_SPACE); },
         "-100|+10D|+LINE|+5|+10C|+330|+1B|+100|+AcDbEntity|+67|+1|+8|+0|+100|+AcDbLine|+10|+0."
         "0|"
         "+20|+0.0|+30|+0.0|+11|+9.0|+21|+0.0|+31|+0.0|+0"},
        {"line on another sheet stands in its block", R2000(),
         [](Loaded& d) { AddLine(d.db, nullptr, L"*Paper_Space0"); },
         "-100|+10D|+LINE|+5|+10C|+330|+1C|+100|+AcDbEntity|+67|+1|+8|+0|+100|+AcDbLine|+10|+0.0|+"
         "20|"
         "+0.0|+30|+0.0|+11|+9.0|+21|+0.0|+31|+0.0|+0"},
        {"layer as its neighbours are, and the count raised", R2000(),
         [](Loaded& d) { AddLayer(d.db, L"NEW"); },
         "-100|+10D|-1|+2|+LAYER|+5|+10C|+330|+2|+100|+AcDbSymbolTableRecord|+100|+"
         "AcDbLayerTableRecord|"
         "+2|+NEW|+70|+0|+62|+7|+6|+Continuous|+370|+-3|+390|+F|+0"},
        {"line that is erased again", R2000(),
         [](Loaded& d) {
             AcDbEntity* line = nullptr;
             Ok(acdbOpenObject(line, AddLine(d.db), AcDb::kForWrite));
             Ok(line->erase());
             Ok(line->close());
         },
         ""},
        {"R12 without handles", R12(""), [](Loaded& d) { AddLine(d.db); },
         "+LINE|+8|+0|+10|+0.0|+20|+0.0|+30|+0.0|+11|+9.0|+21|+0.0|+31|+0.0|+0"},
        {"R12 with handles", R12("A1"), [](Loaded& d) { AddLine(d.db); },
         "+9|+$HANDSEED|+5|+B8|+LINE|+5|+B7|+8|+0|+10|+0.0|+20|+0.0|+30|+0.0|+11|+9.0|+21|+0.0|+31|"
         "+"
         "0.0|+0"},
        {"R12 layer", R12(""), [](Loaded& d) { AddLayer(d.db, L"NEW"); },
         "-1|+2|+LAYER|+2|+NEW|+70|+0|+62|+7|+6|+CONTINUOUS|+0"}};
    for (const NewCase& c : cases) {
        SCOPED_TRACE(c.name);
        Loaded drawing(c.before);
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        c.change(drawing);
        const std::string after = drawing.Written();
        EXPECT_EQ(c.diff, Diff(c.before, after));
        EXPECT_EQ(after, Loaded(after).Written());
    }
}

// A light polyline is a heavy one before R14.
TEST(NewObject, LightPolylineInR12) {
    Loaded drawing(R12(""));
    AcDbBlockTable* table = nullptr;
    AcDbBlockTableRecord* block = nullptr;
    Ok(drawing.db.getBlockTable(table, AcDb::kForRead));
    Ok(table->getAt(ACDB_MODEL_SPACE, block, AcDb::kForWrite));
    Ok(table->close());
    auto* line = new AcDbPolyline(2);
    Ok(line->addVertexAt(0, AcGePoint2d(1, 2), 0.5));
    Ok(line->addVertexAt(1, AcGePoint2d(3, 4)));
    line->setClosed(true);
    Ok(line->setElevation(7));
    Ok(block->appendAcDbEntity(line));
    Ok(line->close());
    Ok(block->close());
    EXPECT_THAT(
        Diff(R12(""), drawing.Written()),
        testing::HasSubstr("+POLYLINE|+8|+0|+66|+1|+10|+0.0|+20|+0.0|+30|+7.0|+70|+1|+0|+VERTEX|"
                           "+8|+0|+10|+1.0|+20|+2.0|+30|+7.0|+42|+0.5|+0|+VERTEX|+8|+0|+10|+3.0|"
                           "+20|+4.0|+30|+7.0|+0|+SEQEND|+8|+0"));
}

// Entities name layers; a renamed one must be found under its new name, whether read by then or
// not.
TEST(NewObject, RenamedLayer) {
    const std::string text =
        Lines(Section("TABLES",
                      "0|TABLE|2|LAYER|70|2|0|LAYER|5|10|2|0|70|0|62|7|6|CONTINUOUS|0|LAYER|5|11|2|"
                      "OLD|70|0|62|1|6|CONTINUOUS|0|ENDTAB") +
              Section("ENTITIES", Line("A1", "OLD") + "|" + Line("A2", "old") + "|" + Line("A3")) +
              "0|EOF");
    Loaded drawing(text);
    AcDbLayerTableRecord* layer = nullptr;
    Ok(acdbOpenObject(layer, drawing.Id(0x11), AcDb::kForWrite));
    Ok(layer->setName(L"NEW"));
    Ok(layer->close());
    AcDbEntity* entity = nullptr;
    Ok(acdbOpenObject(entity, drawing.Id(0xA1)));
    EXPECT_EQ(drawing.Id(0x11), entity->layerId());
    Ok(entity->close());
    EXPECT_EQ("-OLD|+NEW|-OLD|+NEW|-old|+NEW", Diff(text, drawing.Written()));
}

// An attribute added to a reference that had none brings the mark and the end of the sequence.
TEST(NewObject, AttributeOfAnOldReference) {
    const std::string text = Lines(
        Section("BLOCKS", "0|BLOCK|8|0|2|PART|70|0|10|0.0|20|0.0|30|0.0|3|PART|0|ENDBLK|8|0") +
        Section("ENTITIES", "0|INSERT|5|A1|8|0|2|PART|10|0.0|20|0.0|30|0.0|" + Line("A2")) +
        "0|EOF");
    Loaded drawing(text);
    AcDbBlockReference* reference = nullptr;
    Ok(acdbOpenObject(reference, drawing.Id(0xA1), AcDb::kForWrite));
    auto* attribute = new AcDbAttribute(AcGePoint3d(1, 1, 0), L"T-01", L"TOOL");
    Ok(attribute->setHeight(2.5));
    Ok(reference->appendAttribute(attribute));
    Ok(attribute->close());
    Ok(reference->close());
    const std::string after = drawing.Written();
    EXPECT_THAT(after, testing::HasSubstr("\n66\n1\n"));
    EXPECT_LT(after.find("ATTRIB"), after.find("SEQEND"));
    EXPECT_LT(after.find("SEQEND"), after.find("LINE\n5\nA2"));
    Loaded again(after);
    EXPECT_EQ(2u, again.ModelSpace().size());
    EXPECT_EQ("", again.Notes());
}

// What a program stores may refer to objects by handle, so a drawing without handles gets them
// then.
TEST(NewObject, StoredDataTurnHandlesOn) {
    for (const std::string& text : {R12(""), Lines(Section("ENTITIES", Line("")) + "0|EOF")}) {
        Loaded drawing(text);
        const Adesk::UInt64 old = drawing.ModelSpace()[0].handle();
        const Adesk::UInt64 added = AddLine(drawing.db).handle();
        AcDbDictionary* root = nullptr;
        Ok(drawing.db.getNamedObjectsDictionary(root, AcDb::kForWrite));
        auto* record = new AcDbXrecord;
        AcDbObjectId id;
        Ok(root->setAt(L"TASK", record, id));
        Ok(record->close());
        Ok(root->close());
        Loaded again(drawing.Written());
        ASSERT_TRUE(again.result.ok()) << again.result.message;
        EXPECT_EQ("", again.Notes());
        ASSERT_EQ(2u, again.ModelSpace().size());
        EXPECT_EQ(old, Adesk::UInt64(again.ModelSpace()[0].handle()));
        EXPECT_EQ(added, Adesk::UInt64(again.ModelSpace()[1].handle()));
        Ok(again.db.getNamedObjectsDictionary(root, AcDb::kForRead));
        EXPECT_TRUE(root->has(L"TASK"));
        Ok(root->close());
    }
}

// Handles are never given twice, even when the file's seed is too low.
TEST(NewObject, HandlesStayUnique) {
    std::string text = R2000();
    text.replace(text.find("\n100\n"), 5, "\n8\n");  // the seed
    Loaded drawing(text);
    const AcDbObjectId id = AddLine(drawing.db);
    EXPECT_LT(Adesk::UInt64(0x41), Adesk::UInt64(id.handle()));
    Loaded again(drawing.Written());
    EXPECT_EQ("", again.Notes());
    EXPECT_LT(Adesk::UInt64(id.handle()), Adesk::UInt64(again.db.handseed()));
}

}  // namespace
