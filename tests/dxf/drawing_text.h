// Drawings of tests as text: "0|SECTION|2|ENTITIES|0|LINE|8|0|10|1.0|..." is one line a bar.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "host/dxf/dxf_file.h"

namespace test {

// Bars become line ends.
inline std::string Lines(const std::string& compact, const std::string& lineEnd = "\n") {
    std::string text;
    for (char c : compact) text += c == '|' ? lineEnd : std::string(1, c);
    return text + lineEnd;
}

// "|0|SECTION|2|NAME|...|0|ENDSEC"; content begins with its first group code.
inline std::string Section(const std::string& name, const std::string& content) {
    return "0|SECTION|2|" + name + "|" + content + (content.empty() ? "" : "|") + "0|ENDSEC|";
}

inline std::string Header(const std::string& version, const std::string& more = "") {
    return Section("HEADER", "9|$ACADVER|1|" + version + (more.empty() ? "" : "|" + more));
}

inline std::string Line(const std::string& handle, const std::string& layer = "0",
                        const std::string& more = "") {
    return "0|LINE|" + (handle.empty() ? "" : "5|" + handle + "|") + "8|" + layer + "|" + more +
           (more.empty() ? "" : "|") + "10|1.0|20|2.0|30|0.0|11|3.0|21|4.0|31|0.0";
}

// A database that was read from bytes.
struct Loaded {
    AcDbDatabase db{false, true};
    host::dxf::Report report;
    host::dxf::Result result;

    explicit Loaded(const std::string& bytes) {
        result = host::dxf::ReadBytes(db, bytes, "test.dxf", report);
    }
    // The bytes a save would put into the file.
    std::string Written() {
        std::string out;
        host::dxf::Report notes;
        const host::dxf::Result written = host::dxf::WriteToString(db, out, notes);
        EXPECT_TRUE(written.ok()) << written.message;
        return out;
    }
    AcDbObjectId Id(Adesk::UInt64 handle) {
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, db.getAcDbObjectId(id, false, AcDbHandle(handle)));
        return id;
    }
    std::vector<AcDbObjectId> ModelSpace() {
        std::vector<AcDbObjectId> ids;
        AcDbBlockTable* table = nullptr;
        AcDbBlockTableRecord* space = nullptr;
        EXPECT_EQ(Acad::eOk, db.getBlockTable(table, AcDb::kForRead));
        EXPECT_EQ(Acad::eOk, table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForRead));
        EXPECT_EQ(Acad::eOk, table->close());
        AcDbBlockTableRecordIterator* made = nullptr;
        EXPECT_EQ(Acad::eOk, space->newIterator(made));
        const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
        for (; !it->done(); it->step()) {
            AcDbObjectId id;
            EXPECT_EQ(Acad::eOk, it->getEntityId(id));
            ids.push_back(id);
        }
        EXPECT_EQ(Acad::eOk, space->close());
        return ids;
    }
    std::string Notes() const {
        std::string text;
        for (const std::string& line : report.Lines()) text += line + "\n";
        return text;
    }
};

// The same drawing as a binary file; wide is the form of R13 and later.
inline std::string BinaryOf(const std::string& text, bool wide) {
    std::string out("AutoCAD Binary DXF\r\n\x1a\0", 22);
    std::istringstream in(text);
    const auto number = [&](std::uint64_t bits, int size) {
        for (int i = 0; i < size; ++i) out += static_cast<char>(bits >> (8 * i) & 0xFF);
    };
    for (std::string line, value; std::getline(in, line) && std::getline(in, value);) {
        const int code = std::stoi(line);
        if (wide) {
            number(static_cast<std::uint64_t>(code), 2);
        } else if (code < 255) {
            number(static_cast<std::uint64_t>(code), 1);
        } else {
            number(255, 1);
            number(static_cast<std::uint64_t>(code), 2);
        }
        using host::dxf::ValueKind;
        switch (host::dxf::KindOf(code)) {
            case ValueKind::kReal: {
                const double real = std::stod(value);
                std::uint64_t bits;
                static_assert(sizeof bits == sizeof real);
                std::memcpy(&bits, &real, sizeof bits);
                number(bits, 8);
                break;
            }
            case ValueKind::kInt16:
                number(static_cast<std::uint64_t>(std::stoll(value)), 2);
                break;
            case ValueKind::kInt32:
                number(static_cast<std::uint64_t>(std::stoll(value)), 4);
                break;
            case ValueKind::kInt64:
                number(static_cast<std::uint64_t>(std::stoll(value)), 8);
                break;
            case ValueKind::kBool:
                number(static_cast<std::uint64_t>(std::stoll(value)), 1);
                break;
            case ValueKind::kChunk: {
                const std::string bytes = host::dxf::ChunkFromText(value);
                number(bytes.size(), 1);
                out += bytes;
                break;
            }
            default:
                out += value + '\0';
                break;
        }
    }
    return out;
}

inline std::string FileContent(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The drawings by others and the generated cases, where they are at hand; else empty.
inline std::vector<std::filesystem::path> SharedDrawings() {
    const char* named = std::getenv("QZ_SHARED");
    const std::filesystem::path root = named != nullptr ? named : "../shared";
    std::vector<std::filesystem::path> files;
    for (const char* folder : {"drawings", "cases"}) {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(root / folder, error))
            if (entry.path().extension() == ".dxf") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace test
