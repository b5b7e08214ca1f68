// Groups: named sets of entities, kept in the dictionary ACAD_GROUP.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

class AcDbGroup;

// Visits the members that are not erased.
class AcDbGroupIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbGroupIterator);
    explicit AcDbGroupIterator(const AcDbGroup& group);
    // Opens the member for read; the caller closes it; null when it cannot be opened.
    AcDbObject* object() const;
    AcDbObjectId objectId() const;
    bool done() const;  // behind the last member
    bool next();        // false at the end

private:
    void skip();
    const AcDbGroup& m_group;
    size_t m_at = 0;
};

// GROUP. Selecting a whole group by one of its members is not carried out by the prompts here.
class AcDbGroup : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbGroup);
    AcDbGroup() = default;  // empty, selectable
    explicit AcDbGroup(const ACHAR* description, bool selectable = true);

    AcDbGroupIterator* newIterator();  // the caller deletes it
    // Appends the members in their order, and returns how many; erased ones are left out.
    Adesk::UInt32 allEntityIds(AcDbObjectIdArray& ids) const;
    Adesk::UInt32 numEntities() const;  // without erased ones
    bool isEmpty() const { return numEntities() == 0; }
    bool has(const AcDbEntity* entity) const;  // O(members)

    // Name under which the group stands in its dictionary; empty for a non-resident one.
    Acad::ErrorStatus getName(AcString& name) const;
    const ACHAR* description() const { return m_description.c_str(); }  // group 300
    Acad::ErrorStatus setDescription(const ACHAR* text);
    bool isSelectable() const { return m_selectable; }  // group 71
    Acad::ErrorStatus setSelectable(bool selectable);
    bool isAnonymous() const { return m_anonymous; }  // group 70; named by the host, as "*A1"

    // Entities learn of the group by a persistent reactor. eNullObjectId, eDuplicateKey.
    Acad::ErrorStatus append(AcDbObjectId id);
    Acad::ErrorStatus append(const AcDbObjectIdArray& ids);
    // eKeyNotFound.
    Acad::ErrorStatus remove(AcDbObjectId id);
    Acad::ErrorStatus clear();  // the entities stay

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    friend struct host::Access;
    friend class AcDbGroupIterator;
    void translateIds(const AcDbIdMapping& mapping) override;

private:
    std::vector<AcDbObjectId> m_ids;  // erased ones included
    std::wstring m_description;
    bool m_selectable = true;
    bool m_anonymous = false;
};
