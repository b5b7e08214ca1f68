"""Scripts that cannot be done: the line is named, and nothing is left behind."""

import os
import pathlib
import shutil
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "qzenvelope"))

from program import EXAMPLES, PROGRAM, ProgramTest, main

OPEN = "command QZTOOLDESIGNProfileAuto3D\n"

# script; line that is named; words of the reason
FAULTS = [
    ("nonsense\n", 1, "unknown line"),
    ("\n# a remark\n\n  dance now\n", 4, "unknown line: dance now"),
    (OPEN + "select all\n", 2, "nothing asks for this"),
    (OPEN + "press 186 1021\nselect all\n", 3, "the script ends at a prompt"),
    (OPEN + "press 186 1021\npoint 1,2\n", 3, "the prompt is not answered"),
    (OPEN + "press 186 1021\ncommand U\n", 3, "the prompt is not answered"),
    (OPEN + "press 186 1021\nselect window 1,2\n", 3, "not a selection"),
    (OPEN + "press 186 1021\nselect handles FFFF\n", 3, "not a selection"),
    (OPEN + "press 186 1021\nselect all\npoint here\n", 4, "not a point"),
    (OPEN + "press 186 1020\n", 2, "there is no control 1020"),
    (OPEN + "press 186 x\n", 2, "not a number: x"),
    (OPEN + "set 186 1008 0\n", 2, "is a radio button"),
    (OPEN + "press 186\n", 2, "too few words"),
    (OPEN + "rows 186 1007\n", 2, "is no list"),
    ("press 186 1021\n", 1, "there is no dialog 186"),
    ("activate 2\n", 1, "there is no document 2"),
    ("open missing.dxf\n", 1, "cannot be opened"),
    ("close\ndump layers\n", 2, "no drawing is open"),
    ("command NOSUCH\n", 1, "no such command"),
    ("command nosuch e\nselect all\n", 1, "no such command"),
    ("dump weather\n", 1, "nothing of that name"),
    ("file a.sat\n", 1, "nothing asks for this"),
    ("command QZTOOLDESIGNProfilesAuto3D\npress 188 1018\n", 2,
     "the script ends while a dialog waits"),
    ("command QZTOOLDESIGNProfilesAuto3D\npress 188 1018\npress 188 1019\n", 3,
     "waits for a dialog in front of it"),
]


class Faults(ProgramTest):
    def run_script(self, text, *arguments):
        (self.folder / "a.scr").write_text(text, encoding="utf-8")
        return self.run_program("--script", "a.scr", *arguments)

    def test_faults_name_their_line(self):
        shutil.copy(EXAMPLES / "end-mill.dxf", self.folder)
        for script, line, reason in FAULTS:
            with self.subTest(script=script):
                done = self.run_script(script, "end-mill.dxf")
                self.assertEqual(1, done.returncode, done.stdout)
                self.assertRegex(done.stderr, r"^a\.scr:%d: " % line)
                self.assertIn(reason, done.stderr)
                self.assertEqual(1, done.stderr.count("\n"), done.stderr)

    def test_wrong_calls(self):
        shutil.copy(EXAMPLES / "end-mill.dxf", self.folder)
        done = self.run_program("--script", "missing.scr")
        self.assertEqual((2, True), (done.returncode, "missing.scr" in done.stderr))
        self.assertEqual(2, self.run_program("--nonsense").returncode)
        done = self.run_script("dump documents\n", "missing.dxf")
        self.assertEqual(1, done.returncode)
        self.assertIn("missing.dxf", done.stdout)
        done = self.run_script("dump documents\n", "--module", "a.scr", "end-mill.dxf")
        self.assertEqual(1, done.returncode)
        self.assertIn("a.scr", done.stdout)

    def test_without_a_display(self):
        (self.folder / "a.scr").write_text("screenshot a.png\n")
        bare = {name: value for name, value in os.environ.items()
                if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR")}
        for arguments, status, said in (([], 1, "no display"), (["--script", "a.scr"], 0, "")):
            done = subprocess.run([str(PROGRAM), *arguments], cwd=self.folder, env=bare,
                                  capture_output=True, text=True, timeout=60)
            self.assertEqual(status, done.returncode, done.stderr)
            self.assertIn(said, done.stderr)
            self.assertEqual(bool(said), bool(done.stderr), done.stderr)
        self.assertTrue((self.folder / "a.png").exists())

    def test_a_save_that_fails_fails_the_script(self):
        shutil.copy(EXAMPLES / "end-mill.dxf", self.folder)
        (self.folder / "folder.dxf").mkdir()
        for verb in ("save %s", "command SAVEAS\nstring %s", "command _.SAVEAS\nstring %s"):
            for path, reason in (("/dev/full", "No space left on device"),
                                 ("missing/a.dxf", "No such file or directory"),
                                 ("folder.dxf", "is a folder, not a file"),
                                 ("a.scr", "is the script that runs")):
                script = verb % path + "\ndump documents\n"
                with self.subTest(script=script):
                    done = self.run_script(script, "end-mill.dxf")
                    self.assertEqual(1, done.returncode, done.stdout)
                    self.assertRegex(done.stderr, r"^a\.scr:1: .*cannot be written: " + reason)
                    self.assertIn(reason, done.stdout)
                    self.assertEqual(script, (self.folder / "a.scr").read_text())

    def test_open_drawings_are_not_written_over(self):
        for name in ("end-mill.dxf", "stepped-drill.dxf"):
            shutil.copy(EXAMPLES / name, self.folder)
        os.link(self.folder / "stepped-drill.dxf", self.folder / "hard.dxf")
        drill = (self.folder / "stepped-drill.dxf").read_bytes()
        for line in ("save stepped-drill.dxf", "save ./hard.dxf", "screenshot hard.dxf"):
            with self.subTest(line=line):
                done = self.run_script(line + "\n", "stepped-drill.dxf", "end-mill.dxf")
                self.assertEqual(1, done.returncode, done.stdout)
                self.assertIn("is open as a drawing; close it", done.stderr)
                self.assertEqual(drill, (self.folder / "hard.dxf").read_bytes())
        # A file is its drawing's own again after a save elsewhere, a failed save and a close.
        done = self.run_script("save other.dxf\nsave\nsave end-mill.dxf\nactivate 1\nclose\n"
                               "save stepped-drill.dxf\n", "stepped-drill.dxf", "end-mill.dxf")
        self.assertEqual((0, ""), (done.returncode, done.stderr), done.stdout)
        self.assertEqual((self.folder / "other.dxf").read_bytes(),
                         (self.folder / "stepped-drill.dxf").read_bytes())

    def test_the_standard_output_is_full(self):
        (self.folder / "a.scr").write_text("new\n")
        with open("/dev/full", "w") as full:
            done = subprocess.run([str(PROGRAM), "--script", "a.scr"], cwd=self.folder, stdout=full,
                                  stderr=subprocess.PIPE, text=True, timeout=60)
        self.assertEqual((1, "qzhost: the standard output cannot be written\n"),
                         (done.returncode, done.stderr))

    def test_blanks_marks_and_line_ends(self):
        done = self.run_script("\ufeffdump documents\r\n  dump   open-objects  \r\n")
        self.assertEqual((0, "> dump documents\nnone\n> dump   open-objects\nnone\n"),
                         (done.returncode, done.stdout))


if __name__ == "__main__":
    main()
