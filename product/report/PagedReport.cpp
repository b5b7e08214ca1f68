#include "product/report/PagedReport.h"

#include <cstdio>
#include <filesystem>
#include <string_view>

#include "host/sys/file_io.h"
#include "product/base/Failure.h"
#include "product/picture/Picture.h"

namespace product {
namespace {

namespace fs = std::filesystem;

void Write(const std::string& path, const std::string& bytes) {
    host::FileError error;
    if (!host::WriteFileAtomically(path, {std::string_view(bytes)}, error))
        throw Failure(Fault::Output, path + ": the report cannot be written: " + error.reason +
                                         "; choose another place with --report");
}

// An element of a page as a document of its own.
std::string Document(std::string svg) {
    const size_t head = svg.find('>');
    if (svg.rfind("<svg", 0) != 0 || head == std::string::npos) return svg;
    svg.insert(head + 1, std::string("<style>") + SvgStyle() + "</style>");
    svg.insert(4, " xmlns=\"http://www.w3.org/2000/svg\"");
    return svg;
}

}  // namespace

PagedReport::PagedReport(const std::string& index) : m_index(index) {
    const fs::path path(index);
    m_name = path.filename().string();
    m_folder = (path.parent_path() / (path.stem().string() + "-files")).string();
    std::error_code error;
    fs::create_directories(m_folder, error);
    if (!fs::is_directory(m_folder, error))
        throw Failure(Fault::Output, m_folder +
                                         ": the folder of the report cannot be made; choose "
                                         "another place with --report");
}

std::string PagedReport::PageName(size_t number) const {
    char text[40];
    std::snprintf(text, sizeof text, "page-%05zu.html", number);
    return text;
}

void PagedReport::WritePictures(ToolResult& tool) {
    char name[40];
    std::snprintf(name, sizeof name, "tool-%07zu", ++m_pictures);
    if (!tool.svg.empty()) {
        const std::string file = std::string(name) + ".svg";
        Write((fs::path(m_folder) / file).string(), Document(std::move(tool.svg)));
        tool.svg = file;
    }
    if (!tool.png.empty()) {
        const std::string file = std::string(name) + ".png";
        Write((fs::path(m_folder) / file).string(), FromBase64(tool.png));
        tool.png = file;
    }
}

void PagedReport::Add(DrawingResult drawing) {
    ++m_drawings;
    std::vector<ToolResult> tools = std::move(drawing.tools);
    drawing.tools.clear();
    m_page.drawings.push_back(drawing);
    for (ToolResult& tool : tools) {
        if (m_toolsOfPage == kToolsOfPage) {
            EndPage(false);
            // What is told of the drawing was told on the page before.
            drawing.reason.clear();
            drawing.notes.clear();
            m_page.drawings.push_back(drawing);
        }
        WritePictures(tool);
        m_page.drawings.back().tools.push_back(std::move(tool));
        ++m_toolsOfPage;
    }
}

void PagedReport::EndPage(bool isLast) {
    const size_t number = m_pages.size() + 1;
    PagePlace place;
    place.number = number;
    place.index = "../" + m_name;
    if (number > 1) place.before = PageName(number - 1);
    if (!isLast) place.after = PageName(number + 1);
    PageEntry entry;
    entry.file = fs::path(m_folder).filename().string() + "/" + PageName(number);
    entry.tools = m_page.ToolCount();
    entry.failed = m_page.FailedTools();
    entry.warned = m_page.ToolsWithWarnings();
    for (const DrawingResult& drawing : m_page.drawings)
        for (const ToolResult& tool : drawing.tools) {
            if (entry.first.empty()) entry.first = tool.name;
            entry.last = tool.name;
        }
    if (entry.first.empty()) entry.first = "no tool";
    m_page.out = m_folder;
    Write((fs::path(m_folder) / PageName(number)).string(), PageText(m_page, place));
    m_pages.push_back(std::move(entry));
    m_page = BatchResult();
    m_toolsOfPage = 0;
}

void PagedReport::Finish(const std::vector<std::string>& troubles) {
    if (!m_page.drawings.empty()) EndPage(true);
    Write(m_index, IndexText(m_pages, m_drawings, troubles));
}

}  // namespace product
