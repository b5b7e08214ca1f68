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
    AcApDocument();  // made and deleted by the manager alone
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

    virtual void documentCreateStarted(AcApDocument*) {}
    virtual void documentCreated(AcApDocument*) {}
    virtual void documentToBeDestroyed(AcApDocument*) {}
    virtual void documentDestroyed(const ACHAR*) {}
    virtual void documentCreateCanceled(AcApDocument*) {}
    virtual void documentLockModeWillChange(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode,
                                            AcAp::DocLockMode, const ACHAR*) {}
    virtual void documentLockModeChangeVetoed(AcApDocument*, const ACHAR*) {}
    virtual void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode,
                                         AcAp::DocLockMode, const ACHAR*) {}
    virtual void documentBecameCurrent(AcApDocument*) {}  // null when the last document has closed
    virtual void documentToBeActivated(AcApDocument*) {}
    virtual void documentToBeDeactivated(AcApDocument*) {}
    virtual void documentActivationModified(bool) {}
    virtual void documentActivated(AcApDocument*) {}
    virtual void documentTitleUpdated(AcApDocument*) {}  // after a save under another name
};

// The documents of the session. Code runs in the context of a document (registered commands) or of
// the application (window messages); only there must a document be locked before it is changed.
class AcApDocManager : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcApDocManager);

    // Null without a document.
    AcApDocument* curDocument() const;
    AcApDocument* mdiActiveDocument() const;  // that the user works in
    // Null for a side database.
    AcApDocument* document(const AcDbDatabase* database) const;
    // The caller deletes it.
    AcApDocumentIterator* newAcApDocumentIterator();
    int documentCount() const;  // open ones
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

    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode = AcAp::kNone,
                                     bool activate = false);
    Acad::ErrorStatus activateDocument(AcApDocument* document, bool passScript = false);

    // Text as typed: a line end is Enter. Only queued here; executed when the document is idle.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                          bool activate = true, bool wrapUpInactiveDoc = false,
                                          bool echoString = true);

    // Application context only, else eInvalidContext. Unlike AutoCAD, files are DXF.
    Acad::ErrorStatus appContextNewDocument(const ACHAR* templateName);
    Acad::ErrorStatus appContextOpenDocument(const ACHAR* fileName);
    Acad::ErrorStatus appContextCloseDocument(AcApDocument* document);

    // Runs the function at once in the application context.
    Acad::ErrorStatus executeInApplicationContext(void (*function)(void*), void* data) const;
};

AcApDocManager* acDocManagerPtr();  // the only one; never null
#define acDocManager acDocManagerPtr()
AcApDocument* curDoc();  // short for acDocManager->curDocument()
