// Whole records of objects.
#pragma once

#include <string>
#include <vector>

#include "dbsymtb.h"
#include "host/dxf/field_writer.h"
#include "host/dxf/tag_buffer.h"

namespace host::dxf {

// What stands at the beginning of a record, and how the record is written.
struct RecordHead {
    // as files call the class
    std::string name;          // group 0
    std::uint64_t handle = 0;  // 0: not written
    std::uint64_t owner = 0;   // 0: not written
    FieldWriter::Options options;
};

// Writes the record of an object: head, common properties, what its class stores, extended data.
// Vertices and attributes are records of their own. references, unless null, receives the objects
// that the record names.
void WriteObject(const AcDbObject& object, const RecordHead& head, TagBuffer& out,
                 std::vector<Stub*>* references);

// BLOCK and ENDBLK of a block definition. The handles are those of the two records, not the
// block's.
void WriteBlockBegin(const AcDbBlockTableRecord& block, const RecordHead& head, TagBuffer& out);
void WriteBlockEnd(const RecordHead& head, TagBuffer& out);

// TABLE with its number of records; the records and ENDTAB follow.
void WriteTableBegin(const std::string& name, const RecordHead& head, std::size_t count,
                     TagBuffer& out);

// A single mark: WriteMark("ENDTAB", out).
void WriteMark(const std::string& name, TagBuffer& out);

}  // namespace host::dxf
