// A report of any number of tools, as pages of files: memory stays that of one page.
#pragma once

#include <string>
#include <vector>

#include "product/report/BatchResult.h"
#include "product/report/Page.h"

namespace product {

// Writes the pages into the folder INDEX-files beside the index, the pictures of each page into a
// folder of its own there. All grows in INDEX-files.part and takes its place at the end, when the
// report of an earlier time goes: until then that stays whole. Tools come drawing by drawing.
class PagedReport {
public:
    // Of tools, and of drawings without any.
    static constexpr size_t kMostOfPage = 500;

    // index  the index's file, UTF-8; missing folders on the way to it are made
    // fails  Failure with Output when a folder cannot be made, or holds what no report has written
    explicit PagedReport(const std::string& index);
    // Removes what was not finished.
    ~PagedReport();
    PagedReport(const PagedReport&) = delete;
    PagedReport& operator=(const PagedReport&) = delete;

    // fails  Failure with Output when a file cannot be written
    void Add(DrawingResult drawing);

    // Writes the last page and the index.
    //
    // fails  as Add()
    void Finish(const std::vector<std::string>& troubles);

private:
    void WritePictures(ToolResult& tool);
    void EndPage(bool isLast);

    std::string m_index, m_folder, m_part;
    BatchResult m_page;  // in the making
    size_t m_toolsOfPage = 0, m_drawings = 0;
    std::vector<PageEntry> m_pages;
};

}  // namespace product
