#include "StdAfx.h"
#include "DocumentLock.h"

CDocumentLock::CDocumentLock() : CDocumentLock(acdbHostApplicationServices()->workingDatabase()) {}

CDocumentLock::CDocumentLock(const AcDbDatabase* pDatabase) {
    if (pDatabase == nullptr) {
        m_status = Acad::eNoDatabase;
        return;
    }
    AcApDocument* const pDocument = acDocManager->document(pDatabase);
    if (pDocument == nullptr) {
        return;
    }
    m_status = acDocManager->lockDocument(pDocument, AcAp::kWrite);
    if (m_status == Acad::eOk) {
        m_pDocument = pDocument;
    }
}

CDocumentLock::~CDocumentLock() {
    if (m_pDocument != nullptr) {
        // Fails only when the document was closed meanwhile, and its locks with it.
        static_cast<void>(acDocManager->unlockDocument(m_pDocument));
    }
}
