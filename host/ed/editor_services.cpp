#include "host/ed/editor_services.h"

#include "accmd.h"
#include "acdocman.h"
#include "aced.h"
#include "actrans.h"
#include "host/ed/session.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "rxmfcapi.h"

ACRX_CONS_DEFINE_MEMBERS(AcRxEventReactor, AcRxObject, 1)
ACRX_CONS_DEFINE_MEMBERS(AcEditorReactor, AcRxEventReactor, 1)
ACRX_CONS_DEFINE_MEMBERS(AcEditor, AcRxService, 1)
ACRX_CONS_DEFINE_MEMBERS(AcTransactionManager, AcRxObject, 1)

void AcEditor::addReactor(AcRxEventReactor* reactor) {
    host::Session::Get().EventReactors().Add(reactor);
}

void AcEditor::removeReactor(AcRxEventReactor* reactor) {
    host::Session::Get().EventReactors().Remove(reactor);
}

// Changes outside a transaction reach the screen only when they were queued before the flush.
static bool s_isFlushQueued = false;

void AcTransactionManager::queueForGraphicsFlush() { s_isFlushQueued = true; }

void AcTransactionManager::flushGraphics() {
    if (s_isFlushQueued) acedUpdateDisplay();
    s_isFlushQueued = false;
}

int AcTransactionManager::numActiveTransactions() { return 0; }

AcTransactionManager* acTransactionManagerPtr() {
    static AcTransactionManager* const manager = new AcTransactionManager();
    return manager;
}

namespace host {

void RegisterEditorServices() {
    AcRxDictionary* const registry = acrxSysRegistry();
    registry->atPut(ACRX_DYNAMIC_LINKER, new AcRxDynamicLinker());
    registry->atPut(ACED_EDITOR_OBJ, new AcEditor());
    registry->atPut(ACED_REGISTERED_COMMANDS, new AcEdCommandStack());
}

}  // namespace host

static unsigned s_promptPosts = 0;

unsigned host::PromptPosts() { return s_promptPosts; }

bool acedPostCommandPrompt() {
    if (acDocManagerPtr()->curDocument() == nullptr) return false;
    ++s_promptPosts;
    return true;
}
