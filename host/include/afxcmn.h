#pragma once

#include "afxwin.h"

class CProgressCtrl;
class CListCtrl;
class CToolTipCtrl;
