#include "apps/qzhost/script/ScriptRunner.h"

#include <utility>

#include "apps/qzhost/session/HostProgram.h"
#include "arxHeaders.h"
#include "host/ed/prompts.h"
#include "host/ed/session.h"
#include "host/base/format.h"
#include "host/mfc/window_system.h"

namespace app {

using host::Answer;
using host::SelectionAnswer;

ScriptRunner::ScriptRunner(std::string name, std::vector<ScriptLine> lines, Transcript& transcript)
    : m_name(std::move(name)), m_lines(std::move(lines)), m_transcript(transcript) {
    host::Session::Get().SetInput(this);
    host::WindowSystem::Get().SetAnswers(this);
    host::WindowSystem::Get().SetReport([this](const std::wstring& line) { Fail(nullptr, line); });
}

ScriptRunner::~ScriptRunner() {
    host::Session::Get().SetInput(nullptr);
    host::WindowSystem::Get().SetAnswers(nullptr);
    host::WindowSystem::Get().SetReport([](const std::wstring&) {});
}

// Null: the last line that was taken.
void ScriptRunner::Fail(const ScriptLine* line, const std::wstring& reason) {
    if (!m_failure.empty()) return;
    if (line == nullptr && m_next > 0) line = &m_lines[m_next - 1];
    const int number = line == nullptr ? 0 : line->number;
    m_failure = m_name + ":" + std::to_string(number) + ": " + host::Narrow(reason);
}

bool ScriptRunner::Run() {
    while (m_failure.empty() && m_next < m_lines.size()) {
        const ScriptLine& line = m_lines[m_next++];
        RunLine(line);
        if (line.Verb() == L"later") continue;
        Settle();
        for (const std::wstring& left : DumpLeftovers())
            if (left != L"none") Fail(&line, L"left behind: " + left);
    }
    return m_failure.empty();
}

void ScriptRunner::RunLine(const ScriptLine& line) {
    const Action* const action = FindAction(line.Verb());
    if (IsAnswer(line.Verb())) return Fail(&line, L"nothing asks for this: " + line.text);
    if (action == nullptr) return Fail(&line, L"unknown line: " + line.text);
    const size_t given = line.words.size() - 1;
    if (given < action->fewest || given > action->most)
        return Fail(&line, L"too " + std::wstring(given < action->fewest ? L"few" : L"many") +
                               L" words: " + line.text);
    m_transcript.Line(L"> " + line.text);
    (this->*action->run)(line);
    const std::wstring unsaved = host::Session::Get().TakeSaveFailure();
    if (!unsaved.empty()) Fail(&line, unsaved);
}

const ScriptLine* ScriptRunner::TakeAnswer(const wchar_t* verb) {
    // While a person thinks, windows act: what was put off until later comes now.
    host::WindowSystem::Get().DispatchPending();
    while (m_failure.empty()) {
        if (m_next == m_lines.size()) {
            Fail(nullptr, L"the script ends at a prompt that needs a line \"" + std::wstring(verb) +
                              L" ...\"");
            break;
        }
        const ScriptLine& line = m_lines[m_next];
        const Action* const action = FindAction(line.Verb());
        if (line.Verb() == verb || line.Verb() == L"escape") {
            ++m_next;
            return &line;
        }
        if (action == nullptr || !action->looksOnly) {
            Fail(&line, L"the prompt is not answered: it needs a line \"" + std::wstring(verb) +
                            L" ...\", not: " + line.text);
            break;
        }
        ++m_next;
        RunLine(line);
    }
    m_transcript.Finish();
    return nullptr;
}

// Keys go to whoever has the focus: a dialog that is still there while it prompts takes them, and
// Enter presses its button again.
void ScriptRunner::CheckKeys() {
    const CWnd* const focus = CWnd::GetFocus();
    if (focus == nullptr) return;
    const HWND top = focus->GetTopLevelParent()->GetSafeHwnd();
    for (const host::LiveDialog& dialog : host::LiveDialogs())
        if (dialog.handle == top)
            Fail(nullptr, L"keys for this prompt go to dialog " + std::to_wstring(dialog.id));
}

SelectionAnswer ScriptRunner::Select() {
    SelectionAnswer answer;
    CheckKeys();
    const ScriptLine* const line = TakeAnswer(L"select");
    if (line == nullptr) return answer;
    m_transcript.Answer(L" < " + line->text);
    answer.kind = SelectionAnswer::kEscape;
    if (line->Verb() == L"select" && !ParseSelection(*line, answer))
        Fail(line, L"not a selection: " + line->text);
    return answer;
}

bool ScriptRunner::ParseSelection(const ScriptLine& line, SelectionAnswer& answer) {
    const std::vector<std::wstring>& words = line.words;
    if (words.size() == 2 && (words[1] == L"all" || words[1] == L"none")) {
        answer.kind = words[1] == L"all" ? SelectionAnswer::kAll : SelectionAnswer::kEnter;
        return true;
    }
    if (words.size() == 4 && (words[1] == L"window" || words[1] == L"crossing")) {
        answer.kind = words[1] == L"window" ? SelectionAnswer::kWindow : SelectionAnswer::kCrossing;
        host::Answer corner;
        if (!host::ParseAnswer(words[2], {}, corner)) return false;
        answer.corner1 = corner.point;
        host::PointRequest second;
        second.base = &answer.corner1;
        if (!host::ParseAnswer(words[3], second, corner)) return false;
        answer.corner2 = corner.point;
        return true;
    }
    if (words.size() < 3 || words[1] != L"handles") return false;
    answer.kind = SelectionAnswer::kEntities;
    for (size_t i = 2; i < words.size(); ++i) {
        AcDbObjectId id;
        if (curDoc()->database()->getAcDbObjectId(id, false, AcDbHandle(words[i].c_str())) !=
            Acad::eOk)
            return false;
        answer.entities.push_back(id);
    }
    return true;
}

Answer ScriptRunner::Point(const host::PointRequest& request) {
    Answer answer;
    CheckKeys();
    const ScriptLine* const line = TakeAnswer(L"point");
    if (line == nullptr) return answer;
    m_transcript.Answer(L" < " + line->text);
    answer.kind = Answer::kEscape;
    if (line->Verb() != L"point") return answer;
    if (line->Rest(1) == L"none") {
        answer.kind = Answer::kEnter;
    } else if (!host::ParseAnswer(line->Rest(1), request, answer)) {
        Fail(line, L"not a point: " + line->text);
        answer.kind = Answer::kEscape;
    }
    return answer;
}

Answer ScriptRunner::Text(bool) {
    Answer answer;
    CheckKeys();
    const ScriptLine* const line = TakeAnswer(L"string");
    if (line == nullptr) return answer;
    m_transcript.Answer(L" < " + line->text);
    answer.text = line->Rest(1);
    const bool isCancelled = line->Verb() != L"string" || answer.text == L"none";
    answer.kind = isCancelled           ? Answer::kEscape
                  : answer.text.empty() ? Answer::kEnter
                                        : Answer::kGiven;
    return answer;
}

void ScriptRunner::Print(const std::wstring& text) { m_transcript.Print(text); }

void ScriptRunner::UpdateDisplay() {
    if (onUpdateDisplay) onUpdateDisplay();
}

host::ClosingChoice ScriptRunner::Closing(const std::vector<AcApDocument*>& documents) {
    for (const AcApDocument* const document : documents)
        m_transcript.Line(L"box: Save changes to " + std::wstring(document->docTitle()) + L"?");
    return host::ClosingChoice::kDiscard;
}

int ScriptRunner::box(const host::BoxRequest& request) {
    m_transcript.Line(L"box: " + request.text);
    return IDOK;
}

std::optional<std::wstring> ScriptRunner::TakePath(const wchar_t* verb,
                                                   const host::ChooserRequest& request) {
    m_transcript.Line(L"chooser: " + request.title +
                      (request.start.empty() ? L"" : L" [" + request.start + L"]"));
    const ScriptLine* const line = TakeAnswer(verb);
    if (line == nullptr) return {};
    m_transcript.Line(L" < " + line->text);
    if (line->Verb() != verb || line->Rest(1) == L"none") return {};
    return line->Rest(1);
}

std::optional<std::wstring> ScriptRunner::nextFile(const host::ChooserRequest& request) {
    return TakePath(L"file", request);
}
std::optional<std::wstring> ScriptRunner::nextFolder(const host::ChooserRequest& request) {
    return TakePath(L"folder", request);
}

bool ScriptRunner::act() {
    if (!m_failure.empty()) return false;
    if (m_next == m_lines.size()) {
        Fail(nullptr, L"the script ends while a dialog waits for an answer");
        return false;
    }
    const ScriptLine& line = m_lines[m_next++];
    RunLine(line);
    return m_failure.empty();
}

void ScriptRunner::updated() {
    const std::vector<ScriptLine> waiting = std::exchange(m_waiting, {});
    for (const ScriptLine& line : waiting) PostLater(line);
}

}  // namespace app
