// Where the host enters the module.
#include "StdAfx.h"

#include "Commands.h"
#include "Reactors.h"
#include "AcExtensionModule.h"

AC_IMPLEMENT_EXTENSION_MODULE(theArxDLL);

// The host's MFC finds the module's dialogs through its instance.
extern "C" BOOL APIENTRY DllMain(HINSTANCE hInstance, DWORD dwReason, LPVOID) {
    if (dwReason == DLL_PROCESS_ATTACH) {
        theArxDLL.AttachInstance(hInstance);
    } else if (dwReason == DLL_PROCESS_DETACH) {
        theArxDLL.DetachInstance();
    }
    return TRUE;
}

namespace {

// Keeps the module mapped for good: commands, reactors and windows stay installed after the unload
// message, and must stay valid.
void PinModule() {
    HMODULE hModule = nullptr;
    ::GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                        reinterpret_cast<LPCTSTR>(&PinModule), &hModule);
}

void Initialise(void* pApplication) {
    AcRxDynamicLinker* const pLinker = acrxDynamicLinker;
    if (pLinker != nullptr) {
        pLinker->unlockApplication(pApplication);
        pLinker->registerAppMDIAware(pApplication);
    }
    PinModule();
    RegisterCommands();
    InstallReactors();
}

}  // namespace

extern "C" AFX_EXT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
    if (msg == AcRx::kInitAppMsg) {
        Initialise(pkt);
    }
    return AcRx::kRetOK;
}
