// Dialogs that are closed while one of their own prompts or choosers waits.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include "StdAfx.h"

#include "EraseEntity.h"
#include "KnifeDiagramFactory.h"
#include "ModuleDialogs.h"
#include "PickedTool.h"
#include "host/base/format.h"
#include "host/db/highlight.h"
#include "host/ed/editor_services.h"
#include "host/ed/session.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/resources.h"
#include "host/mfc/window_system.h"
#include "host/solid/revolve.h"
#include "support/scratch.h"
#include "support/test_drawing.h"

namespace {

using host::Session;

// Answers every prompt, after something has happened.
class BusyUser : public host::UserInput, public host::UserAnswers {
public:
    BusyUser() {
        Session::Get().SetInput(this);
        host::WindowSystem::Get().SetAnswers(this);
        host::MakeHostWindows();
        host::solid::InstallModeller();
        host::SetResourceScript(AfxGetInstanceHandle(), L"plugin/ui/res/QZEncircleLine.rc");
        document = Session::Get().New();
    }
    ~BusyUser() override {
        Session::Get().CloseAll();
        host::CloseHostWindows();
        Session::Get().SetInput(nullptr);
        host::WindowSystem::Get().SetAnswers(nullptr);
    }

    // Draws in the document; the ids are what a selection answers with.
    void Draw(const char* entities) {
        Check(acDocManager->lockDocument(document));
        ids = test::TestDrawing(*document->database(), entities).ids();
        Check(acDocManager->unlockDocument(document));
    }
    static void Check(Acad::ErrorStatus es) { EXPECT_EQ(Acad::eOk, es); }
    static void CloseDialogs() {
        for (const host::LiveDialog& dialog : host::LiveDialogs()) ::DestroyWindow(dialog.handle);
    }
    void Press(int dialog, int control) {
        const host::ProbeResult done = host::PressControl(dialog, control);
        EXPECT_TRUE(done) << host::Narrow(done.reason);
        EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
    }

    host::SelectionAnswer Select() override {
        Happen("select");
        host::SelectionAnswer answer;
        answer.kind = host::SelectionAnswer::kEntities;
        for (int i = 0; i < ids.length(); ++i) answer.entities.push_back(ids[i]);
        return answer;
    }
    host::Answer Point(const host::PointRequest&) override {
        Happen("point");
        host::Answer answer;
        answer.kind = host::Answer::kGiven;
        answer.point.set(10.0, 0.0, 7.0);
        return answer;
    }
    host::Answer Text(bool) override {
        Happen("text");
        host::Answer answer;
        answer.kind = host::Answer::kGiven;
        answer.text = L"1";
        return answer;
    }
    void Print(const std::wstring&) override {}
    void UpdateDisplay() override {
        if (displayed) displayed();
    }
    int box(const host::BoxRequest& request) override {
        boxes.push_back(host::Narrow(request.text));
        Happen("box");
        return IDOK;
    }
    std::optional<std::wstring> nextFile(const host::ChooserRequest&) override {
        Happen("file");
        return L"/no/such/folder/a.sat";
    }
    std::optional<std::wstring> nextFolder(const host::ChooserRequest&) override {
        Happen("folder");
        return L"/no/such/folder";
    }
    bool act() override {
        Happen("modal");
        return true;
    }

    AcApDocument* document;
    AcDbObjectIdArray ids;
    std::string when;                 // which prompt it happens at
    std::function<void()> event;      // what
    std::function<void()> displayed;  // the screen is drawn anew
    std::vector<std::string> asked, boxes;

private:
    void Happen(const std::string& prompt) {
        asked.push_back(prompt);
        if (prompt == when && event) event();
    }
};

constexpr const char* kTool = "L 0,0 0,5 | L 0,5 30,5 | L 30,5 30,3 | L 30,3 60,3 | L 60,3 60,0";
constexpr const char* kEnvelopes =
    "P@TempEncircleLine 0,0 0,5 30,5 30,0 c | P@TempEncircleLine 40,0 40,5 60,5 60,0 c";

struct Row {
    const char* drawing;
    int dialog, control;
    const char* when;
    std::vector<std::string> asked;
};

const Row kRows[] = {
    {kTool, 186, 1021, "select", {"select", "point"}},
    {kTool, 186, 1021, "point", {"select", "point"}},
    {kTool, 186, 1011, "point", {"select", "point"}},
    {kEnvelopes, 186, 1025, "select", {"select"}},
    {kEnvelopes, 186, 1025, "file", {"select", "file", "box"}},
    {kTool, 188, 1022, "select", {"select", "point", "text"}},
    {kTool, 188, 1022, "text", {"select", "point", "text"}},
};

// Opens the row's dialog, with one task in the batch dialog.
void Open(const Row& row, BusyUser& user) {
    if (row.dialog == 186) return ShowCalDialog();
    CKnifeDiagramFactory::GetInstance().GetTaskList(user.document->database()).resize(1);
    ShowBulkDialog();
    EXPECT_TRUE(host::SelectRows(188, 1017, {1}));
}

TEST(Dialogs, MayGoDuringTheirOwnPrompts) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::to_string(row.control) + " " + row.when);
        BusyUser user;
        user.Draw(row.drawing);
        Open(row, user);
        user.when = row.when;
        user.event = [] { BusyUser::CloseDialogs(); };
        user.Press(row.dialog, row.control);
        EXPECT_EQ(row.asked, user.asked);
        EXPECT_TRUE(host::LiveDialogs().empty());
    }
}

// What was picked in one drawing is not computed in another that became current meanwhile.
TEST(Dialogs, StopWhenAnotherDrawingBecomesCurrent) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::to_string(row.control) + " " + row.when);
        BusyUser user;
        AcApDocument* const other = Session::Get().New();
        Session::Get().MakeCurrent(user.document);
        user.Draw(row.drawing);
        Open(row, user);
        user.when = row.when;
        user.event = [other] { Session::Get().MakeCurrent(other); };
        user.Press(row.dialog, row.control);
        EXPECT_EQ(row.asked, user.asked);
        EXPECT_TRUE(CKnifeDiagramFactory::GetInstance().GetTaskList(other->database()).empty());
        AcDbDatabase* const database = other->database();
        const AcDbBlockTableRecordPointer space(acdbSymUtil()->blockModelSpaceId(database),
                                                AcDb::kForRead);
        AcDbBlockTableRecordIterator* made = nullptr;
        ASSERT_EQ(Acad::eOk, space->newIterator(made));
        const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
        EXPECT_TRUE(iterator->done()) << "something was drawn there";
    }
}

// What is highlighted before the screen knows of it is not shown as such.
TEST(Dialogs, AnEnvelopeIsOnTheScreenBeforeItIsHighlighted) {
    BusyUser user;
    user.Draw(kTool);
    ShowCalDialog();
    const auto envelope = [] {
        const AcDbObjectId id = GetLastEntity();
        const AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
        return polyline.openStatus() == Acad::eOk ? id : AcDbObjectId::kNull;
    };
    const auto isHighlighted = [](const AcDbObjectId& id) {
        return host::HighlightedEntities().count(id) != 0;
    };
    int shown = 0, early = 0;
    user.displayed = [&] {
        const AcDbObjectId id = envelope();
        shown += id.isNull() ? 0 : 1;
        early += isHighlighted(id) ? 1 : 0;
    };
    user.Press(186, 1021);
    user.displayed = nullptr;
    ASSERT_FALSE(envelope().isNull());
    EXPECT_TRUE(isHighlighted(envelope()));
    EXPECT_LT(0, shown);
    EXPECT_EQ(0, early) << "highlighted before it was shown";
}

// After input the command line says again that it waits for a command, also when the user turned
// back or the dialog went away; while the prompts wait it does not.
TEST(Dialogs, PostThePromptAfterInput) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::to_string(row.control) + " " + row.when);
        BusyUser user;
        user.Draw(row.drawing);
        Open(row, user);
        const unsigned before = host::PromptPosts();
        user.when = "select";
        user.event = [&user, before] {
            EXPECT_EQ(before, host::PromptPosts());
            user.ids.removeAll();
        };
        user.Press(row.dialog, row.control);
        EXPECT_EQ(before + 1, host::PromptPosts());
    }
}

// It has no axis point, and nothing to export.
TEST(Dialogs, PassOverAPolylineWithoutVertices) {
    BusyUser user;
    user.Draw("P@TempEncircleLine 0,0 5,0");
    BusyUser::Check(acDocManager->lockDocument(user.document));
    {
        AcDbObjectPointer<AcDbPolyline> polyline(user.ids[0], AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, polyline.openStatus());
        polyline->reset(false, 0);
    }
    BusyUser::Check(acDocManager->unlockDocument(user.document));
    ShowCalDialog();
    user.Press(186, 1025);
    EXPECT_EQ((std::vector<std::string>{"select", "box"}), user.asked);
    EXPECT_EQ(std::vector<std::string>{"导出成功"}, user.boxes);
}

// What Create makes and takes back again is deleted once, and the command can be given again.
TEST(Dialogs, ThatCannotBeMadeAreFreed) {
    const char* const scripts[] = {
        "1 DIALOGEX 0, 0, 9, 9\nBEGIN\nEND\n",
        "188 DIALOGEX 0, 0, 90, 90\nBEGIN\nCONTROL \"\", 7, \"NoSuchClass\", 0, 1, 1, 9, 9\nEND\n",
    };
    BusyUser user;
    std::vector<std::wstring> reports;
    host::WindowSystem::Get().SetReport(
        [&reports](const std::wstring& line) { reports.push_back(line); });
    for (const char* const script : scripts) {
        const std::string path = test::ScratchFolder() + "broken.rc";
        std::ofstream(path) << script;
        host::SetResourceScript(AfxGetInstanceHandle(), host::Widen(path));
        ShowBulkDialog();
        EXPECT_TRUE(host::LiveDialogs().empty()) << script;
    }
    EXPECT_EQ(2u, reports.size());
    host::SetResourceScript(AfxGetInstanceHandle(), L"plugin/ui/res/QZEncircleLine.rc");
    ShowBulkDialog();
    EXPECT_EQ(1u, host::LiveDialogs().size());
    ShowBulkDialog();
    EXPECT_EQ(1u, host::LiveDialogs().size());
    host::WindowSystem::Get().SetReport([](const std::wstring&) {});
}

// A centre that was snapped to something with a height lies in the plane all the same.
TEST(Picking, ACentreLosesItsHeight) {
    BusyUser user;
    AcGePoint3d centre;
    ASSERT_TRUE(PickCentre(_T("centre"), centre));
    EXPECT_EQ(AcGePoint3d(10.0, 0.0, 0.0), centre);
}

}  // namespace
