// ZOOM, PAN and REGEN.
#include <algorithm>

#include "aced.h"
#include "dbobjptr.h"
#include "host/base/plain_number.h"
#include "host/ed/command_tools.h"
#include "host/ed/entity_query.h"
#include "host/ed/session.h"

namespace host {
namespace {

constexpr size_t kMostPrevious = 10;
constexpr double kMargin = 1.05;  // around what is zoomed to

bool ExtentsOf(const std::vector<AcDbObjectId>& ids, AcDbExtents& all) {
    bool hasAny = false;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbExtents box;
        if (entity.openStatus() != Acad::eOk || entity->getGeomExtents(box) != Acad::eOk) continue;
        all.addExt(box);
        hasAny = true;
    }
    return hasAny;
}

void Show(DocumentImp& imp, const AcGePoint2d& centre, double height) {
    imp.previousViews.push_back(imp.view);
    if (imp.previousViews.size() > kMostPrevious)
        imp.previousViews.erase(imp.previousViews.begin());
    const double shape = imp.view.height > 0.0 ? imp.view.width / imp.view.height : 1.0;
    imp.view.center = centre;
    imp.view.height = height;
    imp.view.width = height * shape;
    acedUpdateDisplay();
}

CommandEnd ShowBox(DocumentImp& imp, const AcGePoint3d& a, const AcGePoint3d& b, double margin) {
    const double wide = std::fabs(b.x - a.x), high = std::fabs(b.y - a.y);
    const double shape = imp.view.height > 0.0 ? imp.view.width / imp.view.height : 1.0;
    const double height = margin * (std::max)(high, shape > 0.0 ? wide / shape : wide);
    Show(imp, AcGePoint2d((a.x + b.x) / 2, (a.y + b.y) / 2), height > 0.0 ? height : 1.0);
    return CommandEnd::kEnded;
}

CommandEnd ShowEntities(DocumentImp& imp, const std::vector<AcDbObjectId>& ids) {
    AcDbExtents all;
    if (ExtentsOf(ids, all)) return ShowBox(imp, all.minPoint(), all.maxPoint(), kMargin);
    Say(L"There is nothing to zoom to.");
    return CommandEnd::kFailed;
}

// "2": of the whole drawing; "2x": of what is shown now.
CommandEnd ZoomByFactor(AcApDocument& document, const std::wstring& text) {
    DocumentImp& imp = document.imp();
    const bool isRelative = !text.empty() && (text.back() == L'X' || text.back() == L'x');
    double factor = 0.0;
    if (!ReadWholeNumber(isRelative ? text.substr(0, text.size() - 1) : text, factor) ||
        !(factor > 0.0)) {
        Say(L"Invalid scale: " + text);
        return CommandEnd::kFailed;
    }
    if (!isRelative) {
        AcDbExtents all;
        if (!ExtentsOf(QueryEntities(*document.database(), QueryRules::Displayed()), all))
            return CommandEnd::kFailed;
        ShowBox(imp, all.minPoint(), all.maxPoint(), kMargin / factor);
        return CommandEnd::kEnded;
    }
    Show(imp, imp.view.center, imp.view.height / factor);
    return CommandEnd::kEnded;
}

CommandEnd ZoomAbout(DocumentImp& imp) {
    const Answer centre = AskPoint(L"\nSpecify center point: ");
    if (centre.kind != Answer::kGiven) return CommandEnd::kCancelled;
    const Answer height = AskText(L"\nEnter height of the view: ", false);
    double high = imp.view.height;
    if (height.kind == Answer::kEscape) return CommandEnd::kCancelled;
    if (height.kind == Answer::kGiven && (!ReadWholeNumber(height.text, high) || !(high > 0.0))) {
        Say(L"Invalid height: " + height.text);
        return CommandEnd::kFailed;
    }
    Show(imp, AcGePoint2d(centre.point.x, centre.point.y), high);
    return CommandEnd::kEnded;
}

CommandEnd ZoomWindow(DocumentImp& imp, const AcGePoint3d& corner) {
    PointRequest request;
    request.base = &corner;
    request.drag = [&](const AcGePoint3d& at) {
        const AcGePoint3d b(at.x, corner.y, 0), d(corner.x, at.y, 0);
        return std::vector<Piece>{{corner, b}, {b, at}, {at, d}, {d, corner}};
    };
    const Answer other = AskPoint(L"\nSpecify opposite corner: ", request);
    if (other.kind != Answer::kGiven) return CommandEnd::kCancelled;
    return ShowBox(imp, corner, other.point, 1.0);
}

}  // namespace

CommandEnd Zoom(AcApDocument* document) {
    DocumentImp& imp = document->imp();
    PointRequest request;
    request.keywords = {L"All", L"Center", L"Extents", L"Previous", L"Scale", L"Window", L"Object"};
    request.takesText = true;
    const Answer answer = AskPoint(
        L"\nSpecify corner of window, enter a scale factor (nX), or "
        L"[All/Center/Extents/Previous/Scale/Window/Object] <Extents>: ",
        request);
    if (answer.kind == Answer::kEscape) return CommandEnd::kCancelled;
    if (answer.kind == Answer::kGiven) return ZoomWindow(imp, answer.point);
    const std::wstring word = answer.kind == Answer::kEnter ? L"EXTENTS" : answer.text;
    if (word == L"ALL" || word == L"EXTENTS")
        return ShowEntities(imp, QueryEntities(*document->database(), QueryRules::Displayed()));
    if (word == L"CENTER") return ZoomAbout(imp);
    if (word == L"OBJECT") {
        const SelectionAnswer picked = AskSelection(L"\nSelect objects: ");
        return picked.entities.empty() ? CommandEnd::kCancelled
                                       : ShowEntities(imp, picked.entities);
    }
    if (word == L"WINDOW") {
        const Answer corner = AskPoint(L"\nSpecify first corner: ");
        return corner.kind == Answer::kGiven ? ZoomWindow(imp, corner.point)
                                             : CommandEnd::kCancelled;
    }
    if (word == L"PREVIOUS") {
        if (imp.previousViews.empty()) {
            Say(L"No previous view.");
            return CommandEnd::kFailed;
        }
        imp.view = imp.previousViews.back();
        imp.previousViews.pop_back();
        acedUpdateDisplay();
        return CommandEnd::kEnded;
    }
    if (word != L"SCALE") return ZoomByFactor(*document, word);
    const Answer factor = AskText(L"\nEnter a scale factor (n or nX): ", false);
    return factor.kind == Answer::kGiven ? ZoomByFactor(*document, factor.text)
                                         : CommandEnd::kCancelled;
}

CommandEnd Pan(AcApDocument* document) {
    DocumentImp& imp = document->imp();
    const Answer from = AskPoint(L"\nSpecify base point or displacement: ");
    if (from.kind != Answer::kGiven) return CommandEnd::kCancelled;
    PointRequest request;
    request.base = &from.point;
    const Answer to = AskPoint(L"\nSpecify second point: ", request);
    if (to.kind != Answer::kGiven && to.kind != Answer::kEnter) return CommandEnd::kCancelled;
    const AcGeVector3d step =
        to.kind == Answer::kEnter ? from.point.asVector() : to.point - from.point;
    Show(imp, AcGePoint2d(imp.view.center.x - step.x, imp.view.center.y - step.y), imp.view.height);
    return CommandEnd::kEnded;
}

CommandEnd Regenerate(AcApDocument*) {
    Say(L"Regenerating model.");
    acedUpdateDisplay();
    return CommandEnd::kEnded;
}

}  // namespace host
