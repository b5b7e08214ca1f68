// The dynamic linker: loads modules and sends them their messages.
#pragma once

#include "rxsrvice.h"

#define ACRX_DYNAMIC_LINKER ACRX_T("DynamicLinker")
#define acrxDynamicLinker AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))

// Modules are named by their file's base name, compared without case. An application identifier is
// what a module receives with its first message.
class AcRxDynamicLinker : public AcRxService {
public:
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker);

    // Maps the module, sends kInitAppMsg and, when a drawing is open, kLoadDwgMsg. False, with one
    // message when printit is set, for a file that is missing, is no module, lacks acrxEntryPoint
    // or answers kRetError. Loading a module that is loaded already is true and does nothing.
    bool loadModule(const ACHAR* fileName, bool printit, bool asCmd = false);

    // Sends kUnloadAppMsg to an unlocked module. Unlike AutoCAD, a module stays mapped, whatever it
    // answers: commands, reactors and windows that it left behind stay valid. False for a module
    // that is not loaded, is locked or answers kRetError.
    bool unloadModule(const ACHAR* fileName, bool asCmd = false);

    // A locked module, as every module is after loading, cannot be unloaded by the user. False for
    // an unknown identifier.
    bool lockApplication(void* appId) const;
    bool unlockApplication(void* appId) const;
    bool isApplicationLocked(const ACHAR* modulename) const;
    bool isApplicationLocked(void* appId) const;

    // Declares that the module copes with several open drawings.
    bool registerAppMDIAware(void* appId) const;
    // The contrary; kept and told, without effect here.
    bool registerAppNotMDIAware(void* appId) const;
    bool isAppMDIAware(const ACHAR* modulename) const;
};

// The same as the linker's members.
bool acrxUnlockApplication(void* appId);
bool acrxLockApplication(void* appId);
bool acrxRegisterAppMDIAware(void* appId);
bool acrxLoadModule(const ACHAR* fileName, bool printit, bool asCmd = false);
