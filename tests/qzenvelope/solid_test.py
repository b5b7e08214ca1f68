"""Solids of the example tools: figures, SAT, STEP, STL and pictures; refusals say why and where."""

import json
import math
import os
import pathlib
import re
import struct
import subprocess
import unittest
import xml.etree.ElementTree as xml

from program import EXAMPLES, PROGRAM, ProgramTest, main

NAMES = sorted(p.stem for p in EXAMPLES.glob("*.args"))


def pappus(vertices, axis):
    """Volume of the ring about y = axis by fine chords of its arcs."""
    points = []
    for (x, y, bulge), (u, v, _) in zip(vertices, vertices[1:] + vertices[:1]):
        half, turn = 2 * math.atan(bulge), math.atan2(v - y, u - x)
        steps = 400 if bulge else 1
        for k in range(steps):
            t = k / steps
            along = math.hypot(u - x, v - y) * (math.sin(half * t) / math.sin(half) if bulge else t)
            points.append((x + along * math.cos(turn - half + half * t),
                           y + along * math.sin(turn - half + half * t) - axis))
    return abs(sum(math.pi * (u - x) * (y * y + y * v + v * v) / 3
                   for (x, y), (u, v) in zip(points, points[1:] + points[:1])))


def stl_volume(data):
    count = struct.unpack_from("<I", data, 80)[0]
    assert len(data) == 84 + 50 * count
    volume = 0
    for i in range(count):
        a, b, c = (struct.unpack_from("<3f", data, 84 + 50 * i + 12 * k) for k in (1, 2, 3))
        volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2])
                   + a[2] * (b[0] * c[1] - b[1] * c[0])) / 6
    return volume


class Solids(ProgramTest):
    def arguments(self, name):
        return (EXAMPLES / (name + ".args")).read_text().split()

    def run_dated(self, *arguments):
        return subprocess.run([str(PROGRAM), *map(str, arguments)], cwd=self.folder,
                              capture_output=True, text=True, timeout=120,
                              env=dict(os.environ, SOURCE_DATE_EPOCH="1767607200"))

    def test_figures_and_files_agree(self):
        for name in NAMES:
            with self.subTest(tool=name):
                arguments = self.arguments(name)
                done = self.run_dated(
                    "compute", EXAMPLES / (name + ".dxf"), *arguments, "--json", "--sat", "a.sat",
                    "--step", "a.stp", "--stl", "a.stl", "--chord-tolerance", "0.01", "--png",
                    "a.png", "--svg", "a.svg")
                self.assertEqual(0, done.returncode, done.stderr)
                self.assertEqual("", done.stderr)
                run = json.loads(done.stdout)
                solid, envelope = run["solid"], run["envelope"]
                axis = run["parameters"]["centre"][1]
                volume = pappus(envelope["vertices"], axis)
                self.assertAlmostEqual(1, solid["volume"] / volume, delta=1e-4)
                self.assertAlmostEqual(envelope["diameter"], solid["largest_diameter"], delta=1e-6)
                left, _, right, _ = envelope["extents"]
                self.assertAlmostEqual(right - left, solid["length"], delta=1e-6)
                sat = (self.folder / "a.sat").read_text("ascii").split("\n")
                self.assertTrue(sat[0].startswith("700 0 1 0"))
                self.assertIn("24 Mon Jan  5 10:00:00 2026", sat[1])
                self.assertEqual(["End-of-ACIS-data", ""], sat[-2:])
                step = (self.folder / "a.stp").read_text("ascii")
                self.assertIn("AUTOMOTIVE_DESIGN", step)
                self.assertIn("'2026-01-05T10:00:00'", step)
                self.assertRegex(step, r"PRODUCT\('[^']+','[^']+'")
                mesh = stl_volume((self.folder / "a.stl").read_bytes())
                self.assertAlmostEqual(solid["volume"], mesh, delta=0.0105 * solid["area"])
                png = (self.folder / "a.png").read_bytes()
                self.assertEqual(b"\x89PNG\r\n\x1a\n", png[:8])
                self.assertEqual(1400, struct.unpack(">I", png[16:20])[0])
                root = xml.parse(self.folder / "a.svg").getroot()
                self.assertEqual(1, len(root.findall("{http://www.w3.org/2000/svg}image")))

    def test_same_run_same_bytes(self):
        arguments = self.arguments(NAMES[0])
        drawing = EXAMPLES / (NAMES[0] + ".dxf")
        for i in (1, 2):
            files = [w for kind in ("sat", "step", "stl", "png") for w in ("--" + kind, f"{i}.{kind}")]
            self.assertEqual(0, self.run_dated("compute", drawing, *arguments, *files).returncode)
        for kind in ("sat", "step", "stl", "png"):
            self.assertEqual((self.folder / ("1." + kind)).read_bytes(),
                             (self.folder / ("2." + kind)).read_bytes(), kind)

    def test_info_tells_the_solids_of_stored_envelopes(self):
        name = NAMES[0]
        run = self.compute(EXAMPLES / (name + ".dxf"), *self.arguments(name), "-o", "a.dxf")
        info = json.loads(self.run_program("info", "a.dxf", "--json").stdout)
        self.assertEqual(1, len(info["envelopes"]))
        self.assertEqual(run["envelope"]["handle"], info["envelopes"][0]["handle"])
        self.assertEqual(run["solid"], info["envelopes"][0]["solid"])

    def test_refusals(self):
        name = "stepped-drill"
        drawing, arguments = EXAMPLES / (name + ".dxf"), self.arguments(name)
        window = [a for a in arguments if a.startswith("--window")]
        cases = [
            # all four sides: the outline lies on both sides of the axis
            (["--no-axis", "--centre=140,120", *window, "--sat", "a.sat"], 1,
             r"no solid can be made of the envelope: the profile crosses the axis, at \([\d.]+, 120\)"),
            (["--no-axis", *window, "--sat", "a.sat"], 2, r"a solid needs its axis; add --centre"),
            ([*arguments, "--sat", "missing/a.sat"], 1, r"missing/a\.sat: the SAT file cannot be written.*--sat"),
            ([*arguments, "--step", "missing/a.stp"], 1, r"missing/a\.stp: the STEP file.*--step"),
            ([*arguments, "--stl", "."], 1, r"\.: the STL file cannot be written: is a folder"),
            ([*arguments, "--png", "missing/a.png"], 1, r"missing/a\.png: the picture.*--png"),
            ([*arguments, "--stl", "a.stl", "--chord-tolerance", "0"], 2, r"give a positive length"),
        ]
        for extra, status, pattern in cases:
            with self.subTest(arguments=extra):
                done = self.run_program("compute", drawing, *extra)
                self.assertEqual(status, done.returncode, done.stdout + done.stderr)
                self.assertRegex(done.stderr, pattern)
                self.assertEqual(1, done.stderr.count("\n"))
                self.assertEqual([], self.left_behind())

    def test_a_refused_solid_is_told_and_the_envelope_kept(self):
        window = [a for a in self.arguments("stepped-drill") if a.startswith("--window")]
        run = self.compute(EXAMPLES / "stepped-drill.dxf", "--no-axis", "--centre=140,120", *window)
        self.assertIn("crosses the axis", run["solid"]["refused"])
        self.assertEqual(120, run["solid"]["at"][1])
        self.assertTrue(run["envelope"]["closed"])


if __name__ == "__main__":
    main()
