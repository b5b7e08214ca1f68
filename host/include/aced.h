// The editor: its reactors, the screen, boundary tracing.
#pragma once

#include "dbptrar.h"
#include "gepnt3d.h"
#include "rxevent.h"
#include "rxsrvice.h"

class AcDbViewTableRecord;
class AcDbViewport;

// Names in the registry under which the editor and its services stand.
#define ACED_EDITOR_OBJ ACRX_T("AcEditor")
#define ACED_SERVICES ACRX_T("AcEdServices")
#define acedEditor AcEditor::cast(acrxSysRegistry()->at(ACED_EDITOR_OBJ))

// Hears of commands, of the drawings' life and of saving. Command names come as global names in
// capitals, without prefixes.
class AcEditorReactor : public AcRxEventReactor {
public:
    ACRX_DECLARE_MEMBERS(AcEditorReactor);

    // After the command's function was found, before it is called.
    virtual void commandWillStart(const ACHAR*) {}
    // One of the three follows each start: the function came back, Esc ended it, or it threw.
    virtual void commandEnded(const ACHAR*) {}
    virtual void commandCancelled(const ACHAR*) {}
    virtual void commandFailed(const ACHAR*) {}
    // The typed name that no command has. A reactor may know it all the same.
    virtual void unknownCommand(const ACHAR*, AcDbVoidPtrArray*) {}
    // The drawing is about to be closed; the database is still whole.
    virtual void beginClose(AcDbDatabase*) {}
    virtual void beginQuit() {}  // of AutoCAD; never called here
    // Around the change of a system variable; true when it was changed.
    virtual void sysVarWillChange(const ACHAR*) {}
    virtual void sysVarChanged(const ACHAR*, bool) {}
    virtual void pickfirstModified() {}  // likewise
};

// The editor service. Pointers of reactors are kept, not owned; they are called in the order in
// which they were added, and one that is removed during a call is skipped.
class AcEditor : public AcRxService {
public:
    ACRX_DECLARE_MEMBERS(AcEditor);
    void addReactor(AcRxEventReactor* reactor);     // a second time changes nothing
    void removeReactor(AcRxEventReactor* reactor);  // harmless for one that was never added
};

// Draws the windows of the drawing again. No data changes.
void acedUpdateDisplay();

// Shows what the view record states (which need not be in a table). viewport null: the current
// one, and the only one that this host has. eNullObjectPointer for a null view, eInvalidInput for
// one without width or height.
Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* view, AcDbViewport* viewport);

// Finds the loop of shown curves around a point, as a hatch command does.
//
// seed           in UCS; at least 1e-6 drawing units away from every curve
// detectIslands  also give the loops that lie within, apart from the outer one
// result         emptied first; receives new closed AcDbPolylines that belong to the caller and are
//                in no drawing: the outer loop, then the islands, each counter-clockwise from the
//                leftmost of its lowest vertices. Arcs and
//                circles come back as bulges, with the curves' own ends and computed crossings as
//                vertices; ellipses and splines as chords at most 1e-4 of their size away.
// curves         what is shown of the current space, parts of polylines and block references
//                included, laid into the XY plane; in other drawings than plans, so does the
//                result. Loops may be off the screen, unlike AutoCAD. Points within 1e-6 are one;
//                curves that end in the air bound nothing, and wider gaps are open.
// status         eInvalidInput when no loop encloses the seed, whether it lies outside or the
//                boundary is open, and when it lies on a curve; eNoDocument;
//                eGeneralModelingFailure when the curves defy tracing. Unlike AutoCAD, a program
//                without documents traces the working database.
// cost           O((n + k) log n) for n curves and k pairs of curves whose boxes touch
Acad::ErrorStatus acedTraceBoundary(const AcGePoint3d& seed, bool detectIslands,
                                    AcDbVoidPtrArray& result);

// Position and direction (last argument true) between the user's, the world's and the display's
// coordinates; false for null arguments.
bool acdbUcs2Wcs(const double* p, double* q, bool isVector);
bool acdbWcs2Ucs(const double* p, double* q, bool isVector);
