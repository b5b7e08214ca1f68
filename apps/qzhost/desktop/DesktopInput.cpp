#include "apps/qzhost/desktop/DesktopInput.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "acdocman.h"
#include "apps/qzhost/words/Words.h"
#include "host/base/format.h"
#include "host/ed/point_text.h"
#include "host/base/plain_number.h"
#include "host/ed/document_imp.h"
#include "dbobjptr.h"
#include "host/ed/entity_grips.h"
#include "host/ed/entity_query.h"
#include "host/ed/prompts.h"
#include "host/ed/text_compare.h"
#include "host/mfc/window_system.h"
#include "rxmfcapi.h"

namespace app {

using host::Answer;
using host::SelectionAnswer;

namespace {

constexpr size_t kMostGripped = 100;  // entities with grips; of more only the outline is marked

// What the point is, in the user's language.
std::wstring Label(const Aim& aim) { return Tr(host::Narrow(aim.label).c_str()).toStdWString(); }

std::vector<AcGePoint3d> PlacesOfGrips(const std::vector<AcDbObjectId>& ids) {
    std::vector<AcGePoint3d> places;
    if (ids.size() > kMostGripped) return places;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) continue;
        for (const host::Grip& grip : host::GripsOf(*entity.object())) places.push_back(grip.at);
    }
    return places;
}

}  // namespace

void DesktopInput::SayLine(const std::wstring& line) {
    m_line.Output().Line(InLanguage(QString::fromStdWString(line)).toStdWString());
}

void DesktopInput::Wait(Kind kind) {
    m_line.Output().Finish();
    m_answer = Answer();
    m_selection = SelectionAnswer();
    m_isDone = m_isOver;
    m_takesOut = m_isAll = false;
    m_kind = kind;
    m_aid.Reset();
    m_picked.clear();
    m_corner.reset();
    m_view.SetPicked({});
    m_view.SetGrips({});
    m_view.SetPicking(kind != kText);
    if (onChange) onChange();
    while (!m_isDone) {
        host::WindowSystem::Get().DispatchPending();
        if (!m_isDone && !m_driver.Wait()) break;
        m_view.Refresh();
    }
    m_kind = kNothing;
    m_corner.reset();
    m_picked.clear();
    m_view.SetCorner({});
    m_view.SetPicked({});
    m_view.SetAim({});
    m_view.SetPicking(false);
    if (onChange) onChange();
}

void DesktopInput::SetPickFirst(std::vector<AcDbObjectId> ids) {
    if (curDoc() == nullptr) return;
    curDoc()->imp().pickFirst = std::move(ids);
    ShowPickFirst();
}

void DesktopInput::ShowPickFirst() {
    if (curDoc() == nullptr || IsAsking()) return;
    std::vector<AcDbObjectId>& picked = curDoc()->imp().pickFirst;
    picked.erase(
        std::remove_if(picked.begin(), picked.end(), [](AcDbObjectId id) { return id.isErased(); }),
        picked.end());
    m_view.SetPicked(picked);
    m_view.SetGrips(PlacesOfGrips(picked));
    if (onPicked) onPicked(picked);
}

void DesktopInput::PickAllFirst() {
    if (curDoc() != nullptr && !IsAsking())
        SetPickFirst(host::QueryEntities(*curDoc()->database(), host::QueryRules::Displayed()));
}

void DesktopInput::ForgetPickFirst() {
    m_corner.reset();
    m_view.SetCorner({});
    SetPickFirst({});
}

SelectionAnswer DesktopInput::Select() {
    Wait(kSelection);
    m_lastSelected = m_selection.kind == SelectionAnswer::kAll
                         ? host::QueryEntities(*curDoc()->database(), host::QueryRules::ModeAll())
                         : m_selection.entities;
    return m_selection;
}
Answer DesktopInput::Point(const host::PointRequest& request) {
    m_request = &request;
    Wait(kPoint);
    m_request = nullptr;
    // A selection and then a point, asked by a dialog: a tool and its centre.
    if (m_answer.kind == Answer::kGiven && !m_lastSelected.empty() && curDoc() != nullptr &&
        curDoc()->imp().activeCommands.empty() && onToolPicked)
        onToolPicked(m_lastSelected, m_answer.point);
    return m_answer;
}
Answer DesktopInput::Text(bool spacesAllowed) {
    m_takesBlanks = spacesAllowed;
    Wait(kText);
    return m_answer;
}

host::ClosingChoice DesktopInput::Closing(const std::vector<AcApDocument*>& documents) {
    return onClosing ? onClosing(documents) : host::ClosingChoice::kDiscard;
}
std::wstring DesktopInput::NameForSaving(const AcApDocument& document) {
    return onNameForSaving ? onNameForSaving(document) : std::wstring();
}

void DesktopInput::GiveUp() {
    m_isOver = true;
    Cancel();
}

bool DesktopInput::Cancel() {
    if (!IsAsking()) return false;
    m_answer.kind = Answer::kEscape;
    m_selection.kind = SelectionAnswer::kEscape;
    Done();
    return true;
}

bool DesktopInput::Escape() {
    if (Cancel()) return true;
    // A run may look for it in the queue.
    CWnd* const view = m_driver.IsInHostLoop() ? acedGetAcadDwgView() : nullptr;
    if (view != nullptr) view->PostMessage(WM_KEYDOWN, VK_ESCAPE);
    return false;
}

Aim DesktopInput::AimAt(const AcGePoint3d& pointer) {
    return m_aid.At(pointer, m_view.PickAperture(), Base(),
                    [this](const AcGePoint3d& at, double aperture) {
                        return m_view.SourcesNear(at, aperture);
                    });
}

void DesktopInput::Hover(const AcGePoint3d& point) {
    m_pointer = point;
    if (m_kind != kPoint) return;
    AimView shown;
    shown.aim = AimAt(point);
    shown.aim.label = Label(shown.aim);
    if (Base() != nullptr) shown.base = *Base();
    if (m_request->drag) shown.drag = m_request->drag(shown.aim.point);
    m_view.SetAim(std::move(shown));
}

bool DesktopInput::CycleSnap() {
    if (m_kind != kPoint) return false;
    m_aid.Cycle();
    Hover(m_pointer);
    return true;
}

bool DesktopInput::Click(const AcGePoint3d& point, bool takesOut) {
    if (m_kind == kSelection) {
        Pick(point, takesOut || m_takesOut);
        return true;
    }
    if (m_kind == kNothing && curDoc() != nullptr && curDoc()->isQuiescent()) {
        const AcGePoint3d* const grip = takesOut || m_corner ? nullptr : m_view.GripNear(point);
        if (grip != nullptr && onGrip) {
            onGrip(AcGePoint3d(*grip));
            return true;
        }
        m_picked = curDoc()->imp().pickFirst;
        Pick(point, takesOut);
        SetPickFirst(std::exchange(m_picked, {}));
        return true;
    }
    if (m_kind != kPoint) return false;
    const Aim aim = AimAt(point);
    m_answer.kind = Answer::kGiven;
    m_answer.point = aim.point;
    const bool isOnCentreLine = aim.snap && aim.snap->mode == host::kSnapCentreLine;
    m_line.Output().Line(
        L" < " + host::PointText(aim.point) +
        (aim.label.empty() ? L"" : L" (" + Label(aim) + L")") +
        (isOnCentreLine ? Tr(", y of the centre line").toStdWString() : std::wstring()));
    Done();
    return true;
}

void DesktopInput::Pick(const AcGePoint3d& point, bool takesOut) {
    std::vector<AcDbObjectId> ids;
    const double aperture = m_view.PickAperture();
    const QPointF at(point.x, point.y), off(aperture, aperture);
    if (m_corner) {
        const bool isCrossing = point.x < m_corner->x;
        const QRectF area = QRectF(QPointF(m_corner->x, m_corner->y), at).normalized();
        ids = host::QueryRectangleAmong(m_view.IdsNear(area), *m_corner, point, isCrossing);
        m_corner.reset();
    } else if (const AcDbObjectId id =
                   host::PickAmong(m_view.IdsNear(QRectF(at - off, at + off)), point, aperture);
               !id.isNull()) {
        ids = {id};
    } else {
        m_corner = point;
    }
    m_view.SetCorner(m_corner);
    if (m_corner) return;
    if (takesOut)
        TakeOut(ids);
    else
        Add(ids);
}

void DesktopInput::Add(const std::vector<AcDbObjectId>& ids) {
    std::unordered_set<AcDbObjectId> known(m_picked.begin(), m_picked.end());
    const bool isFirst = m_picked.empty();
    size_t duplicates = 0;
    for (const AcDbObjectId id : ids) {
        if (known.insert(id).second)
            m_picked.push_back(id);
        else
            ++duplicates;
    }
    std::wstring said = std::to_wstring(ids.size()) + L" found";
    if (duplicates > 0) said += L" (" + std::to_wstring(duplicates) + L" duplicate)";
    if (!isFirst) said += L", " + std::to_wstring(m_picked.size()) + L" total";
    SayLine(said);
    m_view.SetPicked(m_picked);
}

void DesktopInput::TakeOut(const std::vector<AcDbObjectId>& ids) {
    const std::unordered_set<AcDbObjectId> out(ids.begin(), ids.end());
    const size_t before = m_picked.size();
    m_picked.erase(std::remove_if(m_picked.begin(), m_picked.end(),
                                  [&](AcDbObjectId id) { return out.count(id) > 0; }),
                   m_picked.end());
    m_isAll = false;
    SayLine(std::to_wstring(ids.size()) + L" found, " + std::to_wstring(before - m_picked.size()) +
            L" removed, " + std::to_wstring(m_picked.size()) + L" total");
    m_view.SetPicked(m_picked);
}

void DesktopInput::EnterSelection(const std::wstring& text) {
    const std::wstring word = host::ToUpper(text);
    AcDbDatabase& database = *curDoc()->database();
    host::PointRequest corner;
    if (m_corner) corner.base = &*m_corner;
    Answer typed;
    if (word == L"ALL") {
        m_isAll = !m_takesOut;
        const auto ids = host::QueryEntities(database, host::QueryRules::ModeAll());
        m_takesOut ? TakeOut(ids) : Add(ids);
    } else if (word == L"P" || word == L"PREVIOUS") {
        m_takesOut ? TakeOut(curDoc()->imp().previousSelection)
                   : Add(curDoc()->imp().previousSelection);
    } else if (word == L"L" || word == L"LAST") {
        const auto ids = host::LastDisplayed(*curDoc());
        m_takesOut ? TakeOut(ids) : Add(ids);
    } else if (word == L"R" || word == L"REMOVE" || word == L"A" || word == L"ADD") {
        m_takesOut = word[0] == L'R';
        SayLine(m_takesOut ? L"Remove objects:" : L"Select objects:");
    } else if (host::ParseAnswer(text, corner, typed)) {
        Pick(typed.point, m_takesOut);
    } else {
        SayLine(L"Not a way to select: " + text +
                L"; pick, or type ALL, Previous, Last, Remove, Add or a point x,y.");
    }
}

void DesktopInput::EnterPoint(const std::wstring& text) {
    if (const auto modes = ParseSnapWord(text);
        modes && host::MatchKeyword(text, m_request->keywords).empty()) {
        m_aid.once = modes;
        m_line.Output().Line(L"of");
        Hover(m_pointer);
        return;
    }
    double distance = 0.0;
    if (host::ParseAnswer(text, *m_request, m_answer)) {
        Done();
    } else if (Base() != nullptr && host::ReadWholeNumber(text, distance)) {
        // A distance alone goes from the base to where the pointer shows.
        const AcGeVector3d out = AimAt(m_pointer).point - *Base();
        if (out.length() == 0.0) return;
        m_answer.kind = Answer::kGiven;
        m_answer.point = *Base() + out * (distance / out.length());
        Done();
    } else {
        SayLine(L"Not a point: " + text + L"; type x,y or @x,y or distance<angle, or click.");
    }
}

bool DesktopInput::Enter(const std::wstring& text) {
    if (!IsAsking()) return false;
    m_answer.text = text;
    m_answer.kind = text.empty() ? Answer::kEnter : Answer::kGiven;
    if (m_kind == kSelection && text.empty()) {
        m_selection.kind = m_isAll            ? SelectionAnswer::kAll
                           : m_picked.empty() ? SelectionAnswer::kEnter
                                              : SelectionAnswer::kEntities;
        m_selection.entities = m_picked;
    } else if (m_kind == kSelection) {
        EnterSelection(text);
        return true;
    } else if (m_kind == kPoint && !text.empty()) {
        EnterPoint(text);
        return true;
    }
    Done();
    return true;
}

}  // namespace app
