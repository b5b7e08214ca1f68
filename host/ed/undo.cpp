#include "host/ed/undo.h"

#include <algorithm>
#include <cwchar>
#include <unordered_set>

#include "dbdict.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/db/build.h"

namespace host {
namespace {

// Containers come back as what they hold does; copying the list of a million entities for every
// entity added would cost more than the adding.
bool IsContainer(const AcDbObject& object) {
    return object.isKindOf(AcDbBlockTableRecord::desc()) ||
           object.isKindOf(AcDbSymbolTable::desc()) || object.isKindOf(AcDbDictionary::desc());
}

}  // namespace

UndoLog::UndoLog(AcDbDatabase& database) : m_database(&database) {
    static_cast<void>(database.addReactor(this));
}

UndoLog::~UndoLog() {
    if (m_database != nullptr) static_cast<void>(m_database->removeReactor(this));
}

void UndoLog::Begin(const std::wstring& name) {
    if (m_isOpen) return;
    m_isOpen = true;
    m_current = {name, {}};
    m_firstNew = m_database->handseed();
}

bool UndoLog::IsRecording(const AcDbObject& object) const {
    return m_isOpen && !m_isTakingBack && object.objectId().stub()->handle < m_firstNew;
}

void UndoLog::End() {
    if (!m_isOpen) return;
    m_isOpen = false;
    DropScratch();
    if (!m_current.changes.empty()) {
        m_groups.push_back(std::move(m_current));
        m_takenBack.clear();
    }
    if (m_groups.size() > kMaxGroups) m_groups.erase(m_groups.begin());
    m_current = {};
    FreeErased();
}

// Objects that the open group added and that are erased now.
void UndoLog::DropScratch() {
    std::unordered_set<const Stub*> scratch;
    for (const Change& change : m_current.changes)
        if (change.kind == Kind::kAppended && change.id.isErased())
            scratch.insert(change.id.stub());
    std::vector<Change>& changes = m_current.changes;
    changes.erase(
        std::remove_if(changes.begin(), changes.end(),
                       [&](const Change& change) { return scratch.count(change.id.stub()) > 0; }),
        changes.end());
}

// Everything erased that no group brings back.
void UndoLog::FreeErased() {
    std::unordered_set<const Stub*> kept;
    for (const std::vector<Group>* const groups : {&m_groups, &m_takenBack})
        for (const Group& group : *groups)
            for (const Change& change : group.changes) kept.insert(change.id.stub());
    PurgeErased(*m_database, [&kept](const Stub& stub) {
        // What went with its owner comes back with it.
        for (const Stub* at = &stub; at != nullptr; at = at->owner)
            if (kept.count(at) > 0) return true;
        return false;
    });
}

void UndoLog::Note(Kind kind, AcDbObjectId id) {
    if (m_isOpen && !m_isTakingBack) m_current.changes.push_back({kind, id, nullptr});
}

void UndoLog::objectAppended(const AcDbDatabase*, const AcDbObject* object) {
    Note(Kind::kAppended, object->objectId());
}

void UndoLog::objectErased(const AcDbDatabase*, const AcDbObject* object, bool erased) {
    if (IsRecording(*object)) Note(erased ? Kind::kErased : Kind::kUnerased, object->objectId());
}

void UndoLog::objectOpenedForModify(const AcDbDatabase*, const AcDbObject* object) {
    if (!IsRecording(*object) || IsContainer(*object)) return;
    std::unique_ptr<AcDbObject> before(AcDbObject::cast(object->clone()));
    if (before != nullptr)
        m_current.changes.push_back({Kind::kChanged, object->objectId(), std::move(before)});
}

void UndoLog::headerSysVarWillChange(const AcDbDatabase*, const ACHAR* name) {
    if (std::wcscmp(name, L"CLAYER") == 0) Note(Kind::kCurrentLayer, m_database->clayer());
    if (std::wcscmp(name, L"CELTYPE") == 0) Note(Kind::kCurrentLinetype, m_database->celtype());
}

Acad::ErrorStatus UndoLog::Revert(const Change& change, Group& inverse) {
    if (change.kind == Kind::kCurrentLayer) {
        inverse.changes.push_back({change.kind, m_database->clayer(), nullptr});
        return m_database->setClayer(change.id);
    }
    if (change.kind == Kind::kCurrentLinetype) {
        inverse.changes.push_back({change.kind, m_database->celtype(), nullptr});
        return m_database->setCeltype(change.id);
    }
    AcDbObjectPointer<AcDbObject> object(change.id, AcDb::kForWrite, true);
    if (object.openStatus() != Acad::eOk) return object.openStatus();
    if (change.kind == Kind::kChanged) {
        std::unique_ptr<AcDbObject> now(AcDbObject::cast(object->clone()));
        const Acad::ErrorStatus es = object->copyFrom(change.before.get());
        if (es == Acad::eOk && now != nullptr)
            inverse.changes.push_back({Kind::kChanged, change.id, std::move(now)});
        return es;
    }
    const bool erase = change.kind == Kind::kAppended || change.kind == Kind::kUnerased;
    inverse.changes.push_back({erase ? Kind::kErased : Kind::kUnerased, change.id, nullptr});
    // An owner that was taken back before has taken this one with it.
    return object->isErased() == erase ? Acad::eOk : object->erase(erase);
}

// A layer that the group made may be locked by now, with entities on it that have to go first.
void UndoLog::UnlockNewLayers(const Group& group) {
    for (const Change& change : group.changes) {
        if (change.kind != Kind::kAppended ||
            change.id.objectClass() != AcDbLayerTableRecord::desc())
            continue;
        AcDbLayerTableRecordPointer layer(change.id, AcDb::kForWrite);
        if (layer.openStatus() == Acad::eOk) layer->setIsLocked(false);
    }
}

bool UndoLog::Move(std::vector<Group>& from, std::vector<Group>& to, std::wstring& name,
                   int& failed) {
    failed = 0;
    if (from.empty()) return false;
    m_isTakingBack = true;
    const Group group = std::move(from.back());
    from.pop_back();
    name = group.name;
    Group inverse;
    inverse.name = name;
    UnlockNewLayers(group);
    for (size_t i = group.changes.size(); i-- > 0;)
        if (Revert(group.changes[i], inverse) != Acad::eOk) ++failed;
    to.push_back(std::move(inverse));
    m_isTakingBack = false;
    return true;
}

bool UndoLog::TakeBack(std::wstring& name, int& failed) {
    return Move(m_groups, m_takenBack, name, failed);
}

bool UndoLog::DoAgain(std::wstring& name, int& failed) {
    return Move(m_takenBack, m_groups, name, failed);
}

}  // namespace host
