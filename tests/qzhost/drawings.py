"""Drawings that the scripts work on besides the examples."""

import pathlib
import re

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"


def hidden(folder):
    """The end mill with its centre line and its text hidden, the text on a locked layer."""
    text = (EXAMPLES / "end-mill.dxf").read_text(encoding="utf-8")

    def hide(handle):
        return lambda source: re.sub(
            r"(\n  5\n%s\n.*?\n100\nAcDbEntity\n)" % handle, r"\g<1> 60\n1\n", source, 1, re.S)

    for handle in ("70", "CC"):
        changed = hide(handle)(text)
        assert changed != text, handle
        text = changed
    # Bit 4 of a layer's flags locks it.
    locked = re.sub(r"(\n  2\nDIM\n 70\n)0\n", r"\g<1>4\n", text, 1)
    assert locked != text
    (folder / "hidden.dxf").write_text(locked, encoding="utf-8")


def polyline(handle, layer, points):
    tags = [(0, "LWPOLYLINE"), (5, handle), (100, "AcDbEntity"), (8, layer), (100, "AcDbPolyline"),
            (90, len(points)), (70, 1)]
    for x, y in points:
        tags += [(10, x), (20, y)]
    return tags


def envelopes(folder):
    """Three closed polylines: a slanted triangle, a stepped profile, and one on another layer."""
    tags = [(0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1015"), (9, "$HANDSEED"),
            (5, "100"), (0, "ENDSEC"),
            (0, "SECTION"), (2, "TABLES"), (0, "TABLE"), (2, "LAYER"), (5, "2"), (70, 2)]
    for handle, name in (("10", "0"), ("11", "TEMPENCIRCLELINE")):
        tags += [(0, "LAYER"), (5, handle), (100, "AcDbSymbolTableRecord"),
                 (100, "AcDbLayerTableRecord"), (2, name), (70, 0), (62, 7), (6, "Continuous")]
    tags += [(0, "ENDTAB"), (0, "ENDSEC"), (0, "SECTION"), (2, "ENTITIES")]
    tags += polyline("50", "TEMPENCIRCLELINE", [(0, 0), (0, 5), (10, 5), (10, 3), (40, 3), (40, 0)])
    tags += polyline("51", "0", [(0, 20), (0, 25), (10, 25), (10, 20)])
    tags += polyline("52", "TEMPENCIRCLELINE", [(50, 0), (55, 8), (70, 1)])
    tags += [(0, "ENDSEC"), (0, "EOF")]
    (folder / "envelopes.dxf").write_text(
        "".join("%3d\n%s\n" % tag for tag in tags), encoding="utf-8")


def two_directions(folder):
    """One stepped tool with its centre line turned by 30 degrees, and one that stands upright."""
    tags = [(0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1015"), (9, "$HANDSEED"),
            (5, "100"), (0, "ENDSEC"), (0, "SECTION"), (2, "TABLES"),
            (0, "TABLE"), (2, "LTYPE"), (5, "3"), (70, 1),
            (0, "LTYPE"), (5, "30"), (100, "AcDbSymbolTableRecord"),
            (100, "AcDbLinetypeTableRecord"), (2, "CENTER"), (70, 0), (3, ""), (72, 65), (73, 4),
            (40, 20), (49, 12), (74, 0), (49, -3), (74, 0), (49, 2), (74, 0), (49, -3), (74, 0),
            (0, "ENDTAB"), (0, "ENDSEC"), (0, "SECTION"), (2, "ENTITIES")]
    corners = [(0, 10), (20, 10), (20, 5), (60, 5), (60, -5), (20, -5), (20, -10), (0, -10)]
    for number, (c, s, x) in enumerate(((0.75 ** 0.5, 0.5, 0), (0, 1, 200))):
        def place(along, left, c=c, s=s, x=x):
            return x + c * along - s * left, s * along + c * left
        tags += polyline("5%d" % number, "0", [place(*corner) for corner in corners])
        (x1, y1), (x2, y2) = place(-3, 0), place(63, 0)
        tags += [(0, "LINE"), (5, "6%d" % number), (100, "AcDbEntity"), (8, "0"), (6, "CENTER"),
                 (100, "AcDbLine"), (10, x1), (20, y1), (11, x2), (21, y2)]
    tags += [(0, "ENDSEC"), (0, "EOF")]
    (folder / "directions.dxf").write_text("".join("%3d\n%s\n" % tag for tag in tags),
                                           encoding="utf-8")


TOOL = [(20, 40), (20, 80), (60, 80), (64, 76), (64, 72), (120, 72), (140, 60), (120, 48),
        (64, 48), (64, 44), (60, 40)]


def tool(handle, x, scale=1.0):
    """A stepped drill about the line y = 60."""
    return polyline(handle, "0", [(x + px, 60 + (py - 60) * scale) for px, py in TOOL])


def frame(handle, x, number):
    """A frame around it that carries its number as an attribute."""
    return [(0, "INSERT"), (5, handle), (100, "AcDbEntity"), (8, "0"), (66, 1),
            (100, "AcDbBlockReference"), (2, "FRAME"), (10, x), (20, 0),
            (0, "ATTRIB"), (5, handle + "1"), (100, "AcDbEntity"), (8, "0"), (100, "AcDbText"),
            (10, x + 100), (20, 5), (40, 4), (1, number), (100, "AcDbAttribute"),
            (2, "TUKANGE_NAME_IDENTITY"), (70, 1),
            (0, "SEQEND"), (5, handle + "2"), (100, "AcDbEntity"), (8, "0")]


def write(path, entities):
    tags = [(0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1021"), (9, "$HANDSEED"),
            (5, "1000"), (0, "ENDSEC"), (0, "SECTION"), (2, "BLOCKS"),
            (0, "BLOCK"), (5, "20"), (100, "AcDbEntity"), (8, "0"), (100, "AcDbBlockBegin"),
            (2, "FRAME"), (70, 0), (10, 0), (20, 0)]
    tags += polyline("21", "0", [(0, 0), (180, 0), (180, 120), (0, 120)])
    tags += [(0, "ENDBLK"), (5, "22"), (100, "AcDbEntity"), (8, "0"), (100, "AcDbBlockEnd"),
             (0, "ENDSEC"), (0, "SECTION"), (2, "ENTITIES")] + entities
    tags += [(0, "ENDSEC"), (0, "EOF")]
    path.write_text("".join("%3d\n%s\n" % tag for tag in tags), encoding="utf-8")


def locked(folder):
    """Two tools without frames; the current layer and that of the envelopes are locked."""
    entities = tool("51", 0) + tool("52", 200, 0.8)
    layers = [(0, "SECTION"), (2, "TABLES"), (0, "TABLE"), (2, "LAYER"), (5, "2"), (70, 3)]
    for handle, name, flags in (("10", "0", 0), ("11", "MINE", 4), ("12", "TempEncircleLine", 4)):
        layers += [(0, "LAYER"), (5, handle), (100, "AcDbSymbolTableRecord"),
                   (100, "AcDbLayerTableRecord"), (2, name), (70, flags), (62, 7), (6, "Continuous")]
    tags = [(0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1021"), (9, "$CLAYER"),
            (8, "MINE"), (9, "$HANDSEED"), (5, "1000"), (0, "ENDSEC")]
    tags += layers + [(0, "ENDTAB"), (0, "ENDSEC"), (0, "SECTION"), (2, "ENTITIES")] + entities
    tags += [(0, "ENDSEC"), (0, "EOF")]
    (folder / "locked.dxf").write_text("".join("%3d\n%s\n" % tag for tag in tags), encoding="utf-8")


def tools(folder):
    """Three framed tools in a row, and three without frames."""
    framed, plain = [], []
    for i in range(3):
        framed += tool("%d1" % (5 + i), 200 * i, 1.0 - 0.2 * i)
        framed += frame("%d2" % (5 + i), 200 * i, "T-%02d" % (i + 1))
        plain += tool("%d1" % (5 + i), 200 * i)
    plain += [(0, "TEXT"), (5, "90"), (100, "AcDbEntity"), (8, "0"), (100, "AcDbText"), (10, 300),
              (20, 150), (40, 5), (1, "three drills"), (100, "AcDbText")]
    write(folder / "framed.dxf", framed)
    write(folder / "plain.dxf", plain)


def many_lines(folder, count):
    """A hatch of short lines over a field, and a layer that is off."""
    layers = [(0, "SECTION"), (2, "TABLES"), (0, "TABLE"), (2, "LAYER"), (5, "2"), (70, 2)]
    for handle, name, colour in (("10", "0", 7), ("11", "OFF", -7)):
        layers += [(0, "LAYER"), (5, handle), (100, "AcDbSymbolTableRecord"),
                   (100, "AcDbLayerTableRecord"), (2, name), (70, 0), (62, colour), (6, "Continuous")]
    tags = [(0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1021"), (9, "$HANDSEED"),
            (5, "100000"), (0, "ENDSEC")]
    tags += layers + [(0, "ENDTAB"), (0, "ENDSEC"), (0, "SECTION"), (2, "ENTITIES")]
    for i in range(count):
        x, y = i % 400, i // 400
        tags += [(0, "LINE"), (5, "%X" % (0x1000 + i)), (100, "AcDbEntity"), (8, "0"),
                 (100, "AcDbLine"), (10, x), (20, y), (11, x + 1), (21, y + 1)]
    tags += [(0, "ENDSEC"), (0, "EOF")]
    (folder / "many.dxf").write_text("".join("%3d\n%s\n" % tag for tag in tags), encoding="utf-8")
