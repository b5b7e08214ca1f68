// Dictionaries: named objects.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "dbmain.h"

class AcDbDictionaryIterator;

// Maps names to objects it owns. Names compare without case, their spelling is kept; entries keep
// the order in which they were made. Look-up costs O(1).
class AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary);
    AcDbDictionary();  // empty
    ~AcDbDictionary() override;

    // eKeyNotFound; failures of opening; the caller closes.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObject*& entry, AcDb::OpenMode mode) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
    // eKeyNotFound.
    Acad::ErrorStatus nameAt(AcDbObjectId id, AcString& name) const;
    Acad::ErrorStatus nameAt(AcDbObjectId id, ACHAR*& name) const;
    bool has(const ACHAR* name) const;  // erased entries do not count
    bool has(AcDbObjectId id) const;
    Adesk::UInt32 numEntries() const;  // without erased ones

    // Puts a new object under a name; an entry of that name is erased. The dictionary must be open
    // for write and resident; the object becomes resident and stays open for write. eInvalidInput
    // for an empty name or a null object, eNotInDatabase, eAlreadyInDb, eNotOpenForWrite.
    Acad::ErrorStatus setAt(const ACHAR* name, AcDbObject* object, AcDbObjectId& id);
    // Takes an entry out of the dictionary without erasing it. eKeyNotFound.
    Acad::ErrorStatus remove(const ACHAR* name);
    Acad::ErrorStatus remove(const ACHAR* name, AcDbObjectId& id);
    Acad::ErrorStatus remove(AcDbObjectId id);
    // eKeyNotFound, eDuplicateKey.
    // True when the entry has the new name. It keeps its place in the order.
    bool setName(const ACHAR* oldName, const ACHAR* newName);

    bool isTreatElementsAsHard() const { return m_hard; }  // group 280: purging keeps the entries
    void setTreatElementsAsHard(bool hard);
    // group 281, for cloning between drawings
    AcDb::DuplicateRecordCloning mergeStyle() const { return m_mergeStyle; }
    void setMergeStyle(AcDb::DuplicateRecordCloning style);

    // The caller deletes it. Erased entries are skipped.
    AcDbDictionaryIterator* newIterator() const;

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    friend struct host::Access;
    friend class AcDbDictionaryIterator;
    void ownedIds(AcDbObjectIdArray& ids) const override;

private:
    struct Entry {
        std::wstring name;
        AcDbObjectId id;
    };
    const Entry* find(const ACHAR* name) const;  // null when there is none
    void eraseEntry(size_t index);               // erases its object, too

    std::vector<Entry> m_entries;  // in the order they were made; removed ones have a null id
    std::unordered_map<std::wstring, size_t> m_byName;  // folded name to index
    AcDb::DuplicateRecordCloning m_mergeStyle = AcDb::kDrcIgnore;
    bool m_hard = false;
};

// Visits the entries. The dictionary must stay as it is meanwhile.
class AcDbDictionaryIterator {
public:
    explicit AcDbDictionaryIterator(const AcDbDictionary& dictionary);
    const ACHAR* name() const;  // as it was spelled
    AcDbObjectId objectId() const;
    // Opens the entry; the caller closes it.
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead);
    bool done() const;  // behind the last entry
    // False at the end.
    bool next();

private:
    void skip();
    const AcDbDictionary& m_dictionary;
    size_t m_at = 0;
};
