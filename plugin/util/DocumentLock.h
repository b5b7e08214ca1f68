#pragma once

// Holds the write lock on a drawing's document for its own life. Every change to a drawing made
// from a dialog happens under one. A database without document needs no lock and gets none.
class CDocumentLock {
public:
    // The document of the working database, or of the given one.
    CDocumentLock();
    explicit CDocumentLock(const AcDbDatabase* pDatabase);
    ~CDocumentLock();
    CDocumentLock(const CDocumentLock&) = delete;
    CDocumentLock& operator=(const CDocumentLock&) = delete;

    // Changes are allowed: the lock is held, or none is needed.
    bool IsOk() const { return m_status == Acad::eOk; }

private:
    AcApDocument* m_pDocument = nullptr;
    Acad::ErrorStatus m_status = Acad::eOk;
};
