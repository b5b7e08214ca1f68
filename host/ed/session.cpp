#include "host/ed/session.h"

#include "dbapserv.h"
#include "host/db/build.h"
#include "host/db/print.h"
#include "host/ed/document_locks.h"
#include "host/ed/drawing_io.h"
#include "host/ed/editor_services.h"
#include "host/ed/module_table.h"
#include "host/base/format.h"
#include "host/base/host_assert.h"
#include "host/sys/file_identity.h"
#include "host/solid/revolve.h"

namespace host {
namespace {

// Lets the database ask for the caller's lock, and tells the editor's reactors of databases.
class SessionHooks : public WriteGuard, public DatabaseWatcher {
public:
    Acad::ErrorStatus MayWrite(const AcDbDatabase& db) const override {
        return Session::Get().MayWrite(db) ? Acad::eOk : Acad::eLockViolation;
    }
    void Constructed(AcDbDatabase& db) override {
        Session::Get().EventReactors().Notify(
            [&db](AcRxEventReactor& reactor) { reactor.databaseConstructed(&db); });
    }
    void ToBeDestroyed(AcDbDatabase& db) override {
        Session::Get().EventReactors().Notify(
            [&db](AcRxEventReactor& reactor) { reactor.databaseToBeDestroyed(&db); });
    }
};

SessionHooks& Hooks() {
    static SessionHooks hooks;
    return hooks;
}

// Keeps a document's file for it, as the first that has it.
void KeepFile(DocumentImp& imp) {
    const std::string path = Narrow(imp.fileName);
    FileError error;
    if (!IsFileInUse(path, error))
        imp.file = FileInUse(path, "is open as a drawing; close it or choose another name");
}

// Puts the context back however the function ends.
class ContextScope {
public:
    ContextScope(std::vector<AcApDocument*>& contexts, AcApDocument* document)
        : m_contexts(contexts) {
        m_contexts.push_back(document);
    }
    ~ContextScope() { m_contexts.pop_back(); }
    ContextScope(const ContextScope&) = delete;
    ContextScope& operator=(const ContextScope&) = delete;

private:
    std::vector<AcApDocument*>& m_contexts;
};

}  // namespace

Session& Session::Get() {
    // Never destroyed: modules may hold reactors and documents until the process is gone.
    static Session* const session = new Session();
    return *session;
}

Session::Session() {
    RegisterEditorServices();
    solid::InstallModeller();
    solid::SetSatFailureSink(
        [](const std::string& failure) { Session::Get().Print(L"\n" + Widen(failure)); });
    SetPrintSink([](const std::wstring& text) { Session::Get().Print(text); });
    SetDatabaseWatcher(&Hooks());
}

Session::~Session() = default;

void Session::Print(const std::wstring& text) const {
    if (m_input != nullptr) m_input->Print(text);
}

AcApDocument* Session::Find(const AcDbDatabase* database) const {
    if (database == nullptr) return nullptr;
    for (const auto& document : m_documents)
        if (document->database() == database) return document.get();
    return nullptr;
}

bool Session::IsOpen(const AcApDocument* document) const {
    for (const auto& open : m_documents)
        if (open.get() == document) return true;
    return false;
}

void Session::NotifyEditor(const std::function<void(AcEditorReactor&)>& call) {
    m_eventReactors.Notify([&call](AcRxEventReactor& reactor) {
        // A module's reactors need no run-time class of their own, so isKindOf cannot tell.
        if (auto* editorReactor = dynamic_cast<AcEditorReactor*>(&reactor)) call(*editorReactor);
    });
}

AcApDocument* Session::Open(const std::wstring& path) { return Read(path, path, false); }

AcApDocument* Session::OpenOnce(const std::wstring& path) {
    const FileIdentity wanted = IdentityOf(Narrow(path));
    for (const auto& document : m_documents) {
        const DocumentImp& imp = document->imp();
        if (!imp.isTitled || !(IdentityOf(Narrow(imp.fileName)) == wanted)) continue;
        Print(L"\n" + imp.fileName + L" is open already.");
        MakeCurrent(document.get());
        return document.get();
    }
    return Open(path);
}

AcApDocument* Session::OpenCopy(const std::wstring& path, const std::wstring& original) {
    return Read(path, original, true);
}

AcApDocument* Session::Read(const std::wstring& path, const std::wstring& name, bool isCopy) {
    auto document = std::make_unique<AcApDocument>();
    AcApDocument* const opened = document.get();
    m_documentReactors.Notify(
        [opened](AcApDocManagerReactor& reactor) { reactor.documentCreateStarted(opened); });
    auto database = std::make_unique<AcDbDatabase>(false);
    std::wstring message;
    const bool isRead = ReadDrawing(*database, path, message);
    if (!message.empty()) Print(L"\n" + message);
    if (!isRead) {
        m_documentReactors.Notify(
            [opened](AcApDocManagerReactor& reactor) { reactor.documentCreateCanceled(opened); });
        return nullptr;
    }
    DocumentImp& imp = document->imp();
    imp.database = std::move(database);
    // A title alone is no file.
    imp.isTitled = !isCopy || name.find_first_of(L"/\\") != std::wstring::npos;
    imp.fileName = imp.isTitled ? AbsolutePath(name) : name;
    imp.title = FileNameOf(imp.fileName);
    if (isCopy) NoteChanged(*imp.database);
    if (imp.isTitled) KeepFile(imp);
    return Adopt(std::move(document));
}

AcApDocument* Session::New() {
    auto document = std::make_unique<AcApDocument>();
    AcApDocument* const created = document.get();
    m_documentReactors.Notify(
        [created](AcApDocManagerReactor& reactor) { reactor.documentCreateStarted(created); });
    DocumentImp& imp = document->imp();
    imp.database = std::make_unique<AcDbDatabase>(true);
    imp.title = L"Drawing" + std::to_wstring(++m_newDrawings) + L".dxf";
    imp.fileName = imp.title;
    return Adopt(std::move(document));
}

AcApDocument* Session::Adopt(std::unique_ptr<AcApDocument> document) {
    AcApDocument* const adopted = document.get();
    m_documents.push_back(std::move(document));
    SetWriteGuard(*adopted->database(), &Hooks());
    adopted->imp().undo = std::make_unique<UndoLog>(*adopted->database());
    // The drawing is whole before anybody hears of it; the reactors must cope with the working
    // database still being the former document's.
    m_documentReactors.Notify(
        [adopted](AcApDocManagerReactor& reactor) { reactor.documentCreated(adopted); });
    if (IsOpen(adopted)) MakeCurrent(adopted);
    if (IsOpen(adopted)) ModuleTable::Get().SendAll(AcRx::kLoadDwgMsg);
    return IsOpen(adopted) ? adopted : nullptr;
}

void Session::MakeCurrent(AcApDocument* document) {
    if (document == m_current) return;
    if (m_current != nullptr) {
        AcApDocument* const former = m_current;
        m_documentReactors.Notify(
            [former](AcApDocManagerReactor& reactor) { reactor.documentToBeDeactivated(former); });
    }
    m_current = document;
    acdbHostApplicationServices()->setWorkingDatabase(document == nullptr ? nullptr
                                                                          : document->database());
    m_documentReactors.Notify(
        [document](AcApDocManagerReactor& reactor) { reactor.documentBecameCurrent(document); });
    if (document == nullptr) return;
    m_documentReactors.Notify(
        [document](AcApDocManagerReactor& reactor) { reactor.documentToBeActivated(document); });
    m_documentReactors.Notify(
        [document](AcApDocManagerReactor& reactor) { reactor.documentActivated(document); });
}

bool Session::Save(AcApDocument& document, const std::wstring& path) {
    DocumentImp& imp = document.imp();
    AcDbDatabase* const database = imp.database.get();
    ModuleTable::Get().SendAll(AcRx::kSaveMsg);
    const std::wstring target = AbsolutePath(path.empty() ? imp.fileName : path);
    m_eventReactors.Notify([database, &target](AcRxEventReactor& reactor) {
        reactor.beginSave(database, target.c_str());
    });
    std::wstring message;
    imp.file.Release();
    const bool isWritten = WriteDrawing(*database, target, message);
    if (isWritten) imp.fileName = target;
    if (isWritten || imp.isTitled) KeepFile(imp);
    if (!isWritten) {
        m_eventReactors.Notify(
            [database](AcRxEventReactor& reactor) { reactor.abortSave(database); });
        Print(L"\n" + message);
        m_saveFailure = message;
        return false;
    }
    if (!message.empty()) Print(L"\n" + message);
    imp.title = FileNameOf(target);
    imp.isTitled = true;
    NoteSaved(*database);
    m_eventReactors.Notify([database, &target](AcRxEventReactor& reactor) {
        reactor.saveComplete(database, target.c_str());
    });
    AcApDocument* const saved = &document;
    m_documentReactors.Notify(
        [saved](AcApDocManagerReactor& reactor) { reactor.documentTitleUpdated(saved); });
    return true;
}

bool Session::MayClose(const std::vector<AcApDocument*>& documents) {
    std::vector<AcApDocument*> changed;
    for (AcApDocument* const document : documents)
        if (IsModified(*document->database())) changed.push_back(document);
    if (changed.empty() || m_input == nullptr) return true;
    const ClosingChoice choice = m_input->Closing(changed);
    if (choice != ClosingChoice::kSave) return choice == ClosingChoice::kDiscard;
    for (AcApDocument* const document : changed) {
        const bool isTitled = document->imp().isTitled;
        const std::wstring path = isTitled ? L"" : m_input->NameForSaving(*document);
        if ((!isTitled && path.empty()) || !Save(*document, path)) return false;
    }
    return true;
}

void Session::Close(AcApDocument& document) {
    AcApDocument* const closing = &document;
    AcDbDatabase* const database = document.database();
    ModuleTable::Get().SendAll(AcRx::kUnloadDwgMsg);
    NotifyEditor([database](AcEditorReactor& reactor) { reactor.beginClose(database); });
    m_documentReactors.Notify(
        [closing](AcApDocManagerReactor& reactor) { reactor.documentToBeDeactivated(closing); });
    m_documentReactors.Notify(
        [closing](AcApDocManagerReactor& reactor) { reactor.documentToBeDestroyed(closing); });
    size_t index = 0;
    while (m_documents[index].get() != closing) ++index;
    const std::wstring name = document.imp().fileName;
    // The working database must not dangle while the reactors hear of the destruction.
    if (m_current == closing) {
        m_current = nullptr;
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
    const std::unique_ptr<AcApDocument> owned = std::move(m_documents[index]);
    m_documents.erase(m_documents.begin() + static_cast<std::ptrdiff_t>(index));
    owned->imp().database.reset();
    m_documentReactors.Notify(
        [&name](AcApDocManagerReactor& reactor) { reactor.documentDestroyed(name.c_str()); });
    if (m_current != nullptr) return;
    if (!m_documents.empty()) {
        MakeCurrent(m_documents[(std::min)(index, m_documents.size() - 1)].get());
    } else {
        m_documentReactors.Notify(
            [](AcApDocManagerReactor& reactor) { reactor.documentBecameCurrent(nullptr); });
    }
}

void Session::CloseAll() {
    while (!m_documents.empty()) Close(*m_documents.back());
}

void Session::InContext(AcApDocument* document, const std::function<void()>& function) {
    const ContextScope scope(m_contexts, document);
    function();
}

bool Session::MayWrite(const AcDbDatabase& database) const {
    const AcApDocument* const document = Find(&database);
    return document == nullptr || HoldsWriteLock(document->imp(), ContextDocument());
}

Leftovers Session::FindLeftovers() const {
    Leftovers left;
    for (const auto& document : m_documents) {
        const DocumentImp& imp = document->imp();
        for (const OpenObject& open : OpenObjectsReport(*imp.database))
            left.openObjects.push_back(DescribeOpenObject(open));
        for (const DocumentLock& lock : imp.locks)
            left.locks.push_back(imp.title + L" " + LockModeName(lock.mode));
    }
    return left;
}

}  // namespace host
