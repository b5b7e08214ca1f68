// Cloning objects with what they own.

#include "host/db/database_imp.h"
#include "host/db/entity_list.h"

using host::Access;
using host::Stub;

bool AcDbIdMapping::compute(AcDbIdPair& pair) const {
    const auto found = m_pairs.find(pair.key());
    if (found == m_pairs.end()) return false;
    pair = found->second;
    return true;
}

bool AcDbIdMapping::assign(const AcDbIdPair& pair) {
    return !m_pairs.insert_or_assign(pair.key(), pair).second;
}

bool AcDbIdMapping::del(const AcDbObjectId& key) { return m_pairs.erase(key) != 0; }

namespace host {

void Translate(const AcDbIdMapping& mapping, AcDbObjectId& id) {
    AcDbIdPair pair;
    pair.setKey(id);
    if (!id.isNull() && mapping.compute(pair) && pair.isCloned()) id = pair.value();
}

namespace {

// The clones of one operation.
class Cloner {
public:
    Cloner(AcDbDatabase& db, AcDbIdMapping& mapping) : m_db(db), m_mapping(mapping) {}

    // Clones an object below a new owner. The caller puts it into the owner's list.
    Acad::ErrorStatus Clone(Stub& source, Stub& owner, bool primary, Stub*& made) {
        AcDbObject* const original = ObjectOf(source);
        if (original == nullptr) return Acad::eUnknownHandle;
        std::unique_ptr<AcDbObject> copy(static_cast<AcDbObject*>(original->clone()));
        if (copy == nullptr) return Acad::eNotApplicable;
        const Adesk::UInt16 flags = source.flags & (kStubEntity | kStubSubentity);
        const Acad::ErrorStatus es = MakeResident(m_db, *copy, &owner, flags, false);
        if (es != Acad::eOk) return es;
        made = Access::StubOf(*copy.release());
        Note(source, *made, primary);
        return CloneOwned(*original, *made);
    }

    void TranslateAll() {
        for (Stub* const stub : m_clones) Access::TranslateIds(*stub->object, m_mapping);
    }

private:
    void Note(Stub& source, Stub& clone, bool primary) {
        m_mapping.assign(AcDbIdPair(source.Id(), clone.Id(), true, primary, true));
        m_clones.push_back(&clone);
    }

    // Vertices and attributes came along with the copy: only their pairs and dictionaries are left.
    // Entries of dictionaries are cloned here.
    Acad::ErrorStatus CloneOwned(const AcDbObject& original, Stub& clone) {
        const Acad::ErrorStatus es = CloneExtension(original, clone);
        if (es != Acad::eOk) return es;
        if (const AcDbDictionary* const dictionary = AcDbDictionary::cast(&original))
            return CloneEntries(*dictionary, clone);
        const std::vector<Stub*> from = Members(original);
        const std::vector<Stub*> to = Members(*clone.object);
        for (size_t i = 0; i < from.size() && i < to.size(); ++i) {
            Note(*from[i], *to[i], false);
            if (from[i]->object == nullptr) continue;
            const Acad::ErrorStatus child = CloneExtension(*from[i]->object, *to[i]);
            if (child != Acad::eOk) return child;
        }
        return Acad::eOk;
    }

    Acad::ErrorStatus CloneExtension(const AcDbObject& original, Stub& clone) {
        const AcDbObjectId dictionary = original.extensionDictionary();
        if (dictionary.isNull()) return Acad::eOk;
        Stub* made = nullptr;
        const Acad::ErrorStatus es = Clone(*dictionary.stub(), clone, false, made);
        if (es == Acad::eOk) SetExtensionDictionary(*clone.object, made->Id());
        return es;
    }

    Acad::ErrorStatus CloneEntries(const AcDbDictionary& original, Stub& clone) {
        auto& copy = static_cast<AcDbDictionary&>(*clone.object);
        Access::Entries(copy).clear();
        Access::EntriesByName(copy).clear();
        const std::vector<Stub*> entries = Members(original);
        const std::vector<std::wstring> names = EntryNames(original);
        for (size_t i = 0; i < entries.size(); ++i) {
            Stub* made = nullptr;
            const Acad::ErrorStatus es = Clone(*entries[i], clone, false, made);
            if (es != Acad::eOk) return es;
            AddDictionaryEntry(clone, names[i], *made);
        }
        return Acad::eOk;
    }

    AcDbDatabase& m_db;
    AcDbIdMapping& m_mapping;
    std::vector<Stub*> m_clones;
};

Acad::ErrorStatus CheckSources(const AcDbDatabase& db, const AcDbObjectIdArray& ids) {
    for (int i = 0; i < ids.length(); ++i) {
        if (ids[i].isNull()) return Acad::eNullObjectId;
        if (ids[i].database() != &db) return Acad::eWrongDatabase;
        if (ids[i].isErased()) return Acad::eWasErased;
        if (ids[i].stub()->owner != ids[0].stub()->owner) return Acad::eInvalidInput;
        // Entities that another entity owns come with it, not by themselves.
        if (ids[i].stub()->Has(kStubSubentity)) return Acad::eInvalidInput;
    }
    return Acad::eOk;
}

// A name for the clone of a dictionary entry: the dictionary's own scheme for names it makes up.
std::wstring FreeName(const AcDbDictionary& dictionary) {
    for (Adesk::UInt32 n = dictionary.numEntries() + 1;; ++n) {
        std::wstring name = L"*A" + std::to_wstring(n);
        if (!dictionary.has(name.c_str())) return name;
    }
}

Acad::ErrorStatus CloneInto(Cloner& cloner, AcDbObject& owner, const AcDbObjectIdArray& ids) {
    AcDbBlockTableRecord* const block = AcDbBlockTableRecord::cast(&owner);
    AcDbDictionary* const dictionary = AcDbDictionary::cast(&owner);
    if (block == nullptr && dictionary == nullptr) return Acad::eWrongObjectType;
    Acad::ErrorStatus es = Access::BeginWrite(owner, kDirtyChildren);
    Stub& ownerStub = *Access::StubOf(owner);
    for (int i = 0; es == Acad::eOk && i < ids.length(); ++i) {
        if (ids[i].stub()->Has(kStubEntity) != (block != nullptr)) return Acad::eWrongObjectType;
        Stub* made = nullptr;
        es = cloner.Clone(*ids[i].stub(), ownerStub, true, made);
        if (es != Acad::eOk) break;
        if (block != nullptr)
            Access::Entities(*block)->Append(*made);
        else
            AddDictionaryEntry(ownerStub, FreeName(*dictionary), *made);
    }
    return es;
}

}  // namespace
}  // namespace host

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const AcDbObjectIdArray& ids,
                                                 const AcDbObjectId& owner, AcDbIdMapping& mapping,
                                                 bool deferXlation) {
    mapping.setDestDb(this);
    if (ids.isEmpty()) return Acad::eOk;
    Acad::ErrorStatus es = host::CheckSources(*this, ids);
    if (es != Acad::eOk) return es;
    if (owner.isNull()) return Acad::eNullObjectId;
    if (owner.database() != this) return Acad::eWrongDatabase;
    AcDbObject* container = nullptr;
    es = acdbOpenAcDbObject(container, owner, AcDb::kForWrite);
    if (es != Acad::eOk) return es;
    host::Cloner cloner(*this, mapping);
    es = host::CloneInto(cloner, *container, ids);
    if (!deferXlation) cloner.TranslateAll();
    const Acad::ErrorStatus closed = container->close();
    return es != Acad::eOk ? es : closed;
}
