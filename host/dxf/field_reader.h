// Fills an object's values from a record.
#pragma once

#include <array>
#include <utility>

#include "host/dxf/field_io.h"
#include "host/dxf/names.h"
#include "host/dxf/record_tags.h"

namespace host::dxf {

// What references within a file are looked up in.
struct Lookup {
    const AcDbDatabase& db;
    const Source& source;
    const Names& names;
};

// A group that the record lacks leaves the value as it is: the object's own default.
class FieldReader : public FieldIo {
public:
    FieldReader(const Lookup& lookup, std::size_t record);
    // Of tags that were cut already and outlive the reader.
    FieldReader(const Lookup& lookup, const RecordTags& tags);
    FieldReader(const FieldReader&) = delete;
    FieldReader& operator=(const FieldReader&) = delete;
    FieldReader* AsReader() override { return this; }

    // From here on groups are looked for behind that mark first.
    void Subclass(const char* name) override;
    // One value each: the first tag of the code in the scope.
    void Real(int code, double& value) override;
    void Int(int code, std::int64_t& value) override;
    void Text(int code, std::wstring& value) override;
    void Point(int code, AcGePoint3d& point) override;
    void Point(int code, AcGePoint2d& point) override;
    // to WCS by the normal
    void OcsPoint(int code, AcGePoint3d& point, const AcGeVector3d& normal) override;
    void Normal(AcGeVector3d& normal) override;
    void Angle(int code, double& radians) override;  // from degrees
    // null for a name that no record has
    void Named(int code, Root table, AcDbObjectId& id) override;
    void Handle(int code, AcDbObjectId& id) override;  // null for one that no object has
    bool Has(int code) override { return Find(code) != nullptr; }
    void Flags(int code, std::int64_t, std::int64_t& value) override { Int(code, value); }

    // The body tags of the current subclass, in order, for lists; all body tags of a record without
    // subclass marks.
    std::vector<Tag> ScopeTags() const;
    const RecordTags& tags() const { return tags_; }  // all of the record's
    const Lookup& lookup() const { return lookup_; }

    // Values of tags from ScopeTags().
    double RealOf(const Tag& tag) const { return lookup_.source.Real(tag); }
    std::int64_t IntOf(const Tag& tag) const { return lookup_.source.Int(tag); }
    std::wstring TextOf(const Tag& tag) const { return lookup_.source.Text(tag); }
    AcDbObjectId IdOf(const Tag& tag) const;

private:
    // First body tag of that code in the current subclass, then anywhere in the body: programs
    // differ in which subclass they put a group into.
    const Tag* Find(int code) const;
    const Tag* FindIn(int code, bool anywhere) const;
    bool InScope(const PlacedTag& placed) const;

    const Lookup& lookup_;
    // cut here
    RecordTags own_;  // unless they were given
    const RecordTags& tags_;
    bool marks_;
    // index of the current subclass mark
    int scope_ = -1;  // -1: the whole body
    // Subclasses entered so far; no class has more.
    std::array<std::string_view, 12> entered_;
    std::size_t enteredCount_ = 0;
};

// The point in WCS of OCS coordinates, and back; exact for a normal of +z.
AcGePoint3d WcsFromOcs(const AcGePoint3d& point, const AcGeVector3d& normal);
AcGePoint3d OcsFromWcs(const AcGePoint3d& point, const AcGeVector3d& normal);

}  // namespace host::dxf
