// From an envelope to its SAT file: what both dialogs do with a finished envelope.
#pragma once

#include <vector>

#include "ToolFrame.h"

// Scratch layer of the solids that the batch export makes; empty after each export.
constexpr const ACHAR* kSolidLayer = _T("EncircleLine3D");

enum E_ExportResult {
    E_Export_Done,        // the file is written
    E_Export_NoEnvelope,  // there is none, or it is no longer in the drawing
    E_Export_NoSolid,     // the envelope cannot be revolved
    E_Export_NotSaved,    // the solid cannot be written, or the name cannot be a file's
    E_Export_Left,        // the file is written, but the solid cannot be erased from the drawing
    E_Export_Cancelled    // no file was chosen, or the drawing was closed meanwhile
};

// Whether what an export leaves in the drawing is to go.
struct SExportCleanUp {
    bool m_bEnvelope = false;
    bool m_bSolid = true;
};

// Revolves one envelope about the horizontal through the centre and writes the solid to a file that
// the user is asked for; the number of the first frame around the envelope is the name offered.
//
// pParent   window that waits for the choice of the file
// drawing   locked meanwhile, and its current layer unlocked. The solid stays on the current layer
//           unless it is to be cleaned up. The envelope is cleaned up on every path, also when no
//           solid results or no file is chosen.
// failures  receives one line when something fails; none when the user cancels
E_ExportResult ExportEnvelopeSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                                   const SExportCleanUp& cleanUp,
                                   const std::vector<SToolFrame>& frames, CWnd* pParent,
                                   std::vector<CString>& failures);

// Several exports in a row, for its life: the first looks for earlier solids in all of model space,
// each later one only behind what the one before left last, so that its time does not grow with the
// drawing. Only of use while nobody else moves older entities to kSolidLayer.
class CExportRun {
public:
    CExportRun();
    ~CExportRun();
    CExportRun(const CExportRun&) = delete;
    CExportRun& operator=(const CExportRun&) = delete;

private:
    CExportRun* m_pOuter;
};

// The same for one tool of a batch, without asking when a folder is given: to the folder's file of
// that name. The caller holds the document's lock.
//
// drawing   the solid lies on kSolidLayer, which is emptied on every path. The current layer is
//           restored, and the layer locked again when it was.
// cost      the revolving, and opening every entity of model space unless a CExportRun is at work
E_ExportResult ExportToolSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                               const CString& strName, const CString& strFolder);

// Why an export came to that, as a line for the user. Of a solid that cannot be made the envelope
// is looked at again: open, across the axis, or crossing itself. Empty for one that was done or
// cancelled.
CString GetExportReason(E_ExportResult result, const AcDbObjectId& envelopeId, double dAxis);
