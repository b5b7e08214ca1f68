// The editor: its reactors, the screen, boundary tracing.
#pragma once

#include "dbptrar.h"
#include "gepnt3d.h"
#include "rxevent.h"
#include "rxsrvice.h"

class AcDbViewTableRecord;
class AcDbViewport;

#define ACED_EDITOR_OBJ ACRX_T("AcEditor")
#define ACED_SERVICES ACRX_T("AcEdServices")
#define acedEditor AcEditor::cast(acrxSysRegistry()->at(ACED_EDITOR_OBJ))

// Hears of commands, of the drawings' life and of saving. Command names come as global names in
// capitals, without prefixes.
class AcEditorReactor : public AcRxEventReactor {
public:
    ACRX_DECLARE_MEMBERS(AcEditorReactor);

    virtual void commandWillStart(const ACHAR*) {}
    virtual void commandEnded(const ACHAR*) {}
    virtual void commandCancelled(const ACHAR*) {}
    virtual void commandFailed(const ACHAR*) {}
    virtual void unknownCommand(const ACHAR*, AcDbVoidPtrArray*) {}
    virtual void beginClose(AcDbDatabase*) {}
    virtual void beginQuit() {}
    virtual void sysVarWillChange(const ACHAR*) {}
    virtual void sysVarChanged(const ACHAR*, bool) {}
    virtual void pickfirstModified() {}
};

// The editor service. Pointers of reactors are kept, not owned; they are called in the order in
// which they were added, and one that is removed during a call is skipped.
class AcEditor : public AcRxService {
public:
    ACRX_DECLARE_MEMBERS(AcEditor);
    void addReactor(AcRxEventReactor* reactor);
    void removeReactor(AcRxEventReactor* reactor);
};

// Draws the windows of the drawing again. No data changes.
void acedUpdateDisplay();

// Shows what the view record states (which need not be in a table). viewport null: the current
// one, and the only one that this host has. eNullObjectPointer for a null view, eInvalidInput for
// one without width or height.
Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* view, AcDbViewport* viewport);

// Position and direction (last argument true) between the user's, the world's and the display's
// coordinates; false for null arguments.
bool acdbUcs2Wcs(const double* p, double* q, bool isVector);
bool acdbWcs2Ucs(const double* p, double* q, bool isVector);
