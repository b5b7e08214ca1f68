// Taking block references and polylines apart.
#pragma once

#include "LinetypeResolver.h"
#include "StdAfx.h"

// Explodes clones into model space. Pieces come back on layers of their own; here each is put on
// the current layer before it is appended, so that it goes with the other scratch entities at the
// end and can be changed even when its own layer is locked. Its line type is resolved first.
class CSourceExploder {
public:
    // bKeepLook  resolve the pieces' line types from their own layers
    explicit CSourceExploder(bool bKeepLook);

    // Replaces the entity by its pieces and erases it.
    //
    // pieces   receives the pieces in the host's order; an array insert gives those of all cells
    // result   false when there are none: the entity cannot be opened (it stays), or cannot be
    //          exploded or would give more than kMaxPieces (it is erased and noted in the trace)
    //
    // A block whose scales differ can hold entities that the host does not scale unequally and then
    // refuses as a whole. Each entity is then transformed by itself, or its own pieces are; only
    // what still refuses is lost.
    bool Explode(const AcDbObjectId& id, AcDbObjectIdArray& pieces);

private:
    CLinetypeResolver m_resolver;
    AcDbObjectId m_layerId;
};

// No tool drawing comes near it; an array insert of a crafted file would fill the memory.
constexpr int kMaxPieces = 4000000;
