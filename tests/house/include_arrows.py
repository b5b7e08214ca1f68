"""Checks who includes whom: each folder may include only itself and what lies below it.

Reads the quoted and bracketed includes of every tracked or new source. plane/ may use the standard
library alone; the plug-in's folders that, plane/, headers under the SDK's and MFC's names
(host/include) and one another downwards; nothing in host/ may know the plug-in; GUI, modelling and
system headers are for the folders that wrap them.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PLUGIN = ["plugin/util", "plugin/engine", "plugin/batch", "plugin/ui", "plugin/entry"]  # lowest first
HOST = {
    "host/base": ["host/base"],
    "host/sys": ["host/base", "host/sys"],
    "host/ge": ["host/base", "host/ge"],
    "host/db": ["host/base", "host/sys", "host/ge", "host/db"],
    "host/dxf": ["host/base", "host/sys", "host/ge", "host/db", "host/dxf"],
    "host/solid": ["plane", "host/base", "host/sys", "host/ge", "host/db", "host/solid"],
    "host/ed": ["plane", "host/base", "host/sys", "host/ge", "host/db", "host/dxf", "host/solid", "host/ed"],
    "host/mfc": ["host/base", "host/sys", "host/ge", "host/db", "host/dxf", "host/solid", "host/ed",
                 "host/mfc"],
}
STANDARD = set(
    """algorithm array atomic cassert cctype cerrno cfloat charconv chrono climits clocale cmath
    condition_variable cstdarg cstddef cstdint cstdio cstdlib cstring ctime cwchar cwctype deque
    exception fstream functional initializer_list iomanip iosfwd iostream istream iterator limits
    list locale map memory mutex new numeric optional ostream queue random ratio regex set sstream
    stack stdexcept streambuf string string_view system_error thread tuple type_traits typeindex
    typeinfo unordered_map unordered_set utility variant vector""".split()
)
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)
SWITCH = re.compile(r"^\s*#\s*(if|ifdef|ifndef|elif)\b.*(_WIN32|__linux__|__GNUC__|_MSC_VER)", re.M)


def sources():
    listed = subprocess.run(
        ["git", "ls-files", "-co", "--exclude-standard", "*.h", "*.cpp"],
        cwd=ROOT, check=True, capture_output=True, text=True).stdout.split()
    return [p for p in listed if (ROOT / p).exists()]


def folder_of(path):
    parts = path.split("/")
    return "/".join(parts[:2]) if parts[0] in ("host", "plugin") else parts[0]


def resolve(path, name, files):
    """The repository file that an include of `name` in `path` means, or None."""
    here = str(pathlib.PurePosixPath(path).parent / name)
    near = [folder + "/" + name for folder in ["host/include"] + PLUGIN]
    for candidate in [here, name] + near:
        if candidate in files:
            return candidate
    return None


def faults_of(path, files):
    text = (ROOT / path).read_text(encoding="utf-8")
    folder = folder_of(path)
    faults = []
    if folder in PLUGIN + ["plane"] and SWITCH.search(text):
        faults.append("a compiler or system switch in a folder that AutoCAD's module takes")
    if folder in PLUGIN and path.endswith(".cpp"):
        first = INCLUDE.search(text)
        if not first or first.group(2) != "StdAfx.h":
            faults.append('its first include is not "StdAfx.h"')
    for bracket, name in INCLUDE.findall(text):
        target = resolve(path, name, files)
        if target is None:
            if folder in PLUGIN + ["plane"] and name not in STANDARD:
                faults.append(f"<{name}> is neither the standard library's nor the SDK's")
            if folder == "host/include" and name.startswith("Q"):
                faults.append(f"<{name}>: a GUI header under an SDK header")
            continue
        to = folder_of(target)
        if folder in PLUGIN:
            allowed = PLUGIN[: PLUGIN.index(folder) + 1] + ["plane", "host/include"]
        elif folder == "plane":
            allowed = ["plane"]
        elif folder == "host/include":
            allowed = ["host/include", "host/base", "host/ge", "host/db", "host/ed", "host/mfc", "host/solid"]
        elif folder in HOST:
            allowed = HOST[folder] + ["host/include"]
        else:
            continue  # apps, tests and benches may include everything
        if to not in allowed:
            faults.append(f"includes {target}")
    return faults


def main():
    files = set(sources())
    bad = [(p, f) for p in sorted(files) for f in faults_of(p, files)]
    for path, fault in bad:
        print(f"{path}: {fault}")
    if not files:
        print("no sources found")
        return 1
    print(f"{len(files)} files read, {len(bad)} wrong arrows")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
