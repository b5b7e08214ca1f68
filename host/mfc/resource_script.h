// Resource scripts: the text that the Windows build compiles, read at run time.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "afxwin.h"

namespace host {

// One control of a dialog, as the script has it.
struct ControlTemplate {
    std::wstring windowClass;  // lower case: "button", "edit", "static", "syslistview32" ...
    std::wstring text;
    int id = 0;
    DWORD style = 0;
    DWORD exStyle = 0;
    RECT place = {};  // dialog units
    int line = 0;     // in the script
};

// One dialog. Dialog units become pixels by the font: four across are a letter's mean width, eight
// down its height.
struct DialogTemplate {
    int id = 0;       // as code knows it
    RECT place = {};  // dialog units
    DWORD style = 0;
    DWORD exStyle = 0;
    std::wstring caption;   // title
    double fontPoints = 8;  // the display's own font is shown
    std::wstring fontFace = L"System";
    int fontWeight = FW_NORMAL;
    bool isItalic = false;
    std::vector<ControlTemplate> controls;
    int line = 0;
};

// What one module brings along.
struct ResourceScript {
    std::map<int, DialogTemplate> dialogs;
    std::map<UINT, std::wstring> strings;  // by number, for CString::LoadString
};

// What is wrong and where: "QZ.rc(12): ..."; empty when nothing is.
typedef std::wstring ScriptFault;

// The text of a file that the script includes, by its name as written; nothing when there is none.
typedef std::function<std::optional<std::wstring>(const std::wstring& name)> IncludeReader;

// Reads DIALOG, DIALOGEX and STRINGTABLE resources. The preprocessor knows #include, #define,
// #undef, the conditionals, #pragma; the headers of Windows count as read. Everything else is a
// fault, so that a slip does not silently cost a control. On a fault out is unchanged.
//
// name  of the script, for messages
ScriptFault ParseResourceScript(const std::wstring& text, const std::wstring& name,
                                const IncludeReader& includes, ResourceScript& out);

// Reads a file: UTF-16 with a byte-order mark, or UTF-8 (which the script has to declare by
// #pragma code_page(65001) when it holds anything but ASCII). Included files lie beside it.
ScriptFault ReadResourceScript(const std::wstring& path, ResourceScript& out);

}  // namespace host
