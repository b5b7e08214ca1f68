// The chain of typed values in which a task list is stored.
#pragma once

#include "StdAfx.h"

// Codes of the stored values.
enum E_BatchCode {
    E_Code_Text = 1,
    E_Code_Point = 10,
    E_Code_Real = 40,
    E_Code_Status = 90,
    E_Code_Version = 91,
    E_Code_Count = 92,
    E_Code_Flag = 290,
    E_Code_Handle = 1000
};

// Builds a chain; owns it.
class CBatchChainWriter {
public:
    CBatchChainWriter() = default;
    ~CBatchChainWriter();
    CBatchChainWriter(const CBatchChainWriter&) = delete;
    CBatchChainWriter& operator=(const CBatchChainWriter&) = delete;

    void Add(E_BatchCode code, Adesk::Int32 nValue);
    void AddFlag(bool bValue);
    void AddReal(double dValue);
    void AddPoint(const AcGePoint3d& pt);
    void AddText(const CString& strText);
    // Handle text of an object; "0" for null.
    void AddHandle(const AcDbObjectId& id);

    // Null when memory ran out on the way.
    const resbuf* GetChain() const { return m_bComplete ? m_pHead : nullptr; }

private:
    resbuf* Append(int nCode);
    void AppendText(int nCode, const ACHAR* pText);

    resbuf* m_pHead = nullptr;
    resbuf* m_pTail = nullptr;
    bool m_bComplete = true;
};

// Walks a chain. Each read takes one value when it has the expected code; once one has not, this
// and all later reads fail and change nothing.
class CBatchChainReader {
public:
    explicit CBatchChainReader(const resbuf* pChain) : m_pNode(pChain) {}

    // Everything was taken, and as it was expected.
    bool IsAtEnd() const { return m_pNode == nullptr && !m_bFailed; }

    bool Read(E_BatchCode code, Adesk::Int32& nValue);
    bool ReadFlag(bool& bValue);
    bool ReadReal(double& dValue);
    bool ReadPoint(AcGePoint3d& pt);
    bool ReadText(CString& strText);
    // Null for the handle of an object that the database does not have (any more).
    bool ReadHandle(AcDbDatabase& database, AcDbObjectId& id);

private:
    const resbuf* Take(E_BatchCode code);

    const resbuf* m_pNode;
    bool m_bFailed = false;
};
