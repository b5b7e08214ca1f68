#include "StdAfx.h"
#include "Reactors.h"

#include <memory>

#include "KnifeDiagramFactory.h"
#include "ModuleDialogs.h"

namespace {

CEditReactor* g_pEditReactor = nullptr;
CDocReactor* g_pDocReactor = nullptr;
CQZToolReactor* g_pToolReactor = nullptr;

// An EXPLODE has started and nothing has been modified since.
bool g_bExploding = false;

AcEditor* GetEditor() { return AcEditor::cast(acrxSysRegistry()->at(_T("AcEditor"))); }

void WatchWorkingDatabase() {
    AcDbDatabase* const pDatabase = acdbHostApplicationServices()->workingDatabase();
    // Loaded at the host's start there may be no drawing; then no database is watched.
    if (g_pToolReactor != nullptr || pDatabase == nullptr) {
        return;
    }
    g_pToolReactor = new CQZToolReactor();
    if (pDatabase->addReactor(g_pToolReactor) != Acad::eOk) {
        delete g_pToolReactor;
        g_pToolReactor = nullptr;
    }
}

void GreetOpenDocuments() {
    const std::unique_ptr<AcApDocumentIterator> iterator(acDocManager->newAcApDocumentIterator());
    for (; iterator != nullptr && !iterator->done(); iterator->step()) {
        g_pDocReactor->documentCreated(iterator->document());
    }
}

}  // namespace

void InstallReactors() {
    if (g_pDocReactor != nullptr) {
        return;
    }
    g_pEditReactor = new CEditReactor();
    if (AcEditor* const pEditor = GetEditor()) {
        pEditor->addReactor(g_pEditReactor);
    }
    WatchWorkingDatabase();
    g_pDocReactor = new CDocReactor();
    acDocManager->addReactor(g_pDocReactor);
    GreetOpenDocuments();
}

void RemoveReactors() {
    if (g_pEditReactor != nullptr) {
        if (AcEditor* const pEditor = GetEditor()) {
            pEditor->removeReactor(g_pEditReactor);
        }
        delete g_pEditReactor;
        g_pEditReactor = nullptr;
    }
    // The database reactor stays: the database it watches may be gone already, and with it the
    // registration.
    if (g_pDocReactor != nullptr) {
        acDocManager->removeReactor(g_pDocReactor);
        delete g_pDocReactor;
        g_pDocReactor = nullptr;
    }
}

void CDocReactor::documentCreated(AcApDocument* pDocument) {
    AcDbDatabase* const pDatabase = pDocument == nullptr ? nullptr : pDocument->database();
    if (pDatabase == nullptr) {
        return;
    }
    CKnifeDiagramFactory::GetInstance().GetTaskList(pDatabase).load(pDatabase);
    RefreshBulkDialog();
}

void CDocReactor::documentBecameCurrent(AcApDocument*) { RefreshBulkDialog(); }

void CEditReactor::commandWillStart(const ACHAR* pCommand) {
    if (pCommand != nullptr && _tcscmp(pCommand, _T("EXPLODE")) == 0) {
        g_bExploding = true;
    }
}

void CEditReactor::beginSave(AcDbDatabase* pDatabase, const ACHAR*) {
    // A database without document has no task list of its own.
    if (pDatabase != nullptr && acDocManager->document(pDatabase) != nullptr) {
        StoreTaskList(pDatabase);
    }
}

void CEditReactor::databaseToBeDestroyed(AcDbDatabase* pDatabase) {
    CKnifeDiagramFactory::GetInstance().RemoveTaskList(pDatabase);
}

void CQZToolReactor::objectModified(const AcDbDatabase* pDatabase, const AcDbObject*) {
    AcApDocument* const pDocument = acDocManager->curDocument();
    if (!g_bExploding || pDocument == nullptr ||
        pDatabase != acdbHostApplicationServices()->workingDatabase()) {
        return;
    }
    const Acad::ErrorStatus es = acDocManager->sendStringToExecute(
        pDocument, _T("_.DELCONSTRAINT\nALL\n\n"), true, false, false);
    if (es == Acad::eOk) {
        g_bExploding = false;
    }
}
