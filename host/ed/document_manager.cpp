// The SDK's face of documents: AcApDocument, AcApDocManager and the iterator.
#include "acdocman.h"
#include "actrans.h"
#include "host/ed/document_locks.h"
#include "host/ed/session.h"

ACRX_CONS_DEFINE_MEMBERS(AcApDocument, AcRxObject, 1)
ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocumentIterator, AcRxObject)
ACRX_CONS_DEFINE_MEMBERS(AcApDocManagerReactor, AcRxObject, 1)
ACRX_CONS_DEFINE_MEMBERS(AcApDocManager, AcRxObject, 1)

using host::Session;

AcApDocument::AcApDocument() : m_imp(new host::DocumentImp()) {}
AcApDocument::~AcApDocument() { delete m_imp; }

AcDbDatabase* AcApDocument::database() const { return m_imp->database.get(); }
const ACHAR* AcApDocument::fileName() const { return m_imp->fileName.c_str(); }
const ACHAR* AcApDocument::docTitle() const { return m_imp->title.c_str(); }
bool AcApDocument::isQuiescent() const { return m_imp->activeCommands.empty(); }
bool AcApDocument::isReadOnly() const { return false; }
AcTransactionManager* AcApDocument::transactionManager() const { return acTransactionManagerPtr(); }

AcAp::DocLockMode AcApDocument::lockMode(bool includeMyLocks) const {
    const AcApDocument* const context = Session::Get().ContextDocument();
    const AcAp::DocLockMode others = host::StrongestLock(*m_imp, context, false);
    if (!includeMyLocks) return others;
    const AcAp::DocLockMode own = host::StrongestLock(*m_imp, context, true);
    return own > others ? own : others;
}

AcAp::DocLockMode AcApDocument::myLockMode() const {
    return host::StrongestLock(*m_imp, Session::Get().ContextDocument(), true);
}

namespace {

class DocumentIterator : public AcApDocumentIterator {
public:
    DocumentIterator() {
        for (const auto& document : Session::Get().Documents())
            m_documents.push_back(document.get());
    }
    bool done() const override { return m_index >= m_documents.size(); }
    void step() override { ++m_index; }
    AcApDocument* document() override { return done() ? nullptr : m_documents[m_index]; }

private:
    std::vector<AcApDocument*> m_documents;
    size_t m_index = 0;
};

}  // namespace

AcApDocument* AcApDocManager::curDocument() const { return Session::Get().Current(); }
AcApDocument* AcApDocManager::mdiActiveDocument() const { return Session::Get().Current(); }
AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
    return Session::Get().Find(database);
}
AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() { return new DocumentIterator(); }
int AcApDocManager::documentCount() const {
    return static_cast<int>(Session::Get().Documents().size());
}
bool AcApDocManager::isApplicationContext() const {
    return Session::Get().ContextDocument() == nullptr;
}
void AcApDocManager::addReactor(AcApDocManagerReactor* reactor) {
    Session::Get().DocumentReactors().Add(reactor);
}
void AcApDocManager::removeReactor(AcApDocManagerReactor* reactor) {
    Session::Get().DocumentReactors().Remove(reactor);
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                               const ACHAR* globalCmdName, const ACHAR*, bool) {
    Session& session = Session::Get();
    if (!session.IsOpen(document)) return Acad::eInvalidInput;
    if (mode == AcAp::kNone || mode == AcAp::kNotLocked) return Acad::eInvalidInput;
    host::DocumentImp& imp = document->imp();
    const AcApDocument* const context = session.ContextDocument();
    if (host::IsLockConflict(imp, mode, context)) return Acad::eLockConflict;
    const AcAp::DocLockMode before = host::StrongestLock(imp, context, true);
    const AcAp::DocLockMode others = host::StrongestLock(imp, context, false);
    session.DocumentReactors().Notify([=](AcApDocManagerReactor& reactor) {
        reactor.documentLockModeWillChange(document, before, mode, others, globalCmdName);
    });
    imp.locks.push_back({mode, context});
    imp.undo->Begin(globalCmdName == nullptr ? L"" : globalCmdName);
    session.DocumentReactors().Notify([=](AcApDocManagerReactor& reactor) {
        reactor.documentLockModeChanged(document, before, mode, others, globalCmdName);
    });
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* document) {
    Session& session = Session::Get();
    if (!session.IsOpen(document)) return Acad::eInvalidInput;
    const AcApDocument* const context = session.ContextDocument();
    host::DocumentImp& imp = document->imp();
    std::vector<host::DocumentLock>& locks = imp.locks;
    for (size_t i = locks.size(); i-- > 0;) {
        if (locks[i].owner != context) continue;
        locks.erase(locks.begin() + static_cast<std::ptrdiff_t>(i));
        if (locks.empty()) imp.undo->End();
        return Acad::eOk;
    }
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                                 bool) {
    Session& session = Session::Get();
    if (document != nullptr && !session.IsOpen(document)) return Acad::eInvalidInput;
    session.MakeCurrent(document);
    return document == nullptr || mode == AcAp::kNone ? Acad::eOk : lockDocument(document, mode);
}

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* document, bool) {
    return document == nullptr ? Acad::eInvalidInput : setCurDocument(document);
}

Acad::ErrorStatus AcApDocManager::sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                                      bool activate, bool, bool) {
    Session& session = Session::Get();
    if (text == nullptr || !session.IsOpen(document)) return Acad::eInvalidInput;
    document->imp().typed.Append(text);
    if (session.Input() != nullptr) session.Input()->Queued();
    // Switching has to wait while a command runs in the current document.
    if (activate && document != session.Current() && session.ContextDocument() == nullptr)
        session.MakeCurrent(document);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::appContextNewDocument(const ACHAR* templateName) {
    Session& session = Session::Get();
    if (!isApplicationContext()) return Acad::eNotApplicable;
    // Templates are DXF drawings here; an empty name gives the default drawing.
    if (templateName != nullptr && *templateName != 0) {
        AcApDocument* const document = session.Open(templateName);
        if (document == nullptr) return Acad::eFileAccessErr;
        document->imp().isTitled = false;
        return Acad::eOk;
    }
    return session.New() == nullptr ? Acad::eNoDocument : Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::appContextOpenDocument(const ACHAR* fileName) {
    if (!isApplicationContext()) return Acad::eNotApplicable;
    if (fileName == nullptr || *fileName == 0) return Acad::eInvalidInput;
    return Session::Get().Open(fileName) == nullptr ? Acad::eFileAccessErr : Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::appContextCloseDocument(AcApDocument* document) {
    Session& session = Session::Get();
    if (!isApplicationContext()) return Acad::eNotApplicable;
    if (!session.IsOpen(document)) return Acad::eInvalidInput;
    if (!document->isQuiescent()) return Acad::eLockConflict;
    session.Close(*document);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::executeInApplicationContext(void (*function)(void*),
                                                              void* data) const {
    if (function == nullptr) return Acad::eInvalidInput;
    Session::Get().InContext(nullptr, [=] { function(data); });
    return Acad::eOk;
}

AcApDocManager* acDocManagerPtr() {
    static AcApDocManager* const manager = [] {
        Session::Get();
        return new AcApDocManager();
    }();
    return manager;
}

AcApDocument* curDoc() { return acDocManagerPtr()->curDocument(); }
