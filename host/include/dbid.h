// Object identifiers.
#pragma once

#include <functional>

#include "dbhandle.h"

class AcRxClass;
class AcDbDatabase;

namespace host {
struct Stub;
}

// Names an object for the life of the program: also after the object was erased and after its
// database is gone. A plain pointer-sized value; comparing and copying cost nothing.
class AcDbObjectId {
public:
    static const AcDbObjectId kNull;  // names nothing

    constexpr AcDbObjectId() = default;  // null
    explicit constexpr AcDbObjectId(host::Stub* stub) : m_stub(stub) {}

    bool isNull() const { return m_stub == nullptr; }
    void setNull() { m_stub = nullptr; }  // names nothing afterwards

    // True when the object is there, erased or not.
    bool isValid() const;

    // True when the object is erased, or its database is gone; false for null.
    // What is erased is still there, and may come back.
    bool isErased() const;
    bool isEffectivelyErased() const;

    // True when the object is in memory, not only known by its place in a file.
    bool isResident() const;

    // Not of null, which stops the program: what is no object has none.
    AcDbHandle handle() const;
    AcDbHandle nonForwardedHandle() const { return handle(); }

    // Null for null and when the database is gone.
    // O(1).
    AcDbDatabase* database() const;

    // Class of the object, known without opening it; null for null.
    AcRxClass* objectClass() const;

    bool operator==(const AcDbObjectId& other) const { return m_stub == other.m_stub; }
    bool operator!=(const AcDbObjectId& other) const { return m_stub != other.m_stub; }
    bool operator<(const AcDbObjectId& other) const {
        return std::less<const host::Stub*>()(m_stub, other.m_stub);
    }
    bool operator>(const AcDbObjectId& other) const { return other < *this; }
    bool operator<=(const AcDbObjectId& other) const { return !(other < *this); }
    bool operator>=(const AcDbObjectId& other) const { return !(*this < other); }

    // as a number, for ads_name
    Adesk::IntDbId asOldId() const { return reinterpret_cast<Adesk::IntDbId>(m_stub); }
    AcDbObjectId& setFromOldId(Adesk::IntDbId oldId) {
        // The interface passes identifiers through integers (ads_name).
        m_stub = reinterpret_cast<host::Stub*>(oldId);  // NOLINT(performance-no-int-to-ptr)
        return *this;
    }

    host::Stub* stub() const { return m_stub; }  // for the host's own rooms

private:
    host::Stub* m_stub = nullptr;  // where the database keeps the object
};

template <>
struct std::hash<AcDbObjectId> {
    size_t operator()(const AcDbObjectId& id) const {
        return std::hash<const void*>()(static_cast<const void*>(id.stub()));
    }
};
