// Drawings with new objects, of every version, as another program reads them.
#include <sys/wait.h>

#include "drawing_text.h"
#include "support/scratch.h"
#include "value_ranges.h"

namespace {

using namespace test;
namespace fs = std::filesystem;

void Ok(Acad::ErrorStatus es) { EXPECT_EQ(Acad::eOk, es); }

void Append(AcDbDatabase& db, AcDbEntity* entity, const wchar_t* space = ACDB_MODEL_SPACE) {
    AcDbBlockTable* table = nullptr;
    Ok(db.getBlockTable(table, AcDb::kForRead));
    AcDbBlockTableRecord* block = nullptr;
    Ok(table->getAt(space, block, AcDb::kForWrite));
    Ok(table->close());
    Ok(block->appendAcDbEntity(entity));
    Ok(block->close());
}

AcDbObjectId AddLayer(AcDbDatabase& db, const wchar_t* name) {
    AcDbLayerTable* table = nullptr;
    Ok(db.getLayerTable(table, AcDb::kForWrite));
    auto* layer = new AcDbLayerTableRecord;
    Ok(layer->setName(name));
    AcDbObjectId id;
    Ok(table->add(id, layer));
    Ok(layer->close());
    Ok(table->close());
    return id;
}

void AddLinetype(AcDbDatabase& db) {
    AcDbLinetypeTable* table = nullptr;
    Ok(db.getLinetypeTable(table, AcDb::kForWrite));
    if (!table->has(L"NEWDASH")) {
        auto* type = new AcDbLinetypeTableRecord;
        Ok(type->setName(L"NEWDASH"));
        Ok(type->setComments(L"__ __"));
        Ok(type->setNumDashes(2));
        Ok(type->setDashLengthAt(0, 6.0));
        Ok(type->setDashLengthAt(1, -3.0));
        Ok(type->setPatternLength(9.0));
        Ok(table->add(type));
        Ok(type->close());
    }
    Ok(table->close());
}

void AddRegApp(AcDbDatabase& db) {
    AcDbRegAppTable* table = nullptr;
    Ok(db.getRegAppTable(table, AcDb::kForWrite));
    auto* app = new AcDbRegAppTableRecord;
    Ok(app->setName(L"QZ_TEST"));
    Ok(table->add(app));
    Ok(app->close());
    Ok(table->close());
}

AcDbObjectId AddBlock(AcDbDatabase& db) {
    AcDbBlockTable* table = nullptr;
    Ok(db.getBlockTable(table, AcDb::kForWrite));
    auto* block = new AcDbBlockTableRecord;
    Ok(block->setName(L"NEWPART"));
    AcDbObjectId id;
    Ok(table->add(id, block));
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(5, 0, 0));
    Ok(block->appendAcDbEntity(line));
    Ok(line->close());
    Ok(block->close());
    Ok(table->close());
    return id;
}

void AddEntities(AcDbDatabase& db, const wchar_t* layer) {
    const auto add = [&](AcDbEntity* entity) {
        Append(db, entity);
        Ok(entity->setLayer(layer));
        Ok(entity->close());
    };
    auto* line = new AcDbLine(AcGePoint3d(1, 2, 0), AcGePoint3d(3, 4, 0));
    Append(db, line);
    Ok(line->setLinetype(L"NEWDASH"));
    Ok(line->setColorIndex(1));
    resbuf value{nullptr, 1000, {}}, head{&value, 1001, {}};
    ACHAR app[] = L"QZ_TEST", text[] = L"T-01 \u5200\u5177";
    head.resval.rstring = app;
    value.resval.rstring = text;
    Ok(line->setXData(&head));
    Ok(line->close());
    add(new AcDbArc(AcGePoint3d(0, 0, 0), 5.0, 0.5, 2.0));
    add(new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2.0));
    add(new AcDbEllipse(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d(4, 0, 0), 0.5));
    AcGePoint3dArray points;
    AcGeDoubleArray knots, weights;
    for (int i = 0; i < 4; ++i) points.append(AcGePoint3d(i, i % 2, 0));
    for (double knot : {0., 0., 0., 0., 1., 1., 1., 1.}) knots.append(knot);
    add(new AcDbSpline(3, false, false, false, points, knots, weights));
    auto* light = new AcDbPolyline(3);
    Ok(light->addVertexAt(0, AcGePoint2d(0, 0), 0.5));
    Ok(light->addVertexAt(1, AcGePoint2d(10, 0)));
    Ok(light->addVertexAt(2, AcGePoint2d(10, 10)));
    light->setClosed(true);
    add(light);
    add(new AcDb2dPolyline(AcDb::k2dSimplePoly, points));
    add(new AcDb3dPolyline(AcDb::k3dSimplePoly, points));
    add(new AcDbText(AcGePoint3d(1, 1, 0), L"\u4e2d\u6587 text", AcDbObjectId(), 2.5));
    add(new AcDbPoint(AcGePoint3d(7, 7, 0)));
}

void AddReference(AcDbDatabase& db, AcDbObjectId block) {
    auto* reference = new AcDbBlockReference(AcGePoint3d(20, 20, 0), block);
    Append(db, reference);
    auto* attribute = new AcDbAttribute(AcGePoint3d(20, 21, 0), L"T-01", L"TOOL");
    Ok(attribute->setHeight(2.5));
    Ok(reference->appendAttribute(attribute));
    Ok(attribute->close());
    Ok(reference->close());
}

AcDbObjectId AddRecord(AcDbDatabase& db) {
    AcDbDictionary* root = nullptr;
    Ok(db.getNamedObjectsDictionary(root, AcDb::kForWrite));
    auto* dictionary = new AcDbDictionary;
    AcDbObjectId id;
    Ok(root->setAt(L"QZ_TASKS", dictionary, id));
    auto* record = new AcDbXrecord;
    Ok(dictionary->setAt(L"ONE", record, id));
    resbuf* chain = acutNewRb(1);
    Ok(acutNewString(L"\u5200 one", chain->resval.rstring));
    chain->rbnext = acutNewRb(40);
    chain->rbnext->resval.rreal = 0.1;
    Ok(record->setFromRbChain(*chain));
    acutRelRb(chain);
    Ok(record->close());
    Ok(dictionary->close());
    Ok(root->close());
    return id;
}

void AddGroup(AcDbDatabase& db, AcDbObjectId member) {
    AcDbDictionary* groups = nullptr;
    Ok(db.getGroupDictionary(groups, AcDb::kForWrite));
    auto* group = new AcDbGroup(L"members");
    AcDbObjectId id;
    Ok(groups->setAt(L"PAIR", group, id));
    Ok(group->append(member));
    Ok(group->close());
    Ok(groups->close());
}

// Everything that a program adds to drawings. Dictionaries exist from R13 on.
void AddEverything(AcDbDatabase& db, int version) {
    AddLinetype(db);
    AddRegApp(db);
    AddLayer(db, L"NEWLAYER");
    AddEntities(db, L"NEWLAYER");
    AddReference(db, AddBlock(db));
    if (version < 1012) return;
    AddRecord(db);
    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0));
    Append(db, line);
    Ok(line->createExtensionDictionary());
    const AcDbObjectId id = line->objectId();
    Ok(line->close());
    AddGroup(db, id);
}

// What the other reader says; empty when it found nothing wrong, "skip" when it is not there.
std::string Audit(const std::vector<fs::path>& files) {
    std::string command = "/usr/bin/python3 tests/dxf/audit.py";
    for (const fs::path& file : files) command += " " + file.string();
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    std::string output;
    char buffer[4096];
    while (std::size_t got = std::fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, got);
    const int status = ::pclose(pipe);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 77) return "skip";
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? std::string() : output;
}

// A minimal drawing by hand of a version, with or without tables.
std::string Small(const std::string& version, bool tables) {
    std::string text = Header(version, "9|$HANDSEED|5|100");
    if (tables && version == "AC1009")
        text = Header(version) +
               Section("TABLES",
                       "0|TABLE|2|LTYPE|70|1|0|LTYPE|2|CONTINUOUS|70|0|3||72|65|73|0|40|0.0|0|"
                       "ENDTAB|0|TABLE|2|LAYER|70|1|0|LAYER|2|0|70|0|62|7|6|CONTINUOUS|0|"
                       "ENDTAB");
    return Lines(text + Section("ENTITIES", Line("")) + "0|EOF");
}

TEST(Conformance, NewDrawings) {
    TempFolder folder;
    std::vector<fs::path> files;
    for (int version : {1009, 1014, 1015, 1018, 1021, 1024, 1027, 1032}) {
        AcDbDatabase db(true, true);
        AddEverything(db, version);
        host::dxf::Report report;
        host::dxf::WriteOptions options;
        options.version = version;
        files.push_back(folder.path / ("new_" + std::to_string(version) + ".dxf"));
        const auto result = host::dxf::WriteFile(db, files.back().string(), report, options);
        ASSERT_TRUE(result.ok()) << result.message;
        EXPECT_EQ("", RangeFaults(FileContent(files.back())));
        Loaded again(FileContent(files.back()));
        ASSERT_TRUE(again.result.ok()) << again.result.message;
        EXPECT_EQ("", again.Notes());
        EXPECT_EQ(version < 1012 ? 11u : 12u, again.ModelSpace().size());
    }
    const std::string found = Audit(files);
    if (found == "skip") GTEST_SKIP() << "ezdxf is not installed";
    EXPECT_EQ("", found);
}

// Adds everything to a drawing and puts it into the folder.
void AddAndWrite(const std::string& bytes, const fs::path& file, int version) {
    SCOPED_TRACE(file.filename().string());
    Loaded drawing(bytes);
    ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
    AddEverything(drawing.db, version);
    host::dxf::Report report;
    const auto result = host::dxf::WriteFile(drawing.db, file.string(), report);
    ASSERT_TRUE(result.ok()) << result.message;
    Loaded again(FileContent(file));
    ASSERT_TRUE(again.result.ok()) << again.result.message;
    EXPECT_EQ(drawing.ModelSpace().size(), again.ModelSpace().size());
}

TEST(Conformance, AddedToSmallDrawingsOfEveryVersion) {
    TempFolder folder;
    std::vector<fs::path> files;
    const auto add = [&](const std::string& bytes, const std::string& name, int version) {
        files.push_back(folder.path / name);
        AddAndWrite(bytes, files.back(), version);
    };
    add(Small("AC1009", true), "r12.dxf", 1009);
    add(Small("AC1009", false), "r12_bare.dxf", 1009);
    add(BinaryOf(Small("AC1009", true), false), "r12_binary.dxf", 1009);
    for (int version : {1014, 1015, 1018, 1021, 1024, 1027, 1032}) {
        const std::string small = Small("AC" + std::to_string(version), false);
        add(small, "bare_" + std::to_string(version) + ".dxf", version);
        add(BinaryOf(small, true), "binary_" + std::to_string(version) + ".dxf", version);
    }
    const std::string found = Audit(files);
    if (found == "skip") GTEST_SKIP() << "ezdxf is not installed";
    EXPECT_EQ("", found);
}

// Drawings by others may have faults of their own; adding to them must not make more.
TEST(Conformance, AddedToSharedDrawings) {
    TempFolder folder;
    std::vector<fs::path> before, after;
    for (const fs::path& shared : SharedDrawings()) {
        if (shared.stem() > "case_03" && shared.stem() < "case_99") continue;
        before.push_back(shared);
        after.push_back(folder.path / shared.filename());
        AddAndWrite(FileContent(shared), after.back(), 1015);
    }
    if (before.empty()) GTEST_SKIP() << "no shared drawings beside the source folder";
    const std::string found = Audit(after);
    if (found == "skip") GTEST_SKIP() << "ezdxf is not installed";
    EXPECT_EQ(Audit(before), found);
}

}  // namespace
