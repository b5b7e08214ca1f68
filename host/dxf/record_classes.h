// Which class of object a record is.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/db/build.h"
#include "host/dxf/source.h"

namespace host::dxf {

// The tables by their names in files.
const std::map<std::string, Root, std::less<>>& Tables();
AcRxClass* TableRecordClass(Root table);  // of the records of that table

// Records of the sections BLOCKS, ENTITIES and OBJECTS, asked for in the order of the file: a
// vertex is one of the polyline before it. Unknown ones get the class of unknown entities or
// objects.
class RecordClasses {
public:
    explicit RecordClasses(const Source& source) : source_(source) {}
    AcRxClass* OfEntity(std::size_t record);  // of sections BLOCKS and ENTITIES
    AcRxClass* OfObject(std::size_t record);  // of section OBJECTS
    // An arrayed insert of more cells than can be meant; it is taken for a single one.
    bool IsHugeArray(std::size_t record) const;

private:
    // one number of a record, without making an object
    std::int64_t Peek(std::size_t record, int code, std::int64_t absent) const;
    AcRxClass* PolylineClass(std::size_t record) const;   // 2D, 3D, or a mesh, by group 70
    AcRxClass* VertexClass() const;                       // as the polyline before it
    AcRxClass* InsertClass(std::size_t record) const;     // single or arrayed
    AcRxClass* DimensionClass(std::size_t record) const;  // by group 70
    AcRxClass* KnownClass(std::uint16_t type, bool entity);

    const Source& source_;
    std::vector<AcRxClass*> entities_, objects_;  // by type, as far as they were asked for
    AcRxClass* polyline_ = nullptr;               // class of the last POLYLINE
};

}  // namespace host::dxf
