// Adding entities to the working database.
#pragma once

#include "arxHeaders.h"

// The colour index that stands for the layer's.
constexpr Adesk::UInt16 kByLayerColour = 256;

// Appends a line from p to q to the named block, with this colour index and the line
// type ByLayer whatever the drawing's current setting, on the current layer.
//
// result   the new line, closed; null when the points are closer than kShortestLine (nothing is
//          added) or the block cannot be opened
AcDbObjectId AddLine(const AcGePoint3d& p, const AcGePoint3d& q, Adesk::UInt16 nColour,
                     const ACHAR* pSpaceName);

// Appends an entity to the named block of the working database, model space by default, and closes
// it. The entity is the database's from then on; when it cannot be appended it is deleted and the
// result is null.
AcDbObjectId AddEntity(AcDbEntity* pEntity, const ACHAR* pSpaceName = ACDB_MODEL_SPACE);

// Keeps one block open for write to append many entities cheaply. Nothing else may open the block
// meanwhile, so keep its life short.
class CBlockAppender {
public:
    explicit CBlockAppender(const ACHAR* pSpaceName = ACDB_MODEL_SPACE);
    CBlockAppender(const CBlockAppender&) = delete;
    CBlockAppender& operator=(const CBlockAppender&) = delete;

    // As AddEntity().
    AcDbObjectId Append(AcDbEntity* pEntity);
    // As AddLine(), without its refusal of short lines, and on a given layer unless it is null.
    AcDbObjectId AppendLine(const AcGePoint3d& p, const AcGePoint3d& q, Adesk::UInt16 nColour,
                            const AcDbObjectId& layerId = AcDbObjectId::kNull);

private:
    AcDbObjectPointer<AcDbBlockTableRecord> m_block;
    AcDbObjectId m_byLayerId;
};
