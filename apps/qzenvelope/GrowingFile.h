// A file that is written piece by piece and appears as a whole.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace app {

// Grows as PATH.part and takes its place when it is finished; otherwise the old file stays and
// nothing is left beside it. For what is too long to be held in memory: everything else is written
// by host/sys/file_io.h.
class GrowingFile {
public:
    // path  empty: nothing is written
    explicit GrowingFile(const std::string& path) : m_path(path), m_part(path + ".part") {
        if (!m_path.empty()) m_file.open(m_part, std::ios::binary | std::ios::trunc);
    }
    ~GrowingFile() {
        std::error_code error;
        if (!m_path.empty()) std::filesystem::remove(m_part, error);
    }
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;

    bool IsWanted() const { return !m_path.empty(); }
    // False when it could not be begun, or something could not be written.
    bool IsGood() const { return m_file.good(); }
    void Add(const std::string& text) {
        if (IsWanted()) m_file << text;
    }

    // False when something could not be written, with the system's words as far as there are any.
    bool Finish(std::string& reason) {
        if (!IsWanted()) return true;
        m_file.close();
        std::error_code error;
        if (m_file) std::filesystem::rename(m_part, m_path, error);
        if (error) reason = error.message();
        return m_file && !error;
    }

private:
    std::string m_path, m_part;
    std::ofstream m_file;
};

}  // namespace app
