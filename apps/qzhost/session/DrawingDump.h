// The state of the host as lines of text, for scripts to compare.
#pragma once

#include <string>
#include <vector>

class AcDbDatabase;

namespace app {

using Lines = std::vector<std::wstring>;

struct LayerState {
    std::wstring name;
    std::wstring linetype;
    bool isOff = false;
    bool isFrozen = false;
    bool isLocked = false;
    bool isCurrent = false;
    int colour = 7;   // index
    int weight = -3;  // hundredths of a millimetre; below 0: the usual one
};
// In the order of the table.
std::vector<LayerState> LayersOf(AcDbDatabase& database);
std::wstring Describe(const LayerState& layer);
// The names of the drawing's linetypes that a layer can have.
std::vector<std::wstring> LinetypesOf(AcDbDatabase& database);

// Each layer with what can be switched.
Lines DumpLayers(AcDbDatabase& database);
// Each entity of model space: handle, class, layer, what sets it apart, and its extents to six
// decimals.
Lines DumpEntities(AcDbDatabase& database);
// Each highlighted entity in the same words.
Lines DumpHighlighted();
// Each document by its title; the current one is marked.
Lines DumpDocuments();
// What no command should leave behind: open objects, held locks and selection sets. "none" when
// there is nothing.
Lines DumpLeftovers();
// Each dialog that exists.
Lines DumpDialogs();

}  // namespace app
