// The reactors that tie the task lists to the life of the drawings, and the cleaning-up after an
// explosion. Installed once, for as long as the host runs.
#pragma once

// Creates and adds them, and gives drawings that are open already to the document reactor.
void InstallReactors();

// Loads the task lists of documents as they appear, and shows the current one's in the batch
// dialog.
class CDocReactor : public AcApDocManagerReactor {
public:
    void documentCreated(AcApDocument* pDocument) override;
    void documentBecameCurrent(AcApDocument* pDocument) override;
};

// Notices EXPLODE, stores task lists on saving and frees those of databases that go.
class CEditReactor : public AcEditorReactor {
public:
    void commandWillStart(const ACHAR* pCommand) override;
    void commandEnded(const ACHAR* pCommand) override;
    void commandCancelled(const ACHAR* pCommand) override;
    void commandFailed(const ACHAR* pCommand) override;
    void beginSave(AcDbDatabase* pDatabase, const ACHAR* pIntendedName) override;
    void databaseToBeDestroyed(AcDbDatabase* pDatabase) override;
};

// Watches every drawing from the time it is opened or the module loaded. The first modification
// that an EXPLODE makes in the working database has the geometric constraints deleted that the
// explosion leaves behind. Each drawing counts for itself: exploding in one never deletes those of
// another, and a command that exploded nothing leaves nothing to be done later.
class CQZToolReactor : public AcDbDatabaseReactor {
public:
    void objectModified(const AcDbDatabase* pDatabase, const AcDbObject* pObject) override;
};
