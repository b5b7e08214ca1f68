// Commands and the command stack.
#pragma once

#include "host_wintypes.h"
#include "rxboiler.h"
#include "rxdict.h"

class AcEdUIContext;
typedef void (*AcRxFunctionPtr)();

#define ACRX_CMD_MODAL 0x00000000
#define ACRX_CMD_TRANSPARENT 0x00000001  // may run amid another
#define ACRX_CMD_USEPICKSET 0x00000002   // keeps what was picked before it
#define ACRX_CMD_REDRAW 0x00000004       // keeps that picked afterwards
#define ACRX_CMD_NOHISTORY 0x00800000    // Enter does not repeat it
#define ACRX_CMD_DOCREADLOCK 0x00080000  // locks its document for reading only
#define ACRX_CMD_SESSION 0x00200000      // runs in the application's context, without a lock

#define ACED_REGISTERED_COMMANDS ACRX_T("ACAD_REGISTERED_COMMANDS")
#define acedRegCmds AcEdCommandStack::cast(acrxSysRegistry()->at(ACED_REGISTERED_COMMANDS))

// One registered command. Owned by the stack.
class AcEdCommand : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommand);
    AcEdCommand(const ACHAR* globalName, const ACHAR* localName, Adesk::Int32 flags,
                AcRxFunctionPtr function);
    ~AcEdCommand() override;

    const ACHAR* globalName() const { return m_globalName; }
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
    AcEdCommandStack();  // made once, by the host, when the editor starts
    ~AcEdCommandStack() override;

    // Makes the group when it is new. eInvalidInput for null or empty names or a null function,
    // eDuplicateKey when the group has a command of one of the names.
    Acad::ErrorStatus addCommand(const ACHAR* groupName, const ACHAR* globalName,
                                 const ACHAR* localName, Adesk::Int32 flags,
                                 AcRxFunctionPtr function, AcEdUIContext* uiContext = nullptr,
                                 int fcode = -1, HINSTANCE resourceHandle = nullptr,
                                 AcEdCommand** command = nullptr);
    // Null when there is none.
    AcEdCommand* lookupGlobalCmd(const ACHAR* name);
    AcEdCommand* lookupLocalCmd(const ACHAR* name);
    // eKeyNotFound.
    Acad::ErrorStatus removeCmd(const ACHAR* groupName, const ACHAR* globalName);
    Acad::ErrorStatus removeGroup(const ACHAR* groupName);
    // The caller deletes it.
    AcEdCommandIterator* iterator();

private:
    struct Imp;
    Imp* m_imp;
};
