// Puts the changes of an object into its record and leaves the rest of the record as it came.
#pragma once

#include <memory>
#include <string>

#include "host/dxf/tag_buffer.h"

namespace host::dxf {

// Keeps its memory from one record to the next.
class RecordMerger {
public:
    explicit RecordMerger(const Source& source);
    ~RecordMerger();
    RecordMerger(const RecordMerger&) = delete;
    RecordMerger& operator=(const RecordMerger&) = delete;

    // Appends a record with its changes.
    //
    // tags    of the record
    // before  tags of the object as the record has it, after  as it is now; both written alike
    // copy    the record is that of a new object: what was not understood of its lists is not the
    //         copy's
    // result  A tag that is equal in both stays as the file has it, byte for byte, or stays absent.
    //         One that differs is replaced where it stood; one that is new goes behind the tag that
    //         precedes it in after; one that is gone is taken out. Tags that neither mentions (of
    //         other programs, of newer versions) stay in order. Lists, application groups and the
    //         extended data of an application are replaced as a whole; lists of entries and
    //         persistent reactors entry by entry, so that one that names what is not there stays.
    // cost    O(tags)
    void Merge(std::size_t record, const RecordTags& tags, const TagBuffer& before,
               const TagBuffer& after, bool copy, std::string& out);

private:
    class Work;
    std::unique_ptr<Work> work_;
};

}  // namespace host::dxf
