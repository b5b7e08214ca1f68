#include "solid_occt/step_reader.h"

#include <sstream>

#include <BRepAdaptor_Surface.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPControl_Reader.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

// The kernel's reader keeps tables of its own to the end of the process. Asked for by the leak
// sanitizer alone.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libTKernel\nleak:libTKXSBase\nleak:libTKSTEP\n";
}

namespace step {

Solid Read(const std::string& text) {
    Message::DefaultMessenger()->ChangePrinters().Clear();
    Solid found;
    STEPControl_Reader reader;
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    std::istringstream in(text);
    if (reader.ReadStream("part.stp", in) != IFSelect_RetDone || reader.TransferRoots() != 1) {
        found.fault = "not read";
        return found;
    }
    const TopoDS_Shape shape = reader.OneShape();
    if (shape.IsNull() || shape.ShapeType() != TopAbs_SOLID)
        found.fault = "no solid";
    else if (!BRepCheck_Analyzer(shape).IsValid())
        found.fault = "not valid";
    if (!found.fault.empty()) return found;
    GProp_GProps volume, area;
    BRepGProp::VolumeProperties(shape, volume);
    BRepGProp::SurfaceProperties(shape, area);
    found.volume = volume.Mass();
    found.area = area.Mass();
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        ++found.faces;
        switch (BRepAdaptor_Surface(TopoDS::Face(faces.Current())).GetType()) {
            case GeomAbs_Plane:
                ++found.planes;
                break;
            case GeomAbs_Cylinder:
            case GeomAbs_Cone:
                ++found.cones;
                break;
            case GeomAbs_Sphere:
                ++found.spheres;
                break;
            default:
                ++found.tori;
                break;
        }
    }
    return found;
}

}  // namespace step
