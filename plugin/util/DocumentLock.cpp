#include "StdAfx.h"
#include "DocumentLock.h"

CDocumentLock::CDocumentLock() : CDocumentLock(acdbHostApplicationServices()->workingDatabase()) {}

CDocumentLock::CDocumentLock(const AcDbDatabase* pDatabase, const ACHAR* pUndoName)
    : m_drawing(pDatabase) {
    if (pDatabase == nullptr) {
        m_status = Acad::eNoDatabase;
    } else if (m_drawing.GetDocument() != nullptr) {
        m_status =
            acDocManager->lockDocument(m_drawing.GetDocument(), AcAp::kWrite, pUndoName, pUndoName);
        m_bLocked = m_status == Acad::eOk;
    }
}

CDocumentLock::~CDocumentLock() {
    // A document that was closed meanwhile took its locks with it.
    if (m_bLocked && m_drawing.IsOpen()) {
        static_cast<void>(acDocManager->unlockDocument(m_drawing.GetDocument()));
    }
}
