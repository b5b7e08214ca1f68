// Message maps: from a message to the handler of the most derived class.
#include "afxwin.h"
#include "host/mfc/map_look_up.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {host::EndOfMap<CCmdTarget>()};
    static const AFX_MSGMAP messageMap = {nullptr, entries};
    return &messageMap;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }

const AFX_MSGMAP_ENTRY* host::FindEntry(const AFX_MSGMAP* map, UINT message, UINT code, UINT id) {
    for (; map != nullptr; map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn != nullptr; ++entry) {
            if (entry->nMessage == message && entry->nCode == code && id >= entry->nID &&
                id <= entry->nLastID)
                return entry;
        }
    }
    return nullptr;
}

// A notification's code comes with WM_NOTIFY in its upper half, a command's with nothing.
BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, void*) {
    const UINT message = HIWORD(nCode) == 0 ? WM_COMMAND : HIWORD(nCode);
    const AFX_MSGMAP_ENTRY* const entry =
        host::FindEntry(GetMessageMap(), message, LOWORD(nCode), nID);
    if (entry == nullptr) return FALSE;
    entry->pfn(this, MAKEWPARAM(nID, LOWORD(nCode)), reinterpret_cast<LPARAM>(pExtra));
    return TRUE;
}
