"""Small files that ask for much: they are answered or refused at once, with little memory."""

import resource
import subprocess

from program import PROGRAM, ProgramTest, main

SECONDS, MEGABYTES = 20, 1500  # ten times what any of them takes


def tags(*items):
    return "".join("%s\n%s\n" % pair for pair in zip(items[::2], items[1::2]))


def entity(kind, subclass, *items):
    return tags(0, kind, 100, "AcDbEntity", 8, "0", 100, subclass, *items)


def line(x1, y1, x2, y2):
    return entity("LINE", "AcDbLine", 10, x1, 20, y1, 11, x2, 21, y2)


def insert(name, x=0, *items):
    return entity("INSERT", "AcDbBlockReference", 2, name, 10, x, 20, 0, *items)


def block(name, body):
    return tags(0, "BLOCK", 8, "0", 2, name, 70, 0, 10, 0, 20, 0, 3, name) + body + tags(0, "ENDBLK")


def spline(points):
    inner = len(points) - 4
    knots = [0] * 4 + list(range(1, inner + 1)) + [inner + 1] * 4
    coordinates = [item for x, y in points for item in (10, x, 20, y)]
    return entity("SPLINE", "AcDbSpline", 70, 8, 71, 3, 72, len(knots), 73, len(points), 74, 0,
                  *[item for knot in knots for item in (40, knot)], *coordinates)


def drawing(entities, blocks=""):
    def section(name, body):
        return tags(0, "SECTION", 2, name) + body + tags(0, "ENDSEC")
    return (section("HEADER", tags(9, "$ACADVER", 1, "AC1015")) +
            section("BLOCKS", blocks) + section("ENTITIES", entities) + tags(0, "EOF"))


def chain(count, of):
    """Blocks B0 .. Bcount; of(name) is what each but the first holds of the one before."""
    return block("B0", line(0, 0, 10, 5)) + "".join(
        block("B%d" % i, of("B%d" % (i - 1))) for i in range(1, count + 1))


CORNERS = [p for p in [(0, 0), (0, 10), (20, 10), (20, 15), (60, 15), (60, 0)] for _ in range(4)]
# name: drawing | status of compute | what it says
DRAWINGS = {
    "corners as equal control points": (drawing(spline(CORNERS)), 0, r"length +\d"),
    "a spline at one point": (drawing(spline([(7, 8)] * 9) + line(0, 0, 9, 9)), 0, r"length"),
    "two in each of forty": (
        drawing(insert("B40"), chain(40, lambda name: insert(name) + insert(name, 1))), 2,
        r"block 'B40' \(reference \w+\) makes most of the [\d.e+]+ entities"),
    "arrays of arrays": (
        drawing(insert("B3"), chain(3, lambda name: insert(name, 0, 70, 300, 71, 300, 44, 1, 45, 1))),
        2, r"block 'B3' \(reference \w+\) makes most"),
    "deeper than the stack": (drawing(insert("B60000"), chain(60000, insert)), 0, r"length"),
    "deep, and a block inside itself": (
        drawing(insert("B900"), chain(900, lambda name: insert(name) + insert("B899"))), None, ""),
}


def bounded():
    resource.setrlimit(resource.RLIMIT_AS, (MEGABYTES << 20, MEGABYTES << 20))
    resource.setrlimit(resource.RLIMIT_CPU, (SECONDS, SECONDS))


class Limits(ProgramTest):
    def bounded_run(self, *arguments):
        return subprocess.run([str(PROGRAM), *arguments], cwd=self.folder, capture_output=True,
                              text=True, timeout=20 * SECONDS, preexec_fn=bounded)

    def test_drawings(self):
        for name, (text, status, said) in DRAWINGS.items():
            (self.folder / "in.dxf").write_text(text)
            for arguments, expected, words in [
                    (("compute", "in.dxf", "--centre", "5,0"), status, said),
                    (("info", "in.dxf"), 0, "extents|contains itself"),
                    (("copy", "in.dxf", "out.dxf"), 0, "")]:
                with self.subTest(drawing=name, command=arguments[0]):
                    done = self.bounded_run(*arguments)
                    self.assertIn(done.returncode, (0, 1, 2), done.stderr)
                    if expected is not None:
                        self.assertEqual(expected, done.returncode, done.stderr)
                    if words:
                        self.assertRegex((done.stdout + done.stderr).lower(), words.lower())


if __name__ == "__main__":
    main()
