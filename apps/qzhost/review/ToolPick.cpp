#include "apps/qzhost/review/ToolPick.h"

#include <algorithm>

#include "host/base/plain_number.h"
#include "host/mfc/dialog_probe.h"
#include "plugin/ui/res/resource.h"

namespace app {
namespace {

// Both dialogs have the same controls under the same numbers.
struct Reader {
    int dialog;
    bool isGood = true;

    std::wstring Text(int control) {
        std::wstring text;
        if (!host::GetControl(dialog, control, text)) isGood = false;
        return text;
    }
    double Number(int control) {
        double number = 0.0;
        if (!host::ReadWholeNumber(Text(control), number)) isGood = false;
        return number;
    }
    bool Check(int control) { return Text(control) == L"1"; }
};

bool IsOpen(int dialog) {
    const std::vector<host::LiveDialog> dialogs = host::LiveDialogs();
    return std::any_of(dialogs.begin(), dialogs.end(),
                       [dialog](const host::LiveDialog& live) { return live.id == dialog; });
}

}  // namespace

bool IsDialogOpen() { return IsOpen(IDD_CAL) || IsOpen(IDD_BULK); }

std::optional<product::ToolParameters> ParametersOfDialog() {
    if (!IsOpen(IDD_PARAMS) && !IsOpen(IDD_CAL)) return {};
    Reader read{IsOpen(IDD_PARAMS) ? IDD_PARAMS : IDD_CAL};
    product::ToolParameters parameters;
    parameters.half = read.Check(IDC_CAL_LOWER) ? product::Half::Lower : product::Half::Upper;
    parameters.includeDashed = !read.Check(IDC_CAL_EXCLUDE_DASHED);
    parameters.verticalEnds = read.Check(IDC_CAL_SIDES_VERTICAL);
    parameters.pointTolerance = read.Number(IDC_CAL_POINT_TOL);
    parameters.lineTolerance = read.Number(IDC_CAL_LINE_TOL);
    parameters.horVerTolerance = read.Number(IDC_CAL_HORVER_TOL);
    parameters.arcPrecision = read.Number(IDC_CAL_ARC_PRECISION);
    parameters.sideLength = read.Number(IDC_CAL_SIDE_LENGTH);
    if (!read.isGood) return {};
    return parameters;
}

}  // namespace app
