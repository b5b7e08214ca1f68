// The plain types and macros of the Windows headers that SDK and MFC declarations are written in.
// A private header: plug-in sources get these names through afxwin.h, tchar.h or adesk.h.
// Widths are those of Windows (a LONG has 32 bits) whatever the machine's own long is.
#pragma once

#include <cstddef>
#include <cstdint>

#ifndef TRUE
// A BOOL has 32 bits; anything but 0 is true.
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

// Classes and functions marked for export become visible outside the module; a module is built with
// hidden visibility, as a Windows library is.
#if !defined(_WIN32)
// What stands in brackets behind __declspec, for compilers that write it as attributes.
#define HOST_DECLSPEC_dllexport __attribute__((visibility("default")))
#define HOST_DECLSPEC_dllimport __attribute__((visibility("default")))
#define HOST_DECLSPEC_noreturn __attribute__((noreturn))
#define HOST_DECLSPEC_noinline __attribute__((noinline))
// A hint to Microsoft's compiler alone.
#define HOST_DECLSPEC_novtable
#define HOST_DECLSPEC_selectany __attribute__((weak))
#define HOST_DECLSPEC_align(n) __attribute__((aligned(n)))
#define __declspec(x) HOST_DECLSPEC_##x
// Calling conventions differ on 32-bit Windows only.
#define __stdcall
#define __cdecl
#define HOST_MODULE_LOCAL __attribute__((visibility("hidden")))  // each module has its own
#else
#define HOST_MODULE_LOCAL
#endif

#define CALLBACK __stdcall  // functions that the system calls
#define WINAPI __stdcall    // functions of the system
#define APIENTRY __stdcall
#define PASCAL __stdcall

typedef int BOOL;  // TRUE or FALSE
typedef int INT;
typedef unsigned int UINT;  // 32 bits on both systems
typedef char CHAR;
typedef wchar_t WCHAR;  // 16 bits on Windows only
typedef wchar_t TCHAR;  // there is no narrow build
typedef short SHORT;
typedef unsigned short USHORT;
typedef float FLOAT;
typedef unsigned char BYTE;   // 8 bits
typedef std::uint16_t WORD;   // 16 bits
typedef std::uint32_t DWORD;  // 32 bits
typedef std::int32_t LONG;    // 32 bits, unlike this machine's long
typedef std::uint32_t ULONG;
typedef std::int64_t LONGLONG;
typedef std::uint64_t ULONGLONG;
typedef std::intptr_t INT_PTR;  // numbers as wide as a pointer
typedef std::uintptr_t UINT_PTR;
typedef std::intptr_t LONG_PTR;
typedef std::uintptr_t ULONG_PTR;
typedef std::uintptr_t DWORD_PTR;
typedef UINT_PTR WPARAM;   // a message's first word
typedef LONG_PTR LPARAM;   // its second
typedef LONG_PTR LRESULT;  // its answer
typedef LONG HRESULT;      // below 0: failed
typedef DWORD COLORREF;    // see RGB
typedef WORD ATOM;

typedef void* LPVOID;         // LP: a pointer to
typedef const void* LPCVOID;  // LPC: to what is not changed
typedef DWORD* LPDWORD;
typedef char* LPSTR;  // narrow text
typedef const char* LPCSTR;
typedef wchar_t* LPWSTR;  // wide text
typedef const wchar_t* LPCWSTR;
typedef TCHAR* LPTSTR;  // the build's own text
typedef const TCHAR* LPCTSTR;

// A type of handle that is no other one's; a number for the host, never a pointer to follow.
#define DECLARE_HANDLE(name) \
    struct name##__;         \
    typedef struct name##__* name
typedef void* HANDLE;  // of anything
typedef void* HGDIOBJ;
DECLARE_HANDLE(HWND);       // a window
DECLARE_HANDLE(HINSTANCE);  // a module
typedef HINSTANCE HMODULE;
DECLARE_HANDLE(HDC);    // something to draw on: only named here
DECLARE_HANDLE(HFONT);  // a font
DECLARE_HANDLE(HPEN);   // these are only named here
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HRGN);
DECLARE_HANDLE(HICON);
typedef HICON HCURSOR;
DECLARE_HANDLE(HMENU);
DECLARE_HANDLE(HRSRC);

// Parts of a word, and words of parts; numbers below 0 keep their bits.
#define LOWORD(l) (static_cast<WORD>(static_cast<DWORD_PTR>(l) & 0xffffu))
#define HIWORD(l) (static_cast<WORD>((static_cast<DWORD_PTR>(l) >> 16) & 0xffffu))
#define LOBYTE(w) (static_cast<BYTE>(static_cast<DWORD_PTR>(w) & 0xffu))
#define HIBYTE(w) (static_cast<BYTE>((static_cast<DWORD_PTR>(w) >> 8) & 0xffu))
#define MAKELONG(low, high) \
    (static_cast<LONG>(static_cast<DWORD>(LOWORD(low)) | (static_cast<DWORD>(LOWORD(high)) << 16)))
#define MAKEWPARAM(low, high) (static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
#define MAKELPARAM(low, high) (static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high))))
// 0x00BBGGRR.
#define RGB(r, g, b)                                                         \
    (static_cast<COLORREF>(static_cast<BYTE>(r) |                            \
                           (static_cast<DWORD>(static_cast<BYTE>(g)) << 8) | \
                           (static_cast<DWORD>(static_cast<BYTE>(b)) << 16)))

// Why DllMain is called; this host calls none.
#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3
#define MAX_PATH 260  // elements of a path's buffer; longer ones are refused
#define UNREFERENCED_PARAMETER(p) (void)(p)

#define afx_msg  // marks handlers for the reader
// Marks what other modules may use.
#define AFX_EXT_CLASS __declspec(dllexport)
#define AFX_EXT_API __declspec(dllexport)
#define AFX_EXT_DATA __declspec(dllexport)
