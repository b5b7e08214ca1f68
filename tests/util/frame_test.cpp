// Drawing frames and the tool numbers that they carry.
#include <gtest/gtest.h>

#include <functional>

#include "ToolFrame.h"
#include "host/db/build.h"
#include "support/test_drawing.h"

namespace {

constexpr const char* kKey = "TUKANGE_NAME_IDENTITY";

resbuf* TextNode(int code, const ACHAR* text) {
    resbuf* const node = acutNewRb(code);
    EXPECT_EQ(Acad::eOk, acutNewString(text, node->resval.rstring));
    return node;
}

// The three ways to attach a text, as other programs leave them in a drawing.
void AttachXData(AcDbObjectId id, const ACHAR* text, const char* application = kKey) {
    const std::wstring name = test::Widen(application);
    EXPECT_TRUE(acdbRegApp(name.c_str()));
    resbuf* const chain = TextNode(1001, name.c_str());
    chain->rbnext = acutNewRb(1070);
    chain->rbnext->rbnext = TextNode(1000, text);
    AcDbEntityPointer entity(id, AcDb::kForWrite);
    EXPECT_EQ(Acad::eOk, entity->setXData(chain));
    acutRelRb(chain);
}

void AttachRecord(AcDbObjectId id, const ACHAR* text, int code = 1) {
    AcDbObjectId dictionaryId;
    {
        AcDbEntityPointer entity(id, AcDb::kForWrite);
        if (entity->extensionDictionary().isNull()) {
            EXPECT_EQ(Acad::eOk, entity->createExtensionDictionary());
        }
        dictionaryId = entity->extensionDictionary();
    }
    AcDbObjectPointer<AcDbDictionary> dictionary(dictionaryId, AcDb::kForWrite);
    auto* const record = new AcDbXrecord;
    AcDbObjectId recordId;
    EXPECT_EQ(Acad::eOk, dictionary->setAt(test::Widen(kKey).c_str(), record, recordId));
    resbuf* const chain = acutNewRb(70);
    chain->rbnext = TextNode(code, text);
    EXPECT_EQ(Acad::eOk, record->setFromRbChain(*chain));
    acutRelRb(chain);
    EXPECT_EQ(Acad::eOk, record->close());
}

void AttachAttribute(AcDbObjectId id, const ACHAR* text, const char* tag = kKey) {
    AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    auto* const attribute = new AcDbAttribute;
    EXPECT_EQ(Acad::eOk, attribute->setTag(test::Widen(tag).c_str()));
    EXPECT_EQ(Acad::eOk, attribute->setTextString(text));
    EXPECT_EQ(Acad::eOk, attribute->setInvisible(true));
    EXPECT_EQ(Acad::eOk, reference->appendAttribute(attribute));
    EXPECT_EQ(Acad::eOk, attribute->close());
}

struct CarrierCase {
    const char* name;
    std::function<void(AcDbObjectId)> attach;
    const char* number;
};

TEST(ToolFrames, CarryTheirNumberInOneOfThreeWays) {
    const CarrierCase cases[] = {
        {"nothing", [](AcDbObjectId) {}, ""},
        {"extended data", [](AcDbObjectId id) { AttachXData(id, L"X1"); }, "X1"},
        {"record", [](AcDbObjectId id) { AttachRecord(id, L"R1"); }, "R1"},
        {"record of the long text", [](AcDbObjectId id) { AttachRecord(id, L"R2", 300); }, "R2"},
        {"attribute", [](AcDbObjectId id) { AttachAttribute(id, L"A1"); }, "A1"},
        {"attribute in other letters",
         [](AcDbObjectId id) { AttachAttribute(id, L"A2", "Tukange_Name_Identity"); }, "A2"},
        {"data of another application",
         [](AcDbObjectId id) { AttachXData(id, L"X2", "OTHER_APP"); }, ""},
        {"attribute of another tag", [](AcDbObjectId id) { AttachAttribute(id, L"A3", "TITLE"); },
         ""},
        {"the data before the record",
         [](AcDbObjectId id) {
             AttachRecord(id, L"R3");
             AttachXData(id, L"X3");
         },
         "X3"},
        {"the record before the attribute",
         [](AcDbObjectId id) {
             AttachAttribute(id, L"A4");
             AttachRecord(id, L"R4");
         },
         "R4"},
    };
    for (const CarrierCase& c : cases) {
        SCOPED_TRACE(c.name);
        test::TestDrawing d;
        d.Block("FRAME", "P 0,0 40,0 40,20 0,20 c").Add("I FRAME 10,5");
        c.attach(d.ids()[0]);
        EXPECT_EQ(c.number, test::Narrow(GetAttachedText(d.ids()[0], kToolNumberKey)));
        const std::vector<SToolFrame> frames = CollectToolFrames();
        ASSERT_EQ(*c.number == 0 ? 0u : 1u, frames.size());
        if (frames.empty()) continue;
        EXPECT_EQ(c.number, test::Narrow(frames[0].m_strNumber));
        EXPECT_EQ("10,5 50,25",
                  test::Show(frames[0].m_rect.min) + " " + test::Show(frames[0].m_rect.max));
        EXPECT_TRUE(host::OpenObjectsReport(d.db()).empty());
    }
}

TEST(ToolFrames, AreBlockReferencesInDrawingOrder) {
    test::TestDrawing d;
    d.Block("FRAME", "P 0,0 40,0 40,20 0,20 c");
    d.Add("L 0,0 1,1 | I FRAME 0,0 | I FRAME 0,0 2 | I FRAME 100,0 1 90");
    AttachXData(d.ids()[0], L"line");
    AttachXData(d.ids()[1], L"small");
    AttachAttribute(d.ids()[2], L"large");
    AttachRecord(d.ids()[3], L"turned");
    const std::vector<SToolFrame> frames = CollectToolFrames();
    ASSERT_EQ(3u, frames.size());
    // The first that holds all of the box, to two millionths.
    const auto find = [&](double x1, double y1, double x2, double y2) {
        CQZRect box;
        box.Extend(AcGePoint3d(x1, y1, 0));
        box.Extend(AcGePoint3d(x2, y2, 0));
        return test::Narrow(FindToolNumber(frames, box));
    };
    EXPECT_EQ("small", find(1, 1, 39, 19));
    EXPECT_EQ("small", find(0, 0, 40 + 1.9e-6, 20));
    EXPECT_EQ("large", find(0, 0, 40 + 2.1e-6, 20));
    EXPECT_EQ("large", find(50, 30, 60, 35));
    EXPECT_EQ("turned", find(85, 5, 95, 35));
    EXPECT_EQ("", find(70, 5, 95, 35));
    EXPECT_EQ("", test::Narrow(FindToolNumber({}, CQZRect())));
}

// Puts a reference to a block into another block than model space.
AcDbObjectId AddReference(AcDbObjectId blockId, AcDbObjectId ownerId, double x) {
    auto reference = std::make_unique<AcDbBlockReference>(AcGePoint3d(x, 0, 0), blockId);
    AcDbBlockTableRecordPointer owner(ownerId, AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(Acad::eOk, owner->appendAcDbEntity(id, reference.get()));
    EXPECT_EQ(Acad::eOk, reference.release()->close());
    return id;
}

TEST(ToolFrames, LieInEverySpaceButNotInsideBlocks) {
    test::TestDrawing d;
    d.Block("FRAME", "P 0,0 40,0 40,20 0,20 c").Block("OTHER", "L 0,0 1,1").Add("I FRAME 0,0");
    AcDbObjectId blockId, otherId, paperId;
    {
        AcDbObjectPointer<AcDbBlockReference> model(d.ids()[0], AcDb::kForRead);
        blockId = model->blockTableRecord();
        AcDbBlockTablePointer table(d.db().blockTableId(), AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, table->getAt(ACDB_PAPER_SPACE, paperId));
        ASSERT_EQ(Acad::eOk, table->getAt(L"OTHER", otherId));
    }
    // The layout's comes first in the drawing, but model space is looked through before.
    AttachXData(AddReference(blockId, paperId, 300), L"paper");
    AttachXData(AddReference(blockId, otherId, 500), L"inside");
    AttachXData(d.ids()[0], L"model");
    std::string numbers;
    for (const SToolFrame& frame : CollectToolFrames())
        numbers += test::Narrow(frame.m_strNumber) + " " + test::Show(frame.m_rect.min) + " ";
    EXPECT_EQ("model 0,0 paper 300,0 ", numbers);
}

}  // namespace
