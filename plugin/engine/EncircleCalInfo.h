// The parameters of one envelope computation, filled by dialogs, tasks and the command line.
#pragma once

#include <afxwin.h>

#include "arxHeaders.h"

class AFX_EXT_CLASS CEncircleCalInfo {
public:
    CEncircleCalInfo();
    CEncircleCalInfo(const CEncircleCalInfo& other);
    CEncircleCalInfo& operator=(const CEncircleCalInfo& other);
    ~CEncircleCalInfo();

    bool m_bExcludeDashed;      // leave dashed and centre lines out
    bool m_bSideLinesVertical;  // close the ends by vertical lines instead of searching them
    AcGeTol m_tolPoint;         // 0.0005; both values of each tolerance are set alike
    AcGeTol m_tolLine;          // 0.001
    AcGeTol m_tolHorVer;        // 1e-6: a line is horizontal or vertical
    double m_dArcPrecision;     // 0.3 drawing units between the points that replace a curve
    double m_dSideLength;       // 5.0 drawing units: reach of the left and right ends
    Adesk::Int32 m_nHalfSide;   // 0 the upper half, 1 (anything else) the lower
    AcDbObjectId m_midLineId;   // the tool's axis, an AcDbLine; null when there is none
};
