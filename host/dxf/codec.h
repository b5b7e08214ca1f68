// How each class of objects stands in a file.
#pragma once

#include <vector>

#include "dbcolor.h"
#include "host/dxf/field_io.h"
#include "rxclass.h"

namespace host::dxf {

struct Codec {
    const char* dxfName;   // group 0
    AcRxClass* (*type)();  // exactly this class
    // Reads or writes what the class itself stores; handle, owner, common properties and extended
    // data are not its affair.
    void (*fields)(FieldIo& io, AcDbObject& object);
    int since = 0;  // first version that has the record; earlier ones get another form, or none
};

// The codec of exactly that class; null for classes without one, whose records are kept as they
// are.
const Codec* FindCodec(const AcRxClass* type);

// Properties that every entity has, from subclass AcDbEntity.
void EntityFields(FieldIo& io, AcDbObject& object);

// The colour of group 62, an index with 0 ByBlock and 256 ByLayer, and group 420, red-green-blue or
// -1. An index out of range gives the absent one.
AcCmEntityColor ColorOfGroups(std::int64_t index, std::int64_t rgb, Adesk::UInt16 absent);

// Tables of codecs, one a source file.
const std::vector<Codec>& CurveCodecs();      // LINE, ARC, CIRCLE, ELLIPSE, SPLINE, RAY ...
const std::vector<Codec>& PolylineCodecs();   // LWPOLYLINE, POLYLINE, VERTEX
const std::vector<Codec>& TextCodecs();       // TEXT, MTEXT, ATTRIB, ATTDEF
const std::vector<Codec>& DimensionCodecs();  // DIMENSION, LEADER
const std::vector<Codec>& ShapeCodecs();      // POINT, SOLID, 3DFACE, INSERT, 3DSOLID ...
const std::vector<Codec>& HatchCodecs();      // HATCH
const std::vector<Codec>& TableCodecs();      // LAYER, LTYPE, STYLE ...
const std::vector<Codec>& ObjectCodecs();     // DICTIONARY, XRECORD, GROUP, LAYOUT

// Adapts a function on the class to one on objects: Fields<AcDbLine, LineFields>.
template <class T, void (*Function)(FieldIo&, T&)>
void Fields(FieldIo& io, AcDbObject& object) {
    Function(io, static_cast<T&>(object));
}

}  // namespace host::dxf
