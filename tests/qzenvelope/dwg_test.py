"""DWG drawings by way of converters that the tests make: good ones, and each way to go wrong.

A stand-in DWG file is the mark of a release, a line break, and the DXF text that a good converter
gives back. No real converter runs here: that its command line is what it takes is not seen.
"""

import json
import os
import pathlib
import subprocess
import tempfile
import time
import unittest

import ezdxf

from program import EXAMPLES, PROGRAM, ProgramTest, main

DRILL = EXAMPLES / "stepped-drill.dxf"
ARGUMENTS = (EXAMPLES / "stepped-drill.args").read_text().split()

# Both ways, by the ending of what is to be made.
GOOD = """
import sys
source, out = open(sys.argv[1], "rb").read(), sys.argv[2]
print("converted", file=sys.stderr)
open(out, "wb").write(b"AC1032\\n" + source if out.endswith(".dwg") else source.split(b"\\n", 1)[1])
"""
BAD = {  # what a converter does, and what the message says of it
    "import sys; print('no licence'); sys.exit(3)": r"failed with status 3: no licence",
    "import os; os.kill(os.getpid(), 11)": r"was ended by signal 11",
    "import time; print('thinking', flush=True); time.sleep(60)": r"took longer than 1 s and was ended: thinking",
    "import os, sys, time; os.close(1); os.close(2); time.sleep(60)": r"took longer than 1 s",
    "pass": r"made no file",
    "import sys; t = open(sys.argv[1]).read().split('\\n', 1)[1]; open(sys.argv[2], 'w').write(t[:len(t) // 2])":
        r"made a file that breaks off",
    "import sys; open(sys.argv[2], 'w').write('<html>\\nEOF\\n')": r"of what the converter .* made of the DWG",
    "import sys; open(sys.argv[2], 'w')": r"made a file that breaks off",
}


class Dwg(ProgramTest):
    def setUp(self):
        super().setUp()
        self.dwg = self.folder / "drill.dwg"
        self.dwg.write_bytes(b"AC1032\n" + DRILL.read_bytes())
        self.scratch = self.folder / "scratch"
        self.scratch.mkdir()
        self.tools = self.folder / "tools"
        self.tools.mkdir()

    def converter(self, code, name="converter.py"):
        path = self.tools / name
        path.write_text("#!/usr/bin/python3\n" + code)
        path.chmod(0o755)
        return path

    def run_with(self, *arguments, **environment):
        env = {k: v for k, v in os.environ.items() if not k.startswith("QZ_DWG")}
        env.update({"TMPDIR": str(self.scratch), "PATH": "/usr/bin:/bin", **environment})
        done = subprocess.run([str(PROGRAM), *map(str, arguments)], cwd=self.folder,
                              capture_output=True, text=True, timeout=120, env=env)
        self.assertEqual([], os.listdir(self.scratch), "temporary files")
        return done

    def command(self, code=GOOD):
        return f"'{self.converter(code)}' {{in}} {{out}}"

    def expect_json(self, done):
        self.assertEqual(0, done.returncode, done.stdout + done.stderr)
        return json.loads(done.stdout)

    def test_a_drawing_is_the_same_by_either_way(self):
        plain = self.compute(DRILL, *ARGUMENTS)
        by_option = self.expect_json(self.run_with(
            "compute", "drill.dwg", *ARGUMENTS, "--dwg-converter", self.command(), "-o", "o.dxf", "--json"))
        by_environment = self.expect_json(self.run_with(
            "compute", "drill.dwg", *ARGUMENTS, "--json", QZ_DWG_CONVERTER=self.command()))
        for run in (by_option, by_environment):
            self.assertEqual(plain["envelope"]["vertices"], run["envelope"]["vertices"])
            self.assertIn("converted", " ".join(run["file"]["notes"]))
        self.assertFalse(ezdxf.readfile(self.folder / "o.dxf").audit().has_errors)

    def test_known_converters_are_found_in_the_path(self):
        # In the way of each: dwg2dxf -y -o OUT IN, and folders with a filter.
        self.converter("import sys\nif '--version' in sys.argv: print('dwg2dxf 9.8.7'); sys.exit()\n"
                       "sys.argv = [0, sys.argv[4], sys.argv[3]]\n" + GOOD, "dwg2dxf")
        path = f"{self.tools}:/usr/bin:/bin"
        done = self.run_with("info", "drill.dwg", PATH=path)
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertIn("dwg2dxf 9.8.7", done.stdout)
        done = self.run_with("compute", "drill.dwg", *ARGUMENTS, "-o", "o.dwg", PATH=path)
        self.assertEqual(1, done.returncode)
        self.assertIn("makes DXF files only; write to a name that ends in .dxf", done.stderr)
        self.assertFalse((self.folder / "o.dwg").exists())
        self.converter("import sys, os\nfolder, out, version, kind, _, _, name = sys.argv[1:]\n"
                       "assert version == 'ACAD2018'\n"
                       "sys.argv = [0, os.path.join(folder, name), os.path.join(out, "
                       "name.rsplit('.', 1)[0] + '.' + kind.lower())]\n" + GOOD, "ODAFileConverter")
        run = self.expect_json(self.run_with("compute", "drill.dwg", *ARGUMENTS, "-o", "o.dwg", "--json",
                                             PATH=path))
        self.assertIn("ODAFileConverter", " ".join(run["file"]["notes"]))
        self.assertTrue((self.folder / "o.dwg").read_bytes().startswith(b"AC1032\n"))
        again = self.expect_json(self.run_with("info", "o.dwg", "--json", PATH=path))
        self.assertEqual(1, len(again["envelopes"]))

    def test_each_way_to_fail_is_one_message(self):
        before = self.left_behind()
        for code, pattern in BAD.items():
            with self.subTest(converter=code):
                start = time.monotonic()
                done = self.run_with("compute", "drill.dwg", *ARGUMENTS, "-o", "o.dxf", "--sat", "o.sat",
                                     "--dwg-converter", self.command(code), QZ_DWG_TIME_LIMIT="1")
                self.assertLess(time.monotonic() - start, 30)
                self.assertEqual(2, done.returncode, done.stdout + done.stderr)
                self.assertRegex(done.stderr, r"^qzenvelope: drill\.dwg: .*" + pattern)
                self.assertEqual(1, done.stderr.count("\n"), done.stderr)
                self.assertEqual(before, self.left_behind())

    def test_without_a_converter_it_says_what_to_install(self):
        for arguments in (["info", "drill.dwg"], ["compute", "drill.dwg"], ["copy", "drill.dwg", "o.dxf"],
                          ["batch", "drill.dwg"]):
            done = self.run_with(*arguments)
            self.assertEqual(2, done.returncode)
            self.assertIn("install ODAFileConverter or dwg2dxf", done.stdout + done.stderr)
        done = self.run_with("info", "drill.dwg", "--dwg-converter", "convert {in}")
        self.assertRegex(done.stderr, r"--dwg-converter 'convert \{in\}' lacks \{in\} or \{out\}")
        done = self.run_with("info", "drill.dwg", "--dwg-converter", "/nowhere/x {in} {out}")
        self.assertIn("cannot be started: No such file or directory", done.stderr)

    def test_a_batch_takes_both_kinds(self):
        self.dwg.rename(self.folder / "other.DWG")
        done = self.run_with("batch", "other.DWG", DRILL, "--dwg-converter", self.command(), "--json")
        result = self.expect_json(done)
        self.assertEqual(["out/other.dxf", "out/stepped-drill.dxf"],
                         [d["output"] for d in result["drawings"]])
        sats = [d["tools"][0]["volume"] for d in result["drawings"]]
        self.assertEqual(sats[0], sats[1])

    def test_what_a_converter_started_ends_with_it(self):
        mark = self.folder / "alive"
        code = ("import subprocess, sys, time\n"
                f"subprocess.Popen(['/bin/sh', '-c', 'sleep 3; touch {mark}'])\ntime.sleep(60)")
        self.run_with("info", "drill.dwg", "--dwg-converter", self.command(code), QZ_DWG_TIME_LIMIT="1")
        time.sleep(3)
        self.assertFalse(mark.exists())


if __name__ == "__main__":
    main()
