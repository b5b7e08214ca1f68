#include "apps/qzenvelope/Manifest.h"

#include <algorithm>
#include <exception>
#include <filesystem>

#include "apps/qzenvelope/GrowingFile.h"
#include "product/base/Failure.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;

namespace fs = std::filesystem;
using product::DrawingResult;
using product::ResultRecord;
using product::ToolResult;

Manifest::Manifest(const std::string& path) : m_path(path) {
    {
        std::ifstream file(path, std::ios::binary);
        for (std::string line; std::getline(file, line);) {
            const std::streamoff at = m_end;
            m_end += static_cast<std::streamoff>(line.size()) + 1;
            try {
                Keep(product::RecordFromLine(line), at, line.size());
            } catch (const std::exception&) {
                m_hasOld = true;  // cut off by the end of a process, or by another version
            }
        }
    }
    m_file.open(path, std::ios::binary | std::ios::app);
    // Whatever was cut off ends here.
    m_file << "\n" << std::flush;
    std::error_code error;
    m_end = static_cast<std::streamoff>(fs::file_size(path, error));
    if (error) m_file.setstate(std::ios::failbit);
}

void Manifest::Keep(ResultRecord&& record, std::streamoff at, std::size_t size) {
    record.drawing.DropPictures();
    std::string name = record.drawing.input;
    Entry entry{std::move(record), at, size};
    m_hasOld = !m_entries.insert_or_assign(std::move(name), std::move(entry)).second || m_hasOld;
}

const ResultRecord* Manifest::Unchanged(const std::string& input, const std::string& content,
                                        const std::string& options, bool withPictures) const {
    const auto at = m_entries.find(input);
    if (at == m_entries.end() || content.empty()) return nullptr;
    const ResultRecord& record = at->second.record;
    const DrawingResult& drawing = record.drawing;
    const bool isDone =
        drawing.reason.empty() && !drawing.output.empty() &&
        std::all_of(drawing.tools.begin(), drawing.tools.end(),
                    [](const ToolResult& tool) { return !tool.isComputed || tool.isExported; });
    if (!isDone || record.content != content || record.options != options ||
        (withPictures && !record.hasPictures))
        return nullptr;
    for (const auto& [file, size] : record.written) {
        std::error_code error;
        if (fs::file_size(file, error) != size || error) return nullptr;
    }
    return &record;
}

std::string Manifest::LineOf(const std::string& input) const {
    const Entry& entry = m_entries.at(input);
    std::string line(entry.size, '\0');
    std::ifstream file(m_path, std::ios::binary);
    if (!file.seekg(entry.at) || !file.read(line.data(), static_cast<std::streamsize>(line.size())))
        throw product::Failure(
            product::Fault::Output,
            m_path + Tr(": what an earlier batch did cannot be read again; start "
                        "once more, with --force if that does not help"));
    return line + "\n";
}

void Manifest::Add(const ResultRecord& record) {
    const std::string line = ToLine(record);
    m_file << line << std::flush;
    if (!m_file) return;
    ResultRecord kept = record;
    Keep(std::move(kept), m_end, line.size() - 1);
    m_end += static_cast<std::streamoff>(line.size());
}

void Manifest::Finish() {
    const bool isWhole = m_file.good();
    m_file.close();
    for (auto at = m_entries.begin(); at != m_entries.end();) {
        std::error_code error;
        const bool isGone = !fs::exists(at->first, error);
        m_hasOld = m_hasOld || isGone;
        at = isGone ? m_entries.erase(at) : std::next(at);
    }
    // What stays otherwise is longer, and no less true.
    if (!isWhole || !m_hasOld) return;
    GrowingFile file(m_path);
    try {
        for (const auto& [input, entry] : m_entries) file.Add(LineOf(input));
    } catch (const product::Failure&) {
        return;
    }
    std::string ignored;
    static_cast<void>(file.Finish(ignored));
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
