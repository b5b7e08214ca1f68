// One straight working segment of the engine, with the points at which it is to be split.
#pragma once

#include <vector>

#include <afxwin.h>

#include "arxHeaders.h"

// The same place to the last bit.
inline bool IsSamePlace(const AcGePoint3d& p, const AcGePoint3d& q) {
    return p.x == q.x && p.y == q.y && p.z == q.z;
}

// Whether the segments p-q and s-e have the same end points within tol, in either direction.
inline bool IsSameSegment(const AcGePoint3d& p, const AcGePoint3d& q, const AcGePoint3d& s,
                          const AcGePoint3d& e, const AcGeTol& tol) {
    return (p.isEqualTo(s, tol) && q.isEqualTo(e, tol)) ||
           (p.isEqualTo(e, tol) && q.isEqualTo(s, tol));
}

class AFX_EXT_CLASS CLineInfo {
public:
    // Null id, both points at the origin, valid.
    CLineInfo();
    // The segment of an open line; z of both points becomes 0.
    explicit CLineInfo(const AcDbLine* pLine);
    // Opens the object for read and closes it again. When it is no line the id stays null and the
    // points stay at the origin.
    explicit CLineInfo(const AcDbObjectId& id);
    CLineInfo(const CLineInfo& other);
    CLineInfo(CLineInfo&& other) noexcept;
    CLineInfo& operator=(const CLineInfo& other);
    CLineInfo& operator=(CLineInfo&& other) noexcept;
    ~CLineInfo();

    // Orders the break points by distance from the start; equal distances keep their order.
    void Sort();
    // Adds the point when it lies on the bounded segment within tol and equals none that is there.
    // Beyond the ends nothing counts, however near. O(break points).
    void AddBreakPoint(const AcGePoint3d& pt, const AcGeTol& tol);
    // one after the other
    void AddBreakPoints(const std::vector<AcGePoint3d>& pts, const AcGeTol& tol);
    // Same end points within tol, in either direction.
    bool IsEqual(const CLineInfo& other, const AcGeTol& tol) const;

    AcDbObjectId m_id;      // null: made in memory, or the source was no line
    AcGePoint3d m_startPt;  // z is 0
    AcGePoint3d m_endPt;
    std::vector<AcGePoint3d> m_breakPts;  // on the segment, in the order of adding
    bool m_bValid;                        // false: dropped, later passes skip or erase it
};
