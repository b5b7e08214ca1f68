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

template <class Dialog>
bool Forget(Dialog*& pKnown, const Dialog* pDialog) {
    if (pKnown != pDialog) {
        return false;
    }
    pKnown = nullptr;
    return true;
}

}  // namespace

void ShowCalDialog() { ShowDialog(g_pCalDialog); }
void ShowBulkDialog() { ShowDialog(g_pBulkDialog); }

bool ForgetCalDialog(const CEncircleLineCalDlg* pDialog) { return Forget(g_pCalDialog, pDialog); }
bool ForgetBulkDialog(const CBulkGenEncircleLineDlg* pDialog) {
    return Forget(g_pBulkDialog, pDialog);
}

void RefreshBulkDialog(AcDbDatabase* pDatabase) {
    if (g_pBulkDialog != nullptr) {
        g_pBulkDialog->Refresh(pDatabase);
    }
}

void StoreTaskList(AcDbDatabase* pDatabase) {
    BatchTaskList* const pList = CKnifeDiagramFactory::GetInstance().FindTaskList(pDatabase);
    if (pList == nullptr || (pList->empty() && !BatchTaskList::isStored(pDatabase))) {
        return;
    }
    const Acad::ErrorStatus es = pList->store(pDatabase);
    if (es != Acad::eOk) {
        acutPrintf(_T("\n任务列表保存失败：%s\n"), acadErrorStatusText(es));
    }
}
