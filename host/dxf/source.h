// A drawing file as it was read: its bytes, and where its tags and records lie.
//
//   tag     a group code and its value; two lines of a text file
//   record  the tags from one group 0 to the next: a section mark, a table entry, an entity, an
//   object prefix  what stands before the first record: comments, the mark of a binary file
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/sys/file_io.h"
#include "host/dxf/group_code.h"
#include "host/dxf/text_codec.h"

namespace host::dxf {

enum class Form : std::uint8_t {
    kText,         // lines; every version
    kBinaryShort,  // group codes of one byte, 255 leads in two more: up to R12
    kBinaryWide    // group codes of two bytes: R13 and later
};

struct Tag {  // points into the file's bytes
    int code = 0;
    std::string_view
        value;  // text: the line without its end; binary: string, number's bytes or chunk
    std::size_t begin = 0;  // the whole tag, code and value, in the file
    std::size_t end = 0;
};

// What tells one text file's layout from another's; new tags follow it.
struct TextLayout {  // of text files alone
    std::string lineEnd = "\n";
    bool padded = true;  // codes right-aligned in three columns, integers in six or nine
};

// Version numbers of $ACADVER that matter for the layout of records.
constexpr int kVersionR10 = 1006;
constexpr int kVersionR12 = 1009;
constexpr int kVersionR13 = 1012;
constexpr int kVersionR2000 = 1015;
constexpr int kVersionR2004 = 1018;
constexpr int kVersionR2007 = 1021;
constexpr int kVersionR2010 = 1024;
constexpr int kVersionR2013 = 1027;
constexpr int kVersionR2018 = 1032;

// Facts about a file, for those who show them.
struct FileInfo {
    int version = kVersionR12;  // 1032 for AC1032; R12 when the file does not say
    bool versionStated = false;
    Form form = Form::kText;
    std::string codePage;  // $DWGCODEPAGE as it stands, may be empty
    bool utf8 = false;     // strings are read and written as UTF-8
};

// Numbers of the record types that the reader itself looks for; Source::types begins with their
// names.
enum TypeNumber : std::uint16_t {
    kSection,
    kEndsec,
    kEof,
    kTable,
    kEndtab,
    kBlock,
    kEndblk,
    kPolyline,
    kVertex,
    kSeqend,
    kInsert,
    kAttrib,
    kDimension,
    kDimstyle
};

// One file, not changed after it was scanned. Tags of a record are read on demand; the scan has
// made sure that they can be.
class Source {  // shared by all who read
public:
    // What stands where a record begins, noted by the scan so that building needs no second look.
    struct Record {
        std::size_t begin = 0;
        std::uint64_t handle = 0;                        // group 5 or 105, 0 when there is none
        std::uint64_t owner = 0;                         // group 330 before the first subclass mark
        std::uint32_t layer = 0, layerLength = 0;        // group 8, from begin
        std::uint32_t linetype = 0, linetypeLength = 0;  // group 6, from begin
        std::uint32_t name = 0, nameLength = 0;          // group 2, from begin
        std::uint16_t type = 0;                          // index into types
        bool paperSpace = false;                         // group 67
    };

    FileBytes bytes;                   // as they are on the disk
    FileInfo info;                     // version, form, code page
    TextLayout layout;                 // of a text file
    std::unique_ptr<TextCodec> codec;  // from and to the code page
    std::vector<Record> records;       // in the order of the file
    // Values of group 0, each once; those of TypeNumber first, whether the file has them or not.
    std::vector<std::string> types = {"SECTION", "ENDSEC", "EOF",       "TABLE",   "ENDTAB",
                                      "BLOCK",   "ENDBLK", "POLYLINE",  "VERTEX",  "SEQEND",
                                      "INSERT",  "ATTRIB", "DIMENSION", "DIMSTYLE"};
    std::size_t end = 0;  // behind the last record; what follows is kept as it is

    std::string_view View(std::size_t begin, std::size_t stop) const {  // bytes, as they stand
        return bytes.View().substr(begin, stop - begin);
    }
    std::size_t RecordEnd(std::size_t record) const {  // where the next one begins
        return record + 1 < records.size() ? records[record + 1].begin : end;
    }
    const std::string& Type(std::size_t record) const { return types[records[record].type]; }
    bool Is(std::size_t record, TypeNumber type) const { return records[record].type == type; }
    // Undecoded bytes of the groups that the scan noted; empty when there was none.
    std::string_view Name(std::size_t record) const;
    std::string_view Layer(std::size_t record) const;
    std::string_view Linetype(std::size_t record) const;

    // Values of a tag in either form; 0 or empty where the code holds another kind.
    double Real(const Tag& tag) const;
    std::int64_t Int(const Tag& tag) const;
    std::uint64_t Handle(const Tag& tag) const;
    std::wstring Text(const Tag& tag) const { return codec->Decode(tag.value); }
    std::string Chunk(const Tag& tag) const;

    // The line (from 1) of a byte of a text file. O(offset).
    std::size_t LineOf(std::size_t offset) const;
    // "line 12" or "byte 345", as the form has it.
    std::string Place(std::size_t offset) const;
};

// Walks the tags of a scanned record: TagWalker w(source, record); while (w.Next(tag)) ...
class TagWalker {  // in either form
public:
    TagWalker(const Source& source, std::size_t record)
        : TagWalker(source, source.records[record].begin, source.RecordEnd(record)) {}
    TagWalker(const Source& source, std::size_t begin, std::size_t stop)
        : source_(source), position_(begin), stop_(stop) {}
    bool Next(Tag& tag);

private:
    const Source& source_;
    std::size_t position_, stop_;
};

}  // namespace host::dxf
