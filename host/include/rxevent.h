// Base of the reactors that hear of events of the whole host.
#pragma once

#include "rxboiler.h"

class AcDbDatabase;

// Derived by the editor's reactor, which is the one to add; see aced.h.
class AcRxEventReactor : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxEventReactor);

    virtual void dwgFileOpened(AcDbDatabase*, ACHAR*) {}     // of AutoCAD; never called here
    virtual void endDwgOpen(const ACHAR*, AcDbDatabase*) {}  // likewise

    // A drawing file is about to be written: changes made here are saved. saveComplete or abortSave
    // follows.
    virtual void beginSave(AcDbDatabase*, const ACHAR*) {}
    virtual void saveComplete(AcDbDatabase*, const ACHAR*) {}
    virtual void abortSave(AcDbDatabase*) {}

    // Of AutoCAD, around the reading and writing of DXF; never called here.
    virtual void beginDxfIn(AcDbDatabase*) {}
    virtual void abortDxfIn(AcDbDatabase*) {}
    virtual void dxfInComplete(AcDbDatabase*) {}
    virtual void beginDxfOut(AcDbDatabase*) {}
    virtual void abortDxfOut(AcDbDatabase*) {}
    virtual void dxfOutComplete(AcDbDatabase*) {}

    // Any database, side databases too. At databaseToBeDestroyed it is still whole.
    virtual void databaseConstructed(AcDbDatabase*) {}
    virtual void databaseToBeDestroyed(AcDbDatabase*) {}
};
