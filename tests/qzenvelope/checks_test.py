"""Every check of a run, by every algorithm: a small drawing for each, and what must be told of it."""

import json
import unittest

import ezdxf

import framed_tools
from program import ProgramTest, main

# A stepped tool about y = 0, its tip at the left.
UPPER = [(0, 0), (0, 10), (20, 10), (20, 6), (60, 6), (60, 0)]
ALGORITHMS = ("exact", "3", "hatch", "1", "2")


def mirrored(points):
    return [(x, -y) for x, y in points]


class Checks(ProgramTest):
    def draw(self, *paths, circles=(), ellipses=(), blocks=()):
        doc = ezdxf.new("R2010")
        space = doc.modelspace()
        for path in paths:
            for a, b in zip(path, path[1:]):
                space.add_line(a, b)
        for centre, radius in circles:
            space.add_circle(centre, radius)
        for centre, major, ratio in ellipses:
            space.add_ellipse(centre, major, ratio)
        for layers in blocks:
            block = doc.blocks.new("TOOL")
            for layer, path in layers:
                for a, b in zip(path, path[1:]):
                    block.add_line(a, b, dxfattribs={"layer": layer})
            space.add_blockref("TOOL", (0, 0))
        path = self.folder / "drawing.dxf"
        doc.saveas(path)
        return path

    def run_of(self, path, *arguments, status=(0,)):
        done = self.run_program("compute", path, "--json", *arguments)
        self.assertIn(done.returncode, status, done.stderr)
        return json.loads(done.stdout) if done.stdout else None

    def told(self, result, kind, text, warning=True):
        """The finding of the kind whose text has the words."""
        found = [f for f in result["findings"] if f["kind"] == kind and text in f["text"]]
        self.assertTrue(found, (kind, text, result["findings"]))
        self.assertEqual(warning, found[0]["warning"], found[0]["text"])
        if warning:
            self.assertIn(found[0]["text"], result["verdict"])
        return found[0]

    def test_a_clean_tool_is_sure_by_every_algorithm(self):
        path = self.draw(UPPER, mirrored(UPPER), [(20, -10), (20, 10)])
        for algorithm in ALGORITHMS:
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--algorithm", algorithm)
                if algorithm in ("1", "2"):  # their outline reaches across the axis, which is told
                    self.told(result, "gap", "nothing is drawn along the outline from 60, ")
                    self.told(result, "exact", "volume")
                else:
                    self.assertEqual("sure", result["verdict"])
                kinds = {f["kind"] for f in result["findings"]}
                # Looked at and found good: contour, halves, and the exact envelope beside steps.
                self.assertLessEqual({"outline", "halves"} | ({"exact"} - {algorithm}), kinds)

    def test_halves_that_differ(self):
        lower = [(0, 0), (0, -8), (20, -8), (20, -6), (60, -6), (60, 0)]
        path = self.draw(UPPER, lower)
        for algorithm in ALGORITHMS:
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--algorithm", algorithm)
                self.assertIn("2", self.told(result, "halves", "upper and lower half differ")["text"])

    def test_an_axis_beside_the_mirror_line(self):
        path = self.draw(UPPER, mirrored(UPPER))
        for algorithm in ALGORITHMS:
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0.2", "--algorithm", algorithm)
                self.told(result, "axis", "the drawing is symmetric about y = 0, 0.2 from the axis")

    def test_a_window_that_cuts(self):
        path = self.draw(UPPER, mirrored(UPPER), [(30, 6), (30, 30)], [(40, 6), (40, 30)])
        for algorithm in ALGORITHMS:
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--window=-5,-15,65,15",
                                     "--algorithm", algorithm)
                self.told(result, "window", "the window cuts 2 entities")

    def test_a_gap_that_was_bridged(self):
        path = self.draw(UPPER[:3], [(32, 6), (60, 6), (60, 0)])
        for algorithm in ALGORITHMS:
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--half", "upper", "--algorithm",
                                     algorithm, status=(0, 1))
                if result and result["envelope"]:
                    self.assertTrue(result["verdict"].startswith("worth a look"), result["verdict"])
                    self.assertTrue([f for f in result["findings"]
                                     if f["warning"] and f["kind"] in ("gap", "exact")])

    def test_a_gap_in_one_half_is_told_by_its_length(self):
        # Nothing is drawn of the lower half between two steps: the halves do not differ by a radius.
        high = [(0, 0), (0, 10), (20, 10), (20, 36), (60, 36), (60, 0)]
        path = self.draw(high, mirrored(high[:3]), mirrored([(23, 36), *high[4:]]))
        for algorithm in ("exact", "3"):
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--half", "upper", "--algorithm", algorithm)
                text = self.told(result, "halves", "one half is not drawn over")["text"]
                self.assertAlmostEqual(3, float(text.split("over ")[1].split()[0]), delta=0.6)
                self.assertNotIn("differ by up to", result["verdict"])

    def test_nothing_sure_is_an_object_too(self):
        path = self.draw([(0, 0), (30, 4), (22, 31), (5, 17)])
        done = self.run_program("compute", path, "--json")
        self.assertEqual(1, done.returncode, done.stderr)
        told = json.loads(done.stdout)
        self.assertEqual([], told["tools"])
        self.assertIn("no tool was found with confidence", told["verdict"])
        self.assertIsInstance(told["candidates"], list)

    def test_frames_of_tools_are_no_part_of_them(self):
        sheet = framed_tools.Sheet()
        for number in ("T-1", "T-2"):
            sheet.add(number)
        path = self.folder / "framed.dxf"
        sheet.save(path)
        tools = self.run_of(path)["tools"]
        self.assertEqual([150, 150], [round(t["axis"][1][0] - t["axis"][0][0], 6) for t in tools])
        self.assertEqual(["sure", "sure"], [t["verdict"] for t in tools])

    def test_an_end_that_was_moved_to_the_axis(self):
        # Nothing closes the shank: its end is moved to the axis, or a face made up.
        slanted = [(0, 0), (0, 10), (40, 10), (52, 4)]
        path = self.draw(slanted, [(0, 1), (20, 1)])
        for algorithm in ("3", "1", "2"):
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--half", "upper", "--algorithm",
                                     algorithm, status=(0, 1))
                if result and result["envelope"]:
                    self.assertNotEqual("sure", result["verdict"])

    def test_rounds_that_reach_beyond(self):
        for rounds in ({"circles": [((30, 6), 5)]}, {"ellipses": [((30, 6), (6, 0), 0.7)]}):
            path = self.draw(UPPER, mirrored(UPPER), **rounds)
            for algorithm in ALGORITHMS:
                with self.subTest((algorithm, tuple(rounds))):
                    result = self.run_of(path, "--centre", "0,0", "--algorithm", algorithm)
                    self.told(result, "beyond", "reaches")

    def test_a_border_taken_for_a_part(self):
        border = [(-50, -60), (150, -60), (150, 60), (-50, 60), (-50, -60)]
        path = self.draw(UPPER, mirrored(UPPER), border)
        for algorithm in ALGORITHMS:
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--algorithm", algorithm, status=(0, 1))
                if result and result["envelope"]:
                    self.told(result, "border", "a sheet's border or title block")

    def test_one_side_that_is_empty(self):
        path = self.draw(UPPER)
        for algorithm in ALGORITHMS:
            with self.subTest(algorithm):
                result = self.run_of(path, "--centre", "0,0", "--half", "upper", "--algorithm", algorithm)
                self.told(result, "halves", "only", warning=False)

    def test_steps_beside_the_exact_envelope(self):
        # An end without a face, its line moved in: the steps lose what lies behind.
        path = self.draw([(0, 10), (50, 10)], [(50, 10), (50, 0)], [(0, 3), (0, 0)], [(10, 3), (10, 10)])
        result = self.run_of(path, "--centre", "0,0", "--half", "upper", "--algorithm", "3", status=(0, 1))
        if result and result["envelope"]:
            kinds = [f["kind"] for f in result["findings"]]
            self.assertIn("exact", kinds)

    def test_filters_look_into_blocks(self):
        path = self.draw(blocks=[[("PART", UPPER), ("PART", mirrored(UPPER)),
                                  ("MARKS", [(20, 10), (30, 25), (60, 6)])]])
        whole = self.run_of(path, "--centre", "0,0")
        self.assertGreater(whole["envelope"]["diameter"], 40)
        for option in (("--exclude-layer", "MARKS"), ("--layer", "P*")):
            result = self.run_of(path, "--centre", "0,0", *option)
            self.assertAlmostEqual(20, result["envelope"]["diameter"])
            self.assertEqual("sure", result["verdict"])
        steps = self.run_of(path, "--centre", "0,0", "--layer", "PART", "--algorithm", "3", "--half", "upper")
        self.told(steps, "note", "this algorithm takes blocks whole")
        self.assertIsNone(self.run_of(path, "--centre", "0,0", "--exclude-type", "INSERT", status=(1,)))

    def test_info_lists_the_candidates(self):
        path = self.draw(UPPER, mirrored(UPPER), [(-5, 0), (65, 0)])
        done = self.run_program("info", path, "--json")
        [tool, *_] = json.loads(done.stdout)["candidates"]
        self.assertEqual(([[0, 0], [60, 0]], True), (tool["axis"], tool["sure"]))
        self.assertEqual("line through both ends", tool["cue"])
        text = self.run_program("info", path).stdout
        self.assertIn("axis 0,0 to 60,0 by its line through both ends, confidence", text)
        self.assertIn("--axis=0,0,60,0", text)

    def test_marks_that_touch_the_contour_are_told(self):
        for has_text in (False, True):
            path = self.draw(UPPER, mirrored(UPPER), [(-5, 0), (65, 0)], [(40, 6), (45, 20)])
            if has_text:
                doc = ezdxf.readfile(path)
                doc.modelspace().add_text("Ra 1.6", height=2.5).set_placement((46, 21))
                doc.saveas(path)
            result = self.run_of(path)
            self.assertAlmostEqual(20, result["envelope"]["diameter"])
            self.told(result, "left out", "1 line that touches the contour at 40, 6", warning=not has_text)

    def test_what_cannot_be_drawn_as_it_is_stated_is_told(self):
        def falling_knots(space):
            spline = space.add_open_spline([(30, 6), (35, 20), (40, 20), (45, 6), (50, 6)])
            spline.knots = [0, 0, 0, 0, 2, 1, 1, 1, 1]
            return spline

        def no_radius(space):
            return space.add_arc((30, 12), 0, 0, 180)

        def no_block(space):
            return space.add_blockref("NOWHERE", (30, 6))

        for add in (falling_knots, no_radius, no_block):
            path = self.draw(UPPER, mirrored(UPPER), [(-5, 0), (65, 0)])
            doc = ezdxf.readfile(path)
            handle = add(doc.modelspace()).dxf.handle
            doc.saveas(path)
            for arguments in (("--centre", "0,0"), (), ("--centre", "0,0", "--algorithm", "3", "--half", "upper")):
                with self.subTest(add=add.__name__, arguments=arguments):
                    result = self.run_of(path, *arguments)
                    self.assertAlmostEqual(20, result["envelope"]["diameter"])
                    self.told(result, "left out", f" {handle}")

    def test_a_failed_run_is_never_sure(self):
        path = self.draw([(0, 0), (0, 10), (20, 10), (30, 0), (40, 10), (60, 10), (60, 0)])
        result = self.run_of(path, "--axis", "0,0,1,0", "--half", "upper", status=(1,))
        self.assertIn("pick one tool alone", result["verdict"])
        self.assertTrue(result["verdict"].startswith("failed: "), result["verdict"])

    def test_strict(self):
        path = self.draw(UPPER, [(0, 0), (0, -8), (20, -8), (20, -6), (60, -6), (60, 0)])
        self.assertEqual(0, self.run_program("compute", path, "--centre", "0,0").returncode)
        self.assertEqual(1, self.run_program("compute", path, "--centre", "0,0", "--strict").returncode)
        done = self.run_program("batch", path, "--out", "out", "--strict", "--json")
        self.assertEqual(1, done.returncode, done.stderr)
        [tool] = json.loads(done.stdout)["drawings"][0]["tools"]
        self.assertTrue(tool["verdict"].startswith("worth a look: "), tool["verdict"])
        text = self.run_program("batch", path, "--out", "out").stdout
        self.assertIn(tool["verdict"], text)


if __name__ == "__main__":
    main()
