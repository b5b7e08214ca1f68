// Selection sets: what each way of selecting takes and leaves out.
#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "host/ed/selection_sets.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

using namespace host;

namespace {

// a..h, by what keeps them from being picked.
constexpr const char* kEntities =
    "L 0,0 10,0 | L@LOCKED 0,1 10,1 | L@OFF 0,2 10,2 | L@FROZEN 0,3 10,3 | L 0,4 10,4 |"
    "P 20,0 30,0 30,5 c | C 25,20 3 | T 0,20 note";

class SelectionTest : public testing::Test {
protected:
    SelectionTest() {
        AcApDocument* const document = Session::Get().New();
        EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
        test::TestDrawing drawing(*document->database(), "");
        drawing.Add(kEntities);
        drawing.Layer("LOCKED", "", "lock").Layer("OFF", "", "off").Layer("FROZEN", "", "freeze");
        for (int i = 0; i < drawing.ids().length(); ++i) ids.push_back(drawing.ids()[i]);
        {
            AcDbEntityPointer hidden(ids[4], AcDb::kForWrite);
            EXPECT_EQ(Acad::eOk, hidden->setVisibility(AcDb::kInvisible));
        }
        EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    }
    ~SelectionTest() override { EXPECT_EQ(0, SelectionSetCount()) << "sets left"; }

    // The letters of what is in the set, in the drawing's order; the code when there is no set.
    std::string Get(const ACHAR* mode, const void* pt1 = nullptr, const void* pt2 = nullptr,
                    const resbuf* filter = nullptr) {
        ads_name set;
        const int code = acedSSGet(mode, pt1, pt2, filter, set);
        if (code != RTNORM) return std::to_string(code);
        Adesk::Int32 length = 0;
        EXPECT_EQ(RTNORM, acedSSLength(set, &length));
        std::string letters(ids.size(), '.');
        for (Adesk::Int32 i = 0; i < length; ++i) {
            ads_name entity;
            AcDbObjectId id;
            EXPECT_EQ(RTNORM, acedSSName(set, i, entity));
            EXPECT_EQ(Acad::eOk, acdbGetObjectId(id, entity));
            for (size_t k = 0; k < ids.size(); ++k)
                if (ids[k] == id) letters[k] = static_cast<char>('a' + k);
        }
        ads_name beyond;
        EXPECT_EQ(RTERROR, acedSSName(set, length, beyond));
        EXPECT_EQ(RTNORM, acedSSFree(set));
        return letters;
    }

    std::string GetFiltered(const ACHAR* mode, int code, const ACHAR* text) {
        resbuf* const filter = acutNewRb(code);
        EXPECT_EQ(Acad::eOk, acutNewString(text, filter->resval.rstring));
        const std::string letters = Get(mode, nullptr, nullptr, filter);
        acutRelRb(filter);
        return letters;
    }

    void Answer(std::vector<AcDbObjectId> picked) {
        SelectionAnswer answer;
        answer.kind = SelectionAnswer::kEntities;
        answer.entities = std::move(picked);
        input.selections.push_back(answer);
    }

    test::ScriptedInput input;
    std::vector<AcDbObjectId> ids;
};

const std::string kError = std::to_string(RTERROR);

TEST_F(SelectionTest, ModesTakeWhatTheyShould) {
    EXPECT_EQ("a.c.efgh", Get(_T("A"))) << "off and invisible, but neither frozen nor locked";
    EXPECT_EQ("abcdefgh", Get(_T("X")));
    EXPECT_EQ("abcdefgh", Get(_T("P"))) << "the previous one";
    EXPECT_EQ(".......h", Get(_T("L"))) << "the newest that is shown";
    EXPECT_EQ(kError, Get(_T("I"))) << "nothing was picked first";
    EXPECT_EQ(kError, Get(_T("NO")));
    EXPECT_EQ(kError, Get(_T("W"))) << "no corners";
    const ads_point from = {-1, -1, 0}, to = {26, 30, 0};
    EXPECT_EQ("ab.....h", Get(_T("W"), from, to)) << "inside, and shown; the circle reaches out";
    EXPECT_EQ("ab...fgh", Get(_T("C"), from, to)) << "touched as well";
    EXPECT_EQ("ab...fgh", Get(_T("_C"), to, from)) << "corners in any order";
    EXPECT_EQ("a....fgh", Get(_T("C:L"), from, to)) << "nothing on locked layers";
}

TEST_F(SelectionTest, PeoplePickWhatTheySee) {
    const ACHAR* prompts[2] = {_T("\nPick: "), _T("\nTake away: ")};
    Answer(ids);
    EXPECT_EQ("ab...fgh", Get(_T(":$"), prompts));
    EXPECT_NE(std::wstring::npos, input.transcript.find(L"\nPick: "));
    Answer(ids);
    EXPECT_EQ("a....fgh", Get(_T("_:$:L"), prompts));
    Answer({ids[5], ids[0], ids[5]});
    EXPECT_EQ("a....f..", Get(_T(":$"), prompts)) << "nothing twice";
    Answer({ids[6], ids[0]});
    EXPECT_EQ("......g.", Get(_T(":S"))) << "the first";
    Answer({ids[2]});
    EXPECT_EQ(kError, Get(_T(":$"), prompts)) << "on a layer that is off";
    EXPECT_EQ(kError, Get(_T(":$"))) << "own prompts, but none given";
    const ACHAR* half[2] = {_T("\nPick: "), nullptr};
    EXPECT_EQ(kError, Get(_T(":$"), half)) << "both are needed";
    input.GiveSelection(SelectionAnswer::kEscape);
    EXPECT_EQ(std::to_string(RTCAN), Get(_T(":$"), prompts));
    const ads_point at = {28.05, 20, 0};
    EXPECT_EQ("......g.", Get(nullptr, at)) << "what lies at a point";
}

TEST_F(SelectionTest, FiltersAskForClassAndLayer) {
    EXPECT_EQ(".....f..", GetFiltered(_T("X"), 0, _T("LWPOLYLINE")));
    EXPECT_EQ(".....f..", GetFiltered(_T("A"), 0, _T("lwpolyline")));
    EXPECT_EQ(kError, GetFiltered(_T("A"), RTDXF0, _T("lwpolyline")))
        << "the host takes it for none";
    EXPECT_EQ("abcde.g.", GetFiltered(_T("X"), 0, _T("LINE,CIRCLE")));
    EXPECT_EQ(".bc.....", GetFiltered(_T("X"), 8, _T("locked,o*")));
    EXPECT_EQ(kError, GetFiltered(_T("X"), 0, _T("INSERT"))) << "an empty set is none";
    resbuf radius = {};
    radius.restype = 40;
    radius.resval.rreal = 1.0;
    EXPECT_EQ(kError, Get(_T("X"), nullptr, nullptr, &radius)) << "a code that cannot be asked for";
}

TEST_F(SelectionTest, SetsAreFewAndFreedOnce) {
    std::vector<std::array<Adesk::IntPtr, 2>> names;
    ads_name set;
    while (acedSSAdd(nullptr, nullptr, set) == RTNORM) names.push_back({set[0], set[1]});
    EXPECT_EQ(128u, names.size());
    EXPECT_EQ(kError, Get(_T("A"))) << "no room for another";
    for (const auto& name : names) {
        const ads_name one = {name[0], name[1]};
        EXPECT_EQ(RTNORM, acedSSFree(one));
        EXPECT_EQ(RTERROR, acedSSFree(one));
    }
    ads_name entity;
    ASSERT_EQ(Acad::eOk, acdbGetAdsName(entity, ids[0]));
    ASSERT_EQ(RTNORM, acedSSAdd(entity, nullptr, set));
    EXPECT_EQ(RTNORM, acedSSMemb(entity, set));
    EXPECT_EQ(RTNORM, acedSSDel(entity, set));
    EXPECT_EQ(RTERROR, acedSSMemb(entity, set));
    EXPECT_EQ(RTNORM, acedSSFree(set));
}

}  // namespace
