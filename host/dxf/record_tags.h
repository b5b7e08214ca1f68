// The tags of one record with their places: subclass, application group, extended data.
#pragma once

#include <string_view>
#include <vector>

#include "host/dxf/source.h"

namespace host::dxf {

enum class Area : std::uint8_t {
    kBody,     // the object's own values
    kGroup,    // between 102 "{NAME" and 102 "}"
    kXdata,    // from 1001 on
    kEmbedded  // from 101 on: another object's values, whose codes mean something else
};

struct PlacedTag {
    Tag tag;  // as it stands in the file
    Area area = Area::kBody;
    std::uint16_t scope = 0;  // index into RecordTags::scopes
};

// A scope is what follows one subclass mark (group 100), "" being what stands before the first.
// Application groups, embedded objects and the data of each application are scopes of their own, so
// that equal codes in different places are not mistaken for each other.
struct Scope {
    std::string_view name;  // of the mark, the group with its brace, or the application
    Area area = Area::kBody;
};

// Points into the source.
struct RecordTags {
    RecordTags() = default;  // to be read into
    RecordTags(const Source& source, std::size_t record) { Read(source, record); }
    // In place of what it held; the memory is used again.
    void Read(const Source& source, std::size_t record);

    bool HasMarks() const;  // has subclasses
    // Index of the n-th (from 0) subclass of that name, or -1.
    int FindScope(std::string_view name, int n = 0) const;
    std::string_view ScopeName(const PlacedTag& placed) const { return scopes[placed.scope].name; }

    std::vector<PlacedTag> tags;  // in the order of the file
    std::vector<Scope> scopes;    // the head first
};

// Codes whose tags in an XRECORD's data would start something anywhere else.
constexpr std::string_view kXrecordMark = "AcDbXrecord";

}  // namespace host::dxf
