// Runs commands with the events, contexts and locks around them.
#include "accmd.h"
#include "host/db/build.h"
#include "host/ed/builtin_commands.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"
#include "rxdict.h"

namespace host {
namespace {

// A command as typed, taken apart.
struct CommandName {
    std::wstring name;           // without prefixes
    bool isBuiltinOnly = false;  // "." given: the host's own meaning
};

CommandName ParseName(const std::wstring& typed) {
    CommandName command;
    size_t i = 0;
    for (; i < typed.size() && (typed[i] == L'_' || typed[i] == L'.' || typed[i] == L'\''); ++i)
        if (typed[i] == L'.') command.isBuiltinOnly = true;
    command.name = typed.substr(i);
    return command;
}

// What a name stands for: a module's command, the host's own, or neither.
struct CommandTarget {
    const AcEdCommand* registered = nullptr;
    const BuiltinCommand* builtin = nullptr;

    bool IsKnown() const { return registered != nullptr || builtin != nullptr; }
    std::wstring GlobalName() const {
        return ToUpper(registered != nullptr ? registered->globalName() : builtin->name);
    }
    bool IsSession() const {
        return registered != nullptr ? (registered->commandFlags() & ACRX_CMD_SESSION) != 0
                                     : builtin->isSession;
    }
    CommandEnd Run(AcApDocument* document) const {
        if (builtin != nullptr) return builtin->run(document);
        registered->functionAddr()();
        return CommandEnd::kEnded;
    }
};

CommandTarget Resolve(const CommandName& command) {
    CommandTarget target;
    if (!command.isBuiltinOnly) {
        AcEdCommandStack* const stack = acedRegCmds;
        target.registered = stack->lookupLocalCmd(command.name.c_str());
        if (target.registered == nullptr)
            target.registered = stack->lookupGlobalCmd(command.name.c_str());
    }
    if (target.registered == nullptr) target.builtin = FindBuiltin(command.name);
    return target;
}

void NotifyEnd(CommandEnd end, const std::wstring& name) {
    Session::Get().NotifyEditor([end, &name](AcEditorReactor& reactor) {
        if (end == CommandEnd::kEnded)
            reactor.commandEnded(name.c_str());
        else if (end == CommandEnd::kCancelled)
            reactor.commandCancelled(name.c_str());
        else
            reactor.commandFailed(name.c_str());
    });
}

// In the document's context, under the lock that a command implies.
CommandEnd RunInDocument(AcApDocument& document, const CommandTarget& target,
                         const std::wstring& name) {
    Session& session = Session::Get();
    CommandEnd end = CommandEnd::kEnded;
    const bool wantsLock = target.registered == nullptr ||
                           (target.registered->commandFlags() & ACRX_CMD_DOCREADLOCK) == 0;
    document.imp().activeCommands.push_back(name);
    session.InContext(&document, [&] {
        bool isLocked = false;
        if (wantsLock) {
            const Acad::ErrorStatus es =
                acDocManager->lockDocument(&document, AcAp::kAutoWrite, name.c_str(), name.c_str());
            isLocked = es == Acad::eOk;
            if (!isLocked) {
                session.Print(L"\nThe drawing is locked by another task; " + name +
                              L" was not run.");
                end = CommandEnd::kFailed;
                return;
            }
        }
        end = target.Run(&document);
        if (isLocked && session.IsOpen(&document)) {
            const Acad::ErrorStatus es = acDocManager->unlockDocument(&document);
            if (es != Acad::eOk)
                session.Print(L"\n" + name + L" took back the lock of its own command.");
        }
    });
    if (session.IsOpen(&document)) document.imp().activeCommands.pop_back();
    return end;
}

void RunTarget(AcApDocument* document, const CommandTarget& target) {
    Session& session = Session::Get();
    const std::wstring name = target.GlobalName();
    session.NotifyEditor(
        [&name](AcEditorReactor& reactor) { reactor.commandWillStart(name.c_str()); });
    CommandEnd end = CommandEnd::kEnded;
    if (target.IsSession())
        session.InContext(nullptr, [&] { end = target.Run(document); });
    else
        end = RunInDocument(*document, target, name);
    NotifyEnd(end, name);
}

}  // namespace

bool IsCommandKnown(const std::wstring& typed) { return Resolve(ParseName(typed)).IsKnown(); }

// Takes one command name from the document's typed text and runs it; its prompts take what follows.
void Session::RunCommandLine(AcApDocument& document) {
    const std::wstring typed = document.imp().typed.Next(false);
    if (typed.empty()) return;
    const CommandTarget target = Resolve(ParseName(typed));
    if (!target.IsKnown()) {
        NotifyEditor(
            [&typed](AcEditorReactor& reactor) { reactor.unknownCommand(typed.c_str(), nullptr); });
        Print(L"\nUnknown command \"" + ToUpper(typed) + L"\". Press F1 or type HELP for a list.");
        // What was meant for it must not become a command of its own.
        document.imp().typed.DropPiece();
        ++m_unknownCommands;
        return;
    }
    RunTarget(&document, target);
}

void Session::RunQueued() {
    // A command that runs reads its answers itself; only the outermost call starts new ones.
    if (m_isRunningQueue || ContextDocument() != nullptr) return;
    m_isRunningQueue = true;
    for (bool hasRun = true; hasRun;) {
        hasRun = false;
        for (size_t i = 0; i < m_documents.size(); ++i) {
            AcApDocument* const document = m_documents[i].get();
            if (document->imp().typed.IsEmpty() || !document->isQuiescent()) continue;
            MakeCurrent(document);
            RunCommandLine(*document);
            hasRun = true;
            break;
        }
    }
    m_isRunningQueue = false;
}

bool Session::HasQueued() const {
    for (const auto& document : m_documents)
        if (!document->imp().typed.IsEmpty()) return true;
    return false;
}

bool Session::Execute(const std::wstring& line) {
    const int unknown = m_unknownCommands;
    if (m_current != nullptr) {
        m_current->imp().typed.Append(line + L"\n");
        RunQueued();
        return m_unknownCommands == unknown;
    }
    const std::wstring name = line.substr(0, line.find_first_of(L" \n"));
    const CommandTarget target = Resolve(ParseName(name));
    if (!target.IsKnown()) {
        Print(L"\nUnknown command \"" + ToUpper(name) + L"\". Press F1 or type HELP for a list.");
        return false;
    }
    if (!target.IsSession()) {
        Print(L"\n" + target.GlobalName() + L" needs an open drawing; OPEN or NEW one first.");
    } else {
        RunTarget(nullptr, target);
        RunQueued();
    }
    return true;
}

}  // namespace host
