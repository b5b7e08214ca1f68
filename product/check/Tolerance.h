// The fixed tolerances of the checks. They are this folder's own: a check that took over the
// engine's would pass over the engine's faults.
//
// A share is of the tool's size, the longer side of its box, unless said otherwise. What comes near
// a limit counts as within it: a warning wants more.
#pragma once

#include <cstddef>

namespace product {

// A deviation is worth a person's look beyond the larger of these two: so many point tolerances of
// the run, and a thousandth of the tool's diameter, which nobody sees on a drawing. Chords that
// stand for splines stay well below.
constexpr double kNotablePointTolerances = 10;
constexpr double kNotableDiameterShare = 1e-3;

// Below this nobody draws or measures; drawing units. Two contours that differ by less are told to
// agree.
constexpr double kNoDeviation = 1e-4;

// What chords may leave their curves by, so that they disturb no comparison.
constexpr double kChordShare = 2e-5;

// How far apart loose ends of a drawing are still joined for the contour: the gaps of careless
// drawings are closed, the mouth of a chip space is not.
constexpr double kBridgeShare = 0.02;

// Every pair of loose ends is compared: more of them are a drawing of something else.
constexpr std::size_t kMostLooseEnds = 2000;

// Pairs of chords that come near one another, for each chord and beside that, up to which a contour
// is looked for: some seconds. Each chord is near those before and behind it.
constexpr double kNearPairsOfChord = 4;
constexpr double kMostNearPairs = 30000;

// Points along a contour at which its distance from another one is measured.
constexpr double kContourSamples = 4000;

// Distances below this share of a contour's length are rounding, and not told from none.
constexpr double kNoiseShare = 1e-13;

// A union of faces smaller than this share of the tool's box is a stray detail, no outline.
constexpr double kLeastAreaShare = 0.01;

}  // namespace product
