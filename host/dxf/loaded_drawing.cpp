#include "host/dxf/loaded_drawing.h"

#include "acutads.h"
#include "host/db/access.h"
#include "host/db/names.h"
#include "host/dxf/block_fields.h"
#include "host/dxf/chain.h"
#include "host/dxf/codec.h"

namespace host::dxf {

namespace {

std::unique_ptr<AcDbObject> NewObject(AcRxClass* type) {
    if (type->isDerivedFrom(AcDbZombieEntity::desc()))
        return std::make_unique<AcDbZombieEntity>(type);
    if (type->isDerivedFrom(AcDbZombieObject::desc()))
        return std::make_unique<AcDbZombieObject>(type);
    return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(type->create()));
}

// Extended data, extension dictionary and persistent reactors.
void ReadAttachments(const FieldReader& io, AcDbObject& object) {
    std::vector<Tag> xdata;
    for (const PlacedTag& placed : io.tags().tags) {
        if (placed.area == Area::kXdata) xdata.push_back(placed.tag);
        if (placed.area != Area::kGroup || placed.tag.code == 102) continue;
        const std::string_view group = io.tags().ScopeName(placed);
        const AcDbObjectId id = io.IdOf(placed.tag);
        if (id.isNull()) continue;
        if (group == "{ACAD_XDICTIONARY" && placed.tag.code == 360)
            SetExtensionDictionary(object, id);
        if (group == "{ACAD_REACTORS" && placed.tag.code == 330) AddReactorId(object, id);
    }
    if (!xdata.empty()) SetXDataChain(object, ChainFromTags(io, xdata));
}

// What a dictionary names. Left out, and so kept as the file has it, is what names nothing in the
// file, the dictionary itself, or a name a second time.
void ReadEntries(const LoadedDrawing& drawing, std::size_t record, AcDbDictionary& dictionary) {
    FieldReader io(drawing.lookup(), record);
    io.Subclass("AcDbDictionary");
    auto& entries = Access::Entries(dictionary);
    auto& byName = Access::EntriesByName(dictionary);
    for (const NamedHandle& named : EntriesOf(io)) {
        if (named.hard) Access::Hard(dictionary) = true;
        const AcDbObjectId id(FindStub(drawing.lookup().db, named.handle));
        if (id.isNull() || IsNew(*id.stub()) || id.stub() == drawing.stubs[record]) continue;
        std::wstring name = drawing.source().codec->Decode(named.name);
        if (!byName.emplace(FoldName(name.c_str()), entries.size()).second) continue;
        entries.push_back({std::move(name), id});
    }
}

void AddPoint(const FieldReader& io, int code, AcDbExtents& box) {
    AcGePoint3d point;
    bool any = false;
    for (const PlacedTag& placed : io.tags().tags) {
        if (placed.area != Area::kBody) continue;
        if (placed.tag.code == code) {
            if (any) box.addPoint(point);
            point.set(io.RealOf(placed.tag), 0.0, 0.0);
            any = true;
        }
        if (placed.tag.code == code + 10) point.y = io.RealOf(placed.tag);
        if (placed.tag.code == code + 20) point.z = io.RealOf(placed.tag);
    }
    if (any) box.addPoint(point);
}

// Where an entity of unknown class lies, for those whose points can be told.
void FindExtents(const LoadedDrawing& drawing, std::size_t record, AcDbExtents& box) {
    const Source& source = drawing.source();
    const std::string& type = source.Type(record);
    if (type == "MLINE" || type == "OLE2FRAME")
        AddPoint(FieldReader(drawing.lookup(), record), 11, box);
    if (type == "OLE2FRAME") AddPoint(FieldReader(drawing.lookup(), record), 10, box);
    if (type != "POLYLINE") return;
    constexpr std::int64_t kFaceRecord = 128, kMeshPoint = 64;
    for (std::size_t i = record + 1; i < source.records.size() && source.Type(i) == "VERTEX"; ++i) {
        FieldReader vertex(drawing.lookup(), i);
        std::int64_t flags = 0;
        vertex.Int(70, flags);
        // The faces of a mesh name its points by number and have none of their own.
        if ((flags & kFaceRecord) == 0 || (flags & kMeshPoint) != 0) AddPoint(vertex, 10, box);
    }
}

}  // namespace

std::vector<NamedHandle> EntriesOf(const FieldReader& io) {
    std::vector<NamedHandle> entries;
    std::string_view name;
    for (const Tag& tag : io.ScopeTags()) {
        if (tag.code == 3) name = tag.value;
        if ((tag.code != 350 && tag.code != 360) || name.data() == nullptr) continue;
        entries.push_back({name, io.lookup().source.Handle(tag), tag.code == 360});
        name = {};
    }
    return entries;
}

std::unique_ptr<AcDbObject> LoadedDrawing::Make(std::size_t record, const RecordTags& tags,
                                                AcRxClass* type) const {
    std::unique_ptr<AcDbObject> object = NewObject(type);
    if (object == nullptr) return nullptr;
    FieldReader io(lookup_, tags);
    if (auto* entity = AcDbEntity::cast(object.get())) {
        EntityFields(io, *entity);
        if (Access::Layer(*entity).isNull()) Access::Layer(*entity) = lookup_.db.layerZero();
        if (Access::Linetype(*entity).isNull())
            Access::Linetype(*entity) = lookup_.db.byLayerLinetype();
        if (auto* unknown = AcDbZombieEntity::cast(entity))
            FindExtents(*this, record, Access::OpaqueExtents(*unknown));
    }
    if (const Codec* codec = FindCodec(type)) codec->fields(io, *object);
    if (auto* dictionary = AcDbDictionary::cast(object.get()))
        ReadEntries(*this, record, *dictionary);
    if (cyclic.count(record) != 0) {
        if (auto* reference = AcDbBlockReference::cast(object.get()))
            Access::Block(*reference).setNull();
        if (auto* dimension = AcDbDimension::cast(object.get()))
            Access::Block(*dimension).setNull();
    }
    ReadAttachments(io, *object);
    const auto found = blockOfRecord.find(record);
    if (auto* block = AcDbBlockTableRecord::cast(object.get());
        block != nullptr && found != blockOfRecord.end()) {
        // The other half of a block's data stands where its entities begin.
        FieldReader begin(lookup_, blocks[found->second].span.begin);
        BlockFields(begin, *block);
    }
    Access::Record(*object) = static_cast<Adesk::UInt32>(record);
    Access::DirtyBits(*object) = 0;
    return object;
}

AcDbObject* LoadedDrawing::Load(Stub& stub) {
    if (stub.record >= source_->records.size()) return nullptr;
    std::unique_ptr<AcDbObject> object = Make(stub.record, stub.cls);
    if (object == nullptr) return nullptr;
    for (std::size_t i = stub.record + std::size_t{1}; i < stubs.size(); ++i) {
        if (stubs[i] == nullptr || stubs[i]->owner != &stub || !stubs[i]->Has(kStubSubentity))
            break;
        AppendOwned(*object, &stub, *stubs[i]);
    }
    return object.release();
}

}  // namespace host::dxf
