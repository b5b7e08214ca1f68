#include "dbsymutl.h"

#include "dbapserv.h"
#include "host/db/database_imp.h"
#include "host/db/names.h"

using host::Root;

namespace {

// A null database means the working one.
AcDbDatabase* DatabaseOr(AcDbDatabase* db) {
    return db != nullptr ? db : acdbHostApplicationServices()->workingDatabase();
}

Acad::ErrorStatus IdByName(AcDbDatabase* db, Root root, const ACHAR* name, AcDbObjectId& id) {
    db = DatabaseOr(db);
    if (db == nullptr) return Acad::eNoDatabase;
    return name == nullptr ? Acad::eInvalidInput : host::FindRecord(*db, root, name, id);
}

}  // namespace

namespace AcDbSymbolUtilities {

AcDbObjectId Services::blockModelSpaceId(AcDbDatabase* db) const {
    db = DatabaseOr(db);
    return db == nullptr ? AcDbObjectId() : host::ImpOf(*db).modelSpace;
}
AcDbObjectId Services::blockPaperSpaceId(AcDbDatabase* db) const {
    db = DatabaseOr(db);
    return db == nullptr ? AcDbObjectId() : host::ImpOf(*db).paperSpace;
}
AcDbObjectId Services::layerZeroId(AcDbDatabase* db) const {
    db = DatabaseOr(db);
    return db == nullptr ? AcDbObjectId() : db->layerZero();
}
AcDbObjectId Services::linetypeByLayerId(AcDbDatabase* db) const {
    db = DatabaseOr(db);
    return db == nullptr ? AcDbObjectId() : db->byLayerLinetype();
}
AcDbObjectId Services::linetypeByBlockId(AcDbDatabase* db) const {
    db = DatabaseOr(db);
    return db == nullptr ? AcDbObjectId() : db->byBlockLinetype();
}
AcDbObjectId Services::linetypeContinuousId(AcDbDatabase* db) const {
    db = DatabaseOr(db);
    return db == nullptr ? AcDbObjectId() : db->continuousLinetype();
}

bool Services::isBlockModelSpaceName(const ACHAR* name) const {
    return name != nullptr && host::SameName(name, ACDB_MODEL_SPACE);
}
bool Services::isBlockPaperSpaceName(const ACHAR* name) const {
    return name != nullptr && host::SameName(name, ACDB_PAPER_SPACE);
}

Acad::ErrorStatus Services::getLayerId(AcDbObjectId& id, const ACHAR* name,
                                       AcDbDatabase* db) const {
    return IdByName(db, Root::kLayerTable, name, id);
}
Acad::ErrorStatus Services::getLinetypeId(AcDbObjectId& id, const ACHAR* name,
                                          AcDbDatabase* db) const {
    return IdByName(db, Root::kLinetypeTable, name, id);
}
Acad::ErrorStatus Services::getBlockId(AcDbObjectId& id, const ACHAR* name,
                                       AcDbDatabase* db) const {
    return IdByName(db, Root::kBlockTable, name, id);
}

Acad::ErrorStatus Services::getSymbolName(AcString& name, AcDbObjectId id) const {
    if (id.isNull()) return Acad::eNullObjectId;
    const AcDbSymbolTableRecord* const record =
        AcDbSymbolTableRecord::cast(host::ObjectOf(*id.stub()));
    return record == nullptr ? Acad::eWrongObjectType : record->getName(name);
}

Acad::ErrorStatus Services::validateSymbolName(const ACHAR* name, bool allowVerticalBar) const {
    return host::IsValidName(name, false, allowVerticalBar) ? Acad::eOk : Acad::eInvalidInput;
}

}  // namespace AcDbSymbolUtilities

const AcDbSymbolUtilities::Services* acdbSymUtil() {
    static const AcDbSymbolUtilities::Services services;
    return &services;
}
