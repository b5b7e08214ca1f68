// TEXT, ATTRIB, ATTDEF, MTEXT.
#include <cmath>

#include "gemat3d.h"
#include "host/db/access.h"
#include "host/dxf/codec.h"
#include "host/dxf/field_reader.h"
#include "host/dxf/field_writer.h"
#include "host/base/angles.h"

namespace host::dxf {

namespace {

// What TEXT, ATTRIB and ATTDEF share. Only TEXT states the vertical mode in its own subclass.
void TextBody(FieldIo& io, AcDbText& text) {
    io.Subclass("AcDbText");
    io.OptReal(39, Access::Thickness(text), 0.0);
    const AcGeVector3d& normal = Access::Normal(text);
    io.OcsPoint(10, Access::Position(text), normal);
    io.Real(40, Access::Height(text));
    io.Text(1, Access::Text(text));
    io.OptAngle(50, Access::Rotation(text), 0.0);
    io.OptReal(41, Access::WidthFactor(text), 1.0);
    io.OptAngle(51, Access::Oblique(text), 0.0);
    io.OptNamed(7, Root::kTextStyleTable, Access::Style(text), AcDbObjectId());
    FlagSet mirrored(io, 71);
    mirrored.Bit(2, Access::MirroredX(text));
    mirrored.Bit(4, Access::MirroredY(text));
    mirrored.Done(true);
    io.OptKind(72, Access::Horizontal(text), AcDb::kTextLeft, AcDb::kTextFit);
    if (io.AsReader() != nullptr) {
        Access::Alignment(text) = Access::Position(text);
        if (io.Has(11)) io.OcsPoint(11, Access::Alignment(text), normal);
    } else if (!text.isDefaultAlignment()) {
        io.OcsPoint(11, Access::Alignment(text), normal);
    }
    io.Normal(Access::Normal(text));
}

void TextFields(FieldIo& io, AcDbText& text) {
    TextBody(io, text);
    io.Subclass("AcDbText");
    io.OptKind(73, Access::Vertical(text), AcDb::kTextBase, AcDb::kTextTop);
}

// Group 280 is the version of the record, which R2010 began to ask for.
void RecordVersion(FieldIo& io) {
    if (FieldWriter* writer = io.AsWriter())
        if (io.version() >= kVersionR2010) writer->PutInt(280, 0);
}

void AttributeFields(FieldIo& io, AcDbAttribute& attribute) {
    TextBody(io, attribute);
    io.Subclass("AcDbAttribute");
    RecordVersion(io);
    io.Text(2, Access::Tag(attribute));
    io.IntAs(70, Access::Flags(attribute));
    io.OptKind(74, Access::Vertical(attribute), AcDb::kTextBase, AcDb::kTextTop);
}

void DefinitionFields(FieldIo& io, AcDbAttributeDefinition& definition) {
    TextBody(io, definition);
    io.Subclass("AcDbAttributeDefinition");
    RecordVersion(io);
    io.Text(3, Access::Prompt(definition));
    io.Text(2, Access::Tag(definition));
    io.IntAs(70, Access::Flags(definition));
    io.OptKind(74, Access::Vertical(definition), AcDb::kTextBase, AcDb::kTextTop);
}

// Contents come in pieces of 250 characters: group 3 each, the last one group 1.
void ReadContents(FieldReader& io, AcDbMText& text) {
    std::wstring& contents = Access::Contents(text);
    std::string bytes;
    for (const Tag& tag : io.ScopeTags())
        if (tag.code == 3 || tag.code == 1) bytes += tag.value;
    // Joined before decoding: a piece may end within a character or an escape.
    contents = io.lookup().source.codec->Decode(bytes);
}

void WriteContents(FieldWriter& io, const AcDbMText& text) {
    constexpr std::size_t kLongest = 250;
    io.out().BeginList({1, 3});
    const std::wstring& contents = Access::Contents(text);
    const TextCodec& codec = *io.out().style().codec;
    std::string piece;
    for (std::size_t i = 0; i < contents.size();) {
        // One character at a time, two halves of a surrogate pair together, so that none is cut.
        const bool pair = (contents[i] & ~0x3FF) == 0xD800 && i + 1 < contents.size();
        const std::size_t length = pair ? 2 : 1;
        const std::string bytes = codec.Encode(std::wstring_view(contents).substr(i, length));
        if (piece.size() + bytes.size() > kLongest) {
            io.PutRaw(3, piece);
            piece.clear();
        }
        piece += bytes;
        i += length;
    }
    io.PutRaw(1, piece);
    io.out().EndList();
}

// The direction is a vector (group 11) or an angle in the text's plane (group 50); the later one in
// the record counts.
void ReadDirection(FieldReader& io, AcDbMText& text) {
    for (const Tag& tag : io.ScopeTags()) {
        if (tag.code == 11) {
            io.Vector(11, Access::Direction(text));
        } else if (tag.code == 50) {
            const double angle = io.RealOf(tag) * kPi / 180.0;
            AcGeVector3d direction(std::cos(angle), std::sin(angle), 0.0);
            Access::Direction(text) =
                direction.transformBy(AcGeMatrix3d::planeToWorld(Access::Normal(text)));
        }
    }
    if (Access::Direction(text).length() == 0.0) Access::Direction(text) = AcGeVector3d::kXAxis;
}

void MTextFields(FieldIo& io, AcDbMText& text) {
    io.Subclass("AcDbMText");
    io.Point(10, Access::Location(text));
    io.Real(40, Access::TextHeight(text));
    io.OptReal(41, Access::Width(text), 0.0);
    std::int64_t attachment = Access::Attachment(text), flow = 1;
    io.Int(71, attachment);
    if (attachment >= AcDbMText::kTopLeft && attachment <= AcDbMText::kBottomRight)
        Access::Attachment(text) = static_cast<AcDbMText::AttachmentPoint>(attachment);
    if (io.AsWriter() != nullptr) io.Int(72, flow);
    if (FieldWriter* writer = io.AsWriter()) WriteContents(*writer, text);
    if (FieldReader* reader = io.AsReader()) ReadContents(*reader, text);
    io.OptNamed(7, Root::kTextStyleTable, Access::Style(text), AcDbObjectId());
    io.Normal(Access::Normal(text));
    if (FieldReader* reader = io.AsReader()) ReadDirection(*reader, text);
    if (FieldWriter* writer = io.AsWriter()) {
        const AcGeVector3d& direction = Access::Direction(text);
        writer->out().BeginList({50});
        writer->PutPoint(11, AcGePoint3d(direction.x, direction.y, direction.z));
        writer->out().EndList();
    }
    io.OptReal(42, Access::StoredWidth(text), 0.0);
    io.OptReal(43, Access::StoredHeight(text), 0.0);
    io.OptReal(44, Access::LineSpacing(text), 1.0);
}

}  // namespace

const std::vector<Codec>& TextCodecs() {
    static const std::vector<Codec> kCodecs = {
        {"TEXT", AcDbText::desc, Fields<AcDbText, TextFields>},
        {"ATTRIB", AcDbAttribute::desc, Fields<AcDbAttribute, AttributeFields>},
        {"ATTDEF", AcDbAttributeDefinition::desc,
         Fields<AcDbAttributeDefinition, DefinitionFields>},
        {"MTEXT", AcDbMText::desc, Fields<AcDbMText, MTextFields>, kVersionR13}};
    return kCodecs;
}

}  // namespace host::dxf
