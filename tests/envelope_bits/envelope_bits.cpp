// Envelopes of drawings, every number to the last bit.
//   envelope_bits LIST, where a line of the list is a run: DRAWING x1,y1,x2,y2 words
// The numbers are the window around the tool; the words are those of test::RunOptions. Prints the
// line itself, then a line for each vertex: x, y and bulge in hexadecimal. Status 1 when a drawing
// cannot be read or a run has no envelope.
#include <fstream>
#include <iostream>
#include <memory>

#include "host/dxf/dxf_file.h"
#include "support/envelope_run.h"

namespace {

// Model space in file order, what lies in the window.
AcDbObjectIdArray Pick(AcDbDatabase& db, const CQZRect& window) {
    AcDbObjectIdArray ids;
    AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&db),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* raw = nullptr;
    if (space.openStatus() != Acad::eOk || space->newIterator(raw) != Acad::eOk) return ids;
    for (const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw); !it->done(); it->step()) {
        AcDbObjectId id;
        if (it->getEntityId(id) != Acad::eOk) continue;
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbExtents box;
        if (entity.openStatus() == Acad::eOk && entity->getGeomExtents(box) == Acad::eOk &&
            window.min.x <= box.minPoint().x && box.maxPoint().x <= window.max.x &&
            window.min.y <= box.minPoint().y && box.maxPoint().y <= window.max.y)
            ids.append(id);
    }
    return ids;
}

bool PrintVertices(const AcDbObjectId& id) {
    AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
    if (polyline.openStatus() != Acad::eOk) return false;
    for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
        AcGePoint3d p;
        double bulge = 0.0;
        if (polyline->getPointAt(i, p) != Acad::eOk || polyline->getBulgeAt(i, bulge) != Acad::eOk)
            return false;
        std::printf("%a %a %a\n", p.x, p.y, bulge);
    }
    return polyline->numVerts() > 0;
}

bool Run(const std::string& drawing, const std::string& window, const std::string& words) {
    AcDbDatabase db(false, true);
    host::dxf::Report report;
    const host::dxf::Result result = host::dxf::ReadFile(db, drawing, report);
    if (!result.ok()) {
        std::fprintf(stderr, "%s\n", result.message.c_str());
        return false;
    }
    AcDbDatabase* const former = acdbHostApplicationServices()->workingDatabase();
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    std::vector<double> v;
    for (const std::string& number : test::Split(window, ','))
        v.push_back(std::atof(number.c_str()));
    const CQZRect box(AcGePoint3d(v.at(0), v.at(1), 0), AcGePoint3d(v.at(2), v.at(3), 0));
    const bool printed = PrintVertices(test::RunEnvelope(Pick(db, box), test::RunOptions(words)));
    acdbHostApplicationServices()->setWorkingDatabase(former);
    return printed;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    std::ifstream list(arguments[1]);
    bool isGood = bool(list);
    for (std::string drawing, window, words;
         list >> drawing >> window && std::getline(list, words);) {
        while (!words.empty() && words.back() == '\r') words.pop_back();
        std::printf("%s %s%s\n", drawing.c_str(), window.c_str(), words.c_str());
        if (!Run(drawing, window, words)) {
            std::fprintf(stderr, "no envelope: %s %s%s\n", drawing.c_str(), window.c_str(),
                         words.c_str());
            isGood = false;
        }
    }
    return isGood ? 0 : 1;
}
