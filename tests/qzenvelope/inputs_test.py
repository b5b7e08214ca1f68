"""Inputs are never written over unless the request says so, and no two outputs are one file."""

import os
import re
import shutil

from program import EXAMPLES, ProgramTest, main

OUTPUTS = ["-o", "--svg", "--sat", "--step", "--stl", "--png"]


class Inputs(ProgramTest):
    def setUp(self):
        super().setUp()
        shutil.copy(EXAMPLES / "end-mill.dxf", self.folder / "in.dxf")
        (self.folder / "sub").mkdir()
        (self.folder / "soft.dxf").symlink_to("in.dxf")
        (self.folder / "chain.dxf").symlink_to("./soft.dxf")
        (self.folder / "sub" / "up.dxf").symlink_to("../in.dxf")
        (self.folder / "dangling").symlink_to("sub/new")
        os.link(self.folder / "in.dxf", self.folder / "hard.dxf")
        self.content = (self.folder / "in.dxf").read_bytes()
        self.centre = re.search(r"--centre[ =](\S+)",
                                (EXAMPLES / "end-mill.args").read_text()).group(1)

    def refused(self, pattern, *arguments):
        before = self.left_behind()
        done = self.run_program(*arguments)
        self.assertEqual(2, done.returncode, done.stdout + done.stderr)
        self.assertRegex(done.stderr, r"\Aqzenvelope: [^\n]*" + pattern + r"[^\n]*\n\Z")
        self.assertEqual(self.content, (self.folder / "in.dxf").read_bytes())
        self.assertEqual(before, self.left_behind())

    def compute(self, *arguments):
        return ("compute", "in.dxf", "--centre=" + self.centre, *arguments)

    def test_spellings_of_an_input(self):
        spellings = ["in.dxf", "./in.dxf", "sub/../in.dxf", ".//in.dxf", self.folder / "in.dxf",
                     "soft.dxf", "chain.dxf", "sub/up.dxf", "hard.dxf"]
        for option in OUTPUTS[1:]:
            for spelling in spellings if option in ("--svg", "--sat") else ["in.dxf", "hard.dxf"]:
                with self.subTest(option=option, spelling=spelling):
                    self.refused("input.*choose another place", *self.compute(option, spelling))

    def test_two_outputs_of_one_name(self):
        for first in OUTPUTS:
            for second in OUTPUTS:
                if first != second:
                    with self.subTest(first=first, second=second):
                        self.refused("are one file", *self.compute(first, "o", second, "./o"))
        for a, b in [("sub/new", "dangling"), ("a.out", "A.OUT"), ("sub/x", "sub/../sub//x"),
                     ("missing/o", "missing/./o")]:
            self.refused("are one file", *self.compute("--svg", a, "--sat", b))
        self.refused("input", *self.compute("-o", "in.dxf", "--svg", "in.dxf"))

    def test_what_may_be(self):
        for arguments in [("-o", "in.dxf"), ("-o", "soft.dxf"), ("--svg", "dangling"),
                          ("--svg", "/dev/null", "--sat", "/dev/null")]:
            with self.subTest(arguments=arguments):
                done = self.run_program(*self.compute(*arguments))
                self.assertEqual(0, done.returncode, done.stderr)
        self.assertEqual(0, self.run_program("copy", "in.dxf", "./in.dxf").returncode)
        self.assertTrue((self.folder / "soft.dxf").is_symlink())

    def test_streams(self):
        done = self.run_program(*self.compute("--svg", "/dev/stdout"))
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertTrue(done.stdout.startswith("<?xml") or "<svg" in done.stdout[:200])

    def test_batch(self):
        (self.folder / "t.csv").write_text("in,%s,-1000,-1000,1000,1000\n" % self.centre)
        shutil.copy(self.folder / "in.dxf", self.folder / "tool.sat")
        batch = ("batch", "in.dxf", "--tools", "t.csv")
        for arguments, pattern in [
                (batch + ("--out", "."), r"in\.dxf is the input in\.dxf"),
                (batch + ("--out", "sub/.."), r"in\.dxf is the input in\.dxf"),
                (batch + ("--out", "out", "--report", "in.dxf"), "--report in.dxf is an input"),
                (batch + ("--out", "out", "--report", "t.csv"), "--report t.csv is an input"),
                (batch + ("--out", "sub", "--report", "sub/IN.dxf"), "are one file"),
                (("batch", "tool.sat", "--tools", "t.csv", "--out", "."), "input")]:
            with self.subTest(arguments=arguments):
                self.refused(pattern, *arguments)
        # The tools' files are known only after the drawings were looked through.
        shutil.move(self.folder / "tool.sat", self.folder / "sub" / "in.sat")
        done = self.run_program("batch", "in.dxf", "sub/in.sat", "--tools", "t.csv", "--out", "sub")
        self.assertEqual(2, done.returncode, done.stdout + done.stderr)
        self.assertRegex(done.stderr, r"in\.sat is an? (the )?input")
        self.assertEqual(self.content, (self.folder / "sub" / "in.sat").read_bytes())


if __name__ == "__main__":
    main()
