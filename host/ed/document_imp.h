// What the host keeps for one open drawing.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "acdocman.h"
#include "dbid.h"
#include "dbmain.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "host/ed/typed_text.h"
#include "host/ed/undo.h"
#include "host/sys/file_identity.h"

namespace host {

// The part of the drawing that is shown, plan view, in world coordinates.
struct View {
    AcGePoint2d center;
    double width = 0.0;  // drawing units; 0: nothing was shown yet
    double height = 0.0;
};

// One successful lockDocument. The owner is the context that locked: the application (null) or a
// document.
struct DocumentLock {
    AcAp::DocLockMode mode;  // as asked for
    const AcApDocument* owner;
};

struct DocumentImp {
    std::unique_ptr<AcDbDatabase> database;
    std::unique_ptr<UndoLog> undo;  // what U takes back
    std::wstring fileName;          // full path, or the title of a drawing that was never saved
    std::wstring title;
    bool isTitled = false;  // has a file
    FileInUse file;         // kept from other writers; none when another document keeps it
    std::vector<DocumentLock> locks;           // in the order they were taken
    std::vector<std::wstring> activeCommands;  // innermost last
    TypedText typed;                           // from sendStringToExecute, not yet used up
    std::vector<AcDbObjectId> previousSelection;
    std::vector<AcDbObjectId> pickFirst;  // picked before a command
    View view;
    std::vector<View> previousViews;  // by ZOOM and PAN, the latest last
    AcGePoint3d lastPoint;            // the last one given, which "@" counts from

    // How far from a curve a pick may be, in drawing units: a hundredth of the view's height, as
    // the pick box is on a screen.
    double PickAperture() const { return view.height > 0.0 ? view.height * 0.01 : 1.0; }
};

}  // namespace host
