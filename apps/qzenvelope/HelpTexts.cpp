#include "apps/qzenvelope/HelpTexts.h"

#include "product/base/Words.h"

namespace app {

using product::Tr;

const char* MainFooter() {
    return Tr(
        "Examples:\n"
        "  qzenvelope compute tool.dxf -o out.dxf --svg out.svg\n"
        "  qzenvelope batch sheet1.dxf sheet2.dxf --out out --report out/index.html\n"
        "  qzenvelope info tool.dxf --json\n"
        "  qzenvelope copy tool.dxf same.dxf\n"
        "Each command has its own --help.\n"
        "Exit status: 0 done; 1 no envelope, or a file could not be written; 2 usage, or an input\n"
        "that cannot be read; 121 not enough memory, 122 --time-limit; 130 Ctrl-C.");
}

const char* ComputeFooter() {
    return Tr(
        "What is picked: without --window everything in model space. With --window the entities "
        "whose\n"
        "extents lie inside it, in file order, as far as they are displayed: those on layers that "
        "are\n"
        "off or frozen and invisible ones are not. The dimension layer, dashed and centre lines, "
        "texts,\n"
        "dimensions, hatches, circles and ellipses never become part of the envelope, nor do "
        "entities\n"
        "on locked layers; the summary lists what was left out. An envelope of an earlier run "
        "(layer\n"
        "TempEncircleLine) among the picked entities is replaced.\n"
        "Without --centre and --axis the tools of the drawing are found, with their axes and what\n"
        "belongs to them; of several the files are numbered from left to right. --centre means "
        "the\n"
        "horizontal line through that point. The exact envelope changes nothing but the polyline; "
        "after\n"
        "the other algorithms every layer is switched on. Each tool ends with a verdict: sure, or "
        "worth\n"
        "a look and why.\n"
        "For --sat, --step, --stl and --png the envelope is revolved about the axis into a solid; "
        "an\n"
        "envelope that crosses itself or the axis has none, and the message says where.\n"
        "The input is never overwritten unless -o names it; without -o only the summary is "
        "printed.\n"
        "\n"
        "Examples:\n"
        "  qzenvelope compute sheet.dxf -o out.dxf\n"
        "  qzenvelope compute drill.dxf --centre 140,120 --window 50,100,230,140 -o out.dxf\n"
        "  qzenvelope compute mill.dxf --axis -120,60,-120,0 --half lower --svg mill.svg\n"
        "  qzenvelope compute mill.dxf --centre=-120,60 --json\n"
        "  qzenvelope compute mill.dxf --centre -120,60 --sat mill.sat --step mill.stp --png "
        "mill.png\n");
}

const char* BatchFooter() {
    return Tr(
        "The tools are found by their frames: each block reference that carries a tool number\n"
        "(TUKANGE_NAME_IDENTITY, as extended data, Xrecord or attribute) is one tool; what lies "
        "inside\n"
        "the frame is its drawing, and its axis is found there. Without frames the tools are found "
        "as\n"
        "by compute. A drawing that\n"
        "stores a task list is run as stored, with the parameters of each task; --from-frames "
        "passes\n"
        "over it. --tools names the tools of drawings without frames, one a line:\n"
        "  name,centre x,centre y,x1,y1,x2,y2[,drawing]\n"
        "with two corners of the window around the tool; a last column keeps a line to one "
        "drawing.\n"
        "\n"
        "The output folder receives each drawing under its own name, with the envelopes and the "
        "task\n"
        "list, and TOOL.sat for each tool. Tools of one name get numbered files, with a warning. A "
        "tool\n"
        "that fails never stops the rest. Every file is written whole or not at all: a run that "
        "was\n"
        "stopped can simply be started again.\n"
        "\n"
        "Exit status: 0 everything done; 1 a tool or a file failed, the summary says which and "
        "why;\n"
        "2 usage, or a drawing that cannot be read.\n"
        "\n"
        "Examples:\n"
        "  qzenvelope batch sheet.dxf --out out --report out/index.html\n"
        "  qzenvelope batch *.dxf --jobs 2 --step --arc-precision 0.1\n"
        "  qzenvelope batch cutters.dxf --tools cutters.csv\n");
}

}  // namespace app
