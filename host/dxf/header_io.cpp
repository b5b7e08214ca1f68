#include "host/dxf/header_io.h"

#include <algorithm>
#include <map>

#include "host/db/access.h"
#include "host/db/line_weights.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_writer.h"

namespace host::dxf {

namespace {

// A variable's groups, in order.
using Variables = std::map<std::string, std::vector<Tag>, std::less<>>;

Variables ReadVariables(const Source& source, std::size_t record) {
    Variables variables;
    std::vector<Tag>* current = nullptr;
    TagWalker walker(source, record);
    for (Tag tag; walker.Next(tag);) {
        if (tag.code == 9)
            current = &variables[std::string(Trim(tag.value))];
        else if (current != nullptr)
            current->push_back(tag);
    }
    return variables;
}

class HeaderReader {
public:
    HeaderReader(const LoadedDrawing& drawing, std::size_t record)
        : drawing_(drawing),
          source_(drawing.source()),
          variables_(ReadVariables(source_, record)) {}

    void Real(const char* name, double& value) const {
        if (const Tag* tag = First(name)) value = source_.Real(*tag);
    }
    template <class T>
    void Int(const char* name, T& value) const {
        if (const Tag* tag = First(name)) TakeInt(source_.Int(*tag), value);
    }
    // A number from 0 on; another counts as not stated.
    void Number(const char* name, Adesk::Int16& value, Adesk::Int16 highest) const {
        Adesk::Int16 number = -1;
        Int(name, number);
        if (number >= 0 && number <= highest) value = number;
    }
    void Named(const char* name, Root table, AcDbObjectId& id) const {
        if (const Tag* tag = First(name))
            id = AcDbObjectId(drawing_.names.Find(table, Trim(tag->value), *source_.codec));
    }
    void Handle(const char* name, Adesk::UInt64& value) const {
        if (const Tag* tag = First(name)) value = source_.Handle(*tag);
    }
    template <class Point>
    void PointOf(const char* name, Point& point) const {
        const auto found = variables_.find(name);
        if (found == variables_.end()) return;
        for (const Tag& tag : found->second)
            if (tag.code >= 10 && tag.code < 40 && tag.code % 10 == 0)
                Set(point, tag.code / 10 - 1, source_.Real(tag));
    }

private:
    static void Set(AcGePoint3d& point, int index, double value) {
        (index == 0 ? point.x : index == 1 ? point.y : point.z) = value;
    }
    static void Set(AcGePoint2d& point, int index, double value) {
        if (index < 2) (index == 0 ? point.x : point.y) = value;
    }
    const Tag* First(const char* name) const {
        const auto found = variables_.find(name);
        return found == variables_.end() || found->second.empty() ? nullptr : &found->second[0];
    }

    const LoadedDrawing& drawing_;
    const Source& source_;
    Variables variables_;
};

constexpr Adesk::Int16 kHighestUnit = 24;  // the parsec and feet by surveyors are the last ones

void ReadFrom(const HeaderReader& reader, HeaderVars& header) {
    reader.Named("$CLAYER", Root::kLayerTable, header.clayer);
    reader.Named("$CELTYPE", Root::kLinetypeTable, header.celtype);
    reader.Named("$TEXTSTYLE", Root::kTextStyleTable, header.textstyle);
    reader.Named("$DIMSTYLE", Root::kDimStyleTable, header.dimstyle);
    std::int64_t color = AcCmEntityColor::kACIbyLayer;
    reader.Int("$CECOLOR", color);
    header.cecolor = ColorOfGroups(color, -1, AcCmEntityColor::kACIbyLayer);
    reader.Real("$CELTSCALE", header.celtscale);
    reader.Real("$LTSCALE", header.ltscale);
    std::int64_t weight = header.celweight;
    reader.Int("$CELWEIGHT", weight);
    if (IsLineWeight(weight)) header.celweight = static_cast<Adesk::Int16>(weight);
    reader.Number("$INSUNITS", header.insunits, kHighestUnit);
    reader.Number("$MEASUREMENT", header.measurement, 1);
    reader.Int("$LUNITS", header.lunits);
    reader.Int("$LUPREC", header.luprec);
    int tilemode = 1;
    reader.Int("$TILEMODE", tilemode);
    header.tilemode = tilemode != 0;
    reader.PointOf("$INSBASE", header.insbase);
    reader.PointOf("$EXTMIN", header.extmin);
    reader.PointOf("$EXTMAX", header.extmax);
    reader.PointOf("$LIMMIN", header.limmin);
    reader.PointOf("$LIMMAX", header.limmax);
    Adesk::UInt64 seed = 0;
    reader.Handle("$HANDSEED", seed);
    constexpr Adesk::UInt64 kHighestSeed = 0x0FFFFFFFFFFFFFFF;
    if (seed <= kHighestSeed) header.handseed = (std::max)(header.handseed, seed);
}

// One variable as the database has it.
struct Variable {
    const char* name;
    Adesk::UInt32 changedBit;  // of HeaderVars::changed; 0: never set by the program
    int since;
    void (*write)(FieldWriter&, const HeaderVars&, std::uint64_t seed);
};

void PutName(FieldWriter& io, int code, AcDbObjectId id, const wchar_t* absent) {
    io.PutText(code, id.isNull() ? absent : io.NameOf(id));
}

const std::vector<Variable>& KnownVariables() {
    using V = const HeaderVars&;
    using W = FieldWriter&;
    using S = std::uint64_t;
    static const std::vector<Variable> kVariables = {
        {"$INSBASE", 0, 0, [](W io, V v, S) { io.PutPoint(10, v.insbase); }},
        {"$EXTMIN", kVarExtents, 0, [](W io, V v, S) { io.PutPoint(10, v.extmin); }},
        {"$EXTMAX", kVarExtents, 0, [](W io, V v, S) { io.PutPoint(10, v.extmax); }},
        {"$LIMMIN", 0, 0, [](W io, V v, S) { io.PutPoint(10, v.limmin); }},
        {"$LIMMAX", 0, 0, [](W io, V v, S) { io.PutPoint(10, v.limmax); }},
        {"$LTSCALE", 0, 0, [](W io, V v, S) { io.PutReal(40, v.ltscale); }},
        {"$TEXTSTYLE", 0, 0, [](W io, V v, S) { PutName(io, 7, v.textstyle, L"Standard"); }},
        {"$CLAYER", kVarClayer, 0, [](W io, V v, S) { PutName(io, 8, v.clayer, L"0"); }},
        {"$CELTYPE", kVarCeltype, 0, [](W io, V v, S) { PutName(io, 6, v.celtype, L"ByLayer"); }},
        {"$CECOLOR", kVarCecolor, 0, [](W io, V v, S) { io.PutInt(62, v.cecolor.colorIndex()); }},
        {"$CELTSCALE", kVarCeltscale, kVersionR13,
         [](W io, V v, S) { io.PutReal(40, v.celtscale); }},
        {"$DIMSTYLE", 0, 0, [](W io, V v, S) { PutName(io, 2, v.dimstyle, L"Standard"); }},
        {"$LUNITS", 0, 0, [](W io, V v, S) { io.PutInt(70, v.lunits); }},
        {"$LUPREC", 0, 0, [](W io, V v, S) { io.PutInt(70, v.luprec); }},
        {"$HANDLING", 0, 0, [](W io, V, S) { io.PutInt(70, 1); }},
        {"$HANDSEED", 0, 0, [](W io, V, S seed) { io.out().PutHandle(5, seed); }},
        {"$TILEMODE", 0, 0, [](W io, V v, S) { io.PutInt(70, v.tilemode ? 1 : 0); }},
        {"$MEASUREMENT", 0, kVersionR13, [](W io, V v, S) { io.PutInt(70, v.measurement); }},
        {"$CELWEIGHT", kVarCelweight, kVersionR2000,
         [](W io, V v, S) { io.PutInt(370, v.celweight); }},
        {"$INSUNITS", kVarInsunits, kVersionR2000,
         [](W io, V v, S) { io.PutInt(70, v.insunits); }}};
    return kVariables;
}

std::string VariableBytes(const Variable& variable, const HeaderVars& header, std::uint64_t seed,
                          const WriteStyle& style) {
    TagBuffer buffer(style);
    FieldWriter io(buffer, {});
    buffer.PutText(9, variable.name);
    variable.write(io, header, seed);
    return buffer.Bytes();
}

// From R13 on every drawing has handles.
bool Belongs(const Variable& variable, int version) {
    return version < kVersionR13 || std::string_view(variable.name) != "$HANDLING";
}

std::string NewHeader(const HeaderVars& header, std::uint64_t seed, const WriteStyle& style) {
    TagBuffer buffer(style);
    buffer.PutText(0, "SECTION");
    buffer.PutText(2, "HEADER");
    buffer.PutText(9, "$ACADVER");
    buffer.PutText(1, "AC" + std::to_string(style.version));
    if (style.version >= kVersionR13) {
        buffer.PutText(9, "$DWGCODEPAGE");
        buffer.PutText(3, "ANSI_1252");
    }
    std::string bytes = buffer.Bytes();
    for (const Variable& variable : KnownVariables())
        if (style.version >= variable.since && Belongs(variable, style.version))
            bytes += VariableBytes(variable, header, seed, style);
    return bytes;
}

// Where each variable of a file's own header stands.
struct Place {
    std::size_t begin = 0, end = 0;
};
std::map<std::string, Place, std::less<>> Places(const Source& source, std::size_t record) {
    std::map<std::string, Place, std::less<>> places;
    Place* current = nullptr;
    TagWalker walker(source, record);
    for (Tag tag; walker.Next(tag);) {
        if (tag.code == 9) {
            current = &places[std::string(Trim(tag.value))];
            *current = {tag.begin, tag.end};
        } else if (current != nullptr) {
            // A comment behind the last variable is not the variable's.
            if (tag.code != 999) current->end = tag.end;
        }
    }
    return places;
}

}  // namespace

void ReadHeader(AcDbDatabase& db, const LoadedDrawing& drawing) {
    for (const LoadedDrawing::Span& section : drawing.sections) {
        if (section.name != "HEADER") continue;
        ReadFrom(HeaderReader(drawing, section.begin), Header(db));
        return;
    }
}

std::string HeaderRecord(const AcDbDatabase& db, const LoadedDrawing* drawing, std::size_t record,
                         const HandleFacts& handles, const WriteStyle& style) {
    const HeaderVars& header = Header(db);
    const std::uint64_t seed = handles.seed;
    if (drawing == nullptr || record == kNoIndex) return NewHeader(header, seed, style);
    const Source& source = drawing->source();
    const auto places = Places(source, record);
    std::map<std::size_t, std::pair<std::size_t, std::string>> edits;  // begin -> end, new bytes
    std::string added;
    for (const Variable& variable : KnownVariables()) {
        const auto found = places.find(variable.name);
        bool wanted =
            (header.changed & variable.changedBit) != 0 && style.version >= variable.since;
        if (std::string_view(variable.name) == "$HANDSEED") {
            std::uint64_t stated = 0;
            if (found != places.end()) {
                TagWalker walker(source, found->second.begin, found->second.end);
                for (Tag tag; walker.Next(tag);)
                    if (tag.code == 5) stated = source.Handle(tag);
            }
            wanted = seed > stated;
        }
        if (std::string_view(variable.name) == "$HANDLING")
            wanted = handles.turnedOn && Belongs(variable, style.version);
        if (!wanted) continue;
        std::string bytes = VariableBytes(variable, header, seed, style);
        if (found == places.end())
            added += bytes;
        else
            edits[found->second.begin] = {found->second.end, std::move(bytes)};
    }
    std::string out;
    std::size_t at = source.records[record].begin;
    for (const auto& [begin, edit] : edits) {
        out += source.View(at, begin);
        out += edit.second;
        at = edit.first;
    }
    out += source.View(at, source.RecordEnd(record));
    return out + added;
}

}  // namespace host::dxf
