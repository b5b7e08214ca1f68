// What the dialogs ask in the drawing, answered as a user does: tools picked for tasks, and hidden
// entities shown again.
#include <gtest/gtest.h>

#include "StdAfx.h"

#include "AddEntity.h"
#include "DocumentLock.h"
#include "DrawingVisibility.h"
#include "PickedTool.h"
#include "support/scripted_input.h"

namespace {

using host::SelectionAnswer;

class Picking : public ::testing::Test {
protected:
    Picking() {
        m_database = host::Session::Get().New()->database();
        m_lock = std::make_unique<CDocumentLock>();
        m_lineId = AddLine(AcGePoint3d(0, 5, 0), AcGePoint3d(40, 5, 0), 256, ACDB_MODEL_SPACE);
    }

    test::ScriptedInput m_input;
    AcDbDatabase* m_database;
    std::unique_ptr<CDocumentLock> m_lock;  // as every dialog holds one
    AcDbObjectId m_lineId;
};

TEST_F(Picking, AToolTakesEntitiesCentreAndNumber) {
    const struct {
        const char* name;
        const ACHAR* previous;
        const ACHAR* typed;
        const ACHAR* number;
        const ACHAR* offered;
    } rows[] = {
        {"the first one, by Enter", _T(""), _T(""), _T("0001"), _T("：")},
        {"the next one, by Enter", _T("0007"), _T(""), _T("0008"), _T("<0008>")},
        {"typed", _T("0007"), _T("T 12"), _T("T 12"), _T("<0008>")},
        {"typed in Chinese", _T(""), _T("刀具9"), _T("刀具9"), _T("")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        m_input.transcript.clear();
        m_input.GiveSelection(SelectionAnswer::kAll);
        m_input.GivePoint(20, 0);
        m_input.GiveText(row.typed);
        SPickedTool picked;
        ASSERT_TRUE(PickTool(row.previous, picked));
        ASSERT_EQ(1, picked.m_ids.length());
        EXPECT_TRUE(m_lineId == picked.m_ids[0]);
        EXPECT_EQ(20.0, picked.m_centre.x);
        EXPECT_EQ(0.0, picked.m_centre.z);
        EXPECT_STREQ(row.number, picked.m_strNumber);
        if (row.offered[0] == _T('<')) {
            EXPECT_NE(std::wstring::npos, m_input.transcript.find(row.offered));
        } else {
            EXPECT_EQ(std::wstring::npos, m_input.transcript.find(L'<')) << "nothing to offer";
        }
    }
}

// Whichever prompt the user leaves, there is no tool, and no prompt comes behind it.
TEST_F(Picking, EscapeAtAnyPromptEndsIt) {
    for (int left = 0; left < 4; ++left) {
        SCOPED_TRACE(left);
        m_input.selections.clear();
        m_input.points.clear();
        m_input.texts.clear();
        m_input.GiveSelection(left == 0   ? SelectionAnswer::kEscape
                              : left == 1 ? SelectionAnswer::kEnter
                                          : SelectionAnswer::kAll);
        if (left > 2) m_input.GivePoint(20, 0);
        host::Answer escape;
        escape.kind = host::Answer::kEscape;
        if (left == 2) m_input.points.push_back(escape);
        m_input.texts.push_back(escape);
        SPickedTool picked;
        EXPECT_FALSE(PickTool(_T("0001"), picked));
        EXPECT_EQ(left == 3 ? 0u : 1u, m_input.texts.size()) << "the number was asked for";
    }
}

TEST_F(Picking, HiddenEntitiesShowAgainButForLockedAndFrozenLayers) {
    const ACHAR* const layers[] = {_T("0"), _T("OFF"), _T("LOCKED"), _T("FROZEN")};
    std::vector<AcDbObjectId> ids;
    for (const ACHAR* const name : layers) {
        AcDbLayerTablePointer table(m_database->layerTableId(), AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, table.openStatus());
        AcDbObjectId layerId;
        if (table->getAt(name, layerId) != Acad::eOk) {
            auto* const layer = new AcDbLayerTableRecord;
            ASSERT_EQ(Acad::eOk, layer->setName(name));
            ASSERT_EQ(Acad::eOk, table->add(layerId, layer));
            ASSERT_EQ(Acad::eOk, layer->close());
        }
        ids.push_back(AddLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 0), 256, ACDB_MODEL_SPACE));
        AcDbObjectPointer<AcDbEntity> line(ids.back(), AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, line->setLayer(layerId));
        ASSERT_EQ(Acad::eOk, line->setVisibility(AcDb::kInvisible));
        ASSERT_EQ(Acad::eOk, line->close());
        AcDbLayerTableRecordPointer layer(layerId, AcDb::kForWrite);
        if (ids.size() == 2) layer->setIsOff(true);
        if (ids.size() == 3) layer->setIsLocked(true);
        if (ids.size() == 4) {
            EXPECT_EQ(Acad::eOk, layer->setIsFrozen(true));
        }
    }
    ShowHiddenEntities();
    std::string shown;
    for (const AcDbObjectId& id : ids) {
        const AcDbObjectPointer<AcDbEntity> line(id, AcDb::kForRead);
        shown += line->visibility() == AcDb::kVisible ? 'x' : '-';
    }
    EXPECT_EQ("xx--", shown);
}

}  // namespace
