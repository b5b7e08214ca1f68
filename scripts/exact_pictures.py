#!/usr/bin/env python3
"""Draws the pictures of docs/exact.md: each small drawing, and what the program makes of it.

usage: scripts/exact_pictures.py PROGRAM [FOLDER]

The outline is filled, what is drawn is black; bridges are red, gaps orange, open ends are ringed, and
the free ends of tails that were cut are crossed. Those that begin with "steps" show what
the steps make of it on the left.
"""

import json
import math
import pathlib
import subprocess
import sys
import tempfile

RULES = {
    "contour": "0,0 0,10 20,10 20,12 60,12 60,0 | -8,0.05 68,0.05 | 20,10 20,17 | 60,12 60,17",
    "profile": "0,0 0,10 20,10 20,6 40,6 50,12 60,12 60,0 | 0,3 60,3 | 25,0 25,6 | 10,8 30,2",
    "free-ends": "0,0 0,10 24,10 | 26,10 50,10 50,0 | 10,4 30,6",
    "bridge-on": "0,0 0,10 18,10 | 20,0 20,10 | 20,6 40,6 40,0",
    "bridge-arc": "0,0 0,10 10,10 | 20,0(0.176326980708464973) 17.660444431,6.427876097 | "
                  "15,8.660254038(0.131652497587395853) 10,10",
    "bridge-ends": "0,0 0,10 22,10 | 25,9 50,9 50,0",
    "bridge-blocked": "0,0 0,10 20,10 | 25,10 50,10 50,0 | 22,14 23,14",
    "wall-missing": "0,0 0,10 20,10 | 20,6 40,6 40,0",
    "overshoot": "0,0 0,10 20.4,10 | 20,10.4 20,6 40,6 40,0",
    "lip": "0,0 0,10 23,10 | 20,10 20,6 40,6 40,12 60,12 60,0",
    "gap": "0,0 0,10 20,10 20,0 | 30,0 30,6 50,6 50,0",
    "face": "0,10 0,5 1,4 30,4 30,0 | 0,10 50,10 50,0",
    "face-deep": "0,10 7,7 0,4 0,0 | 0,10 50,10 50,0",
    "face-free": "0,10 0,6 | 3,6 3,0 | 0,10 50,10 50,0",
    "face-hanging": "0,10 4,5 0,2 | 0,10(-0.2) 4,5 4,9 30,9 30,0",
}
DIFFERENT = {
    "steps-twice": "0,0 0,10 | 0,0 0,10 | 0,10 50,10 | 50,10 50,0 | 50,10 50,0",
    "steps-double-size": "0,0 0,5 20,5 20,10 60,10 60,0",
    "steps-no-face": "0,10 20,10 20,12 60,12 60,0",
    "steps-round": "0,0 0,10 10,10(-0.414213562373095049) 20,20 40,20 40,0",
    "steps-bore": "0,10 0,5 1,4 30,4 30,0 | 0,10 50,10 50,0",
    "steps-taper": "0,0 5,0.2 60,2 60,6 90,6 90,0",
}


def corners(chain):
    for word in chain.split():
        place, _, bulge = word.partition("(")
        x, y = map(float, place.split(","))
        yield x, y, float(bulge.rstrip(")") or 0)


def edges(text):
    for chain in text.split("|"):
        points = list(corners(chain))
        for (x1, y1, bulge), (x2, y2, _) in zip(points, points[1:]):
            yield x1, y1, x2, y2, bulge


def circle(x1, y1, x2, y2, bulge):
    k = (1 - bulge * bulge) / (4 * bulge)
    return (x1 + x2) / 2 - (y2 - y1) * k, (y1 + y2) / 2 + (x2 - x1) * k


def dxf(text):
    lines = ["0", "SECTION", "2", "ENTITIES"]
    for x1, y1, x2, y2, bulge in edges(text):
        if not bulge:
            lines += ["0", "LINE", "8", "0", "10", x1, "20", y1, "11", x2, "21", y2]
            continue
        cx, cy = circle(x1, y1, x2, y2, bulge)
        ends = [math.degrees(math.atan2(y - cy, x - cx)) for x, y in ((x1, y1), (x2, y2))]
        lines += ["0", "ARC", "8", "0", "10", cx, "20", cy, "40", math.hypot(x1 - cx, y1 - cy),
                  "50", ends[bulge < 0], "51", ends[bulge > 0]]
    return "\n".join(map(str, [*lines, "0", "ENDSEC", "0", "EOF", ""]))


def compute(program, text, *options):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "small.dxf"
        path.write_text(dxf(text))
        done = subprocess.run([program, "compute", str(path), "--half", "upper", "--json", *options],
                              capture_output=True, text=True, check=False)
        return json.loads(done.stdout) if done.returncode == 0 else {"refused": done.stderr.strip()}


def arc_to(x1, y1, x2, y2, bulge):
    """The rest of a path: y counts downwards in a picture, so a left turn looks like a right one."""
    if not bulge:
        return f"L{x2:.4g} {-y2:.4g}"
    radius = math.hypot(x2 - x1, y2 - y1) * (1 + bulge * bulge) / (4 * abs(bulge))
    return f"A{radius:.5g} {radius:.5g} 0 {int(abs(bulge) > 1)} {int(bulge < 0)} {x2:.4g} {-y2:.4g}"


def shape(found, colour):
    if "envelope" not in found or not found["envelope"].get("vertices"):
        return ""
    ring = found["envelope"]["vertices"]
    path = f"M{ring[0][0]:.4g} {-ring[0][1]:.4g}"
    for (x1, y1, b), (x2, y2, _) in zip(ring, ring[1:]):
        path += arc_to(x1, y1, x2, y2, b)
    return f'<path d="{path}Z" fill="{colour}" fill-opacity=".35" stroke="{colour}" stroke-width=".5"/>'


def marks(found):
    out = []
    for kind, colour in (("bridges", "#d00"), ("gaps", "#e80")):
        for span in found.get(kind, []):
            (x1, y1), (x2, y2) = span.get("from"), span.get("to")
            out.append(f'<path d="M{x1:.4g} {-y1:.4g}L{x2:.4g} {-y2:.4g}" stroke="{colour}" '
                       'stroke-width=".7" fill="none"/>')
    for place in found.get("open_ends", []):
        x, y = place
        out.append(f'<circle cx="{x:.4g}" cy="{-y:.4g}" r="1" fill="none" stroke="#d00" '
                   'stroke-width=".3"/>')
    for tail in found.get("tails", []):
        x, y = tail["at"]
        out.append(f'<path d="M{x - .7:.4g} {-y - .7:.4g}l1.4 1.4m0-1.4l-1.4 1.4" stroke="#d00" '
                   'stroke-width=".3"/>')
    return "".join(out)


def panel(text, found, colour):
    drawn = "".join(f"M{x1:.4g} {-y1:.4g}{arc_to(x1, y1, x2, y2, b)}" for x1, y1, x2, y2, b in edges(text))
    return (shape(found, colour) + f'<path d="{drawn}" fill="none" stroke="#000" stroke-width=".25"/>' +
            marks(found))


def picture(text, panels):
    xs = [v for x1, _, x2, _, _ in edges(text) for v in (x1, x2)]
    ys = [v for _, y1, _, y2, _ in edges(text) for v in (y1, y2)]
    left, right, top = min(xs) - 3, max(xs) + 3, max(ys) + 4
    width, height = right - left, top + 2
    body = ""
    for i, (found, colour) in enumerate(panels):
        body += (f'<g transform="translate({i * width:.4g})">' +
                 f'<path d="M{left:.4g} 0H{right:.4g}" stroke="#888" stroke-width=".2" '
                 'stroke-dasharray="3 .8 .6 .8"/>' + panel(text, found, colour) + "</g>")
    whole = width * len(panels)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="{left:.4g} {-top:.4g} {whole:.4g} '
            f'{height:.4g}" width="{whole * 5:.4g}" height="{height * 5:.4g}">'
            f'<rect x="{left:.4g}" y="{-top:.4g}" width="{whole:.4g}" height="{height:.4g}" fill="#fff"/>'
            f"{body}</svg>\n")


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    folder = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else
                          pathlib.Path(__file__).resolve().parents[1] / "docs" / "exact")
    folder.mkdir(exist_ok=True)
    exact = ("--algorithm", "exact", "--axis=0,0,1,0", "--side-length", "5", "--overshoot", "0.5")
    for name, text in RULES.items():
        (folder / f"{name}.svg").write_text(picture(text, [(compute(program, text, *exact), "#48c")]))
    for name, text in DIFFERENT.items():
        steps = compute(program, text, "--algorithm", "3", "--centre", "25,0")
        found = compute(program, text, *exact)
        (folder / f"{name}.svg").write_text(picture(text, [(steps, "#c84"), (found, "#48c")]))


if __name__ == "__main__":
    main()
