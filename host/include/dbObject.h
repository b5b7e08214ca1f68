// Objects of a drawing database, and opening them.
//
// An object is reached by its identifier: open it, use it, close it. Each successful open is
// answered by exactly one close. Opening costs O(1).
#pragma once

#include <memory>

#include "acarray.h"
#include "acdb.h"
#include "adsdef.h"
#include "dbid.h"
#include "dbidar.h"
#include "dbptrar.h"
#include "rxboiler.h"

class AcDbDatabase;
class AcDbObject;
class AcDbObjectReactor;
class AcDbIdMapping;

namespace host {
struct Access;
struct ObjectExtras;
struct ExtrasDeleter {
    void operator()(ObjectExtras* extras) const;
};
}  // namespace host

// Hears what happens to one object. Keep the registration no longer than the reactor.
class AcDbObjectReactor {
public:
    virtual ~AcDbObjectReactor() = default;
    virtual void cancelled(const AcDbObject*) {}                  // its open ended by cancel()
    virtual void copied(const AcDbObject*, const AcDbObject*) {}  // never called here
    virtual void erased(const AcDbObject*, bool) {}               // false when it came back
    virtual void goodbye(const AcDbObject*) {}                    // its memory goes; the last call
    virtual void openedForModify(const AcDbObject*) {}  // before the first change of an open
    virtual void modified(const AcDbObject*) {}         // after a changed object was closed
    virtual void unappended(const AcDbObject*) {}       // never called here
    virtual void objectClosed(AcDbObjectId) {}          // whatever was done to it
};

// Base of everything a drawing stores. An object without identifier is its maker's, to change and
// delete freely; once a database owns it, it is only used between open and close.
class AcDbObject : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbObject);
    // Deleting an object that a database owns is a broken invariant and stops the program.
    ~AcDbObject() override;

    AcDbObjectId objectId() const { return AcDbObjectId(m_stub); }
    // Container of the object; null for a non-resident one unless setOwnerId gave it.
    AcDbObjectId ownerId() const;
    // The next append overrides it. eNotOpenForWrite.
    virtual Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
    // The number that files name it by; 0 for a non-resident object.
    void getAcDbHandle(AcDbHandle& handle) const;
    // Null for a non-resident object.
    AcDbDatabase* database() const;

    // Gives the object a dictionary of its own. Needs write. eNotInDatabase for a non-resident
    // object; eAlreadyInDb when it has one.
    Acad::ErrorStatus createExtensionDictionary();
    // Null when there is none or it is erased.
    AcDbObjectId extensionDictionary() const;
    // Erases the dictionary when it is empty; eContainerNotEmpty-like refusal (eNotApplicable)
    // else; eKeyNotFound when there is none.
    Acad::ErrorStatus releaseExtensionDictionary();

    // Ends one open. eNotInDatabase for a non-resident object, which stays as it is;
    // eNotOpenForRead when the object is not open. Reactors hear of changes here.
    Acad::ErrorStatus close();

    // Ends one open and takes back what was changed since, erasing included. A newly appended
    // object becomes erased. Unlike AutoCAD, the membership of containers (entities of a block,
    // entries of a table or dictionary) and the vertices of heavy polylines are not taken back.
    Acad::ErrorStatus cancel();

    // From read to write; eHadMultipleReaders when others read, eLockViolation, eOnLockedLayer as
    // for opening.
    Acad::ErrorStatus upgradeOpen();
    // From write to read; changes are reported as at close.
    Acad::ErrorStatus downgradeOpen();

    // Marks the object, and what it owns, as erased or not. The object stays open until closed, its
    // identifier stays valid. eNotOpenForWrite, eWasErased, eWasNotErased, eNotInDatabase.
    Acad::ErrorStatus erase(bool erasing = true);

    bool isErased() const;              // by erase(); its data are still there
    bool isEraseStatusToggled() const;  // during this open
    bool isReadEnabled() const;         // open for read or write
    bool isWriteEnabled() const;        // open for write
    bool isNotifyEnabled() const;       // open for a reactor's look
    // Changed since this open.
    bool isModified() const;
    // Appended during this open.
    bool isNewObject() const;
    bool isNotifying() const;                 // reactors hear of it at this moment
    bool isUndoing() const { return false; }  // undo puts whole states back, not step by step
    bool isAProxy() const;                    // of a class that this host does not know

    // Extended data of one application, or of all for null: a new chain that begins with code 1001,
    // to be freed by acutRelRb; null when there is none.
    virtual resbuf* xData(const ACHAR* regApp = nullptr) const;
    // Replaces the data of each application named in the chain; an application's 1001 alone removes
    // its data. eNotOpenForWrite; eInvalidResBuf for a chain that does not begin with 1001 or holds
    // codes outside 1000..1071; eRegappIdNotFound-like refusal (eKeyNotFound) for an application
    // that is not registered; eXdataSizeExceeded-like refusal (eInvalidInput) above 16 KB.
    virtual Acad::ErrorStatus setXData(const resbuf* xdata);

    // Transient reactors: const because watching changes nothing. Order kept.
    Acad::ErrorStatus addReactor(AcDbObjectReactor* reactor) const;
    // eKeyNotFound for one that is not there.
    Acad::ErrorStatus removeReactor(AcDbObjectReactor* reactor) const;
    // Persistent reactors: identifiers stored with the object. eNotOpenForWrite, eDuplicateKey,
    // eKeyNotFound.
    Acad::ErrorStatus addPersistentReactor(AcDbObjectId reactor);
    Acad::ErrorStatus removePersistentReactor(AcDbObjectId reactor);
    bool hasPersistentReactor(AcDbObjectId reactor) const;  // open for read is enough

    // Checks of the open mode; a failure is a broken invariant and stops the program.
    void assertReadEnabled() const;
    void assertWriteEnabled(bool autoUndo = true, bool recordModified = true);

protected:
    friend struct host::Access;
    AcDbObject() = default;
    AcDbObject(const AcDbObject& other);
    AcDbObject& operator=(const AcDbObject& other);

    // Called by erase, before the state changes; a status other than eOk refuses.
    virtual Acad::ErrorStatus subErase(bool erasing);

    // First line of every setter: eNotOpenForWrite, or eOk with the aspects marked as changed.
    Acad::ErrorStatus beginWrite(Adesk::UInt16 dirtyMask) {
        if (m_stub == nullptr) {
            m_dirty = static_cast<Adesk::UInt16>(m_dirty | dirtyMask);
            return Acad::eOk;
        }
        return beginResidentWrite(dirtyMask);
    }

    // Identifiers of the objects this one owns, in order, for erasing and cloning.
    virtual void ownedIds(AcDbObjectIdArray& ids) const;
    // Called when the object has become resident: the objects it owns become so too.
    virtual void settleOwned();
    // Called after all objects of a clone operation exist: replaces identifiers of cloned objects.
    virtual void translateIds(const AcDbIdMapping& mapping);

private:
    Acad::ErrorStatus beginResidentWrite(Adesk::UInt16 dirtyMask);

    host::Stub* m_stub = nullptr;
    std::unique_ptr<host::ObjectExtras, host::ExtrasDeleter> m_extras;
    // Number of the object's record in the drawing source it, or what it was cloned from, came
    // from.
    Adesk::UInt32 m_record = 0xFFFFFFFF;  // host::kNoRecord
    Adesk::UInt16 m_dirty = 0;
    Adesk::UInt16 m_openFlags = 0;
};

// Opens an object of any class.
// object  receives the object; null on failure
// fails   eNullObjectId; eWasErased (without openErased); ePermanentlyErased for an object that is
//         gone for good; eUnknownHandle when the drawing has nothing behind the identifier;
//         eWasOpenForRead, eWasOpenForWrite, eWasNotifying, eAtMaxReaders by the open state;
//         eLockViolation; eOnLockedLayer
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);
// The same, read being the usual mode.
Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id,
                                 AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false);

// Opens an object of class T or one derived from it; else eNotThatKindOfClass with nothing left
// open.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    object = nullptr;
    AcDbObject* opened = nullptr;
    Acad::ErrorStatus es = acdbOpenAcDbObject(opened, id, mode, openErased);
    if (es != Acad::eOk) return es;
    object = T::cast(opened);
    if (object != nullptr) return Acad::eOk;
    es = opened->close();
    return es == Acad::eOk ? Acad::eNotThatKindOfClass : es;
}

// Identifier of an entity named by a selection set, and back. eInvalidInput for a nil name,
// eNullObjectId for a null identifier.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
