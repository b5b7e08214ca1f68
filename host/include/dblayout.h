// Layouts: model space and the paper sheets.
#pragma once

#include <string>

#include "dbmain.h"

class AcDbLayout : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayout);  // in files: LAYOUT
    AcDbLayout() = default;

    Acad::ErrorStatus getLayoutName(const ACHAR*& name) const;
    Acad::ErrorStatus setLayoutName(const ACHAR* name);
    AcDbObjectId getBlockTableRecordId() const { return m_blockId; }
    Acad::ErrorStatus setBlockTableRecordId(AcDbObjectId block);
    int getTabOrder() const { return m_tabOrder; }  // group 71; 0 is model space
    Acad::ErrorStatus setTabOrder(int order);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    std::wstring m_name;
    AcDbObjectId m_blockId;
    int m_tabOrder = 0;
};
