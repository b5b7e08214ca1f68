"""Whole sessions: scripts, what is said meanwhile, and what is in the files afterwards.

The expected transcript of scripts/NAME.scr is scripts/NAME.txt. To write them anew after a change
that is meant, set QZ_WRITE_TRANSCRIPTS=1 and read what has changed before committing it.
"""

import os
import pathlib
import re
import shutil
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "qzenvelope"))

import drawings
import dxf_tags
from program import ENVELOPE_LAYER, EXAMPLES, PROGRAM, ROOT, SCRATCH_LAYER, ProgramTest, main

SCRIPTS = pathlib.Path(__file__).resolve().parent / "scripts"
END_MILL, DRILL = "end-mill.dxf", "stepped-drill.dxf"


class Scripts(ProgramTest):
    def setUp(self):
        super().setUp()
        for drawing in EXAMPLES.glob("*.dxf"):
            shutil.copy(drawing, self.folder)
        drawings.hidden(self.folder)
        drawings.envelopes(self.folder)
        drawings.tools(self.folder)
        drawings.two_directions(self.folder)
        (self.folder / "out").mkdir()
        self.given = set(self.left_behind())

    def session(self, name, *arguments):
        """Runs the script; what it says must be as written down. The names of new files."""
        shutil.copy(SCRIPTS / (name + ".scr"), self.folder)
        done = self.run_program("--script", name + ".scr", *arguments)
        # How many handles a computation uses up is nobody's business.
        said = re.sub(r"^[0-9A-F]+ (?=AcDb\w+ on (%s|EncircleLine3D) )" % ENVELOPE_LAYER, "new ",
                      done.stdout.replace(str(self.folder), "FOLDER"), flags=re.M)
        said = re.sub(r"(用时|预计还需|平均)：[\d.]+秒", r"\1：*秒", said)
        expected = SCRIPTS / (name + ".txt")
        if os.environ.get("QZ_WRITE_TRANSCRIPTS"):
            expected.write_text(said, encoding="utf-8")
        self.maxDiff = None
        self.assertEqual("", done.stderr)
        self.assertEqual(expected.read_text(encoding="utf-8"), said)
        self.assertEqual(0, done.returncode)
        return set(self.left_behind()) - self.given - {name + ".scr"}

    def envelopes(self, name):
        entities = dxf_tags.entities(self.folder / name)
        self.assertEqual([], dxf_tags.on_layer(entities, SCRATCH_LAYER))
        return dxf_tags.on_layer(entities, ENVELOPE_LAYER)

    def test_numbers_that_may_spoil_a_result_are_told(self):
        self.assertEqual(set(), self.session("doubtful_numbers", END_MILL))

    def test_one_tool_from_the_selection_to_the_file(self):
        self.assertEqual({"EM50-2.sat", "out.dxf"}, self.session("single_tool", END_MILL))
        self.assertEqual(["LWPOLYLINE"], [r[0][1].decode() for r in self.envelopes("out.dxf")])
        sat = (self.folder / "EM50-2.sat").read_text()
        self.assertIn("End-of-ACIS-data", sat)
        self.assertEqual(1, sat.count("\nbody "))
        # Nothing else has changed: what both files hold is the same, tag by tag.
        before = dxf_tags.entities(self.folder / END_MILL)
        after = dxf_tags.entities(self.folder / "out.dxf")
        self.assertEqual(before, [r for r in after if r not in self.envelopes("out.dxf")])

    def test_the_method_goes_with_the_user(self):
        # Kept beyond the session; upright and slanted tools come out about their own centre lines.
        self.assertEqual({"exact.dxf", "upright.sat", "slanted.sat"},
                         self.session("method", "directions.dxf"))
        self.assertEqual("QZEnvelopeMethod=Exact\n",
                         (self.settings / "qzhost" / "settings").read_text(encoding="utf-8"))
        for name, along in (("upright", (0, 1)), ("slanted", (0.75 ** 0.5, 0.5))):
            cones = re.findall(r"^cone-surface .*?\$-1 (?:-?[\d.e+-]+ ){3}(\S+) (\S+) (\S+) ",
                               (self.folder / (name + ".sat")).read_text(), re.M)
            self.assertEqual(2, len(cones), name)
            for x, y, z in cones:
                self.assertAlmostEqual(0, float(x) * along[1] - float(y) * along[0], 9, name)
                self.assertEqual(0, float(z))
        # The next session computes the same way, until it is told otherwise.
        self.session("method_again", "directions.dxf")
        self.assertEqual("QZEnvelopeMethod=Steps\n",
                         (self.settings / "qzhost" / "settings").read_text(encoding="utf-8"))

    def test_lower_half_and_the_other_way(self):
        self.assertEqual(set(), self.session("lower_half", END_MILL))

    def test_turning_back(self):
        self.assertEqual(set(), self.session("cancel", END_MILL))

    def test_an_earlier_envelope_in_the_selection(self):
        self.assertEqual(set(), self.session("earlier_envelope", END_MILL))

    def test_hidden_entities_are_shown(self):
        self.assertEqual(set(), self.session("hidden", "hidden.dxf"))

    def test_two_drawings(self):
        self.assertEqual({"first.dxf", "second.dxf"},
                         self.session("two_documents", END_MILL, DRILL))
        for name in ("first.dxf", "second.dxf"):
            self.assertEqual(1, len(self.envelopes(name)))

    def test_explosions(self):
        self.assertEqual(set(), self.session("explode", END_MILL))

    def test_the_dialog_again(self):
        self.assertEqual(set(), self.session("reopen", END_MILL))

    def test_bad_numbers(self):
        self.assertEqual(set(), self.session("bad_numbers", END_MILL))

    def test_exports(self):
        self.assertEqual({"good.sat"}, self.session("export", "envelopes.dxf"))

    def test_commands_of_the_host(self):
        self.assertEqual({"copy.dxf", "fresh.dxf"}, self.session("builtins", END_MILL))

    def test_the_module_by_command(self):
        module = PROGRAM.parent / "QZEncircleLine.arx"
        (self.folder / "QZEncircleLine.arx").symlink_to(module)
        self.session("module", "--no-module", END_MILL, DRILL)

    def test_a_task_of_three_tools(self):
        self.assertEqual({"tasks.dxf"}, self.session("batch", "framed.dxf"))
        self.assertEqual(2, len(self.envelopes("tasks.dxf")))
        self.assertEqual(["T-01.sat", "T-02.sat", "T-03.sat"],
                         sorted(p.name for p in (self.folder / "out").iterdir()))
        stored = dxf_tags.sections(dxf_tags.read_tags(self.folder / "tasks.dxf"))["OBJECTS"]
        self.assertIn((3, b"QZDJBLX"), stored)
        self.session("batch_again", "tasks.dxf")
        self.assertEqual([], self.envelopes("tasks.dxf"))

    def test_several_tasks(self):
        self.session("batch_many", "plain.dxf")

    def test_tasks_of_two_drawings(self):
        self.session("batch_two_drawings", "framed.dxf", "plain.dxf")

    def test_clicks_during_a_run(self):
        self.session("batch_clicks", "framed.dxf")

    def test_dialogs_hide_while_the_user_picks(self):
        self.assertEqual(set(), self.session("busy_dialog", "envelopes.dxf"))

    def test_tasks_are_run_by_what_they_are(self):
        self.session("busy_tasks", "framed.dxf", "plain.dxf")

    def test_parameters_outside_their_sense(self):
        self.session("params", "plain.dxf")

    def test_tools_by_mouse(self):
        self.session("tool_rows", "plain.dxf")
        stored = (self.folder / "out.dxf").read_text(encoding="utf-8")
        self.assertIn("the last", stored)

    def test_a_dialog_that_is_pulled(self):
        self.session("resize", "plain.dxf")

    def test_a_long_run_is_stopped(self):
        drawings.many_lines(self.folder, 100000)
        before = (self.folder / "many.dxf").read_bytes()
        self.session("stopped", "many.dxf")
        self.assertEqual(before, (self.folder / "many.dxf").read_bytes())

    def test_locked_layers(self):
        drawings.locked(self.folder)
        self.session("locked_layers", "locked.dxf")

    def test_files_of_tools(self):
        (self.folder / "出口").mkdir()
        self.session("numbers", "plain.dxf")
        self.assertEqual(["D1-2.sat", "D1.sat", "d1-3.sat", "刀_具.sat"],
                         sorted(p.name for p in (self.folder / "出口").iterdir()))

    def test_the_script_of_the_manual(self):
        manual = (ROOT / "docs" / "qzhost.md").read_text(encoding="utf-8")
        script = manual.rsplit("```", 2)[1].lstrip("\n")
        (self.folder / "manual.scr").write_text(script, encoding="utf-8")
        done = self.run_program("--script", "manual.scr", END_MILL)
        self.assertEqual(("", 0), (done.stderr, done.returncode))
        self.assertEqual(1, len(self.envelopes("end-mill-with-envelope.dxf")))
        self.assertTrue((self.folder / "end-mill.sat").exists())

    def test_pictures_of_every_dialog(self):
        (self.folder / "a.scr").write_text(
            "command QZTOOLDESIGNProfileAuto3D\nscreenshot one.png\nclose-dialog 186\n"
            "command QZTOOLDESIGNProfilesAuto3D\npress 188 1018\nset 190 1040 name\n"
            "screenshot two.png\npress 190 1\npress 188 1022\nselect window 10,10 170,110\npoint 100,60\n"
            "select none\nlater screenshot three.png\npress 188 1019\n", encoding="utf-8")
        done = self.run_program("--script", "a.scr", "framed.dxf")
        self.assertEqual(0, done.returncode, done.stderr)
        pictures = [(self.folder / (n + ".png")).read_bytes() for n in ("one", "two", "three")]
        self.assertEqual([b"\x89PNG"] * 3, [p[:4] for p in pictures])
        self.assertEqual(3, len(set(pictures)))

    def test_messages_to_a_module(self):
        self.session("messages", "--module", os.environ["QZ_MESSAGE_LOG"])

    def test_a_prompt_beside_a_dialog_that_has_the_keys(self):
        """What a module must not do: the dialog would take what is typed for its prompt."""
        shutil.copy(self.folder / END_MILL, self.folder / "ask.dxf")
        (self.folder / "a.scr").write_text("command QZTOOLDESIGNProfileAuto3D\nsave copy.dxf\nstring x\n"
                                           "close-dialog 186\n", encoding="utf-8")
        module = pathlib.Path(PROGRAM).parent / "QZEncircleLine.arx"
        done = self.run_program("ask.dxf", "--script", "a.scr", "--module", module,
                                "--module", os.environ["QZ_MESSAGE_LOG"])
        self.assertEqual(1, done.returncode, done.stdout)
        self.assertIn("keys for this prompt go to dialog 186", done.stderr)

    def test_the_module_without_a_drawing(self):
        self.session("no_drawing")


if __name__ == "__main__":
    main()
