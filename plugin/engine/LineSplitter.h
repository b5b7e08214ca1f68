// Replacing broken lines by their pieces.
#pragma once

#include <vector>

#include "AddEntity.h"
#include "LineInfo.h"

// Model space stays open for write for the splitter's life, since a pass makes hundreds of
// thousands of pieces; keep it within one pass.
class CLineSplitter {
public:
    CLineSplitter() = default;
    CLineSplitter(const CLineSplitter&) = delete;
    CLineSplitter& operator=(const CLineSplitter&) = delete;

    // Whether there is anything to split: a line without break points stays, and so does a dropped
    // one.
    static bool IsBroken(const CLineInfo& line) {
        return line.m_bValid && !line.m_breakPts.empty();
    }

    // Splits a broken line at its break points, which are sorted: erases its entity and appends its
    // pieces from start to end, each with a new line of colour 256 on the erased one's layer; on
    // the scratch layer when that one is gone already. Pieces of length zero are made too. A piece
    // whose line cannot be made is left out.
    void Split(CLineInfo& line, std::vector<CLineInfo>& pieces);

    // Splits all broken lines. Left are the others in their order, then the pieces line by line.
    static void SplitAll(std::vector<CLineInfo>& lines);

    // As SplitAll(), in memory: neither are entities erased nor made, and the pieces have none.
    static void SplitRecords(std::vector<CLineInfo>& lines);

private:
    // Replaces the broken lines by what split(line, pieces) appends.
    template <class SplitOne>
    static void ReplaceBroken(std::vector<CLineInfo>& lines, const SplitOne& split);
    // Erases the line's entity and returns the layer for its pieces.
    AcDbObjectId TakeOff(const CLineInfo& line);
    const AcDbObjectId& GetScratchLayer();

    CBlockAppender m_space;         // model space, open for write
    AcDbObjectId m_scratchLayerId;  // looked up when it is first needed
    bool m_bScratchKnown = false;
};
