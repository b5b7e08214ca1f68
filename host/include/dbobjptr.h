// Pointers that open in the constructor and close in the destructor.
#pragma once

#include "dbmain.h"
#include "dbsymtb.h"
#include "dbdict.h"

// Holds one opened object, or a new one that belongs to no database and is then deleted.
template <class T>
class AcDbObjectPointer {  // the way to open anything
public:
    AcDbObjectPointer() = default;  // holds nothing
    // Opens; ask openStatus() before the object is used.
    AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        m_status = acdbOpenObject(m_object, id, mode, openErased);  // the object is null on failure
    }
    // The other one holds nothing afterwards.
    AcDbObjectPointer(AcDbObjectPointer&& other) noexcept
        : m_object(other.m_object), m_status(other.m_status) {
        other.m_object = nullptr;  // it closes nothing any more
        other.m_status = Acad::eNullObjectPointer;
    }
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;
    ~AcDbObjectPointer() { Drop(); }  // what was held is closed first, whatever becomes of the rest

    // A pointer that is const gives an object that is.
    const T* object() const { return m_object; }  // null when nothing is held
    T* object() { return m_object; }
    const T* operator->() const { return m_object; }  // the same; must hold something
    T* operator->() { return m_object; }
    operator const T*() const { return m_object; }
    operator T*() { return m_object; }

    // Of the last open, create or close; eNullObjectPointer when nothing was opened yet.
    Acad::ErrorStatus openStatus() const { return m_status; }

    // Closes what is held, then opens.
    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        Drop();
        m_status = acdbOpenObject(m_object, id, mode, openErased);
        return m_status;
    }

    // Closes what is held, then takes over an opened or a new object.
    Acad::ErrorStatus acquire(T*& object) {
        Drop();
        m_object = object;
        object = nullptr;  // the pointer's from now on
        m_status = m_object != nullptr ? Acad::eOk : Acad::eNullObjectPointer;
        return m_status;
    }

    // Gives the object away without closing it.
    Acad::ErrorStatus release(T*& object) {
        if (m_object == nullptr) return Acad::eNullObjectPointer;
        object = m_object;
        m_object = nullptr;  // the caller closes or deletes it
        m_status = Acad::eNullObjectPointer;
        return Acad::eOk;
    }

    // Closes what is held; eNullObjectPointer when there is nothing.
    Acad::ErrorStatus close() {
        if (m_object == nullptr) return Acad::eNullObjectPointer;
        const Acad::ErrorStatus es = m_object->close();
        if (es == Acad::eOk) {
            m_object = nullptr;
            m_status = Acad::eNullObjectPointer;
        }
        return es;
    }

    // Closes what is held, then makes a new non-resident object.
    Acad::ErrorStatus create() {
        Drop();
        m_object = new T();
        m_status = Acad::eOk;
        return m_status;
    }

private:
    // Closes a resident object, deletes one that is in no drawing.
    void Drop() {
        if (m_object == nullptr) return;
        if (m_object->objectId().isNull())
            delete m_object;  // in no drawing
        else
            static_cast<void>(m_object->close());  // fails only when the object is closed already
        m_object = nullptr;
        m_status = Acad::eNullObjectPointer;
    }

    T* m_object = nullptr;                                  // open, or new and in no drawing
    Acad::ErrorStatus m_status = Acad::eNullObjectPointer;  // what openStatus() tells
};

// The usual ones by their own names.
typedef AcDbObjectPointer<AcDbEntity> AcDbEntityPointer;
typedef AcDbObjectPointer<AcDbDictionary> AcDbDictionaryPointer;
typedef AcDbObjectPointer<AcDbBlockTable> AcDbBlockTablePointer;  // definitions
// one of them, or a space
typedef AcDbObjectPointer<AcDbBlockTableRecord> AcDbBlockTableRecordPointer;
typedef AcDbObjectPointer<AcDbLayerTable> AcDbLayerTablePointer;
typedef AcDbObjectPointer<AcDbLayerTableRecord> AcDbLayerTableRecordPointer;  // a layer
typedef AcDbObjectPointer<AcDbLinetypeTable> AcDbLinetypeTablePointer;
typedef AcDbObjectPointer<AcDbLinetypeTableRecord> AcDbLinetypeTableRecordPointer;
typedef AcDbObjectPointer<AcDbRegAppTable> AcDbRegAppTablePointer;
typedef AcDbObjectPointer<AcDbRegAppTableRecord> AcDbRegAppTableRecordPointer;
typedef AcDbObjectPointer<AcDbTextStyleTableRecord> AcDbTextStyleTableRecordPointer;
typedef AcDbObjectPointer<AcDbDimStyleTableRecord> AcDbDimStyleTableRecordPointer;
