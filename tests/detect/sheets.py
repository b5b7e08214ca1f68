"""Sheets with tools on them, at random, and the truth about each tool.

A sheet has one or two tools (whole or half, drawn as lines, as polylines or in a block; the axis as
a centre line by name, by layer or by pattern alone, as a full line, or not at all) and what else
stands on sheets: frame and title block, dimensions, also exploded ones, texts, leaders, hatches,
hidden lines, end views, parts lists, a logo, a mirror line between two views. Everything can be
turned, mirrored and scaled, from micro tools to two metres.
"""

import math
import random

import ezdxf
from ezdxf.enums import TextEntityAlignment

QUARTER = math.tan(math.pi / 8)  # bulge of a quarter circle: tan(sweep / 4)
DASHDOT = [12.0, 8.0, -1.5, 1.0, -1.5]
CENTRE_NAMES = ["CENTER", "CENTER2", "CENTRE", "DASHDOT", "ACAD_ISO04W100", "ISO10W100", "JIS_08_11",
                "点画线", "中心线"]


class Truth:
    """One tool: its axis, directed to its second end, and the corners (s, r, bulge) of its half."""

    def __init__(self, start, end, profile, kind):
        self.start, self.end, self.profile, self.kind = start, end, profile, kind

    @property
    def length(self):
        return math.dist(self.start, self.end)

    @property
    def radius(self):
        return max(r for _, r in chords(self.profile))

    @property
    def area(self):
        """Of the half, by the shoelace formula over fine chords."""
        points = chords(self.profile)
        return abs(sum(a[0] * b[1] - b[0] * a[1]
                       for a, b in zip(points, points[1:] + points[:1]))) / 2


def chords(profile, count=64):
    """The corners with arcs as chords."""
    out = []
    for (x1, y1, bulge), (x2, y2, _) in zip(profile, profile[1:]):
        out.append((x1, y1))
        if bulge:
            cx = (x1 + x2) / 2 - (y2 - y1) * (1 - bulge * bulge) / (4 * bulge)
            cy = (y1 + y2) / 2 + (x2 - x1) * (1 - bulge * bulge) / (4 * bulge)
            radius, begin = math.hypot(x1 - cx, y1 - cy), math.atan2(y1 - cy, x1 - cx)
            sweep = 4 * math.atan(bulge)
            out += [(cx + radius * math.cos(begin + sweep * i / count),
                     cy + radius * math.sin(begin + sweep * i / count)) for i in range(1, count)]
    return out + [profile[-1][:2]]


def end_mill(rng):
    d, shank = rng.choice([6, 8, 10, 12, 16]), rng.choice([10, 12, 16, 20])
    cut, total = d * rng.uniform(1.5, 3), d * rng.uniform(5, 9)
    c = rng.choice([0, 0.5, 1.0])
    top = [(0, 0, 0), (0, d / 2, 0)] if not c else [(0, 0, 0), (0, d / 2 - c, -QUARTER), (c, d / 2, 0)]
    neck = d * 0.45
    return top + [(cut, d / 2, 0), (cut, neck, 0), (cut * 1.6, neck, 0), (cut * 1.6 + 2, shank / 2, 0),
                  (total - 1, shank / 2, 0), (total, shank / 2 - 1, 0), (total, 0, 0)]


def drill(rng):
    d = rng.choice([3, 5, 8.5, 10.2])
    tip = d / 2 / math.tan(math.radians(rng.choice([59, 67.5, 70])))
    total = d * rng.uniform(8, 14)
    return [(0, 0, 0), (tip, d / 2, 0), (total * 0.6, d / 2, 0), (total * 0.6, d * 0.7, 0),
            (total, d * 0.7, 0), (total, 0, 0)]


def ball_nose(rng):
    d = rng.choice([4, 6, 10])
    total = d * rng.uniform(6, 10)
    return [(0, 0, -QUARTER), (d / 2, d / 2, 0), (total * 0.4, d / 2, 0), (total * 0.5, d * 0.65, 0),
            (total, d * 0.65, 0), (total, 0, 0)]


def slot_cutter(rng):
    d, neck, shank = 30, rng.uniform(8, 12), 16
    return [(0, 0, 0), (0, d / 2, 0), (rng.uniform(4, 9), d / 2, 0), (10, neck / 2, 0),
            (26, neck / 2, 0), (30, shank / 2, 0), (80, shank / 2, 0), (80, 0, 0)]


def holder(rng):
    big = rng.uniform(25, 35)
    return [(0, 0, 0), (0, 12, 0), (40, 14, 0), (40, big, 0), (46, big, 0), (49, big - 3, 0),
            (52, big, 0), (58, big, 0), (58, 20, 0), (58 + rng.uniform(60, 90), 12, 0),
            (160, 10, 0), (160, 0, 0)]


def stepped_drill(rng):
    r, x, out = rng.uniform(2, 4), 0.0, [(0, 0, 0)]
    x += r * 0.6
    out.append((x, r, 0))
    for _ in range(rng.randint(2, 4)):
        x += rng.uniform(8, 25)
        out.append((x, r, 0))
        step = rng.uniform(1, 3)
        x += step * rng.choice([0, 1, 1])
        r += step
        out.append((x, r, 0))
    x += rng.uniform(30, 50)
    return out + [(x, r, 0), (x, 0, 0)]


def thread_mill(rng):
    """Flanks whose other half is shifted by half a pitch: see Sheet.tool."""
    pitch, count = rng.choice([1, 1.5, 2]), rng.randint(5, 9)
    out = [(0, 0, 0), (0, 4, 0)]
    for i in range(count):
        out += [((i + 0.5) * pitch, 4 + 0.6 * pitch, 0), ((i + 1) * pitch, 4, 0)]
    s = count * pitch
    return out + [(s, 3, 0), (s + 15, 3, 0), (s + 18, 5, 0), (s + 50, 5, 0), (s + 50, 0, 0)]


def shifted_flanks(profile):
    """The other half of a thread: half a pitch further on."""
    pitch = profile[3][0] - profile[1][0]
    last = profile[-6][0]
    flanks = [(s + pitch / 2, r, 0) for s, r, _ in profile[1:-5]]
    return ([(0, 0, 0), (0, profile[1][1], 0)] + [c for c in flanks if c[0] <= last] +
            [(last, flanks[0][1], 0)] + profile[-5:])


def turned_round(profile):
    end = profile[-1][0]
    bulges = [b for _, _, b in profile]
    return [(end - s, r, b) for (s, r, _), b in
            zip(reversed(profile), [*reversed(bulges[:-1]), 0])]


KINDS = [end_mill, drill, ball_nose, slot_cutter, holder, stepped_drill, thread_mill]


class Sheet:
    def __init__(self, seed, scale=1.0, turn=0.0, mirror=False, move=(0.0, 0.0)):
        self.rng = random.Random(seed)
        self.doc = ezdxf.new("R2010", setup=False, units=4)
        self.space = self.target = self.doc.modelspace()
        self.scale, self.turn, self.mirror, self.move = scale, turn, mirror, move
        self.tools, self.traits, self.texts = [], [], []
        self.doc.linetypes.add("HIDDEN", [4.5, 3.0, -1.5])

    def at(self, x, y):
        """Where a point of the upright sheet comes to lie."""
        if self.mirror:
            x = -x
        c, s = math.cos(self.turn), math.sin(self.turn)
        x, y = self.scale * x, self.scale * y
        return (c * x - s * y + self.move[0], s * x + c * y + self.move[1])

    def line(self, x1, y1, x2, y2, **how):
        return self.target.add_line(self.at(x1, y1), self.at(x2, y2), dxfattribs=how)

    def circle(self, x, y, r, **how):
        return self.target.add_circle(self.at(x, y), r * self.scale, dxfattribs=how)

    def path(self, points, closed, as_lines, **how):
        """Corners (x, y, bulge), as one polyline or as lines and arcs."""
        sign = -1 if self.mirror else 1
        placed = [(*self.at(x, y), sign * b) for x, y, b in points]
        if not as_lines:
            return self.target.add_lwpolyline(placed, format="xyb", close=closed, dxfattribs=how)
        ring = placed + placed[:1] if closed else placed
        for a, b in zip(ring, ring[1:]):
            if math.dist(a[:2], b[:2]) < 1e-12:
                continue
            if not a[2]:
                self.target.add_line(a[:2], b[:2], dxfattribs=how)
                continue
            centre, begin, end, radius = ezdxf.math.bulge_to_arc(a[:2], b[:2], a[2])
            self.target.add_arc(centre, radius, math.degrees(begin), math.degrees(end), dxfattribs=how)

    def text(self, value, x, y, height, angle=0.0):
        angle = math.pi - angle if self.mirror else angle
        entity = self.target.add_text(value, height=height * self.scale,
                                      rotation=math.degrees(angle + self.turn))
        entity.set_placement(self.at(x, y), align=TextEntityAlignment.MIDDLE_CENTER)

    def layer(self, name, linetype="Continuous"):
        if name not in self.doc.layers:
            self.doc.layers.add(name, linetype=linetype)
        return name

    def trait(self, name, chance):
        if self.rng.random() < chance:
            self.traits.append(name)
            return True
        return False

    # ---- a tool and what belongs to it

    def tool(self, x, y, upright=False, kind=None):
        rng = self.rng
        kind = kind or rng.choice(KINDS)
        profile = kind(rng)
        other = shifted_flanks(profile) if kind is thread_mill else profile
        if rng.random() < 0.5:  # the tip at the other end
            profile, other = turned_round(profile), turned_round(other)
        total = profile[-1][0]

        def place(s, r):
            return (x - r, y + s) if upright else (x + s, y + r)

        def put(points, closed, as_lines, side=1, **how):
            turned = [(*place(s, side * r), side * b) for s, r, b in points]
            self.path(turned, closed, as_lines, **how)

        half = self.trait("half", 0.2)
        as_lines = self.trait("lines", 0.6)
        in_block = self.trait("block", 0.2)
        outline = self.layer(rng.choice(["0", "OUTLINE", "轮廓实线", "AXIS"]))
        if outline == "AXIS":
            self.traits.append("outline on a layer AXIS")
        if in_block:
            block = self.doc.blocks.new(f"TOOL{len(self.tools)}")
            self.target = block
        put(profile, False, as_lines, layer=outline)
        if not half:
            if other is not profile:
                self.traits.append("halves differ")
            put(other, False, as_lines, -1, layer=outline)
            # Edges seen from the side at every step.
            for s, r in {(round(s, 9), r) for s, r, _ in profile[1:-1] if r > 1 and rng.random() < 0.5}:
                self.line(*place(s, -r * 0.999999), *place(s, r * 0.999999), layer=outline)
        if half and self.trait("foot drawn", 0.5):
            self.line(*place(0, 0), *place(total, 0), layer=outline)
        if self.trait("doubled", 0.1):
            put(profile, False, True, layer=outline)
        if self.trait("flutes", 0.4) and not half:
            low = min(r for s, r, _ in profile if r > 0)
            for i in range(4):
                s = total * (0.1 + 0.08 * i)
                self.line(*place(s, -low * 0.7), *place(s + low, low * 0.7), layer=outline)
        if self.trait("hidden lines", 0.3):
            r = min(r for s, r, _ in profile if r > 0) * 0.3
            for side in ([1] if half else [1, -1]):
                self.line(*place(total * 0.6, side * r), *place(total, side * r), layer=outline,
                          linetype="HIDDEN")
        # A half without its axis is what it lies beside: only its foot tells.
        style = rng.choice(["linetype", "layer", "pattern", "full", "none"])
        self.traits.append(f"axis {style}")
        over = total * 0.04
        ends = (*place(-over, 0), *place(total + over, 0))
        name = rng.choice(CENTRE_NAMES)
        if style in ("linetype", "layer") and name not in self.doc.linetypes:
            self.doc.linetypes.add(name, DASHDOT)
        if style == "linetype":
            self.line(*ends, layer=outline, linetype=name)
        elif style == "layer":
            self.line(*ends, layer=self.layer(f"L-{name}", name))
        elif style == "pattern":
            if "A17" not in self.doc.linetypes:
                self.doc.linetypes.add("A17", DASHDOT)
            self.line(*ends, layer=outline, linetype="A17")
        elif style == "full":
            self.line(*ends, layer=outline)
        if style in ("linetype", "pattern") and self.trait("centre line in pieces", 0.2):
            last = list(self.target)[-1]
            a, b = last.dxf.start, last.dxf.end
            last.dxf.end = a.lerp(b, 0.4)
            piece = self.target.add_line(a.lerp(b, 0.43), b)
            piece.dxf.layer, piece.dxf.linetype = last.dxf.layer, last.dxf.linetype
        self.target = self.space
        if in_block:
            self.space.add_blockref(block.name, (0, 0))
        self.tools.append(Truth(self.at(*place(0, 0)), self.at(*place(total, 0)),
                                [(s * self.scale, r * self.scale, b) for s, r, b in profile],
                                kind.__name__))
        self.beside(place, profile, total, half)
        return total, max(r for _, r, _ in profile)

    def beside(self, place, profile, total, half):
        rng, big = self.rng, max(r for _, r, _ in profile)
        if self.trait("exploded dimensions", 0.35):
            self.exploded(place, 0, big, total, big, big + 14)
            r = profile[-2][1]
            if not half and r > 2:
                self.exploded_diameter(place, total, r, total + 12)
        if self.trait("end view", 0.25) and not half:
            s = (-big * 2.2) if rng.random() < 0.5 else total + big * 2.2
            for r in (big, big * 0.6, big * 0.2):
                self.circle(*place(s, 0), r)
            name = "CENTER"
            if name not in self.doc.linetypes:
                self.doc.linetypes.add(name, DASHDOT)
            self.line(*place(s - big * 1.2, 0), *place(s + big * 1.2, 0), linetype=name)
            self.line(*place(s, -big * 1.2), *place(s, big * 1.2), linetype=name)
        if self.trait("section lines", 0.2) and not half:
            low = min(r for s, r, _ in profile if r > 0) * 0.5
            for i in range(5):
                self.line(*place(total * 0.7 + i, low * 0.1), *place(total * 0.7 + i + low * 0.5, low * 0.6))
        if self.trait("dimensions", 0.4):
            p, q = place(0, big), place(total, big)
            b = place(0, big + 8)
            dim = self.space.add_linear_dim(base=self.at(*b), p1=self.at(*p), p2=self.at(*q),
                                            angle=math.degrees(math.atan2(
                                                self.at(*q)[1] - self.at(*p)[1],
                                                self.at(*q)[0] - self.at(*p)[0])))
            dim.render()
        if self.trait("detail circle", 0.15):
            self.circle(*place(0, big), big * 0.5)
            self.text("A", *place(-big, big * 1.7), 3.5)
        if self.trait("roughness mark", 0.2):
            s = total * 0.8
            r = big + 1
            self.line(*place(s, r), *place(s - 1.5, r + 2.6))
            self.line(*place(s, r), *place(s + 3, r + 5.2))
            self.line(*place(s - 1.5, r + 2.6), *place(s + 1.5, r + 2.6))
            self.text("3.2", *place(s - 1, r + 4.5), 2)
        if self.trait("joined extension lines", 0.15) and not half:
            # Drawn without their gap, as some users do.
            for s in (0, total):
                r = max(r for t, r, _ in profile if abs(t - s) < 1e-9)
                self.line(*place(s, -r), *place(s, -big - 9.2))
            a, b = place(0, -big - 8), place(total, -big - 8)
            self.line(*a, *b)
            self.arrow(*a, a[0] - b[0], a[1] - b[1])
            self.arrow(*b, b[0] - a[0], b[1] - a[1])
            self.text(f"{total:.1f}", *place(total / 2, -big - 6), 2.5)
        if self.trait("leader", 0.25):
            a, b = place(total * 0.4, big + 3), place(total * 0.5, big + 11)
            self.line(*a, *b)
            self.text("Ra 0.8", *place(total * 0.5 + 6, big + 12), 2.5)

    def arrow(self, x, y, dx, dy):
        """A filled head at (x, y) that points along (dx, dy)."""
        n = math.hypot(dx, dy)
        dx, dy = dx / n, dy / n
        back = (x - 2.5 * dx, y - 2.5 * dy)
        a = (back[0] - 0.4 * dy, back[1] + 0.4 * dx)
        b = (back[0] + 0.4 * dy, back[1] - 0.4 * dx)
        self.target.add_solid([self.at(x, y), self.at(*a), self.at(*b), self.at(*b)])

    def exploded(self, place, s1, r1, s2, r2, height):
        for s, r in ((s1, r1), (s2, r2)):
            self.line(*place(s, r + 0.6), *place(s, height + 1.2))
        a, b = place(s1, height), place(s2, height)
        self.line(*a, *b)
        self.arrow(*a, a[0] - b[0], a[1] - b[1])
        self.arrow(*b, b[0] - a[0], b[1] - a[1])
        self.text(f"{abs(s2 - s1):.1f}", *place((s1 + s2) / 2, height + 2), 2.5)

    def exploded_diameter(self, place, s, r, where):
        for side in (1, -1):
            self.line(*place(s + 0.6, side * r), *place(where + 1.2, side * r))
        a, b = place(where, -r), place(where, r)
        self.line(*a, *b)
        self.arrow(*a, a[0] - b[0], a[1] - b[1])
        self.arrow(*b, b[0] - a[0], b[1] - a[1])
        self.text(f"%%c{2 * r:.1f}", *place(where + 2, 0), 2.5, math.pi / 2)

    # ---- what else stands on a sheet

    def frame(self, x1, y1, x2, y2):
        for inset in (0, 5):
            self.path([(x1 + inset, y1 + inset, 0), (x2 - inset, y1 + inset, 0),
                       (x2 - inset, y2 - inset, 0), (x1 + inset, y2 - inset, 0)], True,
                      self.rng.random() < 0.5)
        # The title block, in the lower right corner.
        left, top = x2 - 5 - 110, y1 + 5 + 32
        self.line(left, y1 + 5, left, top)
        self.line(left, top, x2 - 5, top)
        for i in range(1, 4):
            self.line(left, y1 + 5 + 8 * i, x2 - 5, y1 + 5 + 8 * i)
        self.line(left + 40, y1 + 5, left + 40, top)
        self.text("STEP DRILL", left + 60, y1 + 9, 3)
        self.text("1:1", left + 20, y1 + 17, 3)
        self.text("T-100", left + 90, y1 + 25, 3)

    def parts_list(self, x, y):
        for i in range(5):
            self.line(x, y + 6 * i, x + 70, y + 6 * i)
        for dx in (0, 12, 50, 70):
            self.line(x + dx, y, x + dx, y + 24)
        self.text("1", x + 6, y + 3, 2.5)
        self.text("SHANK", x + 30, y + 3, 2.5)

    def logo(self, x, y):
        self.circle(x, y, 7)
        self.path([(x - 4, y - 4, 0), (x + 4, y - 4, 0), (x, y + 5, 0)], True, True)

    def mirrored_views(self, x, y):
        """Two views of a bracket with the line between them in which they are mirror images."""
        shape = [(4, 0), (24, 0), (24, 6), (12, 6), (12, 22), (4, 22)]
        for side in (1, -1):
            ring = [(x + side * a, y + b, 0) for a, b in shape]
            self.path(ring, True, True)
        if "CENTER" not in self.doc.linetypes:
            self.doc.linetypes.add("CENTER", DASHDOT)
        self.line(x, y - 5, x, y + 28, linetype="CENTER")

    def save(self, path):
        self.doc.saveas(path)


def make(seed):
    """A sheet with one or two tools and a random part of everything else."""
    rng = random.Random(seed * 7919 + 1)
    turn = rng.choice([0, 0, 0, 0, math.pi / 2, math.radians(rng.uniform(5, 85))])
    sheet = Sheet(seed, scale=rng.choice([1, 1, 1, 1 / 25.4, 0.02, 12.0]), turn=turn,
                  mirror=rng.random() < 0.2,
                  move=rng.choice([(0, 0), (0, 0), (1234.5, -876.25), (1e5, 2e5)]))
    upright = sheet.trait("upright", 0.25)
    if upright:
        sheet.tool(0, -20, True)
    else:
        sheet.tool(0, 0)
    if sheet.trait("two tools", 0.25):
        if upright:
            sheet.tool(140, -30, True)
        else:
            sheet.tool(5, -110)
    if sheet.trait("decoy", 0.3):
        sheet.mirrored_views(-95, 75)
        sheet.logo(-100, 60)
    if sheet.trait("parts list", 0.2):
        sheet.parts_list(95, -175)
    if sheet.trait("frame", 0.5):
        sheet.frame(-150, -220, 270, 195)
    return sheet
