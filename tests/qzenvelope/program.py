"""What the tests that drive the real program share.

Each of them is run as: NAME_test.py PROGRAM [unittest arguments]
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"
PROGRAM = pathlib.Path(sys.argv[1]).resolve()
ENVELOPE_LAYER, SCRATCH_LAYER = "TempEncircleLine", "TempEncircleLineClone"


def shared_drawings():
    folder = pathlib.Path(os.environ.get("QZ_SHARED", ROOT.parent / "shared")) / "drawings"
    if not folder.is_dir():
        raise unittest.SkipTest("no drawings by others beside this checkout: " + str(folder))
    return folder


class ProgramTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        # What the user of these tests has set is nobody else's.
        settings = tempfile.TemporaryDirectory()
        self.addCleanup(settings.cleanup)
        self.settings = pathlib.Path(settings.name)

    def run_program(self, *arguments):
        return subprocess.run([str(PROGRAM), *map(str, arguments)], cwd=self.folder,
                              env=dict(os.environ, XDG_CONFIG_HOME=str(self.settings)),
                              capture_output=True, text=True, timeout=120)

    def compute(self, drawing, *arguments):
        """The JSON object of a run that must succeed."""
        done = self.run_program("compute", drawing, *arguments, "--json")
        self.assertEqual(0, done.returncode, done.stderr)
        return json.loads(done.stdout)

    def left_behind(self):
        return sorted(p.name for p in self.folder.iterdir())


def main():
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=1)
