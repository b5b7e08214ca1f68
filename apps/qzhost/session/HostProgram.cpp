#include "apps/qzhost/session/HostProgram.h"

#include "arxHeaders.h"
#include "host/ed/drawing_io.h"
#include "host/ed/module_table.h"
#include "host/ed/session.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/module_handle.h"

namespace app {

std::wstring UsualModule() {
    return host::FolderOf(host::ModulePath(host::ProgramModule())) + L"QZEncircleLine.arx";
}

bool LoadModule(const std::wstring& path) {
    return acrxDynamicLinker->loadModule(path.c_str(), true);
}

void Settle() {
    host::WindowSystem::Get().DispatchPending();
    host::Session::Get().RunQueued();
    host::WindowSystem::Get().DispatchPending();
}

Lines EndHost() {
    Lines leaked;
    for (const std::wstring& line : DumpLeftovers())
        if (line != L"none") leaked.push_back(line);
    host::ModuleTable::Get().SendAll(AcRx::kPreQuitMsg);
    host::Session::Get().CloseAll();
    host::CloseHostWindows();
    host::ModuleTable::Get().SendAll(AcRx::kUnloadAppMsg);
    for (const host::LiveDialog& dialog : host::LiveDialogs())
        leaked.push_back(L"dialog " + std::to_wstring(dialog.id));
    return leaked;
}

}  // namespace app
