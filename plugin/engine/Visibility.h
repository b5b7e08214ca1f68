// What can be seen from a side.
#pragma once

#include <deque>
#include <vector>

#include "BoxIndex.h"
#include "LineInfo.h"
#include "ProbeCuts.h"
#include "QZRect.h"
#include "RemoveLineDir.h"

// A piece that a side sees: chain points m_nPiece and m_nPiece + 1 of a record, where the chain is
// start, break points in order, end.
struct SSeenPiece {
    size_t m_nRecord;
    int m_nPiece;
    bool m_bWhole;  // the record is not broken
    AcGePoint3d m_from;
    AcGePoint3d m_to;
};

// Answers which pieces a side sees: those that are not edge-on to it and whose middle no other
// piece hides. The plain way breaks every line by the probes, which gives a quadratic number of
// pieces (80 a line in a drawing of 100 000), and tests each against all others.
//
// Here nothing is broken that can be proven hidden:
//   1  For each line the lines above it (towards the viewer) are taken from an index, long ones
//      first. Where one is clearly above, and has no cut of its own there, the middle of any piece
//      below lies strictly inside one of its pieces, so it is hidden. What such lines cover is
//      subtracted; most lines are covered whole after one or two.
//   2  Only lines with a stretch left over are broken, and of their pieces only those whose middle
//      lies in a stretch left over are tested.
//   3  The test itself breaks a hider only where the answer hangs on its cuts: the middle lies
//      within tolerance of it, or close to one of its cuts, since a middle that stands exactly over
//      a cut is hidden by neither piece.
// Cuts across the view stand at the same places on all lines, so as a rule no middle stands over
// one. The exceptions need cuts that fall on one another within the point tolerance; they are found
// from the sorted places of the probes (CTightPlaces) and tested as in 2.
//
// The proofs leave room for rounding. Where coordinates are so large that the room does not
// suffice, CanProve() is false: then only lines that are not broken can be judged, each by step 3.
//
// result   that of the plain way, bit for bit
// cost     O((n + seen pieces) log n) for drawings in which few lines stand over one another;
//          memory O(n)
class CVisibility {
public:
    // The lines, extents and probes must outlive the object. tolHorVer: a piece is edge-on when its
    // size across the view is below its equalPoint.
    CVisibility(const std::vector<CLineInfo>& lines, const CQZRect& extents,
                const AcGeTol& tolPoint, const AcGeTol& tolHorVer);

    bool CanProve() const { return m_bCanProve; }

    // What the side sees of the lines as they are.
    std::vector<SSeenPiece> See(E_RemoveLine_Dir dir);
    // What the side sees of the lines broken by the probes, in the order of records, the pieces of
    // one from start to end. Needs CanProve(), lines that are valid and not broken, and for a
    // horizontal side probes without vertical ones.
    std::vector<SSeenPiece> See(E_RemoveLine_Dir dir, const CProbeCuts& probes);

private:
    // A line as the side sees it: u runs across the view, v towards the viewer.
    struct SSight {
        double m_dFrom;     // lower end in u
        double m_dTo;       // upper end in u
        double m_dV;        // v at the lower end
        double m_dSlope;    // dv / du
        double m_dMargin;   // so much higher is clearly above, in v
        bool m_bClear;      // steady enough for proofs: not close to parallel to the view
        bool m_bCutAcross;  // probes along the view may cut it
        bool m_bCutAlong;   // probes across the view may cut it
        double At(double u) const { return m_dV + (u - m_dFrom) * m_dSlope; }
    };
    struct SStretch {
        double m_dFrom;
        double m_dTo;
    };
    // A place where probes stand so close that one of them cuts nothing, and the middle of a piece
    // may stand over it.
    struct STightPlace {
        double m_dPlace;
        double m_dMirror;  // the piece's other end
        bool m_bAlways;    // too crowded to tell, or another probe stands at the other end
    };
    // A piece that is being tested.
    struct SPiece {
        SSeenPiece m_place;  // oriented for the side
        AcGePoint3d m_middle;
        double m_dU;
        double m_dV;
    };

    void Prepare(E_RemoveLine_Dir dir, const CProbeCuts* pProbes);
    SSight MakeSight(size_t record) const;
    void FindTightPlaces();
    void SeeRecord(size_t record, std::vector<SSeenPiece>& seen);
    bool FindOpenStretches(size_t record);
    void DropEmptyStretches(const SSight& own);
    bool IsEmptyEnd(const SSight& own, double dEnd, double dReach) const;
    bool Cover(const SSight& own, const SSight& other);
    void Subtract(double dFrom, double dTo);
    void OpenTightPlaces(const SSight& own);
    void OpenEnd(double dEnd, double dInner);
    bool IsOpen(double u) const;

    SPiece MakePiece(const SSeenPiece& place) const;
    bool IsEdgeOn(const AcGePoint3d& from, const AcGePoint3d& to) const;
    bool IsHidden(const SPiece& piece, bool bNearOnly);
    bool Hides(size_t record, const SPiece& piece);
    bool HidesByPieces(size_t record, const SPiece& piece);
    bool HidesByPiece(const AcGePoint3d& from, const AcGePoint3d& to, const SPiece& piece) const;
    bool IsSameEntity(size_t record, bool bWhole, const SPiece& piece) const;
    bool IsCutNear(const SSight& sight, const SPiece& piece) const;
    bool HasPlaceIn(const std::vector<double>& places, double dFrom, double dTo) const;
    const std::vector<AcGePoint3d>& GetChain(size_t record);
    std::vector<AcGePoint3d> MakeChain(size_t record) const;

    double GetU(const AcGePoint3d& pt) const { return m_bVertical ? pt.x : pt.y; }
    double GetV(const AcGePoint3d& pt) const { return m_dSign * (m_bVertical ? pt.y : pt.x); }

    const std::vector<CLineInfo>& m_lines;
    const CQZRect& m_extents;
    AcGeTol m_tolPoint;
    AcGeTol m_tolHorVer;
    CBoxIndex m_index;
    double m_dRounding;  // of a coordinate that was computed
    double m_dNear;      // computed places closer than this in u may be the same
    double m_dTrim;      // the middle of a piece that is not edge-on is farther from its ends in u
    bool m_bCanProve;

    // Of the side that is looking.
    E_RemoveLine_Dir m_dir = E_Dir_Top;
    const CProbeCuts* m_pProbes = nullptr;
    bool m_bVertical = true;
    double m_dSign = 1.0;
    std::vector<SSight> m_sights;
    std::vector<double> m_placesAcross;  // places in u of the probes along the view, rising
    std::vector<double> m_placesAlong;   // places in v of the others, rising
    std::vector<STightPlace> m_tight;
    std::vector<int> m_chainOf;  // number in m_chains, or -1
    std::deque<std::vector<AcGePoint3d>> m_chains;

    // Of the line that is looked at.
    std::vector<SStretch> m_open;
    std::vector<size_t> m_near;
};
