// Line types that entities take from their layers.
#pragma once

#include <map>

#include "StdAfx.h"

// An entity that takes its dashes from its layer loses them when it moves to another one. The
// resolver states the layer's line type on the entity itself, so that the move keeps its look.
// Reads the layers once, at construction; a look-up costs O(log layers).
class CLinetypeResolver {
public:
    // bActive false: Resolve() does nothing and no layer is read.
    explicit CLinetypeResolver(bool bActive);

    // pEntity  open for write, or not yet in a database; its line type is set when it is ByLayer
    // and
    //          its layer has one
    // result   false when the entity refuses the change
    bool Resolve(AcDbEntity* pEntity) const;

private:
    AcDbObjectId m_byLayerId;
    std::map<AcDbObjectId, AcDbObjectId> m_linetypes;  // layer to line type
};
