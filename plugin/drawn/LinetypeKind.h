// The line types of a drawing, by what they mean.
#pragma once

#include <map>

#include "StdAfx.h"
#include "plane/linetype_kind.h"

using ELinetypeKind = plane::LinetypeKind;

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

// The line types of drawings, each read once; their names and patterns are the two witnesses.
class CLinetypes {
public:
    // Keeps no line type open. A line type that cannot be read counts as Continuous without a name.
    // O(log n) after the first time. The reference holds as long as the object.
    const SLinetype& Look(const AcDbObjectId& linetypeId);

private:
    std::map<AcDbObjectId, SLinetype> m_known;
};
