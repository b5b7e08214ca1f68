#include "StdAfx.h"

#include "EncircleTrace.h"

#include <algorithm>

namespace {

// More examples than this help nobody to find the entities.
constexpr size_t kMaxHandles = 5;

CString GetHandleText(const AcDbObjectId& id) {
    if (id.isNull()) {
        return _T("0");
    }
    ACHAR text[AcDbHandle::kStrSiz] = {};
    return id.handle().getIntoAsciiBuffer(text, AcDbHandle::kStrSiz) ? CString(text) : CString();
}

}  // namespace

CEncircleTrace* CEncircleTrace::s_pCurrent = nullptr;

void CEncircleTrace::SetCount(const char* pName, size_t nCount) {
    const auto found = std::find_if(m_counts.begin(), m_counts.end(),
                                    [&](const auto& count) { return count.first == pName; });
    if (found != m_counts.end()) {
        found->second = nCount;
    } else {
        m_counts.emplace_back(pName, nCount);
    }
}

void CEncircleTrace::AddLeftOut(E_LeftOut reason, const CString& strWhat, const AcDbObjectId& id) {
    auto entry = std::find_if(m_leftOut.begin(), m_leftOut.end(), [&](const SLeftOut& other) {
        return other.m_reason == reason && other.m_strWhat == strWhat;
    });
    if (entry == m_leftOut.end()) {
        entry = m_leftOut.insert(entry, SLeftOut{reason, strWhat, 0, {}});
    }
    ++entry->m_nCount;
    const CString handle = GetHandleText(GetSource(id));
    std::vector<CString>& handles = entry->m_handles;
    if (handles.size() < kMaxHandles &&
        std::find(handles.begin(), handles.end(), handle) == handles.end()) {
        handles.push_back(handle);
    }
}

void CEncircleTrace::AddNote(const CString& strText, const AcDbObjectId& id) {
    const CString note = strText + _T(" (handle ") + GetHandleText(GetSource(id)) + _T(")");
    if (std::find(m_notes.begin(), m_notes.end(), note) == m_notes.end()) {
        m_notes.push_back(note);
    }
}

void CEncircleTrace::SetSource(const AcDbObjectId& made, const AcDbObjectId& source) {
    m_sources[made] = GetSource(source);
}

CString CEncircleTrace::GetTypeName(const AcDbObjectId& id) {
    const AcRxClass* pClass = id.objectClass();
    return pClass != nullptr ? CString(pClass->name()) : CString();
}

AcDbObjectId CEncircleTrace::GetSource(const AcDbObjectId& id) const {
    const auto found = m_sources.find(id);
    return found == m_sources.end() ? id : found->second;
}

const char* CEncircleTrace::GetReasonName(E_LeftOut reason) {
    static const char* const kNames[E_LeftOut_Count] = {
        "unopenable", "layer", "locked", "type", "linetype", "duplicate", "explode", "not finite"};
    return reason < E_LeftOut_Count ? kNames[reason] : "";
}

CEncircleTraceScope::CEncircleTraceScope(CEncircleTrace& trace)
    : m_pFormer(CEncircleTrace::s_pCurrent) {
    CEncircleTrace::s_pCurrent = &trace;
}

CEncircleTraceScope::~CEncircleTraceScope() { CEncircleTrace::s_pCurrent = m_pFormer; }
