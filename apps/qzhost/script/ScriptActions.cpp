// What each word of the script language does.
#include <cwchar>
#include <utility>

#include "apps/qzhost/session/HostProgram.h"
#include "apps/qzhost/script/ScriptRunner.h"
#include "arxHeaders.h"
#include "host/ed/session.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/window_system.h"

namespace app {
namespace {

constexpr size_t kAnyNumber = 1000000;

// Words that answer; what they are taken for, the prompts say.
const wchar_t* const kAnswers[] = {L"select", L"point", L"string", L"file", L"folder", L"escape"};

struct KeyName {
    const wchar_t* name;
    UINT key;
};
const KeyName kKeys[] = {{L"enter", VK_RETURN}, {L"escape", VK_ESCAPE}, {L"tab", VK_TAB}};

std::wstring Joined(const std::vector<std::wstring>& texts) {
    std::wstring line;
    for (const std::wstring& text : texts) line += (line.empty() ? L"" : L" | ") + text;
    return line;
}

}  // namespace

const ScriptRunner::Action ScriptRunner::kActions[] = {
    {L"open", 1, kAnyNumber, false, &ScriptRunner::DoOpen},
    {L"new", 0, 0, false, &ScriptRunner::DoNew},
    {L"save", 0, kAnyNumber, false, &ScriptRunner::DoSave},
    {L"activate", 1, 1, false, &ScriptRunner::DoActivate},
    {L"close", 0, 0, false, &ScriptRunner::DoClose},
    {L"command", 1, kAnyNumber, false, &ScriptRunner::DoCommand},
    {L"press", 2, 2, false, &ScriptRunner::DoPress},
    {L"set", 2, kAnyNumber, false, &ScriptRunner::DoSet},
    {L"get", 2, 2, true, &ScriptRunner::DoGet},
    {L"rows", 2, 2, true, &ScriptRunner::DoRows},
    {L"select-rows", 2, kAnyNumber, false, &ScriptRunner::DoSelectRows},
    {L"double-click", 3, 3, false, &ScriptRunner::DoDoubleClick},
    {L"menu", 3, kAnyNumber, false, &ScriptRunner::DoMenu},
    {L"scroll", 3, 3, false, &ScriptRunner::DoScroll},
    {L"top-row", 2, 2, true, &ScriptRunner::DoTopRow},
    {L"resize", 3, 3, false, &ScriptRunner::DoResize},
    {L"place", 2, 2, true, &ScriptRunner::DoPlace},
    {L"close-dialog", 1, 1, false, &ScriptRunner::DoCloseDialog},
    {L"cancel-dialog", 1, 1, false, &ScriptRunner::DoCancelDialog},
    {L"key", 2, 2, false, &ScriptRunner::DoKey},
    {L"ahead", 1, 1, true, &ScriptRunner::DoAhead},
    {L"later", 1, kAnyNumber, false, &ScriptRunner::DoLater},
    {L"dump", 1, 1, true, &ScriptRunner::DoDump},
    {L"screenshot", 1, kAnyNumber, true, &ScriptRunner::DoScreenshot},
};

const ScriptRunner::Action* ScriptRunner::FindAction(const std::wstring& verb) {
    for (const Action& action : kActions)
        if (verb == action.verb) return &action;
    return nullptr;
}

bool ScriptRunner::IsAnswer(const std::wstring& verb) {
    for (const wchar_t* const answer : kAnswers)
        if (verb == answer) return true;
    return false;
}

bool ScriptRunner::CheckDocument(const ScriptLine& line) {
    if (curDoc() == nullptr) Fail(&line, L"no drawing is open: " + line.text);
    return curDoc() != nullptr;
}

void ScriptRunner::Check(const ScriptLine& line, const host::ProbeResult& result) {
    if (!result) Fail(&line, result.reason);
}

bool ScriptRunner::ParseNumbers(const ScriptLine& line, size_t from, std::vector<int>& numbers) {
    for (size_t i = from; i < line.words.size(); ++i) {
        wchar_t* end = nullptr;
        const std::wstring& word = line.words[i];
        const int number = static_cast<int>(std::wcstol(word.c_str(), &end, 10));
        if (*end != 0 || number < 0 || word.size() > 9) {
            Fail(&line, L"not a number: " + word);
            return false;
        }
        numbers.push_back(number);
    }
    return true;
}

void ScriptRunner::DoOpen(const ScriptLine& line) {
    if (host::Session::Get().Open(line.Rest(1)) == nullptr)
        Fail(&line, L"cannot be opened: " + line.Rest(1));
}

void ScriptRunner::DoNew(const ScriptLine&) { host::Session::Get().New(); }

void ScriptRunner::DoSave(const ScriptLine& line) {
    if (!CheckDocument(line)) return;
    const std::wstring path = line.Rest(1);
    host::Session::Get().Execute(path.empty() ? L"_.QSAVE" : L"_.SAVEAS\n" + path);
}

void ScriptRunner::DoActivate(const ScriptLine& line) {
    std::vector<int> number;
    if (!ParseNumbers(line, 1, number)) return;
    const auto& documents = host::Session::Get().Documents();
    if (number[0] < 1 || static_cast<size_t>(number[0]) > documents.size())
        return Fail(&line, L"there is no document " + line.words[1]);
    host::Session::Get().MakeCurrent(documents[static_cast<size_t>(number[0]) - 1].get());
}

void ScriptRunner::DoClose(const ScriptLine& line) {
    if (CheckDocument(line) && host::Session::Get().MayClose({curDoc()}))
        host::Session::Get().Close(*curDoc());
}

// What is typed as a command goes to the drawing, and so do the answers to its prompts.
void ScriptRunner::DoCommand(const ScriptLine& line) {
    if (CWnd* const view = acedGetAcadDwgView()) view->SetFocus();
    if (!host::Session::Get().Execute(line.Rest(1)))
        Fail(&line, L"there is no such command: " + line.text);
}

void ScriptRunner::DoPress(const ScriptLine& line) {
    std::vector<int> ids;
    if (ParseNumbers(line, 1, ids)) Check(line, host::PressControl(ids[0], ids[1]));
}

void ScriptRunner::DoSet(const ScriptLine& line) {
    ScriptLine target = line;
    target.words.resize(3);
    std::vector<int> ids;
    if (ParseNumbers(target, 1, ids)) Check(line, host::SetControl(ids[0], ids[1], line.Rest(3)));
}

void ScriptRunner::DoGet(const ScriptLine& line) {
    std::vector<int> ids;
    std::wstring value;
    if (!ParseNumbers(line, 1, ids)) return;
    Check(line, host::GetControl(ids[0], ids[1], value));
    m_transcript.Line(value.empty() ? L"(empty)" : value);
}

void ScriptRunner::DoRows(const ScriptLine& line) {
    std::vector<int> ids, selected;
    std::vector<std::wstring> headers;
    std::vector<std::vector<std::wstring>> rows;
    if (!ParseNumbers(line, 1, ids)) return;
    Check(line, host::ListHeaders(ids[0], ids[1], headers));
    Check(line, host::ListRows(ids[0], ids[1], rows));
    Check(line, host::SelectedRows(ids[0], ids[1], selected));
    m_transcript.Line(L"  " + Joined(headers));
    for (size_t i = 0; i < rows.size(); ++i) {
        bool isSelected = false;
        for (const int row : selected) isSelected |= static_cast<size_t>(row) == i + 1;
        m_transcript.Line((isSelected ? L"* " : L"  ") + Joined(rows[i]));
    }
}

void ScriptRunner::DoSelectRows(const ScriptLine& line) {
    std::vector<int> numbers;
    if (!ParseNumbers(line, 1, numbers)) return;
    const std::vector<int> rows(numbers.begin() + 2, numbers.end());
    Check(line, host::SelectRows(numbers[0], numbers[1], rows));
}

void ScriptRunner::DoDoubleClick(const ScriptLine& line) {
    std::vector<int> ids;
    if (ParseNumbers(line, 1, ids)) Check(line, host::DoubleClickRow(ids[0], ids[1], ids[2]));
}

void ScriptRunner::DoMenu(const ScriptLine& line) {
    ScriptLine target = line;
    target.words.resize(4);
    std::vector<int> ids;
    if (!ParseNumbers(target, 1, ids)) return;
    m_menuChoice = line.Rest(4);
    m_isMenuAwaited = true;
    Check(line, host::RightClickRow(ids[0], ids[1], ids[2]));
    if (std::exchange(m_isMenuAwaited, false)) Fail(&line, L"no menu came: " + line.text);
}

// Without a choice the items are written down, and none is chosen.
int ScriptRunner::menu(const host::MenuRequest& request) {
    if (!std::exchange(m_isMenuAwaited, false)) {
        Fail(nullptr, L"a menu came that no line has opened");
        return 0;
    }
    for (const host::MenuItem& item : request.items) {
        if (m_menuChoice.empty())
            m_transcript.Line(item.id == 0 ? L"menu: -"
                                           : L"menu: " + item.text +
                                                 (item.isEnabled ? L"" : L" (disabled)"));
        else if (item.id != 0 && item.isEnabled && item.text == m_menuChoice)
            return item.id;
    }
    if (!m_menuChoice.empty()) Fail(nullptr, L"the menu does not offer " + m_menuChoice);
    return 0;
}

void ScriptRunner::DoScroll(const ScriptLine& line) {
    std::vector<int> ids;
    if (ParseNumbers(line, 1, ids)) Check(line, host::ScrollToRow(ids[0], ids[1], ids[2]));
}

void ScriptRunner::DoTopRow(const ScriptLine& line) {
    std::vector<int> ids;
    int row = 0;
    if (!ParseNumbers(line, 1, ids)) return;
    Check(line, host::TopRow(ids[0], ids[1], row));
    m_transcript.Line(std::to_wstring(row));
}

void ScriptRunner::DoResize(const ScriptLine& line) {
    std::vector<int> ids;
    if (ParseNumbers(line, 1, ids)) Check(line, host::ResizeDialog(ids[0], ids[1], ids[2]));
}

void ScriptRunner::DoPlace(const ScriptLine& line) {
    std::vector<int> ids;
    RECT place = {};
    if (!ParseNumbers(line, 1, ids)) return;
    Check(line, host::PlaceOf(ids[0], ids[1], place));
    m_transcript.Line(std::to_wstring(place.left) + L" " + std::to_wstring(place.top) + L" " +
                      std::to_wstring(place.right - place.left) + L" " +
                      std::to_wstring(place.bottom - place.top));
}

void ScriptRunner::DoCloseDialog(const ScriptLine& line) {
    std::vector<int> id;
    if (ParseNumbers(line, 1, id)) Check(line, host::CloseDialog(id[0]));
}

void ScriptRunner::DoCancelDialog(const ScriptLine& line) {
    std::vector<int> id;
    if (ParseNumbers(line, 1, id)) Check(line, host::CancelDialog(id[0]));
}

void ScriptRunner::DoKey(const ScriptLine& line) {
    ScriptLine target = line;
    target.words.resize(2);
    std::vector<int> id;
    if (!ParseNumbers(target, 1, id)) return;
    for (const KeyName& key : kKeys)
        if (line.words[2] == key.name) return Check(line, host::TypeKey(id[0], key.key));
    Fail(&line, L"unknown key: " + line.words[2]);
}

// A key that is pressed before anybody looks for it: it waits in the queue of window messages.
void ScriptRunner::DoAhead(const ScriptLine& line) {
    CWnd* const view = acedGetAcadDwgView();
    for (const KeyName& key : kKeys)
        if (view != nullptr && line.words[1] == key.name) {
            view->PostMessage(WM_KEYDOWN, key.key);
            return;
        }
    Fail(&line, L"unknown key: " + line.words[1]);
}

// A click that comes while a long run is going on: it waits in the queue of window messages until
// the run looks there. What a later line puts off again waits until the run has shown how far it
// is.
void ScriptRunner::DoLater(const ScriptLine& line) {
    const std::optional<ScriptLine> inner = InnerLine(line);
    if (!inner) return Fail(&line, L"nothing to do later: " + line.text);
    if (m_isLater)
        m_waiting.push_back(*inner);
    else
        PostLater(*inner);
}

void ScriptRunner::PostLater(const ScriptLine& line) {
    CWnd* const frame = acedGetAcadFrame();
    if (frame == nullptr) return Fail(&line, L"the windows are gone: " + line.text);
    host::WindowSystem::Get().PostInput(frame->GetSafeHwnd(), [this, line] {
        const bool before = std::exchange(m_isLater, true);
        RunLine(line);
        m_isLater = before;
    });
}

void ScriptRunner::DoDump(const ScriptLine& line) {
    const std::wstring& what = line.words[1];
    Lines lines;
    if (what == L"documents") {
        lines = DumpDocuments();
    } else if (what == L"open-objects") {
        lines = DumpLeftovers();
    } else if (what == L"highlighted") {
        lines = DumpHighlighted();
    } else if (what == L"focus") {
        const CWnd* const focus = CWnd::GetFocus();
        const CWnd* const top = focus == nullptr ? nullptr : focus->GetTopLevelParent();
        lines.push_back(top == nullptr ? L"nowhere"
                        : top == acedGetAcadFrame() || focus == acedGetAcadDwgView()
                            ? L"drawing"
                            : L"control " + std::to_wstring(focus->GetDlgCtrlID()));
    } else if (what == L"dialogs") {
        lines = DumpDialogs();
    } else if (what == L"layers" || what == L"entities") {
        if (!CheckDocument(line)) return;
        AcDbDatabase& database = *curDoc()->database();
        lines = what == L"layers" ? DumpLayers(database) : DumpEntities(database);
    } else {
        return Fail(&line, L"nothing of that name can be dumped: " + what);
    }
    for (const std::wstring& text : lines) m_transcript.Line(text);
}

void ScriptRunner::DoScreenshot(const ScriptLine& line) {
    UpdateDisplay();
    Check(line, host::SaveScreenshot(line.Rest(1)));
}

}  // namespace app
