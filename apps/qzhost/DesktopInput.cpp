#include "apps/qzhost/DesktopInput.h"

#include <algorithm>
#include <cwctype>

#include "acdocman.h"
#include "host/ed/entity_query.h"
#include "host/ed/prompts.h"
#include "host/mfc/window_system.h"

namespace app {

using host::Answer;
using host::SelectionAnswer;

void DesktopInput::Wait(Kind kind) {
    m_line.Output().Finish();
    m_answer = Answer();
    m_selection = SelectionAnswer();
    m_isDone = m_isOver;
    m_kind = kind;
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
    m_view.SetPicking(false);
    if (onChange) onChange();
}

SelectionAnswer DesktopInput::Select() {
    Wait(kSelection);
    return m_selection;
}
Answer DesktopInput::Point(const AcGePoint3d*) {
    Wait(kPoint);
    return m_answer;
}
Answer DesktopInput::Text(bool) {
    Wait(kText);
    return m_answer;
}

void DesktopInput::GiveUp() {
    m_isOver = true;
    Escape();
}

bool DesktopInput::Escape() {
    if (!IsAsking()) return false;
    m_answer.kind = Answer::kEscape;
    m_selection.kind = SelectionAnswer::kEscape;
    Done();
    return true;
}

bool DesktopInput::Click(const AcGePoint3d& point) {
    if (m_kind == kSelection) {
        Pick(point);
        return true;
    }
    if (m_kind != kPoint) return false;
    m_answer.kind = Answer::kGiven;
    m_answer.point = point;
    Done();
    return true;
}

void DesktopInput::Pick(const AcGePoint3d& point) {
    AcDbDatabase& database = *curDoc()->database();
    if (m_corner) {
        const bool isCrossing = point.x < m_corner->x;
        const AcGePoint3d corner = *m_corner;
        m_corner.reset();
        Add(host::QueryRectangle(database, corner, point, isCrossing));
    } else if (const AcDbObjectId id = host::PickAt(database, point, m_view.PickAperture());
               !id.isNull()) {
        Add({id});
    } else {
        m_corner = point;
    }
    m_view.SetCorner(m_corner);
}

void DesktopInput::Add(const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids)
        if (std::find(m_picked.begin(), m_picked.end(), id) == m_picked.end())
            m_picked.push_back(id);
    m_line.Output().Line(std::to_wstring(ids.size()) + L" found, " +
                         std::to_wstring(m_picked.size()) + L" in all; Enter ends the selection.");
    m_view.SetPicked(m_picked);
}

bool DesktopInput::Enter(const std::wstring& text) {
    if (!IsAsking()) return false;
    m_answer.text = text;
    m_answer.kind = text.empty() ? Answer::kEnter : Answer::kGiven;
    std::wstring word;
    for (const wchar_t c : text) word += static_cast<wchar_t>(std::towlower(c));
    if (m_kind == kSelection && word == L"all") {
        m_selection.kind = SelectionAnswer::kAll;
    } else if (m_kind == kSelection && text.empty()) {
        m_selection.kind = m_picked.empty() ? SelectionAnswer::kEnter : SelectionAnswer::kEntities;
        m_selection.entities = m_picked;
    } else if (m_kind != kText && !text.empty()) {
        AcGePoint3d point;
        if (host::ParsePoint(text, point)) return Click(point);
        m_line.Output().Line(L"Neither a point x,y nor a way to select: " + text);
        return true;
    }
    Done();
    return true;
}

}  // namespace app
