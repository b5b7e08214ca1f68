"""A module of somebody else, loaded beside the plug-in, computes envelopes by the exported classes."""

import os
import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "qzenvelope"))

from program import PROGRAM, ROOT, ProgramTest, main

SAID = """\
> new
> command OTHERENVELOPES
live, 0 left out: 0,0 0,10 30,10 30,6 50,6 50,0 closed
live, lower, 0 left out: 0,0 0,-10 30,-10 30,-6 50,-6 50,0 closed
hatch, 0 left out: 0,0 0,10 30,10 30,6 50,6 50,0 closed
first, 0 left out: 0,-10 0,0 0,10 30,10 30,6 50,6 50,0 50,-6 closed
second, 0 left out: 1000,-10 1000,0 1000,10 1030,10 1030,6 1050,6 1050,0 1050,-6 closed
exact, 0 left out: 0,0 0,10 30,10 30,6 50,6 50,0 closed
> command OTHEREXACT
upright axis, size 30.1496: 10,0 7,0 7,30 10,30
no axis: the axis has no direction: give two points that are apart
> command OTHERRECORDS
records: width 40, 2 points, first at 10
> dump open-objects
none
"""


class OtherModule(ProgramTest):
    def run_modules(self, *modules):
        (self.folder / "run.scr").write_text(
            "new\ncommand OTHERENVELOPES\ncommand OTHEREXACT\ncommand OTHERRECORDS\n"
            "dump open-objects\n")
        arguments = [word for module in modules for word in ("--module", module)]
        done = self.run_program(*arguments, "--script", "run.scr")
        self.assertEqual("", done.stderr)
        self.assertEqual(0, done.returncode)
        return done.stdout

    def test_all_pipelines_beside_the_plug_in(self):
        self.assertEqual(SAID, self.run_modules(os.environ["QZ_MODULE"],
                                                os.environ["QZ_OTHER_MODULE"]))

    def test_the_engine_comes_along_when_the_plug_in_is_not_loaded(self):
        self.assertEqual(SAID, self.run_modules(os.environ["QZ_OTHER_MODULE"]))

    def test_it_links_the_module_and_holds_nothing_of_the_engine_itself(self):
        needed = subprocess.run(["readelf", "-d", os.environ["QZ_OTHER_MODULE"]], check=True,
                                capture_output=True, text=True).stdout
        self.assertIn("[QZEncircleLine.arx]", needed)
        symbols = subprocess.run(["nm", "-C", "--defined-only", os.environ["QZ_OTHER_MODULE"]],
                                 check=True, capture_output=True, text=True).stdout
        self.assertNotRegex(symbols, r" T (CEncircleLine|CExactEnvelope)::")

    def test_the_host_program_keeps_its_own_copies_to_itself(self):
        """What the program is made of beside the host must not take the place of a module's."""
        given = subprocess.run(["nm", "-DC", "--defined-only", PROGRAM], check=True,
                               capture_output=True, text=True).stdout
        self.assertIn("AcDbLine::desc()", given)
        self.assertNotRegex(given, r" product::| CE(ncircle|xact)| CQZRect::")

    def test_the_headers_are_the_ones_that_the_page_names(self):
        folder = pathlib.Path(os.environ["QZ_ENGINE_HEADERS"])
        gathered = {p.relative_to(folder).as_posix() for p in folder.rglob("*.h")}
        page = (ROOT / "docs" / "other-modules.md").read_text(encoding="utf-8")
        named = set(re.findall(r"^\| `([\w/]+\.h)`", page, re.M))
        self.assertEqual(gathered, named)


if __name__ == "__main__":
    main()
