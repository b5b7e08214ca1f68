// The module as Windows loads it: a library of its own, which finds the host in another.
#include <gtest/gtest.h>

#include <cstdlib>

#include "arxHeaders.h"
#include "host/ed/module_table.h"
#include "host/ed/session.h"
#include "host/base/format.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"
#include "host/mfc/module_handle.h"
#include "host/mfc/resources.h"
#include "support/scripted_input.h"

namespace {

using host::Session;

// Vertices of the light polylines on the envelopes' layer; -1 for none.
int VerticesOfTheEnvelope(AcDbDatabase& db) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(acdbSymUtil()->blockModelSpaceId(&db),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* raw = nullptr;
    EXPECT_EQ(Acad::eOk, space->newIterator(raw));
    const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
    int count = -1;
    for (; !it->done(); it->step()) {
        AcDbObjectId id;
        EXPECT_EQ(Acad::eOk, it->getEntityId(id));
        AcDbObjectPointer<AcDbPolyline> polyline(id, AcDb::kForRead);
        AcString layer;
        if (polyline.openStatus() != Acad::eOk || polyline->layer(layer) != Acad::eOk) continue;
        if (layer == _T("TempEncircleLine")) count = static_cast<int>(polyline->numVerts());
    }
    return count;
}

// One process, one module: what happens to it happens in this order.
TEST(Module, ComputesAnEnvelopeByItsDialog) {
    const char* const path = std::getenv("QZ_MODULE");
    ASSERT_NE(nullptr, path) << "QZ_MODULE names the module";
    test::ScriptedInput input;
    host::MakeHostWindows();
    Session& session = Session::Get();
    AcApDocument* const document = session.Open(L"examples/end-mill.dxf");
    ASSERT_NE(nullptr, document) << host::Narrow(input.transcript);
    ASSERT_TRUE(acrxDynamicLinker->loadModule(host::Widen(path).c_str(), true))
        << host::Narrow(input.transcript);
    // It lets itself be unloaded, but stays mapped.
    const host::Module& module = *host::ModuleTable::Get().FindByName(L"QZEncircleLine");
    EXPECT_FALSE(module.isLocked);
    host::SetResourceScript(host::ModuleOfAddress(reinterpret_cast<const void*>(module.entry)),
                            L"plugin/ui/res/QZEncircleLine.rc");

    session.Execute(L"QZTOOLDESIGNProfileAuto3D");
    ASSERT_EQ(1u, host::LiveDialogs().size()) << host::Narrow(input.transcript);
    EXPECT_EQ("包络线计算", host::Narrow(host::LiveDialogs()[0].title));
    host::SelectionAnswer window;
    window.kind = host::SelectionAnswer::kWindow;
    window.corner1.set(60, 95, 0);
    window.corner2.set(195, 155, 0);
    input.selections.push_back(window);
    input.GivePoint(100, 125);
    constexpr int kDialog = 186, kSelectTool = 1021;
    const host::ProbeResult pressed = host::PressControl(kDialog, kSelectTool);
    EXPECT_TRUE(pressed) << host::Narrow(pressed.reason);
    EXPECT_GT(VerticesOfTheEnvelope(*document->database()), 10) << host::Narrow(input.transcript);
    EXPECT_TRUE(host::CloseDialog(kDialog));
    EXPECT_TRUE(host::LiveDialogs().empty());
    session.CloseAll();
    host::CloseHostWindows();
}

}  // namespace
