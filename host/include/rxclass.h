// Run-time classes.
#pragma once

#include "rxobject.h"

// Describes one class: its name, its parent, its name in DXF files. Lives until the program ends.
class AcRxClass : public AcRxObject {
public:
    static AcRxClass* desc();
    static AcRxClass* cast(const AcRxObject* object);
    AcRxClass* isA() const override;

    const ACHAR* name() const { return m_name; }  // as in the source
    // Name in DXF files ("LINE"); null for classes without one.
    const ACHAR* dxfName() const { return m_dxfName; }
    AcRxClass* myParent() const { return m_parent; }  // null for AcRxObject

    // True for the class itself too. O(depth).
    bool isDerivedFrom(const AcRxClass* other) const {
        for (const AcRxClass* type = this; type != nullptr; type = type->m_parent)
            if (type == other) return true;
        return false;
    }

    // A new default object; null for abstract classes.
    AcRxObject* create() const { return m_create == nullptr ? nullptr : m_create(); }

private:
    friend AcRxClass* newAcRxClass(const ACHAR* name, AcRxClass* parent, AcRxObject* (*create)(),
                                   const ACHAR* dxfName);
    AcRxClass() = default;

    const ACHAR* m_name = nullptr;  // kept by the maker
    const ACHAR* m_dxfName = nullptr;
    AcRxClass* m_parent = nullptr;
    AcRxObject* (*m_create)() = nullptr;  // null for abstract classes
};

// Makes and registers a class; the strings must outlive the program's use of it.
AcRxClass* newAcRxClass(const ACHAR* name, AcRxClass* parent, AcRxObject* (*create)(),
                        const ACHAR* dxfName);

// Completes the class hierarchy after rxInit calls. Classes here are linked when they are made, so
// there is nothing left to do.
void acrxBuildClassHierarchy();

inline bool AcRxObject::isKindOf(const AcRxClass* type) const {
    return type != nullptr && isA()->isDerivedFrom(type);
}
