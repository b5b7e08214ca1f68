// What commands changed in one drawing, and taking it back.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"
#include "host/db/stub.h"

namespace host {

// Watches its database. Changes belong to groups: one a command, or one from the first lock to the
// last unlock of a window's handler. Taken back are objects that were added, erased or changed, and
// the current layer and linetype; not the order of the entities.
//
// What a group both added and erased is forgotten at its end, and its memory freed: such objects
// (scratch lines of a computation) never existed for the user.
//
// What was taken back can be done again until something new is done. At most kMaxGroups groups are
// kept.
class UndoLog : public AcDbDatabaseReactor {
public:
    static constexpr size_t kMaxGroups = 100;

    explicit UndoLog(AcDbDatabase& database);
    ~UndoLog() override;
    UndoLog(const UndoLog&) = delete;
    UndoLog& operator=(const UndoLog&) = delete;

    // The group that changes belong to from now on; a group that is open goes on.
    void Begin(const std::wstring& name);
    // Nothing happens without an open group. A group without changes leaves nothing behind.
    void End();

    // Takes back the newest group; for the command U, in its own write lock. False when there is
    // nothing to take back.
    // name    of the group
    // failed  changes that could not be taken back, because an object is open
    bool TakeBack(std::wstring& name, int& failed);
    // Does again what was taken back last; the same otherwise.
    bool DoAgain(std::wstring& name, int& failed);

    void objectAppended(const AcDbDatabase*, const AcDbObject* object) override;
    void objectOpenedForModify(const AcDbDatabase*, const AcDbObject* object) override;
    void objectErased(const AcDbDatabase*, const AcDbObject* object, bool erased) override;
    void headerSysVarWillChange(const AcDbDatabase*, const ACHAR* name) override;
    void goodbye(const AcDbDatabase*) override { m_database = nullptr; }

private:
    enum class Kind { kAppended, kChanged, kErased, kUnerased, kCurrentLayer, kCurrentLinetype };
    struct Change {
        Kind kind;
        AcDbObjectId id;                     // of the object, or of the layer or linetype before
        std::unique_ptr<AcDbObject> before;  // kChanged
    };
    struct Group {
        std::wstring name;
        std::vector<Change> changes;
    };

    void Note(Kind kind, AcDbObjectId id);
    // Also false for what the open group itself added: taking that back is enough.
    bool IsRecording(const AcDbObject& object) const;
    void DropScratch();
    void FreeErased();
    static void UnlockNewLayers(const Group& group);
    // Adds what would take the change's reverting back.
    Acad::ErrorStatus Revert(const Change& change, Group& inverse);
    bool Move(std::vector<Group>& from, std::vector<Group>& to, std::wstring& name, int& failed);

    AcDbDatabase* m_database;
    std::vector<Group> m_groups;
    std::vector<Group> m_takenBack;
    Group m_current;
    Adesk::UInt64 m_firstNew = 0;  // handle that the group's first new object gets
    bool m_isOpen = false;
    bool m_isTakingBack = false;
};

}  // namespace host
