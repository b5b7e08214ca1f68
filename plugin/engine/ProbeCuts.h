// Cutting lines where probes through the end points of others cross them.
#pragma once

#include <cmath>
#include <utility>
#include <vector>

#include "LineInfo.h"
#include "PointCells.h"
#include "QZRect.h"
#include "PointOnSegment.h"

// What BreakLines2() knows before it looks at the lines.
struct SProbeSetup {
    CQZRect m_extents;     // its width and height are half the lengths of the probes
    double m_dShift;       // how far it is moved along x to tell the end points that count
    bool m_bWithVertical;  // vertical probes first, through all end points, then horizontal ones;
                           // without: only horizontal ones, through points outside the moved box
    AcGeTol m_tolPoint;    // within which cuts are one
};

// One direction of probes: points sorted along it (by x for vertical probes, by y for horizontal
// ones) and the probe's half length.
class CProbeRow {
public:
    CProbeRow(const AcGePoint3d* pPoints, bool bVertical, double dHalfLength, const AcGeTol& tol)
        : m_pPoints(pPoints), m_bVertical(bVertical), m_dHalfLength(dHalfLength), m_tol(tol) {}

    // Adds to the line the break points where the probes through points first .. last - 1 cross it.
    //
    // result   as if every probe were intersected with the line and the point given to
    //          CLineInfo::AddBreakPoint()
    // cost     O((kept points) log n): a kept point refuses all that fall close to it, so probes
    //          that must fall there are skipped. Drawings have few different heights, but a great
    //          many points at each.
    void Cut(int first, int last, CLineInfo& line) const;

    // The coordinate of a probe, and the first of first .. last - 1 that is not below a place.
    double GetPlaceOf(int index) const { return GetPlace(m_pPoints[index]); }
    int FindPlace(int first, int last, double dPlace) const;
    // Where a probe cuts the segment.
    bool Meet(int index, const AcGeLineSeg3d& segment, AcGePoint3d& pt) const {
        return GetProbe(m_pPoints[index]).intersectWith(segment, pt, m_tol) &&
               IsOnBoundedSegment(segment, pt, m_tol);
    }
    // The same where it is known to cut it.
    AcGePoint3d GetCrossing(int index, const AcGeLineSeg3d& segment) const {
        AcGePoint3d pt;
        static_cast<void>(GetProbe(m_pPoints[index]).intersectWith(segment, pt, m_tol));
        return pt;
    }
    int SkipTo(int index, int last, double dPlace) const;  // the first behind it not below a place
    // How far the line goes along the places, for a length of 1.
    double GetShare(const CLineInfo& line) const;
    // Whether rounding leaves no doubt that a cut so much closer to a kept one than the tolerance
    // is refused.
    bool IsSure(int first, int last, const CLineInfo& line) const {
        return GetDoubt(first, last, line) < HUGE_VAL;
    }
    static constexpr double kSureShare = 0.98;
    // The share of the tolerance by which the distance of two cuts may be mistaken when it is told
    // from their places; HUGE_VAL when it cannot be told.
    double GetDoubt(int first, int last, const CLineInfo& line) const;

private:
    AcGeLineSeg3d GetProbe(const AcGePoint3d& pt) const;  // through a point, both ways
    double GetPlace(const AcGePoint3d& pt) const { return m_bVertical ? pt.x : pt.y; }

    const AcGePoint3d* m_pPoints;  // not owned
    bool m_bVertical;
    double m_dHalfLength;
    AcGeTol m_tol;  // within which points are one
};

// All probes of one call of BreakLines2().
class CProbeCuts {
public:
    // Collects the end points (equal ones once), sorts them and looks up the ends of every line.
    // O(n log n).
    CProbeCuts(const std::vector<CLineInfo>& lines, const SProbeSetup& setup);

    // Adds to record number index, given again, the break points of its probes: the vertical ones
    // by rising x, then the horizontal ones by rising y.
    void Cut(size_t index, CLineInfo& line) const;
    // The whole chain of a record: start, break points in order, end.
    std::vector<AcGePoint3d> GetChain(size_t index, CLineInfo line) const;

    // The probes of a direction, and which of them can cut a record: first .. last - 1.
    CProbeRow GetRow(bool bVertical) const {
        return bVertical ? CProbeRow(m_byX.data(), true, m_dHalfHeight, m_tol)
                         : CProbeRow(m_byY.data(), false, m_dHalfWidth, m_tol);
    }
    std::pair<int, int> GetRange(size_t index, bool bVertical) const {
        const SRange& range = bVertical ? m_ranges[index].m_x : m_ranges[index].m_y;
        return {range.m_nFirst, range.m_nLast};
    }
    const AcGeTol& GetTol() const { return m_tol; }

    // Whether any probe of that direction can cut the record.
    bool HasProbes(size_t index, bool bVertical) const {
        const SRange& range = bVertical ? m_ranges[index].m_x : m_ranges[index].m_y;
        return range.m_nFirst < range.m_nLast;
    }
    // The coordinates of that direction's probes, rising; empty when there are none.
    std::vector<double> GetPlaces(bool bVertical) const;

private:
    struct SRange {
        int m_nFirst = 0;  // first .. last - 1
        int m_nLast = 0;
    };
    struct SRanges {
        SRange m_x;  // vertical probes
        SRange m_y;  // horizontal ones
    };

    // end points, equal ones once
    void Collect(const std::vector<CLineInfo>& lines, const SProbeSetup& setup);
    // of every record
    void FindRanges(const std::vector<CLineInfo>& lines, const SProbeSetup& setup);
    SRange FindRange(const std::vector<int>& ranks, const std::vector<int>& starts,
                     const std::vector<int>& ends) const;

    CPointCells m_points;            // in the order in which they were met
    std::vector<AcGePoint3d> m_byX;  // by rising x
    std::vector<AcGePoint3d> m_byY;  // by rising y
    std::vector<int> m_rankByX;      // place in m_byX of each collected point
    std::vector<int> m_rankByY;
    std::vector<SRanges> m_ranges;  // of each record
    double m_dHalfHeight;           // of vertical probes
    double m_dHalfWidth;
    AcGeTol m_tol;
};
