#include "host/dxf/field_io.h"

#include "host/db/line_weights.h"

namespace host::dxf {

void FieldIo::OptReal(int code, double& value, double absent) {
    if (AsWriter() == nullptr || value != absent) Real(code, value);
}

void FieldIo::OptAngle(int code, double& radians, double absent) {
    if (AsWriter() == nullptr || radians != absent) Angle(code, radians);
}

void FieldIo::OptText(int code, std::wstring& value, const std::wstring& absent) {
    if (AsWriter() == nullptr || value != absent) Text(code, value);
}

void FieldIo::OptNamed(int code, Root table, AcDbObjectId& id, AcDbObjectId absent) {
    if (AsWriter() == nullptr || (id != absent && !id.isNull())) Named(code, table, id);
}

void FieldIo::Vector(int code, AcGeVector3d& vector) {
    AcGePoint3d point(vector.x, vector.y, vector.z);
    Point(code, point);
    if (AsReader() != nullptr) vector.set(point.x, point.y, point.z);
}

void FieldIo::LineWeight(int code, Adesk::Int16& weight) {
    std::int64_t number = weight;
    Int(code, number);
    if (AsReader() != nullptr && IsLineWeight(number)) weight = static_cast<Adesk::Int16>(number);
}

void FieldIo::OptLineWeight(int code, Adesk::Int16& weight, Adesk::Int16 absent) {
    if (AsWriter() == nullptr || weight != absent) LineWeight(code, weight);
}

void FieldIo::Bool(int code, bool& value) {
    std::int64_t number = value ? 1 : 0;
    Int(code, number);
    if (AsReader() != nullptr) value = number != 0;
}

FlagSet::FlagSet(FieldIo& io, int code) : io_(io), code_(code) {
    if (io.AsReader() != nullptr) io.Int(code, value_);
}

void FlagSet::Bit(std::int64_t mask, bool& value) {
    mask_ |= mask;
    if (io_.AsReader() != nullptr)
        value = (value_ & mask) != 0;
    else if (value)
        value_ |= mask;
}

void FlagSet::Done(bool optional) {
    if (io_.AsWriter() != nullptr && (value_ != 0 || !optional)) io_.Flags(code_, mask_, value_);
}

}  // namespace host::dxf
