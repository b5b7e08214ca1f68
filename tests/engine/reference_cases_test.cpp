// Generated drawings with the outlines that an independent program computes. They lie beside the
// repository, in the folder that QZ_SHARED names or in ../shared; without them nothing is compared.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "host/dxf/dxf_file.h"
#include "support/envelope_run.h"

namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

// Coordinates, in drawing units, and bulges.
constexpr double kSame = 1e-6;

fs::path CasesFolder() {
    const char* shared = std::getenv("QZ_SHARED");
    return (shared != nullptr ? fs::path(shared) : fs::path(QZ_SOURCE_DIR) / ".." / "shared") /
           "cases";
}

// One case's command line, as far as the cases use it.
struct Arguments {
    test::RunOptions run{""};
    bool hasWindow = false;
    CQZRect window{true};

    explicit Arguments(const Json& words) {
        const auto numbers = [](const std::string& text) {
            std::vector<double> values;
            for (const std::string& part : test::Split(text, ','))
                values.push_back(std::stod(part));
            return values;
        };
        for (size_t i = 0; i < words.size(); ++i) {
            std::string name = words[i];
            std::string value;
            const size_t equals = name.find('=');
            if (equals != std::string::npos) {
                value = name.substr(equals + 1);
                name.resize(equals);
            } else if (name == "--vertical-ends") {
                run.info.m_bSideLinesVertical = true;
                continue;
            } else if (name == "--include-dashed") {
                run.info.m_bExcludeDashed = false;
                continue;
            } else {
                value = words.at(++i);
            }
            if (name == "--centre") {
                run.axis = numbers(value).at(1);
            } else if (name == "--window") {
                const std::vector<double> v = numbers(value);
                hasWindow = true;
                window = CQZRect(AcGePoint3d(v[0], v[1], 0), AcGePoint3d(v[2], v[3], 0));
            } else if (name == "--half") {
                run.info.m_nHalfSide = value == "lower" ? 1 : 0;
            } else if (name == "--arc-precision") {
                run.info.m_dArcPrecision = std::stod(value);
            } else if (name == "--side-length") {
                run.info.m_dSideLength = std::stod(value);
            } else {
                ADD_FAILURE() << "unknown argument " << name;
            }
        }
    }

    bool Picks(const AcDbExtents& box) const {
        return !hasWindow ||
               (window.min.x <= box.minPoint().x && box.maxPoint().x <= window.max.x &&
                window.min.y <= box.minPoint().y && box.maxPoint().y <= window.max.y);
    }
};

// Model space in file order, those in the window only.
AcDbObjectIdArray Pick(AcDbDatabase& db, const Arguments& arguments) {
    AcDbObjectIdArray ids;
    AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&db),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* raw = nullptr;
    EXPECT_EQ(Acad::eOk, space->newIterator(raw));
    const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
    for (; !it->done(); it->step()) {
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, it->getEntityId(id));
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbExtents box;
        const bool hasBox = entity->getGeomExtents(box) == Acad::eOk;
        if (!arguments.hasWindow || (hasBox && arguments.Picks(box))) ids.append(id);
    }
    return ids;
}

Json ReadOutline(const AcDbObjectId& id) {
    Json outline = Json::array();
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    if (polyline.openStatus() != Acad::eOk) return outline;
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        AcGePoint3d p;
        double bulge = 0.0;
        EXPECT_EQ(Acad::eOk, polyline->getPointAt(i, p));
        EXPECT_EQ(Acad::eOk, polyline->getBulgeAt(i, bulge));
        outline.push_back({p.x, p.y, bulge});
    }
    return outline;
}

// Where two outlines first differ; empty when they do not.
std::string Difference(const Json& expected, const Json& found) {
    const size_t count = (std::min)(expected.size(), found.size());
    for (size_t i = 0; i < count; ++i) {
        for (size_t k = 0; k < 3; ++k) {
            if (!(std::fabs(expected[i][k].get<double>() - found[i][k].get<double>()) <= kSame)) {
                return "vertex " + std::to_string(i) + ": expected " + expected[i].dump() +
                       ", found " + found[i].dump();
            }
        }
    }
    if (expected.size() == found.size()) return "";
    return std::to_string(expected.size()) + " vertices expected, " + std::to_string(found.size()) +
           " found";
}

std::string CountDifferences(const Json& expected, const CEncircleTrace& trace) {
    std::string text;
    for (const auto& [name, count] : trace.m_counts) {
        if (expected.contains(name) && expected[name].get<size_t>() != count) {
            text += "  " + name + ": expected " + expected[name].dump() + ", found " +
                    std::to_string(count) + "\n";
        }
    }
    return text;
}

void CheckCase(const fs::path& path) {
    SCOPED_TRACE(path.stem().string());
    const Json reference = Json::parse(std::ifstream(path));
    const auto db = std::make_unique<AcDbDatabase>(false, true);
    const fs::path drawing = path.parent_path() / reference["drawing"].get<std::string>();
    host::dxf::Report report;
    const host::dxf::Result read = host::dxf::ReadFile(*db, drawing.string(), report);
    ASSERT_TRUE(read.ok()) << read.message;
    AcDbDatabase* former = acdbHostApplicationServices()->workingDatabase();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    const Arguments arguments(reference["arguments"]);
    CEncircleTrace trace;
    Json outline;
    {
        const CEncircleTraceScope listen(trace);
        outline = ReadOutline(test::RunEnvelope(Pick(*db, arguments), arguments.run));
    }
    acdbHostApplicationServices()->setWorkingDatabase(former);

    std::string difference = Difference(reference["vertices"], outline);
    for (const Json& alternate : reference["alternates"]) {
        if (Difference(alternate, outline).empty()) difference.clear();
    }
    EXPECT_EQ("", difference) << CountDifferences(reference["trace"], trace);
}

TEST(ReferenceCases, GiveTheKnownOutlines) {
    if (!fs::exists(CasesFolder())) GTEST_SKIP() << "no drawings in " << CasesFolder();
    int count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(CasesFolder())) {
        if (entry.path().extension() == ".json") {
            CheckCase(entry.path());
            ++count;
        }
    }
    EXPECT_GT(count, 0);
}

}  // namespace
