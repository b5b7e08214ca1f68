// Properties by name and grips, typed as a script types them; and layers changed beside a command.
#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "host/base/format.h"
#include "host/ed/entity_grips.h"
#include "host/ed/entity_properties.h"
#include "host/ed/entity_query.h"
#include "host/ed/layer_changes.h"
#include "support/scripted_input.h"
#include "support/test_drawing.h"

using namespace host;

namespace {

class PropertiesTest : public testing::Test {
protected:
    PropertiesTest() { document = Session::Get().New(); }

    AcDbObjectId Draw(const char* entity) {
        EXPECT_EQ(Acad::eOk, acDocManager->lockDocument(document));
        test::TestDrawing(*document->database(), "").Add(entity);
        EXPECT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
        return QueryEntities(*document->database(), QueryRules::Displayed()).back();
    }
    std::string ValueOf(AcDbObjectId id, const std::wstring& name) const {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        for (const EntityProperty& property : PropertiesOf(*entity.object()))
            if (name == property.name) return Narrow(property.value);
        return "none";
    }
    void Type(std::wstring keys) {
        for (wchar_t& c : keys)
            if (c == L' ') c = L'\n';
        EXPECT_TRUE(Session::Get().Execute(keys)) << Narrow(keys);
    }
    bool HasSaid(const wchar_t* text) const {
        return input.transcript.find(text) != std::wstring::npos;
    }

    test::ScriptedInput input;
    AcApDocument* document;
};

TEST_F(PropertiesTest, ChangeByNameInOneStep) {
    const struct {
        const char* entity;
        const wchar_t* name;
        const char* before;
        const wchar_t* typed;
        const char* after;
    } rows[] = {
        {"L 0,0 10,0", L"Color", "ByLayer", L"c 3", "3"},
        {"L 0,0 10,0", L"LWeight", "ByLayer", L"lw 0.5", "0.5"},
        {"L 0,0 10,0", L"LWeight", "ByLayer", L"lw 0.28", "0.3"},  // the nearest that there is
        {"L 0,0 10,0", L"LTScale", "1", L"lts 2.5", "2.5"},
        {"L 0,0 10,0", L"End", "10,0", L"e 20,5", "20,5"},
        {"L 0,0 10,0", L"End", "10,0", L"e @1,1", "11,1"},
        {"C 20,0 2", L"Radius", "2", L"r 7", "7"},
        {"C 20,0 2", L"CEnter", "20,0", L"ce 1,2", "1,2"},
        // What has no sense changes nothing.
        {"C 20,0 2", L"Radius", "2", L"r -7", "2"},
        {"C 20,0 2", L"Radius", "2", L"r nan", "2"},
        {"L 0,0 10,0", L"Color", "ByLayer", L"c 256.5", "ByLayer"},
        {"L 0,0 10,0", L"LAyer", "0", L"la nosuch", "0"},
        {"L 0,0 10,0", L"LType", "ByLayer", L"lt nosuch", "ByLayer"},
        {"L 0,0 10,0", L"Color", "ByLayer", L"r 5", "ByLayer"},
    };
    for (const auto& row : rows) {
        const AcDbObjectId id = Draw(row.entity);
        EXPECT_EQ(row.before, ValueOf(id, row.name)) << Narrow(row.typed);
        document->imp().pickFirst = {id};
        Type(L"PROPERTIES " + std::wstring(row.typed) + L"  ");
        EXPECT_EQ(row.after, ValueOf(id, row.name)) << Narrow(row.typed);
        if (std::string(row.before) != row.after) Type(L"U");
        EXPECT_EQ(row.before, ValueOf(id, row.name)) << Narrow(row.typed);
    }
    EXPECT_TRUE(HasSaid(L"1 not changed: the drawing has none of that name."));
    EXPECT_TRUE(HasSaid(L"1 not changed: no such property."));
    EXPECT_TRUE(HasSaid(L"1 not changed: not a value for it."));
}

TEST_F(PropertiesTest, GripsStretch) {
    const struct {
        const char* entity;
        const wchar_t* typed;  // the grip and where it goes
        const wchar_t* name;
        const char* after;
    } rows[] = {
        {"L 0,0 10,0", L"10,0 12,3", L"End", "12,3"},
        {"L 0,0 10,0", L"5,0 6,1", L"End", "11,1"},
        {"C 20,0 2", L"22,0 25,0", L"Radius", "5"},
        {"C 20,0 2", L"20,0 0,0", L"CEnter", "0,0"},
        // The arc from 0 to 180 degrees about the origin: its middle goes up, its ends stay.
        {"A 0,0 10 0 180", L"0,10 0,5", L"Radius", "12.5"},
        {"A 0,0 10 0 180", L"0,0 3,3", L"CEnter", "3,3"},
    };
    for (const auto& row : rows) {
        const AcDbObjectId id = Draw(row.entity);
        const std::string before = ValueOf(id, row.name);
        document->imp().pickFirst = {id};
        Type(L"GRIP " + std::wstring(row.typed) + L" ");
        EXPECT_EQ(row.after, ValueOf(id, row.name)) << Narrow(row.typed);
        Type(L"U");
        EXPECT_EQ(before, ValueOf(id, row.name)) << Narrow(row.typed);
        Type(L"U");
    }
    const AcDbObjectId id = Draw("L 0,0 10,0");
    document->imp().pickFirst = {id};
    Type(L"GRIP 400,400 ");
    EXPECT_TRUE(HasSaid(L"There is no grip."));
}

// The arc keeps its ends and its sense whichever of its points is moved.
TEST_F(PropertiesTest, AnArcKeepsItsOtherPoints) {
    const AcDbObjectId id = Draw("A 0,0 10 0 90");
    for (const Grip::Kind kind : {Grip::kStart, Grip::kEnd, Grip::kThrough}) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        const std::unique_ptr<AcDbArc> arc(AcDbArc::cast(entity->clone()));
        const std::vector<Grip> grips = GripsOf(*entity.object());
        for (const Grip& grip : grips) {
            if (grip.kind != kind) continue;
            const AcGePoint3d to = grip.at + AcGeVector3d(0.5, 1.0, 0);
            ASSERT_EQ(Acad::eOk, MoveGrip(*arc, grip, to));
            for (const Grip& moved : GripsOf(*arc)) {
                if (moved.kind == Grip::kMove || moved.kind == Grip::kThrough) continue;
                for (const Grip& former : grips) {
                    if (former.kind != moved.kind) continue;
                    EXPECT_LT(moved.at.distanceTo(former.kind == kind ? to : former.at), 1e-9);
                }
            }
            EXPECT_LT(arc->totalAngle(), 3.2);
        }
    }
}

TEST_F(PropertiesTest, ALayerIsChangedWhileACommandWaits) {
    // The command's prompt is answered by a change of the layer first.
    class Waiting : public test::ScriptedInput {
    public:
        Answer Point(const PointRequest&) override {
            std::wstring reason;
            AcDbDatabase& database = *curDoc()->database();
            isDone = ChangeLayer(database, L"0", L"COLOR", L"5", reason) &&
                     ChangeLayer(database, L"0", L"LOCK", L"", reason);
            refused = !ChangeLayer(database, L"0", L"COLOR", L"999", reason) &&
                      !ChangeLayer(database, L"nosuch", L"OFF", L"", reason) &&
                      !ChangeLayer(database, L"0", L"LTYPE", L"nosuch", reason);
            return Answer();
        }
        bool isDone = false, refused = false;
    } waiting;
    document = Session::Get().New();
    Type(L"LINE");
    EXPECT_TRUE(waiting.isDone);
    EXPECT_TRUE(waiting.refused);
    {
        const AcDbLayerTableRecordPointer zero(document->database()->layerZero(), AcDb::kForRead);
        EXPECT_EQ(5, zero->color().colorIndex());
        EXPECT_TRUE(zero->isLocked());
    }
    EXPECT_TRUE(Session::Get().FindLeftovers().IsEmpty());
}

}  // namespace
