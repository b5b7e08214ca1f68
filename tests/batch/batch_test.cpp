// Tasks and tools: their statuses, their form in the drawing, and runs over them.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <random>

#include "StdAfx.h"

#include "BatchTaskList.h"
#include "KnifeDiagramFactory.h"
#include "LayerTools.h"
#include "Progress.h"
#include "SatExport.h"
#include "host/base/format.h"
#include "support/scratch.h"
#include "support/test_drawing.h"

namespace {
// What happens inside the progress display's pump.
std::function<void(int)> g_pump;
int g_open = 0;
int g_steps = 0;
}  // namespace

void progressStart() { ++g_open; }
void progressEnd() { --g_open; }
void progressStep(int, int nCurrent, double) {
    ++g_steps;
    if (g_pump) g_pump(nCurrent);
}
CString AskSatPath(const CString&, CWnd*) { return CString(); }

namespace {

using test::TestDrawing;

constexpr const char* kTool = "L 0,0 0,5 | L 0,5 30,5 | L 30,5 30,3 | L 30,3 60,3 | L 60,3 60,0";

BatchTool MakeTool(const ACHAR* name, const AcDbObjectIdArray& ids) {
    BatchTool tool;
    tool.name = name;
    tool.centre.set(10.0, 0.0, 0.0);
    tool.sourceIds = ids;
    return tool;
}

class BatchTest : public testing::Test {
protected:
    BatchTest() {
        g_pump = nullptr;
        g_open = g_steps = 0;
    }
    ~BatchTest() override {
        CKnifeDiagramFactory::GetInstance().RemoveTaskList(&drawing.db());
        EXPECT_EQ(0, g_open) << "a progress display was left open";
    }
    BatchTaskList& List() { return CKnifeDiagramFactory::GetInstance().GetTaskList(); }

    TestDrawing drawing{kTool};
};

TEST(BatchStatusTest, RollsUp) {
    struct Row {
        std::vector<int> tools;
        int expected;
    };
    const Row rows[] = {{{}, 0},        {{1, 1}, 1},    {{1, 0}, 0}, {{1, 0, 2}, 2},
                        {{2, 1, 0}, 2}, {{1, 0, 1}, 0}, {{7}, 1},    {{0}, 0}};
    for (const Row& row : rows) {
        BatchTask task;
        task.execStatus = task.exportStatus = kBatchFailed;
        for (const int status : row.tools) {
            BatchTool tool;
            tool.execStatus = tool.exportStatus = static_cast<BatchStatus>(status);
            task.tools.push_back(tool);
        }
        task.rollUpStatus();
        EXPECT_EQ(row.expected, task.execStatus) << testing::PrintToString(row.tools);
        EXPECT_EQ(row.expected, task.exportStatus);
    }
    EXPECT_TRUE(GetExecStatusText(static_cast<BatchStatus>(7)).IsEmpty());
    EXPECT_EQ(CString(_T("生成错误")), GetExecStatusText(kBatchFailed));
    EXPECT_EQ(CString(_T("导出错误")), GetExportStatusText(kBatchFailed));
}

TEST_F(BatchTest, WhatIsStoredComesBack) {
    BatchTaskList list;
    BatchTask task;
    task.name = _T("精加工");
    task.execStatus = kBatchDone;
    task.params.m_bExcludeDashed = false;
    task.params.m_bSideLinesVertical = true;
    task.params.m_dArcPrecision = 0.1;
    task.params.m_nHalfSide = 1;
    task.params.m_tolPoint.setEqualPoint(0.002);
    task.tools.push_back(MakeTool(_T("0001"), drawing.ids()));
    task.tools.back().envelopeId = drawing.ids()[0];
    task.tools.back().exportStatus = static_cast<BatchStatus>(-5);
    list.push_back(task);
    list.push_back(BatchTask());
    EXPECT_FALSE(BatchTaskList::isStored(&drawing.db()));
    ASSERT_EQ(Acad::eOk, list.store(&drawing.db()));
    ASSERT_EQ(Acad::eOk, list.store(&drawing.db())) << "over what is there";
    EXPECT_TRUE(BatchTaskList::isStored(&drawing.db()));

    BatchTaskList back;
    back.load(&drawing.db());
    ASSERT_EQ(2u, back.size());
    EXPECT_EQ(task.name, back[0].name);
    EXPECT_EQ(kBatchDone, back[0].execStatus);
    EXPECT_FALSE(back[0].params.m_bExcludeDashed);
    EXPECT_FALSE(back[0].params.m_bSideLinesVertical) << "not part of the stored form";
    EXPECT_EQ(0.1, back[0].params.m_dArcPrecision);
    EXPECT_EQ(1, back[0].params.m_nHalfSide);
    EXPECT_EQ(0.002, back[0].params.m_tolPoint.equalPoint());
    EXPECT_EQ(0.002, back[0].params.m_tolPoint.equalVector());
    ASSERT_EQ(1u, back[0].tools.size());
    const BatchTool& tool = back[0].tools[0];
    EXPECT_EQ(-5, tool.exportStatus);
    EXPECT_EQ(drawing.ids()[0], tool.envelopeId);
    EXPECT_TRUE(tool.sourceIds == drawing.ids());
    EXPECT_EQ(10.0, tool.centre.x);
    EXPECT_TRUE(back[1].tools.empty());

    // Objects that are gone leave no identifiers behind.
    AcDbObjectPointer<AcDbEntity> first(drawing.ids()[0], AcDb::kForWrite);
    ASSERT_EQ(Acad::eOk, first->erase());
    ASSERT_EQ(Acad::eOk, first.close());
    back.load(&drawing.db());
    EXPECT_TRUE(back[0].tools[0].envelopeId.isNull());
    EXPECT_EQ(drawing.ids().length() - 1, back[0].tools[0].sourceIds.length());
}

// The record itself, to be cut and bent.
AcDbObjectId RecordId(AcDbDatabase& db) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbDictionary> root(db.namedObjectsDictionaryId(), AcDb::kForRead);
    EXPECT_EQ(Acad::eOk, root->getAt(_T("QZDJBLX"), id));
    const AcDbObjectPointer<AcDbDictionary> store(id, AcDb::kForRead);
    EXPECT_EQ(Acad::eOk, store->getAt(_T("BLX"), id));
    return id;
}

TEST_F(BatchTest, DamagedRecordsLoadWhatIsWhole) {
    BatchTaskList list;
    for (const ACHAR* name : {_T("a"), _T("b"), _T("c")}) {
        BatchTask task;
        task.name = name;
        task.tools.push_back(MakeTool(name, drawing.ids()));
        list.push_back(task);
    }
    ASSERT_EQ(Acad::eOk, list.store(&drawing.db()));
    const AcDbObjectId recordId = RecordId(drawing.db());
    resbuf* whole = nullptr;
    {
        const AcDbObjectPointer<AcDbXrecord> record(recordId, AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, record->rbChain(&whole));
    }
    std::vector<resbuf*> nodes;
    for (resbuf* node = whole; node != nullptr; node = node->rbnext) nodes.push_back(node);

    const auto load = [&] {
        AcDbObjectPointer<AcDbXrecord> record(recordId, AcDb::kForWrite);
        EXPECT_EQ(Acad::eOk, record->setFromRbChain(*whole));
        EXPECT_EQ(Acad::eOk, record.close());
        BatchTaskList back;
        back.load(&drawing.db());
        return back;
    };
    // Cut anywhere: only whole tasks come back, in order.
    const size_t perTask = (nodes.size() - 2) / 3;
    for (size_t length = 1; length < nodes.size(); ++length) {
        nodes[length - 1]->rbnext = nullptr;
        EXPECT_EQ(length < 2 ? 0 : (length - 2) / perTask, load().size()) << length;
        nodes[length - 1]->rbnext = nodes[length];
    }
    // Counts and codes bent: never more than was stored, nothing allocated by a count.
    const unsigned seed = 20261121;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const Adesk::Int32 odd[] = {-1, 0, 1, 2, 3, 1 << 20, 2147483647, -2147483647 - 1};
    for (int round = 0; round < 400; ++round) {
        resbuf* const node = nodes[random() % nodes.size()];
        const short type = node->restype;
        const ads_u_val value = node->resval;
        if (type >= 90 && type <= 99) {
            node->resval.rlong = odd[random() % 8];
        } else {
            node->restype = static_cast<short>(random() % 2 == 0 ? 91 : 40);
            node->resval.mnInt64 = 0;
        }
        EXPECT_LE(load().size(), 3u);
        node->restype = type;
        node->resval = value;
    }
    // Version 1 brings no parameters: those that stand here are no second task.
    nodes[0]->resval.rlong = 1;
    EXPECT_EQ(1u, load().size());
    acutRelRb(whole);
}

TEST_F(BatchTest, RecordsOfTheFirstVersionBringNoParameters) {
    const auto item = [](short code, auto set) {
        resbuf* const node = acutNewRb(code);
        set(*node);
        return node;
    };
    const auto number = [&](short code, Adesk::Int32 value) {
        return item(code, [&](resbuf& node) { node.resval.rlong = value; });
    };
    const auto name = [&](const ACHAR* text) {
        resbuf* const node = acutNewRb(1);
        EXPECT_EQ(Acad::eOk, acutNewString(text, node->resval.rstring));
        return node;
    };
    std::vector<resbuf*> chain{number(91, 1), number(92, 2)};
    for (const ACHAR* const task : {_T("a"), _T("b")})
        chain.insert(chain.end(), {name(task), number(90, 2), number(90, 1), number(92, 0)});
    for (size_t i = 1; i < chain.size(); ++i) chain[i - 1]->rbnext = chain[i];
    ASSERT_EQ(Acad::eOk, BatchTaskList().store(&drawing.db()));
    {
        AcDbObjectPointer<AcDbXrecord> record(RecordId(drawing.db()), AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, record->setFromRbChain(*chain[0]));
    }
    acutRelRb(chain[0]);
    BatchTaskList back;
    back.load(&drawing.db());
    ASSERT_EQ(2u, back.size());
    EXPECT_STREQ(_T("b"), back[1].name);
    EXPECT_EQ(kBatchFailed, back[1].execStatus);
    EXPECT_EQ(CEncircleCalInfo().m_dArcPrecision, back[1].params.m_dArcPrecision);
}

// Any values in any order, each of which may be right, half right or nonsense.
resbuf* RandomItem(std::mt19937& random, const AcDbObjectIdArray& ids) {
    const short codes[] = {1, 10, 40, 90, 91, 92, 290, 1000, 5, 330, 310, -4};
    const Adesk::Int32 counts[] = {0, 1, 2, 3, -1, 1 << 30, 2147483647, -2147483647 - 1};
    const short code = codes[random() % (random() % 8 == 0 ? 12 : 8)];
    resbuf* const node = acutNewRb(code);
    node->resval = {};
    if (code == 1 || code == 1000) {
        ACHAR handle[AcDbHandle::kStrSiz];
        ids[static_cast<int>(random() % 5)].handle().getIntoAsciiBuffer(handle);
        const ACHAR* const texts[] = {
            handle, _T(""), _T("0"), _T("zz"), _T("-1"), _T("FFFFFFFFFFFFFFFFFFFFFFFF"), _T("名")};
        EXPECT_EQ(Acad::eOk, acutNewString(texts[random() % 7], node->resval.rstring));
    } else if (code == 10 || code == 40) {
        const double values[] = {0.0, 1.5, -1e308, std::nan(""), HUGE_VAL};
        for (double& value : node->resval.rpoint) value = values[random() % 5];
    } else if (code != 310 && code != 330 && code != 5 && code != -4) {
        node->resval.rlong = counts[random() % (random() % 4 == 0 ? 8 : 4)];
    } else {
        node->restype = 70;
    }
    return node;
}

// The stored form of a list that may end, or go astray, anywhere.
std::vector<short> Shape(std::mt19937& random) {
    std::vector<short> codes{91, 92};
    for (unsigned tasks = random() % 3; tasks > 0; --tasks) {
        codes.insert(codes.end(), {1, 90, 90, 92});
        for (unsigned tools = random() % 3; tools > 0; --tools) {
            codes.insert(codes.end(), {1, 10, 90, 90, 1000, 92});
            codes.insert(codes.end(), random() % 3, 1000);
        }
        codes.insert(codes.end(), {290, 40, 40, 40, 40, 40, 90});
    }
    return codes;
}

TEST_F(BatchTest, AnyRecordLoadsWithoutHarm) {
    ASSERT_EQ(Acad::eOk, BatchTaskList().store(&drawing.db()));
    const AcDbObjectId recordId = RecordId(drawing.db());
    const unsigned seed = 20261122;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    size_t loaded = 0;
    for (int round = 0; round < 3000; ++round) {
        resbuf* head = nullptr;
        resbuf** end = &head;
        size_t length = 0;
        for (const short code : Shape(random)) {
            // Mostly the code that belongs here, with whatever value.
            do {
                acutRelRb(*end);
                *end = RandomItem(random, drawing.ids());
            } while ((*end)->restype != code && random() % 300 != 0);
            end = &(*end)->rbnext;
            ++length;
        }
        {
            AcDbObjectPointer<AcDbXrecord> record(recordId, AcDb::kForWrite);
            ASSERT_EQ(Acad::eOk, record->setFromRbChain(*head));
        }
        acutRelRb(head);
        BatchTaskList back;
        back.load(&drawing.db());
        loaded += back.size();
        // Every task takes items of the chain; a count alone makes none.
        EXPECT_LE(back.size() * 4, length);
        for (const BatchTask& task : back)
            for (const BatchTool& tool : task.tools)
                for (int i = 0; i < tool.sourceIds.length(); ++i)
                    EXPECT_FALSE(tool.sourceIds[i].isNull());
    }
    EXPECT_GT(loaded, 100u) << "the records are too broken to test anything";
}

TEST_F(BatchTest, ANameThatIsNoFileNameFailsItsExport) {
    const std::string folder = test::ScratchFolder();
    BatchTool tool = MakeTool(_T(""), drawing.ids());
    tool.computeEnvelope(CEncircleCalInfo());
    ASSERT_EQ(kBatchDone, tool.execStatus);
    const CString target = test::Widen(folder.substr(0, folder.size() - 1)).c_str();
    for (const ACHAR* name : {_T(""), _T("../outside"), _T("..\\outside"), _T("a/b"), _T("C:x"),
                              _T("what?"), _T("tab\tbed"), _T("dot."), _T("nul"), _T("COM1.x")}) {
        tool.name = name;
        tool.exportStatus = kBatchNotStarted;
        tool.exportSolid(target);
        EXPECT_EQ(kBatchFailed, tool.exportStatus) << test::Narrow(name);
    }
    EXPECT_FALSE(std::ifstream(folder + "../outside.sat").good());
    for (const ACHAR* name : {_T("0001"), _T("D12 R0.5"), _T("console"), _T(".5")}) {
        tool.name = name;
        tool.exportSolid(target);
        EXPECT_EQ(kBatchDone, tool.exportStatus) << test::Narrow(name);
        const std::string path = folder + test::Narrow(name) + ".sat";
        EXPECT_TRUE(std::ifstream(path).good()) << path;
        std::remove(path.c_str());
    }
}

TEST_F(BatchTest, ToolsOfATaskAreComputedInOrder) {
    BatchTask task;
    task.tools.push_back(MakeTool(_T("good"), drawing.ids()));
    task.tools.push_back(MakeTool(_T("empty"), AcDbObjectIdArray()));
    task.tools.push_back(MakeTool(_T("again"), drawing.ids()));
    List().push_back(task);
    List()[0].run();
    EXPECT_EQ(3, g_steps);
    EXPECT_EQ(kBatchFailed, List()[0].execStatus) << "a later success does not mend it";
    EXPECT_EQ(kBatchDone, List()[0].tools[0].execStatus);
    EXPECT_EQ(kBatchFailed, List()[0].tools[1].execStatus);
    EXPECT_FALSE(List()[0].tools[2].envelopeId.isNull());

    // Once more: the former envelope goes, the new one stands in its place.
    const AcDbObjectId former = List()[0].tools[0].envelopeId;
    List()[0].run();
    EXPECT_TRUE(former.isErased());
    EXPECT_FALSE(List()[0].tools[0].envelopeId.isErased());

    // An envelope among the picked entities is an old one: it is erased, not taken as input.
    BatchTool& tool = List()[0].tools[0];
    const AcDbObjectId old = List()[0].tools[2].envelopeId;
    tool.sourceIds.append(old);
    tool.computeEnvelope(List()[0].params);
    EXPECT_TRUE(old.isErased());
    EXPECT_EQ(drawing.ids().length(), tool.sourceIds.length());
    EXPECT_EQ(kBatchDone, tool.execStatus);

    tool.exportStatus = kBatchDone;
    tool.deleteEnvelope();
    EXPECT_TRUE(tool.envelopeId.isNull());
    EXPECT_EQ(kBatchNotStarted, tool.execStatus);
    EXPECT_EQ(kBatchDone, tool.exportStatus);
}

TEST_F(BatchTest, ARunSurvivesWhatClicksDoToTheList) {
    for (int i = 0; i < 2; ++i) {
        BatchTask task;
        for (int k = 0; k < 3; ++k) task.tools.push_back(MakeTool(_T("t"), drawing.ids()));
        List().push_back(task);
    }
    const BatchTask original = List()[1];

    // A tool is deleted, and the list moves in memory.
    g_pump = [&](int current) {
        if (current != 1) return;
        List()[1].tools.erase(List()[1].tools.begin() + 1);
        for (int i = 0; i < 50; ++i) List().insert(List().begin(), BatchTask());
    };
    List()[1].run();
    EXPECT_EQ(kBatchDone, List()[51].tools[0].execStatus);
    EXPECT_EQ(kBatchDone, List()[51].tools[1].execStatus);
    EXPECT_EQ(3, g_steps);

    // The task itself goes.
    g_steps = 0;
    g_pump = [&](int current) {
        if (current == 1) List().clear();
    };
    List()[51].run();
    EXPECT_EQ(2, g_steps);

    // Another drawing becomes current: nothing is computed in it.
    List().push_back(original);
    TestDrawing* other = nullptr;
    g_steps = 0;
    g_pump = [&](int current) {
        if (current == 1) other = new TestDrawing("L 0,0 1,1");
    };
    List()[0].rollUpStatus();
    BatchTaskList& mine = List();
    const SRunReport report = mine[0].run();
    EXPECT_EQ(2, g_steps);
    const std::string entities = other->Dump();
    EXPECT_EQ(1, std::count(entities.begin(), entities.end(), '\n'));
    // What was computed is done, and the rest is not said to be.
    EXPECT_EQ(1, report.m_nDone);
    EXPECT_EQ(0, report.m_nFailed);
    EXPECT_EQ(2, report.m_nNotRun);
    EXPECT_EQ(kBatchDone, mine[0].tools[0].execStatus);
    EXPECT_EQ(kBatchNotStarted, mine[0].tools[2].execStatus);
    EXPECT_EQ(kBatchNotStarted, mine[0].execStatus);
    delete other;
}

// Never computed, undone or erased by hand: there is nothing to export, and the task is not done.
TEST_F(BatchTest, ExportWithoutAnEnvelopeIsAFailure) {
    const CString folder = test::Widen(test::ScratchFolder()).c_str();
    BatchTask task;
    task.tools.push_back(MakeTool(_T("never"), drawing.ids()));
    task.tools.push_back(MakeTool(_T("erased"), drawing.ids()));
    task.tools.push_back(MakeTool(_T("good"), drawing.ids()));
    // An export of an earlier envelope does not make the task's done.
    task.tools[0].exportStatus = kBatchDone;
    for (const size_t i : {1, 2}) task.tools[i].computeEnvelope(task.params);
    {
        AcDbEntityPointer envelope(task.tools[1].envelopeId, AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, envelope->erase());
    }
    EXPECT_FALSE(task.tools[0].hasEnvelope() || task.tools[1].hasEnvelope());
    List().push_back(task);
    const SRunReport report = List()[0].exportAll(folder);
    EXPECT_EQ(1, report.m_nDone);
    EXPECT_EQ(2, report.m_nFailed);
    ASSERT_EQ(2u, report.m_failures.size());
    EXPECT_EQ(0, report.m_failures[1].Find(_T("erased：")));
    EXPECT_EQ(kBatchFailed, List()[0].exportStatus);
    EXPECT_EQ(kBatchDone, List()[0].tools[0].exportStatus) << "left as it was";
    EXPECT_EQ(kBatchFailed, List()[0].tools[1].exportStatus);
    EXPECT_EQ(kBatchDone, List()[0].tools[2].exportStatus);
    std::remove((test::ScratchFolder() + "good.sat").c_str());
}

TEST_F(BatchTest, ReasonsOfAComputationThatFoundNothing) {
    TestDrawing locked("L@LOCKED 0,0 0,5 | L@LOCKED 0,5 30,5 | T 0,0 word");
    BatchTool tool = MakeTool(_T("t"), locked.ids());
    const auto reason = [&] {
        tool.computeEnvelope(CEncircleCalInfo());
        EXPECT_EQ(kBatchFailed, tool.execStatus);
        return host::Narrow(tool.reason.GetString());
    };
    AcDbObjectPointer<AcDbLayerTableRecord> layer(FindLayer(_T("LOCKED")), AcDb::kForWrite);
    layer->setIsLocked(true);
    ASSERT_EQ(Acad::eOk, layer.close());
    EXPECT_EQ(
        "所选半边没有找到轮廓（部分图元在锁定的图层上）；未参与：锁定图层 LOCKED 2个，非轮廓类型 "
        "Text 1个",
        reason());
    tool.sourceIds.removeLast();
    EXPECT_EQ("图元全部在锁定的图层上；未参与：锁定图层 LOCKED 2个", reason());
    tool.sourceIds = AcDbObjectIdArray();
    EXPECT_EQ("没有图元（已删除）", reason());
}

// Nothing is drawn with numbers that a stored task should not have: they would take curves away.
TEST_F(BatchTest, NumbersOutsideTheirSenseFailATool) {
    TestDrawing profile("L 0,0 0,5 | A 0,0 5 0 90");
    const struct {
        double dPoint, dPrecision;
        const char* pReason;
    } cases[] = {
        {0.0005, 1e-7, "圆弧离散精度 1e-07 必须大于点公差 0.0005，否则圆弧会丢失"},
        {0.0005, 0.0, "圆弧离散精度必须大于0"},
        {0.0005, std::nan(""), "圆弧离散精度必须大于0"},
        {-1.0, 0.3, "公差必须大于0"},
    };
    for (const auto& c : cases) {
        BatchTool tool = MakeTool(_T("t"), profile.ids());
        CEncircleCalInfo info;
        info.m_tolPoint.setEqualPoint(c.dPoint);
        info.m_dArcPrecision = c.dPrecision;
        tool.computeEnvelope(info);
        EXPECT_EQ(kBatchFailed, tool.execStatus);
        EXPECT_EQ(c.pReason, host::Narrow(tool.reason.GetString()));
        EXPECT_FALSE(tool.hasEnvelope());
    }
}

// What could not be read to its end stays in the drawing under another name.
TEST_F(BatchTest, ADamagedRecordIsNotStoredOver) {
    BatchTaskList list;
    list.resize(2);
    ASSERT_EQ(Acad::eOk, list.store(&drawing.db()));
    const AcDbObjectId recordId = RecordId(drawing.db());
    {
        AcDbObjectPointer<AcDbXrecord> record(recordId, AcDb::kForWrite);
        resbuf* chain = nullptr;
        ASSERT_EQ(Acad::eOk, record->rbChain(&chain));
        chain->rbnext->resval.rlong = 3;  // one task more than there are
        ASSERT_EQ(Acad::eOk, record->setFromRbChain(*chain));
        acutRelRb(chain);
    }
    list.load(&drawing.db());
    EXPECT_EQ(2u, list.size());
    list.pop_back();
    ASSERT_EQ(Acad::eOk, list.store(&drawing.db()));
    EXPECT_NE(recordId, RecordId(drawing.db()));
    EXPECT_FALSE(recordId.isErased());
    ASSERT_EQ(Acad::eOk, list.store(&drawing.db())) << "once";
    list.load(&drawing.db());
    EXPECT_EQ(1u, list.size());
}

}  // namespace
