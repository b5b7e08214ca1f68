// From an envelope to its SAT file: what both dialogs do with a finished envelope.
#pragma once

#include <vector>

#include "ToolFrame.h"

// Scratch layer of the solids that the batch export makes; empty after each export.
constexpr const ACHAR* kSolidLayer = _T("EncircleLine3D");

enum E_ExportResult {
    E_Export_Done,      // the file is written
    E_Export_NoSolid,   // the envelope cannot be revolved
    E_Export_NotSaved,  // the solid cannot be written, or the name cannot be a file's
    E_Export_Cancelled  // no file was chosen
};

// Whether what an export leaves in the drawing is to go.
struct SExportCleanUp {
    bool m_bEnvelope = false;
    bool m_bSolid = true;
};

// Revolves one envelope about the horizontal through the centre and writes the solid to a file that
// the user is asked for; the number of the first frame around the envelope is the name offered.
//
// drawing   locked meanwhile. The solid stays on the current layer unless it is to be cleaned up.
// The
//           envelope is cleaned up on every path, also when no solid results or no file is chosen.
// failures  receives one line when something fails; none when the user cancels
void ExportEnvelopeSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                         const SExportCleanUp& cleanUp, const std::vector<SToolFrame>& frames,
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
// the tool's name. The caller holds the document's lock.
//
// drawing   the solid lies on kSolidLayer, which is emptied once the file was tried; a cancelled
//           choice leaves the solid there for the next export to clear. The current layer is
//           restored on every path.
// cost      the revolving, and opening every entity of model space unless a CExportRun is at work
E_ExportResult ExportToolSolid(const AcDbObjectId& envelopeId, const AcGePoint3d& centre,
                               const CString& strName, const CString& strFolder);
