#include "rxdlinkr.h"

#include "host/ed/module_table.h"
#include "host/ed/session.h"
#include "rxdict.h"

ACRX_CONS_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxService, 1)

using host::Module;
using host::ModuleTable;
using host::Session;

bool AcRxDynamicLinker::loadModule(const ACHAR* fileName, bool printit, bool) {
    if (fileName == nullptr || *fileName == 0) return false;
    if (ModuleTable::Get().FindByName(fileName) != nullptr) return true;
    std::wstring reason;
    Module* const module = ModuleTable::Get().Load(fileName, reason);
    if (module == nullptr) {
        if (printit)
            Session::Get().Print(L"\nCannot load " + std::wstring(fileName) + L": " + reason);
        return false;
    }
    if (module->Send(AcRx::kInitAppMsg) == AcRx::kRetError) {
        if (printit) Session::Get().Print(L"\n" + module->name + L" refused to be initialised.");
        return false;
    }
    if (Session::Get().Current() != nullptr)
        return module->Send(AcRx::kLoadDwgMsg) != AcRx::kRetError;
    return true;
}

bool AcRxDynamicLinker::unloadModule(const ACHAR* fileName, bool) {
    Module* const module = fileName == nullptr ? nullptr : ModuleTable::Get().FindByName(fileName);
    return module != nullptr && !module->isLocked &&
           module->Send(AcRx::kUnloadAppMsg) != AcRx::kRetError;
}

namespace {

bool SetFlag(void* appId, bool Module::*flag, bool value) {
    Module* const module = ModuleTable::Get().FindById(appId);
    if (module == nullptr) return false;
    module->*flag = value;
    return true;
}

}  // namespace

bool AcRxDynamicLinker::lockApplication(void* appId) const {
    return SetFlag(appId, &Module::isLocked, true);
}
bool AcRxDynamicLinker::unlockApplication(void* appId) const {
    return SetFlag(appId, &Module::isLocked, false);
}
bool AcRxDynamicLinker::registerAppMDIAware(void* appId) const {
    return SetFlag(appId, &Module::isMdiAware, true);
}
bool AcRxDynamicLinker::registerAppNotMDIAware(void* appId) const {
    return SetFlag(appId, &Module::isMdiAware, false);
}
bool AcRxDynamicLinker::isApplicationLocked(const ACHAR* modulename) const {
    const Module* const module =
        modulename == nullptr ? nullptr : ModuleTable::Get().FindByName(modulename);
    return module != nullptr && module->isLocked;
}
bool AcRxDynamicLinker::isApplicationLocked(void* appId) const {
    const Module* const module = ModuleTable::Get().FindById(appId);
    return module != nullptr && module->isLocked;
}
bool AcRxDynamicLinker::isAppMDIAware(const ACHAR* modulename) const {
    const Module* const module =
        modulename == nullptr ? nullptr : ModuleTable::Get().FindByName(modulename);
    return module != nullptr && module->isMdiAware;
}

bool acrxUnlockApplication(void* appId) { return acrxDynamicLinker->unlockApplication(appId); }
bool acrxLockApplication(void* appId) { return acrxDynamicLinker->lockApplication(appId); }
bool acrxRegisterAppMDIAware(void* appId) { return acrxDynamicLinker->registerAppMDIAware(appId); }
bool acrxLoadModule(const ACHAR* fileName, bool printit, bool asCmd) {
    return acrxDynamicLinker->loadModule(fileName, printit, asCmd);
}
