// What is picked for a computation.
#pragma once

#include <optional>
#include <vector>

#include "product/tool/Outline.h"
#include "arxHeaders.h"

namespace app {

// Extents of an entity in the XY plane; nothing for those that have none.
std::optional<Box> ExtentsOf(const AcDbEntity& entity);

struct Selection {
    AcArray<AcDbObjectId> ids;  // in file order
    Box box;                    // of everything picked
    int notDisplayed = 0;       // inside the window, but invisible or on a layer off or frozen
    int earlierEnvelopes = 0;   // erased
};

// The entities of model space with what picking asks of them, read once.
class PickList {
public:
    // cost   opens every entity once
    // fails  Failure with kNoResult when model space cannot be read
    explicit PickList(AcDbDatabase& database);

    // Picks without a window everything; with one what lies inside it and is displayed, as a window
    // selection does.
    //
    // drawing  envelopes of earlier runs (layer TempEncircleLine, in any case of letters) among
    //          what is picked are erased and not part of the result
    // cost     O(log n + m) for m entities that begin within the window's x range
    Selection Pick(const std::optional<Box>& window) const;

private:
    struct Entry {
        AcDbObjectId id;
        std::optional<Box> box;
        bool isDisplayed = false;
        bool isEnvelope = false;
    };

    std::vector<Entry> m_entries;  // in file order
    std::vector<size_t> m_byLeft;  // those with a box, by its left side
};

// Number of chords into which the picked curves will be cut, blocks included, from above.
double EstimateSegments(const AcArray<AcDbObjectId>& ids, double arcPrecision);

// Entities that the picked ones come to when their blocks are taken apart, and the picked one that
// comes to most; each block is looked at once.
struct PieceEstimate {
    double count = 0;
    AcDbObjectId largest;
};
PieceEstimate EstimatePieces(const AcArray<AcDbObjectId>& ids);

}  // namespace app
