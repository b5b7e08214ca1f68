"""What the fault tests share: jobs of the programs, and what must hold whatever fails.

Run as: KIND_test.py QZENVELOPE QZHOST LIBRARY [unittest arguments]. With QZ_EVERY_FAULT every
call is tried, else as many as an ordinary run has time for.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"
PROGRAM, HOST, LIBRARY = (pathlib.Path(p).resolve() for p in sys.argv[1:4])
EVERY = bool(os.environ.get("QZ_EVERY_FAULT"))

CENTRE = re.search(r"--centre[ =](\S+)", (EXAMPLES / "end-mill.args").read_text()).group(1)
OLD = b"what was there before\n"
# name: command, its outputs
JOBS = {
    "copy": ([PROGRAM, "copy", "in.dxf", "out.dxf"], ["out.dxf"]),
    "compute": ([PROGRAM, "compute", "in.dxf", "--centre=" + CENTRE, "-o", "out.dxf", "--svg",
                 "out.svg", "--sat", "out.sat"], ["out.dxf", "out.svg", "out.sat"]),
    "batch": ([PROGRAM, "batch", "in.dxf", "--tools", "t.csv", "--out", "o", "--jobs", "1"],
              ["o/in.dxf", "o/mill.sat"]),
    "host": ([HOST, "--no-module", "--script", "s.scr", "in.dxf"], ["out.dxf"]),
}


class FaultTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.made = {}
        for job in JOBS:
            self.prepare(job, False)
            done, _ = self.run_job(job, "")
            self.assertEqual(0, done.returncode, done.stderr)
            self.made[job] = {name: self.content(name) for name in JOBS[job][1]}

    def prepare(self, job, with_old):
        shutil.rmtree(self.folder)
        self.folder.mkdir()
        shutil.copy(EXAMPLES / "end-mill.dxf", self.folder / "in.dxf")
        (self.folder / "t.csv").write_text("mill,%s,60,95,195,155\n" % CENTRE)
        (self.folder / "s.scr").write_text("save out.dxf\n")
        (self.folder / "o").mkdir()
        for name in JOBS[job][1]:
            if with_old:
                (self.folder / name).write_bytes(OLD)
        self.given = {p: p.read_bytes() for p in self.folder.iterdir() if p.is_file()}

    def content(self, name):
        path = self.folder / name
        # Dates and times of the run.
        return re.sub(rb"\d+ .{24} \d+\n|\d+\.\d+ ms|\d{8} \d\d:\d\d:\d\d|[A-Z][a-z]{2} [A-Z][a-z]{2} .\d "
                      rb"\d\d:\d\d:\d\d \d{4}", b"*", path.read_bytes()) if path.exists() else None

    def run_job(self, job, fault):
        """What the job did under the fault, and how many calls and allocations it made."""
        counts = self.folder.parent / (self.folder.name + ".count")
        environment = dict(os.environ, LD_PRELOAD=str(LIBRARY), QZ_FAULT=fault,
                           QZ_FAULT_COUNT=str(counts), QT_QPA_PLATFORM="offscreen")
        done = subprocess.run(list(map(str, JOBS[job][0])), cwd=self.folder, env=environment,
                              capture_output=True, text=True, timeout=120)
        numbers = [0, 0]
        if counts.exists():
            numbers = [int(n) for n in counts.read_text().split()]
            counts.unlink()
        return done, numbers

    def numbers(self, count, most):
        """Which of count calls are tried."""
        if EVERY:
            most = 2000
        if count <= most:
            return range(1, count + 1)
        return sorted({1 + i * (count - 1) // (most - 1) for i in range(most)})

    def assert_whole(self, job, done, killed):
        """Inputs untouched, outputs old or new, nothing beside them, and the status says which."""
        for path, content in self.given.items():
            if path.name not in JOBS[job][1]:
                self.assertEqual(content, path.read_bytes(), path)
        contents = {name: self.content(name) for name in JOBS[job][1]}
        for name, content in contents.items():
            # A batch of which a tool failed writes a drawing that says so.
            if job == "batch" and done.returncode != 0 and name.endswith(".dxf") and content:
                self.assertRegex(content, rb"EOF\r?\n\Z|before\n\Z")
                continue
            self.assertIn(content, (None, OLD, self.made[job][name]), name)
        if killed:
            return
        self.assertGreaterEqual(done.returncode, 0, done.stderr)
        if done.returncode == 0:
            self.assertEqual(self.made[job], contents, done.stderr)
        else:
            self.assertNotEqual("", done.stderr + done.stdout)
        names = {str(p.relative_to(self.folder)) for p in self.folder.rglob("*") if p.is_file()}
        # What a batch remembers of itself may be there, whole or not: it is read with that in mind.
        expected = {p.name for p in self.given} | set(JOBS[job][1]) | {"o/.qzenvelope-manifest"}
        self.assertEqual(set(), names - expected)


def main():
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
