// How segments run along a side, and the way a side looks.
#pragma once

#include "BoxIndex.h"
#include "LineInfo.h"
#include "RemoveLineDir.h"

// Seen from above or below: the view runs along y, segments from left to right. Every other value
// looks along x, at segments that run from top to bottom.
inline bool IsVerticalSide(E_RemoveLine_Dir dir) { return dir == E_Dir_Bottom || dir == E_Dir_Top; }

// A side's own axes: what it sees from left to right is across, and what is nearer to it is farther
// towards it. All four sides are then one. Turning back gives the same bits, since signs are exact.
struct SSideView {
    bool m_bVertical;  // the view runs along y
    double m_dSign;    // of the drawing's axis towards the viewer

    explicit SSideView(E_RemoveLine_Dir dir)
        : m_bVertical(IsVerticalSide(dir)),
          m_dSign(dir == E_Dir_Top || dir == E_Dir_Right ? 1.0 : -1.0) {}

    // from left to right
    double GetAcross(const AcGePoint3d& pt) const { return m_bVertical ? pt.x : pt.y; }
    // the larger the nearer
    double GetTowards(const AcGePoint3d& pt) const { return m_dSign * GetAlong(pt); }
    // The same of a box: where it begins and ends across, and what of it is nearest to the viewer.
    double GetFirstAcross(const SFlatBox& box) const { return m_bVertical ? box.low.x : box.low.y; }
    double GetLastAcross(const SFlatBox& box) const {
        return m_bVertical ? box.high.x : box.high.y;
    }
    double GetNearest(const SFlatBox& box) const {
        return m_dSign > 0.0 ? (m_bVertical ? box.high.y : box.high.x)
                             : -(m_bVertical ? box.low.y : box.low.x);
    }
    // The drawing's own coordinate along the view, whichever way that looks.
    double GetAlong(const AcGePoint3d& pt) const { return m_bVertical ? pt.y : pt.x; }
    // A step along the view.
    AcGeVector3d GetStep(double dLength) const {
        return m_bVertical ? AcGeVector3d(0, dLength, 0) : AcGeVector3d(dLength, 0, 0);
    }
};

// Exchanges the ends of a segment that does not run that way. One that is edge-on to the viewer is
// exchanged every time.
inline void OrientForSide(E_RemoveLine_Dir dir, AcGePoint3d& start, AcGePoint3d& end) {
    const bool bRight = IsVerticalSide(dir) ? end.x > start.x : start.y > end.y;
    if (!bRight) {
        std::swap(start, end);
    }
}
