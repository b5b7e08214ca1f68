// Shorthand for the run-time classes of the database.
#pragma once

#include "host/db/stub.h"
#include "rxboiler.h"

// A class that objects are made of: its name in DXF files is text, or nullptr.
#define HOST_DEFINE_CLASS(C, Base, dxfName)                                              \
    AcRxClass* C::desc() {                                                               \
        static AcRxClass* const type = newAcRxClass(                                     \
            ACRX_T(#C), Base::desc(), []() -> AcRxObject* { return new C(); }, dxfName); \
        return type;                                                                     \
    }                                                                                    \
    AcRxClass* C::isA() const { return C::desc(); }                                      \
    void C::rxInit() { C::desc(); }

#define HOST_DEFINE_ABSTRACT(C, Base, dxfName)                                                   \
    AcRxClass* C::desc() {                                                                       \
        static AcRxClass* const type = newAcRxClass(ACRX_T(#C), Base::desc(), nullptr, dxfName); \
        return type;                                                                             \
    }                                                                                            \
    AcRxClass* C::isA() const { return C::desc(); }                                              \
    void C::rxInit() { C::desc(); }

// clone and copyFrom by the class's copy constructor and assignment.
#define HOST_DEFINE_COPY(C)                                                            \
    AcRxObject* C::clone() const { return new C(*this); }                              \
    Acad::ErrorStatus C::copyFrom(const AcRxObject* other) {                           \
        const C* const source = C::cast(other);                                        \
        if (source == nullptr) return Acad::eNotThatKindOfClass;                       \
        const Acad::ErrorStatus es =                                                   \
            beginWrite(host::kDirtyCommon | host::kDirtyGeometry | host::kDirtyXData); \
        if (es == Acad::eOk) *this = *source;                                          \
        return es;                                                                     \
    }

// A setter's body: refuses when the object is not open for write.
#define HOST_SET(field, value, mask)                       \
    do {                                                   \
        const Acad::ErrorStatus hostEs = beginWrite(mask); \
        if (hostEs != Acad::eOk) return hostEs;            \
        (field) = (value);                                 \
        return Acad::eOk;                                  \
    } while (false)
