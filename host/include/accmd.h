// Commands and the command stack.
#pragma once

#include "host_wintypes.h"
#include "rxboiler.h"
#include "rxdict.h"

class AcEdUIContext;
// What a command runs. It takes nothing: its input comes by prompts.
typedef void (*AcRxFunctionPtr)();

// How a command runs. Of these this host looks at those for the session and for reading; all
// commands run as modal ones and keep what was picked.
#define ACRX_CMD_MODAL 0x00000000
#define ACRX_CMD_TRANSPARENT 0x00000001  // may run amid another
#define ACRX_CMD_USEPICKSET 0x00000002   // keeps what was picked before it
#define ACRX_CMD_REDRAW 0x00000004       // keeps that picked afterwards
#define ACRX_CMD_NOHISTORY 0x00800000    // Enter does not repeat it
#define ACRX_CMD_DOCREADLOCK 0x00080000  // locks its document for reading only
#define ACRX_CMD_SESSION 0x00200000      // runs in the application's context, without a lock

// Where the registry keeps the stack, and the stack itself.
#define ACED_REGISTERED_COMMANDS ACRX_T("ACAD_REGISTERED_COMMANDS")
#define acedRegCmds AcEdCommandStack::cast(acrxSysRegistry()->at(ACED_REGISTERED_COMMANDS))

// One registered command. Owned by the stack.
class AcEdCommand : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommand);
    // Copies both names. The object does nothing by itself: the stack runs the function.
    AcEdCommand(const ACHAR* globalName, const ACHAR* localName, Adesk::Int32 flags,
                AcRxFunctionPtr function);
    ~AcEdCommand() override;

    // the same in every language; typed with "_"
    const ACHAR* globalName() const { return m_globalName; }
    // what users type; equal to the global one here
    const ACHAR* localName() const { return m_localName; }
    Adesk::Int32 commandFlags() const { return m_flags; }        // as registered
    AcRxFunctionPtr functionAddr() const { return m_function; }  // never null

private:
    ACHAR* m_globalName = nullptr;
    ACHAR* m_localName = nullptr;
    Adesk::Int32 m_flags;
    AcRxFunctionPtr m_function;
};

// Visits all commands, group by group in the order of registration. A command added or removed
// meanwhile ends the visit's meaning; make a new iterator.
class AcEdCommandIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommandIterator);
    virtual bool done() const = 0;                   // true behind the last command
    virtual bool next() = 0;                         // false when there is none left
    virtual const AcEdCommand* command() const = 0;  // null at the end
    virtual const ACHAR* commandGroup() const = 0;   // of the present command
};

// All registered commands. Names and groups compare without case; the newest group is asked first.
class AcEdCommandStack : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommandStack);
    // Made once, by the host, when the editor starts.
    AcEdCommandStack();
    ~AcEdCommandStack() override;

    // Makes the group when it is new. eInvalidInput for null or empty names or a null function,
    // eDuplicateKey when the group has a command of one of the names.
    Acad::ErrorStatus addCommand(const ACHAR* groupName, const ACHAR* globalName,
                                 const ACHAR* localName, Adesk::Int32 flags,
                                 AcRxFunctionPtr function, AcEdUIContext* uiContext = nullptr,
                                 int fcode = -1, HINSTANCE resourceHandle = nullptr,
                                 AcEdCommand** command = nullptr);
    // Null when there is none.
    // By the name in one language or in all; groups from the newest on.
    AcEdCommand* lookupGlobalCmd(const ACHAR* name);
    AcEdCommand* lookupLocalCmd(const ACHAR* name);
    // eKeyNotFound.
    // Deletes the command; one that is running ends first.
    Acad::ErrorStatus removeCmd(const ACHAR* groupName, const ACHAR* globalName);
    // Deletes all commands of a group, as a module does when it is unloaded.
    Acad::ErrorStatus removeGroup(const ACHAR* groupName);
    // The caller deletes it.
    AcEdCommandIterator* iterator();

private:
    struct Imp;
    Imp* m_imp;
};
