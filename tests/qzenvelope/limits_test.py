"""Small files that ask for much: they are answered or refused at once, with little memory. Limits
that are given end a run cleanly, and so does who interrupts it."""

import os
import pty
import re
import resource
import shutil
import signal
import subprocess
import time

from program import EXAMPLES, PROGRAM, ProgramTest, main

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
# name: drawing | status of compute, 1 for an outline that crosses itself | what it says
DRAWINGS = {
    "corners as equal control points": (drawing(spline(CORNERS)), 0, r"length +\d"),
    "a spline at one point": (drawing(spline([(7, 8)] * 9) + line(0, 0, 9, 9)), 1, r"length"),
    "two in each of forty": (
        drawing(insert("B40"), chain(40, lambda name: insert(name) + insert(name, 1))), 2,
        r"block 'B40' \(reference \w+\) makes most of the [\d.e+]+ entities"),
    "arrays of arrays": (
        drawing(insert("B3"), chain(3, lambda name: insert(name, 0, 70, 300, 71, 300, 44, 1, 45, 1))),
        2, r"block 'B3' \(reference \w+\) makes most"),
    "deeper than the stack": (drawing(insert("B60000"), chain(60000, insert)), 1, r"length"),
    "a grid": (
        drawing("".join(line(0, i, 1500, i) + line(i, 0, i, 1500) for i in range(1500))), 2,
        r"cross 22\d{5} times.*raise --limit"),
    "a grid of two blocks": (
        drawing(insert("A") + insert("B"),
                block("A", "".join(line(0, i, 1500, i) for i in range(1500))) +
                block("B", "".join(line(i, 0, i, 1500) for i in range(1500)))), 2,
        r"cross 22\d{5} times.*raise --limit"),
    "a line drawn over and over": (drawing(line(0, 0, 10, 5) * 20000 + line(10, 5, 20, 5)), 0,
                                   "length"),
    "a grid that nobody wants to be checked": (
        drawing("".join(line(0, i, 200, i) + line(i, 0, i, 200) for i in range(200))), 1,
        r"not checked against the contour"),
    "a row of short lines": (
        drawing("".join(line(*p) for p in [(0, 0, 0, 9), (0, 9, 400, 9), (400, 9, 400, 0)]) +
                "".join(line(i / 100, 5, i / 100 + 0.004, 5.004) for i in range(40000))), None, ""),
    "a bulge next to nothing": (
        drawing(entity("LWPOLYLINE", "AcDbPolyline", 90, 3, 70, 0, 10, 0, 20, 0, 10, 10, 20, 5, 42,
                       "1e-320", 10, 20, 20, 5)), 2, r"entity \w+ is a curve without a length: a bulge so near 0"),
    "a zigzag": (drawing(spline([(i, 50 - 100 * (i % 2)) for i in range(1000)])), 2,
                 r"one side sees the lines that were picked in \d+ pieces or more.*raise --limit"),
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
                    (("compute", "in.dxf", "--centre", "5,0", "--algorithm", "3"), status, said),
                    (("compute", "in.dxf", "--centre", "5,0"), None, ""),
                    (("compute", "in.dxf"), None, ""),
                    (("info", "in.dxf"), 0, "extents|contains itself"),
                    (("copy", "in.dxf", "out.dxf"), 0, "")]:
                with self.subTest(drawing=name, command=arguments[0]):
                    done = self.bounded_run(*arguments)
                    self.assertIn(done.returncode, (0, 1, 2), done.stderr)
                    if expected is not None:
                        self.assertEqual(expected, done.returncode, done.stderr)
                    if words:
                        self.assertRegex((done.stdout + done.stderr).lower(), words.lower())

    def test_limits_that_are_given(self):
        (self.folder / "in.dxf").write_text(
            drawing("".join(line(x, y, x + 30, y + 20) for x in range(0, 9000, 30)
                            for y in range(0, 9000, 30))))
        for arguments, status, said in [
                (("--time-limit", "0.1"), 122, r"took longer than 0\.1 s; raise --time-limit"),
                (("--memory-limit", "30"), 121, r"not enough memory within the 30 MB given"),
                (("--limit", "100"), 2, r"90000.*more than 100.*--limit"),
                (("--time-limit", "0"), 2, r"--time-limit: 0 leaves nothing to do"),
                (("--limit", "x"), 2, r"--limit: 'x' is not a number")]:
            with self.subTest(arguments=arguments):
                done = self.run_program("compute", "in.dxf", "--centre", "0,0", "-o", "out.dxf",
                                        "--algorithm", "3",
                                        *arguments)
                self.assertEqual(status, done.returncode, done.stderr)
                self.assertRegex(done.stderr, r"\Aqzenvelope: .*" + said + r".*\n\Z")
                self.assertEqual(["in.dxf"], self.left_behind())

    def test_interrupted(self):
        (self.folder / "in.dxf").write_text(
            drawing("".join(line(x, y, x + 30, y + 20) for x in range(0, 9000, 30)
                            for y in range(0, 9000, 30))))
        for number, status in ((signal.SIGINT, 130), (signal.SIGTERM, 143), (signal.SIGHUP, 129)):
            run = subprocess.Popen([str(PROGRAM), "compute", "in.dxf", "--centre", "0,0",
                                    "--algorithm", "3", "-o", "out.dxf"], cwd=self.folder, stderr=subprocess.PIPE, text=True)
            time.sleep(0.3)
            run.send_signal(number)
            self.assertEqual((status, "qzenvelope: interrupted; what is written so far is whole\n"),
                             (run.wait(SECONDS), run.stderr.read()))
            run.stderr.close()
            self.assertEqual(["in.dxf"], self.left_behind())

    def test_a_terminal_sees_how_far_a_long_run_is(self):
        # Half a million crossings; a run that nobody watches writes nothing of it.
        (self.folder / "in.dxf").write_text(
            drawing("".join(line(0, y, 700, y) + line(y, 0, y, 700) for y in range(700))))
        ours, its = pty.openpty()
        self.addCleanup(os.close, ours)
        run = subprocess.Popen([str(PROGRAM), "compute", "in.dxf", "--centre", "0,0",
                                "--algorithm", "3", "-o", "out.dxf"], cwd=self.folder, stderr=its)
        os.close(its)
        seen = ""
        while not re.search(r"computing: \w+( \d+ %)?, 0:\d\d; Ctrl-C ends it", seen):
            self.assertIsNone(run.poll(), seen)
            seen += os.read(ours, 4096).decode()
        run.send_signal(signal.SIGINT)
        self.assertEqual(130, run.wait(SECONDS))
        while not seen.endswith("\r\x1b[Kqzenvelope: interrupted; what is written so far is whole\r\n"):
            seen += os.read(ours, 4096).decode()
        self.assertEqual(["in.dxf"], self.left_behind())

    def test_a_tool_of_a_batch_that_takes_too_long(self):
        # A million crossings: many seconds, although the file is small.
        mesh = "".join(line(0, y, 1200, y) + line(y, 0, y, 1200) for y in range(1200))
        small = line(5000, 0, 5010, 5) + line(5010, 5, 5030, 5) + line(5030, 5, 5030, 0)
        (self.folder / "in.dxf").write_text(drawing(mesh + small))
        (self.folder / "t.csv").write_text("big,9,0,-100,-100,4000,4000\n"
                                           "small,5015,0,4999,-1,5031,6\n")
        done = self.run_program("batch", "in.dxf", "--tools", "t.csv", "--time-limit", "1",
                                "--algorithm", "3",
                                "--jobs", "1", "--limit", "1e9")
        self.assertEqual(1, done.returncode, done.stderr)
        self.assertIn("took longer than --time-limit", done.stdout)
        self.assertEqual([".qzenvelope-manifest", "in.dxf", "small.sat"],
                         sorted(os.listdir(self.folder / "out")))

    def test_what_is_no_file(self):
        os.mkfifo(self.folder / "fifo")
        for name, said in (("/dev/zero", "is a device"), ("/dev/null", "is a device"),
                           ("fifo", "a pipe into which nobody has written")):
            done = self.run_program("info", name)
            self.assertEqual(2, done.returncode, done.stderr)
            self.assertIn(said, done.stderr)
        done = subprocess.run("cat '%s' | '%s' info /dev/stdin" %
                              (EXAMPLES / "end-mill.dxf", PROGRAM), shell=True,
                              capture_output=True, text=True)
        self.assertEqual(0, done.returncode, done.stderr)
        with open(self.folder / "sparse.dxf", "wb") as file:
            file.truncate(1 << 40)
        done = self.run_program("info", "sparse.dxf")
        self.assertEqual(2, done.returncode, done.stderr)
        self.assertIn("larger than 4 GB", done.stderr)

    def test_names_do_not_command_the_terminal(self):
        (self.folder / "in.dxf").write_text(
            drawing(insert("\x1b[31mB\x07"), block("\x1b[31mB\x07", line(0, 0, 9, 5))))
        for arguments in (("info", "in.dxf"), ("compute", "in.dxf", "--centre", "0,0"),
                          ("compute", "in.dxf", "--centre", "0,0", "--limit", "1"),
                          ("info", "\x1b[31mmissing\x9b.dxf")):
            done = self.run_program(*arguments)
            self.assertNotRegex(done.stdout + done.stderr, "[\x00-\x08\x0b-\x1f\x7f-\x9f]")
        self.assertIn(r"\x1b[31mmissing\x9b.dxf", done.stderr)

    def test_no_tool_is_not_unreadable(self):
        (self.folder / "in.dxf").write_text(drawing(line(0, 0, 9, 5)))
        done = self.run_program("batch", "in.dxf")
        self.assertEqual(1, done.returncode, done.stdout + done.stderr)

    def test_the_summary_comes_although_the_page_cannot_be_written(self):
        shutil.copy(EXAMPLES / "end-mill.dxf", self.folder / "in.dxf")
        (self.folder / "t.csv").write_text("mill,100,125,60,95,195,155\n")
        (self.folder / "page.html").mkdir()
        done = self.run_program("batch", "in.dxf", "--tools", "t.csv", "--report", "page.html")
        self.assertEqual(1, done.returncode, done.stderr)
        self.assertIn("page.html: the report cannot be written: is a folder", done.stderr)
        self.assertIn("1 done", done.stdout)
        self.assertNotIn("page.html", done.stdout)


if __name__ == "__main__":
    main()
