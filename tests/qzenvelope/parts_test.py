"""Split tools as a whole: layers, bodies, products, files, pictures, and where they stand."""

import json
import math
import re
import unittest

import ezdxf

from program import EXAMPLES, ProgramTest, main
from solid_test import pappus, stl_volume

# Distance from the shank's end and radius: a shank, a neck and a pointed cutting part of 60.
PROFILE = [(0, 0), (0, 10), (40, 10), (40, 6), (70, 6), (70, 8), (120, 8), (130, 0)]
CUT_VOLUME = math.pi * (64 * 50 + 64 * 10 / 3)


def draw(path, angle=0.0, at=(300.0, 200.0), lines=(), contours=()):
    """A drawing of the tool about an axis through a point; further lines as (x, y, u, v) in the
    axis' own coordinates, and closed contours by layer."""
    doc = ezdxf.new("R2010", units=4)
    doc.linetypes.add("CENTER", [12.0, 8.0, -1.5, 1.0, -1.5], description="Center")
    doc.layers.add("CENTRE", linetype="CENTER")
    space = doc.modelspace()
    c, s = math.cos(math.radians(angle)), math.sin(math.radians(angle))

    def place(x, y):
        return (at[0] + c * x - s * y, at[1] + s * x + c * y)

    for side in (1, -1):
        points = [place(x, side * r) for x, r in PROFILE]
        for start, end in zip(points, points[1:]):
            space.add_line(start, end)
    for x, y, u, v in lines:
        space.add_line(place(x, y), place(u, v))
    for layer, corners in contours:
        space.add_lwpolyline([place(x, y) for x, y in corners], close=True, dxfattribs={"layer": layer})
    space.add_line(place(-8, 0), place(138, 0), dxfattribs={"layer": "CENTRE"})
    doc.saveas(path)
    return place


LINE = (90, -8, 90, 8)  # across the section, away from its corners: 40 from the tip
CONTOURS = [("CUT", [(70, 0), (70, 8), (120, 8), (130, 0)]),
            ("NOCUT", [(0, 0), (0, 10), (40, 10), (40, 6), (70, 6), (70, 0)])]


class Parts(ProgramTest):
    def polylines(self, path, layer):
        doc = ezdxf.readfile(self.folder / path)
        self.assertFalse(doc.audit().has_errors)
        return [[tuple(p) for p in e.get_points("xyb")]
                for e in doc.modelspace().query(f'LWPOLYLINE[layer=="{layer}"]') if e.closed]

    def test_by_a_line_about_any_axis(self):
        for angle in (0, 33, 90, 180, -140):
            with self.subTest(angle=angle):
                draw(self.folder / "t.dxf", angle, lines=[LINE])
                run = self.compute("t.dxf", "--split", "line", "-o", "o.dxf", "--sat", "a.sat",
                                   "--step", "a.stp", "--stl", "a.stl", "--png", "a.png", "--svg",
                                   "a.svg")
                parts = run["parts"]
                self.assertTrue(parts["tip"]["sure"])
                self.assertIn("the line across the section", parts["split_by"])
                self.assertAlmostEqual(40, parts["cutting_length"], delta=1e-9)
                cut, rest, whole = (x["volume"] for x in (parts["cut"], parts["nocut"], run["solid"]))
                self.assertAlmostEqual(1, (cut + rest) / whole, delta=1e-9)
                self.assertAlmostEqual(math.pi * 64 * (30 + 10 / 3), cut, delta=1e-6)
                # Two closed polylines that have both ends of their cut in common.
                one, = self.polylines("o.dxf", "CUT")
                other, = self.polylines("o.dxf", "NOCUT")
                self.assertEqual(2, len({p[:2] for p in one} & {p[:2] for p in other}))
                self.assertEqual(1, len(self.polylines("o.dxf", "TempEncircleLine")))
                sat = (self.folder / "a.sat").read_text("ascii").split("\n")
                self.assertEqual("700 0 2 0", sat[0])
                self.assertEqual(2, sum(line.startswith("body ") for line in sat))
                step = (self.folder / "a.stp").read_text("ascii")
                self.assertEqual(["t CUT", "t NOCUT"], re.findall(r"=PRODUCT\('([^']*)'", step))
                self.assertEqual(["1.,1.,0.", "0.5019607843137255," * 2 + "0.5019607843137255"],
                                 re.findall(r"COLOUR_RGB\('',([^)]*)\)", step))
                self.assertEqual(2, step.count("MANIFOLD_SOLID_BREP"))
                for name, volume in (("a-CUT.stl", cut), ("a-NOCUT.stl", rest)):
                    mesh = stl_volume((self.folder / name).read_bytes())
                    self.assertAlmostEqual(1, mesh / volume, delta=0.01)
                svg = (self.folder / "a.svg").read_text()
                self.assertEqual(["#ffff00", "#808080"],
                                 re.findall(r'class="part" style="fill:(#\w+)"', svg))
                self.assertNotIn("a.stl", self.left_behind())

    def test_by_a_distance_and_with_colours(self):
        draw(self.folder / "t.dxf")
        run = self.compute("t.dxf", "--split=60", "--step", "a.stp", "--cut-colour", "#ff0000",
                           "--nocut-colour", "0000ff")
        # At the shoulder of the neck.
        self.assertAlmostEqual(CUT_VOLUME, run["parts"]["cut"]["volume"], delta=1e-6)
        step = (self.folder / "a.stp").read_text("ascii")
        self.assertEqual(["1.,0.,0.", "0.,0.,1."], re.findall(r"COLOUR_RGB\('',([^)]*)\)", step))

    def test_contours_on_layers_are_taken_and_compared(self):
        draw(self.folder / "t.dxf", 20, contours=CONTOURS)
        run = self.compute("t.dxf", "--split", "layers", "-o", "o.dxf", "--sat", "a.sat")
        self.assertAlmostEqual(CUT_VOLUME, run["parts"]["cut"]["volume"], delta=1e-4)
        self.assertEqual("the contour on layer CUT lies there", run["parts"]["tip"]["why"])
        texts = [f["text"] for f in run["findings"] if f["kind"] == "parts"]
        self.assertEqual(["the contours on CUT and NOCUT agree with the envelope"], texts)
        # Nothing is drawn over them.
        self.assertEqual(1, len(self.polylines("o.dxf", "CUT")))
        # A cutting part drawn 0.5 too thin, and one that ends short of the rest.
        for corners, words in (([(70, 0), (70, 7.5), (120, 7.5), (130, 0)], "0.5 inside the envelope"),
                               ([(72, 0), (72, 8), (120, 8), (130, 0)], "a gap of 2 along the axis")):
            draw(self.folder / "w.dxf", contours=[("CUT", corners), CONTOURS[1]])
            run = self.compute("w.dxf", "--split", "layers")
            warnings = [f["text"] for f in run["findings"] if f["warning"]]
            self.assertIn(words, " ".join(warnings))

    def test_auto_says_which(self):
        cases = [([LINE], [], "the line across"), ([], CONTOURS, "the contours on layers"),
                 ([], [], None)]
        for lines, contours, how in cases:
            draw(self.folder / "t.dxf", lines=lines, contours=contours)
            run = self.compute("t.dxf", "--split", "auto", "--stl", "a.stl")
            if how:
                self.assertIn(how, run["parts"]["split_by"])
            else:
                self.assertIsNone(run["parts"]["split_by"])
                self.assertIn("not split", run["verdict"])
                self.assertIn("a.stl", run["files"])

    def test_a_further_run_replaces_its_own_parts_only(self):
        draw(self.folder / "t.dxf", lines=[LINE])
        doc = ezdxf.readfile(self.folder / "t.dxf")
        doc.modelspace().add_lwpolyline([(310, 195), (320, 195), (320, 197)], dxfattribs={"layer": "CUT"})
        doc.saveas(self.folder / "t.dxf")
        self.compute("t.dxf", "--split", "20", "-o", "o.dxf")
        again = self.compute("o.dxf", "--split", "30", "-o", "o.dxf")
        self.assertEqual(3, again["selection"]["earlier_envelopes_erased"])
        self.assertEqual(1, len(self.polylines("o.dxf", "NOCUT")))
        shapes = ezdxf.readfile(self.folder / "o.dxf").modelspace().query('LWPOLYLINE[layer=="CUT"]')
        self.assertEqual(2, len(shapes))
        # Without a split they go.
        self.compute("o.dxf", "-o", "o.dxf")
        self.assertEqual([], self.polylines("o.dxf", "NOCUT"))

    def test_profiles_stand_in_tool_coordinates(self):
        draw(self.folder / "t.dxf", 33)
        # Options, places of tip and shank's end, the radius' direction.
        cases = [
            (["--zero", "tip", "--direction", "z-"], (0, 0, 0), (0, 0, 130), 0),
            (["--zero", "shank", "--direction", "z+"], (0, 0, 130), (0, 0, 0), 0),
            (["--zero", "tip"], (0, 0, 0), (-130, 0, 0), 1),
            (["--zero", "shank", "--direction", "left"], (-130, 0, 0), (0, 0, 0), 1),
            (["--direction", "x+"], (0, 0, 0), (-130, 0, 0), 1),
            (["--zero", "300,200", "--direction", "right"], (130, 0, 0), (0, 0, 0), 1),
        ]
        for options, tip, end, radial in cases:
            with self.subTest(options=options):
                run = self.compute("t.dxf", *options, "--profile", "p.dxf", "--sat", "a.sat")
                doc = ezdxf.readfile(self.folder / "p.dxf")
                self.assertFalse(doc.audit().has_errors)
                self.assertEqual(4, doc.header["$INSUNITS"])
                profile, = doc.modelspace()
                corners = list(profile.vertices_in_wcs())
                for place in (tip, end):
                    self.assertTrue(any(math.dist(place, p) < 1e-9 for p in corners), corners)
                self.assertAlmostEqual(10, max(p[radial] for p in corners), delta=1e-9)
                self.assertAlmostEqual(0, min(p[radial] for p in corners), delta=1e-9)
                self.assertAlmostEqual(130, run["solid"]["length"], delta=1e-9)
                # The solid stands there, too: every point of the SAT file within its reach.
                points = re.findall(r"^point \$-1 -1 \$-1 (\S+) (\S+) (\S+) #",
                                    (self.folder / "a.sat").read_text(), re.M)
                along = 0 if radial else 2
                places = [float(p[along]) for p in points]
                low, high = sorted((tip[along], end[along]))
                self.assertAlmostEqual(high if end[along] == high else low,
                                       max(places) if end[along] == high else min(places), delta=1e-9)

    def test_arcs_of_an_upright_profile_keep_their_side(self):
        run = self.compute(EXAMPLES / "ball-nose.dxf", "--centre=400,-40", "--window=350,-55,490,-25",
                           "--zero", "tip", "--direction", "z-", "--profile", "p.dxf", "--split", "12")
        doc = ezdxf.readfile(self.folder / "p.dxf")
        volume = 0
        for part in doc.modelspace():
            self.assertEqual((0, -1, 0), tuple(part.dxf.extrusion))
            # In the polyline's own plane: x is the radius, y goes along the axis.
            ring = [(y, x, -b) for x, y, b in part.get_points("xyb")]
            volume += pappus(ring, 0)
        self.assertAlmostEqual(1, run["solid"]["volume"] / volume, delta=1e-4)
        self.assertEqual({"CUT", "NOCUT"}, {p.dxf.layer for p in doc.modelspace()})

    def test_bad_requests_are_refused_whole(self):
        draw(self.folder / "t.dxf")
        before = self.left_behind()
        cases = [
            (["--split", "0"], 2, r"--split: '0' leaves no cutting part"),
            (["--split", "-3"], 2, r"--split: '-3' leaves no cutting part"),
            (["--split", "130"], 2, r"--split: 130 leaves nothing of the tool, which is 130 long"),
            (["--split", "half"], 2, r"--split: 'half' is no way to split"),
            (["--split", "line"], 1, r"no line is drawn across the whole section"),
            (["--split", "layers"], 1, r"layer CUT holds no closed half contour"),
            (["--split", "20", "--tip", "top"], 2, r"--tip: the axis has no upper or lower end"),
            (["--tip", "nose"], 2, r"--tip: 'nose' is no end"),
            (["--zero", "middle"], 2, r"--zero: 'middle' is no place"),
            (["--zero", "1,2,3"], 2, r"--zero: '1,2,3' has 3 numbers where 2 are needed"),
            (["--direction", "up"], 2, r"--direction: 'up' is no direction"),
            (["--cut-colour", "yellow"], 2, r"--cut-colour: 'yellow' is no colour"),
            (["--split", "20", "--stl", "a.stl", "--svg", "a-CUT.stl"], 2, r"are one file"),
            (["--split", "20", "--profile", "t.dxf"], 2, r"--profile t\.dxf is an input"),
        ]
        for extra, status, pattern in cases:
            with self.subTest(arguments=extra):
                done = self.run_program("compute", "t.dxf", *extra, "-o", "o.dxf", "--sat", "o.sat")
                self.assertEqual(status, done.returncode, done.stdout + done.stderr)
                self.assertRegex(done.stderr, pattern)
                self.assertEqual(1, done.stderr.count("\n"), done.stderr)
                self.assertEqual(before, self.left_behind())

    def test_an_unsure_tip_is_told_and_can_be_said(self):
        arguments = (EXAMPLES / "end-mill.args").read_text().split()
        run = self.compute(EXAMPLES / "end-mill.dxf", *arguments, "--split", "27")
        self.assertIn("--tip says which it is", run["verdict"])
        run = self.compute(EXAMPLES / "end-mill.dxf", *arguments, "--split", "27", "--tip", "right")
        self.assertNotIn("--tip", run["verdict"])
        self.assertEqual("right", run["parts"]["tip"]["end"])


if __name__ == "__main__":
    main()
