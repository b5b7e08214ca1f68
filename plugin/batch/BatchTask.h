// A task: tools that are computed with one set of parameters.
#pragma once

#include <vector>

#include "BatchTool.h"
#include "RunReport.h"

class BatchTask {
public:
    BatchTask();

    // Sets both statuses from those of the tools.
    void rollUpStatus();

    // Computes, or exports, the tools in order, with the progress display, as one step of undo.
    // Failures and the counts are told on the command line.
    //
    // status   the task's becomes failed when a tool failed; done when all tools are done; else not
    //          started, as for a run that came to an early end or a task without tools
    //
    // The display pumps messages, so the list may change meanwhile: what is removed is left out,
    // and the run ends when the task or the drawing is gone, or another drawing became current;
    // nothing of another drawing is touched, and tools that it did not come to stay as they were.
    SRunReport run();
    // pNames  as for BatchTool::exportSolid(); null: names of this task's own
    SRunReport exportAll(const CString& strFolder, CExportNames* pNames = nullptr);

    void highlightAllSources(bool bOn) const;
    void highlightAllEnvelopes(bool bOn) const;
    void deleteAllEnvelopes();

    CString name;
    BatchStatus execStatus = kBatchNotStarted;
    BatchStatus exportStatus = kBatchNotStarted;
    std::vector<BatchTool> tools;
    CEncircleCalInfo params;

    // Tells tasks apart during a run; not stored.
    Adesk::UInt64 serial;
};
