// Something about a tool that may be worth a person's look.
#pragma once

#include <optional>
#include <string>

#include "product/base/Outline.h"

namespace product {

struct Finding {
    enum class Kind {
        Axis,      // the axis lies beside the drawing's own, or was found without certainty
        Border,    // a sheet's border is part of what was picked
        Window,    // the window cuts entities
        Exact,     // the envelope and the exact one
        Gap,       // a place that the drawing leaves open, bridged
        Crossing,  // the envelope meets itself
        LeftOut,   // entities that take no part
        Beyond,    // one of them reaches beyond the envelope
        Halves,    // upper and lower half
        Outline,   // the envelope and the contour of the drawing
        Solid,     // the solid or its file
        Parts,     // tip, cutting part and rest
        Note       // anything else that a run had to say
    };

    Kind kind = Kind::Note;
    // A warning is what a person should look at; the rest says that something was looked at.
    bool isWarning = false;
    // One phrase, UTF-8, lengths in drawing units.
    std::string text;
    // Where, in the drawing's coordinates; pictures mark the places of warnings.
    std::optional<Point> at;
};

}  // namespace product
