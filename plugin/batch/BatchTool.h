// One tool of a task: a cutting-tool drawing inside the current drawing.
#pragma once

#include "BatchStatus.h"
#include "EnvelopeExport.h"
#include "EnvelopeMethod.h"
#include "ExportNames.h"

// All operations work on the working database; those that change it take its document's write lock.
class BatchTool {
public:
    BatchTool();

    // Computes the envelope with a copy of the parameters and sets execStatus to done or failed.
    //
    // The axis is level through the centre; of the exact pipeline see CToolAxis. An envelope of the
    // steps that lies off the exact one is told on the command line.
    //
    // drawing  envelopes among sourceIds are erased and leave the list; the tool's former envelope
    //          is erased; the new one is drawn and highlighted. A locked envelope layer is unlocked
    //          for that, and locked again.
    void computeEnvelope(const CEncircleCalInfo& params,
                         EnvelopePipeline pPipeline = &CEncircleLine::GetEncircleLine3);

    // Revolves the envelope and writes it as SAT.
    //
    // strFolder  receives NAME.sat; empty: the user is asked for the file
    // pNames     names of the whole export, which keep two tools of one number apart and turn the
    //            number into a file name; null: the number as it is
    // status     exportStatus becomes done, or failed when no solid results, the file cannot be
    //            written or the solid stays in the drawing; it stays as it is while there is no
    //            envelope yet and when the user cancels
    // drawing    entities on the scratch layer of solids are erased
    E_ExportResult exportSolid(const CString& strFolder, CExportNames* pNames = nullptr);

    // The envelope was computed and is still in the drawing: neither undone nor erased by hand.
    bool hasEnvelope() const;

    // Highlights or not; the drawing itself is not changed. Entities that are gone are skipped.
    void highlightSource(bool bOn) const;
    void highlightEnvelope(bool bOn) const;

    // Erases the envelope; envelopeId becomes null and execStatus not started, exportStatus stays.
    // An envelope that cannot be erased stays the tool's, and that is told.
    void deleteEnvelope();

    CString name;        // tool number, and the exported file's base name
    AcGePoint3d centre;  // its y is the height of the rotation axis
    AcDbObjectIdArray sourceIds;
    AcDbObjectId envelopeId;  // null while there is none
    BatchStatus execStatus = kBatchNotStarted;
    BatchStatus exportStatus = kBatchNotStarted;

    // Why the last computation or export failed, for the user; empty when it did not. Not stored.
    CString reason;

    // Tells tools apart while a run pumps messages and the list may change; not stored.
    Adesk::UInt64 serial;

private:
    void DropEnvelopesFromSource();
    void EraseFormerEnvelope();
    void Compute(const CEncircleCalInfo& params, EnvelopePipeline pPipeline);
};
