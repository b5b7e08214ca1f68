// Documents: drawings open in the host, their locks, and who hears of them.
#pragma once

#include "host_wintypes.h"
#include "rxboiler.h"

class AcApDocManagerReactor;
class AcDbDatabase;
class AcTransactionManager;

namespace host {
struct DocumentImp;
class DocumentTable;
}  // namespace host

namespace AcAp {
enum DocLockMode {
    kNone = 0x00,                // no lock at all
    kAutoWrite = 0x01,           // what commands take
    kNotLocked = 0x02,           // an answer only, never asked for
    kWrite = 0x04,               // what dialogs take to change a drawing
    kProtectedAutoWrite = 0x14,  // as kAutoWrite, and nobody may follow
    kRead = 0x20,                // look only; others may read, too
    kXWrite = 0x40               // nobody else, not even readers
};
}  // namespace AcAp

// One open drawing. Owned by the document manager.
class AcApDocument : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocument);
    // Made and deleted by the manager alone.
    AcApDocument();
    ~AcApDocument() override;

    AcDbDatabase* database() const;  // lives as long as the document
    // Full path, or the name of a drawing that has not been saved yet. Valid until the next save.
    const ACHAR* fileName() const;
    const ACHAR* docTitle() const;  // the file's name without its folder
    // The strongest lock that others hold; with includeMyLocks also the caller's.
    AcAp::DocLockMode lockMode(bool includeMyLocks = false) const;
    AcAp::DocLockMode myLockMode() const;
    // No command is active in the document.
    bool isQuiescent() const;
    bool isReadOnly() const;                           // the file could not be opened for writing
    AcTransactionManager* transactionManager() const;  // for flushing graphics; see actrans.h

    host::DocumentImp& imp() const { return *m_imp; }

private:
    host::DocumentImp* m_imp;
};

// Visits the open documents in the order in which they were opened.
class AcApDocumentIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocumentIterator);
    virtual bool done() const = 0;         // true behind the last document
    virtual void step() = 0;               // nothing at the end
    virtual AcApDocument* document() = 0;  // null at the end
};

// Hears of documents. documentBecameCurrent comes with null when the last document closes.
class AcApDocManagerReactor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocManagerReactor);

    // Before a document's database is read, and when that is done or failed.
    virtual void documentCreateStarted(AcApDocument*) {}
    virtual void documentCreated(AcApDocument*) {}
    // The document is still whole; afterwards only its file's name is left.
    virtual void documentToBeDestroyed(AcApDocument*) {}
    virtual void documentDestroyed(const ACHAR*) {}
    virtual void documentCreateCanceled(AcApDocument*) {}
    // With the present mode, the coming one, the strongest afterwards and the command's name.
    virtual void documentLockModeWillChange(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode,
                                            AcAp::DocLockMode, const ACHAR*) {}
    virtual void documentLockModeChangeVetoed(AcApDocument*, const ACHAR*) {}
    virtual void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode,
                                         AcAp::DocLockMode, const ACHAR*) {}
    // Null when the last document has closed.
    virtual void documentBecameCurrent(AcApDocument*) {}
    // Around a change of the document that the user works in; "Modified" is never called here.
    virtual void documentToBeActivated(AcApDocument*) {}
    virtual void documentToBeDeactivated(AcApDocument*) {}
    virtual void documentActivationModified(bool) {}
    virtual void documentActivated(AcApDocument*) {}
    // After a save under another name.
    virtual void documentTitleUpdated(AcApDocument*) {}
};

// The documents of the session. Code runs in the context of a document (registered commands) or of
// the application (window messages); only there must a document be locked before it is changed.
class AcApDocManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocManager);

    // Null without a document.
    // Where code runs: of a command its own document, else the active one.
    AcApDocument* curDocument() const;
    // That the user works in.
    AcApDocument* mdiActiveDocument() const;
    // Null for a side database.
    AcApDocument* document(const AcDbDatabase* database) const;
    // The caller deletes it.
    AcApDocumentIterator* newAcApDocumentIterator();
    int documentCount() const;  // open ones
    // True in window messages and timers, where a change wants a lock; false in a command's
    // function.
    bool isApplicationContext() const;

    // Pointer kept, not owned; called in the order of addition.
    void addReactor(AcApDocManagerReactor* reactor);
    void removeReactor(AcApDocManagerReactor* reactor);  // harmless for one that was never added

    // Nested calls count; each success wants one unlock. eInvalidInput for null or an unknown
    // document; eLockConflict when another context holds an excluding lock.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                   const ACHAR* globalCmdName = nullptr,
                                   const ACHAR* localCmdName = nullptr, bool prompt = true);
    // Takes back the caller's newest lock; eInvalidInput, eNotApplicable when there is none.
    Acad::ErrorStatus unlockDocument(AcApDocument* document);

    // Makes the document the current one, and locks it unless the mode says no; eInvalidInput for
    // an unknown one, else as lockDocument. activate adds nothing here.
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode = AcAp::kNone,
                                     bool activate = false);
    // The same without a lock; eInvalidInput for null.
    Acad::ErrorStatus activateDocument(AcApDocument* document, bool passScript = false);

    // Text as typed: a line end is Enter. Only queued here; executed when the document is idle.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                          bool activate = true, bool wrapUpInactiveDoc = false,
                                          bool echoString = true);

    // Application context only, else eInvalidContext. Unlike AutoCAD, files are DXF.
    // A template is read like a drawing and gives no name; null: an empty drawing.
    Acad::ErrorStatus appContextNewDocument(const ACHAR* templateName);
    // eFileAccessErr when it cannot be read; why is printed to the command line.
    Acad::ErrorStatus appContextOpenDocument(const ACHAR* fileName);
    // Never asks: what was not saved is lost. eLockConflict while a command runs there.
    Acad::ErrorStatus appContextCloseDocument(AcApDocument* document);

    // Runs the function at once in the application context.
    Acad::ErrorStatus executeInApplicationContext(void (*function)(void*), void* data) const;
};

// The only one; never null.
AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
AcApDocument* curDoc();  // short for acDocManager->curDocument()
