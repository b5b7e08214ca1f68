// The passes as plain double loops. They define what the engine's fast passes must give, bit for
// bit, and are written to be read, not to be quick.
#pragma once

#include "support/engine_probe.h"

namespace test {

class PlainEngine : public EngineProbe {
public:
    using EngineProbe::EngineProbe;
    using Lines = std::vector<CLineInfo>;

    void BreakLines(Lines& lines);
    void BreakLines2(Lines& lines, bool withVertical, bool shiftRight);
    void CalBreakPoint(CLineInfo& line, const AcArray<AcGePoint3d>& points, bool vertical,
                       double halfLength);
    bool SplitLine(CLineInfo& line, AcArray<AcDbObjectId>& newIds);
    Lines RemoveLine2(E_RemoveLine_Dir dir, const Lines& lines);
    bool IsPtInLineSpecifiedDir2(AcGePoint3d pt, AcGePoint3d start, AcGePoint3d end,
                                 E_RemoveLine_Dir dir);
    void RemoveLineInExcludeDir(E_RemoveLine_Dir dir, double axis, Lines& lines);
    void RemoveLineInOtherDir(const Lines& otherLines, Lines& lines);
    void RemoveRepeatLine2(Lines& lines);
    void UpdateLinePtByNearestPt(Lines& lines);
    void RemoveShortLine(Lines& lines);
    void RemoveLineByWalter(Lines& lines, E_RemoveLine_Dir dir);
    void ConnectBreakLine(E_RemoveLine_Dir dir, Lines& lines);
    void GetLineInfoPt(const Lines& lines, bool forward, bool unused, AcArray<AcGePoint3d>& pts);
    std::vector<Lines> BreakAndSee(const Lines& lines, bool withVertical, bool shiftRight,
                                   const std::vector<E_RemoveLine_Dir>& dirs);

    // Of the earlier pipelines (plain_earlier.cpp).
    void RemoveCrossLine(Lines& lines);
    Lines RemoveLine(E_RemoveLine_Dir dir, const Lines& lines);
    bool IsPtInLineSpecifiedDir(AcGePoint3d pt, AcGePoint3d start, AcGePoint3d end,
                                E_RemoveLine_Dir dir);

private:
    void SplitAll(Lines& lines);
};

}  // namespace test
