// Layouts: model space and the paper sheets.
#pragma once

#include <string>

#include "dbmain.h"

// A name and a tab for model space or a sheet. Paper sizes and plot settings stay in the file;
// nothing is plotted here.
class AcDbLayout : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayout);  // in files: LAYOUT
    AcDbLayout() = default;

    // Group 1; the record's own text, valid while the layout is.
    Acad::ErrorStatus getLayoutName(const ACHAR*& name) const;
    Acad::ErrorStatus setLayoutName(const ACHAR* name);
    // the space that the layout shows
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
