// The modules that were loaded, and the messages sent to them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rxdefs.h"

namespace host {

struct Module {
    std::wstring name;        // base name of the file
    void* library = nullptr;  // of the system's loader; never closed
    AcRx::AppRetCode (*entry)(AcRx::AppMsgCode, void*) = nullptr;  // acrxEntryPoint
    bool isLocked = true;                                          // against unloading
    bool isMdiAware = false;

    // What the module gets as its application identifier.
    void* Id() { return this; }
    AcRx::AppRetCode Send(AcRx::AppMsgCode message) { return entry(message, Id()); }
};

// In the order of loading; entries are never taken out, since modules stay mapped.
class ModuleTable {
public:
    static ModuleTable& Get();  // the only one

    // Maps a file. Null and a reason when it is no module.
    Module* Load(const std::wstring& path, std::wstring& reason);
    Module* FindByName(const std::wstring& name) const;  // without case; null for none
    Module* FindById(const void* id) const;              // null for none
    // To every module, in the order of loading.
    void SendAll(AcRx::AppMsgCode message) const;

private:
    std::vector<std::unique_ptr<Module>> m_modules;
};

}  // namespace host
