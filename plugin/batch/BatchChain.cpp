#include "StdAfx.h"
#include "BatchChain.h"

#include <cstring>

CBatchChainWriter::~CBatchChainWriter() { acutRelRb(m_pHead); }

resbuf* CBatchChainWriter::Append(int nCode) {
    resbuf* const pNode = acutNewRb(nCode);
    if (pNode == nullptr) {
        m_bComplete = false;
        return nullptr;
    }
    // The host need not have cleared the value, and not every code fills all of it.
    std::memset(&pNode->resval, 0, sizeof(pNode->resval));
    if (m_pTail == nullptr) {
        m_pHead = pNode;
    } else {
        m_pTail->rbnext = pNode;
    }
    m_pTail = pNode;
    return pNode;
}

void CBatchChainWriter::AppendText(int nCode, const ACHAR* pText) {
    resbuf* const pNode = Append(nCode);
    if (pNode != nullptr && acutNewString(pText, pNode->resval.rstring) != Acad::eOk) {
        m_bComplete = false;
    }
}

void CBatchChainWriter::Add(E_BatchCode code, Adesk::Int32 nValue) {
    if (resbuf* const pNode = Append(code)) {
        pNode->resval.rlong = nValue;
    }
}

void CBatchChainWriter::AddFlag(bool bValue) {
    if (resbuf* const pNode = Append(E_Code_Flag)) {
        pNode->resval.rint = bValue ? 1 : 0;
    }
}

void CBatchChainWriter::AddReal(double dValue) {
    if (resbuf* const pNode = Append(E_Code_Real)) {
        pNode->resval.rreal = dValue;
    }
}

void CBatchChainWriter::AddPoint(const AcGePoint3d& pt) {
    if (resbuf* const pNode = Append(E_Code_Point)) {
        pNode->resval.rpoint[0] = pt.x;
        pNode->resval.rpoint[1] = pt.y;
        pNode->resval.rpoint[2] = pt.z;
    }
}

void CBatchChainWriter::AddText(const CString& strText) {
    AppendText(E_Code_Text, strText.GetString());
}

void CBatchChainWriter::AddHandle(const AcDbObjectId& id) {
    if (id.isNull()) {
        AppendText(E_Code_Handle, _T("0"));
        return;
    }
    ACHAR text[AcDbHandle::kStrSiz] = {};
    id.handle().getIntoAsciiBuffer(text);
    AppendText(E_Code_Handle, text);
}

const resbuf* CBatchChainReader::Take(E_BatchCode code) {
    if (m_pNode == nullptr || m_pNode->restype != code) {
        m_pNode = nullptr;
        m_bFailed = true;
        return nullptr;
    }
    const resbuf* const pTaken = m_pNode;
    m_pNode = m_pNode->rbnext;
    return pTaken;
}

bool CBatchChainReader::Read(E_BatchCode code, Adesk::Int32& nValue) {
    const resbuf* const pNode = Take(code);
    if (pNode != nullptr) {
        nValue = pNode->resval.rlong;
    }
    return pNode != nullptr;
}

bool CBatchChainReader::ReadFlag(bool& bValue) {
    const resbuf* const pNode = Take(E_Code_Flag);
    if (pNode != nullptr) {
        bValue = (pNode->resval.rint & 0xFF) != 0;
    }
    return pNode != nullptr;
}

bool CBatchChainReader::ReadReal(double& dValue) {
    const resbuf* const pNode = Take(E_Code_Real);
    if (pNode != nullptr) {
        dValue = pNode->resval.rreal;
    }
    return pNode != nullptr;
}

bool CBatchChainReader::ReadPoint(AcGePoint3d& pt) {
    const resbuf* const pNode = Take(E_Code_Point);
    if (pNode != nullptr) {
        pt.set(pNode->resval.rpoint[0], pNode->resval.rpoint[1], pNode->resval.rpoint[2]);
    }
    return pNode != nullptr;
}

bool CBatchChainReader::ReadText(CString& strText) {
    const resbuf* const pNode = Take(E_Code_Text);
    if (pNode != nullptr) {
        strText = pNode->resval.rstring == nullptr ? _T("") : pNode->resval.rstring;
    }
    return pNode != nullptr;
}

bool CBatchChainReader::ReadHandle(AcDbDatabase& database, AcDbObjectId& id) {
    const resbuf* const pNode = Take(E_Code_Handle);
    if (pNode == nullptr) {
        return false;
    }
    id.setNull();
    if (pNode->resval.rstring != nullptr) {
        const AcDbHandle handle(pNode->resval.rstring);
        AcDbObjectId found;
        if (database.getAcDbObjectId(found, false, handle) == Acad::eOk && !found.isErased()) {
            id = found;
        }
    }
    return true;
}
