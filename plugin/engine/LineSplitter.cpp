#include "StdAfx.h"

#include "LineSplitter.h"

#include <utility>

#include "EncircleLayers.h"
#include "EraseEntity.h"
#include "LayerTools.h"

const AcDbObjectId& CLineSplitter::GetScratchLayer() {
    if (!m_bScratchKnown) {
        m_scratchLayerId = FindLayer(kScratchLayer);
        m_bScratchKnown = true;
    }
    return m_scratchLayerId;
}

AcDbObjectId CLineSplitter::TakeOff(const CLineInfo& line) {
    // Read before the erase: an erased line no longer opens to give its layer.
    AcDbObjectId layerId;
    {
        AcDbObjectPointer<AcDbEntity> entity(line.m_id, AcDb::kForRead);
        if (entity.openStatus() == Acad::eOk) {
            layerId = entity->layerId();
        }
    }
    EraseById(line.m_id);
    return layerId.isNull() ? GetScratchLayer() : layerId;
}

void CLineSplitter::Split(CLineInfo& line, std::vector<CLineInfo>& pieces) {
    line.Sort();
    const AcDbObjectId layerId = TakeOff(line);
    AcGePoint3d from = line.m_startPt;
    for (size_t i = 0; i <= line.m_breakPts.size(); ++i) {
        const AcGePoint3d& to = i < line.m_breakPts.size() ? line.m_breakPts[i] : line.m_endPt;
        CLineInfo piece;
        piece.m_id = m_space.AppendLine(from, to, kByLayerColour, layerId);
        piece.m_startPt.set(from.x, from.y, 0.0);
        piece.m_endPt.set(to.x, to.y, 0.0);
        if (!piece.m_id.isNull()) {
            pieces.push_back(std::move(piece));
        }
        from = to;
    }
}

template <class SplitOne>
void CLineSplitter::ReplaceBroken(std::vector<CLineInfo>& lines, const SplitOne& split) {
    size_t count = 0;
    for (const CLineInfo& line : lines) {
        count += IsBroken(line) ? line.m_breakPts.size() + 1 : 0;
    }
    if (count == 0) {
        return;
    }
    std::vector<CLineInfo> replaced;
    replaced.reserve(lines.size() + count);
    for (CLineInfo& line : lines) {
        if (!IsBroken(line)) {
            replaced.push_back(std::move(line));
        }
    }
    for (CLineInfo& line : lines) {
        if (IsBroken(line)) {
            split(line, replaced);
        }
    }
    lines = std::move(replaced);
}

void CLineSplitter::SplitAll(std::vector<CLineInfo>& lines) {
    CLineSplitter splitter;
    ReplaceBroken(lines, [&](CLineInfo& line, std::vector<CLineInfo>& pieces) {
        splitter.Split(line, pieces);
    });
}

void CLineSplitter::SplitRecords(std::vector<CLineInfo>& lines) {
    ReplaceBroken(lines, [](CLineInfo& line, std::vector<CLineInfo>& pieces) {
        line.Sort();
        AcGePoint3d from = line.m_startPt;
        for (size_t i = 0; i <= line.m_breakPts.size(); ++i) {
            const AcGePoint3d& to = i < line.m_breakPts.size() ? line.m_breakPts[i] : line.m_endPt;
            pieces.emplace_back();
            pieces.back().m_startPt.set(from.x, from.y, 0.0);
            pieces.back().m_endPt.set(to.x, to.y, 0.0);
            from = to;
        }
    });
}
