// Records of what was made since the drawing was read, sorted into the places where they belong.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/dxf/loaded_drawing.h"
#include "host/dxf/merge.h"
#include "host/dxf/object_writer.h"
#include "host/dxf/report.h"

namespace host::dxf {

class NewObjects {  // one for each writing
public:
    // drawing is null for a database that was never read. Nothing is written yet.
    NewObjects(const AcDbDatabase& db, const LoadedDrawing* drawing, const WriteStyle& style,
               Report& report);

    // Writes every object that is new and not erased, with what it refers to and the file lacks.
    void Write();

    // Texts by container; within one in the order in which the objects were made.
    using Texts = std::map<std::uint64_t, std::string>;
    std::map<Root, Texts> records;          // of the tables, without the marks around them
    std::map<const Stub*, Texts> entities;  // by block record
    std::map<const Stub*, Texts> owned;     // vertices and attributes, by an owner from the file
    Texts objects;                          // section OBJECTS
    std::vector<const Stub*> blocks;        // block records to be written whole
    bool complete = false;  // everything a drawing needs is written, asked for or not

    bool Any() const { return any_; }          // there is something new
    bool handles() const { return handles_; }  // records get group 5
    // The file has no handles, but what is stored now may refer to objects by them: every entity is
    // to get its own.
    bool TurnsHandlesOn() const { return turnsHandlesOn_; }
    // for marks that are no objects; 0 without handles
    std::uint64_t TakeHandle() { return handles_ ? nextHandle_++ : 0; }
    std::uint64_t nextHandle() const { return nextHandle_; }
    // Handle of the first object that holds a number that is none, as text; empty when all is well.
    const std::string& badObject() const { return badObject_; }

    // Head of a record of a resident object.
    RecordHead HeadOf(const Stub& stub, const std::string& name) const;
    // Whether the object's record stands in the file or will.
    bool IsInFile(const Stub& stub) const;
    // The object or what it lies in is erased.
    static bool IsGone(const Stub& stub);
    // The record of the file that a new object was copied from, or kNoIndex.
    std::size_t BaseRecord(const AcDbObject& object) const;
    // Appends the record of an object that was read or copied, with its changes.
    void AppendMerged(const Stub& stub, std::size_t base, bool copy, std::string& out);

private:
    bool IsUnwritable(const Stub& stub) const;  // of a class that files cannot hold
    bool IsImplied(const Stub& stub) const;     // stands in its owner's record already
    // layers, line types, styles that it uses
    void RequireNamed(const std::vector<Stub*>& references);
    bool OnSheet(const Stub& stub) const;  // lies in a paper space
    const Stub* ModelSpace() const;
    void Collect();                         // all stubs without a record, by handle
    bool IsTooNew(const Stub& stub) const;  // a class that the file's version has not
    bool IsWanted(const Stub& stub) const;  // written even when nothing refers to it
    void Require(const Stub* stub);         // puts it into the queue, once
    void WriteStub(const Stub& stub);       // what stands for it, by its kind
    void WriteRecord(const Stub& stub);
    void WriteEntity(const Stub& stub, std::string& out);
    // as what older versions have instead
    void WriteOlder(const Stub& stub, const AcDbEntity& entity, std::string& out);
    // one such piece
    void WriteForm(const AcDbEntity& form, RecordHead head, const Stub& original, std::string& out);
    void RequireTable(Root table);  // the table that a record needs
    std::string WholeRecord(const Stub& stub, const std::string& name);
    void Check(const TagBuffer& buffer, const Stub& stub);  // no number that is none
    void LayerDefaults(FieldWriter::Options& options) const;
    static Root TableOf(const Stub& record, const AcDbDatabase& db);

    const AcDbDatabase& db_;
    const LoadedDrawing* drawing_;  // null: never read
    const WriteStyle& style_;       // version, form, code page
    Report& report_;                // what could not be written
    bool handles_ = true, turnsHandlesOn_ = false, any_ = false;
    std::uint64_t nextHandle_;
    // Of the record that is being merged; kept for their memory.
    RecordTags mergedTags_;
    TagBuffer mergedBefore_, mergedAfter_;
    std::unique_ptr<RecordMerger> merger_;
    std::vector<Stub*> known_, references_;  // kept for their memory
    std::vector<const Stub*> queue_;         // required and not written yet
    std::set<const Stub*> written_;          // or in the queue
    std::set<Root> tables_;
    std::string badObject_;
    mutable std::uint64_t plotStyle_ = 0, material_ = 0;
    mutable bool layerDefaultsKnown_ = false;
};

}  // namespace host::dxf
