// Load a drawing and compute an envelope of all that is in it, by a pipeline that the content
// chooses; nothing may be left open, and what the run leaves can be written and read.
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include "arxHeaders.h"
#include "fuzz/check.h"
#include "fuzz/tag_mutator.h"
#include "host/db/build.h"
#include "host/dxf/dxf_file.h"
#include "host/ed/session.h"
#include "plugin/engine/BlockSum.h"
#include "plugin/engine/EncircleLine.h"
#include "plugin/util/AddEntity.h"
#include "plugin/util/EraseEntity.h"

namespace {

constexpr double kMostPieces = 300.0;  // a run of so many is still fast

AcDbObjectIdArray ModelSpace(AcDbDatabase& database) {
    AcDbObjectIdArray ids;
    AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&database),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* made = nullptr;
    if (space.openStatus() != Acad::eOk || space->newIterator(made) != Acad::eOk) return ids;
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (; !entities->done(); entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) == Acad::eOk) ids.append(id);
    }
    return ids;
}

void Compute(AcDbDatabase& database, unsigned choice) {
    const AcDbObjectIdArray ids = ModelSpace(database);
    CBlockSum pieces = MakePieceCount();
    double count = 0.0;
    CEncircleCalInfo info;
    for (int i = 0; i < ids.length(); ++i) {
        count += pieces.Of(ids[i]);
        const AcDbObjectPointer<AcDbEntity> entity(ids[i], AcDb::kForRead);
        AcDbExtents box;
        // Chords as long as the drawing needs: a fixed length cuts a huge one into millions.
        if (entity.openStatus() == Acad::eOk && entity->getGeomExtents(box) == Acad::eOk)
            info.m_dArcPrecision =
                (std::max)(info.m_dArcPrecision, box.minPoint().distanceTo(box.maxPoint()) / 50.0);
    }
    if (!(count <= kMostPieces)) return;
    info.m_nHalfSide = static_cast<int>(choice >> 2 & 1);
    info.m_bSideLinesVertical = (choice >> 3 & 1) != 0;
    if ((choice >> 4 & 1) != 0)
        info.m_midLineId =
            AddLine(AcGePoint3d(-100, 5, 0), AcGePoint3d(300, 5, 0), 256, ACDB_MODEL_SPACE);
    static void (CEncircleLine::*const kPipelines[])(const AcArray<AcDbObjectId>&,
                                                     AcDbObjectId&) = {
        &CEncircleLine::GetEncircleLine3, &CEncircleLine::GetEncircleLineByHatch,
        &CEncircleLine::GetEncircleLine, &CEncircleLine::GetEncircleLine2,
        &CEncircleLine::GetEncircleLineExact};
    AcDbObjectId envelope;
    CEncircleLine engine(info);
    (engine.*kPipelines[(choice >> 5) % std::size(kPipelines)])(ids, envelope);
    EraseById(info.m_midLineId);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static_cast<void>(host::Session::Get());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    unsigned choice = 0;
    for (size_t i = 0; i < size; ++i) choice = choice * 31 + data[i];
    AcDbDatabase database(false, true);
    host::dxf::Report report;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!host::dxf::ReadBytes(database, bytes, "fuzz.dxf", report).ok()) return 0;
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    Compute(database, choice);
    FUZZ_CHECK(host::OpenObjectsReport(database).empty());
    std::string written;
    FUZZ_CHECK(host::dxf::WriteToString(database, written, report).ok());
    {
        AcDbDatabase again(false, true);
        FUZZ_CHECK(host::dxf::ReadBytes(again, written, "again.dxf", report).ok());
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    return 0;
}

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t most, unsigned seed) {
    return fuzz::MutateTags(data, size, most, seed);
}
