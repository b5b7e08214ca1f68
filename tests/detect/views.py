"""Sheets of a second kind, drawn by other habits than those of sheets.py, and the truth about them.

The detector's weights were never set on these. Tools: threaded, one-sided, hollow, short and wide,
with concave and convex arcs. Around them: several views of one part, enlarged details with a break
line, half sections, section arrows across the part, balloons and marks that touch the contour,
dimensions taken apart in other styles (open heads, ticks, arcs of angles), title blocks and parts
lists as closed polylines, centre lines with line types that are badly chosen, hidden or missing,
inches, nested and mirrored blocks, gaps, overshoots and doubled lines.
"""

import math
import random

import sheets
from sheets import QUARTER

SAMPLES = 4000


class Swept:
    """The truth about a tool whose halves differ: what both of them sweep."""

    def __init__(self, start, end, halves, kind):
        self.start, self.end, self.kind = start, end, kind
        self.points = [sheets.chords(half) for half in halves]

    @property
    def length(self):
        return math.dist(self.start, self.end)

    @property
    def radius(self):
        return max(r for half in self.points for _, r in half)

    @property
    def area(self):
        """Of the greatest height at each place along the axis."""
        step, heights = self.length / SAMPLES, [0.0] * SAMPLES
        for half in self.points:
            for (s1, r1), (s2, r2) in zip(half, half[1:]):
                if s1 > s2:
                    s1, r1, s2, r2 = s2, r2, s1, r1
                for i in range(max(0, math.ceil(s1 / step - 0.5)),
                               min(SAMPLES, math.ceil(s2 / step - 0.5))):
                    s = (i + 0.5) * step
                    heights[i] = max(heights[i], r1 + (r2 - r1) * (s - s1) / (s2 - s1))
        return sum(heights) * step


# ---- tools: corners (s, r, bulge) of the upper half, and of the lower one when it differs


def tap(rng):
    """Threads on both halves, half a pitch apart."""
    d, pitch = rng.choice([6, 8, 10, 12, 16]), rng.choice([1, 1.25, 1.5, 2])
    count, lead = rng.randint(8, 16), rng.randint(2, 4)

    def half(shift):
        out = [(0, 0, 0), (0, d * 0.3, 0)]
        for i in range(count):
            crest = min(d / 2, d * 0.34 + (d * 0.16) * (i + 1) / lead)
            out += [((i + 0.25 + shift) * pitch, crest, 0), ((i + 0.75 + shift) * pitch, crest - 0.4 * pitch, 0)]
        end = (count + 1) * pitch
        return out + [(end, d * 0.38, 0), (end + d, d * 0.38, 0), (end + d + 1, d * 0.4, 0),
                      (end + 5 * d, d * 0.4, 0), (end + 5 * d, 0, 0)]

    return half(0), half(0.5)


def reamer(rng):
    d = rng.choice([6, 8, 12, 20])
    cut = d * rng.uniform(2, 4)
    return [(0, 0, 0), (0, d / 2 - 0.8, 0), (0.8, d / 2, 0), (cut, d / 2 - 0.05, 0), (cut + 1, d * 0.4, 0),
            (cut * 2, d * 0.4, 0), (cut * 2 + 2, d * 0.45, 0), (cut * 3.5, d * 0.45 + 1.5, 0),
            (cut * 3.5 + 1, d * 0.35, 0), (cut * 3.5 + 6, d * 0.35, 0), (cut * 3.5 + 6, 0, 0)], None


def countersink(rng):
    d, neck = rng.choice([12, 16, 25, 31]), rng.uniform(4, 6)
    cone = (d - 3) / 2 / math.tan(math.radians(rng.choice([30, 45, 60])))
    return [(0, 0, 0), (0, 1.5, 0), (cone, d / 2, 0), (cone + 2, d / 2, 0), (cone + 6, neck, 0),
            (cone + rng.uniform(35, 60), neck, 0), (cone + 62, neck - 1, 0), (cone + 62, 0, 0)], None


def lollipop(rng):
    d = rng.choice([6, 10, 16])
    neck = d * 0.3
    s = d / 2 + math.sqrt(d * d / 4 - neck * neck)
    bulge = -math.tan((math.pi - math.asin(2 * neck / d)) / 4)
    return [(0, 0, bulge), (s, neck, 0), (s + d * 2, neck, 0), (s + d * 2.4, d * 0.5, 0),
            (s + d * 6, d * 0.5, 0), (s + d * 6, 0, 0)], None


def form_cutter(rng):
    """A concave and a convex quarter."""
    r, d = rng.uniform(2, 5), rng.choice([20, 30, 40])
    return [(0, 0, 0), (0, d / 2 - r, QUARTER), (r, d / 2, 0), (2 * r, d / 2, -QUARTER),
            (3 * r, d / 2 - r, 0), (3 * r + 4, d / 2 - r, 0), (3 * r + 4, 8, 0), (3 * r + 70, 8, 0),
            (3 * r + 70, 0, 0)], None


def shell_mill(rng):
    """Wider than long."""
    d, h = rng.choice([50, 63, 80, 100]), rng.uniform(30, 45)
    return [(0, 0, 0), (0, d / 2 - 2, 0), (2, d / 2, 0), (12, d / 2, 0), (16, d * 0.38, 0),
            (h, d * 0.38, 0), (h, 0, 0)], None


def taper_shank(rng):
    d, flange = rng.choice([10, 16, 20]), rng.choice([25, 31.5, 40])
    groove = flange - 4
    return [(0, 0, 0), (0, d / 2, 0), (45, d / 2, 0), (45, d / 2 + 4, 0), (70, d / 2 + 6, 0),
            (70, flange, 0), (78, flange, 0), (81, groove, 0), (84, groove, 0), (87, flange, 0),
            (95, flange, 0), (95, 22, 0), (95 + 101, 22 - 101 * 7 / 48, 0), (196, 0, 0)], None


def indexable_drill(rng):
    """One insert stands out on one half."""
    d = rng.choice([20, 25, 32])
    body = d / 2 - 0.8
    lower = [(0, 0, 0), (1.5, body, 0), (d * 3, body, 0), (d * 3, d * 0.7, 0), (d * 3 + 8, d * 0.7, 0),
             (d * 3 + 8, d * 0.4, 0), (d * 5, d * 0.4, 0), (d * 5, 0, 0)]
    upper = [(0, 0, 0), (0.4, d / 2 - 1.5, 0), (0.4, d / 2, 0), (7, d / 2, 0), (7.5, body, 0), *lower[2:]]
    return upper, lower


def centre_drill(rng):
    d = rng.choice([2, 3.15, 5])
    big = d * 2.5
    tip = d / 2 / math.tan(math.radians(59))
    one = [(0, 0, 0), (tip, d / 2, 0), (tip + d, d / 2, 0), (tip + d + (big - d) / 2 / math.tan(math.radians(30)), big / 2, 0)]
    length = big * 5
    return one + [(length - s, r, 0) for s, r, _ in reversed(one)], None


def grooved_pin(rng):
    """Rectangular grooves at random places."""
    r, s = rng.uniform(6, 10), 0.0
    out = [(0, 0, 0), (0, r - 1, 0), (1, r, 0)]
    s = 1
    for _ in range(rng.randint(2, 5)):
        s += rng.uniform(5, 15)
        deep, wide = rng.uniform(1, 3), rng.uniform(2, 5)
        out += [(s, r, 0), (s, r - deep, 0), (s + wide, r - deep, 0), (s + wide, r, 0)]
        s += wide
    s += rng.uniform(8, 25)
    return out + [(s, r, 0), (s, r * 0.6, 0), (s + 20, r * 0.6, 0), (s + 20, 0, 0)], None


KINDS = [tap, reamer, countersink, lollipop, form_cutter, shell_mill, taper_shank, indexable_drill,
         centre_drill, grooved_pin]


class Views(sheets.Sheet):
    def linetype(self, name, pattern=None):
        if name not in self.doc.linetypes:
            self.doc.linetypes.add(name, pattern or sheets.DASHDOT)
        return name

    def part(self, x, y, upright=False, kind=None, axis=None, half=None):
        """A tool with its left or lower end at (x, y); its truth joins the sheet's."""
        rng = self.rng
        kind = kind or rng.choice(KINDS)
        upper, lower = kind(rng)
        lower = lower or upper
        if rng.random() < 0.5:
            upper, lower = sheets.turned_round(upper), sheets.turned_round(lower)
        total, big = upper[-1][0], max(r for _, r, _ in upper)
        half = self.trait("half", 0.2) if half is None else half

        def place(s, r):
            return (x - r, y + s) if upright else (x + s, y + r)

        outline = self.layer(rng.choice(["0", "PART", "VISIBLE", "AXIS", "粗实线", "Kontur"]))
        in_block = self.trait("block", 0.25)
        if in_block:
            self.target = self.doc.blocks.new(f"B{len(self.tools)}_{len(list(self.doc.blocks))}")
        self.draw_halves(place, upper, None if half else lower, outline)
        if half and self.trait("foot drawn", 0.4):
            self.line(*place(0, 0), *place(total, 0), layer=outline)
        if not half:
            self.inside(place, upper, lower, total, big, outline)
        self.axis(place, total, big, outline, axis, half)
        if in_block:
            block, self.target = self.target, self.space
            self.insert(block)
        self.tools.append(Swept(self.at(*place(0, 0)), self.at(*place(total, 0)),
                                [[(s * self.scale, r * self.scale, b) for s, r, b in h]
                                 for h in ([upper] if half else [upper, lower])], kind.__name__))
        self.marks(place, upper, total, big, half, outline)
        return total, big

    def insert(self, block):
        if self.trait("nested block", 0.3):
            outer = self.doc.blocks.new(block.name + "_OUTER")
            outer.add_blockref(block.name, (0, 0))
            block = outer
        self.space.add_blockref(block.name, (0, 0))

    def draw_halves(self, place, upper, lower, layer):
        rng, how = self.rng, self.rng.choice(["lines", "polyline", "ring", "split"])
        self.traits.append(f"contour as {how}")
        sides = [(upper, 1)] + ([(lower, -1)] if lower else [])
        if how == "ring" and lower:
            # One closed polyline round both halves.
            back = sheets.turned_round(lower)
            total = lower[-1][0]
            ring = [(*place(s, r), b) for s, r, b in upper[:-1]]
            ring += [(*place(total - s, -r), b) for s, r, b in back[:-1]]
            self.path(ring, True, False, layer=layer)
            return
        for half, side in sides:
            points = [(*place(s, side * r), side * b) for s, r, b in half]
            if how == "split":
                points = [q for a, b in zip(points, points[1:]) for q in
                          ([a] if a[2] else [a, ((a[0] + b[0]) / 2, (a[1] + b[1]) / 2, 0)])] + points[-1:]
            self.path(points, False, how != "polyline", layer=layer)
        if self.trait("drawn twice", 0.1):
            self.path([(*place(s, r), b) for s, r, b in upper], False, True, layer=layer)

    def inside(self, place, upper, lower, total, big, layer):
        rng = self.rng
        if self.trait("edges", 0.7):
            for s, r, _ in upper[1:-1]:
                other = [q for t, q, _ in lower if abs(t - s) < 1e-9]
                if other and rng.random() < 0.6 and r > 0:
                    self.line(*place(s, -max(min(other), 1e-6)), *place(s, r), layer=layer)
        low = min(r for _, r, _ in upper if r > 0) * 0.8
        if self.trait("helix", 0.3):
            for k in range(3):
                s = total * (0.08 + 0.07 * k)
                points = [self.at(*place(s + low * 0.5 * t, low * math.sin(math.pi * (t - 1) / 2)))
                          for t in (0, 0.5, 1, 1.5, 2)]
                self.target.add_spline(points, dxfattribs={"layer": layer})
        if self.trait("half section", 0.2):
            # Hatch lines, taken apart, on the upper half only, and the edge of a bore.
            for k in range(8):
                s = total * 0.75 + k * low * 0.2
                if s + low * 0.5 < total:
                    self.line(*place(s, low * 0.35), *place(s + low * 0.4, low * 0.75), layer=layer)
            self.line(*place(total * 0.7, low * 0.3), *place(total, low * 0.3), layer=layer)
            self.line(*place(total * 0.7, 0), *place(total * 0.7, low * 0.3), layer=layer)
        if self.trait("coolant bore", 0.3):
            self.linetype("HIDDEN", [4.5, 3.0, -1.5])
            for side in (1, -1):
                self.line(*place(total * 0.2, side * low * 0.2), *place(total, side * low * 0.2), layer=layer,
                          linetype="HIDDEN")
        if self.trait("flat", 0.2):
            # A clamping flat: a rectangle with a cross, nearer to one side.
            a, b, h = total * 0.8, total * 0.92, low * 0.4
            self.path([(*place(a, -h), 0), (*place(b, -h), 0), (*place(b, h), 0), (*place(a, h), 0)], True, True,
                      layer=layer)
            self.line(*place(a, -h), *place(b, h), layer=layer)
            self.line(*place(a, h), *place(b, -h), layer=layer)

    def axis(self, place, total, big, outline, style, half):
        rng = self.rng
        style = style or rng.choice(["named", "layer", "by name only", "continuous layer", "full", "short", "none",
                                     "dashed", "phantom"])
        self.traits.append(f"axis {style}")
        over = max(2.0, total * 0.03)
        ends = (*place(-over, 0), *place(total + over, 0))
        name = rng.choice(sheets.CENTRE_NAMES)
        if style == "named":
            self.line(*ends, layer=outline, linetype=self.linetype(name))
        elif style == "layer":
            self.linetype(name)
            self.line(*ends, layer=self.layer("CL-" + name, name))
        elif style == "by name only":
            # A line type that the table knows without any pattern.
            self.line(*ends, layer=outline, linetype=self.linetype("CENTER", [0.0]))
        elif style == "continuous layer":
            self.line(*ends, layer=self.layer("中心线层"))
        elif style == "full":
            self.line(*ends, layer=outline)
        elif style == "short":
            self.line(*place(-over, 0), *place(total * 0.5, 0), layer=outline, linetype=self.linetype(name))
        elif style == "dashed":
            self.line(*ends, layer=outline, linetype=self.linetype("DASHED", [6.0, 4.0, -2.0]))
        elif style == "phantom":
            self.line(*ends, layer=outline, linetype=self.linetype("PHANTOM", [16.0, 8.0, -2.0, 2.0, -2.0, 2.0, -2.0]))

    # ---- what touches the contour or stands near it

    def marks(self, place, upper, total, big, half, layer):
        rng = self.rng
        steps = [(s, r) for s, r, _ in upper[1:-1] if r > big * 0.3]
        if self.trait("open heads", 0.35):
            self.dimension(place, *steps[0], *steps[-1], big + rng.uniform(8, 14), "open")
        if self.trait("ticks", 0.3):
            self.dimension(place, 0, big, total, big, big + rng.uniform(18, 24), "tick", gap=rng.choice([0.6, 0.0]))
        if self.trait("diameters", 0.4) and not half:
            for k in range(rng.randint(1, 2)):
                s, r = rng.choice(steps)
                self.diameter(place, r, (-10 - 9 * k) if s < total / 2 else total + 10 + 9 * k, s)
        if self.trait("angle", 0.25):
            # An arc between two short lines from a corner of the contour, with open heads.
            s, r = steps[0]
            self.angle_mark(place(s, r + 0.5), 9)
        if self.trait("roughness touching", 0.3):
            s, r = (total * 0.9, None)
            r = self.height_at(upper, s)
            self.line(*place(s, r), *place(s - 1.5, r + 2.6))
            self.line(*place(s, r), *place(s + 3, r + 5.2))
            self.line(*place(s - 1.5, r + 2.6), *place(s + 1.5, r + 2.6))
            self.text("Ra 1.6", *place(s, r + 7), 2)
        if self.trait("balloon", 0.3):
            s = total * rng.uniform(0.3, 0.6)
            r = self.height_at(upper, s)
            self.line(*place(s, r), *place(s + 6, r + 15))
            self.circle(*place(s + 7.8, r + 19), 4.4)
            self.text(str(rng.randint(1, 9)), *place(s + 7.8, r + 19), 3)
        if self.trait("section arrows", 0.25) and not half:
            s = total * rng.uniform(0.4, 0.8)
            self.linetype("PHANTOM", [16.0, 8.0, -2.0, 2.0, -2.0, 2.0, -2.0])
            for side in (1, -1):
                self.line(*place(s, side * (big + 2)), *place(s, side * (big + 7)))
                self.line(*place(s, side * (big + 5)), *place(s + 6, side * (big + 5)))
                self.text("A", *place(s + 3, side * (big + 9)), 3.5)
        if self.trait("datum", 0.2):
            s = total * 0.7
            r = self.height_at(upper, s)
            self.path([(*place(s - 1.5, r), 0), (*place(s + 1.5, r), 0), (*place(s, r + 2.5), 0)], True, True)
            self.line(*place(s, r + 2.5), *place(s, r + 8))
            self.path([(*place(s - 3, r + 8), 0), (*place(s + 3, r + 8), 0), (*place(s + 3, r + 14), 0),
                       (*place(s - 3, r + 14), 0)], True, False)
            self.text("B", *place(s, r + 11), 3)

    @staticmethod
    def height_at(upper, s):
        best = 0
        points = sheets.chords(upper)
        for (s1, r1), (s2, r2) in zip(points, points[1:]):
            if min(s1, s2) <= s <= max(s1, s2) and s1 != s2:
                best = max(best, r1 + (r2 - r1) * (s - s1) / (s2 - s1))
        return best

    def head(self, tip, dx, dy, style):
        x, y = tip
        n = math.hypot(dx, dy)
        dx, dy = dx / n, dy / n
        if style == "open":
            for side in (0.25, -0.25):
                self.line(x, y, x - 3 * dx + side * 3 * dy, y - 3 * dy - side * 3 * dx)
        elif style == "tick":
            self.line(x - 1.2 * (dx - dy), y - 1.2 * (dy + dx), x + 1.2 * (dx - dy), y + 1.2 * (dy + dx))
        else:
            self.arrow(x, y, dx, dy)

    def dimension(self, place, s1, r1, s2, r2, height, style, gap=0.6):
        for s, r in ((s1, r1), (s2, r2)):
            self.line(*place(s, r + gap), *place(s, height + 1.5))
        a, b = place(s1, height), place(s2, height)
        self.line(*a, *b)
        self.head(a, a[0] - b[0], a[1] - b[1], style)
        self.head(b, b[0] - a[0], b[1] - a[1], style)
        upright = abs(b[0] - a[0]) < abs(b[1] - a[1])
        self.text(f"{abs(s2 - s1):.2f}", *place((s1 + s2) / 2, height + 2), 2.5, math.pi / 2 if upright else 0)

    def diameter(self, place, r, where, s):
        out = 1 if where > s else -1
        for side in (1, -1):
            self.line(*place(s + out * 0.8, side * r), *place(where + out * 1.5, side * r))
        a, b = place(where, -r), place(where, r)
        self.line(*a, *b)
        for p, q in ((a, b), (b, a)):
            self.head(p, p[0] - q[0], p[1] - q[1], "filled")
        upright = abs(b[0] - a[0]) < abs(b[1] - a[1])
        self.text(f"%%c{2 * r:.1f}", *place(where - 2, 0), 2.5, math.pi / 2 if upright else 0)

    def angle_mark(self, at, size):
        x, y = at
        self.line(x, y, x + size * 1.2, y)
        self.line(x, y, x + size * 0.85, y + size * 0.85)
        points = [self.at(x + size * math.cos(t), y + size * math.sin(t)) for t in (0, math.pi / 8, math.pi / 4)]
        if self.mirror:
            points.reverse()
        arc = sheets.ezdxf.math.ConstructionArc.from_3p(points[0], points[2], points[1])
        arc.add_to_layout(self.target)
        self.text("45%%d", x + size * 1.3, y + size * 0.5, 2.5)

    # ---- what else stands on a sheet

    def end_view(self, x, y, r, flutes=True):
        name = self.linetype("CENTER")
        self.circle(x, y, r)
        if self.rng.random() < 0.6:
            self.circle(x, y, r * 0.7)
        if flutes:
            for k in range(4):
                t = math.pi / 2 * k + 0.3
                a = (x + r * math.cos(t), y + r * math.sin(t))
                b = (x + 0.2 * r * math.cos(t + 0.9), y + 0.2 * r * math.sin(t + 0.9))
                self.path([(*a, 0.4), (*b, 0)], False, False)
        self.line(x - r * 1.2, y, x + r * 1.2, y, linetype=name)
        self.line(x, y - r * 1.2, x, y + r * 1.2, linetype=name)

    def enlarged_detail(self, x, y):
        """A corner of the part, drawn larger, ended by a break line, in a circle or not."""
        self.line(x, y, x + 18, y)
        self.line(x + 18, y, x + 18, y + 6)
        self.line(x + 18, y + 6, x + 26, y + 6)
        points = [self.at(x + 26, y + 6), self.at(x + 25, y + 1), self.at(x + 27, y - 4), self.at(x + 26, y - 10)]
        self.space.add_spline(points)
        points = [self.at(x, y), self.at(x - 1, y - 4), self.at(x + 1, y - 7), self.at(x, y - 10)]
        self.space.add_spline(points)
        if self.rng.random() < 0.5:
            self.circle(x + 13, y - 2, 19)
        self.text("DETAIL B 5:1", x + 13, y + 22, 3.5)

    def top_view(self, x, y, length, wide):
        """Another view of a flat shank: a rectangle with its own centre line."""
        self.path([(x, y - wide, 0), (x + length, y - wide, 0), (x + length, y + wide, 0), (x, y + wide, 0)], True,
                  self.rng.random() < 0.5)
        self.line(x - 4, y, x + length + 4, y, linetype=self.linetype("CENTER"))
        for side in (1, -1):
            self.line(x + length * 0.6, y + side * wide * 0.5, x + length, y + side * wide * 0.5)

    def plate(self, x, y):
        """A plate with holes, as of a fixture: symmetric both ways, with centre lines."""
        name = self.linetype("CENTER")
        self.path([(x, y, 0), (x + 60, y, 0), (x + 60, y + 36, 0), (x, y + 36, 0)], True, False)
        for dx in (12, 48):
            for dy in (10, 26):
                self.circle(x + dx, y + dy, 3)
                self.line(x + dx - 5, y + dy, x + dx + 5, y + dy, linetype=name)
                self.line(x + dx, y + dy - 5, x + dx, y + dy + 5, linetype=name)
        self.line(x - 4, y + 18, x + 64, y + 18, linetype=name)
        self.line(x + 30, y - 4, x + 30, y + 40, linetype=name)

    def title_block(self, x1, y1, x2, y2):
        """Frame with zones and a title block of closed polylines."""
        self.path([(x1, y1, 0), (x2, y1, 0), (x2, y2, 0), (x1, y2, 0)], True, False)
        if self.rng.random() < 0.7:
            self.path([(x1 - 5, y1 - 5, 0), (x2 + 5, y1 - 5, 0), (x2 + 5, y2 + 5, 0), (x1 - 5, y2 + 5, 0)], True, False)
            for k in range(1, 6):
                x = x1 + (x2 - x1) * k / 6
                self.line(x, y1 - 5, x, y1)
                self.line(x, y2, x, y2 + 5)
                self.text("ABCDEF"[k], x - 10, y2 + 2.5, 2.5)
        for k in range(5):
            self.path([(x2 - 120, y1 + 7 * k, 0), (x2, y1 + 7 * k, 0), (x2, y1 + 7 * k + 7, 0), (x2 - 120, y1 + 7 * k + 7, 0)],
                      True, False)
            self.path([(x2 - 80, y1 + 7 * k, 0), (x2 - 30, y1 + 7 * k, 0), (x2 - 30, y1 + 7 * k + 7, 0),
                       (x2 - 80, y1 + 7 * k + 7, 0)], True, False)
            for x, text in ((x2 - 100, "Material"), (x2 - 55, "HSS-E"), (x2 - 15, "12")):
                self.text(text, x, y1 + 7 * k + 3.5, 2.5)

    def bill(self, x, y):
        """A parts list: rows as closed polylines."""
        for k in range(6):
            for x1, x2 in ((0, 12), (12, 60), (60, 90)):
                self.path([(x + x1, y + 7 * k, 0), (x + x2, y + 7 * k, 0), (x + x2, y + 7 * k + 7, 0),
                           (x + x1, y + 7 * k + 7, 0)], True, False)
            for dx, text in ((6, str(k + 1)), (36, "Screw M4x12"), (75, "2")):
                self.text(text, x + dx, y + 7 * k + 3.5, 2.5)

    def logo_of_arcs(self, x, y):
        for k in range(3):
            self.path([(x - 8 + k, y - 3 + k, 0.6), (x + 8 - k, y - 3 + k, 0.6)], True, False)
        self.path([(x - 12, y - 6, 0), (x + 12, y - 6, 0), (x + 12, y + 8, 0), (x - 12, y + 8, 0)], True, True)

    def projection_symbol(self, x, y):
        """First angle projection: a truncated cone, with its axis, and two circles."""
        name = self.linetype("CENTER")
        self.path([(x, y - 2, 0), (x + 8, y - 4, 0), (x + 8, y + 4, 0), (x, y + 2, 0)], True, self.rng.random() < 0.5)
        self.line(x - 2, y, x + 10, y, linetype=name)
        self.circle(x + 16, y, 4)
        self.circle(x + 16, y, 2)
        self.line(x + 11, y, x + 21, y, linetype=name)
        self.line(x + 16, y - 5, x + 16, y + 5, linetype=name)


def make(seed):
    rng = random.Random(seed * 104729 + 7)
    turn = rng.choice([0, 0, 0, 0, 0, math.pi / 2, math.pi, math.radians(rng.uniform(3, 87))])
    inch = rng.random() < 0.25
    sheet = Views(seed + 500000, scale=1 / 25.4 if inch else rng.choice([1, 1, 1, 0.01, 10]), turn=turn,
                  mirror=rng.random() < 0.15, move=rng.choice([(0, 0), (0, 0), (420, 297), (-5e4, 3e5)]))
    if inch:
        sheet.doc.header["$INSUNITS"] = 1
    upright = sheet.trait("upright", 0.3)
    length, big = sheet.part(0, 0, upright)
    if sheet.trait("end view", 0.3):
        where = rng.choice([-big * 1.9 - 25, length + big * 1.9 + 25])
        sheet.end_view(*((0, where) if upright else (where, 0)), big, sheet.rng.random() < 0.6)
    beside = big + 75
    if sheet.trait("second tool", 0.25):
        if upright:
            length2, big2 = sheet.part(beside + 50, 0, True)
        else:
            length2, big2 = sheet.part(0, -beside - 50, False)
    elif sheet.trait("the same again", 0.15):
        # Two of one shape beside one another: a mirror line lies between them.
        sheet.rng.seed(seed)
        kind = sheet.rng.choice(KINDS)
        state = sheet.rng.getstate()
        for k in (1, 2):
            sheet.rng.setstate(state)
            sheet.part(*((beside + 120 * k, 0) if upright else (0, -beside - 120 * k)), upright, kind, half=False)
    if sheet.trait("detail", 0.25):
        sheet.enlarged_detail(-120, 120)
    if sheet.trait("top view", 0.15) and not upright:
        sheet.traits.append("flat")
        sheet.top_view(0, 140 + big, length * 0.5, 9)
    if sheet.trait("plate", 0.15):
        sheet.plate(-180, 40)
    if sheet.trait("parts list", 0.25):
        sheet.bill(180, -330)
    if sheet.trait("logo", 0.25):
        sheet.logo_of_arcs(-170, -330)
    if sheet.trait("projection symbol", 0.25):
        sheet.projection_symbol(-140, -330)
    if sheet.trait("frame", 0.5):
        sheet.title_block(-260, -400, 420, 380)
    return sheet
