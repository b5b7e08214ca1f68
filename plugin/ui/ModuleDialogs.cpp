#include "StdAfx.h"
#include "ModuleDialogs.h"

#include "BulkGenEncircleLineDlg.h"
#include "EncircleLineCalDlg.h"
#include "KnifeDiagramFactory.h"
#include "AcExtensionModule.h"
#include "rxmfcapi.h"

namespace {

CEncircleLineCalDlg* g_pCalDialog = nullptr;
CBulkGenEncircleLineDlg* g_pBulkDialog = nullptr;

template <class Dialog>
void ShowDialog(Dialog*& pDialog) {
    const CAcModuleResourceOverride resources;
    if (pDialog == nullptr) {
        CWnd* const pParent = acedGetAcadFrame();
        auto* const pMade = new Dialog(pParent);
        if (!pMade->Create(Dialog::IDD, pParent)) {
            delete pMade;
            return;
        }
        pDialog = pMade;
    }
    pDialog->CenterWindow();
    pDialog->ShowWindow(SW_SHOW);
}

}  // namespace

void ShowCalDialog() { ShowDialog(g_pCalDialog); }
void ShowBulkDialog() { ShowDialog(g_pBulkDialog); }

void ForgetCalDialog(const CEncircleLineCalDlg* pDialog) {
    if (g_pCalDialog == pDialog) {
        g_pCalDialog = nullptr;
    }
}

void ForgetBulkDialog(const CBulkGenEncircleLineDlg* pDialog) {
    if (g_pBulkDialog == pDialog) {
        g_pBulkDialog = nullptr;
    }
}

void RefreshBulkDialog() {
    if (g_pBulkDialog != nullptr) {
        g_pBulkDialog->Refresh();
    }
}

void StoreTaskList(AcDbDatabase* pDatabase) {
    CKnifeDiagramFactory& factory = CKnifeDiagramFactory::GetInstance();
    if (!factory.HasTaskList(pDatabase)) {
        return;
    }
    const BatchTaskList& list = factory.GetTaskList(pDatabase);
    if (list.empty() && !BatchTaskList::isStored(pDatabase)) {
        return;
    }
    const Acad::ErrorStatus es = list.store(pDatabase);
    if (es != Acad::eOk) {
        acutPrintf(_T("\n任务列表保存失败：%s\n"), acadErrorStatusText(es));
    }
}
