// First include of every plug-in source: MFC before the SDK, as the SDK's headers expect.
#pragma once

#include <afxwin.h>
#include <afxext.h>
#include <afxdialogex.h>
#include <afxcmn.h>
#include <afxdlgs.h>

#include "arxHeaders.h"

// In headers of their own for sure; whether the one above brings them is not.
#include "acestext.h"
#include "actrans.h"
#include "dbbody.h"
#include "dbgroup.h"
#include "dbregion.h"
#include "dbsol3d.h"
#include "dbsymutl.h"
#include "geassign.h"
#include "rxmfcapi.h"
