#include "host/solid/occt/occt_solid.h"

#include <cstdio>
#include <sstream>

#include <APIHeaderSection_MakeHeader.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <Interface_Static.hxx>
#include <STEPControl_Controller.hxx>
#include <STEPControl_Writer.hxx>
#include <StepBasic_Product.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_WorkSession.hxx>
#include <gp_Trsf.hxx>

#include "host/solid/occt/occt_guard.h"

namespace host::solid {

namespace {

// Stands for the product's name until the file is text: the library would write other than ASCII
// letters as bytes, which the format does not have.
constexpr char kPlaceholder[] = "QZ-PRODUCT-NAME";

// Units that STEP files have, by the number of INSUNITS; the others are written in millimetres.
struct StepUnit {
    int unitsValue;
    const char* name;
    double factor;  // from drawing units to the file's
};
const StepUnit kUnits[] = {{0, "MM", 1.0},
                           {1, "INCH", 1.0},
                           {2, "FT", 1.0},
                           {3, "MI", 1.0},
                           {4, "MM", 1.0},
                           {5, "CM", 1.0},
                           {6, "M", 1.0},
                           {7, "KM", 1.0},
                           {8, "UIN", 1.0},
                           {9, "MIL", 1.0},
                           {10, "MM", 914.4},
                           {11, "MM", 1e-7},
                           {12, "MM", 1e-6},
                           {13, "UM", 1.0},
                           {14, "MM", 100.0},
                           {15, "M", 10.0},
                           {16, "M", 100.0},
                           {17, "KM", 1e6},
                           {18, "KM", 149597870.7},
                           {19, "KM", 9460730472580.8},
                           {20, "KM", 30856775814913.673}};

StepUnit UnitOf(int unitsValue) {
    for (const StepUnit& unit : kUnits)
        if (unit.unitsValue == unitsValue) return unit;
    return kUnits[0];
}

// One code point of UTF-8 text from position at on; a byte that is none counts as itself.
char32_t NextCodePoint(const std::string& text, std::size_t& at) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    const unsigned first = byte(at++);
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    char32_t code = more == 0 ? first : first & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) {
        if ((byte(at) & 0xC0u) != 0x80u) return first;
        code = code << 6 | (byte(at++) & 0x3Fu);
    }
    return code;
}

// A string of a STEP file: quotes and backslashes doubled, other than printable ASCII as \X4\ hex
// (ISO 10303-21).
std::string StepString(const std::string& text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t code = NextCodePoint(text, at);
        if (code >= 0x20 && code < 0x7F) {
            if (code == U'\'' || code == U'\\') out += static_cast<char>(code);
            out += static_cast<char>(code);
            continue;
        }
        char hex[32];
        std::snprintf(hex, sizeof hex, code > 0xFFFF ? "\\X4\\%08X\\X0\\" : "\\X2\\%04X\\X0\\",
                      static_cast<unsigned>(code));
        out += hex;
    }
    return out;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at))
        text.replace(at, from.size(), to), at += to.size();
}

Handle(TCollection_HAsciiString) Ascii(const std::string& text) {
    return new TCollection_HAsciiString(text.c_str());
}

bool SetParameters(const StepUnit& unit) {
    STEPControl_Controller::Init();
    return Interface_Static::SetCVal("write.step.schema", "AP214IS") &&
           Interface_Static::SetCVal("write.step.unit", unit.name) &&
           Interface_Static::SetCVal("xstep.cascade.unit", unit.name);
}

TopoDS_Shape Scaled(const TopoDS_Shape& shape, double factor) {
    if (factor == 1.0) return shape;
    gp_Trsf scaling;
    scaling.SetScaleFactor(factor);
    return BRepBuilderAPI_Transform(shape, scaling, true).Shape();
}

// The library numbers the products of a process.
void SetProductName(const Handle(StepData_StepModel) & model) {
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const Handle(StepBasic_Product) product =
            Handle(StepBasic_Product)::DownCast(model->Value(i));
        if (product.IsNull()) continue;
        product->SetId(Ascii(kPlaceholder));
        product->SetName(Ascii(kPlaceholder));
    }
}

// What the library fills in by the clock or by itself.
void SetHeader(const Handle(StepData_StepModel) & model, const StepOptions& options) {
    APIHeaderSection_MakeHeader header(model);
    header.SetName(Ascii(kPlaceholder));
    header.SetTimeStamp(Ascii(options.timestamp));
    header.SetAuthorValue(1, Ascii(""));
    header.SetOrganizationValue(1, Ascii(""));
    header.SetOriginatingSystem(Ascii("QZEncircleLine"));
    header.SetAuthorisation(Ascii(""));
}

}  // namespace

bool WriteStep(const TopoDS_Shape& shape, const StepOptions& options, std::string& text,
               std::string& reason) {
    return Guarded("writing STEP", reason, [&] {
        const StepUnit unit = UnitOf(options.unitsValue);
        if (!SetParameters(unit)) {
            reason = "the STEP writer does not take its settings";
            return false;
        }
        STEPControl_Writer writer;
        if (writer.Transfer(Scaled(shape, unit.factor), STEPControl_AsIs) != IFSelect_RetDone) {
            reason = "the solid has no STEP form";
            return false;
        }
        const Handle(StepData_StepModel) model = writer.Model();
        SetHeader(model, options);
        SetProductName(model);
        StepData_StepWriter sender(model);
        sender.SendModel(Handle(StepData_Protocol)::DownCast(writer.WS()->Protocol()));
        std::ostringstream out;
        if (!sender.Print(out)) {
            reason = "the STEP text cannot be made";
            return false;
        }
        std::string made = out.str();
        ReplaceAll(made, kPlaceholder, StepString(options.product));
        text = std::move(made);
        return true;
    });
}

}  // namespace host::solid
