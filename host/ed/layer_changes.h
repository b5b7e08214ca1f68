// One change to a layer, by the words of the command LAYER.
#pragma once

#include <functional>
#include <string>

#include "dbmain.h"
#include "dbsymtb.h"

namespace host {

using LayerChange = std::function<Acad::ErrorStatus(AcDbLayerTableRecord&)>;

// What an option does: ON, OFF, FREEZE, THAW, LOCK, UNLOCK; COLOR, LTYPE and LWEIGHT with a value.
// reason  why there is no such change: the result is empty then
LayerChange MakeLayerChange(AcDbDatabase& database, const std::wstring& option,
                            const std::wstring& value, std::wstring& reason);

// "turned off", "changed"; empty for a word that is no option.
std::wstring LayerChangeText(const std::wstring& option);
// Whether the option wants a value.
bool HasLayerValue(const std::wstring& option);

// Changes one layer of the drawing, also SET: makes it the current one. For panels, while a command
// waits for an answer as well; in the application context, under a lock that is taken here.
// result  false with a reason
bool ChangeLayer(AcDbDatabase& database, const std::wstring& layer, const std::wstring& option,
                 const std::wstring& value, std::wstring& reason);

}  // namespace host
