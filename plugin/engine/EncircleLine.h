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
class CEncircleRun;

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
    // Ends every run by the passes for it.
    friend class CEncircleRun;

    // The passes. Each takes records or ids and changes them in place unless it says otherwise;
    // "erased" is the entity, "dropped" the record. A record that is not valid is a neighbour like
    // any other, but is itself left alone. Distances are drawing units; a comparison with a
    // tolerance is strict unless it says otherwise. A null id has no entity to erase.

    // Source preparation (EncircleLineConvert.cpp)

    // Explodes blocks and polylines, erases what is no outline curve (texts, circles, ellipses) and
    // replaces arcs and splines by chords. Of polylines whose boxes agree within twice the arc
    // precision at all four corners only the first stays. The replaced curves are noted in
    // m_cloneIds, which is never cleared.
    void ConvertToLines(AcDbObjectIdArray ids, AcDbObjectIdArray& out);
    // The same, but arcs stay as they are, noted too.
    void ConvertAllButArcs(AcDbObjectIdArray ids, AcDbObjectIdArray& out);
    // Appends chords about m_dArcPrecision long, at equal steps of the curve's parameter: one for
    // a curve shorter than two of them. Chords below 1e-6 are left out. The curve stays.
    void ConvertCurveToLine(AcDbObjectId curveId, AcDbObjectIdArray& out);
    // One line from end to end; lineId keeps its value when the curve cannot be read.
    void ConvertCurveToLine(AcDbObjectId curveId, AcDbObjectId& lineId);
    // Erases lines of a line type with DASH, dash, CENTER or Center in its name; other spellings
    // are not caught. Does nothing unless m_bExcludeDashed.
    void RemoveDashedIds(AcDbObjectIdArray& ids);
    // Erases what lies on the layers. No pipeline calls these two.
    void RemoveIdsInLayer(AcDbObjectIdArray& ids, const std::vector<CString>& layerNames);
    void RemoveDimLineIds(AcDbObjectIdArray& ids);
    // Every layer on or off; which were off before is not remembered.
    void SetLayersShow(bool bShow);
    // Erases all that lies on the scratch layer in model space. During a run that has made the
    // layer itself only what came since is looked at.
    void DeleteCloneEnts();
    // The arcs among the ids, and the curves among them within 1e-4 of the point (<=), seen in the
    // XY plane. The outline asks CArcIndex instead of the second.
    AcDbObjectIdArray GetAllArc(AcDbObjectIdArray ids);
    AcDbObjectIdArray IsPointOnArc(AcDbObjectIdArray ids, AcGePoint3d pt);

    // Line breaking (EncircleLineBreak.cpp)

    // Breaks every line where another meets it within m_tolPoint. Left are the whole lines in their
    // order, then the pieces line by line; pieces are new entities on the broken one's layer. A
    // line that ends on another gets a piece of length zero; collinear ones do not meet. The live
    // pipeline does the same to the records alone. O((n + k) log n).
    void BreakLines(std::vector<CLineInfo>& lines);
    // Breaks every line where probes through the ends of others cross it: upright ones
    // (bWithVertical), then level ones; without upright ones only through ends outside the extents
    // moved by m_dSideLength. Quadratic, so the pipelines call BreakAndSee() where it can be used.
    void BreakLines2(std::vector<CLineInfo>& lines, bool bWithVertical, bool bShiftRight);
    // One line, by probes through the points between its own ends in the list. A line whose ends
    // are not in the list within m_tolPoint is not cut; of equal points the first counts, so a
    // probe beside an end may be passed over. No pipeline calls it, but CProbeCuts does as it does.
    void CalBreakPoint(CLineInfo& line, const AcGePoint3dArray& points, bool bVertical,
                       double dHalfLength);
    // Appends the point unless one within tol (<=) is there; the index of the first such, or -1.
    // Walks of a list, for other modules: no pipeline calls these two.
    void AddBreakPoint(AcGePoint3d pt, std::vector<AcGePoint3d>& pts, AcGeTol tol);
    int GetBreakIndex(const AcGePoint3dArray& pts, AcGePoint3d pt, AcGeTol tol);
    // One line at its break points; false when it has none or is not valid. The record stays.
    bool SplitLine(CLineInfo& line, AcDbObjectIdArray& newIds);
    SProbeSetup GetProbeSetup(bool bWithVertical, bool bShiftRight) const;

    // Directional removal (EncircleLineRemove.cpp)

    // The lines that the side sees, oriented for it; erases the others, lines itself stays. A line
    // is hidden when its middle lies strictly inside another's range across the view and on it
    // within m_tolPoint, or behind it; not by its equal, nor by a record of the same entity. Lines
    // less than m_tolHorVer wide across the view are never seen. O(n log n).
    std::vector<CLineInfo> RemoveLine2(E_RemoveLine_Dir dir, const std::vector<CLineInfo>& lines);
    // The test of one point against one line; as far as m_extents reaches. No pipeline calls it.
    bool IsPtInLineSpecifiedDir2(AcGePoint3d pt, AcGePoint3d lineStart, AcGePoint3d lineEnd,
                                 E_RemoveLine_Dir dir);
    // Appends a line along the axis, not valid, so that what crosses the axis is broken there. It
    // overhangs the drawing by 60 along a level axis, but by 10 along an upright one: the box is
    // widened sideways only.
    AcDbObjectId CreateTempLine(E_RemoveLine_Dir dir, double dAxis, std::vector<CLineInfo>& lines);
    // Erases and drops what lies wholly at or beyond the axis, as seen from the side, within
    // m_tolPoint: also what lies on the axis. E_Dir_None drops nothing.
    void RemoveLineInExcludeDir(E_RemoveLine_Dir dir, double dAxis, std::vector<CLineInfo>& lines);
    // Erases and drops lines that another side has taken: equal within m_tolLine, collinear and
    // covered, or with boxes that overlap by more than m_tolPoint, which also takes lines that
    // merely cross. O((n + m) log n).
    void RemoveLineInOtherDir(const std::vector<CLineInfo>& otherLines,
                              std::vector<CLineInfo>& lines);

    // BreakLines2() on a copy of the lines, and then RemoveLine2() on what that leaves for each of
    // the sides, in one (EncircleLineSee.cpp).
    //
    // result   for each side, in the order given, what it sees: the same segments in the same
    //          order. Pieces of broken lines have no entity; none is made for them.
    // drawing  whole lines that all of the sides see stay, every other line is erased
    // cost     O((n + seen) log n), where BreakLines2() alone makes a quadratic number of pieces
    std::vector<std::vector<CLineInfo>> BreakAndSee(const std::vector<CLineInfo>& lines,
                                                    bool bWithVertical, bool bShiftRight,
                                                    const std::vector<E_RemoveLine_Dir>& dirs);

    // Clean-up (EncircleLineClean.cpp)

    // Erases and drops lines of length zero, all but the last of equal ones (m_tolPoint, either
    // direction), and lines that a collinear one covers (slopes within 1e-6, boxes within 1e-6).
    // Slopes are compared in absolute value, so of two that cross like an X from one x the covered
    // one goes too. A line's turn ends with the first that it drops. O(n log n).
    void RemoveRepeatLine2(std::vector<CLineInfo>& lines);
    // Moves ends that are less than 0.5 from another line onto its nearest end or foot; exactly 0.5
    // is too far, and an end that touches one stays. In turn: later lines see where earlier ends
    // went. Only the records change, and a line may lose its length. O(n log n).
    void UpdateLinePtByNearestPt(std::vector<CLineInfo>& lines);
    // Erases and drops lines shorter than 0.5 unless both ends lie on other lines that are still
    // there (m_tolPoint). In turn, once; a chain of short lines goes only from its loose end on.
    void RemoveShortLine(std::vector<CLineInfo>& lines);
    // Drops lines of which no end is within m_dSideLength (<=) of the outermost x; the entities
    // stay. To the right the outermost is never below 0; to the left 0 is taken for unset, and the
    // next coordinate replaces it even if that lies farther right.
    void RemoveLineByWalter(std::vector<CLineInfo>& lines, E_RemoveLine_Dir dir);

    // Chains (EncircleLineChain.cpp)

    // Turns lines to run from left to right, or downwards for other than vertical sides. One that
    // is edge-on is turned every time.
    void UpdateLineStartEndPt(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines);
    // By rising x of the starts, or by falling y; no tolerance, equal ones keep their order.
    void SortLineInfos(std::vector<CLineInfo>& lines, bool bByX);
    // Turns and sorts the lines, and bridges neighbours that do not meet within m_tolPoint (<=) by
    // a straight line without entity, however far; overlapping ones are bridged backwards.
    void ConnectBreakLine(E_RemoveLine_Dir dir, std::vector<CLineInfo>& lines);
    // Appends the chain's points that are not there yet within m_tolPoint (<=), start before end,
    // or backward from the last line with end before start. The third argument has no meaning.
    void GetLineInfoPt(const std::vector<CLineInfo>& lines, bool bForward, bool bUnused,
                       AcGePoint3dArray& pts);
    // Whether a point within m_tolPoint (<=) is there. A walk; no pipeline calls it.
    bool IsPtExist(const AcGePoint3dArray& pts, const AcGePoint3d& pt);

    // Axis and polyline output (EncircleLineOutput.cpp)

    // The y of a level axis line, else the x of an upright one, within m_tolLine (<=); false for a
    // slanted one or none.
    bool GetMidLineAxisValue(double& dAxis);
    // Moves lines onto the layer. With m_bExcludeDashed a line type that comes from the old layer
    // is stated on the line first; one that refuses it stays where it is.
    void SetLineLayerAndType(AcDbObjectIdArray ids, CString strLayerName);
    // Draws the closed outline on the envelope layer; fewer than two points draw nothing. Middle
    // points of steps whose directions agree within one degree go, however far the steps lead off.
    // The first and the last point are put on the axis; one that is no number means that there is
    // none. Stretches along arcs of m_cloneIds become arcs. The first argument has no meaning.
    void DrawPolyLine(AcDbObjectIdArray ids, AcGePoint3dArray pts, double dAxis,
                      AcDbObjectId& polylineId);
    // One stretch: a bulged segment when arcId is an arc, else its points. bSkipLast leaves the
    // last point to the next stretch.
    void AddPolyLinePt(AcDbPolyline* pPolyline, AcDbObjectId arcId, AcGePoint3dArray arcPts,
                       bool bSkipLast, int& nVertexIndex);
    void AddOutline(AcDbPolyline* pPolyline, const AcGePoint3dArray& pts);

    // Steps of the driver (EncircleLineDriver.cpp).
    // From clones to lines on the scratch layer, without the axis and what is dashed; every other
    // layer is off afterwards.
    AcDbObjectIdArray PrepareLines(const AcDbObjectIdArray& cloneIds, bool bKeepArcs = false);
    void ConvertSources(AcDbObjectIdArray ids, AcDbObjectIdArray& out, bool bKeepArcs);
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
