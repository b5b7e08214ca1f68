#pragma once

// Asks for the folder that exported solids go to; empty when the user cancels.
CString AskExportFolder(CWnd* pParent);
