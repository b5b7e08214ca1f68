// A drawing file in memory.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "arxHeaders.h"

namespace product {

// Writes a database that was made or read as a drawing file, as a whole or not at all.
//
// result  what the file's version could not hold, one sentence each
// fails   Failure with Output; the old file is unchanged
std::vector<std::string> WriteDrawing(const AcDbDatabase& database, const std::string& path);

class Drawing {
public:
    // Reads the file and makes its database the working one.
    // fails  Failure with Input: not there, not readable, no drawing; the text names file and line
    explicit Drawing(const std::string& path);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    AcDbDatabase& Database() const { return *m_database; }
    const std::string& Version() const { return m_version; }    // "AC1032"
    const std::string& CodePage() const { return m_codePage; }  // "ANSI_936"; of the texts
    bool IsBinary() const { return m_binary; }
    // Faults that were tolerated, one sentence each with the line.
    const std::vector<std::string>& Notes() const { return m_notes; }

    // Writes in the version and form that was read; the file is replaced as a whole or not at all.
    // fails  Failure with Output; the old file is unchanged
    void Write(const std::string& path);

private:
    std::unique_ptr<AcDbDatabase> m_database;
    std::string m_path, m_version, m_codePage;
    bool m_binary = false;
    std::vector<std::string> m_notes;
};

}  // namespace product
