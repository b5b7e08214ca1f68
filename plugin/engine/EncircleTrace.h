// What one run of the engine did, for reports. The engine writes into the trace that a
// CEncircleTraceScope has installed; without one nothing is recorded and nothing is spent.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <afxwin.h>

#include "RemoveLineDir.h"
#include "arxHeaders.h"

class AFX_EXT_CLASS CEncircleTrace {
public:
    // Why something takes no part.
    enum E_LeftOut {
        E_LeftOut_Unopenable,  // erased, or not an entity
        E_LeftOut_Layer,       // on the dimension layer; m_strWhat is the layer
        E_LeftOut_Locked,      // on a locked layer; m_strWhat is the layer
        E_LeftOut_Type,        // no part of an outline; m_strWhat is the class
        E_LeftOut_Linetype,    // dashed or centre line; m_strWhat is the line type
        E_LeftOut_Duplicate,   // a polyline drawn twice; m_strWhat is the class
        E_LeftOut_Explode,     // a block that cannot be exploded; m_strWhat is the block's class
        E_LeftOut_NotFinite,   // a coordinate is not a number; m_strWhat is the class
        E_LeftOut_Count
    };
    struct SLeftOut {
        E_LeftOut m_reason;              // why
        CString m_strWhat;               // what: see the reasons
        int m_nCount = 0;                // how often
        std::vector<CString> m_handles;  // the first few picked entities concerned
    };
    // A straight bridge between two neighbours of a chain that do not meet.
    struct SGap {
        E_RemoveLine_Dir m_side;  // the side whose chain it belongs to
        AcGePoint3d m_from;       // its ends, WCS
        AcGePoint3d m_to;
        double m_dLength;  // drawing units
    };

    // The installed trace; null when nobody listens.
    static CEncircleTrace* Current() { return s_pCurrent; }

    // Notes how many segments a pass has left. A name that comes twice is overwritten.
    static void Count(const char* pName, size_t nCount) {
        if (s_pCurrent != nullptr) {
            s_pCurrent->SetCount(pName, nCount);
        }
    }
    // Notes a bridge.
    static void Gap(E_RemoveLine_Dir side, const AcGePoint3d& from, const AcGePoint3d& to) {
        if (s_pCurrent != nullptr) {
            s_pCurrent->m_gaps.push_back({side, from, to, from.distanceTo(to)});
        }
    }

    // What takes no part, named by its class; the second form names it by something else.
    static void LeftOut(E_LeftOut reason, const AcDbObjectId& id) {
        if (s_pCurrent != nullptr) {
            s_pCurrent->AddLeftOut(reason, GetTypeName(id), id);
        }
    }
    static void LeftOut(E_LeftOut reason, const CString& strWhat, const AcDbObjectId& id) {
        if (s_pCurrent != nullptr) {
            s_pCurrent->AddLeftOut(reason, strWhat, id);
        }
    }
    static void Note(const ACHAR* pText, const AcDbObjectId& id) {
        if (s_pCurrent != nullptr) {
            s_pCurrent->AddNote(pText, id);
        }
    }
    // The made object came from source.
    static void Made(const AcDbObjectId& made, const AcDbObjectId& source) {
        if (s_pCurrent != nullptr) {
            s_pCurrent->SetSource(made, source);
        }
    }

    void SetCount(const char* pName, size_t nCount);
    // The object is named by the picked entity that it came from.
    void AddLeftOut(E_LeftOut reason, const CString& strWhat, const AcDbObjectId& id);
    void AddNote(const CString& strText, const AcDbObjectId& id);
    // From now on the made object stands for the picked one that source stands for.
    void SetSource(const AcDbObjectId& made, const AcDbObjectId& source);

    // Short ASCII name of a reason, as reports print it.
    static const char* GetReasonName(E_LeftOut reason);

    std::vector<std::pair<std::string, size_t>> m_counts;  // in the order of the passes
    std::vector<SLeftOut> m_leftOut;
    std::vector<SGap> m_gaps;
    std::vector<CString> m_notes;  // limits that were reached, each with the entity's handle

private:
    friend class CEncircleTraceScope;
    static CString GetTypeName(const AcDbObjectId& id);
    AcDbObjectId GetSource(const AcDbObjectId& id) const;

    std::map<AcDbObjectId, AcDbObjectId> m_sources;
    static CEncircleTrace* s_pCurrent;
};

// Installs a trace for its own life. Scopes nest; the innermost receives.
class AFX_EXT_CLASS CEncircleTraceScope {
public:
    explicit CEncircleTraceScope(CEncircleTrace& trace);
    ~CEncircleTraceScope();
    CEncircleTraceScope(const CEncircleTraceScope&) = delete;
    CEncircleTraceScope& operator=(const CEncircleTraceScope&) = delete;

private:
    CEncircleTrace* m_pFormer;
};
