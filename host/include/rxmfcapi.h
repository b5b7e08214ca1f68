// The host's own windows, as parents of a module's.
#pragma once

#include "host_wintypes.h"

// Only named here: this host makes none.
class CDocument;
class CMDIFrameWnd;
class CView;
class CWinApp;

// Null once the host has taken its windows down.
CMDIFrameWnd* acedGetAcadFrame();
// The window of the drawing, which takes the keys after SetFocus.
CView* acedGetAcadDwgView();
// Shows that the command line waits for a command again, after input that a window asked for. This
// host's command line always does; false without a drawing.
bool acedPostCommandPrompt();
// Always null: this host's documents are no MFC documents.
CDocument* acedGetAcadDoc();
CWinApp* acedGetAcadWinApp();             // the program; never null
HINSTANCE acedGetAcadResourceInstance();  // the host's own resources: none
