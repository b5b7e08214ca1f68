#include "StdAfx.h"
#include "Commands.h"

#include "ModuleDialogs.h"

namespace {

constexpr const ACHAR* kGroup = _T("QZEncircleLine");

// A command for trying the registration itself.
void RunTest() {}

struct SCommand {
    const ACHAR* m_pName;
    AcRxFunctionPtr m_pFunction;
};

const SCommand kCommands[] = {
    {_T("QzTestToolDesign"), RunTest},
    {_T("QZTOOLDESIGNProfileAuto3D"), ShowCalDialog},
    {_T("QZTOOLDESIGNProfilesAuto3D"), ShowBulkDialog},
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
