// What cannot be read says why in one sentence; what can be read in spite of a fault is reported.
#include <gmock/gmock.h>

#include "drawing_text.h"

namespace {

using namespace test;

struct RefusedCase {
    const char* name;
    std::string bytes;
    Acad::ErrorStatus status;
    const char* message;
};

std::string Entities(const std::string& content) {
    return Lines(Header("AC1009") + Section("ENTITIES", content) + "0|EOF");
}

TEST(Fault, Refused) {
    const std::string good = Entities(Line(""));
    const std::string binary = BinaryOf(good, false);
    const std::string wide = BinaryOf(good, true);
    const std::size_t number = good.find("1.0\n");
    std::string badReal = binary;  // the first coordinate, 1.0
    const std::string one("\x0a\0\0\0\0\0\0\xf0\x3f", 9);
    badReal.replace(badReal.find(one) + 1, 8, std::string(8, '\xff'));
    const RefusedCase cases[] = {
        {"empty", "", Acad::eBadDxfSequence, "test.dxf: the file is empty"},
        {"DWG", std::string("AC1032\0\0\0\0\0\x01", 12), Acad::eInvalidDwgVersion,
         "test.dxf: this is a DWG drawing (AC1032); save it as DXF and read that"},
        {"old DWG", std::string("AC1009\0\0", 8), Acad::eInvalidDwgVersion,
         "test.dxf: this is a DWG drawing (AC1009); save it as DXF and read that"},
        {"prose", "Dear reader,\nthis is a letter.\n", Acad::eBadDxfSequence,
         "test.dxf: line 1: this is no DXF drawing: the group code \"Dear reader,\" is not a "
         "number"},
        {"a picture", std::string("\x89PNG\r\n\x1a\n\0\0", 10), Acad::eBadDxfSequence,
         "test.dxf: line 1: this is no DXF drawing: the group code \"?PNG\" is not a number"},
        {"UTF-16", std::string("\xff\xfe\x30\0\n\0", 6), Acad::eBadDxfSequence,
         "test.dxf: this is no DXF drawing: it is text in UTF-16"},
        {"numbers only", "1\n2\n3\n4\n", Acad::eBadDxfSequence,
         "test.dxf: this is no DXF drawing: it holds no section"},
        {"no section first", "0\nLINE\n8\n0\n0\nEOF\n", Acad::eBadDxfSequence,
         "test.dxf: line 1: this is no DXF drawing: it does not begin with a section"},
        {"group code with letters", Entities("0|LINE|8|0|1O|1.0"), Acad::eBadDxfSequence,
         "test.dxf: line 19: the group code \"1O\" is not a number"},
        {"blank group code", Entities("0|LINE|8|0||1.0"), Acad::eBadDxfSequence,
         "test.dxf: line 19: the group code \"\" is not a number"},
        {"coordinate with a comma", Entities("0|LINE|8|0|10|1,5"), Acad::eBadDxfSequence,
         "test.dxf: line 20: the value \"1,5\" of group 10 is not a number"},
        {"coordinate nan", Entities("0|LINE|8|0|10|nan"), Acad::eBadDxfSequence,
         "test.dxf: line 20: the value \"nan\" of group 10 is not a number"},
        {"coordinate too large", Entities("0|LINE|8|0|10|1e999"), Acad::eBadDxfSequence,
         "test.dxf: line 20: the value \"1e999\" of group 10 is not a number"},
        {"coordinate missing", Entities("0|LINE|8|0|10|"), Acad::eBadDxfSequence,
         "test.dxf: line 20: the value \"\" of group 10 is not a number"},
        {"flags with letters", Entities("0|LINE|8|0|62|red"), Acad::eBadDxfSequence,
         "test.dxf: line 20: the value \"red\" of group 62 is not a whole number"},
        {"cut off within a value", good.substr(0, number + 2), Acad::eBadDxfSequence,
         "test.dxf: line 20: the file ends in the middle of a value"},
        {"cut off behind a code", good.substr(0, number), Acad::eBadDxfSequence,
         "test.dxf: line 19: the file ends after a group code, its value is missing"},
        {"binary cut off within a string", binary.substr(0, 26), Acad::eBadDxfSequence,
         "test.dxf: byte 22: the file ends within a string"},
        {"binary cut off within a number", wide.substr(0, wide.size() - 20), Acad::eBadDxfSequence,
         "test.dxf: byte 152: the file ends within a value"},
        {"binary real that is none", badReal, Acad::eBadDxfSequence,
         "test.dxf: byte 93: the value of group 10 is not a number"}};
    for (const RefusedCase& c : cases) {
        SCOPED_TRACE(c.name);
        Loaded drawing(c.bytes);
        EXPECT_EQ(c.status, drawing.result.status);
        EXPECT_EQ(c.message, drawing.result.message);
        EXPECT_EQ(0, drawing.db.approxNumObjects());
    }
}

TEST(Fault, FilesThatCannotBeOpened) {
    namespace fs = std::filesystem;
    const auto read = [](const std::string& path) {
        AcDbDatabase db(false, true);
        host::dxf::Report report;
        return host::dxf::ReadFile(db, path, report);
    };
    const auto missing = read("no/such.dxf");
    EXPECT_EQ(Acad::eFileNotFound, missing.status);
    EXPECT_EQ("no/such.dxf: cannot be read: No such file or directory", missing.message);
    const auto folder = read(fs::temp_directory_path().string());
    EXPECT_EQ(Acad::eFileAccessErr, folder.status);
    EXPECT_THAT(folder.message, testing::EndsWith("is a folder, not a file"));
}

struct ToleratedCase {
    const char* name;
    std::string text;
    std::size_t entities;  // in model space
    const char* notes;
};

TEST(Fault, Tolerated) {
    const std::string header = Header("AC1009");
    const ToleratedCase cases[] = {
        {"nothing but EOF", "0|EOF", 0, ""},
        {"entities alone", Section("ENTITIES", Line("")) + "0|EOF", 1, ""},
        {"no EOF", header + Section("ENTITIES", Line("")) + "999|end", 1,
         "line 35: the file has no EOF mark\n"},
        {"no ENDSEC", header + "0|SECTION|2|ENTITIES|" + Line("") + "|0|EOF", 1,
         "line 11: SECTION: a section has no ENDSEC\n"},
        {"neither", header + "0|SECTION|2|ENTITIES|" + Line(""), 1,
         "line 31: the file has no EOF mark\nline 11: SECTION: a section has no ENDSEC\n"},
        {"sections in odd order",
         Section("ENTITIES", "0|INSERT|8|0|2|B|10|0.0|20|0.0|30|0.0") +
             Section("BLOCKS",
                     "0|BLOCK|8|0|2|B|70|0|10|0.0|20|0.0|30|0.0|" + Line("") + "|0|ENDBLK") +
             header + "0|EOF",
         1, ""},
        {"unknown section", header + Section("GADGETS", "0|GADGET|5|7") + "0|EOF", 0,
         "line 11: GADGETS: unknown section, kept as it is\n"},
        {"unknown entity", Section("ENTITIES", "0|GADGET|8|0|40|1.0") + "0|EOF", 1, ""},
        {"undeclared layer",
         Section("TABLES", "0|TABLE|2|LAYER|70|1|0|LAYER|2|0|70|0|62|7|6|CONTINUOUS|0|ENDTAB") +
             Section("ENTITIES", Line("", "AXIS") + "|" + Line("", "axis") + "|" + Line("", "B")) +
             "0|EOF",
         3,
         "line 29: AXIS: an object names a layer that no table declares, made\n"
         "line 61: B: an object names a layer that no table declares, made\n"},
        {"undeclared linetype", Section("ENTITIES", Line("", "0", "6|HIDDEN")) + "0|EOF", 1,
         "line 5: HIDDEN: an object names a linetype that no table declares, made\n"},
        {"handle used twice", Section("ENTITIES", Line("A1") + "|" + Line("A1")) + "0|EOF", 2,
         "line 23: LINE A1: a handle is used twice or out of range, replaced in memory\n"},
        {"handle that is none", Section("ENTITIES", Line("XYZ")) + "0|EOF", 1, ""},
        {"handle out of range", Section("ENTITIES", Line("FFFFFFFFFFFFFFFF")) + "0|EOF", 1,
         "line 5: LINE FFFFFFFFFFFFFFFF: a handle is used twice or out of range, replaced in "
         "memory\n"},
        {"block twice",
         Section("BLOCKS",
                 "0|BLOCK|2|B|70|0|10|0.0|20|0.0|0|ENDBLK|0|BLOCK|2|B|70|0|10|0.0|20|0.0|0|"
                 "ENDBLK") +
             "0|EOF",
         0, "line 17: BLOCK \"B\": a block is defined twice\n"},
        {"no ENDBLK", Section("BLOCKS", "0|BLOCK|2|B|70|0|10|0.0|20|0.0|" + Line("")) + "0|EOF", 0,
         "line 5: BLOCK: a block has no ENDBLK\n"},
        {"no SEQEND",
         Section("ENTITIES", "0|POLYLINE|8|0|66|1|0|VERTEX|8|0|10|1.0|20|1.0|" + Line("")) +
             "0|EOF",
         2, "line 5: POLYLINE: a polyline has no SEQEND\n"},
        {"stray vertex", Section("ENTITIES", "0|VERTEX|8|0|10|1.0|20|1.0") + "0|EOF", 1,
         "line 5: VERTEX: a vertex without polyline, kept as it is\n"},
        {"two sections of entities",
         Section("ENTITIES", Line("")) + Section("ENTITIES", Line("")) + "0|EOF", 2, ""},
        {"empty sections",
         Section("TABLES", "") + Section("BLOCKS", "") + Section("ENTITIES", "") + "0|EOF", 0, ""},
        {"block that contains itself twice over",
         Section("BLOCKS",
                 "0|BLOCK|2|A|70|0|10|0.0|20|0.0|0|INSERT|8|0|2|B|10|0.0|20|0.0|0|INSERT|8|0|2|"
                 "b|10|1.0|20|0.0|0|ENDBLK|0|BLOCK|2|B|70|0|10|0.0|20|0.0|0|INSERT|8|0|2|A|10|"
                 "0.0|20|0.0|0|INSERT|8|0|2|A|10|0.0|20|1.0|0|ENDBLK") +
             Section("ENTITIES", "0|INSERT|8|0|2|A|10|0.0|20|0.0") + "0|EOF",
         1,
         "line 47: INSERT \"A\": a block contains itself, this reference shows nothing\n"
         "line 57: INSERT \"A\": a block contains itself, this reference shows nothing\n"},
        {"array beyond reason",
         Section("ENTITIES", "0|INSERT|8|0|2|B|10|0.0|20|0.0|70|30000|71|30000") + "0|EOF", 1,
         "line 5: INSERT \"B\": an array of inserts is too large to be meant, read as a single "
         "one\n"},
        {"code beyond the documented ones", Section("ENTITIES", Line("", "0", "1500|x")) + "0|EOF",
         1, "line 9: group 1500: group code outside the documented ranges, kept as it is\n"},
        {"dictionary entry that leads nowhere",
         Section("OBJECTS", "0|DICTIONARY|5|C|3|LOST|350|77") + "0|EOF", 0,
         "line 5: DICTIONARY C: a dictionary names an object that is not there\n"},
        {"object in the wrong place", "0|SECTION|2|ENTITIES|0|ENDSEC|" + Line("") + "|0|EOF", 0,
         "line 7: LINE: an object outside the sections, kept as it is\n"}};
    for (const ToleratedCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string bytes = Lines(c.text);
        Loaded drawing(bytes);
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        EXPECT_EQ(c.notes, drawing.Notes());
        EXPECT_EQ(c.entities, drawing.ModelSpace().size());
        EXPECT_EQ(Acad::eOk, drawing.db.closeInput(true));
        for (AcDbObjectId id : drawing.ModelSpace()) {
            AcDbEntity* entity = nullptr;
            ASSERT_EQ(Acad::eOk, acdbOpenObject(entity, id));
            AcDbExtents box;
            static_cast<void>(entity->getGeomExtents(box));  // must come to an end
            EXPECT_EQ(Acad::eOk, entity->close());
        }
        EXPECT_EQ(bytes, drawing.Written());
    }
}

// A thousand entities with the same fault make six lines, not a thousand.
TEST(Fault, ManyOfAKindAreCounted) {
    std::string text;
    for (int i = 0; i < 1000; ++i) text += Line("7") + "|";
    Loaded drawing(Lines(Section("ENTITIES", text.substr(0, text.size() - 1)) + "0|EOF"));
    ASSERT_TRUE(drawing.result.ok());
    const auto lines = drawing.report.Lines();
    ASSERT_EQ(6u, lines.size());
    EXPECT_EQ("a handle is used twice or out of range, replaced in memory: 994 more", lines[5]);
}

}  // namespace
