// The root of all run-time typed classes.
#pragma once

#include "rxdefs.h"

class AcRxClass;

// Gives every object its class at run time. Objects are made by new and freed by delete unless a
// database owns them.
class AcRxObject {
public:
    virtual ~AcRxObject();

    static AcRxClass* desc();  // the root's description
    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }

    // The class of the object.
    virtual AcRxClass* isA() const;

    // True when the object's class is the given one or derives from it; false for null.
    inline bool isKindOf(const AcRxClass* type) const;

    // A new object of the same class with the same values, belonging to no database; null for
    // classes that cannot be copied.
    virtual AcRxObject* clone() const;

    // Takes over the values of an object of the same class; eNotThatKindOfClass for another one,
    // eNotApplicable for classes that cannot be copied.
    virtual Acad::ErrorStatus copyFrom(const AcRxObject* other);

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};
