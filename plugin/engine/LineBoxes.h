#pragma once

#include <vector>

#include "BoxIndex.h"
#include "LineInfo.h"

inline SFlatBox GetFlatBox(const CLineInfo& line) {
    return SFlatBox::Of(line.m_startPt, line.m_endPt);
}

inline std::vector<SFlatBox> GetFlatBoxes(const std::vector<CLineInfo>& lines) {
    std::vector<SFlatBox> boxes;
    boxes.reserve(lines.size());
    for (const CLineInfo& line : lines) {
        boxes.push_back(GetFlatBox(line));
    }
    return boxes;
}
