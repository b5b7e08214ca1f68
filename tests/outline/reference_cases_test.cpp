// Generated drawings with the outlines that an independent program finds by the same rules. They
// lie beside the repository, in the folder that QZ_SHARED names or in ../shared; without them
// nothing is compared.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "host/dxf/dxf_file.h"
#include "plugin/outline/ExactEnvelope.h"
#include "plugin/util/QZRect.h"
#include "plane/text.h"
#include "result_chain.h"
#include "support/test_drawing.h"

namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

fs::path SharedFolder() {
    const char* shared = std::getenv("QZ_SHARED");
    return shared != nullptr ? fs::path(shared) : fs::path(QZ_SOURCE_DIR) / ".." / "shared";
}

struct Arguments {
    SExactRequest request;
    bool hasWindow = false;
    plane::Box window;

    explicit Arguments(const Json& words) {
        for (size_t i = 0; i < words.size(); ++i) {
            std::string name = words[i], value;
            const size_t equals = name.find('=');
            if (equals != std::string::npos) {
                value = name.substr(equals + 1);
                name.resize(equals);
            } else if (name == "--vertical-ends") {
                request.m_bVerticalEnds = true;
                continue;
            } else if (name == "--include-dashed") {
                request.m_bIncludeDashed = true;
                continue;
            } else {
                value = words.at(++i);
            }
            std::vector<double> v;
            if (name == "--centre" || name == "--window")
                for (const std::string& part : test::Split(value, ','))
                    v.push_back(std::stod(part));
            if (name == "--centre") {
                request.m_axisFrom.set(v.at(0), v.at(1), 0);
                request.m_axisTo.set(v.at(0) + 1, v.at(1), 0);
            } else if (name == "--window") {
                hasWindow = true;
                window.Add(plane::Point{v.at(0), v.at(1)});
                window.Add(plane::Point{v.at(2), v.at(3)});
            } else if (name == "--half") {
                request.m_half = value == "upper"   ? SExactRequest::E_Half_Upper
                                 : value == "lower" ? SExactRequest::E_Half_Lower
                                                    : SExactRequest::E_Half_Both;
            }
        }
    }
};

AcDbObjectIdArray Pick(AcDbDatabase& database, const Arguments& arguments) {
    AcDbObjectIdArray ids;
    AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&database),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    EXPECT_EQ(Acad::eOk, space->newIterator(pIterator));
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) != Acad::eOk) continue;
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbExtents extents;
        if (entity.openStatus() != Acad::eOk) continue;
        if (arguments.hasWindow) {
            if (entity->getGeomExtents(extents) != Acad::eOk) continue;
            plane::Box box;
            box.Add(plane::Point{extents.minPoint().x, extents.minPoint().y});
            box.Add(plane::Point{extents.maxPoint().x, extents.maxPoint().y});
            if (!arguments.window.Contains(box)) continue;
        }
        ids.append(id);
    }
    return ids;
}

using Chain = std::vector<plane::Curve>;

Chain ChainOf(const Json& vertices) {
    Chain chain;
    for (size_t i = 0; i + 1 < vertices.size(); ++i)
        chain.push_back(plane::MakeCurve({vertices[i][0], vertices[i][1]},
                                         {vertices[i + 1][0], vertices[i + 1][1]}, vertices[i][2]));
    return chain;
}

std::string ShowPlaces(const std::vector<SExactResult::SBridge>& list) {
    std::string text;
    for (const auto& b : list)
        text += plane::Show(plane::Point{b.m_from.m_dX, b.m_from.m_dY}, 9) + "->" +
                plane::Show(plane::Point{b.m_to.m_dX, b.m_to.m_dY}, 9) + " ";
    return text;
}

// Places in the order of the axis, for comparing lists of reports.
std::vector<std::vector<double>> Sorted(const Json& list) {
    std::vector<std::vector<double>> places;
    for (const Json& item : list) {
        const Json& p = item[0].is_array() ? item[0] : item;
        places.push_back({p[0], p[1]});
    }
    std::sort(places.begin(), places.end());
    return places;
}

void Compare(const fs::path& file) {
    const Json expected = Json::parse(std::ifstream(file));
    Arguments arguments(expected["arguments"]);
    AcDbDatabase database(false, true);
    test::TestDrawing host(database, "");
    const fs::path drawing = SharedFolder() / "cases" / expected["drawing"].get<std::string>();
    host::dxf::Report report;
    const host::dxf::Result read = host::dxf::ReadFile(database, drawing.string(), report);
    ASSERT_TRUE(read.ok()) << read.message;
    arguments.request.m_ids = Pick(database, arguments);
    const SExactResult found = CExactEnvelope(arguments.request).Find();
    EXPECT_EQ(SExactResult::E_Refusal_None, found.m_refusal);
    const double size = expected["size"];
    const Chain ours = test::ChainOf(found), theirs = ChainOf(expected["vertices"]);
    const bool hasFree = theirs.size() > 60;
    const double same = hasFree ? 2.5 * found.m_dCurve : 1e-9 * size;
    EXPECT_NEAR(size, found.m_dSize, 10 * same);
    plane::Point at;
    EXPECT_LE(test::FarthestOff(ours, theirs, at), same) << plane::Show(at, 12);
    EXPECT_LE(test::FarthestOff(theirs, ours, at), same) << plane::Show(at, 12);
    if (!hasFree) {
        EXPECT_EQ(theirs.size(), ours.size()) << plane::Show(ours, 9);
    }
    EXPECT_EQ(expected["gaps"].size(), found.m_bridges.size() + found.m_gaps.size())
        << ShowPlaces(found.m_bridges) << "| " << ShowPlaces(found.m_gaps) << expected["gaps"];
    std::vector<std::vector<double>> open, tails;
    for (const auto& p : found.m_openEnds) open.push_back({p.m_dX, p.m_dY});
    for (const auto& t : found.m_tails) tails.push_back({t.m_at.m_dX, t.m_at.m_dY});
    std::sort(open.begin(), open.end());
    std::sort(tails.begin(), tails.end());
    EXPECT_EQ(Json(Sorted(expected["open_ends"])).dump(), Json(open).dump());
    EXPECT_EQ(Json(Sorted(expected["trimmed"])).dump(), Json(tails).dump());
}

TEST(ExactReference, GivesTheSameOutlines) {
    const fs::path folder = SharedFolder() / "exact-cases";
    if (!fs::exists(folder)) GTEST_SKIP() << folder << " is not there: nothing is compared";
    int count = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != ".json") continue;
        SCOPED_TRACE(entry.path().filename().string());
        Compare(entry.path());
        ++count;
    }
    EXPECT_GT(count, 0);
}

}  // namespace
