#include "host/solid/occt/occt_solid.h"

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
           Interface_Static::SetCVal("write.step.unit", unit.kernelName) &&
           Interface_Static::SetCVal("xstep.cascade.unit", unit.kernelName);
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
        const StepUnit& unit = StepUnitOf(options.unitsValue);
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
