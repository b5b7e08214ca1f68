// The running host: its documents, contexts, commands and the person (or script) that uses it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "aced.h"
#include "acdocman.h"
#include "host/ed/document_imp.h"
#include "host/ed/reactor_list.h"
#include "host/ed/user_input.h"

namespace host {

// What the last command left behind that it should not have.
struct Leftovers {
    std::vector<std::wstring> openObjects;  // handle, class and mode
    std::vector<std::wstring> locks;        // document and mode
    bool IsEmpty() const { return openObjects.empty() && locks.empty(); }
};

// One per process. The free functions and managers of the SDK act on it.
class Session {
public:
    static Session& Get();

    // Who answers prompts; null: nobody, every prompt is cancelled. Kept, not owned.
    void SetInput(UserInput* input) { m_input = input; }
    UserInput* Input() const { return m_input; }
    void Print(const std::wstring& text) const;  // to the input's history, or nowhere

    // --- documents ---
    const std::vector<std::unique_ptr<AcApDocument>>& Documents() const { return m_documents; }
    AcApDocument* Current() const { return m_current; }      // null without a document
    AcApDocument* Find(const AcDbDatabase* database) const;  // null for a side database
    bool IsOpen(const AcApDocument* document) const;         // safe for a pointer that is stale

    // Reads a DXF file into a new document and makes it current. Prints the reader's notes; on
    // failure prints its message and returns null, with nothing changed.
    AcApDocument* Open(const std::wstring& path);
    // As a person means it: a drawing that is open already becomes the current one, and that is
    // said.
    AcApDocument* OpenOnce(const std::wstring& path);
    // As Open, for a copy that stands for a drawing that was lost: it has the original's name, and
    // changes that are not saved.
    // original  a path, or a title for a drawing that never had a file
    AcApDocument* OpenCopy(const std::wstring& path, const std::wstring& original);
    // A new, empty drawing, made current.
    AcApDocument* New();
    // Writes the drawing under its own or a new path with the events around it. On failure prints
    // why and changes nothing. A file that another document has open is not written.
    bool Save(AcApDocument& document, const std::wstring& path);
    // Why the last save that failed did, since this was asked last; empty when none failed.
    std::wstring TakeSaveFailure() { return std::exchange(m_saveFailure, {}); }
    // False when the user stays with one of these drawings, or a save that was asked for failed.
    // Asks once for all that have changes; nothing when there are none.
    bool MayClose(const std::vector<AcApDocument*>& documents);
    // Closes without saving; the next document becomes current.
    void Close(AcApDocument& document);
    void CloseAll();
    void MakeCurrent(AcApDocument* document);  // null: none; tells the reactors

    // --- contexts ---
    // Null: the application context.
    AcApDocument* ContextDocument() const {
        return m_contexts.empty() ? nullptr : m_contexts.back();
    }
    // Runs the function in the context of a document, or of the application for null.
    void InContext(AcApDocument* document, const std::function<void()>& function);

    // True when the running code may change the database.
    bool MayWrite(const AcDbDatabase& database) const;

    // --- commands ---
    // Runs one command line in the current document: the name with its prefixes. Answers to prompts
    // may follow, separated as typed. Then everything that was queued meanwhile. False when a
    // command among them is not known; what was typed behind it is dropped.
    bool Execute(const std::wstring& line);
    // Runs what sendStringToExecute has queued for idle documents.
    void RunQueued();
    bool HasQueued() const;  // something is left to run
    // Objects left open and locks left held, in all documents.
    Leftovers FindLeftovers() const;

    ReactorList<AcApDocManagerReactor>& DocumentReactors() { return m_documentReactors; }
    ReactorList<AcRxEventReactor>& EventReactors() { return m_eventReactors; }
    // Calls those of the event reactors that are editor reactors.
    void NotifyEditor(const std::function<void(AcEditorReactor&)>& call);

private:
    Session();
    ~Session();
    AcApDocument* Read(const std::wstring& path, const std::wstring& name, bool isCopy);
    AcApDocument* Adopt(std::unique_ptr<AcApDocument> document);
    void RunCommandLine(AcApDocument& document);

    UserInput* m_input = nullptr;
    std::vector<std::unique_ptr<AcApDocument>> m_documents;
    AcApDocument* m_current = nullptr;
    std::vector<AcApDocument*> m_contexts;  // innermost last; null: the application
    ReactorList<AcApDocManagerReactor> m_documentReactors;
    ReactorList<AcRxEventReactor> m_eventReactors;
    int m_newDrawings = 0;  // for their titles
    std::wstring m_saveFailure;
    int m_unknownCommands = 0;  // since the start
    bool m_isRunningQueue = false;
};

}  // namespace host
