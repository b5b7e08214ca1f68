// The envelope engine: from picked entities to one closed polyline.
//
// Words used throughout the engine:
//   segment   one straight working line, a CLineInfo, in drawing units in the XY plane
//   piece     a segment that came out of breaking a longer one
//   side      where the drawing is looked at from, an E_RemoveLine_Dir
//   hider     a segment that stands between a piece and the viewer
//   chain     the segments visible from one side, in order, with bridges over the gaps
//   axis      the tool's centre line; the envelope is that of one half of the drawing
//   envelope  the closed polyline on "TempEncircleLine"
#pragma once

#include <vector>

#include "EncircleCalInfo.h"
#include "LineInfo.h"
#include "QZRect.h"
#include "RemoveLineDir.h"

struct SProbeSetup;
struct SSideChains;

// Computes envelopes by the parameters it was made with. All passes work on the working database's
// model space and only on clones; picked entities are never changed. One object may run several
// computations; m_extents and m_cloneIds accumulate over them.
class AFX_EXT_CLASS CEncircleLine {
public:
    explicit CEncircleLine(const CEncircleCalInfo& info);
    CEncircleLine(const CEncircleLine& other);
    CEncircleLine& operator=(const CEncircleLine& other);
    ~CEncircleLine();

    // The live pipeline: clone, convert, break, remove what no side sees, chain, draw.
    //
    // ids      the picked entities; what cannot be opened, lies on a locked layer or on the
    //          dimension layer is left out
    // outId    receives the envelope; keeps its value when there is none
    // drawing  gains the envelope polyline and its layer; every layer is left switched on; the
    //          current layer is restored; nothing stays open and no scratch entity stays behind
    // cost     O((n + k) log n) for n segments and k meetings
    void GetEncircleLine3(const AcDbObjectIdArray& ids, AcDbObjectId& outId);

    // Lets the host trace the boundary instead: clone, convert, draw a frame around the half that
    // is computed, and take the outline out of the loop that bounds the space between the two.
    // Without an axis, or when the drawing does not reach it, the largest island in the frame is
    // the outline.
    //
    // ids, outId, drawing as GetEncircleLine3(); the current view shows the frame afterwards.
    // Arcs that bound the outline come back exactly. A gap is not bridged: lines that end in the
    // air bound nothing, and the outline is what is closed behind them, if anything is. There are
    // no vertical ends. cost     that of acedTraceBoundary()
    void GetEncircleLineByHatch(const AcDbObjectIdArray& ids, AcDbObjectId& outId);

    // The two earlier forms of the live pipeline, kept for other modules. Lines that lie on one
    // another are merged instead of dropped, both halves of the drawing take part, nothing is
    // broken along the view, and the outline has neither arcs nor vertical ends. The dimension
    // layer takes part. The second form works, and leaves its envelope, 1000 units to the right of
    // what was picked.
    //
    // ids, outId, drawing as GetEncircleLine3()
    void GetEncircleLine(const AcDbObjectIdArray& ids, AcDbObjectId& outId);
    void GetEncircleLine2(const AcDbObjectIdArray& ids, AcDbObjectId& outId);

    // The envelope by rules that say what it is, whatever finds it (docs/exact.md); the class
    // CExactEnvelope gives more options and tells more of what came of it.
    //
    // ids, outId  as GetEncircleLine3()
    // axis        the parameters' axis line, in any direction; the upper half lies above it, or to
    //             the left of one that goes upwards. Without an axis there is no envelope.
    // parameters  0.0005 and 5, the values of a new record, mean the defaults that fit the size of
    //             what is drawn; m_dArcPrecision, m_tolLine and m_tolHorVer have no meaning here
    // drawing     gains the envelope polyline and its layer, nothing else changes. Arcs are the
    //             drawing's own.
    // cost        O((n + k) log n) for n curves and k changes of the outermost one
    void GetEncircleLineExact(const AcDbObjectIdArray& ids, AcDbObjectId& outId);

protected:
    // Source preparation (EncircleLineConvert.cpp)
    // bKeepArcs leaves arcs as they are: they are noted in m_cloneIds, but no chords replace them.
    void ConvertToLines(AcDbObjectIdArray ids, AcDbObjectIdArray& out, bool bKeepArcs = false);
    void ConvertCurveToLine(AcDbObjectId curveId, AcDbObjectIdArray& out);
    void ConvertCurveToLine(AcDbObjectId curveId, AcDbObjectId& lineId);
    void RemoveDashedIds(AcDbObjectIdArray& ids);
    void RemoveIdsInLayer(AcDbObjectIdArray& ids, const std::vector<CString>& layerNames);
    void RemoveDimLineIds(AcDbObjectIdArray& ids);
    void SetLayersShow(bool bShow);
    void DeleteCloneEnts();
    AcDbObjectIdArray GetAllArc(AcDbObjectIdArray ids);
    AcDbObjectIdArray IsPointOnArc(AcDbObjectIdArray ids, AcGePoint3d pt);

    // Line breaking (EncircleLineBreak.cpp)
    void BreakLines(std::vector<CLineInfo>& lines);
    void BreakLines2(std::vector<CLineInfo>& lines, bool bWithVertical, bool bShiftRight);
    void CalBreakPoint(CLineInfo& line, const AcGePoint3dArray& points, bool bVertical,
                       double dHalfLength);
    void AddBreakPoint(AcGePoint3d pt, std::vector<AcGePoint3d>& pts, AcGeTol tol);
    int GetBreakIndex(const AcGePoint3dArray& pts, AcGePoint3d pt, AcGeTol tol);
    bool SplitLine(CLineInfo& line, AcDbObjectIdArray& newIds);
    SProbeSetup GetProbeSetup(bool bWithVertical, bool bShiftRight) const;

    // Directional removal (EncircleLineRemove.cpp)
    std::vector<CLineInfo> RemoveLine2(E_RemoveLine_Dir dir, const std::vector<CLineInfo>& lines);
    bool IsPtInLineSpecifiedDir2(AcGePoint3d pt, AcGePoint3d lineStart, AcGePoint3d lineEnd,
                                 E_RemoveLine_Dir dir);
    AcDbObjectId CreateTempLine(E_RemoveLine_Dir dir, double dAxis, std::vector<CLineInfo>& lines);
    void RemoveLineInExcludeDir(E_RemoveLine_Dir dir, double dAxis, std::vector<CLineInfo>& lines);
    void RemoveLineInOtherDir(const std::vector<CLineInfo>& otherLines,
                              std::vector<CLineInfo>& lines);

    // BreakLines2() on a copy of the lines, and then RemoveLine2() on what that leaves for each of
    // the sides, in one (EncircleLineSee.cpp).
    //
    // result   for each side, in the order given, what it sees: the same segments in the same
    // order.
    //          Pieces of broken lines have no entity; none is made for them.
    // drawing  whole lines that all of the sides see stay, every other line is erased
    // cost     O((n + seen) log n), where BreakLines2() alone makes a quadratic number of pieces
    std::vector<std::vector<CLineInfo>> BreakAndSee(const std::vector<CLineInfo>& lines,
                                                    bool bWithVertical, bool bShiftRight,
                                                    const std::vector<E_RemoveLine_Dir>& dirs);

    // Clean-up (EncircleLineClean.cpp)
    void RemoveRepeatLine2(std::vector<CLineInfo>& lines);
    void UpdateLinePtByNearestPt(std::vector<CLineInfo>& lines);
    void RemoveShortLine(std::vector<CLineInfo>& lines);
    void RemoveLineByWalter(std::vector<CLineInfo>& lines, E_RemoveLine_Dir dir);

    // Chains (EncircleLineChain.cpp)
    void UpdateLineStartEndPt(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines);
    void SortLineInfos(std::vector<CLineInfo>& lines, bool bByX);
    void ConnectBreakLine(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines);
    void GetLineInfoPt(const std::vector<CLineInfo>& lines, bool bForward, bool bUnused,
                       AcGePoint3dArray& pts);
    bool IsPtExist(const AcGePoint3dArray& pts, const AcGePoint3d& pt);

    // Axis and polyline output (EncircleLineOutput.cpp). A DrawPolyLine() axis that is no number
    // means that there is none: the outline's ends stay where they are.
    bool GetMidLineAxisValue(double& dAxis);
    void SetLineLayerAndType(AcDbObjectIdArray ids, CString strLayerName);
    void DrawPolyLine(AcDbObjectIdArray ids, AcGePoint3dArray pts, double dAxis,
                      AcDbObjectId& polylineId);
    void AddPolyLinePt(AcDbPolyline* pPolyline, AcDbObjectId arcId, AcGePoint3dArray arcPts,
                       bool bSkipLast, int& nVertexIndex);
    void AddOutline(AcDbPolyline* pPolyline, const AcGePoint3dArray& pts);

    // Steps of the driver (EncircleLineDriver.cpp).
    // From clones to lines on the scratch layer, without the axis and what is dashed; every other
    // layer is off afterwards.
    AcDbObjectIdArray PrepareLines(const AcDbObjectIdArray& cloneIds, bool bKeepArcs = false);
    // Breaks a copy of the working set for each side that is computed and chains what it sees.
    void FindChains(E_RemoveLine_Dir side, const std::vector<CLineInfo>& lines,
                    SSideChains& chains);
    // Drops from what a side sees the lines of the sides before, and what does not belong to an
    // end, and connects the rest.
    void MakeChain(E_RemoveLine_Dir dir, const std::vector<const std::vector<CLineInfo>*>& before,
                   std::vector<CLineInfo>& chain);
    // Closes the chain at both ends by lines straight to the axis; an empty chain stays open.
    void AddVerticalEnds(E_RemoveLine_Dir side, double dAxis, SSideChains& chains);
    // The points of all chains in the order in which the outline goes round.
    AcGePoint3dArray CollectOutline(E_RemoveLine_Dir side, const SSideChains& chains);

    // The earlier pipelines (EncircleLineEarlier.cpp).
    void RunEarlier(const AcDbObjectIdArray& ids, double dShift, AcDbObjectId& outId);
    // As FindChains(), from the working set itself.
    void FindEarlierChains(E_RemoveLine_Dir side, const std::vector<CLineInfo>& lines,
                           SSideChains& chains);
    // As RemoveLine2(), with the older test. O(n log n) unless many long oblique lines overlap.
    std::vector<CLineInfo> RemoveLine(E_RemoveLine_Dir dir, const std::vector<CLineInfo>& lines);
    bool IsPtInLineSpecifiedDir(AcGePoint3d pt, AcGePoint3d lineStart, AcGePoint3d lineEnd,
                                E_RemoveLine_Dir dir);
    // Merges level or upright lines into the next collinear one that they overlap, which then
    // covers both and has a new entity; oblique ones stay. Dropped lines are not merged, but others
    // may be merged into them. O(n log^2 n) beside the pairs that touch.
    void RemoveCrossLine(std::vector<CLineInfo>& lines);

    // Boundary tracing (EncircleLineHatch.cpp).
    // The box of the lines and of the curves noted in m_cloneIds from that index on.
    CQZRect GetTraceBox(const std::vector<CLineInfo>& lines, int nFirstCurve) const;
    // Draws the frame, traces what lies between it and the drawing in the box, and adds the
    // outline.
    void TraceOutline(E_RemoveLine_Dir side, double dAxis, const CQZRect& box, AcDbObjectId& outId);

protected:
    CEncircleCalInfo m_calInfo;
    CQZRect m_extents;
    AcDbObjectIdArray m_cloneIds;
};
