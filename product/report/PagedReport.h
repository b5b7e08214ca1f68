// A report of any number of tools, as pages of files: memory stays that of one page.
#pragma once

#include <string>
#include <vector>

#include "product/report/BatchResult.h"
#include "product/report/Page.h"

namespace product {

// Writes the pages and their pictures into the folder INDEX-files beside the index, each file as a
// whole or not at all. Tools come drawing by drawing.
class PagedReport {
public:
    static constexpr size_t kToolsOfPage = 500;

    // index  the index's file, UTF-8; its folder exists
    // fails  Failure with Output when the folder cannot be made
    explicit PagedReport(const std::string& index);

    // The folder that pages and pictures lie in.
    const std::string& Folder() const { return m_folder; }

    // fails  Failure with Output when a file cannot be written
    void Add(DrawingResult drawing);

    // Writes the last page and the index.
    void Finish(const std::vector<std::string>& troubles);

private:
    void WritePictures(ToolResult& tool);
    void EndPage(bool isLast);
    std::string PageName(size_t number) const;

    std::string m_index, m_folder, m_name;
    BatchResult m_page;  // in the making
    size_t m_toolsOfPage = 0, m_pictures = 0, m_drawings = 0;
    std::vector<PageEntry> m_pages;
};

}  // namespace product
