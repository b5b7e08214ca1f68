#include "dbxrecrd.h"

#include "acutads.h"
#include "host/db/database_imp.h"
#include "host/db/define_class.h"
#include "host/db/rb_chain.h"
#include "host/base/host_assert.h"

HOST_DEFINE_CLASS(AcDbXrecord, AcDbObject, ACRX_T("XRECORD"))
HOST_DEFINE_COPY(AcDbXrecord)

AcDbXrecord::AcDbXrecord() = default;
AcDbXrecord::~AcDbXrecord() { acutRelRb(m_chain); }

AcDbXrecord::AcDbXrecord(const AcDbXrecord& other)
    : AcDbObject(other),
      m_chain(host::CopyChain(other.m_chain)),
      m_mergeStyle(other.m_mergeStyle),
      m_xlate(other.m_xlate) {}

AcDbXrecord& AcDbXrecord::operator=(const AcDbXrecord& other) {
    if (this == &other) return *this;
    AcDbObject::operator=(other);
    acutRelRb(m_chain);
    m_chain = host::CopyChain(other.m_chain);
    m_mergeStyle = other.m_mergeStyle;
    m_xlate = other.m_xlate;
    return *this;
}

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** chain, AcDbDatabase*) const {
    if (chain == nullptr) return Acad::eInvalidInput;
    *chain = host::CopyChain(m_chain);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& chain, AcDbDatabase*) {
    for (const resbuf* node = &chain; node != nullptr; node = node->rbnext) {
        if (!host::IsXrecordCode(node->restype)) return Acad::eInvalidResBuf;
        const bool text = host::KindOfCode(node->restype) == host::RbKind::kString;
        if (text && node->resval.rstring == nullptr) return Acad::eInvalidResBuf;
    }
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    if (es != Acad::eOk) return es;
    resbuf* const old = m_chain;
    m_chain = host::CopyChain(&chain);
    acutRelRb(old);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setXlateReferences(bool translate) {
    HOST_SET(m_xlate, translate, host::kDirtyGeometry);
}

void AcDbXrecord::setMergeStyle(AcDb::DuplicateRecordCloning style) {
    const Acad::ErrorStatus es = beginWrite(host::kDirtyGeometry);
    HOST_ASSERT(es == Acad::eOk, "a record was changed that is not open for write");
    m_mergeStyle = style;
}

void AcDbXrecord::translateIds(const AcDbIdMapping& mapping) {
    if (!m_xlate) return;
    for (resbuf* node = m_chain; node != nullptr; node = node->rbnext) {
        if (host::KindOfCode(node->restype) != host::RbKind::kId) continue;
        AcDbObjectId id;
        id.setFromOldId(node->resval.rlname[0]);
        host::Translate(mapping, id);
        node->resval.rlname[0] = id.asOldId();
    }
}

AcDbXrecordIterator::AcDbXrecordIterator(const AcDbXrecord* record) {
    if (record != nullptr && record->rbChain(&m_head) != Acad::eOk) m_head = nullptr;
    m_at = m_head;
}

AcDbXrecordIterator::~AcDbXrecordIterator() { acutRelRb(m_head); }

Acad::ErrorStatus AcDbXrecordIterator::getCurResbuf(resbuf& value, AcDbDatabase*) const {
    if (m_at == nullptr) return Acad::eInvalidIndex;
    value = *m_at;
    value.rbnext = nullptr;
    return Acad::eOk;
}
