"""What the desktop shows of a drawing against what another renderer, the drawing add-on of ezdxf, does.

Run as display_test.py PROGRAM, the comparing one. With QZ_DISPLAY_PICTURES=FOLDER the pictures of the
differences stay there.
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import ezdxf
from ezdxf.enums import TextEntityAlignment
from ezdxf.math import Vec2

from other_renderer import find_shapes

PROGRAM = pathlib.Path(sys.argv[1]).resolve()
ROOT = pathlib.Path(__file__).resolve().parents[2]
SHARED = ROOT.parent / "shared" / "drawings"
TABLE = (ROOT / "docs" / "display.md").read_text(encoding="utf-8")
MOST = 0.02  # of the strokes may be missing or too many


def new():
    drawing = ezdxf.new("R2010", setup=True)
    return drawing, drawing.modelspace()


def curves(msp):
    msp.add_line((0, 0), (40, 10))
    msp.add_arc((60, 10), 10, 30, 250)
    msp.add_circle((90, 10), 10)
    msp.add_ellipse((120, 10), (15, 5), 0.4, 0.5, 5)
    msp.add_open_spline([(100, 30), (110, 60), (130, 20), (150, 50)])
    msp.add_rational_spline([(100, 60), (110, 90), (130, 50), (150, 80)], [1, 4, 1, 1])


def fit_splines(msp):
    """Splines that have only the points that they go through."""
    msp.add_spline([(0, 30), (20, 50), (40, 25), (70, 45), (90, 30)])


def turned(msp):
    """In planes of their own: arcs seen from below, circles that look like ellipses."""
    msp.add_arc((-20, 10, 0), 10, 30, 160, dxfattribs={"extrusion": (0, 0, -1)})
    msp.add_circle((40, 10), 10, dxfattribs={"extrusion": (0, 0.5, 0.8)})
    msp.add_lwpolyline([(-60, 0), (-50, 10, 0, 0, 0.7), (-40, 0)],
                       dxfattribs={"extrusion": (0, 0, -1)})


def polylines(msp):
    msp.add_lwpolyline([(0, 0, 0, 0, 0.5), (20, 0), (20, 20, 0, 0, -1), (0, 20)], close=True)
    msp.add_polyline2d([(40, 0), (60, 5), (50, 20)])
    msp.add_polyline3d([(70, 0, 0), (90, 5, 5), (80, 20, 9)])


def widths(msp):
    msp.add_lwpolyline([(0, 0, 4, 4, 0), (40, 0, 4, 0, 0), (60, 20, 0, 0, 0)])


def faces(msp):
    msp.add_solid([(0, 0), (20, 0), (0, 15), (20, 20)])
    msp.add_trace([(30, 0), (50, 0), (30, 15), (50, 20)])
    msp.add_3dface([(60, 0), (80, 0), (85, 20), (60, 15)])


def hatches(msp):
    hatch = msp.add_hatch()
    hatch.paths.add_polyline_path([(0, 0), (30, 0), (30, 20), (0, 20)], is_closed=True)
    edges = msp.add_hatch().paths.add_edge_path()
    edges.add_line((40, 0), (60, 0))
    edges.add_arc((60, 10), 10, 270, 90)
    edges.add_line((60, 20), (40, 20))
    edges.add_line((40, 20), (40, 0))


def patterns(msp):
    hatch = msp.add_hatch()
    hatch.set_pattern_fill("ANSI31", scale=10)
    hatch.paths.add_polyline_path([(0, 0), (60, 0), (60, 40), (0, 40)], is_closed=True)
    hatch = msp.add_hatch()
    hatch.set_pattern_fill("ANSI37", scale=10, angle=15)
    hatch.paths.add_edge_path().add_ellipse((100, 20), (30, 0), 0.6, 0, 360)


def holes(msp):
    hatch = msp.add_hatch()
    hatch.paths.add_polyline_path([(0, 0), (40, 0), (40, 30), (0, 30)], is_closed=True, flags=1)
    hatch.paths.add_polyline_path([(10, 10), (30, 10), (30, 20), (10, 20)], is_closed=True, flags=16)


def linetypes(msp):
    for row, name in enumerate(("CENTER", "DASHED", "DASHDOT", "DOT", "HIDDEN", "PHANTOM")):
        if name in msp.doc.linetypes:
            msp.add_line((0, 10 * row), (100, 10 * row), dxfattribs={"linetype": name, "ltscale": 8})


def dashed_circles(msp):
    msp.add_circle((130, 25), 20, dxfattribs={"linetype": "DASHED", "ltscale": 8})


def texts(msp):
    msp.add_text("left", height=5).set_placement((0, 0))
    msp.add_text("middle", height=5).set_placement((60, 0), align=TextEntityAlignment.MIDDLE_CENTER)
    msp.add_text("right", height=5, rotation=30).set_placement(
        (100, 0), align=TextEntityAlignment.TOP_RIGHT)
    msp.add_text("between", height=5).set_placement((0, 30), (60, 30), align=TextEntityAlignment.FIT)
    msp.add_line((-10, -10), (110, 40))


def formats(msp):
    msp.add_mtext(r"{\fArial|b1;Bold} and \H3;small\P\C1;second line\Pthird \S1/2; of it",
                  dxfattribs={"char_height": 5, "insert": (0, 40)})
    msp.add_line((-10, -20), (150, 45))


def mtexts(msp):
    msp.add_mtext("wrapped into several lines by its width alone",
                  dxfattribs={"char_height": 5, "insert": (100, 40), "width": 40})
    msp.add_mtext("turned", dxfattribs={"char_height": 5, "insert": (60, -10), "rotation": 90,
                                        "attachment_point": 5})
    msp.add_line((-10, -20), (150, 45))


def blocks(msp):
    block = msp.doc.blocks.new("PART", base_point=(5, 0))
    block.add_line((0, 0), (20, 10))
    block.add_circle((10, 5), 4)
    block.add_attdef("NO", (0, 12), dxfattribs={"height": 3})
    msp.add_blockref("PART", (0, 0)).add_auto_attribs({"NO": "17"})
    msp.add_blockref("PART", (60, 0), dxfattribs={"xscale": 2, "yscale": 0.5, "rotation": 30})
    msp.add_blockref("PART", (120, 0), dxfattribs={"xscale": -1, "column_count": 3, "row_count": 2,
                                                   "column_spacing": 30, "row_spacing": 25})


def dimensions(msp):
    style = {"dimtxt": 5, "dimasz": 4, "dimtsz": 0, "dimblk": "", "dimgap": 1}
    msp.add_linear_dim((0, 30), (0, 0), (50, 0), override=style).render()
    msp.add_aligned_dim((70, 0), (110, 20), 8, override=style).render()
    msp.add_diameter_dim((150, 10), radius=15, angle=30, override=style).render()
    msp.add_radius_dim((200, 10), radius=15, angle=60, override=style).render()
    msp.add_angular_dim_cra((240, 0), 20, 10, 80, 25, override=style).render()


def leaders(msp):
    msp.add_leader([(0, 0), (20, 20), (40, 20)])


def multileaders(msp):
    msp.add_multileader_mtext().quick_leader("note", Vec2(100, 0), Vec2(20, 20))


def points(msp):
    for x in range(0, 50, 10):
        msp.add_point((x, 0))
    msp.add_line((0, 10), (50, 10))


def endless(msp):
    msp.add_xline((0, 0), (1, 1))
    msp.add_ray((50, 0), (1, 0.2))
    msp.add_circle((20, 20), 10)


def multilines(msp):
    msp.add_mline([(0, 0), (40, 0), (40, 30)])


def meshes(msp):
    mesh = msp.add_polymesh((3, 3))
    for i in range(3):
        for j in range(3):
            mesh.set_mesh_vertex((i, j), (20 * i, 15 * j, 5 * i * j))


KINDS = [curves, fit_splines, turned, polylines, widths, faces, hatches, patterns, holes, linetypes,
         dashed_circles, texts, mtexts, formats, blocks, dimensions, leaders, multileaders, points,
         endless, multilines, meshes]
# What is shown otherwise or not at all, with its row in the table of docs/display.md.
OTHERWISE = {"fit_splines": "splines without control points", "dashed_circles": "dashes of full circles",
             "formats": "formats inside paragraphs", "leaders": "arrow heads of leaders",
             "multileaders": "multileaders",
             "endless": "construction lines and rays", "multilines": "multilines",
             "meshes": "meshes"}


def compare(drawing, name, folder):
    """Parts missing and too many, texts and those missing; None when the other one shows nothing."""
    shapes = folder / (name + ".shapes")
    if not find_shapes(drawing, shapes):
        return None
    path = folder / (name + ".dxf")
    drawing.saveas(path)
    picture = folder / (name + ".png")
    done = subprocess.run([PROGRAM, path, shapes, picture], capture_output=True, text=True, timeout=120)
    if done.returncode != 0:
        raise AssertionError("%s: %s" % (name, done.stderr))
    missing, much, texts_, none = done.stdout.split()[-4:]
    return float(missing), float(much), int(texts_), int(none)


def kinds_of(path):
    """The drawing reduced to each of its kinds of entities, one after the other."""
    names = sorted({e.dxftype() for e in ezdxf.readfile(path).modelspace()})
    for name in names:
        drawing = ezdxf.readfile(path)
        msp = drawing.modelspace()
        for entity in list(msp):
            if entity.dxftype() != name:
                msp.delete_entity(entity)
        yield name, drawing


class Display(unittest.TestCase):
    def setUp(self):
        kept = os.environ.get("QZ_DISPLAY_PICTURES")
        if kept:
            self.folder = pathlib.Path(kept)
            self.folder.mkdir(exist_ok=True)
        else:
            scratch = tempfile.TemporaryDirectory()
            self.addCleanup(scratch.cleanup)
            self.folder = pathlib.Path(scratch.name)

    def judge(self, name, result):
        print("%-42s %s" % (name, "nothing to compare" if result is None else
                            "missing %.3f  too many %.3f  texts %d, missing %d" % result))
        if result is None:
            return
        missing, much, _, none = result
        if name in OTHERWISE:
            self.assertTrue(missing > MOST or much > MOST or none, name + " is shown; say so")
            self.assertIn("| %s |" % OTHERWISE[name], TABLE)
            return
        self.assertLessEqual(missing, MOST, name)
        self.assertLessEqual(much, MOST, name)
        self.assertEqual(0, none, name)

    def test_each_kind(self):
        for fill in KINDS:
            with self.subTest(fill.__name__):
                drawing, msp = new()
                fill(msp)
                self.judge(fill.__name__, compare(drawing, fill.__name__, self.folder))

    def test_drawings(self):
        paths = sorted((ROOT / "examples").glob("*.dxf"))
        if SHARED.is_dir():
            paths += sorted(SHARED.glob("*.dxf"))
        else:
            print("without the shared drawings, which are not here")
        for path in paths:
            for kind, drawing in kinds_of(path):
                name = "%s.%s" % (path.stem, kind)
                with self.subTest(name):
                    self.judge(name, compare(drawing, name, self.folder))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=1)
