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
    // those that touch one of these. GetChain() then holds their ends, by rising place.
    //
    // result   bit for bit the pieces that CProbeCuts::Cut() and CLineInfo::Sort() give
    // cost     O(pieces) beside a search; more where the probes around the stretch crowd
    void Cut(size_t record, const CLineInfo& line, double from, double to);

    const std::vector<AcGePoint3d>& GetChain() const { return m_chain; }
    // The line is not broken: the chain is its two ends.
    bool IsWhole() const { return m_bWhole; }

private:
    // One direction of probes and the line that it cuts.
    struct SRow {
        CProbeRow m_probes;
        int m_nFirst;
        int m_nLast;
        double m_dShare;  // how far the line goes along the places, for a length of 1
        bool m_bSure;     // rounding leaves no doubt about what the tolerance refuses
    };

    double GetU(const AcGePoint3d& pt) const { return m_bVertical ? pt.x : pt.y; }
    double GetW(const AcGePoint3d& pt) const { return m_bVertical ? pt.y : pt.x; }
    SRow MakeRow(size_t record, const CLineInfo& line, bool bVertical) const;
    int GoBack(const SRow& row, int index) const;
    bool IsRefused(const SRow& row, double dPlace, double dRefuser) const;
    void CutAcross(const SRow& row, const AcGeLineSeg3d& segment, double from, double to);
    void CutAlong(const SRow& row, const AcGeLineSeg3d& segment, int first, double top);
    bool HasAcrossAt(const AcGePoint3d& pt, double reach) const;
    void Join(const AcGePoint3d& low, const AcGePoint3d& high, double from, double to);

    const CProbeCuts& m_probes;
    bool m_bVertical;  // the view runs along y
    bool m_bWhole = false;
    bool m_bRising = true;              // the line, in the other coordinate
    std::vector<AcGePoint3d> m_across;  // cuts of the probes along the view, by rising place
    std::vector<AcGePoint3d> m_along;   // of the others, in the order of their places
    std::vector<AcGePoint3d> m_chain;
};
