#include "host/dxf/names.h"

#include "host/db/names.h"

namespace host::dxf {

void Names::Add(Root table, const std::wstring& name, Stub& record) {
    Table& names = tables_[static_cast<std::size_t>(table)];
    names.byBytes.clear();
    names.byName.emplace(FoldName(name.c_str()), &record);
    originals_.emplace(&record, name);
}

Stub* Names::Find(Root table, const std::wstring& name) const {
    const Table& names = tables_[static_cast<std::size_t>(table)];
    const auto found = names.byName.find(FoldName(name.c_str()));
    return found == names.byName.end() ? nullptr : found->second;
}

Stub* Names::Find(Root table, std::string_view bytes, const TextCodec& codec) const {
    const Table& names = tables_[static_cast<std::size_t>(table)];
    const std::string key(bytes);
    const auto cached = names.byBytes.find(key);
    if (cached != names.byBytes.end()) return cached->second;
    Stub* found = Find(table, codec.Decode(bytes));
    // Names that are nowhere defined are remembered too; an entity may repeat one a million times.
    names.byBytes.emplace(key, found);
    return found;
}

const std::wstring* Names::Original(const Stub& record) const {
    const auto found = originals_.find(&record);
    return found == originals_.end() ? nullptr : &found->second;
}

}  // namespace host::dxf
