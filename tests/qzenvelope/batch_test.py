"""The batch run as a whole: what it writes, what it says, and what happens when something fails."""

import json
import os
import pathlib
import pty
import re
import select
import signal
import subprocess
import time
import unittest

import dxf_tags
import ezdxf

from framed_tools import PITCH, Sheet
from program import EXAMPLES, PROGRAM, ProgramTest, main, shared_drawings

SHEET = EXAMPLES / "tool-sheet.dxf"
WINDOWS = {  # of the tools on that sheet: a point on the axis and the tool's surroundings
    "T-101": ("80,236", "20,180,200,290"), "T-102": ("300,236", "230,180,420,290"),
    "T-103": ("80,78", "10,20,200,140"), "T-104": ("300,78", "230,20,420,140"),
}
REAL = {  # drawings by others: a point on the axis of what is taken for a tool, and its surroundings
    "adapter_KJ4_R2000_gbk": ("170,111", "120,60,220,160"),  # both name objects that are not there
    "adapter_KJ4_R2018": ("170,111", "120,60,220,160"),
    "pulleys_camm3": ("120,236", "29,208,215,264"),
    "revolve_profile": ("0,10", "-12,-1,12,32"),
    "spindle_camm3": ("60,0", "-30,-38,205,38"),
}
DATED = dict(os.environ, SOURCE_DATE_EPOCH="1767607200")


class Batch(ProgramTest):
    def batch(self, *arguments, status=0):
        done = subprocess.run([str(PROGRAM), "batch", *map(str, arguments)], cwd=self.folder,
                              capture_output=True, text=True, timeout=300, env=DATED)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return done

    def files(self, folder="out"):
        return sorted(p.name for p in (self.folder / folder).iterdir() if not p.name.startswith("."))

    def info(self, path):
        return json.loads(self.run_program("info", path, "--json").stdout)

    def volumes(self, path):
        return [e["solid"]["volume"] for e in self.info(path)["envelopes"]]

    def assert_whole(self, folder="out"):
        """Every file that stands there under its own name is complete."""
        for path in (self.folder / folder).iterdir():
            if path.suffix == ".sat":
                self.assertTrue(path.read_text("ascii").endswith("End-of-ACIS-data\n"), path)
            if path.suffix == ".dxf":
                self.assertFalse(ezdxf.readfile(path).audit().has_errors, path)


class Results(Batch):
    def test_frames_give_what_single_runs_give(self):
        done = self.batch(SHEET, "--jobs", 1)
        self.assertEqual(["T-101.sat", "T-102.sat", "T-103.sat", "T-104.sat", "tool-sheet.dxf"],
                         self.files())
        for name, (centre, window) in WINDOWS.items():
            single = subprocess.run(
                [str(PROGRAM), "compute", str(SHEET), "--centre", centre, "--window", window,
                 "--sat", "one.sat"], cwd=self.folder, capture_output=True, text=True, env=DATED)
            self.assertEqual(0, single.returncode, single.stderr)
            self.assertEqual((self.folder / "one.sat").read_bytes(),
                             (self.folder / "out" / (name + ".sat")).read_bytes(), name)
        self.assertEqual(4, len(self.volumes("out/tool-sheet.dxf")))
        self.assertIsNotNone(self.info("out/tool-sheet.dxf")["tasks"])
        self.assert_whole()
        self.assertNotIn("\r", done.stdout + done.stderr, "a progress bar without a terminal")

    def test_steps_and_triangles_on_request(self):
        self.batch(SHEET, "--step", "--stl", "--out", "deep/er")
        files = self.files("deep/er")
        for name in WINDOWS:
            kinds = {pathlib.Path(f).suffix for f in files if f.startswith(name + ".")}
            self.assertTrue({".sat", ".stl"} < kinds and kinds & {".stp", ".step"}, kinds)

    def test_a_stored_task_list_is_run_as_stored(self):
        self.batch(SHEET, "--half", "lower")
        first = self.volumes("out/tool-sheet.dxf")
        # The other half is not asked for again: it is stored with the task.
        self.batch("out/tool-sheet.dxf", "--out", "again")
        self.assertEqual(first, self.volumes("again/tool-sheet.dxf"))
        for name in WINDOWS:
            self.assertEqual((self.folder / "out" / (name + ".sat")).read_bytes(),
                             (self.folder / "again" / (name + ".sat")).read_bytes(), name)
        refused = self.batch("out/tool-sheet.dxf", "--out", "more", "--task", "no such", status=1)
        self.assertIn("no such", refused.stdout + refused.stderr)

    def test_parameters_reach_the_engine(self):
        self.batch(SHEET)
        self.batch(SHEET, "--half", "lower", "--out", "lower")
        upper, lower = self.volumes("out/tool-sheet.dxf"), self.volumes("lower/tool-sheet.dxf")
        differing = [i for i, (a, b) in enumerate(zip(upper, lower)) if abs(a - b) > 1e-3]
        self.assertEqual([3], differing, "only the careless tool differs below")

    def test_tools_named_by_a_file(self):
        lines = ["name,centre x,centre y,x1,y1,x2,y2"]
        lines += [f"{n},{c},{w}" for n, (c, w) in WINDOWS.items() if n != "T-103"]
        (self.folder / "tools.csv").write_text("\n".join(lines) + "\n")
        self.batch(SHEET, "--tools", "tools.csv")
        self.assertEqual(["T-101.sat", "T-102.sat", "T-104.sat", "tool-sheet.dxf"], self.files())

    def test_faulty_tool_files_are_refused_by_line(self):
        for text in ("A,1,2,3,4,5\n", "A,1,x,0,0,5,5\n", "A,1,2,0,0,0,5\n", ",1,2,0,0,5,5\n", ""):
            with self.subTest(text=text):
                (self.folder / "t.csv").write_text("B,1,1,0,0,9,9\n" * bool(text) + text)
                done = self.batch(SHEET, "--tools", "t.csv", status=2)
                self.assertIn("t.csv", done.stderr)
                if text:
                    self.assertRegex(done.stderr, r"\b2\b")
                self.assertFalse((self.folder / "out").exists())


class Dictionaries(Batch):
    """What a dictionary names and nobody finds stays, and who owns the rest."""

    def odd(self, drawing):
        """The drawing with lost entries in every dictionary, every second entry owned by it."""
        text = drawing.read_bytes().decode("latin-1").replace("\r\n", "\n")
        head, tail = text.split("\nOBJECTS\n", 1)
        lines, out, entries, record = tail.split("\n"), [], 0, None
        for code, value in zip(lines[::2], lines[1::2]):
            if code.strip() == "0":
                if record == "DICTIONARY":
                    out += ["  3", "LAST", "350", f"FFF{len(out):X}"]
                record = value
            if record == "DICTIONARY" and code.strip() == "3":
                out += ["  3", f"LOST{entries}", "350", f"EEE{entries:X}"]
                entries += 1
            if record == "DICTIONARY" and code.strip() == "350" and entries % 2:
                code = "360"
            out += [code, value]
        path = self.folder / "odd.dxf"
        path.write_bytes((head + "\nOBJECTS\n" + "\n".join(out) + "\n").encode("latin-1"))
        self.assertGreater(entries, 0)
        return path

    def assert_kept(self, before, after):
        """Every dictionary of the first file has all its tags, in order, in the second."""
        objects = lambda p: {dxf_tags.value(r, 5): r for r in dxf_tags.records(
            dxf_tags.sections(dxf_tags.read_tags(p))["OBJECTS"]) if r[0][1] == b"DICTIONARY"}
        now = objects(after)
        for handle, record in objects(before).items():
            rest = iter(now[handle])
            for tag in record:
                self.assertIn(tag, rest, f"{tag} of {handle} in {after.name}")

    def test_lost_entries_stay(self):
        odd = self.odd(SHEET)
        self.batch(odd)
        self.assert_kept(odd, self.folder / "out" / "odd.dxf")
        centre, window = WINDOWS["T-101"]
        self.compute(odd, "--centre", centre, "--window", window, "-o", "one.dxf")
        self.assert_kept(odd, self.folder / "one.dxf")
        # Once more on what came out, whose task list is there already.
        self.batch(self.folder / "out" / "odd.dxf", "--out", "again")
        self.assert_kept(self.folder / "out" / "odd.dxf", self.folder / "again" / "odd.dxf")

    def test_those_of_real_drawings_stay(self):
        for name, (centre, window) in REAL.items():
            real = shared_drawings() / (name + ".dxf")
            (self.folder / "t.csv").write_text(f"A,{centre},{window}\n")
            for drawing in (real, self.odd(real)):
                with self.subTest(drawing=name, made=drawing is not real):
                    self.batch(drawing, "--tools", "t.csv")
                    self.assert_kept(drawing, self.folder / "out" / drawing.name)
                    self.compute(drawing, "--centre", centre, "--window=" + window, "-o", "one.dxf")
                    self.assert_kept(drawing, self.folder / "one.dxf")


class Failures(Batch):
    def test_a_failing_tool_never_stops_the_rest(self):
        sheet = Sheet()
        sheet.add("A1")
        # Two slanted lines on either side of nothing.
        sheet.add("A2", profile=[(0, 20), (50, 8)], centre_line=False)
        _, volume = sheet.add("A3")
        sheet.add("bad/../name")
        sheet.save(self.folder / "sheet.dxf")
        done = self.batch("sheet.dxf", status=1)
        said = done.stdout + done.stderr
        self.assertEqual(["A1.sat", "A3.sat", "sheet.dxf"], self.files())
        self.assertRegex(said, r"A2\b.*no axis lies inside its frame")
        self.assertRegex(said, r"bad/\.\./name")
        self.assertFalse(list(self.folder.rglob("name*")))
        info = self.info("out/sheet.dxf")
        self.assertEqual(3, len(info["envelopes"]), "the misnamed tool has its envelope")
        self.assertTrue(any(abs(e["solid"]["volume"] / volume - 1) < 1e-9
                            for e in info["envelopes"]))

    def test_unreadable_drawings(self):
        (self.folder / "torn.dxf").write_bytes(SHEET.read_bytes()[:40000])
        (self.folder / "words.dxf").write_text("no drawing\n")
        done = self.batch("torn.dxf", SHEET, "words.dxf", "missing.dxf", status=2)
        for name in ("torn.dxf", "words.dxf", "missing.dxf"):
            self.assertIn(name, done.stdout + done.stderr)
        self.assertIn("T-104.sat", self.files())

    def test_tools_of_one_name_are_numbered_and_told_before(self):
        (self.folder / "a.dxf").write_bytes(SHEET.read_bytes())
        (self.folder / "b.dxf").write_bytes(SHEET.read_bytes())
        done = self.batch("a.dxf", "b.dxf", "--jobs", 2)
        files = self.files()
        for name in WINDOWS:
            numbered = [f for f in files if f.startswith(name)]
            self.assertEqual(2, len(numbered), files)
            self.assertEqual(*[(self.folder / "out" / f).read_bytes() for f in numbered])
        self.assertRegex(done.stderr, r"(?i)warning.*T-101")

    def test_nothing_to_write_into(self):
        (self.folder / "out").write_text("a file, no folder")
        self.assertIn("out", self.batch(SHEET, status=2).stderr)

    def test_drawing_without_tools(self):
        # Neither frames nor tasks: what is drawn says where the tools are.
        self.batch(EXAMPLES / "t-slot-cutter.dxf")
        self.assertEqual(["t-slot-cutter.dxf", "t-slot-cutter.sat"], self.files())
        sheet = Sheet()
        sheet.space.add_line((0, 0), (3, 40))
        sheet.save(self.folder / "bare.dxf")
        done = self.batch("bare.dxf", "--out", "none", status=1)
        self.assertRegex(done.stdout + done.stderr, r"bare\.dxf.*no tool was found")


class Processes(Batch):
    def sheet(self, name, tools, entities=120):
        sheet = Sheet(len(name))
        for i in range(tools):
            sheet.add(f"{name}-{i:03}", entities)
        sheet.save(self.folder / (name + ".dxf"))

    def start(self, *arguments):
        return subprocess.Popen([str(PROGRAM), "batch", *map(str, arguments)], cwd=self.folder,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                start_new_session=True)

    def wait_for(self, pattern, count):
        """Until that many files are there; the run under test goes on meanwhile."""
        for _ in range(6000):
            if len(list(self.folder.glob(pattern))) >= count:
                return
            time.sleep(0.01)
        self.fail("nothing was written")

    def test_side_by_side_is_as_one_after_the_other(self):
        names = "pqrs"
        for name in names:
            self.sheet(name, 5)
        drawings = [name + ".dxf" for name in names]
        self.batch(*drawings, "--jobs", 1, "--out", "one")
        self.batch(*drawings, "--jobs", 3, "--out", "three")
        self.assertEqual(self.files("one"), self.files("three"))
        for name in self.files("one"):
            self.assertEqual((self.folder / "one" / name).read_bytes(),
                             (self.folder / "three" / name).read_bytes(), name)

    def test_a_killed_run_leaves_whole_files_and_starts_again(self):
        self.sheet("k", 60)
        run = self.start("k.dxf", "--jobs", 1)
        self.wait_for("out/*.sat", 5)
        os.killpg(run.pid, signal.SIGKILL)
        run.communicate()
        self.assert_whole()
        self.batch("k.dxf")
        self.assert_whole()
        self.assertEqual(60, len(list(self.folder.glob("out/*.sat"))))
        self.assertTrue((self.folder / "out/k.dxf").exists())

    def children(self, run):
        return pathlib.Path(f"/proc/{run.pid}/task/{run.pid}/children").read_text().split()

    def test_a_crash_fails_only_its_tool(self):
        self.sheet("long", 150)
        self.sheet("short", 2)
        run = self.start("long.dxf", "short.dxf", "--jobs", 2)
        self.wait_for("out/short.dxf", 1)
        self.wait_for("out/long-*.sat", 3)
        # One worker is left, that of the long drawing.
        for _ in range(500):
            workers = self.children(run)
            if len(workers) == 1:
                break
            time.sleep(0.01)
        os.kill(int(workers[0]), signal.SIGSEGV)
        out, err = run.communicate(timeout=120)
        self.assertEqual(1, run.returncode, out + err)
        failed = set(re.findall(r"\blong-\d{3}\b(?=.*crash)", out))
        self.assertEqual(1, len(failed), out + err)
        # A worker may have died behind the file, while it checked what it had written.
        self.assertIn(len(list(self.folder.glob("out/*.sat"))), (151, 152))
        self.assertEqual(149, len(self.info("out/long.dxf")["envelopes"]))
        self.assert_whole()

    def test_a_bar_on_a_terminal(self):
        self.sheet("bar", 12)
        screen, terminal = pty.openpty()
        run = subprocess.Popen([str(PROGRAM), "batch", "bar.dxf"], cwd=self.folder,
                               stdout=terminal, stderr=terminal, start_new_session=True)
        os.close(terminal)
        shown = b""
        while select.select([screen], [], [], 60)[0]:
            try:
                read = os.read(screen, 65536)
            except OSError:  # the program has closed its end
                break
            if not read:
                break
            shown += read
        os.close(screen)
        self.assertEqual(0, run.wait(60), shown)
        text = shown.decode()
        states = [s for s in re.split(r"\r(?!\n)", text) if re.search(r"\b\d+\s*/\s*12\b", s)]
        self.assertGreater(len(states), 1, "the bar does not move")


class Findings(Batch):
    """What the report says of drawings that are wrong by known amounts."""

    STEPPED = [(0, 0), (0, 20), (60, 20), (60, 8), (120, 8), (120, 0)]
    # Below a lip, which is all that is seen from above: 6 high.
    UNDERCUT = [(0, 0), (0, 20), (60, 20), (60, 14), (40, 14), (40, 8), (120, 8), (120, 0)]

    def tool(self, spoil=None, profile=None, options=()):
        sheet = Sheet()
        sheet.add("A", profile=profile or self.STEPPED)
        if spoil:
            spoil(sheet.space)
        sheet.save(self.folder / "a.dxf")
        done = self.batch("a.dxf", "--report", "out/index.html", "--json", *options)
        [tool] = [t for d in json.loads(done.stdout)["drawings"] for t in d["tools"]]
        warnings = {f["kind"]: f["text"] for f in tool["findings"] if f["warning"]}
        return tool, warnings

    def test_a_clean_tool_has_none(self):
        tool, warnings = self.tool()
        self.assertEqual({}, warnings)
        self.assertAlmostEqual(0, tool["off_contour"], delta=1e-4)
        self.assertAlmostEqual(0, tool["between_halves"], delta=1e-4)

    def test_an_undercut_lies_inside_the_envelope(self):
        tool, warnings = self.tool(profile=self.UNDERCUT)
        # The middle of the edge that closes it is as far from its roof as from its floor.
        self.assertLess(3, tool["off_contour"])
        self.assertEqual({}, warnings)
        self.assertIn("undercut covered", str(tool["findings"]))

    def test_halves_that_differ(self):
        def shave(space):
            for line in space.query("LINE"):
                for name in ("start", "end"):
                    point = line.dxf.get(name)
                    if abs(point.y - (50 - 8)) < 1e-9:
                        line.dxf.set(name, (point.x, 50 - 7.2))

        tool, warnings = self.tool(shave)
        self.assertAlmostEqual(0.8, tool["between_halves"], delta=1e-3)
        self.assertIn("halves", warnings)
        self.assertLessEqual(set(warnings), {"axis", "halves"})

    def test_a_circle_beyond_the_envelope(self):
        _, warnings = self.tool(lambda space: space.add_circle((100, 50 + 6), 5))
        self.assertEqual(["beyond"], list(warnings))
        self.assertRegex(warnings["beyond"], r"reaches 3\b")

    def test_a_gap(self):
        def cut(space):
            for line in space.query("LINE"):
                if line.dxf.start.y == line.dxf.end.y == 70:
                    line.dxf.end = (line.dxf.end.x - 2.5, 70)

        # What one half leaves open the other one shows, so that only the halves differ.
        self.assertEqual(["halves"], list(self.tool(cut)[1]))
        _, warnings = self.tool(cut, options=("--half", "upper"))
        self.assertRegex(warnings["gap"], r"2\.5|open end")
        _, warnings = self.tool(cut, options=("--algorithm", "3"))
        self.assertRegex(warnings["gap"], r"nothing is drawn along the outline from 77\.5, 70")


if __name__ == "__main__":
    main()
