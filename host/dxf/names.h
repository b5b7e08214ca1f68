// Names by which the records of a file refer to table records.
#pragma once

#include <array>
#include <string>
#include <unordered_map>

#include "host/db/build.h"
#include "host/dxf/text_codec.h"

namespace host::dxf {

// The names as they stand in the file. A record renamed since is still found under its old name,
// since that is what the unread entities say.
class Names {  // by table
public:
    // The first record of a name wins, as in the table itself.
    void Add(Root table, const std::wstring& name, Stub& record);

    // Names compare without case. Null when there is none. O(1); bytes seen before are not decoded
    // again.
    Stub* Find(Root table, std::string_view bytes, const TextCodec& codec) const;
    Stub* Find(Root table, const std::wstring& name) const;

    // The name a record has in the file; null for one that is not from it.
    const std::wstring* Original(const Stub& record) const;

private:
    struct Table {
        std::unordered_map<std::wstring, Stub*> byName;  // by folded name
        mutable std::unordered_map<std::string, Stub*> byBytes;
    };
    std::array<Table, static_cast<std::size_t>(Root::kCount)> tables_;  // by kind of table
    std::unordered_map<const Stub*, std::wstring> originals_;
};

}  // namespace host::dxf
