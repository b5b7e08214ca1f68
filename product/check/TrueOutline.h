// The outer contour of a tool's half as the drawing shows it, by GEOS from chords of its curves,
// and how far the engine's envelope and the other half lie from it. Shares nothing with the engine
// but the drawing.
//
// The curves of a half - mirrored when it is the lower one - and the axis are noded, loose ends
// that come near one another are joined, the faces between them united, and what surrounds the
// union is the contour.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "product/base/Axis.h"
#include "product/detect/ReadSheet.h"
#include "arxHeaders.h"

namespace product {

// The farthest of two contours' points from one another.
struct Deviation {
    double distance = 0;
    Point at;
    bool isOutside = false;  // the compared one reaches beyond the contour there
};

struct OutlineCheck {
    // The half that was asked for encloses an area. Without one there is nothing to compare.
    bool hasContour = false;
    // The lines come near one another so often that finding a contour would take minutes: nothing
    // was looked at.
    bool isTangled = false;
    bool hasOtherHalf = false;
    std::optional<Deviation> envelope;  // from the contour; none without envelope or contour
    std::optional<Deviation> halves;    // the other half, mirrored, from this one
    // A full circle or ellipse, of which the engine takes none, that reaches beyond the envelope.
    struct Round {
        Deviation reach;
        std::string layer;
        std::string handle;  // of the picked entity
    };
    std::vector<Round> rounds;
};

// What is compared: the tool's entities, of which a filter may take a part only, blocks taken
// apart; or curves that stand for them, unless there are none.
struct OutlineSource {
    const AcArray<AcDbObjectId>& ids;
    const detect::ItemFilter& takes;
    const std::vector<plane::Curve>& curves;
};

// axis       in any direction
// half       the half that the envelope is of; of both, what lies right of the axis is mirrored
//            upon the left
// withDashed dashed and centre lines are part of the outline
// envelope   a closed ring; empty: none
// tolerance  points closer than this are one; what is told is good to about that
// cost       O(n log n) for n chords, for each half, and linear in the pairs of them that come near
//            one another, up to a budget; the distance between samples of a contour is a
//            4000th of its length
OutlineCheck CheckOutline(const OutlineSource& source, const Axis& axis, Half half, bool withDashed,
                          const std::vector<Vertex>& envelope, double tolerance);

}  // namespace product
