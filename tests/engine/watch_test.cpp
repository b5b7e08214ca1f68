// Runs that are watched: what the watch is told, and that a run which it stops leaves no trace.
#include <set>

#include "engine/line_sets.h"
#include "plugin/engine/EncircleWatch.h"
#include "plugin/engine/Meetings.h"
#include "plugin/util/LayerTools.h"
#include "support/envelope_run.h"
#include "support/hatched_tool.h"

namespace {

using test::TestDrawing;

// Goes on for a number of questions; keeps what it was told.
class CountingWatch : public CEncircleWatch {
public:
    explicit CountingWatch(size_t most = SIZE_MAX) : m_most(most) {}

    bool MayBreak(size_t lines, size_t meetings) override {
        m_lines = lines;
        m_meetings = meetings;
        return ++m_asked <= m_most;
    }
    bool MayGoOn(const char* pass, size_t, size_t) override {
        m_passes.insert(pass);
        return ++m_asked <= m_most;
    }

    size_t m_most;
    size_t m_asked = 0;
    size_t m_lines = 0;
    size_t m_meetings = 0;
    std::set<std::string> m_passes;
};

AcDbObjectIdArray AddTool(size_t count) {
    AcDbObjectIdArray ids;
    CBlockAppender space;
    for (const auto& segment : test::HatchedTool(1).Make(count))
        ids.append(space.AppendLine(segment.first, segment.second, 256));
    return ids;
}

TEST(Watch, HearsHowManyMeetingsThereWillBe) {
    const struct {
        const char* name;
        const char* lines;
        size_t meetings;
    } cases[] = {
        {"a crossing", "0,0 10,0 | 5,-5 5,5", 1},
        {"a touch", "0,0 10,0 | 5,0 5,5", 1},
        {"a shared corner breaks nothing", "0,0 10,0 | 10,0 10,5", 0},
        {"lines drawn twice count twice", "0,0 10,0 | 0,0 10,0 | 5,-5 5,5 | 7,-5 7,5", 4},
        {"a grid of three and two", "0,1 9,1 | 0,2 9,2 | 0,3 9,3 | 4,0 4,9 | 6,0 6,9", 6},
    };
    for (const auto& c : cases) {
        TestDrawing drawing;
        EXPECT_EQ(c.meetings,
                  CountMeetings(test::ParseLines(c.lines), CEncircleCalInfo().m_tolPoint))
            << c.name;
    }
}

// Stopped at the first question, the second and so on until it is never stopped.
TEST(Watch, StopsARunThatLeavesTheDrawingAsItWas) {
    size_t stopped = 0;
    for (size_t most = 0;; ++most) {
        TestDrawing drawing;
        const AcDbObjectIdArray ids = AddTool(300);
        const AcDbObjectId offId = EnsureLayer(L"off before");
        ASSERT_TRUE(ShowLayer(offId, false));
        const std::vector<std::string> before = test::DrawingBits(drawing.db());
        CountingWatch watch(most);
        AcDbObjectId outId;
        {
            const CEncircleWatchScope scope(watch);
            CEncircleLine(CEncircleCalInfo()).GetEncircleLine3(ids, outId);
        }
        AcDbObjectPointer<AcDbLayerTableRecord> off(offId, AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, off.openStatus());
        if (watch.m_asked <= most) {
            EXPECT_FALSE(outId.isNull()) << "never stopped";
            EXPECT_FALSE(off->isOff()) << "a run that ends switches all layers on";
            EXPECT_GT(watch.m_lines, 0u);
            EXPECT_GT(watch.m_meetings, 0u);
            EXPECT_EQ((std::set<std::string>{"clone", "meetings", "nearest", "prepare", "repeats",
                                             "visible"}),
                      watch.m_passes);
            break;
        }
        ++stopped;
        EXPECT_TRUE(outId.isNull());
        EXPECT_TRUE(off->isOff());
        EXPECT_EQ(before, test::DrawingBits(drawing.db()));
        EXPECT_TRUE(FindLayer(L"TempEncircleLineClone").isNull());
    }
    EXPECT_GE(stopped, 5u);
}

}  // namespace
