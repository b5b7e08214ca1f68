// What is picked for a computation.
#pragma once

#include <optional>
#include <vector>

#include "arxHeaders.h"
#include "product/tool/ToolRequest.h"

namespace product {

struct Selection {
    AcArray<AcDbObjectId> ids;  // in file order, envelopes of earlier runs not among them
    Box box;                    // of everything picked
    int notDisplayed = 0;       // inside the window, but invisible or on a layer off or frozen
    AcArray<AcDbObjectId> envelopes;  // of earlier runs, where the others were picked
    int filtered = 0;                 // inside the window, but kept out by layer or type
    int partial = 0;                  // blocks among the ids of which that holds for a part
    // Displayed entities that the window cuts: how many, and where the first one leaves it.
    int cut = 0;
    Point cutAt;
};

// Sorts out what somebody picked: envelopes of earlier runs (layer TempEncircleLine, in any case of
// letters) are told apart from the rest, whose box is taken. Nothing is looked at for being
// displayed. What cannot be opened stays among the ids.
// cost  opens every entity twice
Selection SelectionOf(const AcArray<AcDbObjectId>& picked);

// The entities of model space with what picking asks of them, read once.
class PickList {
public:
    // cost   opens every entity once
    // fails  Failure with NothingThere when model space cannot be read
    explicit PickList(AcDbDatabase& database);

    // Finds without a window everything; with one what lies inside it and is displayed, as a window
    // selection does. Nothing in the drawing changes: erasing earlier envelopes is the caller's.
    //
    // cost     O(log n + m) for m entities that begin within the window's x range
    Selection Pick(const std::optional<Box>& window) const;

    // Adds to a selection what the window cuts.
    // cost     O(entities)
    void CountCut(const Box& window, Selection& selection) const;

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

// What a rule picks; with a window only what is displayed.
// cost   opens every entity of model space
// fails  Failure with NothingThere when model space cannot be read
Selection PickBy(AcDbDatabase& database, const PickRule& rule);

// Erases earlier envelopes; those that are gone already are passed over.
// result   how many were erased
int EraseEnvelopes(const AcArray<AcDbObjectId>& envelopes);

// What the picked entities come to, and the one of them that comes to most.
struct PieceEstimate {
    double count = 0;
    AcDbObjectId largest;
};

// Number of chords into which the picked curves will be cut, blocks included, from above; not
// finite when a curve has no finite length, which is then the largest.
// cost  opens every entity once, and those of each block once
PieceEstimate EstimateSegments(const AcArray<AcDbObjectId>& ids, double arcPrecision);

// Entities that the picked ones come to when their blocks are taken apart; each block is looked at
// once.
PieceEstimate EstimatePieces(const AcArray<AcDbObjectId>& ids);

}  // namespace product
