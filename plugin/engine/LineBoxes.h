// Boxes of segments, as indexes want them; padding is left to the pass, which knows its tolerance.
#pragma once

#include <vector>

#include "BoxIndex.h"
#include "LineInfo.h"

// The box of a segment's end points; z and break points do not count.
inline SFlatBox GetFlatBox(const CLineInfo& line) {
    return GetFlatBox(line.m_startPt, line.m_endPt);
}

// The boxes of all segments, in their order: what indexes are built of.
inline std::vector<SFlatBox> GetFlatBoxes(const std::vector<CLineInfo>& lines) {
    std::vector<SFlatBox> boxes;
    boxes.reserve(lines.size());
    for (const CLineInfo& line : lines) {
        boxes.push_back(GetFlatBox(line));
    }
    return boxes;
}
