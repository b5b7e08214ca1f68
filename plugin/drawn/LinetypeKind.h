// What line types mean: one table for everything that tells a visible edge from a hidden one or
// from a centre line.
//
// The step-by-step pipelines and the batch search keep lists of names of their own, on purpose:
// their results are fixed by them. Everything else asks here.
#pragma once

#include <map>
#include <vector>

#include "StdAfx.h"

enum class ELinetypeKind {
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
// pName   the part behind "|" and "$0$" counts, where a bound or attached drawing's name stands in
//         front
// bKnown  receives whether the table has the name; if not, the result is Continuous
ELinetypeKind KindOfLinetypeName(const ACHAR* pName, bool& bKnown);

// What a pattern says: positive numbers are dashes, negative ones gaps, 0 is a dot. Without a gap
// it is Continuous. Dashes up to half as long as the longest count as marks.
ELinetypeKind KindOfLinetypePattern(const std::vector<double>& pattern);

// A line type as it is looked up.
struct SLinetype {
    CString m_strName;
    ELinetypeKind m_kind = ELinetypeKind::Continuous;
    // By the pattern that the drawing defines. False, too, for a line type that says it is dashed
    // but has no pattern: files of other programs define such, and they show as full lines.
    bool m_bHasGaps = false;

    // Whether it means a visible edge.
    bool IsContinuous() const { return m_kind == ELinetypeKind::Continuous; }
};

// The line types of drawings, each read once. The name is the first witness, the pattern the second
// one: it decides for names that the table does not have, and for names of continuous lines whose
// pattern has gaps. What names a dashed line means one, with or without a pattern.
class CLinetypes {
public:
    // Keeps no line type open. A line type that cannot be read counts as Continuous without a name.
    // O(log n) after the first time. The reference holds as long as the object.
    const SLinetype& Look(const AcDbObjectId& linetypeId);

private:
    std::map<AcDbObjectId, SLinetype> m_known;
};
