#pragma once

#include <vector>

#include "LineInfo.h"

// The chains of one run: what each side sees, in order along the side. Empty where a side is not
// computed.
struct SSideChains {
    std::vector<CLineInfo> m_top;
    std::vector<CLineInfo> m_bottom;
    std::vector<CLineInfo> m_left;
    std::vector<CLineInfo> m_right;
    // The left and the right chain are lines straight to the axis, not what a side sees.
    bool m_bVerticalEnds = false;
};
