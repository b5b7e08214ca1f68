// The parts that every drawing has. A new drawing is made of them alone; a drawing that was read
// gets those its file did not bring.

#include "host/db/database_imp.h"
#include "host/base/host_assert.h"

namespace host {

namespace {

// Puts a new object into the database below an owner, closed.
Stub& Place(AcDbDatabase& db, std::unique_ptr<AcDbObject> object, Stub* owner) {
    const Acad::ErrorStatus es = MakeResident(db, *object, owner, 0, false);
    HOST_ASSERT(es == Acad::eOk, "a new object is in no database");
    return *Access::StubOf(*object.release());
}

Stub& EnsureRoot(AcDbDatabase& db, Root root) {
    if (Stub* const stub = GetRoot(db, root)) return *stub;
    Stub& stub = Place(db, NewRootObject(root), nullptr);
    SetRoot(db, root, stub);
    return stub;
}

AcDbObjectId EnsureRecord(AcDbDatabase& db, Root root, const ACHAR* name) {
    AcDbObjectId id;
    if (FindRecord(db, root, name, id) == Acad::eOk) return id;
    Stub& table = EnsureRoot(db, root);
    auto& symbolTable = static_cast<AcDbSymbolTable&>(*table.object);
    AcRxClass* const type = Access::RecordClass(symbolTable);
    std::unique_ptr<AcDbObject> record(static_cast<AcDbObject*>(type->create()));
    Access::Name(static_cast<AcDbSymbolTableRecord&>(*record)) = name;
    Stub& stub = Place(db, std::move(record), &table);
    AddTableRecord(table, stub, name);
    Access::DirtyBits(symbolTable) |= kDirtyChildren;
    return stub.Id();
}

AcDbObjectId EnsureDictionary(AcDbDatabase& db, const ACHAR* name) {
    Stub& root = EnsureRoot(db, Root::kNamedObjects);
    auto& dictionary = static_cast<AcDbDictionary&>(*root.object);
    AcDbObjectId id;
    if (dictionary.getAt(name, id) == Acad::eOk) return id;
    Stub& stub = Place(db, std::make_unique<AcDbDictionary>(), &root);
    AddDictionaryEntry(root, name, stub);
    Access::DirtyBits(dictionary) |= kDirtyChildren;
    return stub.Id();
}

void EnsureLayout(AcDbDatabase& db, AcDbObjectId dictionaryId, AcDbObjectId blockId,
                  const ACHAR* name, int tabOrder) {
    auto& block = static_cast<AcDbBlockTableRecord&>(*blockId.stub()->object);
    if (!Access::LayoutId(block).isNull()) return;
    auto layout = std::make_unique<AcDbLayout>();
    Access::LayoutName(*layout) = name;
    Access::LayoutBlock(*layout) = blockId;
    Access::TabOrder(*layout) = tabOrder;
    Stub& stub = Place(db, std::move(layout), dictionaryId.stub());
    AddDictionaryEntry(*dictionaryId.stub(), name, stub);
    Access::LayoutId(block) = stub.Id();
}

void EnsureLinetypes(AcDbDatabase& db) {
    DatabaseImp& imp = ImpOf(db);
    imp.byBlock = EnsureRecord(db, Root::kLinetypeTable, ACRX_T("ByBlock"));
    imp.byLayer = EnsureRecord(db, Root::kLinetypeTable, ACRX_T("ByLayer"));
    imp.continuous = EnsureRecord(db, Root::kLinetypeTable, ACRX_T("Continuous"));
    auto& line = static_cast<AcDbLinetypeTableRecord&>(*imp.continuous.stub()->object);
    if (Access::Comments(line).empty()) Access::Comments(line) = ACRX_T("Solid line");
}

void EnsureLayers(AcDbDatabase& db) {
    DatabaseImp& imp = ImpOf(db);
    imp.layerZero = EnsureRecord(db, Root::kLayerTable, ACRX_T("0"));
    for (Stub* const stub : Members(*GetRoot(db, Root::kLayerTable)->object)) {
        auto& layer = static_cast<AcDbLayerTableRecord&>(*stub->object);
        if (Access::LayerLinetype(layer).isNull()) Access::LayerLinetype(layer) = imp.continuous;
    }
}

void EnsureStyles(AcDbDatabase& db) {
    HeaderVars& header = Header(db);
    const AcDbObjectId text = EnsureRecord(db, Root::kTextStyleTable, ACRX_T("Standard"));
    auto& style = static_cast<AcDbTextStyleTableRecord&>(*text.stub()->object);
    if (Access::FileName(style).empty()) Access::FileName(style) = ACRX_T("txt");
    const AcDbObjectId dim = EnsureRecord(db, Root::kDimStyleTable, ACRX_T("Standard"));
    if (header.textstyle.isNull()) header.textstyle = text;
    if (header.dimstyle.isNull()) header.dimstyle = dim;
}

}  // namespace

void FinishReading(AcDbDatabase& db) {
    DatabaseImp& imp = ImpOf(db);
    // What the file brought counts as unchanged; containers that get something added below do not.
    for (Stub* const stub : AllStubs(db))
        if (stub->object != nullptr) Access::DirtyBits(*stub->object) = 0;
    for (int root = 0; root < static_cast<int>(Root::kCount); ++root)
        EnsureRoot(db, static_cast<Root>(root));
    EnsureLinetypes(db);
    EnsureLayers(db);
    EnsureStyles(db);
    EnsureRecord(db, Root::kRegAppTable, ACRX_T("ACAD"));
    imp.modelSpace = EnsureRecord(db, Root::kBlockTable, ACDB_MODEL_SPACE);
    imp.paperSpace = EnsureRecord(db, Root::kBlockTable, ACDB_PAPER_SPACE);
    imp.groupDictionary = EnsureDictionary(db, ACRX_T("ACAD_GROUP"));
    if (imp.source == nullptr) EnsureDictionary(db, ACRX_T("ACAD_MLINESTYLE"));
    imp.layoutDictionary = EnsureDictionary(db, ACRX_T("ACAD_LAYOUT"));
    if (imp.source == nullptr) {
        EnsureLayout(db, imp.layoutDictionary, imp.modelSpace, ACRX_T("Model"), 0);
        EnsureLayout(db, imp.layoutDictionary, imp.paperSpace, ACRX_T("Layout1"), 1);
    }
    HeaderVars& header = imp.header;
    if (header.clayer.isNull()) header.clayer = imp.layerZero;
    if (header.celtype.isNull()) header.celtype = imp.byLayer;
    header.changed = 0;
    imp.modified = false;
}

}  // namespace host
