"""Sheets of a third kind, as drawing offices draw them: A-series frames with fields and a title
block, the tool in one view with dimensions of every style, and beside it what such sheets hold:
an enlarged detail of the same tool, an end view, a cross section with hatching, a view from a
corner, tables of dimensions, notes in lines, a second tool at another angle.

The detector's rules were not made on these: they were looked at only as a whole.
"""

import math
import random

import sheets
import views


def stepped_thread(rng):
    """Steps with a thread between: drawn smooth, with thin lines for its root."""
    s, r, out, threads = 0.0, rng.uniform(2, 4), [(0, 0, 0)], []
    s = r * rng.choice([0.0, 0.3, 0.6, 1.0])
    out.append((s, r, 0))
    for k in range(rng.randint(1, 4)):
        end = s + rng.uniform(8, 25)
        if rng.random() < 0.4:
            threads.append((s, end, r * 0.85))
        out.append((end, r, 0))
        step = rng.uniform(0.8, 3)
        s = end + step * rng.choice([0, 0.6, 1])
        r += step
        out.append((s, r, 0))
    if rng.random() < 0.5:
        out += [(s + 6, r, 0), (s + 6, r - 0.7, 0), (s + 9, r - 0.7, 0), (s + 9, r, 0)]
        s += 9
    end = s + rng.uniform(25, 60)
    return out + [(end - 0.5, r, 0), (end, r - 0.5, 0), (end, 0, 0)], threads


def radius_cutter(rng):
    d, r = rng.choice([10, 16, 20, 25]), rng.uniform(1, 3)
    out = [(0, 0, 0), (0, d / 2 - r, -sheets.QUARTER), (r, d / 2, 0), (d, d / 2, 0)]
    neck = d / 2 - rng.uniform(0.3, 1.5)
    return out + [(d + 1, neck, 0), (2.5 * d, neck, 0), (2.5 * d + 4, d * 0.6, 0), (6 * d, d * 0.6, 0), (6 * d, 0, 0)], []


def dovetail(rng):
    d, t = rng.choice([16, 20, 25]), rng.uniform(5, 9)
    return [(0, 0, 0), (0, d / 2, 0), (t, d / 2 - t * math.tan(math.radians(rng.choice([15, 30, 45]))) * 0.6, 0),
            (t, d * 0.15, 0), (t + 4, d * 0.15, 0), (t + 6, d * 0.3, 0), (t + 45, d * 0.3, 0), (t + 45, 0, 0)], []


def boring_bar(rng):
    """An insert on one side."""
    d = rng.choice([12, 16, 20])
    lower = [(0, 0, 0), (0, d * 0.4, 0), (d * 5, d * 0.4, 0), (d * 5, d * 0.5, 0), (d * 9, d * 0.5, 0), (d * 9, 0, 0)]
    upper = [(0, 0, 0), (0, d * 0.55, 0), (d * 0.3, d * 0.6, 0), (d * 0.5, d * 0.4, 0), *lower[2:]]
    return (upper, lower), []


KINDS = [stepped_thread, radius_cutter, dovetail, boring_bar]


class Drafts(views.Views):
    def draft(self, x, y, angle):
        """A tool at an angle; its truth joins the sheet's."""
        rng = self.rng
        kind = rng.choice(KINDS)
        profile, threads = kind(rng)
        upper, lower = profile if isinstance(profile, tuple) else (profile, profile)
        if rng.random() < 0.5:
            total = upper[-1][0]
            upper, lower = sheets.turned_round(upper), sheets.turned_round(lower)
            threads = [(total - b, total - a, r) for a, b, r in threads]
        total, big = upper[-1][0], max(r for _, r, _ in upper + lower)
        half = upper is lower and self.trait("half", 0.2)
        c, s_ = math.cos(angle), math.sin(angle)

        def place(s, r):
            return x + c * s - s_ * r, y + s_ * s + c * r

        layer = self.layer(rng.choice(["0", "OUTLINE", "CONTOUR", "Visible (ISO)", "粗实线"]))
        self.draw_halves(place, upper, None if half else lower, layer)
        if half and self.trait("foot drawn", 0.5):
            self.line(*place(0, 0), *place(total, 0), layer=layer)
        if not half:
            for s, r, _ in upper[1:-1]:
                other = [q for t, q, _ in lower if abs(t - s) < 1e-9]
                if other and rng.random() < 0.8:
                    self.line(*place(s, r), *place(s, -max(other)), layer=layer)
        thin = self.layer("THIN")
        for a, b, r in threads:
            for side in (1,) if half else (1, -1):
                self.line(*place(a, side * r), *place(b, side * r), layer=thin)
        if self.trait("hatched", 0.3):
            low = min(r for _, r, _ in upper if r > 0)
            for k in range(12):
                s = total * 0.7 + k * low * 0.25
                if s + low * 0.8 < total:
                    self.line(*place(s, 0), *place(s + low * 0.8, low * 0.8), layer=thin)
        if self.trait("two flats", 0.2) and not half:
            for side in (1, -1):
                self.line(*place(total * 0.7, side * big * 0.2), *place(total * 0.9, side * big * 0.2), layer=layer)
        style = rng.choice(["centre", "centre", "centre", "layer", "full", "dashed", "none"])
        self.traits.append(f"axis {style}")
        over = rng.uniform(2, 6)
        name = self.linetype(rng.choice(sheets.CENTRE_NAMES))
        how = {"centre": {"linetype": name}, "layer": {"layer": self.layer("CL-" + name, name)}, "full": {},
               "dashed": {"linetype": self.linetype("DASHED", [6.0, 4.0, -2.0])}}.get(style)
        if how is not None:
            self.line(*place(-over, 0), *place(total + over, 0), **how)
        self.tools.append(views.Swept(self.at(*place(0, 0)), self.at(*place(total, 0)),
                                      [[(s * self.scale, r * self.scale, b) for s, r, b in h]
                                       for h in ([upper] if half else [upper, lower])], kind.__name__))
        self.dimensions(place, upper, total, big, half)
        return place, upper, total, big, half

    def dimensions(self, place, upper, total, big, half):
        rng = self.rng
        steps = sorted({round(s, 6) for s, r, _ in upper[1:-1] if r > 0.3 * big})
        style, gap = rng.choice(["filled", "open", "tick"]), rng.choice([0.0, 0.5, 1.0])
        self.traits.append(f"dimensions {style} {gap}")
        height = big + rng.uniform(6, 10)
        if self.trait("chain", 0.4):
            for a, b in zip(steps, steps[1:]):
                if b - a > 8:
                    self.dimension(place, a, self.height_at(upper, a), b, self.height_at(upper, b), height, style, gap)
            height += 9
        if self.trait("from one end", 0.5):
            for k, s in enumerate(steps[:: max(1, len(steps) // 2)]):
                if s > 8:
                    self.dimension(place, 0, upper[1][1], s, self.height_at(upper, s), height + 8 * k, style, gap)
            height += 26
        self.dimension(place, 0, upper[1][1], total, upper[-2][1], height, style, gap)
        if not half and self.trait("diameters", 0.6):
            self.diameter(place, upper[-2][1], total + 10, total)
            if self.trait("inner diameter", 0.4):
                self.diameter(place, upper[1][1], -9, 0)
        if self.trait("radius leader", 0.4):
            s = total * rng.uniform(0.2, 0.8)
            r = self.height_at(upper, s)
            a, b, c = place(s, -r if not half else r), place(s + 8, (-r - 9) if not half else r + 9), place(s + 16, (-r - 9) if not half else r + 9)
            self.line(*a, *b)
            self.line(*b, *c)
            self.head(a, a[0] - b[0], a[1] - b[1], rng.choice(["filled", "open"]))
            self.text("R0.4 max", *place(s + 12, (-r - 7.5) if not half else r + 10.5), 2.5)
        if self.trait("surface", 0.35):
            s = total * rng.uniform(0.6, 0.9)
            r = self.height_at(upper, s)
            self.line(*place(s, r), *place(s - 1.5, r + 2.6))
            self.line(*place(s, r), *place(s + 3, r + 5.2))
            self.line(*place(s + 3, r + 5.2), *place(s + 10, r + 5.2))
            self.text("Ra 0.4", *place(s + 6, r + 6.8), 2)
        if self.trait("run-out", 0.3):
            s = total * rng.uniform(0.3, 0.6)
            r = self.height_at(upper, s)
            a, b = place(s, r), place(s, r + 14)
            self.line(*a, *b)
            self.head(a, a[0] - b[0], a[1] - b[1], "filled")
            self.line(*b, *place(s + 5, r + 14))
            for w1, w2, text in ((5, 11, None), (11, 23, "0.01"), (23, 29, "A")):
                self.path([(*place(s + w1, r + 11), 0), (*place(s + w2, r + 11), 0), (*place(s + w2, r + 17), 0),
                           (*place(s + w1, r + 17), 0)], True, rng.random() < 0.5)
                if text:
                    self.text(text, *place(s + (w1 + w2) / 2, r + 14), 2.5)

    def detail(self, place, upper, total, x, y):
        """A corner of the same tool, twice as large, in a circle, with the circle about the corner."""
        s, r, _ = upper[self.rng.randrange(1, len(upper) - 1)]
        self.circle(*place(s, r), 4)
        self.text("Z", *place(s + 6, r + 6), 3.5)
        self.circle(x, y, 14)
        reach = 5
        points = [(x + 2 * (t - s), y + 2 * (q - r)) for t, q in sheets.chords(upper) if abs(t - s) < reach and abs(q - r) < reach]
        for a, b in zip(points, points[1:]):
            self.line(*a, *b)
        self.text("Z 2:1", x, y + 18, 3.5)

    def cross_section(self, x, y, r):
        name = self.linetype("CENTER")
        self.circle(x, y, r)
        for k in range(-3, 4):
            d = k * r / 4
            h = math.sqrt(max(0, r * r - d * d)) * 0.98
            self.line(x + (d - h) / math.sqrt(2), y + (-d - h) / math.sqrt(2), x + (d + h) / math.sqrt(2), y + (-d + h) / math.sqrt(2))
        self.line(x - r - 3, y, x + r + 3, y, linetype=name)
        self.line(x, y - r - 3, x, y + r + 3, linetype=name)
        self.text("A-A", x, y + r + 6, 3.5)

    def corner_view(self, x, y, total, r):
        """From a corner: ellipses joined by slanted lines."""
        c, s = math.cos(math.pi / 6), math.sin(math.pi / 6)
        for t in (0, total * 0.6, total):
            centre = self.at(x + t * c * 0.6, y + t * s * 0.6)
            major = self.at(x + t * c * 0.6 - s * r, y + t * s * 0.6 + c * r)
            self.space.add_ellipse(centre, (major[0] - centre[0], major[1] - centre[1]), 0.55)
        for side in (1, -1):
            self.line(x - side * s * r, y + side * c * r, x + total * c * 0.6 - side * s * r, y + total * s * 0.6 + side * c * r)

    def a_frame(self, x1, y1, x2, y2):
        rng = self.rng
        self.path([(x1, y1, 0), (x2, y1, 0), (x2, y2, 0), (x1, y2, 0)], True, rng.random() < 0.5)
        self.path([(x1 + 15, y1 + 5, 0), (x2 - 5, y1 + 5, 0), (x2 - 5, y2 - 5, 0), (x1 + 15, y2 - 5, 0)], True, rng.random() < 0.5)
        right, low = x2 - 5, y1 + 5
        rows = [0, 9, 18, 27, 40, 56]
        for h in rows[1:]:
            self.line(right - 180, low + h, right, low + h)
        self.line(right - 180, low, right - 180, low + 56)
        for dx, h1, h2 in ((120, 0, 40), (70, 0, 27), (25, 0, 56), (150, 18, 56)):
            self.line(right - dx, low + h1, right - dx, low + h2)
        for text, dx, h in (("Drawn", 170, 4), ("Scale 1:1", 95, 4), ("1.3343", 100, 22), ("STEP DRILL HSS-E", 90, 33),
                            ("A3", 12, 4), ("Sheet 1/1", 45, 4), ("T-2041-07", 60, 48), ("ISO 2768-mK", 165, 33)):
            self.text(text, right - dx, low + h, 2.5)

    def value_table(self, x, y):
        for k in range(6):
            self.line(x, y + 7 * k, x + 75, y + 7 * k)
        for dx in (0, 15, 35, 55, 75):
            self.line(x + dx, y, x + dx, y + 35)
        for k in range(5):
            for dx, text in ((7, str(k + 1)), (25, f"{k * 3 + 4.5}"), (45, f"{k * 11 + 20}"), (65, "h6")):
                self.text(text, x + dx, y + 7 * k + 3.5, 2.5)


def make(seed):
    rng = random.Random(seed * 60013 + 11)
    inch = rng.random() < 0.2
    sheet = Drafts(seed + 900000, scale=1 / 25.4 if inch else rng.choice([1, 1, 1, 1, 0.1, 5]),
                   turn=rng.choice([0, 0, 0, 0, 0, 0, math.pi / 2]), mirror=rng.random() < 0.1,
                   move=rng.choice([(0, 0), (0, 0), (1000, 500), (-2e5, 1e5)]))
    if inch:
        sheet.doc.header["$INSUNITS"] = 1
    angle = rng.choice([0, 0, 0, 0, math.pi / 2, math.pi / 2, math.radians(rng.uniform(10, 80))])
    place, upper, total, big, half = sheet.draft(0, 0, angle)
    if angle:
        sheet.traits.append(f"at {math.degrees(angle):.0f}")
    if sheet.trait("second tool", 0.25):
        sheet.draft(-120, -130, rng.choice([0, 0, math.radians(rng.uniform(10, 80))]))
    if sheet.trait("detail", 0.35):
        sheet.detail(place, upper, total, -130, 130)
    if sheet.trait("end view", 0.3) and not half:
        s = total + 45 + 2 * big
        sheet.end_view(*place(s, 0), big, rng.random() < 0.5)
    if sheet.trait("cross section", 0.3):
        sheet.cross_section(-150, 40, max(6, big * 0.8))
    if sheet.trait("corner view", 0.25):
        sheet.corner_view(190, 110, total, big)
    if sheet.trait("table", 0.3):
        sheet.value_table(200, -80)
    if sheet.trait("notes", 0.3):
        for k in range(4):
            sheet.text("All edges sharp, hardness 64 HRC, coated TiAlN", 230, 60 - 6 * k, 3)
    if sheet.trait("projection symbol", 0.3):
        sheet.projection_symbol(140, -150)
    if sheet.trait("frame", 0.7):
        sheet.a_frame(-210, -200, 340, 230)
    return sheet
