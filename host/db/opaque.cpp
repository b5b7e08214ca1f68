#include "host/db/opaque.h"

#include <map>
#include <mutex>

#include "dbproxy.h"
#include "host/db/access.h"
#include "host/db/define_class.h"
#include "host/db/entity_tools.h"

HOST_DEFINE_ABSTRACT(AcDbProxyEntity, AcDbEntity, ACRX_T("ACAD_PROXY_ENTITY"))
HOST_DEFINE_ABSTRACT(AcDbProxyObject, AcDbObject, ACRX_T("ACAD_PROXY_OBJECT"))
HOST_DEFINE_COPY(AcDbZombieEntity)
HOST_DEFINE_COPY(AcDbZombieObject)

AcRxClass* AcDbZombieEntity::desc() {
    static AcRxClass* const type =
        newAcRxClass(ACRX_T("AcDbZombieEntity"), AcDbProxyEntity::desc(), nullptr, nullptr);
    return type;
}
AcRxClass* AcDbZombieEntity::isA() const { return m_type; }
void AcDbZombieEntity::rxInit() { AcDbZombieEntity::desc(); }

AcRxClass* AcDbZombieObject::desc() {
    static AcRxClass* const type =
        newAcRxClass(ACRX_T("AcDbZombieObject"), AcDbProxyObject::desc(), nullptr, nullptr);
    return type;
}
AcRxClass* AcDbZombieObject::isA() const { return m_type; }
void AcDbZombieObject::rxInit() { AcDbZombieObject::desc(); }

const ACHAR* AcDbProxyEntity::originalDxfName() const { return isA()->dxfName(); }
const ACHAR* AcDbProxyObject::originalDxfName() const { return isA()->dxfName(); }

Acad::ErrorStatus AcDbZombieEntity::subGetGeomExtents(AcDbExtents& extents) const {
    return host::FinishExtents(m_extents, extents);
}

Acad::ErrorStatus AcDbZombieEntity::subTransformBy(const AcGeMatrix3d&) {
    return Acad::eNotImplementedYet;
}

void AcDbZombieEntity::ownedIds(AcDbObjectIdArray& ids) const { m_owned.AllIds(ids); }
void AcDbZombieEntity::settleOwned() { m_owned.Settle(*this, false); }

namespace host {

namespace {

// Classes by DXF name. The names live as long as the classes that point to them: for ever.
class OpaqueClasses {
public:
    OpaqueClasses(const ACHAR* name, AcRxClass* parent) : m_name(name), m_parent(parent) {}

    AcRxClass* Get(const std::wstring& dxfName) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto entry = m_classes.emplace(dxfName, nullptr).first;
        if (entry->second == nullptr)
            entry->second = newAcRxClass(m_name, m_parent, nullptr, entry->first.c_str());
        return entry->second;
    }

private:
    const ACHAR* m_name;
    AcRxClass* m_parent;
    std::mutex m_mutex;
    std::map<std::wstring, AcRxClass*> m_classes;
};

using Desc = AcRxClass* (*)();
// Where several classes share a DXF name, the first one is the answer.
constexpr Desc kKnownClasses[] = {AcDbLine::desc,
                                  AcDbArc::desc,
                                  AcDbCircle::desc,
                                  AcDbEllipse::desc,
                                  AcDbPolyline::desc,
                                  AcDb2dPolyline::desc,
                                  AcDb3dPolyline::desc,
                                  AcDb2dVertex::desc,
                                  AcDb3dPolylineVertex::desc,
                                  AcDbSequenceEnd::desc,
                                  AcDbSpline::desc,
                                  AcDbRay::desc,
                                  AcDbXline::desc,
                                  AcDbPoint::desc,
                                  AcDbText::desc,
                                  AcDbMText::desc,
                                  AcDbAttribute::desc,
                                  AcDbAttributeDefinition::desc,
                                  AcDbBlockReference::desc,
                                  AcDbMInsertBlock::desc,
                                  AcDbSolid::desc,
                                  AcDbTrace::desc,
                                  AcDbFace::desc,
                                  AcDbViewport::desc,
                                  AcDbHatch::desc,
                                  AcDbLeader::desc,
                                  AcDbDimension::desc,
                                  AcDbRotatedDimension::desc,
                                  AcDbAlignedDimension::desc,
                                  AcDb2LineAngularDimension::desc,
                                  AcDb3PointAngularDimension::desc,
                                  AcDbRadialDimension::desc,
                                  AcDbDiametricDimension::desc,
                                  AcDbOrdinateDimension::desc,
                                  AcDbArcDimension::desc,
                                  AcDbRegion::desc,
                                  AcDb3dSolid::desc,
                                  AcDbBody::desc,
                                  AcDbSurface::desc,
                                  AcDbRasterImage::desc,
                                  AcDbWipeout::desc,
                                  AcDbDictionary::desc,
                                  AcDbXrecord::desc,
                                  AcDbGroup::desc,
                                  AcDbLayout::desc,
                                  AcDbLayerTableRecord::desc,
                                  AcDbLinetypeTableRecord::desc,
                                  AcDbTextStyleTableRecord::desc,
                                  AcDbRegAppTableRecord::desc,
                                  AcDbDimStyleTableRecord::desc,
                                  AcDbUCSTableRecord::desc,
                                  AcDbViewTableRecord::desc,
                                  AcDbViewportTableRecord::desc,
                                  AcDbBlockTableRecord::desc};

}  // namespace

AcRxClass* OpaqueEntityClass(const std::wstring& dxfName) {
    static OpaqueClasses* const classes =
        new OpaqueClasses(ACRX_T("AcDbZombieEntity"), AcDbZombieEntity::desc());
    return classes->Get(dxfName);
}

AcRxClass* OpaqueObjectClass(const std::wstring& dxfName) {
    static OpaqueClasses* const classes =
        new OpaqueClasses(ACRX_T("AcDbZombieObject"), AcDbZombieObject::desc());
    return classes->Get(dxfName);
}

AcRxClass* ClassByDxfName(const std::wstring& dxfName) {
    static const std::map<std::wstring, AcRxClass*>* const byName = [] {
        auto* const made = new std::map<std::wstring, AcRxClass*>;
        for (const Desc desc : kKnownClasses) made->emplace(desc()->dxfName(), desc());
        return made;
    }();
    const auto found = byName->find(dxfName);
    return found == byName->end() ? nullptr : found->second;
}

}  // namespace host
