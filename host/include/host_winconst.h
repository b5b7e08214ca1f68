// Numbers of the Windows headers that dialogs and their resource scripts use: messages, styles,
// commands, keys. Public values of the platform; a private header, reached through afxwin.h. Styles
// marked "no effect" may stand in a resource script: they are read, kept, and shown like none.
#pragma once

// Windows
#define WS_OVERLAPPED 0x00000000u    // no effect
#define WS_POPUP 0x80000000u         // a window of its own
#define WS_CHILD 0x40000000u         // lies in another one
#define WS_MINIMIZE 0x20000000u      // no effect
#define WS_VISIBLE 0x10000000u       // shown from the beginning
#define WS_DISABLED 0x08000000u      // takes no input
#define WS_CLIPSIBLINGS 0x04000000u  // no effect
#define WS_CLIPCHILDREN 0x02000000u  // no effect
#define WS_MAXIMIZE 0x01000000u      // no effect
#define WS_CAPTION 0x00C00000u       // has a title
#define WS_BORDER 0x00800000u        // has a line around it
#define WS_DLGFRAME 0x00400000u      // no effect
#define WS_VSCROLL 0x00200000u       // no effect
#define WS_HSCROLL 0x00100000u       // no effect
#define WS_SYSMENU 0x00080000u       // can be closed by its frame
#define WS_THICKFRAME 0x00040000u    // no effect
#define WS_GROUP 0x00020000u         // the first of a group: arrows stay in it
#define WS_TABSTOP 0x00010000u       // Tab comes to it
#define WS_MINIMIZEBOX 0x00020000u   // no effect
#define WS_MAXIMIZEBOX 0x00010000u   // no effect

#define WS_EX_DLGMODALFRAME 0x00000001u  // no effect
#define WS_EX_TOPMOST 0x00000008u        // no effect
#define WS_EX_TRANSPARENT 0x00000020u    // no effect
#define WS_EX_TOOLWINDOW 0x00000080u     // no effect
#define WS_EX_WINDOWEDGE 0x00000100u     // no effect
#define WS_EX_CLIENTEDGE 0x00000200u     // sunken edge
#define WS_EX_RIGHT 0x00001000u          // no effect
#define WS_EX_CONTROLPARENT 0x00010000u  // no effect
#define WS_EX_STATICEDGE 0x00020000u     // no effect
#define WS_EX_APPWINDOW 0x00040000u      // no effect

#define DS_SYSMODAL 0x0002u      // no effect
#define DS_3DLOOK 0x0004u        // no effect
#define DS_FIXEDSYS 0x0008u      // no effect
#define DS_NOFAILCREATE 0x0010u  // no effect
#define DS_SETFONT 0x0040u
#define DS_MODALFRAME 0x0080u     // no effect
#define DS_SETFOREGROUND 0x0200u  // no effect
#define DS_CONTROL 0x0400u        // no effect
#define DS_CENTER 0x0800u         // in the middle of its owner
#define DS_CENTERMOUSE 0x1000u    // no effect
#define DS_SHELLFONT (DS_SETFONT | DS_FIXEDSYS)

// Controls
#define BS_PUSHBUTTON 0x0000u     // a push button
#define BS_DEFPUSHBUTTON 0x0001u  // the one that Enter presses
#define BS_CHECKBOX 0x0002u       // the program checks it
#define BS_AUTOCHECKBOX 0x0003u   // a click checks it
#define BS_RADIOBUTTON 0x0004u    // the program checks it
#define BS_3STATE 0x0005u         // with a third state
#define BS_AUTO3STATE 0x0006u
#define BS_GROUPBOX 0x0007u         // a frame with a title
#define BS_AUTORADIOBUTTON 0x0009u  // a click checks it, and clears its group
#define BS_OWNERDRAW 0x000Bu        // no effect
#define BS_TYPEMASK 0x000Fu         // the bits that tell the kind
#define BS_LEFTTEXT 0x0020u         // no effect
#define BS_LEFT 0x0100u             // no effect
#define BS_RIGHT 0x0200u            // no effect
#define BS_CENTER 0x0300u           // no effect
#define BS_TOP 0x0400u              // no effect
#define BS_BOTTOM 0x0800u           // no effect
#define BS_VCENTER 0x0C00u          // no effect
#define BS_MULTILINE 0x2000u        // no effect
#define BS_NOTIFY 0x4000u           // no effect
#define BS_FLAT 0x8000u             // no effect

#define SS_LEFT 0x0000u  // where the text stands
#define SS_CENTER 0x0001u
#define SS_RIGHT 0x0002u
#define SS_ICON 0x0003u        // no effect
#define SS_ETCHEDHORZ 0x0010u  // a line instead of a text
#define SS_ETCHEDVERT 0x0011u
#define SS_ETCHEDFRAME 0x0012u     // no effect
#define SS_LEFTNOWORDWRAP 0x000Cu  // one line, cut at the end
#define SS_TYPEMASK 0x001Fu
#define SS_NOPREFIX 0x0080u  // & is a character
#define SS_NOTIFY 0x0100u    // no effect
#define SS_CENTERIMAGE 0x0200u
#define SS_SUNKEN 0x1000u       // no effect
#define SS_ENDELLIPSIS 0x4000u  // no effect

#define ES_LEFT 0x0000u         // at the left border
#define ES_CENTER 0x0001u       // no effect
#define ES_RIGHT 0x0002u        // no effect
#define ES_MULTILINE 0x0004u    // several lines; Enter stays in it
#define ES_UPPERCASE 0x0008u    // no effect
#define ES_LOWERCASE 0x0010u    // no effect
#define ES_PASSWORD 0x0020u     // no effect
#define ES_AUTOVSCROLL 0x0040u  // no effect
#define ES_AUTOHSCROLL 0x0080u  // no effect
#define ES_NOHIDESEL 0x0100u    // no effect
#define ES_READONLY 0x0800u     // shows, and takes no typing
#define ES_WANTRETURN 0x1000u   // Enter begins a line
#define ES_NUMBER 0x2000u       // no effect

#define PBS_SMOOTH 0x01u    // no effect
#define PBS_VERTICAL 0x04u  // no effect

#define LVS_REPORT 0x0001u
#define LVS_SINGLESEL 0x0004u            // one row at most
#define LVS_SHOWSELALWAYS 0x0008u        // no effect
#define LVS_SORTASCENDING 0x0010u        // no effect
#define LVS_NOSORTHEADER 0x8000u         // no effect
#define LVS_NOCOLUMNHEADER 0x4000u       // no effect
#define LVS_ALIGNLEFT 0x0800u            // no effect
#define LVS_EX_GRIDLINES 0x0001u         // lines between the cells
#define LVS_EX_CHECKBOXES 0x0004u        // no effect
#define LVS_EX_FULLROWSELECT 0x0020u     // no effect
#define LVS_EX_DOUBLEBUFFER 0x00010000u  // no effect
#define LVCFMT_LEFT 0                    // where a column's texts stand
#define LVCFMT_RIGHT 1                   // no effect
#define LVCFMT_CENTER 2                  // no effect
#define LVIS_FOCUSED 0x0001u             // the row that keys move from
#define LVIS_SELECTED 0x0002u            // a picked row
#define LVIF_TEXT 0x0001u
#define LVIF_PARAM 0x0004u
#define LVIF_STATE 0x0008u  // the change was one of state
#define LVNI_ALL 0x0000
#define LVNI_FOCUSED 0x0001          // look for that row only
#define LVNI_SELECTED 0x0002         // look for picked rows only
#define LVN_ITEMCHANGED (0u - 101u)  // a row's state has changed
#define NM_DBLCLK (0u - 3u)

// Messages
#define WM_NULL 0x0000u
#define WM_CREATE 0x0001u
#define WM_DESTROY 0x0002u  // the window goes; children are still there
#define WM_MOVE 0x0003u
#define WM_SIZE 0x0005u  // its inside has another size
#define WM_ACTIVATE 0x0006u
#define WM_SETFOCUS 0x0007u   // keys come to it from now on
#define WM_KILLFOCUS 0x0008u  // and no longer
#define WM_ENABLE 0x000Au     // takes input, or no longer
#define WM_SETTEXT 0x000Cu    // another title or text
#define WM_GETTEXT 0x000Du
#define WM_GETTEXTLENGTH 0x000Eu
#define WM_CLOSE 0x0010u       // the user wants it closed
#define WM_QUIT 0x0012u        // ends a message loop
#define WM_SHOWWINDOW 0x0018u  // shown or hidden
#define WM_GETMINMAXINFO 0x0024u
#define WM_SETFONT 0x0030u  // another font
#define WM_GETFONT 0x0031u
#define WM_NOTIFY 0x004Eu  // a common control tells its parent
#define WM_CONTEXTMENU 0x007Bu
#define WM_NCDESTROY 0x0082u   // the last message
#define WM_GETDLGCODE 0x0087u  // which keys a control wants itself
#define WM_KEYFIRST 0x0100u
#define WM_KEYDOWN 0x0100u  // a key went down
#define WM_CHAR 0x0102u
#define WM_KEYLAST 0x0109u
#define WM_INITDIALOG 0x0110u  // all controls are there
#define WM_COMMAND 0x0111u     // a control tells its parent, or a command
#define WM_USER 0x0400u
#define WM_APP 0x8000u  // a program's own from here on

#define BM_GETCHECK 0x00F0u  // what CButton's members send
#define BM_SETCHECK 0x00F1u
#define BM_CLICK 0x00F5u
#define BN_CLICKED 0u      // a button was pressed
#define EM_GETSEL 0x00B0u  // what CEdit's members send
#define EM_SETSEL 0x00B1u
#define EM_SETREADONLY 0x00CFu
#define EN_UPDATE 0x0400u          // the text is about to be shown
#define EN_CHANGE 0x0300u          // the text was changed
#define EN_SETFOCUS 0x0100u        // the edit box has the keys
#define EN_KILLFOCUS 0x0200u       // and no longer
#define DM_GETDEFID (WM_USER + 0)  // the button that Enter presses
#define DM_SETDEFID (WM_USER + 1)
#define DC_HASDEFID 0x534B          // in the upper half of the answer
#define PBM_SETRANGE (WM_USER + 1)  // what CProgressCtrl's members send
#define PBM_SETPOS (WM_USER + 2)
#define PBM_DELTAPOS (WM_USER + 3)
#define PBM_SETSTEP (WM_USER + 4)
#define PBM_STEPIT (WM_USER + 5)
#define PBM_SETRANGE32 (WM_USER + 6)
#define PBM_GETRANGE (WM_USER + 7)
#define PBM_GETPOS (WM_USER + 8)

#define BST_UNCHECKED 0  // states of a button
#define BST_CHECKED 1
#define BST_INDETERMINATE 2

#define DLGC_WANTALLKEYS 0x0004      // Enter and Tab, too
#define DLGC_HASSETSEL 0x0008        // its text is selected as the focus comes
#define DLGC_DEFPUSHBUTTON 0x0010    // it is the one that Enter presses
#define DLGC_UNDEFPUSHBUTTON 0x0020  // it may become that
#define DLGC_RADIOBUTTON 0x0040      // arrows move on within its group
#define DLGC_STATIC 0x0100           // takes no focus
#define DLGC_BUTTON 0x2000           // a key may press it

// Parameters and answers
#define SW_HIDE 0        // no longer shown
#define SW_SHOWNORMAL 1  // shown; so are all other values but SW_HIDE
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_SHOWNA 8
#define SW_RESTORE 9
#define SWP_NOSIZE 0x0001u  // keeps the size
#define SWP_NOMOVE 0x0002u  // keeps the place
#define SWP_NOZORDER 0x0004u
#define SWP_NOACTIVATE 0x0010u
#define SWP_SHOWWINDOW 0x0040u  // shows it
#define SWP_HIDEWINDOW 0x0080u  // hides it
#define MF_STRING 0x0000u
#define MF_GRAYED 0x0001u
#define MF_SEPARATOR 0x0800u
#define TPM_LEFTALIGN 0x0000u
#define TPM_RIGHTBUTTON 0x0002u
#define TPM_NONOTIFY 0x0080u
#define TPM_RETURNCMD 0x0100u
#define PM_NOREMOVE 0x0000u
#define PM_REMOVE 0x0001u  // takes the message out of the queue
#define GW_HWNDNEXT 2u     // the next of the same parent
#define GW_OWNER 4u        // of a top-level window
#define GW_CHILD 5u        // the first one in it

#define IDOK 1  // numbers of buttons, and what dialogs end with
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7

#define MOVEFILE_REPLACE_EXISTING 0x00000001              // a file of the new name goes
#define MOVEFILE_COPY_ALLOWED 0x00000002                  // across file systems by a copy
#define FILE_ATTRIBUTE_DIRECTORY 0x00000010               // a folder
#define FILE_ATTRIBUTE_NORMAL 0x00000080                  // a file
#define INVALID_FILE_ATTRIBUTES (static_cast<DWORD>(-1))  // nothing there

#define MB_OK 0x0000u  // which buttons a message box has
#define MB_OKCANCEL 0x0001u
#define MB_ABORTRETRYIGNORE 0x0002u
#define MB_YESNOCANCEL 0x0003u
#define MB_YESNO 0x0004u
#define MB_RETRYCANCEL 0x0005u
#define MB_TYPEMASK 0x000Fu
#define MB_ICONERROR 0x0010u  // which picture, and so how grave it is
#define MB_ICONSTOP MB_ICONERROR
#define MB_ICONQUESTION 0x0020u
#define MB_ICONWARNING 0x0030u
#define MB_ICONEXCLAMATION MB_ICONWARNING
#define MB_ICONINFORMATION 0x0040u
#define MB_ICONMASK 0x00F0u  // the bits of the picture
#define MB_DEFBUTTON2 0x0100u

#define VK_TAB 0x09  // keys that dialogs act on
#define VK_RETURN 0x0D
#define VK_SHIFT 0x10
#define VK_CONTROL 0x11
#define VK_ESCAPE 0x1B
#define VK_SPACE 0x20
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28

#define FW_NORMAL 400  // weight of letters, 100..900
#define FW_BOLD 700
#define DEFAULT_CHARSET 1  // letters are Unicode whatever stands here
#define GB2312_CHARSET 134
#define LF_FACESIZE 32  // elements of a font's name, with the end mark

#define OFN_OVERWRITEPROMPT 0x00000002u  // asks before a file is overwritten
#define OFN_HIDEREADONLY 0x00000004u     // always so here
#define OFN_NOCHANGEDIR 0x00000008u
#define OFN_PATHMUSTEXIST 0x00000800u
#define OFN_FILEMUSTEXIST 0x00001000u
#define OFN_EXPLORER 0x00080000u

#define GET_MODULE_HANDLE_EX_FLAG_PIN 0x00000001u  // the module stays mapped
#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 0x00000002u
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 0x00000004u  // found by what lies in it
