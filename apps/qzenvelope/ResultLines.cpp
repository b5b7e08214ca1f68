#include "apps/qzenvelope/ResultLines.h"

#include "product/base/Failure.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;

ResultLines::ResultLines(const std::string& path, const product::ResultHead& head) : m_path(path) {
    if (m_path.empty()) return;
    m_file.open(m_path, std::ios::binary | std::ios::trunc);
    m_file << ToLine(head) << std::flush;
    if (!m_file)
        throw product::Failure(product::Fault::Output,
                               m_path + Tr(": the results cannot be written; choose another place "
                                           "with --json-lines"));
}

void ResultLines::Add(const std::string& line) {
    if (!m_path.empty()) m_file << line << std::flush;
}

void ResultLines::Finish() {
    if (m_path.empty()) return;
    m_file.close();
    if (!m_file)
        throw product::Failure(
            product::Fault::Output,
            m_path + Tr(": the results cannot be written to their end; is the disk "
                        "full?"));
}

}  // namespace app
