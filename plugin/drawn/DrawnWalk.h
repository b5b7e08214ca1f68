// What a drawing shows: the one walk through a space or a selection, with every block taken apart
// and every property as the viewer sees it.
//
// Words
//   item       an entity that shows something itself: everything but a block reference that is
//              taken apart. An entity of a block is one item for each time the block is shown.
//   picked     the entity of the space or the selection that an item is or came from
//   place      the map from an entity's own coordinates to the drawing's
//
// How properties are resolved, as the viewer of the drawing sees them:
//   layer 0      within a block it means the layer on which the block's reference lies
//   ByLayer      line type or colour of the resolved layer
//   ByBlock      within a block those of its reference; outside continuous, and colour 7
//   layer off    hides what lies on it; of a block on it only what takes its layer from there
//   layer frozen hides what lies on it, and a block on it with all its content
//   invisible    likewise, by the entity's own switch
//   layer locked shows, but cannot be picked: so is all content of a block on it
//   attributes   show with their reference, on their own layers, the invisible ones not; their
//                definitions not, save constant ones
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "LinetypeKind.h"
#include "StdAfx.h"

// Why something does not show, or cannot be picked. Several may hold at a time.
enum EDrawnHidden : unsigned int {
    kDrawnShown = 0,
    kDrawnOff = 1,
    kDrawnFrozen = 2,
    kDrawnInvisible = 4,
    kDrawnLocked = 8  // shows all the same
};

// One item. References hold during the call that receives it only.
struct SDrawnItem {
    SDrawnItem(const AcDbEntity& entity, const AcGeMatrix3d& place, const AcDbObjectId& pickedId)
        : m_entity(entity), m_place(place), m_pickedId(pickedId), m_id(entity.objectId()) {}

    const AcDbEntity& m_entity;  // open for read, in its own coordinates
    AcGeMatrix3d m_place;
    AcDbObjectId m_pickedId;
    AcDbObjectId m_id;       // of the entity itself; in a block that of the definition's entity
    int m_nDepth = 0;        // blocks around it; 0: its place is the identity
    AcDbObjectId m_layerId;  // resolved
    AcDbObjectId m_linetypeId;
    AcCmColor m_color;  // resolved: an index 1..255 or red, green, blue
    unsigned int m_nHidden = kDrawnShown;

    bool IsShown() const { return (m_nHidden & ~static_cast<unsigned int>(kDrawnLocked)) == 0; }
    bool IsLocked() const { return (m_nHidden & kDrawnLocked) != 0; }
};

// What a walk could not do.
struct SDrawnFault {
    enum EKind {
        BlockHoldsItself,  // the reference m_id is left out: its block is being taken apart already
        TooMuch,           // the walk ends here, in the block; what was seen until then is good
        CannotOpen,        // m_id is left out: it is erased, or open for writing elsewhere
        WrongDatabase,     // m_id is left out: it lies in another drawing
        MissingBlock,      // the reference m_id shows nothing: the drawing has no such block
        // m_id, or a part of it, cannot be drawn as it is stated. Told by those who ask for shapes
        // (SDrawnShape::m_bSound), not by the walk.
        Unsound
    };
    EKind m_kind;
    AcDbObjectId m_id;
    CString m_strBlock;  // the block's name, where there is one

    // One English sentence with the entity's handle and the block's name.
    CString Text() const;
};

struct SDrawnOptions {
    // False: block references are items themselves, with their attributes behind them.
    bool m_bIntoBlocks = true;
    // True: what does not show is visited, too, and says so.
    bool m_bWithHidden = false;
    // True: a dimension is taken apart into what its block draws, which lies in the drawing's own
    // coordinates.
    bool m_bIntoDimensions = false;
    // Items and references of one walk at most, cells of arrays counted one by one: blocks that
    // hold blocks double with every level, and forty levels would take years.
    std::size_t m_nMost = 5000000;
};

// Walks through one database. Layers, line types and the lists of blocks are read once each and
// kept for the walker's life, so it must not outlive a change of them.
//
// Nothing stays open across calls; each item is open while the visitor looks at it. The walk keeps
// its place in a list of its own, not on the stack: sixty thousand levels are as good as one.
//
// cost  O(items log blocks), memory O(entities of the blocks + depth)
class CDrawnWalk {
public:
    using Visitor = std::function<void(const SDrawnItem&)>;

    // How deep visitors may call WalkBlock() in one another. The walks themselves know no such
    // limit.
    static constexpr int kMostNested = 256;

    // The database given is the one looked at, whatever the working one is.
    explicit CDrawnWalk(AcDbDatabase* pDatabase, const SDrawnOptions& options = SDrawnOptions());

    // Everything of a space or of a block's definition, in its order. blockId: for model space
    // acdbSymUtil()->blockModelSpaceId(database).
    void WalkSpace(const AcDbObjectId& blockId, const Visitor& visit);

    // The entities and what they hold, in the order of the ids.
    void Walk(const AcDbObjectIdArray& ids, const Visitor& visit);

    // The content of a block as one reference to it shows it, or a dimension's block, in the
    // block's own coordinates; m_nDepth is one more than that of shownBy. May be called by a
    // visitor of this walker, for the item that it is given.
    //
    // result  false when the block is being taken apart already: it holds itself, and is left out;
    // and
    //         for references in more than kMostNested others, since each calls its visitor anew
    bool WalkBlock(const AcDbObjectId& blockId, const SDrawnItem& shownBy, const Visitor& visit);

    // What went wrong since the walker was made; one fault for each block that holds itself.
    const std::vector<SDrawnFault>& Faults() const { return m_faults; }

    // The line types of the drawing, by the ids of the items.
    CLinetypes& Linetypes() { return m_linetypes; }

    struct SLayer {
        CString m_strName;  // empty when the layer cannot be read
        AcDbObjectId m_linetypeId;
        AcCmColor m_color;
        unsigned int m_nHidden = kDrawnShown;  // what it does to an entity that lies on it
    };
    // A layer of the drawing as it was when it was first asked for; the reference holds as long as
    // the object.
    const SLayer& LayerOf(const AcDbObjectId& layerId);
    const CString& LayerName(const AcDbObjectId& layerId) { return LayerOf(layerId).m_strName; }

private:
    // What a reference hands on to the content of its block.
    struct SInherited {
        AcDbObjectId m_layerId;  // that layer 0 stands for; null outside of blocks
        AcDbObjectId m_linetypeId;
        AcCmColor m_color;
        unsigned int m_nHidden = kDrawnShown;
    };
    using Ids = std::shared_ptr<const std::vector<AcDbObjectId>>;
    // A list of entities on the way, with the map that places them; shown once for each cell.
    struct SFrame {
        Ids m_ids;
        std::size_t m_nNext = 0;
        AcGeMatrix3d m_place;
        SInherited m_inherited;
        AcDbObjectId m_blockId;  // null: no block is left when the frame ends
        std::size_t m_nCell = 0, m_nCells = 1, m_nColumns = 1;
        AcGeMatrix3d m_outer, m_inner;  // around and below the step to a cell
        AcGeVector3d m_columnStep, m_rowStep;
        int m_nDepth = 0;
        bool m_bAttributes = false;
    };

    void Run(const Visitor& visit);
    bool NextCell(SFrame& frame) const;
    void Visit(const AcDbObjectId& id, const SFrame& frame, const Visitor& visit);
    SDrawnItem ItemOf(const AcDbEntity& entity, const SFrame& frame);
    SInherited InheritedOf(const SDrawnItem& item) const;
    void EnterReference(const AcDbBlockReference& reference, const SDrawnItem& item,
                        const SFrame& frame);
    void EnterAttributes(const AcDbBlockReference& reference, const SDrawnItem& item,
                         const SFrame& frame);
    void EnterDimension(const AcDbDimension& dimension, const SDrawnItem& item,
                        const SFrame& frame);
    // Opens a frame; false when the block is being taken apart already.
    bool Enter(SFrame frame, const SDrawnItem& item);
    Ids ContentOf(const AcDbObjectId& blockId);
    void Note(SDrawnFault::EKind kind, const AcDbObjectId& id, const AcDbObjectId& blockId);

    AcDbDatabase* m_pDatabase;
    SDrawnOptions m_options;
    std::size_t m_nSeen = 0;
    bool m_bStopped = false;
    AcDbObjectId m_pickedId;
    std::deque<SFrame> m_frames;    // a deque: frames stay where they are while others open
    std::set<AcDbObjectId> m_open;  // blocks that are being taken apart
    std::set<AcDbObjectId> m_noted;
    std::vector<SDrawnFault> m_faults;
    std::map<AcDbObjectId, Ids> m_contents;
    std::map<AcDbObjectId, SLayer> m_layers;
    CLinetypes m_linetypes;
};
