// Short ways to symbol table records.
#pragma once

#include "dbsymtb.h"

namespace AcDbSymbolUtilities {
// All by names and identifiers, nothing stays open. A null database means the working one.
class Services {
public:
    // The space's record; null for a database that nothing was read into.
    AcDbObjectId blockModelSpaceId(AcDbDatabase* db) const;
    AcDbObjectId blockPaperSpaceId(AcDbDatabase* db) const;
    const ACHAR* blockModelSpaceName() const { return ACDB_MODEL_SPACE; }
    const ACHAR* blockPaperSpaceName() const { return ACDB_PAPER_SPACE; }
    AcDbObjectId layerZeroId(AcDbDatabase* db) const;
    const ACHAR* layerZeroName() const { return ACRX_T("0"); }
    AcDbObjectId linetypeByLayerId(AcDbDatabase* db) const;
    AcDbObjectId linetypeByBlockId(AcDbDatabase* db) const;
    AcDbObjectId linetypeContinuousId(AcDbDatabase* db) const;
    const ACHAR* linetypeByLayerName() const { return ACRX_T("ByLayer"); }
    const ACHAR* linetypeByBlockName() const { return ACRX_T("ByBlock"); }
    const ACHAR* linetypeContinuousName() const { return ACRX_T("Continuous"); }
    bool isBlockModelSpaceName(const ACHAR* name) const;  // without case
    bool isBlockPaperSpaceName(const ACHAR* name) const;

    // Identifiers by name; eKeyNotFound.
    Acad::ErrorStatus getLayerId(AcDbObjectId& id, const ACHAR* name, AcDbDatabase* db) const;
    Acad::ErrorStatus getLinetypeId(AcDbObjectId& id, const ACHAR* name, AcDbDatabase* db) const;
    Acad::ErrorStatus getBlockId(AcDbObjectId& id, const ACHAR* name, AcDbDatabase* db) const;
    // Name of any table record.
    Acad::ErrorStatus getSymbolName(AcString& name, AcDbObjectId id) const;
    // eInvalidInput for an empty or overlong name or one with a forbidden character.
    Acad::ErrorStatus validateSymbolName(const ACHAR* name, bool allowVerticalBar) const;
};
}  // namespace AcDbSymbolUtilities

// Never null.
const AcDbSymbolUtilities::Services* acdbSymUtil();
