// What block references, polylines and the like show, part by part: the one way in which this host
// takes apart what it traces, snaps to and paints.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <set>

#include "dbid.h"

class AcDbEntity;

namespace host {

class ShownParts {
public:
    // References in references deeper than this show nothing: whoever takes them apart calls
    // itself.
    static constexpr int kMostNested = 256;
    // Parts of all levels that one entity of the drawing shows at most: blocks that hold blocks
    // double with every level.
    static constexpr std::size_t kMostParts = 5000000;

    // Calls use for what the entity explodes into, as far as it is visible and its layer neither
    // off nor frozen. Each part is in the drawing's coordinates, belongs to nobody, and goes when
    // use returns; use may call this again for it.
    //
    // result  false when the entity has no parts. A block that holds itself shows nothing where it
    //         does, and neither does what comes after the limits.
    // cost    O(parts); layers are looked up once
    bool ForEach(const AcDbEntity& entity, const std::function<void(const AcDbEntity&)>& use);

    // For whoever takes a block apart in another way, and is to keep to the same limits. False when
    // nothing of it is to be shown; else Leave() ends what Enter() began.
    bool Enter(AcDbObjectId block, std::size_t parts);
    void Leave(AcDbObjectId block);
    // Neither off nor frozen; a layer that cannot be read is shown.
    bool IsShown(AcDbObjectId layerId);

private:
    std::set<AcDbObjectId> m_open;  // blocks that are being taken apart
    std::map<AcDbObjectId, bool> m_layers;
    int m_depth = 0;
    std::size_t m_parts = 0;
};

}  // namespace host
