// What line types mean: one table for everything that tells a visible edge from a hidden one or
// from a centre line.
//
// The step-by-step pipelines and the batch search keep lists of names of their own, on purpose:
// their results are fixed by them. Everything else asks here.
#pragma once

#include <string>
#include <vector>

namespace plane {

enum class LinetypeKind {
    Continuous,
    Dashed,   // even dashes
    Hidden,   // even dashes, by name meant for edges behind others
    Centre,   // one mark between long dashes: axes
    Phantom,  // two marks or more between long dashes
    Dot,      // dots alone
    Other     // gaps in another order: borders, fences, rails
};

// What a name says by the line type files that come with CAD systems and by the names that national
// standards use (ISO 128, ANSI, JIS, DIN, GB; Chinese and German words), wherever in the name they
// stand, without regard to case, blanks, underscores, hyphens and full stops.
//
// name     the part behind "|" and "$0$" counts, where a bound or attached drawing's name stands in
//          front
// isKnown  receives whether the table has the name; if not, the result is Continuous
LinetypeKind KindOfLinetypeName(const std::wstring& name, bool& isKnown);

// What a pattern says: positive numbers are dashes, negative ones gaps, 0 is a dot. Without a gap
// it is Continuous. Dashes up to half as long as the longest count as marks.
LinetypeKind KindOfLinetypePattern(const std::vector<double>& pattern);

// By both witnesses: the name first; the pattern decides for names that the table does not have,
// and for names of continuous lines whose pattern has gaps. What names a dashed line means one,
// with or without a pattern.
LinetypeKind KindOfLinetype(const std::wstring& name, const std::vector<double>& pattern);

}  // namespace plane
