// The cuts of a line around a stretch of it, without breaking the rest.
#pragma once

#include <vector>

#include "ProbeCuts.h"

// Breaks a line only where it matters. Which probes cut a line hangs on the cuts before: one within
// the point tolerance of a kept cut is refused. But where probes stand farther apart than that the
// next one is kept whatever came before, so the cutting can begin there. No hash is needed: along a
// line the cuts of a direction come in order, and only the last one can refuse the next, or a
// neighbour of the other direction.
//
// For lines that are steady across the view, when rounding is small against the tolerance (see
// CVisibility::CanProve()). An object may be used for any number of lines; it keeps its storage.
class CStretchCuts {
public:
    // The view runs along y for vertical sides, along x for others.
    CStretchCuts(const CProbeCuts& probes, bool bVertical)
        : m_probes(probes), m_bVertical(bVertical) {}

    // Finds the pieces that reach into the stretch between two places across the view, and
    // those that touch one of these: their ends are the cuts, by rising place, the ends of the
    // line among them.
    //
    // result   bit for bit the pieces that CProbeCuts::Cut() and CLineInfo::Sort() give
    // cost     O(pieces) beside a search; more where the probes around the stretch crowd. A point
    // is
    //          made when it is asked for.
    void Find(size_t record, const CLineInfo& line, double from, double to);
    size_t GetCount() const { return m_cuts.size(); }
    // The place of a cut across the view, within SCutPlaces::GetSlack() of the point's.
    double GetPlace(size_t cut) const { return m_cuts[cut].m_dPlace; }
    AcGePoint3d GetPoint(size_t cut) const;

    // Find(), with the points of all cuts in GetChain().
    void Cut(size_t record, const CLineInfo& line, double from, double to);
    const std::vector<AcGePoint3d>& GetChain() const { return m_chain; }
    // The line is not broken: the cuts are its two ends.
    bool IsWhole() const { return m_bWhole; }

private:
    // One direction of probes and the line that it cuts.
    struct SRow {
        CProbeRow m_probes;
        int m_nFirst;
        int m_nLast;
        double m_dShare;  // how far the line goes along the places, for a length of 1
        // Cuts as far apart as the tolerance but for this share of it may be one or two; all are
        // in doubt when rounding is large.
        double m_dDoubt;
    };
    struct SCut {
        double m_dPlace;
        int m_nFrom;  // a probe of the other direction, or -1 less the number of a fixed point
    };

    double GetU(const AcGePoint3d& pt) const { return m_bVertical ? pt.x : pt.y; }
    double GetW(const AcGePoint3d& pt) const { return m_bVertical ? pt.y : pt.x; }
    SRow MakeRow(size_t record, const CLineInfo& line, bool bVertical) const;
    int GoBack(const SRow& row, int index) const;
    void CutAcross(const SRow& row, double from, double to);
    void CutAlong(const SRow& row, int first, double top);
    bool IsNewAlong(const SRow& row, int probe, int refuser, double u) const;
    bool HasAcrossIn(double from, double to) const;
    bool HasAcrossAt(const AcGePoint3d& pt, double reach) const;
    double GetPlaceAt(double w) const { return GetU(m_low) + (w - GetW(m_low)) * m_dRun; }
    void Join(double from, double to);

    const CProbeCuts& m_probes;
    bool m_bVertical;  // the view runs along y
    bool m_bWhole = false;
    bool m_bRising = true;  // the line, in the other coordinate
    AcGeLineSeg3d m_segment;
    AcGePoint3d m_low;  // the line's ends by place
    AcGePoint3d m_high;
    double m_dRun = 0.0;                // du / dw of the line
    std::vector<AcGePoint3d> m_across;  // cuts of the probes along the view, by rising place
    std::vector<SCut> m_along;          // of the others, in the order of their places
    std::vector<SCut> m_cuts;
    std::vector<AcGePoint3d> m_fixed;  // the cuts that no probe of the other direction makes
    std::vector<AcGePoint3d> m_chain;
};
