#include "StdAfx.h"
#include "Commands.h"

#include "EnvelopeMethod.h"
#include "ModuleDialogs.h"

namespace {

constexpr const ACHAR* kGroup = _T("QZEncircleLine");

// A command for trying the registration itself.
void RunTest() {}

// What the dialogs compute from now on.
void ChooseMethod() {
    const E_EnvelopeMethod former = GetEnvelopeMethod();
    CString strPrompt;
    strPrompt.Format(_T("\n包络线计算方法 [逐步(Steps)/精确(Exact)] <%s>: "),
                     GetMethodName(former));
    ACHAR answer[133];
    answer[0] = 0;
    acedInitGet(0, _T("Steps Exact"));
    if (acedGetKword(strPrompt, answer) != RTNORM) {
        return;  // Enter keeps what is, so does Esc
    }
    const E_EnvelopeMethod method =
        _tcsicmp(answer, GetMethodName(E_Method_Exact)) == 0 ? E_Method_Exact : E_Method_Steps;
    if (!SetEnvelopeMethod(method)) {
        acutPrintf(_T("\n设置无法保存\n"));
    }
}

struct SCommand {
    const ACHAR* m_pName;
    AcRxFunctionPtr m_pFunction;
};

const SCommand kCommands[] = {
    {_T("QzTestToolDesign"), RunTest},
    {_T("QZTOOLDESIGNProfileAuto3D"), ShowCalDialog},
    {_T("QZTOOLDESIGNProfilesAuto3D"), ShowBulkDialog},
    {_T("QZENVELOPEMETHOD"), ChooseMethod},
};

}  // namespace

void RegisterCommands() {
    AcEdCommandStack* const pStack = acedRegCmds;
    for (const SCommand& command : kCommands) {
        const Acad::ErrorStatus es =
            pStack == nullptr ? Acad::eKeyNotFound
                              : pStack->addCommand(kGroup, command.m_pName, command.m_pName,
                                                   ACRX_CMD_MODAL, command.m_pFunction);
        // Loaded again after an unload: the commands of the first time still stand.
        if (es != Acad::eOk && es != Acad::eDuplicateKey) {
            acutPrintf(_T("\n命令 %s 注册失败：%s\n"), command.m_pName, acadErrorStatusText(es));
        }
    }
}
