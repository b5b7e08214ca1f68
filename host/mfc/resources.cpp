#include "host/mfc/resources.h"

#include "AcExtensionModule.h"
#include "afxdllx.h"
#include "host/base/string_table.h"
#include "host/mfc/module_handle.h"
#include "rxmfcapi.h"

namespace host {
namespace {

struct ModuleResources {
    std::wstring path;
    bool isRead = false;
    ResourceScript script;
    ScriptFault fault;
};

// Never destroyed: modules' static objects end later.
std::map<HINSTANCE, ModuleResources>& Table() {
    static auto* const table = new std::map<HINSTANCE, ModuleResources>();
    return *table;
}

HINSTANCE g_current = nullptr;  // null: the program's own

std::wstring UsualPlace(HINSTANCE module) {
    const std::wstring file = ModulePath(module);
    const std::size_t slash = file.find_last_of(L"/\\");
    const std::size_t name = slash == std::wstring::npos ? 0 : slash + 1;
    const std::size_t dot = file.rfind(L'.');
    const std::size_t end = dot == std::wstring::npos || dot < name ? file.size() : dot;
    return file.substr(0, name) + L"res/" + file.substr(name, end - name) + L".rc";
}

ModuleResources& ResourcesOf(HINSTANCE module) {
    ModuleResources& resources = Table()[module];
    if (!resources.isRead) {
        if (resources.path.empty()) resources.path = UsualPlace(module);
        resources.fault = ReadResourceScript(resources.path, resources.script);
        resources.isRead = true;
    }
    return resources;
}

bool LoadText(UINT id, CString& out) {
    const ResourceScript& script = ResourcesOf(AfxGetResourceHandle()).script;
    const auto found = script.strings.find(id);
    if (found == script.strings.end()) return false;
    out = found->second.c_str();
    return true;
}

}  // namespace

void SetResourceScript(HINSTANCE module, const std::wstring& path) {
    ModuleResources& resources = Table()[module];
    resources = ModuleResources();
    resources.path = path;
}

const DialogTemplate* FindDialog(HINSTANCE module, int id, std::wstring& reason) {
    const ModuleResources& resources = ResourcesOf(module);
    const auto found = resources.script.dialogs.find(id);
    if (found != resources.script.dialogs.end()) return &found->second;
    reason = resources.fault.empty() ? resources.path + L" has no such dialog" : resources.fault;
    return nullptr;
}

HINSTANCE SwitchResources(HINSTANCE to) {
    // CString finds its texts here from the first use of resources on.
    SetStringLoader(&LoadText);
    const HINSTANCE before = g_current;
    g_current = to;
    return before;
}

}  // namespace host

HINSTANCE CAcExtensionModule::ModuleResourceInstance() const {
    return m_hInstance != nullptr ? m_hInstance : host::ModuleOfAddress(this);
}

HINSTANCE AfxGetInstanceHandle() { return host::ProgramModule(); }
HINSTANCE AfxGetResourceHandle() {
    return host::g_current != nullptr ? host::g_current : AfxGetInstanceHandle();
}
void AfxSetResourceHandle(HINSTANCE hInstResource) { host::SwitchResources(hInstResource); }
HINSTANCE acedGetAcadResourceInstance() { return AfxGetInstanceHandle(); }

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule) {
    state = {hModule != nullptr, hModule, hModule};
    return state.bInitialized;
}
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL) { state = {}; }
CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL) : m_hModule(state.hModule) {}
