#pragma once

#include "afxwin.h"

class CDialogEx;
