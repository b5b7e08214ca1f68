// Block definitions. Part of dbsymtb.h.
#pragma once

#include "dbsymtb.h"

class AcDbBlockTableRecordIterator;

namespace host {
class EntityList;
}

// A block definition, model space and paper spaces included: an ordered list of entities.
class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);
    // A new definition without a name; add it to the block table.
    AcDbBlockTableRecord();
    ~AcDbBlockTableRecord() override;

    // Makes a new entity resident, with a new handle, at the end of the list. The record must be
    // open for write; the entity is then open for write, to be closed. Missing layer and linetype
    // become the current ones. eNotOpenForWrite, eAlreadyInDb, eNullEntityPointer, eNotInDatabase
    // (record not in a table). O(1).
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);

    // The caller deletes it. Erasing and appending meanwhile are allowed; appended entities are
    // visited. Erased entities cost nothing in the long run.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    // model space or a paper space
    bool isLayout() const { return !m_layoutId.isNull() || m_space; }
    AcDbObjectId getLayoutId() const { return m_layoutId; }  // null for a definition
    Acad::ErrorStatus setLayoutId(AcDbObjectId layout);
    bool isAnonymous() const { return m_anonymous; }  // named by the host, as "*U1"
    // its content lies in another file, which is not read
    bool isFromExternalReference() const { return m_xref; }
    bool isFromOverlayReference() const {
        return m_overlay;
    }                                                // of those, one that is not handed on
    AcGePoint3d origin() const { return m_origin; }  // base point, group 10 of BLOCK
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    ACHAR* comments() const;  // group 4; a copy for acutDelString
    Acad::ErrorStatus setComments(const ACHAR* text);
    // group 280; explode refuses when it is not set
    bool explodable() const { return m_explodable; }
    Acad::ErrorStatus setExplodable(bool explodable);
    bool hasAttributeDefinitions() const;  // O(entities)
    // References to this block that are not erased; nested ones' insertions only when !directOnly.
    // O(all entities of the drawing).
    Acad::ErrorStatus getBlockReferenceIds(AcDbObjectIdArray& ids, bool directOnly = true,
                                           bool forceValidity = false) const;

    // A definition with the same properties, and no entities; those are cloned one by one.
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    friend struct host::Access;
    void ownedIds(AcDbObjectIdArray& ids) const override;

private:
    // Copies everything but the entities.
    AcDbBlockTableRecord(const AcDbBlockTableRecord& other);
    AcDbBlockTableRecord& operator=(const AcDbBlockTableRecord& other);
    std::unique_ptr<host::EntityList> m_entities;
    AcGePoint3d m_origin;
    AcDbObjectId m_layoutId;
    std::wstring m_comments;
    std::wstring m_pathName;
    bool m_space = false;
    bool m_anonymous = false;
    bool m_xref = false;
    bool m_overlay = false;
    bool m_explodable = true;
};
// Visits the definitions in the order in which they were made.
class AcDbBlockTableIterator : public host::TypedTableIterator<AcDbBlockTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The definitions of a drawing. Model space and paper space are there from the beginning.
class AcDbBlockTable : public host::TypedSymbolTable<AcDbBlockTableRecord, AcDbBlockTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTable);  // in files: TABLE BLOCK_RECORD
};

// Visits the entities of a definition; the record need not stay open, but must stay in memory.
class AcDbBlockTableRecordIterator {
public:
    AcDbBlockTableRecordIterator(const host::EntityList& list, bool atBeginning, bool skipDeleted);
    void start(bool atBeginning = true, bool skipDeleted = true);  // at the first, or the last
    bool done() const;  // behind the last, or before the first
    void step(bool forward = true, bool skipDeleted = true);  // towards the end, or back
    // eInvalidIndex when the visit is done. Costs no opening.
    Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
    // Opens the entity; the caller closes it.
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    // eKeyNotFound.
    Acad::ErrorStatus seek(AcDbObjectId id);

private:
    const host::EntityList* m_list;
    host::Stub* m_at = nullptr;
    size_t m_hint = 0;
};
