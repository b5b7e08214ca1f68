// Figures summed over all that block references hold.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "StdAfx.h"

// Adds up a figure of entities, what references hold included, each block looked at once and
// without recursion: references may be nested as deep as a file has blocks and come to more pieces
// than any integer counts.
//
// drawing  is only read; nothing stays open. One sum is for one state of the drawing.
// cost     O(n log n) for n entities in the blocks, once; O(log n) for each further reference
class CBlockSum {
public:
    // The figure of an entity that is no reference.
    typedef std::function<double(const AcDbEntity*)> CFigure;
    // What a reference makes of its block's sum; a block inside itself counts as nothing there.
    typedef std::function<double(const AcDbBlockReference*, double)> CShare;

    CBlockSum(CFigure figure, CShare share);

    // Zero for what cannot be opened.
    double Of(const AcDbObjectId& id);
    // Whether a block inside itself was met.
    bool HasCycle() const { return m_bCycle; }

private:
    struct SBlock {
        double m_dSum = 0.0;   // so far
        bool m_bDone = false;  // false while it is being summed, too
    };
    struct SStep {
        AcDbObjectId m_blockId;  // being summed
        std::vector<AcDbObjectId> m_ids;
        size_t m_nNext = 0;  // of the ids
    };

    double OfBlock(const AcDbObjectId& blockId);  // the sum of a block's entities
    bool Enter(const AcDbObjectId& blockId);      // false when it is done or being summed
    // Adds one entity to its block, or enters the block that it refers to and returns false.
    bool Take(const AcDbObjectId& id, SBlock& sum);

    CFigure m_figure;
    CShare m_share;
    std::map<AcDbObjectId, SBlock> m_blocks;  // each looked at once
    std::vector<SStep> m_path;                // of blocks in blocks
    bool m_bCycle = false;
};

// Cells of a reference: one, or those of an array insert.
double CountCells(const AcDbBlockReference* pReference);

// Entities that a reference comes to when it and all in it are exploded.
CBlockSum MakePieceCount();
