// One tool of a task: a cutting-tool drawing inside the current drawing.
#pragma once

#include "BatchStatus.h"
#include "EncircleLine.h"

// One of the engine's pipelines.
using EnvelopePipeline = void (CEncircleLine::*)(const AcDbObjectIdArray& ids, AcDbObjectId& outId);

// All operations work on the working database; those that change it take its document's write lock.
class BatchTool {
public:
    BatchTool();

    // Computes the envelope with a copy of the parameters and sets execStatus to done or failed.
    //
    // drawing  envelopes among sourceIds are erased and leave the list; the tool's former envelope
    //          is erased; the new one is drawn and highlighted
    void computeEnvelope(const CEncircleCalInfo& params,
                         EnvelopePipeline pPipeline = &CEncircleLine::GetEncircleLine3);

    // Revolves the envelope and writes it as SAT.
    //
    // strFolder  receives NAME.sat; empty: the user is asked for the file
    // status     exportStatus becomes done, or failed when no solid results or the file cannot be
    //            written (a name that cannot be a file name among the reasons); it stays as it is
    //            without an envelope and when the user cancels
    // drawing    entities on the scratch layer of solids are erased
    void exportSolid(const CString& strFolder);

    // Highlights or not; the drawing itself is not changed. Entities that are gone are skipped.
    void highlightSource(bool bOn) const;
    void highlightEnvelope(bool bOn) const;

    // Erases the envelope; envelopeId becomes null and execStatus not started, exportStatus stays.
    void deleteEnvelope();

    CString name;        // tool number, and the exported file's base name
    AcGePoint3d centre;  // its y is the height of the rotation axis
    AcDbObjectIdArray sourceIds;
    AcDbObjectId envelopeId;  // null while there is none
    BatchStatus execStatus = kBatchNotStarted;
    BatchStatus exportStatus = kBatchNotStarted;

    // Tells tools apart while a run pumps messages and the list may change; not stored.
    Adesk::UInt64 serial;

private:
    void DropEnvelopesFromSource();
    void EraseFormerEnvelope();
};
