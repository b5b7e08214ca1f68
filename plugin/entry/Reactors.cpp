#include "StdAfx.h"
#include "Reactors.h"

#include <map>
#include <memory>

#include "KnifeDiagramFactory.h"
#include "ModuleDialogs.h"

namespace {

CEditReactor* g_pEditReactor = nullptr;
CDocReactor* g_pDocReactor = nullptr;
CQZToolReactor* g_pToolReactor = nullptr;

// The drawings that the database reactor watches, each with whether an EXPLODE runs in it that has
// modified nothing yet.
std::map<const AcDbDatabase*, bool> g_watched;

void Watch(AcDbDatabase* pDatabase) {
    if (pDatabase == nullptr || g_watched.count(pDatabase) != 0) {
        return;
    }
    if (g_pToolReactor == nullptr) {
        g_pToolReactor = new CQZToolReactor();
    }
    if (pDatabase->addReactor(g_pToolReactor) == Acad::eOk) {
        g_watched[pDatabase] = false;
    }
}

bool IsExplode(const ACHAR* pCommand) {
    return pCommand != nullptr && _tcscmp(pCommand, _T("EXPLODE")) == 0;
}

// Of the drawing in which the command runs.
void SetExploding(bool bExploding) {
    const auto found = g_watched.find(acdbHostApplicationServices()->workingDatabase());
    if (found != g_watched.end()) {
        found->second = bExploding;
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
    if (AcEditor* const pEditor = acedEditor) {
        pEditor->addReactor(g_pEditReactor);
    }
    Watch(acdbHostApplicationServices()->workingDatabase());
    g_pDocReactor = new CDocReactor();
    acDocManager->addReactor(g_pDocReactor);
    GreetOpenDocuments();
}

void CDocReactor::documentCreated(AcApDocument* pDocument) {
    AcDbDatabase* const pDatabase = pDocument == nullptr ? nullptr : pDocument->database();
    if (pDatabase == nullptr) {
        return;
    }
    Watch(pDatabase);
    CKnifeDiagramFactory::GetInstance().GetTaskList(pDatabase).load(pDatabase);
    RefreshBulkDialog(acdbHostApplicationServices()->workingDatabase());
}

// The working database may still be that of the document before, so the document is asked.
void CDocReactor::documentBecameCurrent(AcApDocument* pDocument) {
    RefreshBulkDialog(pDocument == nullptr ? nullptr : pDocument->database());
}

void CEditReactor::commandWillStart(const ACHAR* pCommand) {
    if (IsExplode(pCommand)) {
        SetExploding(true);
    }
}

// However it ends: what is modified later has nothing to do with it.
void CEditReactor::commandEnded(const ACHAR* pCommand) {
    if (IsExplode(pCommand)) {
        SetExploding(false);
    }
}
void CEditReactor::commandCancelled(const ACHAR* pCommand) { commandEnded(pCommand); }
void CEditReactor::commandFailed(const ACHAR* pCommand) { commandEnded(pCommand); }

void CEditReactor::beginSave(AcDbDatabase* pDatabase, const ACHAR*) {
    // A database without document has no task list of its own.
    if (pDatabase != nullptr && acDocManager->document(pDatabase) != nullptr) {
        StoreTaskList(pDatabase);
    }
}

void CEditReactor::databaseToBeDestroyed(AcDbDatabase* pDatabase) {
    g_watched.erase(pDatabase);
    CKnifeDiagramFactory::GetInstance().RemoveTaskList(pDatabase);
}

void CQZToolReactor::objectModified(const AcDbDatabase* pDatabase, const AcDbObject*) {
    const auto found = g_watched.find(pDatabase);
    AcApDocument* const pDocument = acDocManager->document(pDatabase);
    if (found == g_watched.end() || !found->second || pDocument == nullptr ||
        pDatabase != acdbHostApplicationServices()->workingDatabase()) {
        return;
    }
    found->second = false;
    const Acad::ErrorStatus es = acDocManager->sendStringToExecute(
        pDocument, _T("_.DELCONSTRAINT\nALL\n\n"), true, false, false);
    if (es != Acad::eOk) {
        acutPrintf(_T("\n分解后的几何约束未能删除：%s\n"), acadErrorStatusText(es));
    }
}
