"""Tools found on random sheets, against what was drawn.

usage: sheets_test.py PROGRAM [FIRST COUNT [views|drafts]]

Figures that count: tools found, found right (axis, extent and area of the envelope), wrong but told
("worth a look", or nothing at all), wrong without a word, of which there may be none, and missed
beside others without a word of the place where they are.
"""

import json
import math
import pathlib
import random
import re
import subprocess
import sys
import tempfile
import unittest

import drafts
import sheets
import views

PROGRAM = pathlib.Path(sys.argv[1]).resolve()
FIRST, COUNT = (int(sys.argv[2]), int(sys.argv[3])) if len(sys.argv) > 3 else (0, 48)
KIND = sys.argv[4] if len(sys.argv) > 4 else "sheets"
# What makes them, the least share that is right, and the most that are missed without a word.
MAKE, LEAST_RIGHT, MOST_MISSED = {"sheets": (sheets.make, 0.95, 0), "views": (views.make, 0.85, 0.02),
                                  "drafts": (drafts.make, 0.9, 0.01)}[KIND]
# Of the tool's size: the axis' ends; of its area.
PLACE, AREA = 2e-3, 5e-3


def run(path, *arguments):
    done = subprocess.run([str(PROGRAM), "compute", str(path), "--json", *arguments],
                          capture_output=True, text=True, timeout=120, check=False)
    return json.loads(done.stdout)["tools"] if done.returncode in (0, 1) else [], done


def area_of(vertices):
    points = []
    for (x1, y1, bulge), (x2, y2, _) in zip(vertices, vertices[1:] + vertices[:1]):
        points += sheets.chords([(x1, y1, bulge), (x2, y2, 0)])[:-1]
    return abs(sum(a[0] * b[1] - b[0] * a[1]
                   for a, b in zip(points, points[1:] + points[:1]))) / 2


def is_axis(found, truth):
    """Whether the found axis runs from one end of the true one to the other."""
    (a, b), size = found["axis"], max(truth.length, 2 * truth.radius)
    return min(max(math.dist(a, truth.start), math.dist(b, truth.end)),
               max(math.dist(a, truth.end), math.dist(b, truth.start))) < PLACE * size


def is_right(found, truth):
    if truth.kind == "thread_mill":
        return True  # what a turning tool sweeps is more than either half
    return abs(area_of(found["envelope"]["vertices"]) / truth.area - 1) < AREA


def is_told(found, truth):
    """Whether some verdict names a place in the true tool, or a wrong tool there is not sure."""
    along = [(q - p) / truth.length for p, q in zip(truth.start, truth.end)]

    def is_there(x, y):
        d = (x - truth.start[0], y - truth.start[1])
        s, r = d[0] * along[0] + d[1] * along[1], abs(d[0] * along[1] - d[1] * along[0])
        return -0.1 < s / truth.length < 1.1 and r < 1.15 * truth.radius

    number = r"(-?[\d.]+(?:e[-+]\d+)?)"
    for tool in found:
        if tool["verdict"] == "sure":
            continue
        places = [[*map(sum, zip(*tool["axis"]))]]
        places += [[float(a) + float(c), float(b) + float(d)] for a, b, c, d in re.findall(
            f"axis {number},{number} to {number},{number}", tool["verdict"])]
        places += [[2 * float(a), 2 * float(b)] for a, b in re.findall(
            f"lines around {number}, {number}", tool["verdict"])]
        if any(is_there(x / 2, y / 2) for x, y in places):
            return True
    return False


class Sheets(unittest.TestCase):
    def test_tools_are_found_or_the_run_says_so(self):
        figures = {"tools": 0, "found": 0, "right": 0, "told": 0, "silent": 0, "extra": 0, "unseen": 0}
        silent, extras = [], []
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "sheet.dxf"
            for seed in range(FIRST, FIRST + COUNT):
                sheet = MAKE(seed)
                sheet.save(path)
                found, done = run(path)
                self.assertIn(done.returncode, (0, 1), f"sheet {seed}: {done.stderr}")
                left = list(found)
                missed = []
                for truth in sheet.tools:
                    figures["tools"] += 1
                    mine = next((f for f in left if is_axis(f, truth)), None)
                    if mine is None:
                        missed.append(truth)
                        continue
                    left.remove(mine)
                    figures["found"] += 1
                    if is_right(mine, truth):
                        figures["right"] += 1
                    elif mine["verdict"] == "sure":
                        figures["silent"] += 1
                        silent.append((seed, truth.kind, sheet.traits))
                    else:
                        figures["told"] += 1
                # A missed tool is told of by another one's doubts, or by the refusal.
                unseen = [t.kind for t in missed if found and not is_told(found, t)]
                figures["told"] += len(missed) - len(unseen)
                figures["unseen"] += len(unseen)
                figures["extra"] += len(left)
                extras += [(seed, "extra", f["axis"]) for f in left if f["verdict"] == "sure"]
        print(KIND, COUNT, figures, "sure extras", len(extras))
        self.assertEqual([], silent)
        self.assertEqual([], extras)
        self.assertLessEqual(figures["unseen"], MOST_MISSED * figures["tools"])
        self.assertGreaterEqual(figures["right"], LEAST_RIGHT * figures["tools"])

    def test_a_turned_sheet_gives_the_turned_finding(self):
        rng = random.Random(5)
        with tempfile.TemporaryDirectory() as folder:
            for seed in range(6):
                angle, move = rng.uniform(0.05, 1.5), (rng.uniform(-1e3, 1e3), 77.0)
                runs = []
                for how in ({}, {"turn": angle, "move": move}):
                    sheet = sheets.Sheet(seed, **how)
                    sheet.tool(0, 0)
                    sheet.frame(-150, -220, 270, 195)
                    path = pathlib.Path(folder) / "sheet.dxf"
                    sheet.save(path)
                    found, done = run(path)
                    self.assertLessEqual(len(found), 1, f"sheet {seed}: {done.stderr}")
                    runs.append((sheet, found))
                (plain, upright), (turned, other) = runs
                self.assertEqual(len(upright), len(other), f"sheet {seed}")
                if not upright:
                    continue
                [a], [b] = upright, other
                if a["axis"][0][0] > a["axis"][1][0]:
                    a["axis"].reverse()
                for p, q in zip(a["axis"], b["axis"]):
                    self.assertLess(math.dist(turned.at(*p), q), 1e-6 * plain.tools[0].length)
                self.assertEqual(a["cue"], b["cue"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
