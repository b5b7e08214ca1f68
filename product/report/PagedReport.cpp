#include "product/report/PagedReport.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "host/sys/file_io.h"
#include "product/base/Failure.h"
#include "product/picture/Picture.h"
#include "product/base/Words.h"

namespace product {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Refuse(const std::string& path, const std::string& why) {
    throw Failure(Fault::Output, path + Tr(": the report cannot be written: ") + why +
                                     Tr("; choose another place with --report"));
}

// Into the folder that nobody looks at yet: no more care is needed.
void Write(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.close();
    if (!file) Refuse(path, Tr("is the disk full?"));
}

// An element of a page as a document of its own.
std::string Document(std::string svg) {
    const size_t head = svg.find('>');
    if (svg.rfind("<svg", 0) != 0 || head == std::string::npos) return svg;
    svg.insert(head + 1, std::string("<style>") + SvgStyle() + "</style>");
    svg.insert(4, " xmlns=\"http://www.w3.org/2000/svg\"");
    return svg;
}

const char* const kPage = "page-";

// Page 7 and its pictures are page-00007.html and the folder page-00007.
std::string PageName(size_t number) {
    char text[40];
    std::snprintf(text, sizeof text, "%s%05zu", kPage, number);
    return text;
}

// A folder that a report may replace: there is none, or an earlier report's.
void RequireOwn(const std::string& folder) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(folder, error))) return;
    bool isOwn = fs::is_directory(fs::symlink_status(folder, error));
    if (isOwn)
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
            isOwn = isOwn && entry.path().filename().string().rfind(kPage, 0) == 0;
    if (!isOwn || error)
        throw Failure(Fault::Output,
                      folder + Tr(": the pages would go there, and it holds what no report "
                                  "has written; choose another place with --report"));
}

}  // namespace

PagedReport::PagedReport(const std::string& index) : m_index(index) {
    const fs::path path(index);
    m_folder = (path.parent_path() / (path.stem().string() + "-files")).string();
    RequireOwn(m_folder);
    RequireOwn(m_folder + ".part");
    m_part = m_folder + ".part";
    std::error_code error;
    fs::remove_all(m_part, error);
    fs::create_directories(m_part, error);
    if (!fs::is_directory(m_part)) Refuse(m_part, error.message());
}

PagedReport::~PagedReport() {
    std::error_code error;
    fs::remove_all(m_part, error);
}

// Each picture becomes a file, and its name as the page sees it takes its place.
void PagedReport::WritePictures(ToolResult& tool) {
    if (tool.svg.empty() && tool.png.empty()) return;
    const std::string folder = PageName(m_pages.size() + 1);
    std::error_code error;
    fs::create_directory(fs::path(m_part) / folder, error);
    char name[40];
    std::snprintf(name, sizeof name, "/%03zu", m_toolsOfPage + 1);
    const auto write = [&](std::string& picture, const char* end, const std::string& bytes) {
        picture = folder + name + end;
        Write((fs::path(m_part) / picture).string(), bytes);
    };
    if (!tool.svg.empty()) write(tool.svg, ".svg", Document(std::move(tool.svg)));
    if (!tool.png.empty()) write(tool.png, ".png", FromBase64(tool.png));
}

void PagedReport::Add(DrawingResult drawing) {
    ++m_drawings;
    if (m_toolsOfPage >= kMostOfPage || m_page.drawings.size() >= kMostOfPage) EndPage(false);
    std::vector<ToolResult> tools = std::move(drawing.tools);
    drawing.tools.clear();
    m_page.drawings.push_back(drawing);
    for (ToolResult& tool : tools) {
        if (m_toolsOfPage == kMostOfPage) {
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
    place.index = "../" + fs::path(m_index).filename().string();
    if (number > 1) place.before = PageName(number - 1) + ".html";
    if (!isLast) place.after = PageName(number + 1) + ".html";
    PageEntry entry;
    entry.file = fs::path(m_folder).filename().string() + "/" + PageName(number) + ".html";
    entry.tools = m_page.ToolCount();
    entry.failed = m_page.FailedTools();
    entry.warned = m_page.ToolsWithWarnings();
    for (const DrawingResult& drawing : m_page.drawings)
        for (const ToolResult& tool : drawing.tools) {
            if (entry.first.empty()) entry.first = tool.name;
            entry.last = tool.name;
        }
    if (entry.first.empty()) entry.first = Tr("no tool");
    m_page.out = m_folder;
    Write((fs::path(m_part) / (PageName(number) + ".html")).string(), PageText(m_page, place));
    m_pages.push_back(std::move(entry));
    m_page = BatchResult();
    m_toolsOfPage = 0;
}

void PagedReport::Finish(const std::vector<std::string>& troubles) {
    if (!m_page.drawings.empty()) EndPage(true);
    std::error_code error;
    fs::remove_all(m_folder, error);
    if (!error) fs::rename(m_part, m_folder, error);
    if (error) Refuse(m_folder, error.message());
    const std::string index = IndexText(m_pages, m_drawings, troubles);
    host::FileError fault;
    if (!host::WriteFileAtomically(m_index, {std::string_view(index)}, fault))
        Refuse(m_index, fault.reason);
}

}  // namespace product
