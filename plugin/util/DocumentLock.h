#pragma once

#include "DrawingWatch.h"

// Holds the write lock on a drawing's document for its own life. Every change to a drawing made
// from a dialog happens under one. A database without document needs no lock and gets none.
class CDocumentLock {
public:
    // The document of the working database, or of the given one.
    //
    // pUndoName  what undo calls all changes under the lock together, one step to the user; null
    //            leaves them without a name. Under a lock that is held already they belong to it.
    CDocumentLock();
    explicit CDocumentLock(const AcDbDatabase* pDatabase, const ACHAR* pUndoName = nullptr);
    ~CDocumentLock();
    CDocumentLock(const CDocumentLock&) = delete;
    CDocumentLock& operator=(const CDocumentLock&) = delete;

    // Changes are allowed: the lock is held, or none is needed.
    bool IsOk() const { return m_status == Acad::eOk; }

    // The drawing is still open. A prompt, a message or a progress display lets the user close it;
    // nothing of it may be touched then.
    bool IsDrawingOpen() const { return m_drawing.IsOpen(); }

private:
    CDrawingWatch m_drawing;
    bool m_bLocked = false;
    Acad::ErrorStatus m_status = Acad::eOk;
};
