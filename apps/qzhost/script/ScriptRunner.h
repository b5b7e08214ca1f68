// Runs a script in place of a person: its actions one after the other, its answers whenever a
// prompt, a chooser or a modal dialog asks.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apps/qzhost/script/ScriptFile.h"
#include "apps/qzhost/session/Transcript.h"
#include "host/ed/user_input.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/user_answers.h"

namespace app {

// Answers prompts and dialogs for its own life.
class ScriptRunner : public host::UserInput, public host::UserAnswers {
public:
    // name  of the script, for messages
    ScriptRunner(std::string name, std::vector<ScriptLine> lines, Transcript& transcript);
    ~ScriptRunner() override;
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;

    // Runs every line; stops at the first that cannot be done, at a prompt that the next line does
    // not answer, and at an action that leaves objects open or locks held. True when the script
    // came to its end.
    bool Run();
    // "NAME:LINE: reason"; empty when nothing failed.
    const std::string& Failure() const { return m_failure; }

    // Called before a picture is taken and when the host asks for a repaint.
    std::function<void()> onUpdateDisplay;

    // host::UserInput
    host::SelectionAnswer Select() override;
    host::Answer Point(const host::PointRequest& request) override;
    host::Answer Text(bool spacesAllowed) override;
    void Print(const std::wstring& text) override;
    void UpdateDisplay() override;
    // Written down and answered with no: a script saves by a line of its own.
    host::ClosingChoice Closing(const std::vector<AcApDocument*>& documents) override;

    // host::UserAnswers
    int box(const host::BoxRequest& request) override;
    int menu(const host::MenuRequest& request) override;
    std::optional<std::wstring> nextFile(const host::ChooserRequest& request) override;
    std::optional<std::wstring> nextFolder(const host::ChooserRequest& request) override;
    bool act() override;
    void updated() override;

private:
    // One word of the language that does something (ScriptActions.cpp).
    struct Action {
        const wchar_t* verb;
        size_t fewest, most;  // words behind the verb
        bool looksOnly;       // changes nothing: may stand between a prompt and its answer
        void (ScriptRunner::*run)(const ScriptLine& line);
    };
    static const Action kActions[];
    static const Action* FindAction(const std::wstring& verb);
    static bool IsAnswer(const std::wstring& verb);

    void RunLine(const ScriptLine& line);
    void PostLater(const ScriptLine& line);
    void Fail(const ScriptLine* line, const std::wstring& reason);
    // The line that answers; null after a failure. Lines that only look are run on the way.
    const ScriptLine* TakeAnswer(const wchar_t* verb);
    std::optional<std::wstring> TakePath(const wchar_t* verb, const host::ChooserRequest& request);
    bool ParseSelection(const ScriptLine& line, host::SelectionAnswer& answer);
    void CheckKeys();
    bool CheckDocument(const ScriptLine& line);
    void Check(const ScriptLine& line, const host::ProbeResult& result);
    bool ParseNumbers(const ScriptLine& line, size_t from, std::vector<int>& numbers);

    void DoOpen(const ScriptLine& line);
    void DoNew(const ScriptLine& line);
    void DoSave(const ScriptLine& line);
    void DoActivate(const ScriptLine& line);
    void DoClose(const ScriptLine& line);
    void DoCommand(const ScriptLine& line);
    void DoPress(const ScriptLine& line);
    void DoSet(const ScriptLine& line);
    void DoGet(const ScriptLine& line);
    void DoRows(const ScriptLine& line);
    void DoSelectRows(const ScriptLine& line);
    void DoDoubleClick(const ScriptLine& line);
    void DoMenu(const ScriptLine& line);
    void DoScroll(const ScriptLine& line);
    void DoTopRow(const ScriptLine& line);
    void DoResize(const ScriptLine& line);
    void DoPlace(const ScriptLine& line);
    void DoCloseDialog(const ScriptLine& line);
    void DoCancelDialog(const ScriptLine& line);
    void DoKey(const ScriptLine& line);
    void DoAhead(const ScriptLine& line);
    void DoLater(const ScriptLine& line);
    void DoDump(const ScriptLine& line);
    void DoScreenshot(const ScriptLine& line);

    std::string m_name;
    std::vector<ScriptLine> m_lines;
    size_t m_next = 0;
    Transcript& m_transcript;
    std::string m_failure;
    bool m_isMenuAwaited = false;       // a line has clicked for one
    std::wstring m_menuChoice;          // its item; empty: only look
    bool m_isLater = false;             // a line runs that was to be run later
    std::vector<ScriptLine> m_waiting;  // for the next time that a window is shown anew
};

}  // namespace app
