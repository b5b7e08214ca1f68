// A drawing as the search for tools sees it.
#pragma once

#include <functional>
#include <vector>

#include "afx.h"
#include "arxHeaders.h"
#include "product/detect/Stroke.h"

namespace product::detect {

// The strokes, texts and heads of arrows that some entities show, their blocks taken apart.
struct ReadResult {
    Sheet sheet;
    AcArray<AcDbObjectId> entities;  // what Stroke::entity counts, in the order of the ids
    // What could not be looked at, a sentence each, UTF-8: blocks that cannot be taken apart,
    // entities that cannot be drawn as they are stated.
    std::vector<std::string> faults;
};

// Whether something on that layer, as it shows, and of that class counts; empty: everything does.
using ItemFilter = std::function<bool(const CString& layer, const AcRxClass* type)>;

// Left out: what is not displayed or locked, the dimension layer, earlier envelopes, dimensions,
// hatches, leaders, images.
//
// tolerance  drawing units that chords may leave curves by; 0: a hundred thousandth of the extents
// takes      what of the entities, blocks taken apart, counts
// cost       O(pieces); nothing stays open
ReadResult ReadSheet(AcDbDatabase& database, const AcArray<AcDbObjectId>& ids, double tolerance,
                     const ItemFilter& takes = {});

// A sheet of curves alone, all of them contour.
Sheet SheetOf(const std::vector<plane::Curve>& curves);

}  // namespace product::detect
