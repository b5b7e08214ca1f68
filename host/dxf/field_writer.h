// Turns an object's values into tags.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "host/dxf/field_io.h"
#include "host/dxf/names.h"
#include "host/dxf/tag_buffer.h"

namespace host::dxf {

class FieldWriter : public FieldIo {
public:
    struct Options {
        // Subclass marks (group 100): none up to R12, nor in a record that has none.
        bool marks = true;
        // Names as they stood in the file, to compare with what stands there; null: the current
        // ones.
        const Names* originalNames = nullptr;
        // null: every line type is stated
        AcDbObjectId byLayer;     // the linetype that entities need not state
        bool paperSpace = false;  // the entity lies on a sheet
        bool whole = false;       // nothing of the object stands in a file yet
        // Objects made for a file that lacked them; as long as nobody touches them, dictionaries do
        // not name them. Null: everything is named.
        const std::unordered_set<const Stub*>* unnamed = nullptr;
        // Handles that a new layer shares with the drawing's other layers; 0: none.
        std::uint64_t plotStyle = 0, material = 0;
    };
    FieldWriter(TagBuffer& out, const Options& options)
        : FieldIo(out.style().version), out_(out), options_(options) {}
    FieldWriter* AsWriter() override { return this; }  // this one

    void Subclass(const char* name) override;  // writes the mark, where there are marks
    // One tag each, in the order in which the codec names them.
    void Real(int code, double& value) override { out_.PutReal(code, value); }
    void Int(int code, std::int64_t& value) override { out_.PutInt(code, value); }
    void Text(int code, std::wstring& value) override { PutText(code, value); }
    void Point(int code, AcGePoint3d& point) override { PutPoint(code, point); }
    void Point(int code, AcGePoint2d& point) override { PutPoint(code, point); }
    // from WCS by the normal
    void OcsPoint(int code, AcGePoint3d& point, const AcGeVector3d& normal) override;
    void Normal(AcGeVector3d& normal) override;  // left out when it is +z
    void Angle(int code, double& radians) override { PutAngle(code, radians); }
    // the record's name, original or present
    void Named(int code, Root table, AcDbObjectId& id) override;
    void Handle(int code, AcDbObjectId& id) override { PutId(code, id); }
    bool Has(int) override { return true; }
    void Flags(int code, std::int64_t mask, std::int64_t& value) override {
        out_.PutFlags(code, mask, value);
    }

    // For lists and constants.
    void PutReal(int code, double value) { out_.PutReal(code, value); }
    void PutInt(int code, std::int64_t value) { out_.PutInt(code, value); }
    void PutText(int code, std::wstring_view text);
    void PutRaw(int code, std::string_view text) { out_.PutText(code, text); }  // encoded already
    void PutPoint(int code, const AcGePoint3d& point);                          // three tags
    void PutPoint(int code, const AcGePoint2d& point);                          // two tags
    void PutAngle(int code, double radians);                                    // in degrees
    // Handle of an object; "0" for null or erased ones.
    void PutId(int code, AcDbObjectId id);
    // Handle of an object that a list names. Erased ones are written only as the file has them.
    void PutMember(int code, AcDbObjectId id);
    // The tags are to be compared with those of the file.
    bool AsInFile() const { return options_.originalNames != nullptr; }
    std::wstring NameOf(AcDbObjectId record) const;  // empty for null
    // Whether a container should name the object.
    bool IsNamed(AcDbObjectId id) const;

    TagBuffer& out() { return out_; }
    const Options& options() const { return options_; }
    // Objects that the tags refer to, by name or handle.
    const std::vector<Stub*>& references() const { return references_; }

private:
    TagBuffer& out_;  // receives everything
    Options options_;
    std::vector<Stub*> references_;  // in the order in which they came up
};

}  // namespace host::dxf
