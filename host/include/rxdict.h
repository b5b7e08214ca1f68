// A dictionary of run-time objects: the system registry and its entries.
#pragma once

#include <map>
#include <string>

#include "rxboiler.h"

// Maps keys to objects. Owns nothing: entries belong to whoever registered them. Keys compare with
// case. O(log n).
class AcRxDictionary : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDictionary);

    // The entry, or null.
    AcRxObject* at(const ACHAR* key) const;

    // Puts or replaces an entry; returns the one that was there, or null.
    AcRxObject* atPut(const ACHAR* key, AcRxObject* object);

    // Takes an entry out; returns it, or null.
    AcRxObject* remove(const ACHAR* key);

    bool has(const ACHAR* key) const { return at(key) != nullptr; }
    Adesk::UInt32 numEntries() const;  // O(1)

private:
    std::map<std::wstring, AcRxObject*> m_entries;
};

// The system registry; never null.
AcRxDictionary* acrxSysRegistry();

#define acrxClassDictionary AcRxDictionary::cast(acrxSysRegistry()->at(ACRX_CLASS_DICTIONARY))
