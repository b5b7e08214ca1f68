// The screen's state: view and coordinate systems. What is drawn, the front end decides.
#include "aced.h"
#include "dbsymtb.h"
#include "host/ed/session.h"

using namespace host;

void acedUpdateDisplay() {
    if (UserInput* const input = Session::Get().Input()) input->UpdateDisplay();
}

Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* view, AcDbViewport*) {
    if (view == nullptr) return Acad::eNullObjectPointer;
    AcApDocument* const document = Session::Get().Current();
    if (document == nullptr) return Acad::eNoDocument;
    // Written so that a width that is not a number is refused as well.
    if (!(view->width() > 0.0) || !(view->height() > 0.0)) return Acad::eInvalidInput;
    document->imp().view = {view->centerPoint(), view->width(), view->height()};
    acedUpdateDisplay();
    return Acad::eOk;
}

namespace {

// This host's user coordinate system is always the world's.
bool Same(const double* p, double* q) {
    if (p == nullptr || q == nullptr) return false;
    for (int i = 0; i < 3; ++i) q[i] = p[i];
    return true;
}

}  // namespace

bool acdbUcs2Wcs(const double* p, double* q, bool) { return Same(p, q); }
bool acdbWcs2Ucs(const double* p, double* q, bool) { return Same(p, q); }
