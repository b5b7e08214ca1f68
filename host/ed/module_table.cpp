#include "host/ed/module_table.h"

#include "host/ed/drawing_io.h"
#include "host/sys/library_file.h"
#include "host/ed/text_compare.h"

namespace host {
namespace {

std::wstring BaseName(const std::wstring& path) {
    const std::wstring file = FileNameOf(path);
    const size_t dot = file.rfind(L'.');
    return dot == std::wstring::npos ? file : file.substr(0, dot);
}

}  // namespace

ModuleTable& ModuleTable::Get() {
    static ModuleTable* const table = new ModuleTable();
    return *table;
}

Module* ModuleTable::Load(const std::wstring& path, std::wstring& reason) {
    auto module = std::make_unique<Module>();
    module->name = BaseName(path);
    void* const entry = OpenLibrary(AbsolutePath(path), "acrxEntryPoint", module->library, reason);
    if (entry == nullptr) {
        if (reason.empty())
            reason = path + L" has no acrxEntryPoint: it is not a module of this host.";
        return nullptr;
    }
    module->entry = reinterpret_cast<AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*)>(entry);
    m_modules.push_back(std::move(module));
    return m_modules.back().get();
}

Module* ModuleTable::FindByName(const std::wstring& name) const {
    for (const auto& module : m_modules)
        if (EqualsNoCase(module->name.c_str(), BaseName(name).c_str())) return module.get();
    return nullptr;
}

Module* ModuleTable::FindById(const void* id) const {
    for (const auto& module : m_modules)
        if (module->Id() == id) return module.get();
    return nullptr;
}

void ModuleTable::SendAll(AcRx::AppMsgCode message) const {
    for (size_t i = 0; i < m_modules.size(); ++i) {
        // Only the unloading of a module hangs on its answer, and that asks it itself.
        static_cast<void>(m_modules[i]->Send(message));
    }
}

}  // namespace host
