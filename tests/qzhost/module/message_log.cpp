// A module that writes down what the host tells it.
#include "arxHeaders.h"

namespace {

struct MessageName {
    AcRx::AppMsgCode code;
    const ACHAR* name;
};
const MessageName kNames[] = {
    {AcRx::kInitAppMsg, ACRX_T("init")},
    {AcRx::kUnloadAppMsg, ACRX_T("unload")},
    {AcRx::kLoadDwgMsg, ACRX_T("load drawing")},
    {AcRx::kUnloadDwgMsg, ACRX_T("unload drawing")},
    {AcRx::kSaveMsg, ACRX_T("save")},
    {AcRx::kPreQuitMsg, ACRX_T("quit")},
};

const ACHAR* TitleOf(AcApDocument* document) {
    return document == nullptr ? ACRX_T("no drawing") : document->docTitle();
}

}  // namespace

extern "C" AFX_EXT_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* id) {
    const ACHAR* name = ACRX_T("something else");
    for (const MessageName& known : kNames)
        if (known.code == message) name = known.name;
    const bool hasDatabase = acdbHostApplicationServices()->workingDatabase() != nullptr;
    acutPrintf(ACRX_T("\nmodule hears: %s, %s, %s\n"), name, TitleOf(acDocManager->curDocument()),
               hasDatabase ? ACRX_T("working database") : ACRX_T("no working database"));
    if (message == AcRx::kInitAppMsg) acrxUnlockApplication(id);
    if (message == AcRx::kSaveMsg &&
        _tcscmp(TitleOf(acDocManager->curDocument()), ACRX_T("ask.dxf")) == 0) {
        // As a module must not ask: whichever window has the keys keeps them.
        ACHAR answer[256];
        static_cast<void>(acedGetString(0, ACRX_T("\nmodule asks: "), answer));
    }
    if (message == AcRx::kLoadDwgMsg) {
        // A drawing beside those that are open, by a database of the module's own.
        AcDbDatabase drawing(false, true);
        acutPrintf(ACRX_T("\nmodule reads a drawing: %s\n"),
                   acadErrorStatusText(drawing.readDwgFile(ACRX_T("end-mill.dxf"))));
    }
    return AcRx::kRetOK;
}
