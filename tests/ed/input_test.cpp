// What is typed at prompts, what the pointer snaps to, and what closing asks.
#include <gtest/gtest.h>

#include <clocale>

#include "arxHeaders.h"
#include "host/base/format.h"
#include "host/base/plain_number.h"
#include "host/ed/object_snap.h"
#include "host/ed/point_text.h"
#include "host/ed/prompts.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

using namespace host;

namespace {

TEST(Numbers, AreDecimalWholeAndFinite) {
    // A language with a decimal comma must not matter, where this machine has one.
    for (const char* const name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "C"})
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    const struct {
        const wchar_t* text;
        bool isNumber;
        double value;
    } rows[] = {{L"60.5", true, 60.5}, {L"-.5e1", true, -5},  {L"+7.", true, 7},
                {L"1e-400", true, 0},  {L"1e400", false, 0},  {L"0x10", false, 0},
                {L"nan", false, 0},    {L"inf", false, 0},    {L"", false, 0},
                {L".", false, 0},      {L"-", false, 0},      {L"1,5", false, 0},
                {L"1e", false, 0},     {L"--1", false, 0},    {L" 1", false, 0},
                {L"1 ", false, 0},     {L"-1e9999", false, 0}};
    for (const auto& row : rows) {
        double value = 7.0;
        EXPECT_EQ(row.isNumber, ReadWholeNumber(row.text, value)) << Narrow(row.text);
        EXPECT_EQ(row.isNumber ? row.value : 7.0, value) << Narrow(row.text);
    }
    AcGePoint3d point;
    EXPECT_TRUE(ParsePoint(L"60,95,10", AcGePoint3d(), point));
    EXPECT_EQ(AcGePoint3d(60, 95, 10), point);
    std::setlocale(LC_ALL, "C");
}

TEST(Points, AreTypedInAllForms) {
    const AcGePoint3d reference(10, 20, 5);
    const struct {
        const wchar_t* text;
        AcGePoint3d point;
    } rows[] = {{L"1.5,-2", {1.5, -2, 0}}, {L"1,2,3", {1, 2, 3}},   {L"@10,0", {20, 20, 5}},
                {L"@1,2,3", {11, 22, 8}},  {L"10<90", {0, 10, 0}},  {L"@5<180", {5, 20, 5}},
                {L"@5<-90", {10, 15, 5}},  {L"10<450", {0, 10, 0}}, {L"@-5<0", {5, 20, 5}}};
    for (const auto& row : rows) {
        AcGePoint3d point;
        EXPECT_TRUE(ParsePoint(row.text, reference, point)) << Narrow(row.text);
        EXPECT_EQ(row.point, point) << Narrow(row.text);
    }
    AcGePoint3d slanted;
    EXPECT_TRUE(ParsePoint(L"10<45", reference, slanted));
    EXPECT_NEAR(slanted.x, slanted.y, 1e-14);
    for (const wchar_t* const bad : {L"", L"1", L"1,", L"1,2,", L"1,2,3,4", L"1,b", L"1,inf",
                                     L"1 ,2", L"@", L"@1", L"10<", L"<45", L"1,2<3", L"0x1,2"}) {
        AcGePoint3d point(7, 7, 7);
        EXPECT_FALSE(ParsePoint(bad, reference, point)) << Narrow(bad);
        EXPECT_EQ(AcGePoint3d(7, 7, 7), point) << Narrow(bad);
    }
}

TEST(Keywords, BeginAtLeastWithTheirCapitals) {
    const std::vector<std::wstring> words = {L"Close", L"eXit", L"Undo", L"CEnter"};
    const struct {
        const wchar_t* typed;
        const wchar_t* meant;
    } rows[] = {{L"c", L"CLOSE"}, {L"Clo", L"CLOSE"}, {L"closed", L""},   {L"x", L"EXIT"},
                {L"e", L""},      {L"EXIT", L"EXIT"}, {L"ce", L"CENTER"}, {L"", L""}};
    for (const auto& row : rows) EXPECT_EQ(row.meant, MatchKeyword(row.typed, words));
}

class InputTest : public testing::Test {
protected:
    InputTest() { document = Session::Get().New(); }

    // Adds what is described and returns it as sources to snap to.
    std::vector<SnapSource> Draw(const char* entities, const char* linetype = nullptr) {
        EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
        test::TestDrawing drawing(*document->database(), "");
        drawing.Add(entities);
        if (linetype != nullptr) drawing.Layer("0", linetype);
        EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
        std::vector<SnapSource> sources;
        for (int i = 0; i < drawing.ids().length(); ++i)
            sources.push_back(MakeSnapSource(drawing.ids()[i]));
        return sources;
    }
    static std::string Snapped(const std::vector<SnapSource>& sources, double x, double y,
                               unsigned modes, const AcGePoint3d* base = nullptr) {
        std::vector<const SnapSource*> all;
        for (const SnapSource& source : sources) all.push_back(&source);
        std::string text;
        for (const Snap& snap : FindSnaps(all, AcGePoint3d(x, y, 0), 1.0, modes, base)) {
            for (const SnapModeName& name : SnapModeNames())
                if (name.mode == snap.mode) text += Narrow(name.label);
            char place[64];
            std::snprintf(place, sizeof place, " %.6g,%.6g; ", snap.point.x, snap.point.y);
            text += place;
        }
        return text;
    }

    test::ScriptedInput input;
    AcApDocument* document;
};

TEST_F(InputTest, SnapsToTheExactPoints) {
    const AcGePoint3d base(50, 40, 0);
    const unsigned all = kSnapUsual | kSnapNearest;
    const struct {
        const char* entities;
        double x, y;
        unsigned modes;
        const AcGePoint3d* base;
        const char* snaps;
    } rows[] = {
        {"L 0,0 10,0", 0.4, 0.3, kSnapUsual, nullptr, "Endpoint 0,0; "},
        {"L 0,0 10,0", 5.4, 0.3, kSnapUsual, nullptr, "Midpoint 5,0; "},
        {"L 0,0 10,0", 2.5, 0.3, kSnapUsual, nullptr, ""},
        {"L 0,0 10,0", 2.5, 0.3, all, nullptr, "Nearest 2.5,0; "},
        {"L 0,0 10,0", 2.5, 1.1, all, nullptr, ""},
        // The end is nearer, the middle comes by Tab; the nearest point last.
        {"L 0,0 1,0", 0.2, 0, all, nullptr,
         "Endpoint 0,0; Midpoint 0.5,0; Endpoint 1,0; Nearest 0.2,0; "},
        {"L 0,0 10,10 | L 0,10 10,0", 5.2, 5.3, kSnapIntersection, nullptr, "Intersection 5,5; "},
        {"L 0,0 10,0 | C 5,0 3", 7.8, 0.4, kSnapIntersection, nullptr, "Intersection 8,0; "},
        // A circle has no ends; its centre comes from the curve as well as from itself.
        {"C 20,20 5", 25.3, 20.2, kSnapUsual, nullptr, "Quadrant 25,20; Centre 20,20; "},
        {"C 20,20 5", 20.3, 20.2, kSnapUsual, nullptr, "Centre 20,20; "},
        {"C 20,20 5", 23.6, 23.6, kSnapEnd | kSnapMiddle, nullptr, ""},
        {"L 0,0 100,0", 30, 0.5, kSnapPerpendicular, &base, "Perpendicular 50,0; "},
        {"P 0,0 10,0 10,5 c", 10.2, 4.8, kSnapUsual, nullptr, "Endpoint 10,5; "},
        {"T 30,30 note", 30.2, 30.1, kSnapUsual, nullptr, "Node 30,30; "},
    };
    for (const auto& row : rows) {
        const std::vector<SnapSource> sources = Draw(row.entities);
        EXPECT_EQ(row.snaps, Snapped(sources, row.x, row.y, row.modes, row.base)) << row.entities;
    }
}

TEST_F(InputTest, ACentreLineGivesItsHeight) {
    const std::vector<SnapSource> sources = Draw("L 50,125 195,125", "CENTER");
    EXPECT_EQ("Centre line 100.3,125; ", Snapped(sources, 100.3, 124.759, kSnapUsual));
    EXPECT_EQ("", Snapped(sources, 100.3, 123, kSnapUsual));
    for (const char* const name : {"CENTER2", "Centre", "DASHDOT", "ACAD_ISO10W100"})
        EXPECT_TRUE(Draw("L 0,0 1,0", name)[0].isCentreLine) << name;
    for (const char* const name : {"Continuous", "DASHED", "HIDDEN", "PHANTOM"})
        EXPECT_FALSE(Draw("L 0,0 1,0", name)[0].isCentreLine) << name;
}

TEST_F(InputTest, AnUnknownCommandLeavesNothingBehind) {
    static_cast<void>(Draw("L 0,0 10,0"));
    input.GiveSelection(SelectionAnswer::kAll);
    const struct {
        const wchar_t* line;
        bool isKnown;
    } rows[] = {{L"nosuch e", false},
                {L"nosuch\ne", false},
                {L"nosuch e\nall\n\n", false},
                {L"LAYER\n\nNOSUCH e", false},
                {L"LAYER\n\n", true}};
    for (const auto& row : rows) EXPECT_EQ(row.isKnown, Session::Get().Execute(row.line));
    // The answer is still there: nothing has asked for a selection.
    EXPECT_EQ(1u, input.selections.size());
    EXPECT_NE(std::wstring::npos, input.transcript.find(L"Unknown command \"NOSUCH\""));
    // What another has sent is a piece of its own.
    EXPECT_EQ(Acad::eOk, acDocManager->sendStringToExecute(document, L"nosuch e\n"));
    EXPECT_EQ(Acad::eOk, acDocManager->sendStringToExecute(document, L"erase\n"));
    Session::Get().RunQueued();
    EXPECT_TRUE(input.selections.empty());
}

// Answers the question on closing, and counts it.
class ClosingInput : public test::ScriptedInput {
public:
    ClosingChoice choice = ClosingChoice::kStay;
    std::wstring name;
    std::vector<size_t> asked;

    ClosingChoice Closing(const std::vector<AcApDocument*>& documents) override {
        asked.push_back(documents.size());
        return choice;
    }
    std::wstring NameForSaving(const AcApDocument&) override { return name; }
};

TEST(Closing, AsksForWhatHasChanges) {
    ClosingInput input;
    Session& session = Session::Get();
    AcApDocument* const unchanged = session.New();
    EXPECT_TRUE(session.MayClose({unchanged}));
    EXPECT_TRUE(input.asked.empty()) << "a fresh drawing";
    const auto change = [](AcApDocument* document) {
        EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
        test::TestDrawing(*document->database(), "").Add("L 0,0 10,0");
        EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    };
    AcApDocument* const first = session.New();
    change(first);
    AcApDocument* const second = session.New();
    change(second);
    EXPECT_FALSE(session.MayClose({unchanged, first, second}));
    EXPECT_EQ(std::vector<size_t>{2}, input.asked) << "once for all of them";
    session.Execute(L"CLOSE");
    EXPECT_EQ(3u, session.Documents().size()) << "the user stays";
    input.choice = ClosingChoice::kSave;
    EXPECT_FALSE(session.MayClose({second})) << "no name given";
    input.name = Widen(testing::TempDir() + "no/such/folder/a.dxf");
    session.Execute(L"CLOSE");
    EXPECT_EQ(3u, session.Documents().size()) << "cannot be saved";
    const std::string path = testing::TempDir() + "closing.dxf";
    input.name = Widen(path);
    session.Execute(L"CLOSE");
    EXPECT_EQ(2u, session.Documents().size());
    EXPECT_NE(nullptr, session.Open(Widen(path)));
    EXPECT_TRUE(session.MayClose({session.Current()})) << "as read";
    std::remove(path.c_str());
    input.choice = ClosingChoice::kDiscard;
    EXPECT_TRUE(session.MayClose({first}));
}

}  // namespace
