// Taking back what commands have done.
#include <gtest/gtest.h>

#include <random>

#include "arxHeaders.h"
#include "host/db/build.h"
#include "host/dxf/dxf_file.h"
#include "host/base/format.h"
#include "support/scratch.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

using namespace host;

namespace {

class UndoTest : public testing::Test {
protected:
    UndoTest() : document(Session::Get().New()), db(*document->database()) {}

    // What runs under the lock is one group.
    void Change(const std::function<void(test::TestDrawing&)>& change) {
        ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document, AcAp::kWrite, _T("TEST")));
        test::TestDrawing drawing(db, "");
        change(drawing);
        for (int i = 0; i < drawing.ids().length(); ++i) ids.push_back(drawing.ids()[i]);
        ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    }
    void Undo() {
        Session::Get().Execute(L"U");
        EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
    }
    std::string Dump() { return test::TestDrawing(db, "").Dump(); }
    AcDbObjectId FindLayer(const ACHAR* name) const {
        const AcDbObjectPointer<AcDbLayerTable> table(db.layerTableId(), AcDb::kForRead);
        AcDbObjectId id;
        return table->getAt(name, id) == Acad::eOk ? id : AcDbObjectId();
    }
    static void Move(AcDbObjectId id, double by) {
        AcDbEntityPointer entity(id, AcDb::kForWrite);
        EXPECT_EQ(Acad::eOk, entity->transformBy(AcGeMatrix3d::translation({by, by, 0})));
    }
    static void Erase(AcDbObjectId id) {
        AcDbEntityPointer entity(id, AcDb::kForWrite);
        EXPECT_EQ(Acad::eOk, entity->erase());
    }

    test::ScriptedInput input;
    AcApDocument* document;
    AcDbDatabase& db;
    std::vector<AcDbObjectId> ids;
};

TEST_F(UndoTest, LayersRecordsAndSettingsComeBack) {
    const AcDbObjectId zero = db.clayer();
    Change([&](test::TestDrawing& d) {
        d.Layer("NEW", "", "lock").Add("L@NEW 0,0 1,0");
        EXPECT_EQ(Acad::eOk, db.setClayer(d.LayerId(L"NEW")));
    });
    Change([&](test::TestDrawing& d) { d.Layer("NEW", "", "off"); });
    AcDbDictionary* dictionary = nullptr;
    Change([&](test::TestDrawing&) {
        ASSERT_EQ(Acad::eOk, db.getNamedObjectsDictionary(dictionary, AcDb::kForWrite));
        auto* const record = new AcDbXrecord;
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, dictionary->setAt(_T("RECORD"), record, id));
        EXPECT_EQ(Acad::eOk, record->close());
        EXPECT_EQ(Acad::eOk, dictionary->close());
    });
    Undo();
    ASSERT_EQ(Acad::eOk, db.getNamedObjectsDictionary(dictionary));
    EXPECT_FALSE(dictionary->has(_T("RECORD")));
    EXPECT_EQ(Acad::eOk, dictionary->close());
    Undo();
    {
        const AcDbLayerTableRecordPointer layer(FindLayer(_T("NEW")), AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, layer.openStatus());
        EXPECT_TRUE(layer->isLocked() && !layer->isOff());
    }
    Undo();
    EXPECT_EQ(zero, db.clayer());
    EXPECT_EQ("", Dump());
    EXPECT_TRUE(FindLayer(_T("NEW")).isNull());
    Undo();
    EXPECT_NE(std::wstring::npos, input.transcript.find(L"Nothing to undo."));
}

TEST_F(UndoTest, ScratchIsForgottenAndFreed) {
    Change([](test::TestDrawing& d) { d.Add("L 0,0 1,0 | L 0,1 1,1"); });
    const std::string before = Dump();
    AcDbObjectId scratch;
    Change([&](test::TestDrawing& d) {
        d.Add("L 5,5 6,6");
        scratch = d.ids()[0];
        Move(scratch, 3);
        Erase(scratch);
    });
    EXPECT_EQ(Acad::ePermanentlyErased,
              AcDbEntityPointer(scratch, AcDb::kForRead, true).openStatus());
    Change([&](test::TestDrawing&) { Erase(ids[0]); });
    Undo();
    EXPECT_EQ(before, Dump()) << "nothing was left of the scratch to take back";
    Undo();
    EXPECT_EQ("", Dump());
}

TEST_F(UndoTest, WhatWentWithItsOwnerComesBackWithIt) {
    Change([](test::TestDrawing& d) { d.Add("H 0,0 5,0(0.5) 5,5 c"); });
    const std::string before = Dump();
    Change([&](test::TestDrawing&) { Erase(ids[0]); });
    Change([](test::TestDrawing& d) { d.Add("L 0,0 1,0"); });
    Undo();
    Undo();
    EXPECT_EQ(before, Dump());
    const AcDbObjectPointer<AcDb2dPolyline> polyline(ids[0], AcDb::kForRead);
    ASSERT_EQ(Acad::eOk, polyline.openStatus());
    int vertices = 0;
    const std::unique_ptr<AcDbObjectIterator> iterator(polyline->vertexIterator());
    for (; !iterator->done(); iterator->step())
        if (!iterator->objectId().isErased()) ++vertices;
    EXPECT_EQ(3, vertices);
}

// What was saved after a change and taken back then reaches the file again.
TEST_F(UndoTest, TakingBackAfterSavingReachesTheFile) {
    const std::wstring path = host::Widen(test::ScratchFolder() + "undo.dxf");
    Change([](test::TestDrawing& d) { d.Add("L 0,0 1,0 | C 5,5 2"); });
    const std::string before = Dump();
    Change([&](test::TestDrawing&) {
        Move(ids[0], 7);
        Erase(ids[1]);
    });
    ASSERT_TRUE(Session::Get().Save(*document, path));
    Undo();
    ASSERT_EQ(before, Dump());
    ASSERT_TRUE(Session::Get().Save(*document, path));
    AcApDocument* const again = Session::Get().Open(path);
    ASSERT_NE(nullptr, again);
    EXPECT_EQ(before, test::TestDrawing(*again->database(), "").Dump());
}

TEST_F(UndoTest, RandomChangesComeBackStepByStep) {
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<std::string> states;
        for (int group = 0; group < 15; ++group) {
            const std::string before = Dump();
            Change([&](test::TestDrawing& d) {
                for (int i = 0; i < 4; ++i) {
                    const AcDbObjectId id =
                        ids.empty() ? AcDbObjectId() : ids[random() % ids.size()];
                    const unsigned int what = random() % 3;
                    if (what == 0 || id.isNull() || id.isErased())
                        d.Add(random() % 2 == 0 ? "L@A 0,0 3,4" : "P@B 0,0 4,0(1) 4,2 c");
                    else if (what == 1)
                        Move(id, static_cast<double>(random() % 9));
                    else
                        Erase(id);
                }
            });
            if (Dump() != before) states.push_back(before);
        }
        while (!states.empty()) {
            Undo();
            ASSERT_EQ(states.back(), Dump());
            states.pop_back();
        }
        ids.clear();
    }
}

}  // namespace
