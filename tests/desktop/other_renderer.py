"""What another renderer, the drawing add-on of ezdxf, finds in a drawing: strokes, faces and the
places of texts, in drawing units, for display_compare."""

from ezdxf.addons.drawing import Frontend, RenderContext
from ezdxf.addons.drawing.backend import Backend
from ezdxf.addons.drawing.config import Configuration
from ezdxf.entities import Wipeout
from ezdxf.tools import fonts


class Shapes(Backend):
    """Collects instead of drawing."""

    def __init__(self):
        super().__init__()
        self.lines = []
        self.low, self.high = [1e300, 1e300], [-1e300, -1e300]

    def add(self, kind, points):
        points = [(p[0], p[1]) for p in points]
        if len(points) < 2:
            return
        for x, y in points:
            self.low = [min(self.low[0], x), min(self.low[1], y)]
            self.high = [max(self.high[0], x), max(self.high[1], y)]
        self.lines.append(kind + "".join(" %.9g %.9g" % p for p in points))

    def set_background(self, color):
        pass

    def draw_point(self, pos, properties):
        self.add("L", [pos, pos])

    def draw_line(self, start, end, properties):
        self.add("L", [start, end])

    def draw_path(self, path, properties):
        if len(path):
            self.add("L", path.flattening(self.config.max_flattening_distance))

    def draw_filled_polygon(self, points, properties):
        # Wipeouts are faces in the colour of the ground.
        if not isinstance(self.current_entity, Wipeout):
            self.add("F", list(points))

    def draw_filled_paths(self, paths, holes, properties):
        # As one face from every outline to the first and back, so that holes stay holes.
        corners = []
        for path in [*paths, *holes]:
            outline = [(p[0], p[1]) for p in path.flattening(self.config.max_flattening_distance)]
            corners += [*outline, outline[0], *corners[:1]]
        self.add("F", corners)

    def draw_text(self, text, transform, properties, cap_height):
        if text.strip():
            # With room around it: letters of other fonts are not as wide, and go below the line.
            room = 0.6 * cap_height
            right = self.get_text_line_width(text, cap_height) + room
            top = cap_height + room
            self.add("T", transform.transform_vertices(
                [(-room, -room, 0), (right, -room, 0), (right, top, 0), (-room, top, 0)]))

    def get_font_measurements(self, cap_height, font=None):
        return fonts.FontMeasurements(0, cap_height, cap_height * 2 / 3, cap_height / 3)

    def get_text_line_width(self, text, cap_height, font=None):
        # Letters from China are as wide as high; others of this program's font a little less.
        return sum(1.4 if ord(c) > 0x2E00 else 0.8 for c in text) * cap_height

    def clear(self):
        pass

    def finalize(self):
        pass


def find_shapes(drawing, path):
    """Writes the shapes of a drawing's model space; False when it shows nothing."""
    shapes = Shapes()
    context = RenderContext(drawing)
    # What is white on a dark ground counts as well; hidden layers are hidden here, too.
    settings = Configuration.defaults().with_changes(
        line_policy=Configuration.defaults().line_policy.ACCURATE, min_dash_length=0.0,
        infinite_line_length=1000)
    Frontend(context, shapes, settings).draw_layout(drawing.modelspace(), finalize=True)
    if not shapes.lines:
        return False
    wide, high = (b - a for a, b in zip(shapes.low, shapes.high))
    size = max(wide, high, 1e-6)
    path.write_text("W %.9g %.9g %.9g %.9g\n" % (
        shapes.low[0], shapes.low[1], max(wide, size / 20), max(high, size / 20)) +
        "\n".join(shapes.lines) + "\n", encoding="ascii")
    return True
