// What is asked of a tool's parts and of its place: where the cutting part ends, which end is the
// tip, where zero lies and which way the tool points.
#pragma once

#include "product/base/Outline.h"

namespace product {

// How the cutting part is told from the rest.
struct SplitRule {
    enum class Kind {
        None,    // not asked for
        Length,  // at a distance from the tip
        Line,    // at the line that is drawn across the whole section
        Layers,  // contours on the layers CUT and NOCUT, taken as they are
        Auto     // by a line, else by layers, else not at all
    } kind = Kind::None;
    double length = 0;  // drawing units, of Length
};

// The end of the tool that cuts: by the drawing's directions, or by those of the axis.
enum class TipSide { Auto, Left, Right, Top, Bottom, Start, End };

// Where solids and profiles stand. The envelope in the drawing stays where the drawing is.
struct Placement {
    enum class Zero { AsDrawn, Tip, Shank, AxisStart, At } zero = Zero::AsDrawn;
    Point at;  // of At, in the drawing; its foot on the axis is meant
    // Where the tip points.
    enum class Direction { AsDrawn, Left, Right, Up, Down } direction = Direction::AsDrawn;

    bool IsAsDrawn() const { return zero == Zero::AsDrawn && direction == Direction::AsDrawn; }
};

// 0xRRGGBB.
struct PartColours {
    unsigned cut = 0xFFFF00, rest = 0x808080;
};

struct PartRequest {
    SplitRule split;
    TipSide tip = TipSide::Auto;
    Placement placement;
    PartColours colours;

    bool IsSplit() const { return split.kind != SplitRule::Kind::None; }
};

}  // namespace product
