#include "host/dxf/structure.h"

#include <set>

namespace host::dxf {

namespace {

class StructureFinder {
public:
    StructureFinder(LoadedDrawing& drawing, Report& report)
        : drawing_(drawing), source_(drawing.source()), report_(report) {}

    void FindSections() {
        bool open = false;
        for (std::size_t i = 0; i < source_.records.size(); ++i) {
            const std::uint16_t type = source_.records[i].type;
            if (type == kSection || type == kEof) {
                if (open) Close(drawing_.sections, i, false, "a section has no ENDSEC");
                open = false;
            }
            if (type == kSection) {
                drawing_.sections.push_back({std::string(source_.Name(i)), i, i, true});
                CheckName(i);
                open = true;
            } else if (type == kEndsec) {
                if (open)
                    drawing_.sections.back().end = i;
                else
                    Note("ENDSEC without a section", i);
                open = false;
            } else if (!open && type != kEof) {
                Note("an object outside the sections, kept as it is", i);
            }
        }
        if (open)
            Close(drawing_.sections, source_.records.size(), false, "a section has no ENDSEC");
    }

    void FindTables(const LoadedDrawing::Span& section) {
        bool open = false;
        for (std::size_t i = section.begin + 1; i < section.end; ++i) {
            const std::uint16_t type = source_.records[i].type;
            if (type == kTable) {
                if (open) Close(drawing_.tables, i, false, "a table has no ENDTAB");
                drawing_.tables.push_back({std::string(source_.Name(i)), i, i, true});
                open = true;
            } else if (type == kEndtab) {
                if (open) drawing_.tables.back().end = i;
                open = false;
            } else if (!open) {
                Note("a record outside the tables, kept as it is", i);
            }
        }
        if (open) Close(drawing_.tables, section.end, false, "a table has no ENDTAB");
    }

    void FindBlocks(const LoadedDrawing::Span& section) {
        bool open = false;
        for (std::size_t i = section.begin + 1; i < section.end; ++i) {
            const std::uint16_t type = source_.records[i].type;
            if (type == kBlock) {
                if (open) CloseBlock(i, false);
                drawing_.blocks.push_back({{std::string(source_.Name(i)), i, i, true}, nullptr});
                open = true;
            } else if (type == kEndblk) {
                if (open) CloseBlock(i, true);
                open = false;
            } else if (!open) {
                Note("an entity outside the blocks, kept as it is", i);
            }
        }
        if (open) CloseBlock(section.end, false);
    }

private:
    void Note(const std::string& kind, std::size_t record) {
        report_.Add(kind, report_.WantsPlace(kind) ? source_.Place(source_.records[record].begin) +
                                                         ": " + source_.Type(record)
                                                   : std::string());
    }

    void CheckName(std::size_t record) {
        static const std::set<std::string, std::less<>> kKnown = {
            "HEADER",   "CLASSES", "TABLES",   "BLOCKS",
            "ENTITIES", "OBJECTS", "ACDSDATA", "THUMBNAILIMAGE"};
        const std::string_view name = source_.Name(record);
        if (kKnown.count(name) == 0)
            report_.Add("unknown section, kept as it is",
                        source_.Place(source_.records[record].begin) + ": " + std::string(name));
    }

    void Close(std::vector<LoadedDrawing::Span>& spans, std::size_t end, bool closed,
               const char* kind) {
        spans.back().end = end;
        spans.back().closed = closed;
        Note(kind, spans.back().begin);
    }

    void CloseBlock(std::size_t end, bool closed) {
        LoadedDrawing::Span& span = drawing_.blocks.back().span;
        span.end = end;
        span.closed = closed;
        if (!closed) Note("a block has no ENDBLK", span.begin);
    }

    LoadedDrawing& drawing_;
    const Source& source_;
    Report& report_;
};

}  // namespace

void FindStructure(LoadedDrawing& drawing, Report& report) {
    StructureFinder finder(drawing, report);
    finder.FindSections();
    for (const LoadedDrawing::Span& section : drawing.sections) {
        if (section.name == "TABLES") finder.FindTables(section);
        if (section.name == "BLOCKS") finder.FindBlocks(section);
    }
}

}  // namespace host::dxf
