// Xrecords: chains of values.
#pragma once

#include "dbmain.h"

// XRECORD: values of any kind under group codes, for programs.
class AcDbXrecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord);  // in files: XRECORD
    AcDbXrecord();
    ~AcDbXrecord() override;

    // A new chain with the codes, order and types that were set; null for an empty record. The
    // caller frees it by acutRelRb.
    Acad::ErrorStatus rbChain(resbuf** chain, AcDbDatabase* auxDb = nullptr) const;
    // Replaces the content by a copy of the chain. Codes 1..369 except 5 and 105, 390..481, and
    // 1000..1071; others eInvalidResBuf, the old content then stays. eNotOpenForWrite.
    Acad::ErrorStatus setFromRbChain(const resbuf& chain, AcDbDatabase* auxDb = nullptr);

    bool isXlateReferences() const { return m_xlate; }  // identifiers in it move with clones
    Acad::ErrorStatus setXlateReferences(bool translate);
    AcDb::DuplicateRecordCloning mergeStyle() const { return m_mergeStyle; }  // group 280
    void setMergeStyle(AcDb::DuplicateRecordCloning style);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

protected:
    friend struct host::Access;
    void translateIds(const AcDbIdMapping& mapping) override;

private:
    AcDbXrecord(const AcDbXrecord& other);
    AcDbXrecord& operator=(const AcDbXrecord& other);
    resbuf* m_chain = nullptr;  // owned; null when empty
    AcDb::DuplicateRecordCloning m_mergeStyle = AcDb::kDrcIgnore;
    bool m_xlate = true;  // hard and soft references are translated
};

// Visits the values of a record; the nodes stay the record's.
class AcDbXrecordIterator {
public:
    // Copies the chain; the record may close meanwhile.
    explicit AcDbXrecordIterator(const AcDbXrecord* record);
    ~AcDbXrecordIterator();
    AcDbXrecordIterator(const AcDbXrecordIterator&) = delete;
    AcDbXrecordIterator& operator=(const AcDbXrecordIterator&) = delete;
    void start() { m_at = m_head; }
    bool done() const { return m_at == nullptr; }  // behind the last value
    bool next() {
        if (m_at != nullptr) m_at = m_at->rbnext;
        return m_at != nullptr;
    }
    // group code; 0 at the end
    short curRestype() const { return m_at == nullptr ? short(0) : m_at->restype; }
    // The value alone; strings stay the iterator's. eInvalidIndex at the end.
    Acad::ErrorStatus getCurResbuf(resbuf& value, AcDbDatabase* db = nullptr) const;

private:
    resbuf* m_head = nullptr;  // owned
    resbuf* m_at = nullptr;
};
