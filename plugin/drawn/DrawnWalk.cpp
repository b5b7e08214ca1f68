#include "StdAfx.h"

#include "DrawnWalk.h"

#include <algorithm>
#include <utility>

namespace {

// The colour of what states none: white on black, black on white.
AcCmColor Foreground() {
    constexpr Adesk::UInt16 kForeground = 7;
    AcCmColor color;
    const Acad::ErrorStatus es = color.setColorIndex(kForeground);
    return es == Acad::eOk ? color : AcCmColor();
}

CString BlockName(const AcDbObjectId& blockId) {
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    AcString name;
    if (block.openStatus() != Acad::eOk || block->getName(name) != Acad::eOk) return CString();
    return CString(name.kACharPtr());
}

CString HandleText(const AcDbObjectId& id) {
    ACHAR text[AcDbHandle::kStrSiz] = {};
    if (!id.isNull()) id.handle().getIntoAsciiBuffer(text, AcDbHandle::kStrSiz);
    return CString(text);
}

// Constant ones show their text with every reference.
bool IsPatternOfAttribute(const AcDbEntity& entity) {
    const AcDbAttributeDefinition* const pDefinition = AcDbAttributeDefinition::cast(&entity);
    return pDefinition != nullptr && !pDefinition->isConstant();
}

bool IsInvisible(const AcDbEntity& entity) {
    if (entity.visibility() == AcDb::kInvisible) return true;
    const AcDbAttribute* const pAttribute = AcDbAttribute::cast(&entity);
    if (pAttribute != nullptr) return pAttribute->isInvisible();
    const AcDbAttributeDefinition* const pDefinition = AcDbAttributeDefinition::cast(&entity);
    return pDefinition != nullptr && pDefinition->isInvisible();
}

}  // namespace

CString SDrawnFault::Text() const {
    CString text;
    const CString handle = HandleText(m_id);
    switch (m_kind) {
        case BlockHoldsItself:
            text.Format(_T("block \"%s\" holds itself by the reference %s, which is left out"),
                        m_strBlock.GetString(), handle.GetString());
            break;
        case TooMuch:
            text.Format(
                _T("block \"%s\" shows more than can be looked at; explode or purge the ")
                _T("blocks that it repeats (reference %s)"),
                m_strBlock.GetString(), handle.GetString());
            break;
        case CannotOpen:
            text.Format(_T("entity %s cannot be read and is left out"), handle.GetString());
            break;
        case WrongDatabase:
            text.Format(_T("entity %s lies in another drawing and is left out"),
                        handle.GetString());
            break;
        case MissingBlock:
            text.Format(
                _T("block reference %s shows nothing: the drawing has no such block; ")
                _T("insert it again"),
                handle.GetString());
            break;
        case Unsound:
            text.Format(
                _T("entity %s, or a part of it, cannot be drawn as it is stated and is ")
                _T("left out; draw it again"),
                handle.GetString());
            break;
    }
    return text;
}

CDrawnWalk::CDrawnWalk(AcDbDatabase* pDatabase, const SDrawnOptions& options)
    : m_pDatabase(pDatabase), m_options(options) {}

void CDrawnWalk::WalkSpace(const AcDbObjectId& blockId, const Visitor& visit) {
    SFrame frame;
    frame.m_ids = ContentOf(blockId);
    frame.m_blockId = blockId;
    m_open.insert(blockId);
    m_frames.push_back(std::move(frame));
    Run(visit);
}

void CDrawnWalk::Walk(const AcDbObjectIdArray& ids, const Visitor& visit) {
    SFrame frame;
    auto content = std::make_shared<std::vector<AcDbObjectId>>();
    for (int i = 0; i < ids.length(); ++i) content->push_back(ids[i]);
    frame.m_ids = std::move(content);
    m_frames.push_back(std::move(frame));
    Run(visit);
}

bool CDrawnWalk::WalkBlock(const AcDbObjectId& blockId, const SDrawnItem& shownBy,
                           const Visitor& visit) {
    if (shownBy.m_nDepth >= kMostNested) {
        Note(SDrawnFault::TooMuch, shownBy.m_id, blockId);
        return false;
    }
    SFrame frame;
    frame.m_blockId = blockId;
    frame.m_ids = ContentOf(blockId);
    frame.m_inherited = InheritedOf(shownBy);
    frame.m_nDepth = shownBy.m_nDepth + 1;
    if (!Enter(std::move(frame), shownBy)) return false;
    Run(visit);
    return true;
}

// Ends with the frame that was opened last, or with those that it opens in turn.
void CDrawnWalk::Run(const Visitor& visit) {
    const std::size_t outer = m_frames.size() - 1;
    if (outer == 0) {
        m_nSeen = 0;
        m_bStopped = false;
    }
    while (m_frames.size() > outer) {
        SFrame& frame = m_frames.back();
        if (m_bStopped || (frame.m_nNext == frame.m_ids->size() && !NextCell(frame))) {
            if (!frame.m_blockId.isNull()) m_open.erase(frame.m_blockId);
            m_frames.pop_back();
            continue;
        }
        const AcDbObjectId id = (*frame.m_ids)[frame.m_nNext++];
        if (m_frames.size() == 1) m_pickedId = id;
        Visit(id, frame, visit);
    }
}

bool CDrawnWalk::NextCell(SFrame& frame) const {
    if (frame.m_ids->empty() || frame.m_nCell + 1 >= frame.m_nCells) return false;
    ++frame.m_nCell;
    frame.m_nNext = 0;
    const std::size_t column = frame.m_nCell % frame.m_nColumns;
    const std::size_t row = frame.m_nCell / frame.m_nColumns;
    const AcGeVector3d step = frame.m_columnStep * static_cast<double>(column) +
                              frame.m_rowStep * static_cast<double>(row);
    frame.m_place = frame.m_outer * AcGeMatrix3d::translation(step) * frame.m_inner;
    return true;
}

void CDrawnWalk::Visit(const AcDbObjectId& id, const SFrame& frame, const Visitor& visit) {
    if (id.database() != m_pDatabase)
        return Note(SDrawnFault::WrongDatabase, id, AcDbObjectId::kNull);
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk)
        return Note(SDrawnFault::CannotOpen, id, AcDbObjectId::kNull);
    if (++m_nSeen > m_options.m_nMost) {
        m_bStopped = true;
        const AcDbBlockReference* const pReference = AcDbBlockReference::cast(entity.object());
        return Note(SDrawnFault::TooMuch, id,
                    pReference != nullptr ? pReference->blockTableRecord() : frame.m_blockId);
    }
    if (frame.m_nDepth > 0 && IsPatternOfAttribute(*entity.object())) return;
    const SDrawnItem item = ItemOf(*entity.object(), frame);
    const AcDbBlockReference* const pReference = AcDbBlockReference::cast(entity.object());
    // Of a block on a layer that is off, what has layers of its own still shows.
    const bool bContentShows = (item.m_nHidden & (kDrawnFrozen | kDrawnInvisible)) == 0;
    const bool bShows = item.IsShown() || m_options.m_bWithHidden;
    if (pReference != nullptr) {
        // Attributes come behind the content, so their frame is opened first.
        if (bContentShows || m_options.m_bWithHidden) {
            EnterAttributes(*pReference, item, frame);
            if (m_options.m_bIntoBlocks) return EnterReference(*pReference, item, frame);
        } else if (m_options.m_bIntoBlocks) {
            return;
        }
    } else if (m_options.m_bIntoDimensions && bShows) {
        const AcDbDimension* const pDimension = AcDbDimension::cast(entity.object());
        if (pDimension != nullptr) return EnterDimension(*pDimension, item, frame);
    }
    if (bShows) visit(item);
}

SDrawnItem CDrawnWalk::ItemOf(const AcDbEntity& entity, const SFrame& frame) {
    const SInherited& inherited = frame.m_inherited;
    SDrawnItem item(entity, frame.m_place, m_pickedId);
    item.m_nDepth = frame.m_nDepth;
    item.m_layerId = entity.layerId();
    if (item.m_layerId == m_pDatabase->layerZero() && !inherited.m_layerId.isNull())
        item.m_layerId = inherited.m_layerId;
    const SLayer& layer = LayerOf(item.m_layerId);
    item.m_nHidden = inherited.m_nHidden | layer.m_nHidden;
    if (IsInvisible(entity)) item.m_nHidden |= kDrawnInvisible;

    item.m_linetypeId = entity.linetypeId();
    if (item.m_linetypeId == m_pDatabase->byLayerLinetype())
        item.m_linetypeId = layer.m_linetypeId;
    else if (item.m_linetypeId == m_pDatabase->byBlockLinetype())
        item.m_linetypeId = inherited.m_linetypeId.isNull() ? m_pDatabase->continuousLinetype()
                                                            : inherited.m_linetypeId;
    item.m_color = entity.color();
    if (item.m_color.isByLayer()) {
        item.m_color = layer.m_color;
    } else if (item.m_color.isByBlock()) {
        item.m_color = inherited.m_color;
        // Outside of blocks nothing is inherited.
        if (inherited.m_linetypeId.isNull()) item.m_color = Foreground();
    }
    return item;
}

CDrawnWalk::SInherited CDrawnWalk::InheritedOf(const SDrawnItem& item) const {
    SInherited inherited;
    inherited.m_layerId = item.m_layerId;
    inherited.m_linetypeId = item.m_linetypeId;
    inherited.m_color = item.m_color;
    inherited.m_nHidden = item.m_nHidden & ~static_cast<unsigned int>(kDrawnOff);
    return inherited;
}

void CDrawnWalk::EnterReference(const AcDbBlockReference& reference, const SDrawnItem& item,
                                const SFrame& outer) {
    SFrame frame;
    frame.m_blockId = reference.blockTableRecord();
    if (frame.m_blockId.isNull())
        return Note(SDrawnFault::MissingBlock, reference.objectId(), AcDbObjectId::kNull);
    frame.m_inherited = InheritedOf(item);
    frame.m_nDepth = outer.m_nDepth + 1;
    frame.m_outer = outer.m_place;
    frame.m_inner = reference.blockTransform();
    frame.m_place = frame.m_outer * frame.m_inner;
    if (const AcDbMInsertBlock* const pArray = AcDbMInsertBlock::cast(&reference)) {
        // The cells step along the turned axes of the reference, unscaled. Counts of zero, which
        // some writers leave, mean one.
        const AcGeMatrix3d axes =
            AcGeMatrix3d::planeToWorld(reference.normal()) *
            AcGeMatrix3d::rotation(reference.rotation(), AcGeVector3d::kZAxis);
        frame.m_nColumns = (std::max)(static_cast<std::size_t>(pArray->columns()), std::size_t{1});
        frame.m_nCells =
            frame.m_nColumns * (std::max)(static_cast<std::size_t>(pArray->rows()), std::size_t{1});
        frame.m_columnStep = axes * AcGeVector3d(pArray->columnSpacing(), 0.0, 0.0);
        frame.m_rowStep = axes * AcGeVector3d(0.0, pArray->rowSpacing(), 0.0);
    }
    frame.m_ids = ContentOf(frame.m_blockId);
    static_cast<void>(Enter(std::move(frame), item));
}

void CDrawnWalk::EnterAttributes(const AcDbBlockReference& reference, const SDrawnItem& item,
                                 const SFrame& outer) {
    const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
    if (attributes == nullptr || attributes->done()) return;
    auto ids = std::make_shared<std::vector<AcDbObjectId>>();
    for (; !attributes->done(); attributes->step()) ids->push_back(attributes->objectId());
    SFrame frame;
    frame.m_ids = std::move(ids);
    frame.m_place = outer.m_place;
    frame.m_nDepth = outer.m_nDepth;
    frame.m_inherited = InheritedOf(item);
    // They lie beside their reference, not in its block: layer 0 is what it is there.
    frame.m_inherited.m_layerId = outer.m_inherited.m_layerId;
    m_frames.push_back(std::move(frame));
}

void CDrawnWalk::EnterDimension(const AcDbDimension& dimension, const SDrawnItem& item,
                                const SFrame& outer) {
    SFrame frame;
    frame.m_blockId = dimension.dimBlockId();
    if (frame.m_blockId.isNull()) return;
    frame.m_ids = ContentOf(frame.m_blockId);
    frame.m_place = outer.m_place;
    frame.m_nDepth = outer.m_nDepth + 1;
    frame.m_inherited = InheritedOf(item);
    static_cast<void>(Enter(std::move(frame), item));
}

bool CDrawnWalk::Enter(SFrame frame, const SDrawnItem& item) {
    if (!m_open.insert(frame.m_blockId).second) {
        Note(SDrawnFault::BlockHoldsItself, item.m_id, frame.m_blockId);
        return false;
    }
    m_frames.push_back(std::move(frame));
    return true;
}

CDrawnWalk::Ids CDrawnWalk::ContentOf(const AcDbObjectId& blockId) {
    const auto [at, bNew] = m_contents.try_emplace(blockId);
    if (!bNew) return at->second;
    auto ids = std::make_shared<std::vector<AcDbObjectId>>();
    at->second = ids;
    AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForRead);
    AcDbBlockTableRecordIterator* pMade = nullptr;
    if (block.openStatus() != Acad::eOk || block->newIterator(pMade) != Acad::eOk) {
        Note(SDrawnFault::CannotOpen, blockId, AcDbObjectId::kNull);
        return at->second;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(pMade);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) == Acad::eOk) ids->push_back(id);
    }
    return at->second;
}

const CDrawnWalk::SLayer& CDrawnWalk::LayerOf(const AcDbObjectId& layerId) {
    const auto [at, bNew] = m_layers.try_emplace(layerId);
    SLayer& layer = at->second;
    if (!bNew) return layer;
    layer.m_linetypeId = m_pDatabase->continuousLinetype();
    layer.m_color = Foreground();
    AcDbObjectPointer<AcDbLayerTableRecord> record(layerId, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return layer;
    AcString name;
    if (record->getName(name) == Acad::eOk) layer.m_strName = name.kACharPtr();
    layer.m_linetypeId = record->linetypeObjectId();
    layer.m_color = record->color();
    if (record->isOff()) layer.m_nHidden |= kDrawnOff;
    if (record->isFrozen()) layer.m_nHidden |= kDrawnFrozen;
    if (record->isLocked()) layer.m_nHidden |= kDrawnLocked;
    return layer;
}

void CDrawnWalk::Note(SDrawnFault::EKind kind, const AcDbObjectId& id,
                      const AcDbObjectId& blockId) {
    // A block that holds itself is met again with each of its references.
    if (kind == SDrawnFault::BlockHoldsItself && !m_noted.insert(blockId).second) return;
    m_faults.push_back({kind, id, blockId.isNull() ? CString() : BlockName(blockId)});
}
