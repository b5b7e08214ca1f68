// One tool of a batch: envelope, files, figures, findings and pictures.
#pragma once

#include <string>

#include "EnvelopeExport.h"
#include "product/tool/EnvelopeRun.h"
#include "apps/qzenvelope/Options.h"
#include "product/picture/PictureBuilder.h"
#include "product/tool/SolidRun.h"
#include "product/tool/ToolResult.h"
#include "plugin/batch/BatchTask.h"

namespace app {

class ToolRun {
public:
    // database  the working one
    // pictures  null: no pictures and no checks, which are for the page
    ToolRun(AcDbDatabase& database, const BatchOptions& options, PictureBuilder* pictures)
        : m_database(database), m_options(options), m_pictures(pictures) {}

    // Computes the tool with the task's parameters and writes its files into the output folder.
    //
    // tool    its statuses, envelope and sources change as by BatchTool's operations
    // file    name of its files, without folder and extension
    // result  filled; name, task and notDisplayed's finding are the caller's
    // fails   never: what goes wrong is told in the result
    void Run(BatchTool& tool, const CEncircleCalInfo& parameters, const std::string& file,
             ToolResult& result);

private:
    void Compute(BatchTool& tool, const CEncircleCalInfo& parameters, ToolResult& result);
    void Export(BatchTool& tool, const std::string& file, ToolResult& result);
    void WriteMoreFiles(const std::string& file, const SolidRun& solid, ToolResult& result);
    void Check(const BatchTool& tool, const CEncircleCalInfo& parameters, ToolResult& result);
    void Draw(const BatchTool& tool, ToolResult& result);

    AcDbDatabase& m_database;
    const BatchOptions& m_options;
    PictureBuilder* m_pictures;
    CExportRun m_exports;  // nobody else touches the drawing meanwhile
    // Of the tool at hand.
    CEncircleTrace m_trace;
    Envelope m_envelope;
    SolidRun m_solid;
};

}  // namespace app
