// What became of the objects of a clone operation.
#pragma once

#include <unordered_map>

#include "acdb.h"
#include "dbid.h"

class AcDbDatabase;

// One object (key) and its clone (value).
class AcDbIdPair {
public:
    AcDbIdPair() = default;  // an empty pair: set its key, then ask
    AcDbIdPair(const AcDbObjectId& key, const AcDbObjectId& value, bool cloned, bool primary = true,
               bool ownerXlated = true)
        : m_key(key),
          m_value(value),
          m_cloned(cloned),
          m_primary(primary),
          m_ownerXlated(ownerXlated) {}

    AcDbObjectId key() const { return m_key; }      // the original
    AcDbObjectId value() const { return m_value; }  // its clone; null when there is none
    bool isCloned() const { return m_cloned; }      // the value was made by this operation
    // False for objects that were cloned along with their owner.
    bool isPrimary() const { return m_primary; }
    // its owner is the clone's, not the original's
    bool isOwnerXlated() const { return m_ownerXlated; }

    void setKey(const AcDbObjectId& key) { m_key = key; }  // what compute() looks for
    void setValue(const AcDbObjectId& value) { m_value = value; }
    void setCloned(bool cloned) { m_cloned = cloned; }
    void setPrimary(bool primary) { m_primary = primary; }
    void setOwnerXlated(bool xlated) { m_ownerXlated = xlated; }

private:
    AcDbObjectId m_key;
    AcDbObjectId m_value;
    bool m_cloned = false;   // by this operation
    bool m_primary = false;  // asked for itself
    bool m_ownerXlated = false;
};

// Maps objects to their clones. Use a new one for each operation. O(1) look-up.
class AcDbIdMapping {
public:
    AcDbIdMapping() = default;
    AcDbIdMapping(const AcDbIdMapping&) = delete;  // the operation fills this very one
    AcDbIdMapping& operator=(const AcDbIdMapping&) = delete;

    // Completes the pair with the key set; false, pair untouched, when the key is not mapped.
    bool compute(AcDbIdPair& pair) const;
    // Adds or replaces; true when the key was there.
    bool assign(const AcDbIdPair& pair);
    bool del(const AcDbObjectId& key);  // false when the key was not there

    AcDbDatabase* destDb() const { return m_destDb; }  // the drawing of the clones
    Acad::ErrorStatus destDb(AcDbDatabase*& db) const {
        db = m_destDb;
        return Acad::eOk;
    }
    void setDestDb(AcDbDatabase* db) { m_destDb = db; }
    // always kDcObjects here
    AcDb::DeepCloneType deepCloneContext() const { return AcDb::kDcObjects; }

private:
    friend class AcDbIdMappingIter;
    std::unordered_map<AcDbObjectId, AcDbIdPair> m_pairs;  // by key
    AcDbDatabase* m_destDb = nullptr;
};

// Visits all pairs in no defined order. The mapping must not change meanwhile.
class AcDbIdMappingIter {
public:
    explicit AcDbIdMappingIter(const AcDbIdMapping& mapping)
        : m_mapping(mapping), m_at(mapping.m_pairs.begin()) {}

    void start() { m_at = m_mapping.m_pairs.begin(); }             // at the first pair again
    bool done() const { return m_at == m_mapping.m_pairs.end(); }  // behind the last pair
    bool next() {
        if (!done()) ++m_at;
        return !done();
    }
    // False at the end.
    bool getMap(AcDbIdPair& pair) const {
        if (done()) return false;
        pair = m_at->second;
        return true;
    }

private:
    const AcDbIdMapping& m_mapping;
    std::unordered_map<AcDbObjectId, AcDbIdPair>::const_iterator m_at;
};
