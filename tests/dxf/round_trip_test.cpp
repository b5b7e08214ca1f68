// Reading and writing without a change gives the same bytes, through the database.
#include "drawing_text.h"

namespace {

using namespace test;

const char kTables[] =
    "0|TABLE|2|LAYER|70|2|0|LAYER|2|0|70|0|62|7|6|CONTINUOUS|"
    "0|LAYER|2|AXIS|70|0|62|1|6|CENTER|0|ENDTAB";

std::string R12Drawing() {
    return Header("AC1009") + Section("TABLES", kTables) +
           Section("BLOCKS", "0|BLOCK|8|0|2|PART|70|0|10|0.0|20|0.0|30|0.0|3|PART|" + Line("") +
                                 "|0|ENDBLK|8|0") +
           Section("ENTITIES",
                   Line("", "AXIS") +
                       "|0|POLYLINE|8|0|66|1|10|0.0|20|0.0|30|0.0|70|1|0|VERTEX|8|0|10|1.0|20|2.0|"
                       "30|0.0|42|0.5|0|VERTEX|8|0|10|3.0|20|4.0|30|0.0|0|SEQEND|8|0|"
                       "0|INSERT|8|0|66|1|2|PART|10|5.0|20|6.0|30|0.0|0|ATTRIB|8|0|10|0.0|20|0.0|"
                       "30|0.0|40|2.5|1|T-01|2|TOOL|70|0|0|SEQEND|8|0") +
           "0|EOF";
}

std::string R2000Drawing() {
    return Header("AC1015", "9|$HANDSEED|5|FF|9|$FANCYVAR|40|12.50") + Section("CLASSES", "") +
           Section(
               "TABLES",
               "0|TABLE|2|LAYER|5|2|330|0|100|AcDbSymbolTable|70|1|0|LAYER|5|10|330|2|100|"
               "AcDbSymbolTableRecord|100|AcDbLayerTableRecord|2|0|70|0|62|7|6|Continuous|370|-3|"
               "390|F|0|ENDTAB|0|TABLE|2|BLOCK_RECORD|5|1|330|0|100|AcDbSymbolTable|70|1|0|"
               "BLOCK_RECORD|5|1F|330|1|100|AcDbSymbolTableRecord|100|AcDbBlockTableRecord|2|"
               "*Model_Space|340|0|0|ENDTAB") +
           Section("BLOCKS",
                   "0|BLOCK|5|20|330|1F|100|AcDbEntity|8|0|100|AcDbBlockBegin|2|"
                   "*Model_Space|70|0|10|0.0|20|0.0|30|0.0|3|*Model_Space|1||0|ENDBLK|5|21|"
                   "330|1F|100|AcDbEntity|8|0|100|AcDbBlockEnd") +
           Section(
               "ENTITIES",
               "0|LINE|5|30|330|1F|100|AcDbEntity|8|0|48|0.50|100|AcDbLine|10|1.000|20|2.|30|.0|"
               "11|3e0|21|4|31|0|1001|ACAD|1000|data|1071|7|"
               "0|FLUXCAPACITOR|5|31|330|1F|100|AcDbEntity|8|0|100|AcDbFlux|40|1.21|310|00FFA0") +
           Section(
               "OBJECTS",
               "0|DICTIONARY|5|C|330|0|100|AcDbDictionary|281|1|3|TASKS|350|40|0|XRECORD|5|40|330|"
               "C|100|AcDbXrecord|280|1|1|text|10|1.0|20|2.0|30|3.0|290|1|1000|in place") +
           "0|EOF";
}

TEST(RoundTrip, SharedDrawings) {
    const auto files = SharedDrawings();
    if (files.empty()) GTEST_SKIP() << "no shared drawings beside the source folder";
    for (const auto& file : files) {
        SCOPED_TRACE(file.filename().string());
        const std::string bytes = FileContent(file);
        Loaded drawing(bytes);
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        // Every entity can be made, and making them changes nothing.
        ASSERT_EQ(Acad::eOk, drawing.db.closeInput(true));
        EXPECT_TRUE(drawing.Written() == bytes);
    }
}

TEST(RoundTrip, FormsAndLayouts) {
    struct Form {
        const char* name;
        std::string bytes;
    };
    const std::string r12 = R12Drawing(), r2000 = R2000Drawing();
    const Form forms[] = {
        {"R12 text", Lines(r12)},
        {"R2000 text", Lines(r2000)},
        {"CRLF", Lines(r2000, "\r\n")},
        {"CR", Lines(r12, "\r")},
        {"byte order mark", "\xEF\xBB\xBF" + Lines(r2000)},
        {"comment first", "999\nmade by hand\n" + Lines(r2000)},
        {"trailing blanks and lines", Lines(r2000) + "\n\n  \n"},
        {"Ctrl-Z", Lines(r2000) + "\x1a"},
        {"something behind EOF", Lines(r2000) + "0\nSECTION\nwhatever"},
        {"no line end at the end", Lines(r2000).substr(0, Lines(r2000).size() - 1)},
        {"binary of R12", BinaryOf(Lines(r12), false)},
        {"binary of R2000", BinaryOf(Lines(r2000), true)},
        {"padded codes",
         "  0\nSECTION\n  2\nENTITIES\n  0\nPOINT\n  8\n0\n 10\n 1.0\n 20\n2.0 \n"
         " 62 \n     3\n  0\nENDSEC\n  0\nEOF\n"},
        {"doubled carriage returns", Lines(r12, "\r\r\n")}};
    for (const Form& form : forms) {
        SCOPED_TRACE(form.name);
        Loaded drawing(form.bytes);
        ASSERT_TRUE(drawing.result.ok()) << drawing.result.message;
        ASSERT_EQ(Acad::eOk, drawing.db.closeInput(true));
        EXPECT_EQ(form.bytes, drawing.Written());
    }
}

}  // namespace
