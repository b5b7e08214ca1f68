#!/usr/bin/env python3
"""Compiles every plug-in source with the true headers of Windows in front of everything.

They come with the cross compiler, and bring what the host's own headers cannot: macros such as small,
near, interface, GetObject or LoadString, and Windows' own types, which win over the host's. Nothing is
linked. Without the cross compiler there is nothing to do, and the test says so.
"""
import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
COMPILER = "x86_64-w64-mingw32-g++-posix"
SKIPPED = 77
FOLDERS = ["plugin/util", "plugin/engine", "plugin/drawn", "plugin/outline", "plugin/batch", "plugin/ui",
           "plugin/entry", "plugin/ui/res"]
FLAGS = (["-std=c++17", "-Wall", "-Wextra", "-Wshadow", "-Werror", "-DUNICODE", "-D_UNICODE",
          "-DWINVER=0x0A00", "-D_WIN32_WINNT=0x0A00", f"-I{ROOT}"]
         + [f"-I{ROOT / folder}" for folder in FOLDERS])
# The true headers; MFC takes GetCurrentTime back, since CTime has a function of the name. The cross
# compiler's leave out three macros that Microsoft's have; its standard headers, which do not bear
# them, come before.
TRUE = """#pragma once
#include <bits/stdc++.h>
#include <winsock2.h>
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <ole2.h>
#include <shlobj.h>
#include <tchar.h>
#undef GetCurrentTime
#undef small
#undef min
#undef max
#define small char
#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))
"""
# What the host's headers bring besides Windows' own names.
MORE = """#define HOST_MODULE_LOCAL
#define HOST_WIDEN(text) L##text
#define afx_msg
#define AFX_EXT_CLASS __declspec(dllexport)
#define AFX_EXT_API __declspec(dllexport)
#define AFX_EXT_DATA __declspec(dllexport)
"""
# The host's headers of Windows' own names, in whose place the true ones come.
REPLACED = ("host_wintypes.h", "host_winconst.h", "host_winuser.h", "tchar.h", "shlobj.h")


def make_headers(folder):
    """The host's headers with the true ones of Windows in place of their stand-ins."""
    headers = folder / "headers"
    shutil.copytree(ROOT / "host/include", headers)
    (headers / "true_windows.h").write_text(TRUE + MORE, encoding="utf-8")
    for name in REPLACED:
        (headers / name).write_text('#pragma once\n#include "true_windows.h"\n', encoding="utf-8")
    # Last, so that <tchar.h> and <shlobj.h> are the true ones.
    return ["-idirafter", str(headers)]


# A name of each kind that only the true headers make something else.
PROBE = """
#if !defined(small) || !defined(min) || !defined(hyper) || !defined(near) || !defined(interface) || !defined(GetObject)
#error "the true headers are not in front"
#endif
"""


def compile_one(source, flags, prefix):
    run = subprocess.run([COMPILER, *flags, "-fsyntax-only", "-include", str(prefix), str(source)],
                         capture_output=True, text=True, check=False)
    return source, run.returncode, run.stderr


def main():
    if shutil.which(COMPILER) is None:
        print(f"{COMPILER} is not installed: scripts/bootstrap --windows")
        return SKIPPED
    asked = [pathlib.Path(name).resolve() for name in sys.argv[1:]]
    sources = asked or sorted((ROOT / "plugin").rglob("*.cpp"))
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        # Once for all sources: reading these headers takes longer than the sources themselves.
        flags = FLAGS + make_headers(pathlib.Path(folder))
        prefix = pathlib.Path(folder) / "windows_first.h"
        prefix.write_text('#include "true_windows.h"\n#include "StdAfx.h"\n', encoding="utf-8")
        subprocess.run([COMPILER, *flags, "-x", "c++-header", str(prefix)], check=True)
        probe = pathlib.Path(folder) / "probe.cpp"
        probe.write_text(PROBE, encoding="utf-8")
        with concurrent.futures.ThreadPoolExecutor(min(4, os.cpu_count() or 1)) as pool:
            for source, status, text in pool.map(lambda s: compile_one(s, flags, prefix), [probe, *sources]):
                if status != 0:
                    failed += 1
                    print(f"{source}:\n{text}")
    print(f"{len(sources)} sources, {failed} do not compile with the true headers of Windows")
    return 1 if failed or (not asked and len(sources) < 50) else 0


if __name__ == "__main__":
    sys.exit(main())
