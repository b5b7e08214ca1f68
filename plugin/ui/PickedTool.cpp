#include "StdAfx.h"
#include "PickedTool.h"

#include "EntityBox.h"
#include "ToolFrame.h"
#include "ToolNumber.h"

namespace {

// Number of a tool when the user answers with Enter alone.
constexpr const ACHAR* kFirstNumber = _T("0001");

// A selection set, freed on every path.
class CSelectionSet {
public:
    CSelectionSet(const ACHAR* pMode, const void* pArgument, const resbuf* pFilter) {
        m_bMade = acedSSGet(pMode, pArgument, nullptr, pFilter, m_name) == RTNORM;
    }
    ~CSelectionSet() {
        if (m_bMade) {
            acedSSFree(m_name);
        }
    }
    CSelectionSet(const CSelectionSet&) = delete;
    CSelectionSet& operator=(const CSelectionSet&) = delete;

    AcDbObjectIdArray GetIds() const {
        AcDbObjectIdArray ids;
        Adesk::Int32 nCount = 0;
        if (!m_bMade || acedSSLength(m_name, &nCount) != RTNORM) {
            return ids;
        }
        for (Adesk::Int32 i = 0; i < nCount; ++i) {
            ads_name entity;
            AcDbObjectId id;
            if (acedSSName(m_name, i, entity) == RTNORM &&
                acdbGetObjectId(id, entity) == Acad::eOk) {
                ids.append(id);
            }
        }
        return ids;
    }

private:
    ads_name m_name = {0, 0};
    bool m_bMade = false;
};

// Asks for a tool number; false when the user cancels.
bool AskToolNumber(const CString& strPrevious, CString& strNumber) {
    const CString strDefault = strPrevious.IsEmpty() ? CString() : GetNextToolNumber(strPrevious);
    CString strPrompt(_T("\n未获取到图框中刀具编号，请手动输入"));
    if (strDefault.IsEmpty()) {
        strPrompt += _T(": ");
    } else {
        strPrompt.AppendFormat(_T(" <%s>: "), strDefault.GetString());
    }
    ACHAR answer[256];
    answer[0] = 0;
    if (acedGetString(1, strPrompt, answer) != RTNORM) {
        return false;
    }
    strNumber = answer;
    if (strNumber.IsEmpty()) {
        strNumber = strDefault.IsEmpty() ? CString(kFirstNumber) : strDefault;
    }
    return true;
}

}  // namespace

AcDbObjectIdArray SelectEntities(const ACHAR* pPrompt, const ACHAR* pFilter) {
    const ACHAR* prompts[2] = {pPrompt, pPrompt};
    if (pFilter == nullptr) {
        return CSelectionSet(_T(":$"), prompts, nullptr).GetIds();
    }
    // The filter's text is not the host's to free, so the node stays here.
    CString strFilter(pFilter);
    resbuf filter = {};
    filter.restype = 0;  // the class, by its DXF name
    filter.resval.rstring = strFilter.GetBuffer();
    return CSelectionSet(_T(":$"), prompts, &filter).GetIds();
}

AcDbObjectIdArray SelectAllEntities() { return CSelectionSet(_T("A"), nullptr, nullptr).GetIds(); }

bool PickCentre(const ACHAR* pPrompt, AcGePoint3d& pt) {
    ads_point picked;
    ads_point world;
    if (acedGetPoint(nullptr, pPrompt, picked) != RTNORM || !acdbUcs2Wcs(picked, world, false)) {
        return false;
    }
    pt.set(world[0], world[1], 0.0);
    return true;
}

bool PickTool(const CString& strPrevious, SPickedTool& picked) {
    picked.m_ids = SelectEntities(_T("\n请选择需要计算轮廓的对象，右键结束选择"));
    if (picked.m_ids.isEmpty() ||
        !PickCentre(_T("\n请选择中心点，右键结束选择"), picked.m_centre)) {
        return false;
    }
    CQZRect box = GetEntitiesBox(picked.m_ids);
    box.Extend(AcGePoint3d(picked.m_centre.x, picked.m_centre.y, 0.0));
    picked.m_strNumber = FindToolNumber(CollectToolFrames(), box);
    return !picked.m_strNumber.IsEmpty() || AskToolNumber(strPrevious, picked.m_strNumber);
}
