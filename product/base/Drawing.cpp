#include "product/base/Drawing.h"

#include "product/base/Failure.h"
#include "host/dwg/drawing_file.h"

namespace product {

Drawing::Drawing(const std::string& path)
    : m_database(std::make_unique<AcDbDatabase>(false, true)) {
    host::dxf::Report report;
    const host::dxf::Result result = host::dwg::ReadFile(*m_database, path, report);
    if (!result.ok()) throw Failure(Fault::Input, result.message);
    m_notes = report.Lines();
    if (const host::dxf::FileInfo* info = host::dxf::InfoOf(*m_database)) {
        m_version = "AC" + std::to_string(info->version);
        m_codePage = info->codePage.empty() ? "not stated" : info->codePage;
        if (info->utf8) m_codePage += ", texts in UTF-8";
        m_binary = info->form != host::dxf::Form::kText;
    }
    acdbHostApplicationServices()->setWorkingDatabase(m_database.get());
}

Drawing::~Drawing() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

void Drawing::Write(const std::string& path) {
    for (const std::string& line : WriteDrawing(*m_database, path)) m_notes.push_back(line);
}

std::vector<std::string> WriteDrawing(const AcDbDatabase& database, const std::string& path) {
    host::dxf::Report report;
    const host::dxf::Result result = host::dwg::WriteFile(database, path, report);
    if (!result.ok()) throw Failure(Fault::Output, result.message);
    return report.Lines();
}

}  // namespace product
