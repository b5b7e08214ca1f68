// What reactors hear of saving, closing, switching and commands, and what they may do meanwhile.
#include <gtest/gtest.h>

#include <functional>

#include "accmd.h"
#include "arxHeaders.h"
#include "host/base/format.h"
#include "support/scratch.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

using namespace host;

namespace {

using Events = std::vector<std::string>;

// Hears everything and writes it down; does on the way what a test asks for.
class Log : public AcEditorReactor, public AcApDocManagerReactor {
public:
    Log() {
        acedEditor->addReactor(this);
        acDocManager->addReactor(this);
    }
    ~Log() override {
        acedEditor->removeReactor(this);
        acDocManager->removeReactor(this);
    }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    void commandWillStart(const ACHAR* name) override { Note("start", name); }
    void commandEnded(const ACHAR* name) override { Note("end", name); }
    void commandCancelled(const ACHAR* name) override { Note("cancel", name); }
    void commandFailed(const ACHAR* name) override { Note("fail", name); }
    void unknownCommand(const ACHAR* name, AcDbVoidPtrArray*) override { Note("unknown", name); }
    void beginSave(AcDbDatabase* db, const ACHAR*) override {
        Note("begin save", _T(""));
        if (onSave) onSave(db);
    }
    void saveComplete(AcDbDatabase*, const ACHAR*) override { Note("saved", _T("")); }
    void abortSave(AcDbDatabase*) override { Note("abort save", _T("")); }
    void databaseToBeDestroyed(AcDbDatabase*) override { Note("database goes", _T("")); }
    void documentCreated(AcApDocument* document) override {
        Note("created", document->docTitle());
        if (onCreate) onCreate(document);
    }
    void documentToBeDeactivated(AcApDocument* document) override {
        Note("deactivate", document->docTitle());
    }
    void documentToBeDestroyed(AcApDocument* document) override {
        Note("destroy", document->docTitle());
    }
    void documentDestroyed(const ACHAR*) override { Note("destroyed", _T("")); }
    void documentBecameCurrent(AcApDocument* document) override {
        Note("current", document == nullptr ? _T("none") : document->docTitle());
    }

    Events Take() { return std::exchange(m_events, {}); }

    std::function<void(AcDbDatabase*)> onSave;
    std::function<void(AcApDocument*)> onCreate;

private:
    void Note(const char* what, const ACHAR* name) {
        m_events.push_back(*name == 0 ? what : what + (" " + Narrow(name)));
    }
    Events m_events;
};

class EventsTest : public testing::Test {
protected:
    static AcDbObjectId AddLine(AcApDocument* document) {
        EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
        test::TestDrawing drawing(*document->database(), "L 0,0 1,1");
        EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
        return drawing.ids()[0];
    }

    test::ScriptedInput input;
    const std::wstring folder = Widen(test::ScratchFolder());
};

TEST_F(EventsTest, SavingComesBetweenItsCommand) {
    AcApDocument* const document = Session::Get().New();
    Log log;
    input.GiveText(folder + L"saved.dxf");
    Session::Get().Execute(L"_.QSAVE");  // asks for a name: the drawing has none yet
    EXPECT_EQ((Events{"start QSAVE", "begin save", "saved", "end QSAVE"}), log.Take());
    EXPECT_STREQ(L"saved.dxf", document->docTitle());
    log.onSave = [](AcDbDatabase* db) { AddLine(acDocManager->document(db)); };
    Session::Get().Execute(L"QSAVE");
    log.onSave = nullptr;
    input.GiveText(folder + L"no-such-folder/saved.dxf");
    log.Take();
    Session::Get().Execute(L"SAVEAS");
    EXPECT_EQ((Events{"start SAVEAS", "begin save", "abort save", "fail SAVEAS"}), log.Take());
    EXPECT_STREQ(L"saved.dxf", document->docTitle()) << "nothing changed";
    AcApDocument* const again = Session::Get().Open(folder + L"saved.dxf");
    ASSERT_NE(nullptr, again);
    EXPECT_NE("", test::TestDrawing(*again->database(), "").Dump())
        << "what a reactor added on saving is in the file";
}

TEST_F(EventsTest, ClosingTellsBeforeAndAfter) {
    AcApDocument* const first = Session::Get().New();
    const std::string one = Narrow(first->docTitle());
    AcApDocument* const second = Session::Get().New();
    const std::string two = Narrow(second->docTitle());
    Log log;
    ASSERT_EQ(Acad::eOk, acDocManager->appContextCloseDocument(second));
    EXPECT_EQ((Events{"deactivate " + two, "destroy " + two, "database goes", "destroyed",
                      "current " + one}),
              log.Take());
    EXPECT_EQ(Acad::eInvalidInput, acDocManager->appContextCloseDocument(second));
    EXPECT_EQ(Acad::eInvalidInput, acDocManager->lockDocument(second));
    Session::Get().CloseAll();
    EXPECT_EQ("current none", log.Take().back());
}

TEST_F(EventsTest, CommandsEndAsTheyDid) {
    Session::Get().New();
    Log log;
    input.GiveSelection(SelectionAnswer::kEscape);
    Session::Get().Execute(L"ERASE");
    EXPECT_EQ((Events{"start ERASE", "cancel ERASE"}), log.Take());
    input.GiveText(folder + L"missing.dxf");
    Session::Get().Execute(L"OPEN");
    EXPECT_EQ((Events{"start OPEN", "database goes", "fail OPEN"}), log.Take());
    Session::Get().Execute(L"nonsense");
    EXPECT_EQ((Events{"unknown nonsense"}), log.Take());
}

TEST_F(EventsTest, ADrawingMayBeChangedAsItIsCreated) {
    Log log;
    AcDbObjectId made;
    log.onCreate = [&](AcApDocument* document) { made = AddLine(document); };
    AcApDocument* const document = Session::Get().New();
    EXPECT_EQ(document->database(), made.database());
    EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
}

TEST_F(EventsTest, TextWaitsForItsDrawing) {
    AcApDocument* const first = Session::Get().New();
    AcApDocument* const second = Session::Get().New();
    AddLine(first);
    AddLine(second);
    Log log;
    ASSERT_EQ(Acad::eOk, acDocManager->sendStringToExecute(first, _T("ERASE ALL\n\n"), false));
    ASSERT_EQ(Acad::eOk, acDocManager->sendStringToExecute(second, _T("ERASE\nALL\n\n"), false));
    EXPECT_EQ(Events(), log.Take()) << "only queued, and nothing switched";
    Session::Get().RunQueued();
    for (AcApDocument* const document : {first, second})
        EXPECT_EQ("", test::TestDrawing(*document->database(), "").Dump());
    EXPECT_EQ(Acad::eInvalidInput, acDocManager->sendStringToExecute(nullptr, _T("X\n")));
}

TEST_F(EventsTest, TheScreenNeedsNoLock) {
    AcApDocument* const document = Session::Get().New();
    const AcDbObjectId line = AddLine(document);
    {
        AcDbEntityPointer entity(line, AcDb::kForRead);
        EXPECT_EQ(Acad::eOk, entity->highlight());
        EXPECT_EQ(Acad::eNotOpenForWrite, entity->setVisibility(AcDb::kInvisible));
        EXPECT_EQ(Acad::eOk, entity->unhighlight());
    }
    AcDbViewTableRecord view;
    view.setCenterPoint(AcGePoint2d(50, 20));
    view.setWidth(40);
    view.setHeight(30);
    EXPECT_EQ(Acad::eOk, acedSetCurrentView(&view, nullptr));
    EXPECT_EQ(30.0, document->imp().view.height);
    view.setHeight(0);
    EXPECT_EQ(Acad::eInvalidInput, acedSetCurrentView(&view, nullptr));
    EXPECT_EQ(30.0, document->imp().view.height);
    EXPECT_EQ(Acad::eLockViolation,
              document->database()->setClayer(document->database()->layerZero()));
}

}  // namespace
