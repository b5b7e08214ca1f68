// Macros that give a class its run-time type.
#pragma once

#include "rxclass.h"

// Class names cannot stand in brackets.
// NOLINTBEGIN(bugprone-macro-parentheses)
// In the class: desc() is its description, cast() null for an object of another class.
#define ACRX_DECLARE_MEMBERS(CLASS_NAME)                                       \
    static AcRxClass* desc();                                                  \
    static CLASS_NAME* cast(const AcRxObject* inPtr) {                         \
        return inPtr == nullptr || !inPtr->isKindOf(CLASS_NAME::desc())        \
                   ? nullptr                                                   \
                   : static_cast<CLASS_NAME*>(const_cast<AcRxObject*>(inPtr)); \
    }                                                                          \
    AcRxClass* isA() const override;                                           \
    static void rxInit()

// A class nobody constructs by name.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS_NAME, BASE_CLASS)                          \
    AcRxClass* CLASS_NAME::desc() {                                                  \
        static AcRxClass* const type =                                               \
            newAcRxClass(ACRX_T(#CLASS_NAME), BASE_CLASS::desc(), nullptr, nullptr); \
        return type;                                                                 \
    }                                                                                \
    AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }                \
    void CLASS_NAME::rxInit() { CLASS_NAME::desc(); }

// A class that can be made by its description. VERNO is not looked at.
#define ACRX_CONS_DEFINE_MEMBERS(CLASS_NAME, BASE_CLASS, VERNO)                               \
    static AcRxObject* make##CLASS_NAME() { return new CLASS_NAME(); }                        \
    AcRxClass* CLASS_NAME::desc() {                                                           \
        static AcRxClass* const type =                                                        \
            newAcRxClass(ACRX_T(#CLASS_NAME), BASE_CLASS::desc(), make##CLASS_NAME, nullptr); \
        return type;                                                                          \
    }                                                                                         \
    AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }                         \
    void CLASS_NAME::rxInit() { CLASS_NAME::desc(); }

// A class that files know by a name. Versions and proxy flags are not looked at.
#define ACRX_DXF_DEFINE_MEMBERS(CLASS_NAME, BASE_CLASS, DWG_VERSION, MAINTENANCE_VERSION,    \
                                PROXY_FLAGS, DXF_NAME, APP)                                  \
    static AcRxObject* make##CLASS_NAME() { return new CLASS_NAME(); }                       \
    AcRxClass* CLASS_NAME::desc() {                                                          \
        static AcRxClass* const type = newAcRxClass(ACRX_T(#CLASS_NAME), BASE_CLASS::desc(), \
                                                    make##CLASS_NAME, ACRX_T(#DXF_NAME));    \
        return type;                                                                         \
    }                                                                                        \
    AcRxClass* CLASS_NAME::isA() const { return CLASS_NAME::desc(); }                        \
    void CLASS_NAME::rxInit() { CLASS_NAME::desc(); }
// NOLINTEND(bugprone-macro-parentheses)
