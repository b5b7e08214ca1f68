// The single-tool dialog: pick one tool's drawing, compute its envelope, export envelopes as
// solids.
#pragma once

#include <vector>

#include "EncircleTrace.h"
#include "EncircleValues.h"
#include "EnvelopeExport.h"
#include "res/resource.h"

class CRunWatch;

// Modeless; hides itself while the user picks in the drawing. Its values live as long as its
// window.
class CEncircleLineCalDlg : public CDialogEx {
    DECLARE_DYNAMIC(CEncircleLineCalDlg)

public:
    explicit CEncircleLineCalDlg(CWnd* pParent = nullptr);
    enum { IDD = IDD_CAL };

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void PostNcDestroy() override;

    afx_msg LRESULT OnAcadKeepFocus(WPARAM, LPARAM);
    afx_msg void OnByHatch();
    afx_msg void OnSelectTool();
    afx_msg void OnExport();
    DECLARE_MESSAGE_MAP()

private:
    enum E_Algorithm { E_Algorithm_Live, E_Algorithm_Hatch };

    // One computation from the selection to the envelope; hides the dialog meanwhile.
    void RunEnvelope(E_Algorithm algorithm);
    // Esc stops it; the drawing is then as it was. Numbers with which no run may begin are told,
    // and nothing changes.
    void Compute(E_Algorithm algorithm, const AcDbObjectIdArray& ids);
    void RunEngine(E_Algorithm algorithm, CEncircleCalInfo info, const AcDbObjectIdArray& sourceIds,
                   const CRunWatch& watch);
    // One line on what came of it.
    void TellRun(const CEncircleCalInfo& info, const AcDbObjectIdArray& sourceIds,
                 const CEncircleTrace& trace, bool bExact) const;
    // Derives the axis point from the envelope, revolves and exports it; a failure adds a line.
    E_ExportResult ExportOne(const AcDbObjectId& id, const std::vector<SToolFrame>& frames,
                             std::vector<CString>& failures);

    SEncircleValues m_values;
    int m_nDeleteEnvelope = 0;  // check: erase the envelope after the export
    int m_nDeleteSolid = 1;     // check: erase the solid after the export
    AcDbObjectId m_resultId;    // the envelope last produced, or picked for export
    AcGePoint3d m_centre;       // its y is the height of the axis
};
