// A tool in two parts, as the kernel's own reader of names and colours sees the file: two products
// where they stand, whose volumes are those of the whole.
#include "host/solid/step_text.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>

#include <gtest/gtest.h>

#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include "product/parts/CutRing.h"
#include "solid/outlines.h"

using namespace host::solid;

namespace {

struct Product {
    std::string name;
    int rgb = -1;  // of every face; -1: they differ, or have none
    double volume = 0;
    bool isValid = false;
};

int ColourOf(XCAFDoc_ColorTool& colours, const TopoDS_Shape& shape) {
    int found = -1;
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        Quantity_Color colour;
        if (!colours.GetColor(faces.Current(), XCAFDoc_ColorSurf, colour) &&
            !colours.GetColor(shape, XCAFDoc_ColorSurf, colour))
            return -1;
        std::array<double, 3> part{};
        colour.Values(part[0], part[1], part[2], Quantity_TOC_sRGB);
        int rgb = 0;
        for (const double value : part)
            rgb = rgb * 256 + static_cast<int>(std::lround(value * 255));
        if (found >= 0 && found != rgb) return -1;
        found = rgb;
    }
    return found;
}

// By the kernel's adaptive integration, as fine as it goes.
double VolumeOf(const TopoDS_Shape& shape) {
    GProp_GProps volume;
    BRepGProp::VolumePropertiesGK(shape, volume, 1e-12);
    return volume.Mass();
}

std::vector<Product> Read(const std::string& text) {
    Message::DefaultMessenger()->ChangePrinters().Clear();
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    STEPCAFControl_Reader reader;
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    const std::string path = testing::TempDir() + "step_parts_test.stp";
    std::ofstream(path, std::ios::binary) << text;
    std::vector<Product> products;
    const bool isRead = reader.ReadFile(path.c_str()) == IFSelect_RetDone;
    std::remove(path.c_str());
    if (!isRead || !reader.Transfer(document)) return products;
    const Handle(XCAFDoc_ShapeTool) shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    const Handle(XCAFDoc_ColorTool) colours = XCAFDoc_DocumentTool::ColorTool(document->Main());
    TDF_LabelSequence labels;
    shapes->GetFreeShapes(labels);
    for (const TDF_Label& label : labels) {
        const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
        Product product;
        Handle(TDataStd_Name) name;
        if (label.FindAttribute(TDataStd_Name::GetID(), name))
            product.name = TCollection_AsciiString(name->Get(), '?').ToCString();
        product.rgb = ColourOf(*colours, shape);
        product.volume = VolumeOf(shape);
        product.isValid = shape.ShapeType() == TopAbs_SOLID && BRepCheck_Analyzer(shape).IsValid();
        products.push_back(product);
    }
    document->Close();
    return products;
}

}  // namespace

TEST(StepParts, AreTwoNamedAndColouredProductsThatMakeTheWhole) {
    const struct {
        const char* outline;
        double at;
    } kCases[] = {{"0,0 20,0 20,5 12,5 12,8 0,8", 12},             // at a shoulder
                  {"0,0 20,0 20,5 12,5 12,8 0,8", 15.3},           // within a cylinder
                  {"0,0 30,0 10,6 0,6", 21.7},                     // within a cone
                  {"0,0 26,0(0.41421356237309503) 20,6 0,6", 20},  // where the ball begins
                  {"0,0 26,0(0.41421356237309503) 20,6 0,6", 23},  // within the ball
                  {"0,0 40,0 40,4 30,4(-0.41421356237309503) 26,8 0,8", 27.5}};  // within a ring
    for (const auto& [outline, at] : kCases) {
        SCOPED_TRACE(std::string(outline) + " at " + std::to_string(at));
        Profile whole;
        ASSERT_FALSE(Prepare(ParseOutline(outline), AcGePoint3d(), AcGeVector3d(1, 0, 0), whole));
        const product::CutProfiles cut = product::CutProfile(whole, at);
        StepOptions options;
        options.product = "T-0001";
        options.timestamp = "2026-01-05T10:00:00";
        const std::vector<Product> one = Read(StepText({{&whole, "T-0001", -1}}, options));
        const std::vector<Product> two = Read(
            StepText({{&cut.below, "T-0001 NOCUT", 0x808080}, {&cut.above, "T-0001 CUT", 0xFFFF00}},
                     options));
        ASSERT_EQ(1u, one.size());
        ASSERT_EQ(2u, two.size());
        EXPECT_TRUE(two[0].isValid && two[1].isValid);
        EXPECT_EQ("T-0001 NOCUT", two[0].name);
        EXPECT_EQ("T-0001 CUT", two[1].name);
        EXPECT_EQ(0x808080, two[0].rgb);
        EXPECT_EQ(0xFFFF00, two[1].rgb);
        EXPECT_NEAR(1, (two[0].volume + two[1].volume) / one[0].volume, 1e-9);
        EXPECT_NEAR(1, Measure(cut.below).volume / two[0].volume, 1e-9);
        EXPECT_NEAR(1, Measure(cut.above).volume / two[1].volume, 1e-9);
    }
}
