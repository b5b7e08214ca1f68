// The live pipeline and boundary tracing beside each other: areas, and the largest distance between
// the two outlines.
#include <filesystem>
#include <fstream>
#include <random>

#include "host/dxf/dxf_file.h"
#include "support/envelope_run.h"

namespace {

using test::RunOptions;
using test::TestDrawing;

// An envelope, copied out of its drawing, and then gone from it.
struct Outline {
    double area = 0.0;
    std::vector<AcGePoint3d> points;  // arcs in steps of a 64th
    bool found = false;

    explicit Outline(const AcDbObjectId& id) {
        {
            AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
            found = polyline.openStatus() == Acad::eOk;
            if (!found) return;
            test::Check(polyline->getArea(area));
            for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
                double bulge = 0.0;
                test::Check(polyline->getBulgeAt(i, bulge));
                for (int step = 0; step < (bulge == 0.0 ? 1 : 64); ++step) {
                    AcGePoint3d p;
                    test::Check(polyline->getPointAtParam(i + step / 64.0, p));
                    points.push_back(p);
                }
            }
        }
        EXPECT_TRUE(EraseById(id));
    }

    double DistanceTo(const AcGePoint3d& p) const {
        double best = HUGE_VAL;
        for (size_t i = 0; i < points.size(); ++i) {
            const AcGeLineSeg3d side(points[i], points[(i + 1) % points.size()]);
            best = (std::min)(best, side.closestPointTo(p).distanceTo(p));
        }
        return best;
    }

    // Largest distance from a point of one outline to the other (Hausdorff), by the sampled points;
    // arcs are seen from both sides at the same steps.
    double LargestDistance(const Outline& other) const {
        double largest = 0.0;
        for (const AcGePoint3d& p : points) largest = (std::max)(largest, other.DistanceTo(p));
        for (const AcGePoint3d& p : other.points) largest = (std::max)(largest, DistanceTo(p));
        return largest;
    }
};

struct Comparison {
    Outline live, traced;

    Comparison(const AcDbObjectIdArray& ids, const RunOptions& options)
        : live(test::RunEnvelope(ids, options)), traced(Trace(ids, options)) {}

    void Check(double area, double distance) const {
        ASSERT_TRUE(live.found && traced.found);
        EXPECT_NEAR(live.area, traced.area, area);
        EXPECT_LE(live.LargestDistance(traced), distance);
    }

    static AcDbObjectId Trace(const AcDbObjectIdArray& ids, RunOptions options) {
        options.pipeline = &CEncircleLine::GetEncircleLineByHatch;
        return test::RunEnvelope(ids, options);
    }
};

std::vector<double> Numbers(const std::string& text) {
    std::vector<double> numbers;
    for (const std::string& part : test::Split(text, ',')) numbers.push_back(std::stod(part));
    return numbers;
}

// An example drawing, the working one for its life, with what its arguments pick.
class Example {
public:
    explicit Example(const std::string& name) : options("") {
        const std::string path = std::string(QZ_SOURCE_DIR) + "/examples/" + name;
        host::dxf::Report report;
        const host::dxf::Result read = host::dxf::ReadFile(m_db, path + ".dxf", report);
        EXPECT_TRUE(read.ok()) << read.message;
        acdbHostApplicationServices()->setWorkingDatabase(&m_db);
        std::ifstream arguments(path + ".args");
        CQZRect window(true);
        for (std::string word; arguments >> word;) {
            const std::string value = word.substr(word.find('=') + 1);
            if (word.rfind("--centre", 0) == 0) options.axis = Numbers(value).at(1);
            if (word == "lower") options.info.m_nHalfSide = 1;
            if (word.rfind("--window", 0) != 0) continue;
            const std::vector<double> v = Numbers(value);
            window = CQZRect(AcGePoint3d(v.at(0), v.at(1), 0), AcGePoint3d(v.at(2), v.at(3), 0));
        }
        EXPECT_TRUE(window.IsValid());
        Pick(window);
    }
    ~Example() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }
    Example(const Example&) = delete;
    Example& operator=(const Example&) = delete;

    RunOptions options;
    AcDbObjectIdArray ids;

private:
    void Pick(const CQZRect& window) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&m_db),
                                                      AcDb::kForRead);
        AcDbBlockTableRecordIterator* raw = nullptr;
        test::Check(space->newIterator(raw));
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
        for (; !it->done(); it->step()) {
            AcDbObjectId id;
            test::Check(it->getEntityId(id));
            AcDbObjectIdArray one;
            one.append(id);
            if (window.Contains(test::BoxOf(one), 0.0)) ids.append(id);
        }
    }

    AcDbDatabase m_db{false, true};
};

TEST(PipelinesAgree, OnTheExamples) {
    const struct {
        const char* name;
        double area;      // what the two may differ by, in square units
        double distance;  // in units
    } cases[] = {
        {"stepped-drill", 1e-6, 1e-6},
        {"ball-nose", 1e-6, 1e-6},
        {"t-slot-cutter", 1e-6, 1e-6},
        // An arc crosses the face: the live outline leaves it where its chord does.
        {"end-mill", 0.01, 0.02},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Example example(c.name);
        Comparison(example.ids, example.options).Check(c.area, c.distance);
    }
}

// A turned tool about the x axis as one closed polyline, without undercuts: lands, shoulders,
// chamfers and quarter rounds, each with a land after it.
std::string RandomProfile(std::uint64_t seed) {
    std::mt19937_64 random(seed);
    const auto next = [&](int from, int to) {
        return from + static_cast<int>(random() % static_cast<unsigned>(to - from + 1));
    };
    struct Corner {
        double x, y, bulge;
    };
    double x = 10.0, y = next(4, 12);
    std::vector<Corner> upper;
    for (int i = next(2, 12); i > 0; --i) {
        upper.push_back({x, y, 0.0});
        x += next(2, 9);
        const double r = next(1, 3);
        const bool isUp = y < 5 || (y < 14 && next(0, 1) == 0);
        const int kind = next(0, 3);
        // Round outside or inside; an arc may begin or end along the land, or across it.
        const double bulge = kind < 2      ? 0.0
                             : (kind == 2) ? -0.41421356237309503
                                           : 0.41421356237309503;
        upper.push_back({x, y, bulge});
        if (kind != 0) x += kind == 1 ? next(1, 3) : r;
        y += isUp ? r : -r;
    }
    upper.push_back({x, y, 0.0});
    upper.push_back({x + next(1, 9), y, 0.0});
    std::string text = "P";
    char vertex[120];
    for (const Corner& c : upper) {
        std::snprintf(vertex, sizeof vertex, " %.17g,%.17g(%.17g)", c.x, c.y, c.bulge);
        text += vertex;
    }
    for (size_t i = upper.size(); i-- > 0;) {
        std::snprintf(vertex, sizeof vertex, " %.17g,%.17g(%.17g)", upper[i].x, -upper[i].y,
                      i > 0 ? upper[i - 1].bulge : 0.0);
        text += vertex;
    }
    return text + " c";
}

TEST(PipelinesAgree, OnRandomClosedProfiles) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        for (const char* options : {"", "lower"}) {
            SCOPED_TRACE(std::to_string(seed) + " " + options);
            TestDrawing drawing(RandomProfile(seed));
            Comparison(drawing.ids(), RunOptions(options)).Check(1e-9, 1e-9);
        }
    }
}

// Where they differ, and docs/pipelines.md says why.
TEST(PipelinesDiffer, ForAReason) {
    const struct {
        const char* name;
        const char* entities;
        const char* live;
        const char* traced;
    } cases[] = {
        {"an undercut", "P 10,0 10,6 20,6 20,4 16,4 16,3 30,3 30,0",
         "10,0 10,6 20,6 20,3 30,3 30,0 c", "10,0 10,6 20,6 20,4 16,4 16,3 30,3 30,0 c"},
        {"an arc across a face", "L 10,0 10,6 | L 10,6 30,6 | A 30,4 2 270 90 | L 31,0 31,3",
         "10,0 10,6 30,6(-0.766687) 31,2.27438 31,0 c",
         "10,0 10,6 30,6(-0.767327) 31,2.26795 31,0 c"},
        {"a gap", "L 10,0 10,5 | L 10,5 18,5 | L 20,5 30,5 | L 30,5 30,0", "10,0 10,5 30,5 30,0 c",
         "none"},
        {"a stray line", "P 10,-5 10,5 30,5 30,-5 c | L 15,8 25,8",
         "10,0 10,5 15,5 15,8 25,8 25,5 30,5 30,0 c", "10,0 10,5 30,5 30,0 c"},
        {"a part apart", "P 10,-5 10,5 30,5 30,-5 c | P 15,7 25,7 25,9 15,9 c",
         "10,0 10,5 15,5 15,9 25,9 25,5 30,5 30,0 c", "10,0 10,5 30,5 30,0 c"},
        {"two parts on one axis", "P 10,-5 10,5 18,5 18,-5 c | P 22,-3 22,3 30,3 30,-3 c",
         "10,0 10,5 18,5 22,3 30,3 30,0 c", "10,0 10,5 18,5 18,0 22,0 22,3 30,3 30,0 c"},
        {"a face at x = 0, of a tool wider at its other end",
         "P 0,4 3,4 6,5 10,5 10,8 30,8 30,-8 10,-8 10,-5 6,-5 3,-4 0,-4 c",
         "0,0 30,0 0,0 30,8 3,4 6,5 10,5 10,0 c", "0,0 0,4 3,4 6,5 10,5 10,8 30,8 30,0 c"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.live, test::ShowEnvelope(c.entities, ""));
        EXPECT_EQ(c.traced, test::ShowEnvelope(c.entities, "by=hatch"));
    }
    const std::string both = "P 10,-5 10,5 30,5 30,-5 c";
    EXPECT_EQ("10,-5 10,0 10,5 30,5 30,0 30,-5 c", test::ShowEnvelope(both, "by=1"))
        << "the earlier ones see both halves from the ends";
}

}  // namespace
