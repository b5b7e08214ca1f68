// Documents, contexts, locks, reactors and commands, as modules meet them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "accmd.h"
#include "arxHeaders.h"
#include "support/scripted_input.h"

using namespace host;

namespace {

std::string Ascii(const ACHAR* text) { return std::string(text, text + std::wcslen(text)); }

// Writes down what it hears.
std::vector<std::string> g_events;

class DocumentLog : public AcApDocManagerReactor {
public:
    DocumentLog() { acDocManager->addReactor(this); }
    ~DocumentLog() override { acDocManager->removeReactor(this); }
    void documentCreateStarted(AcApDocument*) override { g_events.push_back("create started"); }
    void documentCreated(AcApDocument*) override { g_events.push_back("created"); }
    void documentToBeDestroyed(AcApDocument*) override { g_events.push_back("to be destroyed"); }
    void documentDestroyed(const ACHAR*) override { g_events.push_back("destroyed"); }
    void documentBecameCurrent(AcApDocument* document) override {
        g_events.push_back(document == nullptr ? "current none" : "current");
    }
};

class EditorLog : public AcEditorReactor {
public:
    EditorLog() { acedEditor->addReactor(this); }
    ~EditorLog() override { acedEditor->removeReactor(this); }
    void commandWillStart(const ACHAR* name) override { Note("start ", name); }
    void commandEnded(const ACHAR* name) override { Note("end ", name); }
    void commandCancelled(const ACHAR* name) override { Note("cancel ", name); }
    void commandFailed(const ACHAR* name) override { Note("fail ", name); }
    void beginSave(AcDbDatabase*, const ACHAR*) override { g_events.push_back("begin save"); }
    void saveComplete(AcDbDatabase*, const ACHAR*) override { g_events.push_back("saved"); }
    void abortSave(AcDbDatabase*) override { g_events.push_back("save aborted"); }
    void databaseToBeDestroyed(AcDbDatabase*) override { g_events.push_back("database goes"); }

private:
    static void Note(const char* what, const ACHAR* name) {
        g_events.push_back(what + Ascii(name));
    }
};

class SessionTest : public testing::Test {
protected:
    SessionTest() { g_events.clear(); }

    // Adds a line to the current drawing's model space; the status of opening it for write.
    static Acad::ErrorStatus AddLine(AcDbObjectId* made = nullptr) {
        AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
        AcDbBlockTableRecordPointer space(acdbSymUtil()->blockModelSpaceId(db), AcDb::kForWrite);
        if (space.openStatus() != Acad::eOk) return space.openStatus();
        auto* const line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, space->appendAcDbEntity(id, line));
        if (made != nullptr) *made = id;
        return line->close();
    }

    test::ScriptedInput input;
};

using Events = std::vector<std::string>;

TEST_F(SessionTest, DocumentEventsComeInOrder) {
    {
        const DocumentLog documents;
        const EditorLog editor;
        AcApDocument* const first = Session::Get().New();
        ASSERT_NE(nullptr, first);
        EXPECT_EQ(first->database(), acdbHostApplicationServices()->workingDatabase());
        EXPECT_EQ((Events{"create started", "created", "current"}), g_events);
        g_events.clear();
        ASSERT_EQ(Acad::eOk, acDocManager->appContextCloseDocument(first));
        EXPECT_EQ((Events{"to be destroyed", "database goes", "destroyed", "current none"}),
                  g_events);
    }
    EXPECT_EQ(nullptr, acdbHostApplicationServices()->workingDatabase());
    EXPECT_EQ(nullptr, curDoc());
}

TEST_F(SessionTest, TheApplicationContextNeedsALock) {
    AcApDocument* const document = Session::Get().New();
    EXPECT_EQ(Acad::eLockViolation, AddLine());
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    EXPECT_EQ(Acad::eOk, AddLine());
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    EXPECT_EQ(Acad::eOk, AddLine()) << "nested locks count";
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    EXPECT_EQ(Acad::eLockViolation, AddLine());
    EXPECT_NE(Acad::eOk, acDocManager->unlockDocument(document)) << "one too many";
    EXPECT_EQ(Acad::eInvalidInput, acDocManager->lockDocument(nullptr));
    EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
}

TEST_F(SessionTest, LocksOfContextsExcludeOneAnother) {
    AcApDocument* const document = Session::Get().New();
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document, AcAp::kWrite));
    Session::Get().InContext(document, [&] {
        EXPECT_EQ(Acad::eLockViolation, AddLine()) << "another context's lock does not serve";
        EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document, AcAp::kAutoWrite));
        EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
        EXPECT_EQ(Acad::eLockConflict, acDocManager->lockDocument(document, AcAp::kXWrite));
    });
    EXPECT_EQ(1u, Session::Get().FindLeftovers().locks.size());
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
}

TEST_F(SessionTest, LeftoversAreFound) {
    AcApDocument* const document = Session::Get().New();
    AcDbObjectId id;
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    ASSERT_EQ(Acad::eOk, AddLine(&id));
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    AcDbLine* line = nullptr;
    ASSERT_EQ(Acad::eOk, acdbOpenObject(line, id, AcDb::kForRead));
    const Leftovers left = Session::Get().FindLeftovers();
    ASSERT_EQ(1u, left.openObjects.size());
    EXPECT_NE(std::wstring::npos, left.openObjects[0].find(L"AcDbLine read"));
    ASSERT_EQ(Acad::eOk, line->close());
    EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
}

int g_ran = 0;
Acad::ErrorStatus g_written = Acad::eOk;
void RunAndWrite() {
    ++g_ran;
    AcDbDatabase* const db = acdbHostApplicationServices()->workingDatabase();
    g_written = AcDbBlockTableRecordPointer(db->currentSpaceId(), AcDb::kForWrite).openStatus();
}

TEST_F(SessionTest, CommandsRunUnderALockWithTheirEvents) {
    AcEdCommandStack* const stack = acedRegCmds;
    ASSERT_EQ(Acad::eOk,
              stack->addCommand(_T("TEST"), _T("QzRun"), _T("QzRun"), ACRX_CMD_MODAL, RunAndWrite));
    EXPECT_EQ(Acad::eDuplicateKey,
              stack->addCommand(_T("test"), _T("QZRUN"), _T("Other"), ACRX_CMD_MODAL, RunAndWrite));
    EXPECT_EQ(Acad::eInvalidInput,
              stack->addCommand(_T("TEST"), nullptr, _T("x"), ACRX_CMD_MODAL, RunAndWrite));
    Session::Get().New();
    g_ran = 0;
    {
        const EditorLog editor;
        Session::Get().Execute(L"_qzrun");
        EXPECT_EQ((Events{"start QZRUN", "end QZRUN"}), g_events);
    }
    EXPECT_EQ(1, g_ran);
    EXPECT_EQ(Acad::eOk, g_written);
    Session::Get().Execute(L"_.qzrun");
    EXPECT_EQ(1, g_ran) << "a point asks for the host's own command";
    EXPECT_NE(std::wstring::npos, input.transcript.find(L"Unknown command \"_.QZRUN\""));
    EXPECT_EQ(Acad::eOk, stack->removeGroup(_T("TEST")));
    EXPECT_EQ(nullptr, stack->lookupGlobalCmd(_T("QzRun")));
}

TEST_F(SessionTest, SentTextWaitsForTheIdleHost) {
    AcApDocument* const document = Session::Get().New();
    const EditorLog editor;
    ASSERT_EQ(Acad::eOk,
              acDocManager->sendStringToExecute(document, _T("_.DELCONSTRAINT\nALL\n\n")));
    EXPECT_TRUE(g_events.empty()) << "only queued";
    Session::Get().RunQueued();
    EXPECT_EQ((Events{"start DELCONSTRAINT", "end DELCONSTRAINT"}), g_events);
    EXPECT_TRUE(document->imp().typed.IsEmpty()) << "its prompts took the rest";
}

TEST_F(SessionTest, EraseAndExplodeWorkOnWhatIsSelected) {
    AcApDocument* const document = Session::Get().New();
    AcDbObjectId line;
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    ASSERT_EQ(Acad::eOk, AddLine(&line));
    {
        AcDbBlockTableRecordPointer space(document->database()->currentSpaceId(), AcDb::kForWrite);
        auto* const polyline = new AcDbPolyline();
        for (const AcGePoint2d& p : {AcGePoint2d(0, 0), AcGePoint2d(5, 0), AcGePoint2d(5, 5)})
            ASSERT_EQ(Acad::eOk, polyline->addVertexAt(polyline->numVerts(), p));
        ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(polyline));
        ASSERT_EQ(Acad::eOk, polyline->close());
    }
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    input.GiveSelection(SelectionAnswer::kAll);
    Session::Get().Execute(L"EXPLODE");
    EXPECT_NE(std::wstring::npos, input.transcript.find(L"1 exploded, 1 could not"));
    ads_name set;
    ASSERT_EQ(RTNORM, acedSSGet(_T("A"), nullptr, nullptr, nullptr, set));
    Adesk::Int32 count = 0;
    EXPECT_EQ(RTNORM, acedSSLength(set, &count));
    EXPECT_EQ(3, count);
    EXPECT_EQ(RTNORM, acedSSFree(set));
    EXPECT_EQ(RTERROR, acedSSFree(set)) << "freed once";
    input.GiveSelection(SelectionAnswer::kAll);
    Session::Get().Execute(L"ERASE");
    EXPECT_EQ(RTERROR, acedSSGet(_T("A"), nullptr, nullptr, nullptr, set));
    EXPECT_TRUE(line.isErased());
    EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
}

TEST_F(SessionTest, PromptsGiveTheHostsReturnCodes) {
    ads_point point;
    ads_name set;
    ACHAR text[8];
    EXPECT_EQ(RTERROR, acedGetPoint(nullptr, _T("p"), point)) << "no document";
    Session::Get().New();
    EXPECT_EQ(RTCAN, acedGetPoint(nullptr, _T("p"), point));
    EXPECT_EQ(RTCAN, acedSSGet(nullptr, nullptr, nullptr, nullptr, set));
    input.points.push_back({Answer::kEnter, AcGePoint3d(), L""});
    EXPECT_EQ(RTNONE, acedGetPoint(nullptr, _T("p"), point));
    input.GivePoint(3, 4);
    EXPECT_EQ(RTNORM, acedGetPoint(nullptr, _T("p"), point));
    EXPECT_EQ(4.0, point[1]);
    input.GiveSelection(SelectionAnswer::kEnter);
    EXPECT_EQ(RTERROR, acedSSGet(nullptr, nullptr, nullptr, nullptr, set));
    input.GiveSelection(SelectionAnswer::kAll);
    EXPECT_EQ(RTERROR, acedSSGet(nullptr, nullptr, nullptr, nullptr, set)) << "empty drawing";
    input.GiveText(L"0123456789");
    EXPECT_EQ(RTNORM, acedGetString(1, _T("t"), text));
    EXPECT_EQ("0123456", Ascii(text)) << "cut to the buffer";
    input.GiveText(L"");
    EXPECT_EQ(RTNORM, acedGetString(1, _T("t"), text));
    EXPECT_EQ("", Ascii(text));
}

TEST_F(SessionTest, AReactorMayGoDuringItsCall) {
    struct Leaver : AcApDocManagerReactor {
        void documentCreated(AcApDocument*) override {
            ++calls;
            acDocManager->removeReactor(this);
        }
        int calls = 0;
    } first;
    const DocumentLog second;
    acDocManager->addReactor(&first);
    Session::Get().New();
    Session::Get().New();
    EXPECT_EQ(1, first.calls);
    EXPECT_EQ(2, std::count(g_events.begin(), g_events.end(), "created"));
}

}  // namespace
