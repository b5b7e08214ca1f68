// The host's own commands, typed as a script types them: what they draw and change, and that one
// step back takes all of it away.
#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "host/base/format.h"
#include "host/ed/builtin_commands.h"
#include "host/ed/entity_query.h"
#include "host/ed/point_text.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

using namespace host;

namespace {

class CommandsTest : public testing::Test {
protected:
    CommandsTest() { document = Session::Get().New(); }

    void Draw(const char* entities) {
        EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
        test::TestDrawing(*document->database(), "").Add(entities);
        EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    }
    // Each entity as its class and box, in order.
    std::string Shown() const {
        std::wstring text;
        const auto ids = QueryEntities(*document->database(), QueryRules::Displayed());
        for (const AcDbObjectId id : ids) {
            const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
            AcDbExtents box;
            EXPECT_EQ(Acad::eOk, entity->getGeomExtents(box));
            text += std::wstring(entity->isA()->name() + 4) + L" " + PointText(box.minPoint()) +
                    L" " + PointText(box.maxPoint()) + L"; ";
        }
        return Narrow(text);
    }
    // The keystrokes are separated by blanks; "~" is Enter alone.
    void Type(const std::string& keys) {
        std::wstring line = Widen(keys);
        for (wchar_t& c : line) {
            if (c == L' ') c = L'\n';
            if (c == L'~') c = L' ';
        }
        std::wstring typed;
        for (const wchar_t c : line)
            if (c != L' ') typed += c;
        EXPECT_TRUE(Session::Get().Execute(typed)) << keys;
    }
    bool HasSaid(const wchar_t* text) const {
        return input.transcript.find(text) != std::wstring::npos;
    }

    test::ScriptedInput input;
    AcApDocument* document;
};

TEST_F(CommandsTest, DrawAndTakeBackInOneStep) {
    const struct {
        const char* keys;
        const char* drawn;
    } rows[] = {
        {"LINE 0,0 @10,0 @5<90 c", "Line 0,0 10,0; Line 10,0 10,5; Line 0,0 10,5; "},
        {"L 0,0 10,0 20,5 u ~", "Line 0,0 10,0; "},
        {"L 0,0 c 10,0 ~", "Line 0,0 10,0; "},
        {"PLINE 0,0 10,0 a @0,4 l 0,4 c", "Polyline 0,0 12,4; "},
        {"PL 0,0 10,0 10,5 u ~", "Polyline 0,0 10,0; "},
        {"ARC 10,0 0,10 -10,0", "Arc -10,0 10,10; "},
        // The other way round through the bottom.
        {"A 10,0 0,-10 -10,0", "Arc -10,-10 10,0; "},
        {"A c 0,0 10,0 0,10", "Arc 0,0 10,10; "},
    };
    for (const auto& row : rows) {
        Type(row.keys);
        EXPECT_EQ(row.drawn, Shown()) << row.keys;
        Type("U");
        EXPECT_EQ("", Shown()) << row.keys;
        Type("REDO");
        EXPECT_EQ(row.drawn, Shown()) << row.keys;
        Type("U");
    }
    EXPECT_TRUE(HasSaid(L"LINE undone."));
    EXPECT_TRUE(HasSaid(L"LINE redone."));
    EXPECT_TRUE(HasSaid(L"Two segments are needed"));
    Type("A 0,0 5,0 10,0");
    EXPECT_TRUE(HasSaid(L"lie on a line"));
}

TEST_F(CommandsTest, ChangeWhatIsSelectedAndTakeItBack) {
    const char* const before = "Line 0,0 10,0; Circle 18,-2 22,2; ";
    Draw("L 0,0 10,0 | C 20,0 2");
    const struct {
        const char* keys;
        const char* after;
    } rows[] = {
        {"MOVE all ~ 0,0 5,5", "Line 5,5 15,5; Circle 23,3 27,7; "},
        {"M all ~ 1,2 ~", "Line 1,2 11,2; Circle 19,0 23,4; "},
        {"ROTATE all ~ 0,0 90", "Line 0,0 0,10; Circle -2,18 2,22; "},
        {"RO all ~ 0,0 0,7", "Line 0,0 0,10; Circle -2,18 2,22; "},
        {"SCALE all ~ 0,0 2", "Line 0,0 20,0; Circle 36,-4 44,4; "},
        {"SC all ~ 0,0 0", before},
        {"MIRROR all ~ 0,5 1,5 y", "Line 0,10 10,10; Circle 18,8 22,12; "},
        {"MI all ~ 0,5 1,5 ~",
         "Line 0,0 10,0; Circle 18,-2 22,2; Line 0,10 10,10; Circle 18,8 22,12; "},
        {"E w 17,-3 @6,6 ~", "Line 0,0 10,0; "},
    };
    for (const auto& row : rows) {
        Type(row.keys);
        EXPECT_EQ(row.after, Shown()) << row.keys;
        if (row.after != before) Type("U");
        EXPECT_EQ(before, Shown()) << row.keys;
    }
    // What is picked beforehand is taken without a question, once.
    document->imp().pickFirst = {LastDisplayed(*document).front()};
    Type("ERASE");
    EXPECT_EQ("Line 0,0 10,0; ", Shown());
    EXPECT_TRUE(document->imp().pickFirst.empty());
    // Something new ends what could be done again.
    Type("U");
    Draw("C 50,0 1");
    Type("REDO");
    EXPECT_TRUE(HasSaid(L"Nothing to redo."));
}

TEST_F(CommandsTest, SeveralStepsBack) {
    Type("L 0,0 1,0 ~");
    Type("L 0,1 1,1 ~");
    Type("L 0,2 1,2 ~");
    Type("UNDO 2");
    EXPECT_EQ("Line 0,0 1,0; ", Shown());
    Type("REDO");
    Type("REDO");
    EXPECT_EQ("Line 0,0 1,0; Line 0,1 1,1; Line 0,2 1,2; ", Shown());
    Type("UNDO x");
    EXPECT_TRUE(HasSaid(L"Not a number of operations"));
}

TEST_F(CommandsTest, TheViewFollows) {
    Draw("L 0,0 100,0 | L 0,0 0,50");
    View& view = document->imp().view;
    view = {AcGePoint2d(0, 0), 200, 100};
    const struct {
        const char* keys;
        double x, y, height;
    } rows[] = {{"ZOOM e", 50, 25, 52.5},
                {"Z p", 0, 0, 100},
                {"Z 2x", 0, 0, 50},
                {"Z .5x", 0, 0, 100},
                {"Z 10,10 30,20", 20, 15, 10},
                {"Z c 5,6 70", 5, 6, 70},
                {"Z w 0,0 40,20", 20, 10, 20},
                {"P 0,0 5,1", 15, 9, 20},
                {"Z s 2", 50, 25, 26.25},
                {"Z ~", 50, 25, 52.5}};
    for (const auto& row : rows) {
        Type(row.keys);
        EXPECT_EQ(row.x, view.center.x) << row.keys;
        EXPECT_EQ(row.y, view.center.y) << row.keys;
        EXPECT_NEAR(row.height, view.height, 1e-9) << row.keys;
        EXPECT_NEAR(2 * row.height, view.width, 1e-9) << row.keys;
    }
    Type("Z nonsense");
    EXPECT_TRUE(HasSaid(L"Invalid scale: NONSENSE"));
}

TEST_F(CommandsTest, TellWhatIsThere) {
    Draw("L 0,0 30,40 | C 20,0 2.5");
    Type("DIST 0,0 @30,40");
    EXPECT_TRUE(HasSaid(L"Distance = 50,  Angle in XY Plane = 53.130102\u00B0"));
    Type("ID 1.25,-7");
    EXPECT_TRUE(HasSaid(L"X = 1.25     Y = -7     Z = 0"));
    Type("LIST all ~");
    EXPECT_TRUE(HasSaid(L"length 50, angle 53.130102"));
    EXPECT_TRUE(HasSaid(L"center 20,0, radius 2.5, diameter 5"));
    Type("HELP");
    for (const std::wstring& name : BuiltinNames())
        EXPECT_TRUE(HasSaid(name.c_str())) << Narrow(name);
}

TEST_F(CommandsTest, LayersByOptions) {
    Type("LA m Tool ~");
    Type("LA c 1 Tool ~");
    Type("LA lw 0.5 T* ~");
    Type("LA n Other ~");
    Type("LA lo Other ~");
    Type("LA f Tool ~");  // the current one stays
    Type("LA ? ~");
    EXPECT_TRUE(HasSaid(L"Tool (current)  on  color 1  Continuous"));
    EXPECT_TRUE(HasSaid(L"Other  on locked  color 7  Continuous"));
    EXPECT_TRUE(HasSaid(L"the current layer is not frozen"));
    Type("LA c 300 Tool ~");
    EXPECT_TRUE(HasSaid(L"Out of range: 300"));
    Type("U");
    input.transcript.clear();
    Type("LA ? ~");
    EXPECT_TRUE(HasSaid(L"Other  on  color 7"));
}

}  // namespace
