// The fixed tolerances of the editor: of snapping and of boundary tracing.
#pragma once

namespace host {

// Points closer than this are one, in drawing units; the edge counts as closer. Files state
// coordinates with six digits; a gap that a person draws is a thousand times wider and stays a gap.
inline constexpr double kNodeTol = 1e-6;

// How far the chords that stand for ellipses, splines and arcs in other planes leave them at most,
// relative to the size of each; never less than kNodeTol.
inline constexpr double kChordTol = 1e-4;

// What lies beyond it, in drawing units, is neither traced nor snapped to: doubles no longer tell
// kNodeTol apart there.
inline constexpr double kMaxCoordinate = 1e9;

}  // namespace host
