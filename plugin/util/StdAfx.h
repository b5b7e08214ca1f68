// First include of every plug-in source: MFC before the SDK, as the SDK's headers expect.
#pragma once

#include <afxwin.h>
#include <afxdialogex.h>
#include <afxcmn.h>
#include <afxdlgs.h>

#include "arxHeaders.h"
