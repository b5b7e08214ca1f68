// The envelope of a rotating tool, defined by what it must be and not by steps.
//
// Words
//   (s, r)     place along the axis and distance from it; x and y of every plane::Point here
//   half       which side of the directed axis counts: upper (left of it), lower, or both, where
//              |r| is taken, as a turning tool does
//   size       diagonal of the box of what is there in the half, from the axis to the greatest r
//   stroke     a curve of the contour, what lies on one line or circle and overlaps joined to one
//   profile    R(s), the greatest r at each s
//   free end   an end of a stroke, off the axis, that nothing else touches
//   tail       the way back from a free end to the first place where another stroke touches
//   bridge     what closes an opening in the profile between an end and what faces it
//   face       how the outline goes down to the axis at either end
// docs/exact.md tells the rules one by one, with pictures.
#pragma once

#include <vector>

#include "Strokes.h"

namespace outline {

enum class Half { Upper, Lower, Both };

// Lengths in drawing units. Those that are not above 0 take the default, which fits millimetres,
// inches and micro tools alike.
struct Lengths {
    double point = 0;      // g: closer points are one. min(0.0005, 5e-6 size)
    double side = 0;       // d: how deep a face may lie. min(5, size / 10)
    double overshoot = 0;  // o: what is no longer may be an overshoot. min(0.5, size / 100)
    double curve = 0;      // how far tangent arcs may leave a spline. min(1e-3, 1e-5 size)
};
// The lengths with the defaults for that size filled in; that of g no finer than coordinates that
// are off by `rounding` can tell.
Lengths WithDefaults(const Lengths& lengths, double size, double rounding);

struct Request {
    std::vector<Contour> curves;  // (s, r), r of either sign
    Half half = Half::Upper;
    Lengths lengths;
    bool verticalEnds = false;
    // How far coordinates may be off by rounding, drawing units; 0: as the curves' own.
    double rounding = 0;
};

// Two places and how far they lie apart along what joins them.
struct Span2 {
    plane::Point from, to;
    double length = 0;
};
// A tail that was left out: its free end and how long it is.
struct Tail {
    plane::Point at;
    double length = 0;
    int source = -1;
};

enum class Refusal {
    None,
    Empty,        // nothing drawn in the half
    OnlyUpright,  // nothing but lines across the axis
    NotFinite,    // a coordinate or a radius is no number, or beyond kFarthest
    TwoTools,     // the profile comes down to the axis between its ends
    BadLengths    // a length that is negative, no number, or makes no sense for the drawing: see
                  // AreSensible
};

// Squares and products of what lies farther out would overflow.
inline constexpr double kFarthest = 1e60;

// True when all of a curve's numbers are numbers, and none lies beyond that.
bool IsWithin(const plane::Curve& curve);

// The finest curve tolerance for a size; never above the default.
double FinestCurve(double size);

// Whether lengths as used fit a drawing: neither the overshoot nor the curve tolerance is above the
// size, the latter is not finer than FinestCurve, and g is no more than a tenth of it and no less
// than what coordinates off by `rounding` can tell.
bool AreSensible(const Lengths& used, double size, double rounding);

// Why a curve counts for nothing.
enum class Ignored { OnAxis, Short, CentreLine };

struct Envelope {
    Refusal refusal = Refusal::None;
    plane::Point place;  // of the refusal
    int source = -1;     // of the curve that the refusal is about, when it is about one

    // From the axis at the s0 end over the top to the axis at the s1 end, edge by edge; r >= 0. The
    // closing edge along the axis is not among them.
    std::vector<plane::Curve> edges;

    double size = 0;
    Lengths lengths;             // as used
    std::vector<Span2> bridges;  // each end to end
    std::vector<Span2> gaps;     // where nothing at all is drawn
    std::vector<plane::Point> openEnds;
    std::vector<Tail> tails;
    struct Ignorance {
        Ignored reason = Ignored::OnAxis;
        int source = -1;
        plane::Point at;
    };
    std::vector<Ignorance> ignored;
};

// result  places are those of the half that is drawn: r >= 0; in a refusal for a coordinate the
//         curve's own end
// cost    O((n + k) log n) for n curves and k changes of the highest one along the profile; memory
//         O(n)
Envelope FindEnvelope(const Request& request);

}  // namespace outline
