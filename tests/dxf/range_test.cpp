// What is written for new objects lies within the range of its group code, in every version.
#include "drawing_text.h"
#include "host/db/build.h"
#include "host/dxf/codec.h"
#include "host/dxf/record_classes.h"
#include "value_ranges.h"

namespace {

using namespace test;

void Ok(Acad::ErrorStatus es) { EXPECT_EQ(Acad::eOk, es); }

AcCmEntityColor ColorOf(int i) {
    AcCmEntityColor color;
    switch (i) {
        case 1:
            color = AcCmEntityColor(0, 0, 0);
            break;
        case 2:
            color = AcCmEntityColor(255, 255, 255);
            break;
        case 3:
            Ok(color.setColorIndex(255));
            break;
        case 4:
            Ok(color.setColorIndex(AcCmEntityColor::kACIbyBlock));
            break;
        default:
            break;
    }
    return color;
}

constexpr AcDb::LineWeight kWeights[] = {AcDb::kLnWtByLayer, AcDb::kLnWtByBlock,
                                         AcDb::kLnWtByLwDefault, AcDb::kLnWt000, AcDb::kLnWt211};

// One of the class in each colour and lineweight, as the class makes it.
void AddEntities(AcDbDatabase& db, const host::dxf::Codec& codec) {
    for (int i = 0; i < 5; ++i) {
        std::unique_ptr<AcRxObject> made(codec.type()->create());
        auto* entity = AcDbEntity::cast(made.get());
        AcDbBlockTable* table = nullptr;
        AcDbBlockTableRecord* block = nullptr;
        Ok(db.getBlockTable(table, AcDb::kForRead));
        Ok(table->getAt(i == 3 ? ACDB_PAPER_SPACE : ACDB_MODEL_SPACE, block, AcDb::kForWrite));
        Ok(table->close());
        ASSERT_EQ(Acad::eOk, block->appendAcDbEntity(entity)) << codec.dxfName;
        static_cast<void>(made.release());
        Ok(block->close());
        Ok(entity->setColor(ColorOf(i)));
        Ok(entity->setLineWeight(kWeights[i]));
        Ok(entity->setVisibility(i % 2 != 0 ? AcDb::kInvisible : AcDb::kVisible));
        Ok(entity->setLinetypeScale(i + 0.5));
        if (auto* circle = AcDbCircle::cast(entity)) Ok(circle->setRadius(2.5));
        if (auto* arc = AcDbArc::cast(entity)) Ok(arc->setRadius(1e-7));
        Ok(entity->close());
    }
}

void AddRecord(AcDbDatabase& db, const host::dxf::Codec& codec) {
    for (int i = 0; i < static_cast<int>(host::Root::kNamedObjects); ++i) {
        const auto root = static_cast<host::Root>(i);
        if (host::dxf::TableRecordClass(root) != codec.type()) continue;
        for (int k = 0; k < 5; ++k) {
            AcDbSymbolTable* table = nullptr;
            Ok(acdbOpenObject(table, host::GetRoot(db, root)->Id(), AcDb::kForWrite));
            std::unique_ptr<AcRxObject> made(codec.type()->create());
            auto* record = AcDbSymbolTableRecord::cast(made.get());
            Ok(record->setName((L"NEW" + std::to_wstring(k)).c_str()));
            ASSERT_EQ(Acad::eOk, table->add(record)) << codec.dxfName;
            static_cast<void>(made.release());
            if (auto* layer = AcDbLayerTableRecord::cast(record)) {
                AcCmColor color;
                static_cast<AcCmEntityColor&>(color) = ColorOf(k);
                if (!color.isByLayer() && !color.isByBlock()) layer->setColor(color);
                layer->setIsOff(k % 2 != 0);
                Ok(layer->setIsFrozen(k > 2));
                Ok(layer->setLineWeight(kWeights[2 + k % 3]));
            }
            Ok(record->close());
            Ok(table->close());
        }
    }
}

void AddObject(AcDbDatabase& db, const host::dxf::Codec& codec) {
    AcDbDictionary* root = nullptr;
    Ok(db.getNamedObjectsDictionary(root, AcDb::kForWrite));
    std::unique_ptr<AcRxObject> made(codec.type()->create());
    AcDbObjectId id;
    auto* object = AcDbObject::cast(made.get());
    ASSERT_EQ(Acad::eOk, root->setAt(codec.type()->name(), object, id)) << codec.dxfName;
    static_cast<void>(made.release());
    Ok(object->close());
    Ok(root->close());
}

// What only lives inside another entity.
bool IsPart(const std::string& name) {
    return name == "VERTEX" || name == "SEQEND" || name == "ATTRIB";
}

// One of every class that the writer knows.
void AddEverything(AcDbDatabase& db) {
    using namespace host::dxf;
    for (const auto* codecs : {&CurveCodecs(), &PolylineCodecs(), &TextCodecs(), &DimensionCodecs(),
                               &ShapeCodecs(), &HatchCodecs(), &TableCodecs(), &ObjectCodecs()})
        for (const Codec& codec : *codecs) {
            SCOPED_TRACE(codec.dxfName);
            if (codec.type()->isDerivedFrom(AcDbSymbolTableRecord::desc()))
                AddRecord(db, codec);
            else if (!codec.type()->isDerivedFrom(AcDbEntity::desc()))
                AddObject(db, codec);
            else if (!IsPart(codec.dxfName))
                AddEntities(db, codec);
        }
}

TEST(Range, NewObjectsOfEveryClassAndVersion) {
    for (int version : {1009, 1014, 1015, 1018, 1021, 1024, 1027, 1032}) {
        SCOPED_TRACE(version);
        AcDbDatabase db(true, true);
        AddEverything(db);
        std::string bytes;
        host::dxf::Report report;
        host::dxf::WriteOptions options;
        options.version = version;
        const auto result = host::dxf::WriteToString(db, bytes, report, options);
        ASSERT_TRUE(result.ok()) << result.message;
        EXPECT_EQ("", RangeFaults(bytes));
        Loaded again(bytes);
        EXPECT_TRUE(again.result.ok()) << again.result.message;
    }
}

TEST(Range, AddedToDrawingsOfEveryVersion) {
    for (const char* version : {"AC1009", "AC1014", "AC1015", "AC1018", "AC1021", "AC1032"}) {
        SCOPED_TRACE(version);
        Loaded drawing(Lines(Header(version, "9|$HANDSEED|5|100") +
                             Section("ENTITIES", Line("30")) + "0|EOF"));
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        AddEverything(drawing.db);
        EXPECT_EQ("", RangeFaults(drawing.Written()));
    }
}

// The checker itself sees what it is there for.
TEST(Range, FaultsAreSeen) {
    const char* const kFaults[] = {
        "0|LAYER|420|4294967295", "0|LINE|62|300",   "0|LINE|370|-4",      "0|LINE|40|1,5",
        "0|CIRCLE|40|0.0",        "0|LINE|70|40000", "0|LINE|290|2",       "0|LINE|5|XYZ",
        "0|LINE|310|ABC",         "0|LINE|80|1",     "0|DICTIONARY|281|9", "0|LINE|10|nan"};
    for (const char* fault : kFaults) EXPECT_NE("", RangeFaults(Lines(fault))) << fault;
    EXPECT_EQ("", RangeFaults(Lines("0|LINE|5|A1|62|-255|370|211|10|1.5e-07|420|16777215")));
}

}  // namespace
