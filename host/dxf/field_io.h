// One description of a class's values serves reading and writing.
//
// A codec names the values of a class in the order in which they are written:
//
//     void Circle(FieldIo& io, AcDbCircle& circle) {
//         io.Subclass("AcDbCircle");
//         io.OptReal(39, Access::Thickness(circle), 0.0);
//         io.OcsPoint(10, Access::Center(circle), Access::Normal(circle));
//         io.Real(40, Access::Radius(circle));
//         io.Normal(Access::Normal(circle));
//     }
//
// A FieldReader fills the references from a record, leaving alone what the record does not state; a
// FieldWriter turns them into tags and changes nothing.
#pragma once

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "dbid.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "host/db/build.h"

namespace host::dxf {

class FieldReader;
class FieldWriter;

// Takes a whole number out of a file, unless the type cannot hold it.
template <class T>
void TakeInt(std::int64_t number, T& value) {
    static_assert(std::is_integral_v<T> && (sizeof(T) < sizeof number || std::is_signed_v<T>));
    if (number >= std::numeric_limits<T>::min() && number <= std::numeric_limits<T>::max())
        value = static_cast<T>(number);
}

class FieldIo {
public:
    explicit FieldIo(int version) : version_(version) {}
    virtual ~FieldIo() = default;

    // Exactly one of them is not null; for values that no single call describes.
    virtual FieldReader* AsReader() { return nullptr; }
    virtual FieldWriter* AsWriter() { return nullptr; }

    // Version of the drawing (1009 for R12); subclass marks and many values exist from some
    // version.
    int version() const { return version_; }

    // The values that follow belong to this subclass (group 100).
    virtual void Subclass(const char* name) = 0;

    // Opt...: not written when it equals the default, which is also what an absent group means.
    virtual void Real(int code, double& value) = 0;
    virtual void Int(int code, std::int64_t& value) = 0;
    virtual void Text(int code, std::wstring& value) = 0;
    virtual void Point(int code, AcGePoint3d& point) = 0;  // three groups; z may be missing
    virtual void Point(int code, AcGePoint2d& point) = 0;
    // In the object's plane in the file, WCS in memory. The normal is group 210 when reading.
    virtual void OcsPoint(int code, AcGePoint3d& point, const AcGeVector3d& normal) = 0;
    // Group 210; left out when it is +z. Made unit; a zero vector is taken as +z.
    virtual void Normal(AcGeVector3d& normal) = 0;
    // Degrees in the file, radians in memory.
    virtual void Angle(int code, double& radians) = 0;
    // A record of a table by its name. Reading: null when there is none of that name.
    virtual void Named(int code, Root table, AcDbObjectId& id) = 0;
    // An object by its handle. Reading: null when there is none.
    virtual void Handle(int code, AcDbObjectId& id) = 0;
    // Whether the record states the group; always true for writing.
    virtual bool Has(int code) = 0;

    // The same for values with a default.
    void OptReal(int code, double& value, double absent);
    void OptAngle(int code, double& radians, double absent);
    void OptText(int code, std::wstring& value, const std::wstring& absent);
    void OptNamed(int code, Root table, AcDbObjectId& id, AcDbObjectId absent);
    void Vector(int code, AcGeVector3d& vector);  // three groups, not moved by any plane
    // A whole number of another type. Reading: one that the type cannot hold counts as not stated.
    template <class T>
    void IntAs(int code, T& value) {
        std::int64_t number = value;
        Int(code, number);
        if (AsReader() != nullptr) TakeInt(number, value);
    }
    // The same with a default.
    template <class T>
    void OptInt(int code, T& value, T absent) {
        if (AsWriter() == nullptr || value != absent) IntAs(code, value);
    }
    // One of the kinds from first to last. Reading: another number counts as not stated.
    template <class E>
    void KindAs(int code, E& value, E first, E last) {
        std::int64_t number = value;
        Int(code, number);
        if (AsReader() != nullptr && number >= first && number <= last)
            value = static_cast<E>(number);
    }
    // The same with a default, which is the first.
    template <class E>
    void OptKind(int code, E& value, E first, E last) {
        if (AsWriter() == nullptr || value != first) KindAs(code, value, first, last);
    }
    // Of AcDb::LineWeight. Reading: another number counts as not stated.
    void LineWeight(int code, Adesk::Int16& weight);
    void OptLineWeight(int code, Adesk::Int16& weight, Adesk::Int16 absent);
    void Bool(int code, bool& value);  // 0 or 1
    void OptBool(int code, bool& value, bool absent) {
        if (AsWriter() == nullptr || value != absent) Bool(code, value);
    }

    // Some bits of a group of flags; the bits outside the mask belong to others and stay when the
    // record is rewritten. Use through FlagSet.
    virtual void Flags(int code, std::int64_t mask, std::int64_t& value) = 0;

private:
    int version_;
};

// The bits of one group that a class knows:
//     FlagSet flags(io, 70);
//     flags.Bit(1, frozen);
//     flags.Bit(4, locked);
//     flags.Done();
class FlagSet {
public:
    FlagSet(FieldIo& io, int code);
    // Reads the bit into the value, or gathers it for Done().
    void Bit(std::int64_t mask, bool& value);
    // Writes the bits; with absent, not when they are all clear.
    void Done(bool optional = false);

private:
    FieldIo& io_;
    int code_;  // the group
    std::int64_t mask_ = 0, value_ = 0;
};

}  // namespace host::dxf
