// The module's reactors and commands, entered as the host enters the module.
#include <gtest/gtest.h>

#include <algorithm>

#include "StdAfx.h"

#include "KnifeDiagramFactory.h"
#include "host/ed/session.h"
#include "host/base/format.h"
#include "host/db/build.h"
#include "support/scratch.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt);

namespace {

using host::Session;

// Counts the commands that start.
class CommandLog : public AcEditorReactor {
public:
    CommandLog() { acedEditor->addReactor(this); }
    ~CommandLog() override { acedEditor->removeReactor(this); }
    void commandWillStart(const ACHAR* name) override { names.push_back(host::Narrow(name)); }
    std::ptrdiff_t Count(const char* name) const {
        return std::count(names.begin(), names.end(), name);
    }
    std::vector<std::string> names;
};

void Save(const std::wstring& path, const std::vector<const ACHAR*>& tasks) {
    AcApDocument* const document = Session::Get().New();
    BatchTaskList list;
    for (const ACHAR* const name : tasks) {
        BatchTask task;
        task.name = name;
        list.push_back(task);
    }
    if (!tasks.empty()) {
        EXPECT_EQ(Acad::eOk, list.store(document->database()));
    }
    EXPECT_TRUE(Session::Get().Save(*document, path));
    Session::Get().Close(*document);
}

std::vector<std::string> TasksOf(const AcApDocument* document) {
    std::vector<std::string> names;
    for (const BatchTask& task :
         CKnifeDiagramFactory::GetInstance().GetTaskList(document->database()))
        names.push_back(host::Narrow(task.name.GetString()));
    return names;
}

AcDbObjectId AddTo(AcApDocument* document, const char* entities) {
    EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    test::TestDrawing drawing(*document->database(), entities);
    EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    return drawing.ids().isEmpty() ? AcDbObjectId() : drawing.ids()[drawing.ids().length() - 1];
}

void Touch(AcDbObjectId id) {
    AcApDocument* const document = acDocManager->document(id.database());
    EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    {
        AcDbEntityPointer entity(id, AcDb::kForWrite);
        EXPECT_EQ(Acad::eOk, entity->setColorIndex(1));
    }
    EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
}

using Names = std::vector<std::string>;

// One process, one module: what happens to it happens in this order.
TEST(Module, LivesWithItsDrawings) {
    test::ScriptedInput input;
    const std::wstring folder = host::Widen(test::ScratchFolder());
    const std::wstring first = folder + L"first.dxf", second = folder + L"second.dxf";
    Save(first, {_T("one"), _T("two")});
    Save(second, {_T("other")});

    // Two drawings that are open already get their lists when the module comes.
    AcApDocument* const one = Session::Get().Open(first);
    AcApDocument* const two = Session::Get().Open(second);
    Session::Get().MakeCurrent(one);
    EXPECT_EQ(Names(), TasksOf(one));
    ASSERT_EQ(AcRx::kRetOK, acrxEntryPoint(AcRx::kInitAppMsg, nullptr));
    EXPECT_EQ((Names{"one", "two"}), TasksOf(one));
    EXPECT_EQ(Names{"other"}, TasksOf(two));
    // Reading a list changes nothing, and takes no lock that somebody else could hold.
    EXPECT_FALSE(host::IsModified(*one->database()) || host::IsModified(*two->database()));
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(two, AcAp::kXWrite));
    CKnifeDiagramFactory::GetInstance().GetTaskList(two->database()).load(two->database());
    EXPECT_EQ(Names{"other"}, TasksOf(two));
    EXPECT_FALSE(host::IsModified(*two->database()));
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(two));
    for (const AcRx::AppMsgCode message : {AcRx::kLoadDwgMsg, AcRx::kSaveMsg, AcRx::kUnloadAppMsg})
        EXPECT_EQ(AcRx::kRetOK, acrxEntryPoint(message, nullptr));
    // Loaded again after the unload, nothing is there twice, and nothing is said of it.
    const size_t said = input.transcript.size();
    EXPECT_EQ(AcRx::kRetOK, acrxEntryPoint(AcRx::kInitAppMsg, nullptr));
    EXPECT_EQ(said, input.transcript.size());
    EXPECT_EQ((Names{"one", "two"}), TasksOf(one));

    AcEdCommandStack* const stack = acedRegCmds;
    for (const ACHAR* name : {_T("QzTestToolDesign"), _T("QZTOOLDESIGNProfileAuto3D"),
                              _T("QZTOOLDESIGNProfilesAuto3D")}) {
        const AcEdCommand* const command = stack->lookupGlobalCmd(name);
        ASSERT_NE(nullptr, command);
        EXPECT_STREQ(name, command->localName());
        EXPECT_EQ(ACRX_CMD_MODAL, command->commandFlags());
    }

    CommandLog commands;
    const AcDbObjectId line = AddTo(one, "P 0,0 5,0 5,5 | L 0,0 1,1");
    const AcDbObjectId elsewhere = AddTo(two, "L 0,0 1,1");
    Touch(line);
    Session::Get().RunQueued();
    EXPECT_EQ(0, commands.Count("DELCONSTRAINT")) << "nothing was exploded";

    // The flag is the drawing's own, and counts while the command runs.
    const auto startExplode = [] {
        Session::Get().NotifyEditor(
            [](AcEditorReactor& reactor) { reactor.commandWillStart(_T("EXPLODE")); });
    };
    startExplode();
    Touch(elsewhere);
    Session::Get().RunQueued();
    EXPECT_EQ(0, commands.Count("DELCONSTRAINT")) << "another database";
    Session::Get().MakeCurrent(two);
    Touch(line);
    Touch(elsewhere);
    Session::Get().RunQueued();
    EXPECT_EQ(0, commands.Count("DELCONSTRAINT")) << "not the working database, or not exploded in";
    Session::Get().MakeCurrent(one);
    Touch(line);
    EXPECT_EQ(0, commands.Count("DELCONSTRAINT")) << "only queued";
    Session::Get().RunQueued();
    EXPECT_EQ(1, commands.Count("DELCONSTRAINT"));
    Touch(line);
    Session::Get().RunQueued();
    EXPECT_EQ(1, commands.Count("DELCONSTRAINT")) << "once";
    // A command that was cancelled leaves no flag behind.
    input.GiveSelection(host::SelectionAnswer::kEscape);
    Session::Get().Execute(L"EXPLODE");
    Touch(line);
    Session::Get().RunQueued();
    EXPECT_EQ(1, commands.Count("DELCONSTRAINT")) << "nothing was exploded";
    // A drawing that comes later is watched as well.
    AcApDocument* const later = Session::Get().New();
    const AcDbObjectId added = AddTo(later, "L 0,0 1,1");
    startExplode();
    Touch(added);
    Session::Get().RunQueued();
    EXPECT_EQ(2, commands.Count("DELCONSTRAINT"));
    Session::Get().Close(*later);
    Session::Get().MakeCurrent(one);

    // Saving stores the list; a list that was emptied is stored as empty, a drawing that never had
    // one stays as it is.
    BatchTaskList& list = CKnifeDiagramFactory::GetInstance().GetTaskList(one->database());
    list.erase(list.begin());
    ASSERT_TRUE(Session::Get().Save(*one, L""));
    CKnifeDiagramFactory::GetInstance().GetTaskList(two->database()).clear();
    ASSERT_TRUE(Session::Get().Save(*two, L""));
    AcApDocument* const plain = Session::Get().New();
    ASSERT_TRUE(Session::Get().Save(*plain, folder + L"plain.dxf"));
    EXPECT_FALSE(BatchTaskList::isStored(plain->database()));
    const AcDbDatabase* const gone = one->database();
    Session::Get().CloseAll();
    EXPECT_EQ(nullptr, CKnifeDiagramFactory::GetInstance().FindTaskList(gone));
    EXPECT_EQ(Names{"two"}, TasksOf(Session::Get().Open(first)));
    AcApDocument* const emptied = Session::Get().Open(second);
    EXPECT_EQ(Names(), TasksOf(emptied));
    EXPECT_TRUE(BatchTaskList::isStored(emptied->database()));
    EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
}

}  // namespace
