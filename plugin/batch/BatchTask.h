// A task: tools that are computed with one set of parameters.
#pragma once

#include <vector>

#include "BatchTool.h"

class BatchTask {
public:
    BatchTask();

    // Sets both statuses from those of the tools.
    void rollUpStatus();

    // Computes, or exports, the tools in order, with the progress display. The task's status
    // becomes done, or failed as soon as one tool fails.
    //
    // The display pumps messages, so the list may change meanwhile: what is removed is left out,
    // and the run ends when the task or the drawing is gone, or another drawing became current.
    void run();
    void exportAll(const CString& strFolder);

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
