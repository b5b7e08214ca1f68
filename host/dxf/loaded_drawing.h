// A drawing that came from a file: its records, and which object each of them is.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/db/build.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/names.h"
#include "host/dxf/source.h"

namespace host::dxf {

// An entry of a dictionary as it stands in the file.
struct NamedHandle {        // bytes of the file
    std::string_view name;  // not decoded
    std::uint64_t handle = 0;
    bool hard = false;  // it owns what it names (group 360)
};

// The entries of a record, io being in its subclass AcDbDictionary.
std::vector<NamedHandle> EntriesOf(const FieldReader& io);

constexpr std::size_t kNoIndex = static_cast<std::size_t>(-1);

class LoadedDrawing : public DrawingSource {  // the source of the database's objects
public:
    // Takes the scanned file; objects are made when they are asked for.
    LoadedDrawing(const AcDbDatabase& db, std::unique_ptr<Source> source)
        : source_(std::move(source)),
          lookup_{db, *source_, names},
          stubs(source_->records.size(), nullptr) {}

    // Makes the object and gives it the vertices or attributes that follow it in the file.
    AcDbObject* Load(Stub& stub) override;

    // The object a record stands for, non-resident, as it was in the file; what it owns is left
    // out.
    std::unique_ptr<AcDbObject> Make(std::size_t record, AcRxClass* type) const {
        return Make(record, RecordTags(source(), record), type);
    }
    std::unique_ptr<AcDbObject> Make(std::size_t record, const RecordTags& tags,
                                     AcRxClass* type) const;

    const Source& source() const { return *source_; }
    const Lookup& lookup() const { return lookup_; }

    // From the mark SECTION, TABLE or BLOCK to the one that ends it; when that is missing, end is
    // the first record behind. Ends of sections are those of the file's own marks.
    struct Span {
        std::string name;  // of the section, table or block
        std::size_t begin = 0, end = 0;
        bool closed = true;  // the record at end is the mark
    };
    std::vector<Span> sections;  // in the order of the file
    std::vector<Span> tables;    // of section TABLES
    struct Block {
        Span span;               // from BLOCK to ENDBLK
        Stub* record = nullptr;  // of the block table
    };
    std::vector<Block> blocks;
    // Index into blocks by the record number of the block table record's stub.
    std::unordered_map<std::size_t, std::size_t> blockOfRecord;

    // References that would make a block contain itself; they show nothing.
    std::unordered_set<std::size_t> cyclic;

    Names names;

private:
    std::unique_ptr<Source> source_;  // bytes and places of tags
    Lookup lookup_;

public:
    std::vector<Stub*> stubs;  // by record; null for marks and what is no object
    // What a drawing needs and the file did not bring. Not written unless something else needs it.
    std::unordered_set<const Stub*> synthetic;
};

}  // namespace host::dxf
