// What pictures show of blocks, as the viewer of the drawing sees it.
#include "product/picture/PictureBuilder.h"
#include "support/test_drawing.h"

namespace {

using namespace product;
using test::TestDrawing;

char LetterOf(const Shape& shape) {
    if (shape.kind == Shape::Label) return 't';
    switch (shape.ink) {
        case Ink::Outline:
            return 'o';
        case Ink::Dashed:
            return 'd';
        case Ink::Centre:
            return 'c';
        default:
            return '?';
    }
}

// Strokes by their inks, blocks in brackets where they are used.
std::string Inks(const Picture& picture, const std::vector<Shape>& shapes) {
    std::string text;
    for (const Shape& shape : shapes)
        text += shape.kind == Shape::BlockUse
                    ? "(" + Inks(picture, picture.blocks.at(static_cast<size_t>(shape.block))) + ")"
                    : std::string(1, LetterOf(shape));
    return text;
}

TEST(PictureOfBlocks, TakesLayersAndLinetypesAsTheViewerSeesThem) {
    // PART: a line by its layer on layer 0, one ByBlock, one dashed of its own, one on layer SIDE.
    const char* const kPart = "L 0,0 9,0 | L%ByBlock 0,1 9,1 | L%HIDDEN 0,2 9,2 | L@SIDE 0,3 9,3";
    const struct {
        const char* name;
        const char* entities;
        const char* inks;
        size_t blocks;
    } rows[] = {
        {"by plain layers", "I@A PART 0,0 | I@B PART 0,9", "(oodo)(oodo)", 1},
        {"on the layer of axes", "I@AXES PART 0,0", "(ccdo)", 1},
        {"line type of the reference", "I@A%HIDDEN PART 0,0", "(oddo)", 1},
        {"twice, looking otherwise", "I@A PART 0,0 | I@AXES PART 0,9 | I@B PART 0,20",
         "(oodo)(ccdo)(oodo)", 2},
        {"on a layer that is off: what has its own layer shows", "I@OFF PART 0,0", "(o)", 1},
        {"on a frozen layer", "I@FROZEN PART 0,0", "", 0},
        {"nested: the outer layer counts on layer 0", "I@AXES OUTER 0,0", "(c(ccdo))", 2},
        {"nested: the inner reference has its own", "I@AXES OTHER 0,0", "((oodo))", 2},
        {"itself", "I@A SELF 0,0", "(o)", 1},
        {"an array of none is one", "M PART 0,0 0,0 9,9", "(oodo)", 1},
        {"envelopes are drawn elsewhere",
         "L@TempEncircleLine 0,0 1,1 | I@TempEncircleLine PART 0,0", "", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TestDrawing d;
        d.Layer("AXES", "CENTER").Layer("OFF", "", "off").Layer("FROZEN", "", "freeze");
        d.Block("PART", kPart);
        d.Block("OUTER", "L 0,5 9,5 | I PART 0,0");
        d.Block("OTHER", "I@A PART 0,0");
        d.Block("SELF", "L 0,5 9,5");
        AcDbObjectId self;
        {
            AcDbObjectPointer<AcDbBlockTable> table(d.db().blockTableId(), AcDb::kForRead);
            ASSERT_EQ(Acad::eOk, table->getAt(_T("SELF"), self));
            AcDbObjectPointer<AcDbBlockTableRecord> block(self, AcDb::kForWrite);
            auto* reference = new AcDbBlockReference(AcGePoint3d(), self);
            AcDbObjectId id;
            ASSERT_EQ(Acad::eOk, block->appendAcDbEntity(id, reference));
            ASSERT_EQ(Acad::eOk, reference->close());
        }
        d.Add(row.entities);
        PictureBuilder builder(d.db());
        const Picture picture = builder.Run();
        EXPECT_EQ(row.inks, Inks(picture, picture.shapes));
        EXPECT_EQ(row.blocks, picture.blocks.size());
        const Picture picked = builder.Run(d.ids());
        EXPECT_EQ(row.inks, Inks(picked, picked.shapes)) << "picked";
    }
}

// A run switches layers on: pictures show what was shown when it began, and what is new.
TEST(PictureOfBlocks, ShowsLayersAsTheyWereAndEntitiesAsTheyAre) {
    TestDrawing d;
    d.Layer("OFF", "", "off").Add("L@OFF 0,0 1,0 | L 0,0 2,0");
    PictureBuilder builder(d.db());
    d.Layer("OFF").Layer("0", "CENTER").Add("L 0,0 3,0");
    const Picture picture = builder.Run();
    EXPECT_EQ("oo", Inks(picture, picture.shapes));
}

}  // namespace
