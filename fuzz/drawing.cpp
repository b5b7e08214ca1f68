// Text and binary drawings: any bytes give a status or a drawing; what is read is written back as
// it came; everything can be opened, measured, exploded and changed; what was changed can be
// written and read again.
#include <memory>
#include <string>

#include "arxHeaders.h"
#include "fuzz/check.h"
#include "fuzz/tag_mutator.h"
#include "host/dxf/dxf_file.h"

namespace {

bool Read(AcDbDatabase& database, const std::string& bytes) {
    host::dxf::Report report;
    const host::dxf::Result result = host::dxf::ReadBytes(database, bytes, "fuzz.dxf", report);
    FUZZ_CHECK(result.ok() || !result.message.empty());
    return result.ok();
}

std::string Written(const AcDbDatabase& database) {
    std::string bytes;
    host::dxf::Report report;
    FUZZ_CHECK(host::dxf::WriteToString(database, bytes, report).ok());
    return bytes;
}

// choice  bits that say what is done to the entity
void Use(AcDbObjectId id, unsigned choice) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
    AcDbExtents box;
    static_cast<void>(entity->getGeomExtents(box));
    AcDbVoidPtrArray pieces;
    static_cast<void>(entity->explode(pieces));
    for (int i = 0; i < pieces.length(); ++i) delete static_cast<AcDbEntity*>(pieces[i]);
    if (const AcDbCurve* const curve = AcDbCurve::cast(entity)) {
        double end = 0, length = 0;
        if (curve->getEndParam(end) == Acad::eOk)
            static_cast<void>(curve->getDistAtParam(end, length));
    }
    if ((choice & 1) != 0) static_cast<void>(entity->setColorIndex(3));
    if ((choice & 2) != 0)
        static_cast<void>(entity->transformBy(AcGeMatrix3d::translation(AcGeVector3d(1, 2, 0))));
    if ((choice & 12) == 12) static_cast<void>(entity->erase());
    FUZZ_CHECK(entity->close() == Acad::eOk);
}

void UseModelSpace(AcDbDatabase& database) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&database),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* made = nullptr;
    if (space.openStatus() != Acad::eOk || space->newIterator(made) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    std::vector<AcDbObjectId> ids;
    for (; !entities->done() && ids.size() < 200; entities->step()) {
        AcDbObjectId id;
        if (entities->getEntityId(id) == Acad::eOk) ids.push_back(id);
    }
    static_cast<void>(space.close());
    unsigned choice = 0;
    for (const AcDbObjectId& id : ids) Use(id, choice++);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    AcDbDatabase database(false, true);
    if (!Read(database, bytes)) return 0;
    FUZZ_CHECK(Written(database) == bytes);
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    UseModelSpace(database);
    const std::string changed = Written(database);
    {
        AcDbDatabase again(false, true);
        FUZZ_CHECK(Read(again, changed));
        FUZZ_CHECK(Written(again) == changed);
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    return 0;
}

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t most, unsigned seed) {
    return fuzz::MutateTags(data, size, most, seed);
}
