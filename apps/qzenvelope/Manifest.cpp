#include "apps/qzenvelope/Manifest.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <string_view>

#include "host/sys/file_io.h"

namespace app {

namespace fs = std::filesystem;
using product::DrawingResult;
using product::ResultRecord;
using product::ToolResult;

Manifest::Manifest(const std::string& path) : m_path(path) {
    {
        std::ifstream file(path, std::ios::binary);
        for (std::string line; std::getline(file, line);) {
            try {
                ResultRecord record = product::RecordFromLine(line);
                std::string name = record.drawing.input;
                m_records.insert_or_assign(std::move(name), std::move(record));
            } catch (const std::exception&) {
                continue;  // cut off by the end of a process, or by another version
            }
        }
    }
    m_file.open(path, std::ios::binary | std::ios::app);
    // Whatever was cut off ends here.
    m_file << "\n" << std::flush;
}

const ResultRecord* Manifest::Unchanged(const std::string& input, const std::string& content,
                                        const std::string& options, bool withPictures) const {
    const auto at = m_records.find(input);
    if (at == m_records.end() || content.empty()) return nullptr;
    const ResultRecord& record = at->second;
    const DrawingResult& drawing = record.drawing;
    const bool isGood = drawing.reason.empty() && !drawing.output.empty() &&
                        std::all_of(drawing.tools.begin(), drawing.tools.end(),
                                    [](const ToolResult& tool) { return tool.IsGood(); });
    if (!isGood || record.content != content || record.options != options ||
        (withPictures && !record.hasPictures))
        return nullptr;
    for (const auto& [file, size] : record.written) {
        std::error_code error;
        if (fs::file_size(file, error) != size || error) return nullptr;
    }
    return &record;
}

const ResultRecord* Manifest::RecordOf(const std::string& input) const {
    const auto at = m_records.find(input);
    return at == m_records.end() ? nullptr : &at->second;
}

void Manifest::Add(const ResultRecord& record) {
    m_file << ToLine(record) << std::flush;
    m_records.insert_or_assign(record.drawing.input, record);
}

void Manifest::Finish() {
    std::vector<std::string> lines;
    for (const auto& [input, record] : m_records) {
        std::error_code error;
        if (fs::exists(input, error)) lines.push_back(ToLine(record));
    }
    m_file.close();
    host::FileError error;
    // What stays then is longer, and no less true.
    static_cast<void>(host::WriteFileAtomically(
        m_path, std::vector<std::string_view>(lines.begin(), lines.end()), error));
}

std::vector<std::pair<std::string, std::uintmax_t>> SizesOf(const DrawingResult& drawing) {
    std::vector<std::pair<std::string, std::uintmax_t>> sizes;
    const auto add = [&](const std::string& file) {
        std::error_code error;
        const std::uintmax_t size = fs::file_size(file, error);
        sizes.emplace_back(file, error ? 0 : size);
    };
    if (!drawing.output.empty()) add(drawing.output);
    for (const ToolResult& tool : drawing.tools)
        for (const std::string& file : tool.files) add(file);
    return sizes;
}

}  // namespace app
