"""Requests that cannot be met: the exit status, one clear sentence, and nothing written."""

import os
import re
import shlex
import subprocess
import unittest

import ezdxf

from program import EXAMPLES, PROGRAM, ROOT, ProgramTest, main

# arguments with D for the stepped drill | exit status | what the message says, as a pattern
REFUSALS = [
    ("compute D --centre 140,nan", 2, r"not a finite number"),
    ("compute D --centre 140,120 --arc-precision 0", 2, r"give a positive length"),
    ("compute D --algorithm 3 --centre 140,120 --arc-precision 1e-4", 2,
     r"not above the point tolerance of 0\.0005"),
    ("compute D --algorithm 3 --centre 140,120 --arc-precision 1e-7 --point-tolerance 1e-8", 2,
     r"about \d{7,} segments; use [\d.]+ or more"),
    ("compute D --centre 140,120 --point-tolerance 1000", 2, r"larger than all that was picked"),
    ("compute D --centre 9000,120", 2, r"the centre 9000,120 lies 8703 units outside"),
    ("compute D --centre 140,120 --window 0,0,0,50", 2, r"has no area"),
    ("compute D --centre 140,120 --window -9,-9,-8,-8", 1, r"no entity lies wholly inside"),
    ("compute D --centre 140,120 -o missing/out.dxf", 1, r"missing/out\.dxf"),
    ("compute missing.dxf --centre 0,0", 2, r"missing\.dxf: .*[Nn]o such file"),
    ("info .", 2, r"\.: .*folder"),
    ("copy D missing/out.dxf", 1, r"missing/out\.dxf"),
    ("copy D .", 1, r"folder"),
    ("copy missing.dxf out.dxf", 2, r"missing\.dxf"),
]

# what a file holds | what the message says: the line of the fault where there is one
BROKEN = {
    "empty": (b"", r"empty"),
    "prose": (b"this is\nno drawing\n", r"line 1"),
    "picture": (b"\x89PNG\r\n\x1a\n\0\0\0\rIHDR", r"line 1|no DXF"),
    "dwg": (b"AC1032\0\0\0\0\0\1", r"DWG"),
    "code that is no number": (b"  0\nSECTION\n  2\nENTITIES\nxyz\nLINE\n", r"line 5"),
    "number that is none": (
        b"  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nabc\n  0\nENDSEC\n  0\nEOF\n", r"line 8"),
    "cut off": (b"  0\nSECTION\n  2\nENTITIES\n  0\n", r"line 5|end"),
    "binary, cut off": (b"AutoCAD Binary DXF\r\n\x1a\0\0\0SECT", r"byte \d+"),
}


class Messages(ProgramTest):
    def assert_one_sentence(self, done, status, pattern):
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        self.assertEqual("", done.stdout)
        self.assertRegex(done.stderr, r"\Aqzenvelope: [^\n]+\n\Z")
        self.assertRegex(done.stderr, pattern)
        for word in ("terminate", "exception", "std::", "Sanitizer"):
            self.assertNotIn(word, done.stderr)

    def test_refusals(self):
        drill = EXAMPLES / "stepped-drill.dxf"
        for line, status, pattern in REFUSALS:
            with self.subTest(line=line):
                arguments = [str(drill) if w == "D" else w for w in shlex.split(line)]
                self.assert_one_sentence(self.run_program(*arguments), status, pattern)
        self.assertEqual([], self.left_behind())

    def test_broken_files(self):
        for name, (content, pattern) in BROKEN.items():
            path = self.folder / (name + ".dxf")
            path.write_bytes(content)
            for arguments in (("info", path.name), ("copy", path.name, "out.dxf"),
                              ("compute", path.name, "--centre", "0,0", "-o", "out.dxf")):
                with self.subTest(file=name, command=arguments[0]):
                    done = self.run_program(*arguments)
                    self.assert_one_sentence(done, 2, pattern)
                    self.assertIn(path.name, done.stderr)
                    self.assertFalse((self.folder / "out.dxf").exists())

    def test_a_cut_drawing_is_read_as_far_as_it_goes_or_refused(self):
        whole = (EXAMPLES / "stepped-drill.dxf").read_bytes()
        for share in range(1, 20):
            (self.folder / "cut.dxf").write_bytes(whole[: len(whole) * share // 20])
            done = self.run_program("info", "cut.dxf", "--json")
            with self.subTest(share=share):
                self.assertIn(done.returncode, (0, 2), done.stderr)
                if done.returncode == 0:
                    self.assertNotIn('"notes": []', done.stdout)
                else:
                    self.assertRegex(done.stderr, r"line \d+")

    def test_unwritable_output_keeps_the_old_file(self):
        if os.geteuid() == 0:
            # Root writes everywhere but here.
            done = self.run_program("copy", EXAMPLES / "end-mill.dxf", "/proc/out.dxf")
            self.assert_one_sentence(done, 1, r"/proc/out\.dxf")
            return
        folder = self.folder / "closed"
        folder.mkdir()
        (folder / "old.dxf").write_text("old")
        folder.chmod(0o500)
        self.addCleanup(folder.chmod, 0o700)
        done = self.run_program("copy", EXAMPLES / "end-mill.dxf", "closed/old.dxf")
        self.assert_one_sentence(done, 1, r"closed/old\.dxf")
        self.assertEqual("old", (folder / "old.dxf").read_text())

    def test_what_was_computed_is_told_when_a_file_cannot_be_written(self):
        done = self.run_program("compute", EXAMPLES / "stepped-drill.dxf", "--svg",
                                "missing/out.svg")
        self.assertEqual(1, done.returncode)
        self.assertRegex(done.stderr, r"missing/out\.svg.*--svg")
        self.assertIn("closed polyline", done.stdout)

    def test_no_tool(self):
        # A bare border with words in it.
        sheet = ezdxf.new("R2010")
        sheet.modelspace().add_lwpolyline([(0, 0), (400, 0), (400, 280), (0, 280)], close=True)
        sheet.modelspace().add_text("EMPTY").set_placement((50, 50))
        sheet.saveas(self.folder / "border.dxf")
        done = self.run_program("compute", "border.dxf", "-o", "out.dxf")
        self.assertEqual((1, ""), (done.returncode, done.stdout))
        self.assertRegex(done.stderr, r"no tool was found.*(.|\n)*--centre or --axis")
        self.assertEqual(["border.dxf"], self.left_behind())

    def test_no_envelope(self):
        # The half below an axis that touches the tool from below holds nothing.
        done = self.run_program("compute", EXAMPLES / "stepped-drill.dxf", "--centre", "140,100",
                                "--window", "50,101,230,140", "--half", "lower", "-o", "out.dxf")
        self.assertEqual(1, done.returncode, done.stdout + done.stderr)
        self.assertRegex(done.stderr, r"nothing that counts as contour is drawn in the half")
        self.assertEqual([], self.left_behind())

    def test_help(self):
        done = self.run_program("compute", "--help")
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        for part in ("--centre", "Examples:", "displayed", "frozen"):
            self.assertIn(part, done.stdout)
        self.assertRegex(self.run_program("--version").stdout, r"\Aqzenvelope [\d.]+ \((unknown commit|[0-9a-f]+)\)\n\Z")


class Readme(ProgramTest):
    def test_the_commands_of_daily_use_run(self):
        text = (ROOT / "README.md").read_text(encoding="utf-8")
        block = re.search(r"## Daily use\n.*?```sh\n(.*?)```", text, re.S).group(1)
        commands = [l for l in block.splitlines() if l.startswith("qzenvelope ")]
        self.assertGreaterEqual(len(commands), 5)
        (self.folder / "examples").symlink_to(EXAMPLES)
        path = str(PROGRAM.parent) + os.pathsep + os.environ["PATH"]
        done = subprocess.run(["bash", "-euo", "pipefail", "-c", block], cwd=self.folder,
                              env=dict(os.environ, PATH=path), capture_output=True, text=True)
        self.assertEqual(0, done.returncode, done.stderr)
        written = set(re.findall(r"(?:-o|--svg|>) (\S+)", "\n".join(commands)))
        self.assertEqual([], [w for w in written if not (self.folder / w).stat().st_size])


if __name__ == "__main__":
    main()
