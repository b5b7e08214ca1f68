"""The example tools: what is computed, what is written, and what is left alone."""

import functools
import json
import re
import shutil
import subprocess
import xml.etree.ElementTree as xml

import dxf_tags
from program import ENVELOPE_LAYER, EXAMPLES, ROOT, SCRATCH_LAYER, ProgramTest, main

# name: extents and diameter of the tool that was drawn
TOOLS = {
    "stepped-drill": ((60, 120, 220.004, 132.5), 25),
    "end-mill": ((70, 125, 181, 150), 50),
    "ball-nose": ((360, -40, 480, -30), 20),
    "t-slot-cutter": ((-150, 47, -69, 60), 26),
}


def each_tool(test):
    """Runs the test once for every example, with its name, drawing and arguments."""

    @functools.wraps(test)
    def run(self):
        for name in TOOLS:
            with self.subTest(tool=name):
                arguments = (EXAMPLES / (name + ".args")).read_text().split()
                test(self, name, EXAMPLES / (name + ".dxf"), arguments)

    return run


class Catalogue(ProgramTest):
    def test_parts_and_figures_of_the_sheets(self):
        """As the demo runs them."""
        done = self.run_program("batch", EXAMPLES / "catalogue", "--split", "auto", "--tip", "right", "--zero",
                                "shank", "--direction", "z+", "--profile", "--table", "t.json", "--json")
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertEqual(0, json.loads(done.stdout)["with_warnings"])
        table = {row["tool"]: row for row in json.loads((self.folder / "t.json").read_text())}
        drawn = {"C-201": (114.184, 56.184), "C-202": (96, 26), "C-203": (92, 13.85), "C-204": (105, 38.5)}
        self.assertEqual(set(drawn), set(table))
        for name, (overall, cutting) in drawn.items():
            self.assertAlmostEqual(overall, table[name]["oal"], places=3)
            self.assertAlmostEqual(cutting, table[name]["lcf"], places=3)
            profile = (self.folder / f"out/{name}-profile.dxf").read_text()
            self.assertEqual(["CUT", "NOCUT"], sorted(set(re.findall(r"\bNOCUT\b|\bCUT\b", profile))))


class Examples(ProgramTest):
    @each_tool
    def test_envelopes_are_closed_and_of_the_right_size(self, name, drawing, arguments):
        run = self.compute(drawing, *arguments)
        envelope, (extents, diameter) = run["envelope"], TOOLS[name]
        self.assertTrue(envelope["closed"])
        self.assertEqual(ENVELOPE_LAYER, envelope["layer"])
        self.assertAlmostEqual(diameter, envelope["diameter"], delta=0.02)
        for expected, actual in zip(extents, envelope["extents"]):
            self.assertAlmostEqual(expected, actual, delta=0.02)
        self.assertFalse(envelope["self_crossing"]["crosses"])
        axis = run["parameters"]["centre"][1]
        self.assertEqual(axis, envelope["vertices"][0][1])
        self.assertEqual(axis, envelope["vertices"][-1][1])
        self.assertEqual([], run["file"]["notes"] + run["warnings"])
        self.assertGreater(run["picked"], 1)

    @each_tool
    def test_the_other_pipelines(self, name, drawing, arguments):
        run = {a: self.compute(drawing, *arguments, "--algorithm", a) for a in ("3", "hatch", "1", "2")}
        self.assertEqual([3, "hatch", 1, 2], [r["parameters"]["algorithm"] for r in run.values()])
        envelope = {a: r["envelope"] for a, r in run.items()}
        self.assertAlmostEqual(envelope["3"]["length"], envelope["hatch"]["length"], delta=0.02)
        for live, traced in zip(envelope["3"]["extents"], envelope["hatch"]["extents"]):
            self.assertAlmostEqual(live, traced, delta=1e-6)
        for v, shifted in zip(envelope["1"]["vertices"], envelope["2"]["vertices"], strict=True):
            self.assertEqual(0, v[2], "chords stay chords")
            for a, b in zip((v[0] + 1000, v[1]), shifted):
                self.assertAlmostEqual(a, b, delta=1e-6)
        # Both halves are seen from the ends, so these run from one side of the axis to the other.
        self.assertAlmostEqual(envelope["3"]["diameter"], envelope["1"]["diameter"], delta=0.1)

    @each_tool
    def test_nothing_but_the_envelope_is_added(self, name, drawing, arguments):
        for algorithm in ("3", "hatch", "1", "2"):
            with self.subTest(algorithm=algorithm):
                self.check_only_added(name, drawing, [*arguments, "--algorithm", algorithm])

    def check_only_added(self, name, drawing, arguments):
        self.compute(drawing, *arguments, "-o", name + ".dxf")
        before = dxf_tags.entities(drawing)
        after = dxf_tags.entities(self.folder / (name + ".dxf"))
        self.assertEqual(before, after[: len(before)], "an entity of the user has changed")
        added = after[len(before):]
        if added and added[0][0][1] == b"LWPOLYLINE":
            self.assertEqual(1, len(added))
        else:  # the oldest version knows heavy polylines only: vertices and an end follow
            self.assertEqual(b"POLYLINE", added[0][0][1])
            self.assertEqual({b"VERTEX", b"SEQEND"}, {r[0][1] for r in added[1:]})
        self.assertEqual(ENVELOPE_LAYER, dxf_tags.value(added[0], 8))
        self.assertEqual([], dxf_tags.on_layer(after, SCRATCH_LAYER))

    @each_tool
    def test_a_second_run_replaces_the_first(self, name, drawing, arguments):
        first = self.compute(drawing, *arguments, "-o", name + ".dxf")
        second = self.compute(name + ".dxf", *arguments, "-o", name + ".dxf")
        self.assertEqual(first["envelope"]["vertices"], second["envelope"]["vertices"])
        self.assertEqual(first["picked"], second["picked"])
        self.assertEqual(1, second["selection"]["earlier_envelopes_erased"])
        after = dxf_tags.entities(self.folder / (name + ".dxf"))
        polylines = [r for r in dxf_tags.on_layer(after, ENVELOPE_LAYER)
                     if r[0][1] in (b"LWPOLYLINE", b"POLYLINE")]
        self.assertEqual(1, len(polylines))

    @each_tool
    def test_upper_and_lower_half_mirror_each_other(self, name, drawing, arguments):
        arguments = [a for a in arguments if a not in ("--half", "upper", "lower")]
        upper = self.compute(drawing, *arguments, "--half", "upper")["envelope"]
        lower = self.compute(drawing, *arguments, "--half", "lower")["envelope"]
        self.assertAlmostEqual(upper["length"], lower["length"], delta=0.01)
        self.assertAlmostEqual(upper["diameter"], lower["diameter"], delta=0.01)

    @each_tool
    def test_pictures(self, name, drawing, arguments):
        self.compute(drawing, *arguments, "--svg", name + ".svg")
        root = xml.parse(self.folder / (name + ".svg")).getroot()
        svg = "{http://www.w3.org/2000/svg}"
        paths = {}
        for path in root.iter(svg + "path"):
            paths.setdefault(path.get("class"), []).append(path.get("d"))
        self.assertEqual(1, len(paths["envelope"]))
        self.assertEqual(1, len(paths["axis"]))
        self.assertTrue(paths["envelope"][0].endswith("Z"))
        self.assertIn("A", "".join(paths["outline"]), "fillets are drawn as arcs")
        self.assertTrue(any(t.text for t in root.iter(svg + "text")))
        used = {use.get("href") for use in root.iter(svg + "use")}
        defined = {"#" + g.get("id") for g in root.iter(svg + "g") if g.get("id")}
        self.assertLessEqual(used, defined)
        view = [float(v) for v in root.get("viewBox").split()]
        self.assertGreater(view[2], 100)

    @each_tool
    def test_without_output_nothing_is_written(self, name, drawing, arguments):
        shutil.copy(drawing, self.folder)
        before = drawing.read_bytes()
        done = self.run_program("compute", drawing.name, *arguments)
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertIn("diameter", done.stdout)
        self.assertEqual(before, (self.folder / drawing.name).read_bytes())
        self.assertEqual([drawing.name], self.left_behind())
        (self.folder / drawing.name).unlink()

    def test_the_generator_draws_what_is_committed(self):
        made = subprocess.run([ROOT / "scripts/make-examples", self.folder], capture_output=True,
                              text=True)
        if "No module named 'ezdxf'" in made.stderr:
            self.skipTest("python3-ezdxf is not installed")
        self.assertEqual(0, made.returncode, made.stderr)
        for path in (p for p in self.folder.rglob("*") if p.is_file()):
            drawn = EXAMPLES / path.relative_to(self.folder)
            self.assertEqual(drawn.read_bytes(), path.read_bytes(), path.name)


if __name__ == "__main__":
    main()
