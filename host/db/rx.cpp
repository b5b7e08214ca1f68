#include "host/db/define_class.h"
#include "rxdict.h"
#include "rxregsvc.h"

namespace {

// Classes by name; the registry outlives every static user because it is never destroyed.
AcRxDictionary& ClassDictionary() {
    static AcRxDictionary* const dictionary = new AcRxDictionary;
    return *dictionary;
}

}  // namespace

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
    static AcRxClass* const type = newAcRxClass(ACRX_T("AcRxObject"), nullptr, nullptr, nullptr);
    return type;
}
AcRxClass* AcRxObject::isA() const { return AcRxObject::desc(); }
AcRxObject* AcRxObject::clone() const { return nullptr; }
Acad::ErrorStatus AcRxObject::copyFrom(const AcRxObject*) { return Acad::eNotApplicable; }

AcRxClass* AcRxClass::desc() {
    static AcRxClass* const type =
        newAcRxClass(ACRX_T("AcRxClass"), AcRxObject::desc(), nullptr, nullptr);
    return type;
}
AcRxClass* AcRxClass::isA() const { return AcRxClass::desc(); }
AcRxClass* AcRxClass::cast(const AcRxObject* object) {
    return object != nullptr && object->isKindOf(AcRxClass::desc())
               ? static_cast<AcRxClass*>(const_cast<AcRxObject*>(object))
               : nullptr;
}

AcRxClass* newAcRxClass(const ACHAR* name, AcRxClass* parent, AcRxObject* (*create)(),
                        const ACHAR* dxfName) {
    AcRxClass* const type = new AcRxClass;
    type->m_name = name;
    type->m_dxfName = dxfName;
    type->m_parent = parent;
    type->m_create = create;
    // The first class of a name keeps it: the classes of unknown objects share theirs.
    if (!ClassDictionary().has(name)) ClassDictionary().atPut(name, type);
    return type;
}

void acrxBuildClassHierarchy() {}

HOST_DEFINE_CLASS(AcRxDictionary, AcRxObject, nullptr)
HOST_DEFINE_CLASS(AcRxService, AcRxObject, nullptr)

AcRxObject* AcRxDictionary::at(const ACHAR* key) const {
    if (key == nullptr) return nullptr;
    const auto found = m_entries.find(key);
    return found == m_entries.end() ? nullptr : found->second;
}

AcRxObject* AcRxDictionary::atPut(const ACHAR* key, AcRxObject* object) {
    AcRxObject*& entry = m_entries[key];
    AcRxObject* const previous = entry;
    entry = object;
    return previous;
}

AcRxObject* AcRxDictionary::remove(const ACHAR* key) {
    const auto found = m_entries.find(key);
    if (found == m_entries.end()) return nullptr;
    AcRxObject* const previous = found->second;
    m_entries.erase(found);
    return previous;
}

Adesk::UInt32 AcRxDictionary::numEntries() const {
    return static_cast<Adesk::UInt32>(m_entries.size());
}

AcRxDictionary* acrxSysRegistry() {
    static AcRxDictionary* const registry = [] {
        AcRxDictionary* const made = new AcRxDictionary;
        made->atPut(ACRX_CLASS_DICTIONARY, &ClassDictionary());
        return made;
    }();
    return registry;
}

AcRxService* acrxRegisterService(const ACHAR* name) {
    if (name == nullptr || acrxSysRegistry()->has(name)) return nullptr;
    AcRxService* const service = new AcRxService;
    acrxSysRegistry()->atPut(name, service);
    return service;
}

bool acrxServiceIsRegistered(const ACHAR* name) { return acrxSysRegistry()->has(name); }
