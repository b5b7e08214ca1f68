#pragma once

#include <set>

#include "StdAfx.h"

// The file names of one export of many tools: no two tools write the same file.
//
// Names differ also when only their case does not, as folders have it. A tool that is named like
// one before it gets a number behind its name, which no tool of the export is called by; what no
// file name may hold becomes '_'. Either is told on the command line, the second one once.
class CExportNames {
public:
    // A tool of the export: its name is not given to another one as name with a number.
    void Expect(const CString& strTool);

    // The name of the file, without folder and extension, of the tool that is exported now.
    CString Take(const CString& strTool);

private:
    std::set<CString> m_expected;  // in lower case, as file names
    std::set<CString> m_taken;
    bool m_bToldOfForbidden = false;
};
