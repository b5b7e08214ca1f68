"""Exact envelopes of 300 tools as sheets show them, against what was drawn.

usage: exact_sheets_test.py PROGRAM [FIRST COUNT]

Every tool is drawn whole or half, as lines, as polylines or in a block, with its hidden lines, flutes,
edges, doubled parts and its axis, on a sheet that is turned, mirrored, scaled and moved. The outline
must be the tool's own, corner by corner, and its solid must have the tool's volume.
"""

import json
import math
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "detect"))

import sheets

PROGRAM = pathlib.Path(sys.argv[1]).resolve()
FIRST, COUNT = (int(sys.argv[2]), int(sys.argv[3])) if len(sys.argv) > 3 else (0, 300)
SAME = 1e-9  # of the tool's size


def corners(profile, size):
    """Those at which the outline turns: not in the middle of a straight line."""
    kept = list(profile)
    for i in range(len(kept) - 2, 0, -1):
        (x1, y1, b1), (x2, y2, b2), (x3, y3, _) = kept[i - 1:i + 2]
        cross = (x2 - x1) * (y3 - y2) - (y2 - y1) * (x3 - x2)
        if not b1 and not b2 and abs(cross) <= 1e-9 * size * size:
            del kept[i]
    return kept


def volume(profile):
    """Of the solid, by Pappus over fine chords; arcs are within a millionth of that."""
    points = sheets.chords(profile, 4000)
    return abs(sum((x2 - x1) * math.pi * (y1 * y1 + y1 * y2 + y2 * y2) / 3
                   for (x1, y1), (x2, y2) in zip(points, points[1:])))


class ExactSheets(unittest.TestCase):
    maxDiff = None

    def draw(self, seed, path):
        rng = random.Random(seed)
        sheet = sheets.Sheet(seed, scale=rng.choice([1, 1, 0.1, 1 / 25.4, 3]),
                             turn=rng.choice([0, 0, math.pi / 2, rng.uniform(-3, 3)]),
                             mirror=rng.random() < 0.3,
                             move=rng.choice([(0, 0), (1e3, -77), (1e6, 1e6)]))
        # Notes are not contour: what stands beside the tool is left to the search for tools.
        sheet.beside = lambda *_: None
        kinds = [k for k in sheets.KINDS if k is not sheets.thread_mill]
        sheet.tool(0, 0, upright=rng.random() < 0.3, kind=rng.choice(kinds))
        sheet.save(path)
        return sheet

    def test_outlines_and_volumes_are_the_tools_own(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "sheet.dxf"
            for seed in range(FIRST, FIRST + COUNT):
                with self.subTest(seed=seed):
                    sheet = self.draw(seed, path)
                    self.check(sheet, path)

    def check(self, sheet, path):
        truth = sheet.tools[0]
        axis = ",".join(repr(v) for v in (*truth.start, *truth.end))
        done = subprocess.run([str(PROGRAM), "compute", str(path), f"--axis={axis}", "--json",
                               f"--sat={path.with_suffix('.sat')}"],
                              capture_output=True, text=True, timeout=120, check=False)
        self.assertEqual(0, done.returncode, f"{truth.kind} {sheet.traits}: {done.stderr}")
        found = json.loads(done.stdout)
        size = math.hypot(truth.length, truth.radius)
        (ax, ay), (bx, by) = truth.start, truth.end
        ux, uy = (bx - ax) / truth.length, (by - ay) / truth.length
        outline = [((x - ax) * ux + (y - ay) * uy, ux * (y - ay) - uy * (x - ax), b)
                   for x, y, b in found["envelope"]["vertices"]]
        expected = corners(truth.profile, size)
        where = max(map(abs, (ax, ay, bx, by)))
        same = max(SAME * size, 1e-15 * where * 4)
        told = f"{truth.kind} {sheet.traits}\n{expected}\n{outline}"
        self.assertEqual(len(expected), len(outline), told)
        # A mirrored half is drawn on the left as well, so only the arcs' sense may differ.
        for (s1, r1, b1), (s2, r2, b2) in zip(expected, outline):
            self.assertLessEqual(math.dist((s1, r1), (s2, r2)), same, told)
            self.assertAlmostEqual(b1, b2, delta=1e-6, msg=told)
        self.assertAlmostEqual(found["solid"]["volume"] / volume(truth.profile), 1, delta=1e-6)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
