#pragma once

#include "afxwin.h"

class CFileDialog;
class CFolderPickerDialog;
