#!/usr/bin/env python3
"""What Windows made of the dialogs, held against the resource script.

    dialogs_test.py LISTING RESOURCE_SCRIPT PICTURES VERSION_SCRIPT

LISTING is what show_dialogs printed. The script is read here once more, by other code than the
host's. Pictures are made PNG files, and every text that is shown must have left ink in them.
"""
import pathlib
import re
import struct
import sys
import zlib

CLASSES = {"GROUPBOX": "button", "PUSHBUTTON": "button", "DEFPUSHBUTTON": "button",
           "LTEXT": "static", "EDITTEXT": "edit"}
# The bits that say what a button is.
KINDS = {"GROUPBOX": 7, "PUSHBUTTON": 0, "DEFPUSHBUTTON": 1, "BS_AUTORADIOBUTTON": 9,
         "BS_AUTOCHECKBOX": 3}
WS_VISIBLE, WS_GROUP, WS_TABSTOP, WS_SYSMENU = 0x10000000, 0x20000, 0x10000, 0x80000


def split(arguments):
    """At the commas outside quotes."""
    return [part.strip() for part in re.findall(r'(?:"[^"]*"|[^,"])+', arguments)]


def read_script(path):
    """{number: (caption, [(number, class, text, place, words)])}; words: its style."""
    numbers = {"IDOK": "1"}
    header = (path.parent / "resource.h").read_text(encoding="utf-8")
    numbers.update(re.findall(r"#define (\w+) \(?(-?\d+)\)?", header))

    def number(word):
        return int(numbers.get(word, word))

    dialogs, caption = {}, None
    for line in path.read_text(encoding="utf-8").splitlines():
        if found := re.match(r"(\w+) DIALOGEX", line):
            name = number(found[1])
        elif found := re.match(r'CAPTION "(.*)"', line):
            caption = found[1]
        elif line.startswith("STYLE"):
            style = line
        elif line == "BEGIN":
            dialogs[name] = (caption, style, [])
        elif found := re.match(r"    (\w+) +(.*)", line):
            keyword, parts = found[1], split(found[2])
            text = "" if keyword == "EDITTEXT" else parts.pop(0).strip('"')
            control = number(parts.pop(0))
            kind, words = CLASSES.get(keyword), ""
            if keyword == "CONTROL":
                kind, words = parts.pop(0).strip('"').lower(), parts.pop(0)
            place = tuple(int(part) for part in parts[:4])
            words += " " + " ".join(parts[4:]) + " " + keyword
            dialogs[name][2].append((control, kind, text, place, words))
    return dialogs


def read_version(path):
    """(number, description)"""
    text = path.read_text(encoding="utf-8")
    number = re.search(r"^FILEVERSION +([\d,]+)", text, re.M)[1]
    return number.replace(",", "."), re.search(r'"FileDescription", "(.*)"', text)[1]


def read_listing(path):
    dialogs, units, version = {}, {}, None
    for line in path.read_text(encoding="utf-8").replace("\r", "").splitlines():
        kind, rest = line.split(" ", 1)
        if kind == "units":
            units[name] = tuple(int(part) for part in rest.split(","))
            continue
        parts = rest.split("|")
        if kind == "version":
            version = tuple(parts)
        elif kind == "dialog":
            name = int(parts[0])
            dialogs[name] = (parts[3], int(parts[2], 16), [])
        else:
            place = tuple(int(part) for part in parts[2].split(","))
            dialogs[name][2].append((int(parts[0]), parts[1].lower(), parts[4], place,
                                     int(parts[3], 16)))
    return dialogs, units, version


def pixels(value, unit, per):
    """As the system rounds dialog units."""
    return (value * unit * 2 + per) // (per * 2)


def check_control(wanted, found, units):
    control, kind, text, (x, y, w, h), words = wanted
    name = f"control {control} '{text}'"
    if (control, kind, text) != found[:3]:
        return [f"{name} of {kind}: found {found}"]
    faults = []
    ux, uy = units[0] // 100, units[1] // 100
    place = (pixels(x, ux, 4), pixels(y, uy, 8), pixels(w, ux, 4), pixels(h, uy, 8))
    if place != found[3]:
        faults.append(f"{name}: {place} expected, {found[3]} found")
    style = found[4]
    if bool(style & WS_VISIBLE) == ("NOT WS_VISIBLE" in words):
        faults.append(f"{name}: shown and should not be, or the reverse")
    for word, bit in (("WS_GROUP", WS_GROUP), ("WS_TABSTOP", WS_TABSTOP)):
        if word in words and not style & bit:
            faults.append(f"{name}: no {word}")
    for word, value in KINDS.items():
        if re.search(rf"\b{word}\b", words) and style & 0xF != value:
            faults.append(f"{name}: button of kind {style & 0xF}, not {value}")
    return faults


def read_picture(path):
    """Rows of (r, g, b) bytes, from the top."""
    data = path.read_bytes()
    offset, = struct.unpack_from("<I", data, 10)
    width, height = struct.unpack_from("<ii", data, 18)
    rows = []
    for y in reversed(range(height)):
        row = data[offset + y * width * 4:offset + (y + 1) * width * 4]
        rgb = bytearray(width * 3)
        rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
        rows.append(bytes(rgb))
    return rows


def write_png(path, rows):
    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body +
                struct.pack(">I", zlib.crc32(kind + body)))
    head = struct.pack(">IIBBBBB", len(rows[0]) // 3, len(rows), 8, 2, 0, 0, 0)
    body = zlib.compress(b"".join(b"\0" + row for row in rows))
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", body) +
                     chunk(b"IEND", b""))


def has_ink(rows, place, border):
    """Whether there are dark and light points within the place."""
    x, y, w, h = place
    x, y = x + border[0], y + border[1]
    dark = sum(1 for row in rows[y + 2:y + h - 2] for i in range((x + 4) * 3, (x + w - 4) * 3, 3)
               if row[i] < 96)
    return dark >= 8


def main():
    listing, script, folder = (pathlib.Path(argument) for argument in sys.argv[1:4])
    wanted, (found, units, version) = read_script(script), read_listing(listing)
    faults, controls = [], 0
    if version != read_version(pathlib.Path(sys.argv[4])):
        faults.append(f"version {version} in the module")
    if sorted(wanted) != sorted(found):
        faults.append(f"dialogs {sorted(wanted)} in the script, {sorted(found)} shown")
    for name in sorted(set(wanted) & set(found)):
        caption, style, expected = wanted[name]
        if caption != found[name][0]:
            faults.append(f"dialog {name}: caption '{found[name][0]}'")
        if ("WS_SYSMENU" in style) != bool(found[name][1] & WS_SYSMENU):
            faults.append(f"dialog {name}: a close box too many or too few")
        if len(expected) != len(found[name][2]):
            faults.append(f"dialog {name}: {len(expected)} controls in the script, "
                          f"{len(found[name][2])} made")
        rows = read_picture(folder / f"{name}.bmp")
        write_png(folder / f"{name}.png", rows)
        # Frame and caption of the window lie around what the controls' places count from.
        border = (3, 22)
        for want, have in zip(expected, found[name][2]):
            controls += 1
            faults += [f"dialog {name}, {fault}" for fault in check_control(want, have, units[name])]
            if want[2] and have[4] & WS_VISIBLE and not has_ink(rows, have[3], border):
                faults.append(f"dialog {name}, control {want[0]}: no '{want[2]}' in the picture")
    for fault in faults:
        print(fault)
    print(f"dialogs: {len(found)} made, {controls} controls as the script says, "
          f"{len(faults)} faults; pictures in {folder}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
