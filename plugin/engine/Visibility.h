// What can be seen from a side.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "BoxIndex.h"
#include "Floors.h"
#include "LineInfo.h"
#include "ProbeCuts.h"
#include "QZRect.h"
#include "RemoveLineDir.h"
#include "SideOrder.h"
#include "StretchCuts.h"

// A piece that a side sees, between two neighbours of a record's chain: start, break points in
// order, end. Drawings have millions, so no more is kept than that.
struct SSeenPiece {  // 40 bytes
    double m_dFromX;
    double m_dFromY;
    double m_dToX;
    double m_dToY;
    std::uint32_t m_nRecord;  // index of the line
    bool m_bWhole;            // the record is not broken

    AcGePoint3d GetFrom() const { return AcGePoint3d(m_dFromX, m_dFromY, 0.0); }
    AcGePoint3d GetTo() const { return AcGePoint3d(m_dToX, m_dToY, 0.0); }
};

// Answers which pieces a side sees: those that are not edge-on to it and whose middle no other
// piece hides. The plain way breaks every line by the probes, which gives a quadratic number of
// pieces (1200 a line in a hatched drawing of 100 000), and tests each against all others.
//
// Here nothing is broken that can be proven hidden (docs/visibility.md):
//   1  Columns across the view get floors below which everything is hidden (CFloors). Most lines
//      are done with one look at the lowest floor over them.
//   2  The rest of the lines are broken in the stretches above the floors only (CStretchCuts), and
//      of the pieces only those whose middle lies in such a stretch are tested, against the few
//      lines that reach above the same floor. Where a line passes clearly above that has no cut at
//      the middle's place, the piece is not even made.
//   3  The test itself breaks a hider only where the answer hangs on its cuts, and only there: the
//      middle lies within tolerance of it, or close to one of its cuts, since a middle that stands
//      exactly over a cut is hidden by neither piece.
// Cuts along the view stand at the same places on all lines, so as a rule no middle stands over
// one. The exceptions need cuts that fall on one another within the point tolerance; they are found
// from the sorted places of the probes (FindTightPlaces()) and tested as in 2.
//
// The proofs leave room for rounding. Where coordinates are so large that the room does not
// suffice, CanProve() is false: then only lines that are not broken can be judged, each by step 3.
//
// result   that of the plain way, bit for bit
// cost     O((n + seen pieces) log n) for drawings in which few lines stand over one another;
//          memory O(n + seen pieces)
class CVisibility {  // one for each call of a pass
public:
    // The lines, extents and probes must outlive the object. tolHorVer: a piece is edge-on when its
    // size across the view is below its equalPoint.
    CVisibility(const std::vector<CLineInfo>& lines, const CQZRect& extents,
                const AcGeTol& tolPoint, const AcGeTol& tolHorVer);

    bool CanProve() const { return m_bCanProve; }

    // What the side sees of the lines as they are.
    std::vector<SSeenPiece> See(E_RemoveLine_Dir dir);
    // What the side sees of the lines broken by the probes, in the order of records, the pieces of
    // one from start to end. Needs CanProve(), lines that are valid, not broken and each of an
    // entity of its own or of none, and for a horizontal side probes without vertical ones.
    std::vector<SSeenPiece> See(E_RemoveLine_Dir dir, const CProbeCuts& probes);

private:
    struct SStretch {  // across the view
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
    struct SPiece {  // with what its test needs
        size_t m_nRecord;
        int m_nPiece;  // in the whole chain; only for lines that are not steady
        bool m_bWhole;
        AcGePoint3d m_from;  // oriented for the side
        AcGePoint3d m_to;
        AcGePoint3d m_middle;
        double m_dU;  // across and towards; of the middle
        double m_dV;
    };
    // A line that may hide pieces of the one that is looked at, in the column that is looked at.
    struct SCover {
        size_t m_nRecord;
        CPlaceCursor m_along;
    };
    using Chain = std::vector<AcGePoint3d>;
    using Seen = std::vector<SSeenPiece>;

    Seen SeeAll(E_RemoveLine_Dir dir, const CProbeCuts* pProbes);  // both calls in one
    // sights, floors and places of a side
    void Prepare(E_RemoveLine_Dir dir, const CProbeCuts* pProbes);
    void SetPlaces();
    SSight MakeSight(size_t record) const;  // a record as the side sees it
    void FindTightPlaces();
    void SeeRecord(size_t record, Seen& seen);
    void SeeWhole(size_t record, Seen& seen);
    void SeeUnsteady(size_t record, Seen& seen);
    void SeeStretch(size_t record, const SStretch& stretch, Seen& seen);
    void FindOpenStretches(const SSight& own);
    void AddOpenColumns(const SSight& own, int first, int last);
    void OpenTightPlaces(const SSight& own);
    void OpenEnd(const SSight& own, bool bLow);
    bool MayBeMiddle(const SSight& own, double dEnd, double dPlace) const;
    void MergeOpenStretches();

    SPiece MakePiece(size_t record, const AcGePoint3d& from, const AcGePoint3d& to) const;
    bool IsEdgeOn(const AcGePoint3d& from, const AcGePoint3d& to) const;
    void EnterColumn(int column);
    void FindCovers(size_t record, int column);
    bool IsSurelyHidden(size_t record, double u);
    bool IsBelowFloor(const SPiece& piece) const;
    bool IsHidden(const SPiece& piece);
    bool IsHiddenByIndexed(const SPiece& piece);
    bool Hides(size_t record, const SPiece& piece);
    bool HidesByPieces(size_t record, const SPiece& piece);
    bool HidesByPiece(const AcGePoint3d& from, const AcGePoint3d& to, const SPiece& piece) const;
    bool HidesByChain(const Chain& chain, size_t record, bool bWhole, const SPiece& piece) const;
    bool IsSameEntity(size_t record, bool bWhole, const SPiece& piece) const;
    bool IsCutNear(const SSight& sight, const SPiece& piece) const;
    const Chain& GetUnsteadyChain(size_t record);
    void CutHider(size_t record, double u);

    double GetU(const AcGePoint3d& pt) const { return m_view.GetAcross(pt); }
    double GetV(const AcGePoint3d& pt) const { return m_view.GetTowards(pt); }

    const std::vector<CLineInfo>& m_lines;
    const CQZRect& m_extents;
    AcGeTol m_tolPoint;
    AcGeTol m_tolHorVer;
    std::unique_ptr<CBoxIndex> m_index;  // made when it is first asked
    double m_dRounding;                  // of a coordinate that was computed
    double m_dTrim;  // the middle of a piece that is not edge-on is farther from its ends in u
    bool m_bCanProve;

    // Of the side that is looking.
    E_RemoveLine_Dir m_dir = E_Dir_Top;
    const CProbeCuts* m_pProbes = nullptr;
    SSideView m_view{E_Dir_Top};
    std::vector<SSight> m_sights;
    SCutPlaces m_places;
    CFloors m_floors;
    std::vector<STightPlace> m_tight;
    std::unique_ptr<CStretchCuts> m_ownCuts;
    std::unique_ptr<CStretchCuts> m_hiderCuts;
    std::map<size_t, Chain> m_unsteady;  // chains of hiders that are not steady
    size_t m_nHider = 0;                 // which one m_hiderCuts has cut last, and where
    double m_dHiderFrom = 0.0;
    double m_dHiderTo = 0.0;

    // Of the line that is looked at.
    std::vector<SStretch> m_open;
    // Of the column that is looked at.
    int m_nColumn = -1;
    bool m_bAllGathered = false;
    std::vector<int> m_gathered;
    // Of both.
    size_t m_nCoverRecord = 0;
    int m_nCoverColumn = -1;
    std::vector<SCover> m_covers;
    std::optional<CPlaceCursor> m_across;
};
