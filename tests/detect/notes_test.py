"""Marks of every kind on one tool: none of them becomes part of its envelope.

usage: notes_test.py PROGRAM

Each kind is drawn alone, on a whole tool and on half of one, upright, turned and mirrored, so that a
mark that is taken for contour is seen by name.
"""

import math
import pathlib
import sys
import tempfile
import unittest

import sheets
import sheets_test
import views

sheets_test.PROGRAM = pathlib.Path(sys.argv[1]).resolve()
PROFILE = [(0, 0, 0), (0, 5, 0), (40, 5, 0), (44, 8, 0), (100, 8, 0), (100, 0, 0)]


class OneTool(views.Views):
    def __init__(self, half, **how):
        super().__init__(1, **how)
        self.half = half
        for side in (1,) if half else (1, -1):
            self.path([(s, side * r, b) for s, r, b in PROFILE], False, True)
        self.line(-4, 0, 104, 0, linetype=self.linetype("CENTER"))
        self.tools.append(sheets.Truth(self.at(0, 0), self.at(100, 0),
                                       [(s * self.scale, r * self.scale, b) for s, r, b in PROFILE], "one"))

    @staticmethod
    def place(s, r):
        return (s, r)


def box(sheet, x, y, widths, texts):
    """Cells in a row with their letters, as of a tolerance of form."""
    for width, text in zip(widths, texts):
        sheet.path([(x, y - 3, 0), (x + width, y - 3, 0), (x + width, y + 3, 0), (x, y + 3, 0)], True, True)
        if text:
            sheet.text(text, x + width / 2, y, 3)
        x += width


def triangle(sheet, s, r, size=2):
    sheet.path([(s - size, r, 0), (s + size, r, 0), (s, r + 1.5 * size, 0)], True, True)
    sheet.line(s, r + 1.5 * size, s, r + 10)


def datum(sheet):
    triangle(sheet, 70, 8)
    box(sheet, 67, 21, [6], ["B"])


def tolerance_of_form(sheet):
    """The first cell holds a sign that is drawn, no text."""
    sheet.line(60, 8, 60, 25)
    sheet.line(60, 25, 66, 25)
    box(sheet, 66, 25, [6, 12, 6], [None, "0.02", "A"])
    sheet.line(68, 24, 70, 26)


def chain_of_dimensions(sheet):
    sheet.dimension(sheet.place, 0, 5, 44, 8, 20, "open", gap=0.0)
    sheet.dimension(sheet.place, 44, 8, 100, 8, 20, "open", gap=0.0)


MARKS = {
    "open heads": lambda s: s.dimension(s.place, 0, 5, 100, 8, 18, "open", gap=0.0),
    "ticks": lambda s: s.dimension(s.place, 0, 5, 100, 8, 18, "tick", gap=0.0),
    "one dimension over the other": lambda s: [s.dimension(s.place, 0, 5, 100, 8, h, k, gap=0.0)
                                               for h, k in ((16, "open"), (26, "tick"))],
    "chain of dimensions": chain_of_dimensions,
    "angle": lambda s: s.angle_mark(s.place(0, 5.5), 9),
    "datum": datum,
    "tolerance of form": tolerance_of_form,
    "balloon": lambda s: (s.line(60, 8, 66, 23), s.circle(67.8, 27, 4.4), s.text("7", 67.8, 27, 3)),
    "arrows of a section": lambda s: [(s.line(60, k * 10, 60, k * 15), s.line(60, k * 13, 66, k * 13),
                                       s.text("A", 63, k * 17, 3)) for k in (1, -1)],
    "roughness": lambda s: (s.line(80, 8, 78.5, 10.6), s.line(80, 8, 83, 13.2), s.line(78.5, 10.6, 81.5, 10.6),
                            s.text("Ra 1.6", 80, 15, 2)),
}
PLACES = [{}, {"turn": math.pi / 2}, {"turn": 0.4, "move": (1e4, -3e4)}, {"mirror": True, "scale": 1 / 25.4}]


class Notes(unittest.TestCase):
    def found(self, sheet):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "sheet.dxf"
            sheet.save(path)
            found, done = sheets_test.run(path)
        self.assertEqual(1, len(found), done.stderr)
        return found[0]

    def test_no_mark_becomes_part_of_the_tool(self):
        for name, draw in MARKS.items():
            for half in (False, True):
                for how in PLACES:
                    with self.subTest(mark=name, half=half, **how):
                        sheet = OneTool(half, **how)
                        draw(sheet)
                        tool = self.found(sheet)
                        self.assertTrue(sheets_test.is_axis(tool, sheet.tools[0]), tool["axis"])
                        area = sheets_test.area_of(tool["envelope"]["vertices"])
                        self.assertAlmostEqual(1, area / sheet.tools[0].area, delta=1e-3)
                        self.assertEqual("sure", tool["verdict"])

    def test_a_triangle_without_a_letter_is_told(self):
        sheet = OneTool(True)
        triangle(sheet, 70, 8)
        self.assertIn("may be a mark", self.found(sheet)["verdict"])

    def test_a_second_drawing_that_is_not_understood_is_told(self):
        sheet = OneTool(False)
        points = [(0, -80), (30, -60), (50, -85), (70, -50), (20, -40), (10, -66), (0, -80)]
        for a, b in zip(points, points[1:]):
            sheet.line(*a, *b)
        self.assertRegex(self.found(sheet)["verdict"], "6 lines around .* neither for a tool nor|another tool")

    def test_an_axis_with_a_badly_chosen_line_type(self):
        sheet = OneTool(False)
        line = next(e for e in sheet.space if e.dxf.linetype == "CENTER")
        line.dxf.linetype = sheet.linetype("DASHED", [6.0, 4.0, -2.0])
        tool = self.found(sheet)
        self.assertEqual(("line through both ends", "sure"), (tool["cue"], tool["verdict"]))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
