#!/usr/bin/env python3
"""The plug-in's folders and plane/ use nothing that Microsoft's compiler lacks or takes differently."""
import pathlib
import re
import sys

FOLDERS = ("plane", "plugin")

# What must not stand in code, and why. Comments and texts are taken out before.
NEVER = [(re.compile(pattern), reason) for pattern, reason in [
    (r"__attribute__|__builtin_|__extension__|__typeof__|__PRETTY_FUNCTION__|\btypeof\s*\(",
     "an extension of other compilers"),
    (r"#\s*pragma\s+(GCC|clang)", "a pragma of other compilers"),
    (r"\b(and|or|not|xor|bitand|bitor|compl|and_eq|or_eq|xor_eq|not_eq)\b",
     "an alternative token, which needs another mode"),
    (r"[{,]\s*\.\w+\s*=[^=]", "a designated initialiser, which is none of C++17"),
    (r"\b(M_PI|M_PI_2|M_E|M_SQRT2)\b", "a constant that <cmath> has on demand only"),
    (r"\b(ssize_t|u_int\w*|uint|ulong|off_t|__int128)\b", "a type of other systems"),
    (r"\b(long|unsigned\s+long)\s+(?!long|double)\w", "a long, which has 32 bits there"),
    (r"(?<![\w(])(?:std::)?(?<!_)\b(min|max)\s*\(", "a macro of windows.h; write (std::min)(a, b)"),
    (r"\bcase\s+[^:?]+\.\.\.", "a range of cases"),
    (r"\?\s*:", "a conditional without its middle"),
    (r"#\s*include\s*<(unistd|sys/\w+|strings|dlfcn|pthread|fcntl|dirent|bits/[\w+.]+)[.>h]",
     "a header of other systems"),
    (r"(?<![\w.>])(small|near|far|interface|hyper|pascal)\b(?!\s*\()",
     "a macro of the Windows headers"),
    (r"\bk(Half|Two)?Pi\b", "a constant of the geometry library's own headers"),
    (r"\bAcArray<\s*(AcDbObjectId|AcGePoint3d)\s*>",
     "an array whose typedef may name another allocator; write AcDbObjectIdArray, AcGePoint3dArray"),
    (r"#\s*if(n?def)?\b.*\b(__GNUC__|__clang__|__linux__|_WIN32|_MSC_VER)\b",
     "code for one host only"),
    (r"\b(strcasecmp|snprintf_l|asprintf|strdup|wcsdup|swprintf|usleep)\s*\(",
     "a function of other systems, or of another signature there"),
]]

# Standard names and the headers that have them: Microsoft's headers include fewer others.
HOMES = {
    "algorithm": "sort stable_sort lower_bound upper_bound equal_range find_if find_if_not any_of "
                 "all_of none_of count_if remove_if unique reverse rotate copy_if transform "
                 "min_element max_element nth_element partial_sort is_sorted fill merge binary_search "
                 "partition stable_partition adjacent_find for_each min max minmax clamp",
    "cmath": "sqrt fabs floor ceil sin cos tan atan atan2 hypot isfinite isnan fmod pow lround round "
             "nextafter",
    "numeric": "iota accumulate", "limits": "numeric_limits", "functional": "function",
    "string": "string", "string_view": "string_view", "charconv": "to_chars from_chars",
    "stdexcept": "invalid_argument runtime_error", "vector": "vector", "map": "map multimap", "set": "set multiset", "array": "array",
    "deque": "deque", "memory": "unique_ptr shared_ptr make_unique make_shared weak_ptr",
    "optional": "optional nullopt", "unordered_map": "unordered_map unordered_multimap",
    "unordered_set": "unordered_set", "tuple": "tuple tie", "queue": "queue priority_queue",
    "iterator": "back_inserter", "bitset": "bitset", "random": "mt19937", "chrono": "chrono",
}


def strip(text):
    """Comments and the content of literals become blanks; lines stay."""
    def blank(found):
        token = found[0]
        if token.startswith("/"):
            return re.sub(r"[^\n]", " ", token)
        return token[0] + " " * (len(token) - 2) + token[-1]
    return re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', blank, text,
                  flags=re.DOTALL)


def headers_of(path, root, known):
    """Standard headers that a file includes, by itself or by headers of the plug-in."""
    if path in known:
        return known[path]
    known[path] = set()
    text = path.read_text(encoding="utf-8")
    found = set(re.findall(r"#include <(\w+)>", text))
    for name in re.findall(r'#include "([\w./]+)"', text):
        for folder in [path.parent, root] + [root / "plugin" / f for f in ("util", "drawn", "outline", "engine", "batch", "ui", "entry")]:
            if (folder / name).exists():
                found |= headers_of((folder / name).resolve(), root, known)
                break
    known[path] = found
    return found


def check(path, root, known):
    text = path.read_text(encoding="utf-8")
    code = strip(text)
    for number, (line, raw) in enumerate(zip(code.splitlines(), text.splitlines()), 1):
        if line.lstrip().startswith("#include"):
            line = raw
        for pattern, reason in NEVER:
            if pattern.search(line):
                yield f"{number}: {reason}: {raw.strip()}"
        # A narrow literal is read in the system's own code page.
        for literal in re.finditer(r'(?<![LTu8])(?<!_T\()"((?:\\.|[^"\\])*)"', raw.split("//")[0]):
            if not literal[1].isascii():
                yield f"{number}: letters beyond ASCII in a narrow text: {raw.strip()}"
    have = headers_of(path.resolve(), root, known)
    for header, names in HOMES.items():
        used = [name for name in names.split() if re.search(rf"\bstd::{name}\b", code)]
        if used and header not in have:
            yield f"std::{used[0]} without <{header}>"
    if path.suffix == ".cpp" and root / "plugin" in path.parents:
        first = re.search(r'#include [<"]([^">]+)', text)
        if first is None or first[1] != "StdAfx.h":
            yield "StdAfx.h is not the first include"


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    sources = [path for folder in FOLDERS for path in sorted((root / folder).rglob("*"))
               if path.suffix in (".h", ".cpp") and path.name != "resource.h"]
    known = {}
    faults = [f"{path.relative_to(root)}: {fault}" for path in sources
              for fault in check(path, root, known)]
    print("\n".join(faults))
    print(f"{len(sources)} sources, {len(faults)} faults")
    return 1 if faults or len(sources) < 50 else 0


if __name__ == "__main__":
    sys.exit(main())
