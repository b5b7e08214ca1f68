// What is picked for a computation.
#pragma once

#include <optional>

#include "apps/qzenvelope/Outline.h"
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

// Picks entities of model space: without a window all of them; with one those whose extents lie
// inside it and that are displayed, as a window selection does.
//
// drawing  envelopes of earlier runs (layer TempEncircleLine, in any case of letters) among what is
//          picked are erased and not part of the result
// cost     opens every entity once
// fails    Failure with kNoResult when model space cannot be read
Selection Pick(AcDbDatabase& database, const std::optional<Box>& window);

// Number of chords into which the picked curves will be cut, blocks included, from above.
double EstimateSegments(const AcArray<AcDbObjectId>& ids, double arcPrecision);

}  // namespace app
