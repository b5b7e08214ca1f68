// MFC's window classes. The classes are only named here: geometry, database and engine build
// without a window library.
#pragma once

#include "afx.h"

class CWnd;
class CFrameWnd;
class CMDIFrameWnd;
class CView;
class CDocument;
class CWinApp;
class CDialog;
class CDataExchange;
class CDC;
class CFont;
