// Objects of classes that this host does not know. Their data stay in the drawing they came from;
// copies made within it are written from the same data.
#pragma once

#include <vector>

#include "dbents.h"

// What stands for an entity of an unknown class.
class AcDbProxyEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyEntity);
    const ACHAR* originalDxfName() const;  // as in the file

protected:
    AcDbProxyEntity() = default;
};

// What stands for an object that is no entity.
class AcDbProxyObject : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyObject);
    const ACHAR* originalDxfName() const;

protected:
    AcDbProxyObject() = default;
};

// An unknown entity. Its extents are those of the points its reader could make out, else
// eNullExtents. Moving it answers eNotImplementedYet.
class AcDbZombieEntity : public AcDbProxyEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbZombieEntity);
    // type  from host::OpaqueEntityClass
    explicit AcDbZombieEntity(AcRxClass* type) : m_type(type) {}
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
    // Always eNotImplementedYet: what its numbers mean is not known.
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    void ownedIds(AcDbObjectIdArray& ids) const override;
    void settleOwned() override;

private:
    friend struct host::Access;
    AcRxClass* m_type;            // made for the class name of the file
    host::OwnedEntities m_owned;  // what follows it up to its SEQEND
    AcDbExtents m_extents;        // empty: unknown
};

// An unknown object that is no entity.
class AcDbZombieObject : public AcDbProxyObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbZombieObject);
    // type from host::OpaqueObjectClass
    explicit AcDbZombieObject(AcRxClass* type) : m_type(type) {}
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcRxClass* m_type;
};
