// The module's two modeless dialogs: at most one of each.
#pragma once

class CBulkGenEncircleLineDlg;
class CEncircleLineCalDlg;

// Creates the dialog on first use, then centres and shows it.
void ShowCalDialog();
void ShowBulkDialog();

// Called by a dialog whose window is gone. True when it was the module's dialog, which then deletes
// itself; one that could not be made whole is deleted by whoever tried to make it.
bool ForgetCalDialog(const CEncircleLineCalDlg* pDialog);
bool ForgetBulkDialog(const CBulkGenEncircleLineDlg* pDialog);

// Shows a drawing's task list in the batch dialog, if it is open; null: no drawing's.
void RefreshBulkDialog(AcDbDatabase* pDatabase);

// Stores a drawing's task list in it, unless the list is empty and the drawing holds none: drawings
// that never had a task stay as they are. The drawing counts as changed afterwards. Done with every
// change of a list, so that closing the drawing asks; nothing happens for a drawing that is gone.
void StoreTaskList(AcDbDatabase* pDatabase);
