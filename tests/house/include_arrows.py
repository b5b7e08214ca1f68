"""Checks who includes whom: each room may include itself and what its row names, and nothing else.

Reads the quoted and bracketed includes of every tracked or new source. A row is as tight as the
includes of the day: an arrow that no include goes along any more is a fault too. The plug-in's rooms
may use headers under the SDK's and MFC's names (host/include), the standard library and one another
downwards; nothing in host/ may know the plug-in; libraries from outside are for the rooms that wrap
them.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Room: why it sees what it sees, and what that is.
ROOMS = {
    "plane": (
        "geometry of the plane: numbers and the standard library, so that every host can use it",
        ""),
    # What AutoCAD loads. Lower rooms know nothing of upper ones, so that each can be tested and
    # used by itself.
    "plugin/util": (
        "what any plug-in could use: the SDK, and the plane's numbers",
        "plane host/include"),
    "plugin/drawn": (
        "what a drawing shows, as curves of the plane; computes no envelope",
        "plane plugin/util"),
    "plugin/outline": (
        "the envelope by rules: curves of the plane, and what is picked read as such",
        "plane plugin/util plugin/drawn host/include"),
    "plugin/engine": (
        "envelopes of picked entities; knows neither tasks nor windows. The headers that other "
        "modules compile with name MFC and the SDK themselves",
        "plane plugin/util plugin/outline host/include"),
    "plugin/batch": (
        "tasks and tools around the engine, and their form in the drawing",
        "plugin/util plugin/engine"),
    "plugin/ui": (
        "dialogs over all of that; the resource identifiers are the SDK's way",
        "plugin/util plugin/engine plugin/batch host/include"),
    "plugin/entry": (
        "commands and reactors: where the host calls in",
        "plugin/util plugin/batch plugin/ui host/include"),
    # The host, from the ground up. It knows nothing of what runs in it.
    "host/include": (
        "the SDK's and MFC's names; one class shares its inside with the geometry that fills it",
        "host/ge"),
    "host/base": (
        "strings, formats, assertions: needs the names only, and pi",
        "plane host/include"),
    "host/sys": (
        "the operating system, kept away from everybody else",
        "host/base"),
    "host/geos": (
        "a library from outside that is loaded when it is called, and what is made with it of curves",
        "plane"),
    "host/ge": (
        "geometry classes: numbers, no drawing",
        "host/include host/base"),
    "host/db": (
        "the drawing in memory",
        "host/include host/base"),
    "host/dxf": (
        "the drawing in a file; fills and reads the database from inside",
        "host/include host/base host/sys host/db"),
    "host/dwg": (
        "drawings of the other kind, by a converter that runs as a process of its own",
        "host/sys host/dxf"),
    "host/solid": (
        "solids and their files; knows entities, neither documents nor drawing files",
        "plane host/include host/base host/sys host/db"),
    "host/ed": (
        "documents, commands, tracing: opens files and installs the modeller",
        "plane host/include host/base host/sys host/geos host/db host/dwg host/solid"),
    "host/mfc": (
        "windows and dialogs; has nothing to do with drawings",
        "host/include host/base host/sys"),
    # What the programs are made of.
    "product/base": (
        "a drawing's file, its texts and rectangles: what every other room here needs",
        "plane plugin/util host/include host/dxf host/dwg"),
    "product/detect": (
        "finds the tools of a sheet; knows no envelope, and takes the drawing from the one walk",
        "product/base plane plugin/util plugin/drawn host/include host/base"),
    "product/check": (
        "looks at the drawing by means of its own; shares no more with the engine than the record "
        "of what it did and the names of its layers",
        "product/base product/detect plane plugin/util plugin/drawn plugin/outline plugin/engine "
        "host/include host/geos"),
    "product/parts": (
        "profiles of solids: tip, cutting part and rest, figures; knows neither drawing nor engine",
        "plane product/base host/solid"),
    "product/picture": (
        "drawings and solids as pictures; what was computed is handed to it",
        "plane product/base plugin/util plugin/drawn host/include host/solid"),
    "product/tool": (
        "runs tools: the only room that drives engine, checks and pictures together",
        "product/base product/detect product/check product/parts product/picture plane plugin/util plugin/drawn "
        "plugin/outline plugin/engine plugin/batch host/include host/db host/ed host/solid host/sys"),
    "product/report": (
        "words and figures for what the other rooms found; runs nothing",
        "product/base product/check product/picture product/tool plugin/util plugin/drawn "
        "plugin/batch host/solid host/sys"),
    # The programs.
    "apps/qzenvelope": (
        "options, workers and progress around requests; the plug-in's free operations for progress "
        "and file names are answered here, and libraries are loaded before workers come into being",
        "product/base product/check product/tool product/report plugin/util plugin/batch host/base host/sys "
        "host/geos host/dwg host/solid"),
    "apps/qzhost": (
        "the host as a program: the plug-in comes as a module like any other, and only its controls' "
        "numbers are known; previews, findings and solids are worked out by the product's rooms",
        "product/base product/check product/tool product/report plugin/util "
        "plugin/batch plugin/ui host/include host/base host/sys host/db host/dxf host/dwg host/ed host/solid "
        "host/mfc"),
}
PLUGIN = [room for room in ROOMS if room.startswith("plugin/")]
# What AutoCAD's module is made of.
PORTABLE = PLUGIN + ["plane"]

# Libraries from outside, by the names of their headers, and the rooms that wrap them.
OUTSIDE = [
    (r"Q[A-Z]\w+", ["host/mfc", "apps/qzhost"]),
    (r"\w+\.hxx|png\.h", ["host/solid"]),
    (r"geos_c\.h", ["host/geos"]),
    (r"iconv\.h", ["host/sys"]),
    (r"libintl\.h", ["product/base"]),
    (r"CLI/.*", ["apps/qzenvelope", "apps/qzhost"]),
    (r"nlohmann/.*", ["product/report", "apps/qzenvelope"]),
    (r"(sys/.*|unistd|fcntl|dlfcn|link|poll|sched|glob|windows|io|share)(\.h)?",
     ["host/sys", "host/geos", "host/solid", "host/ed", "host/mfc", "apps/qzenvelope"]),
]
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


def room_of(path):
    parts = path.split("/")
    return "/".join(parts[:2]) if parts[0] in ("host", "plugin", "product", "apps") else parts[0]


def resolve(path, name, files):
    """The repository file that an include of `name` in `path` means, or None."""
    here = str(pathlib.PurePosixPath(path).parent / name)
    near = [folder + "/" + name for folder in ["host/include"] + PLUGIN]
    for candidate in [here, name] + near:
        if candidate in files:
            return candidate
    return None


def outside_faults(room, name):
    for pattern, rooms in OUTSIDE:
        if re.fullmatch(pattern, name) and room not in rooms:
            yield f"<{name}> is for {' and '.join(rooms)}"
    if room in PORTABLE and name not in STANDARD:
        yield f"<{name}> is neither the standard library's nor the SDK's"


def faults_of(path, files, used):
    text = (ROOT / path).read_text(encoding="utf-8")
    room = room_of(path)
    if room not in ROOMS:
        # Tests and benches may include everything; anything else needs a row.
        known = room in ("tests", "bench", "fuzz")
        return [] if known else [f"the room {room} has no row in tests/house/include_arrows.py"]
    faults = []
    if room in PORTABLE and SWITCH.search(text):
        faults.append("a compiler or system switch in a folder that AutoCAD's module takes")
    if room in PLUGIN and path.endswith(".cpp"):
        first = INCLUDE.search(text)
        if not first or first.group(2) != "StdAfx.h":
            faults.append('its first include is not "StdAfx.h"')
    allowed = ROOMS[room][1].split()
    for bracket, name in INCLUDE.findall(text):
        target = resolve(path, name, files)
        if target is None:
            faults.extend(outside_faults(room, name))
            continue
        to = room_of(target)
        used.add((room, to))
        if to != room and to not in allowed:
            faults.append(f"includes {target}")
    return faults


def slack(used):
    """Arrows that a row allows and no include goes along."""
    for room, (_, allowed) in ROOMS.items():
        for to in allowed.split():
            if (room, to) not in used:
                yield room, f"its row allows {to}, which it does not include any more"


def main():
    files = set(sources())
    used = set()
    bad = [(p, f) for p in sorted(files) for f in faults_of(p, files, used)]
    bad += slack(used)
    for path, fault in bad:
        print(f"{path}: {fault}")
    if not files:
        print("no sources found")
        return 1
    print(f"{len(files)} files read, {len(bad)} wrong arrows")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
