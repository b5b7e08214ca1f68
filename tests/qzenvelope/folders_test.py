"""Folders, patterns, what is not computed again, a watched folder, shares of a list, and results put
together - by this program alone, by GNU parallel and by Slurm where they are installed."""

import csv
import io
import json
import os
import re
import shutil
import signal
import subprocess
import time
import unittest

import ezdxf

from framed_tools import Sheet
import slurm_node
from program import PROGRAM, ProgramTest, main

DATED = dict(os.environ, SOURCE_DATE_EPOCH="1767607200")


class Folders(ProgramTest):
    def batch(self, *arguments, status=0):
        done = subprocess.run([str(PROGRAM), "batch", *map(str, arguments)], cwd=self.folder,
                              capture_output=True, text=True, timeout=300, env=DATED)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return done

    def json(self, *arguments, status=0):
        return json.loads(self.batch(*arguments, "--json", status=status).stdout)

    def sheet(self, path, tools=1, seed=1):
        path = self.folder / path
        path.parent.mkdir(parents=True, exist_ok=True)
        sheet = Sheet(seed)
        for i in range(tools):
            sheet.add(f"{path.stem}-{i}", 15)
        sheet.save(path)

    def names(self, folder):
        return sorted(p.name for p in (self.folder / folder).iterdir())

    def inputs(self, *arguments):
        return [d["drawing"] for d in self.json(*arguments)["drawings"]]

    def report(self, *arguments, status=0):
        done = self.run_program("report", *arguments)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return done


class Inputs(Folders):
    def test_folders_and_patterns(self):
        for name in ("in/b.dxf", "in/a.DXF", "in/deep/c.dxf", "in/.hidden.dxf", "d.dxf"):
            self.sheet(name)
        (self.folder / "in/note.txt").write_text("no drawing")
        self.assertEqual(["in/a.DXF", "in/b.dxf"], self.inputs("in", "--out", "in/out"))
        # Once more: what was written there is no input.
        self.assertEqual(["in/a.DXF", "in/b.dxf", "in/deep/c.dxf"],
                         self.inputs("in", "--recursive", "--out", "in/out"))
        self.assertEqual(["in/b.dxf", "d.dxf"], self.inputs("in/[b]*", "d.dxf", "--out", "o2"))
        for arguments, pattern in ((["x*.dxf"], r"x\*\.dxf: no file matches"),
                                   (["in/deep/.."], None), ([], r"no drawing is named"),
                                   (["in", "--watch", "in"], r"name no others")):
            done = self.run_program("batch", *arguments, "--out", "o3")
            if pattern:
                self.assertEqual(2, done.returncode)
                self.assertRegex(done.stderr, pattern)
        (self.folder / "empty").mkdir()
        done = self.run_program("batch", "empty")
        self.assertEqual(2, done.returncode)
        self.assertIn("the folder holds no drawing", done.stderr)

    def test_shares_are_the_whole_list_once(self):
        for i in range(7):
            self.sheet(f"in/{i}.dxf")
        shares = [self.inputs("in", "--shard", f"{k}/3", "--out", f"o{k}") for k in (1, 2, 3)]
        self.assertEqual([3, 2, 2], [len(s) for s in shares])
        self.assertEqual(sorted(self.inputs("in")), sorted(sum(shares, [])))
        self.assertEqual([], self.inputs("in", "--shard", "9/9", "--out", "o9"))
        for bad in ("0/3", "4/3", "1", "1/0", "a/b", "1/3x"):
            done = self.run_program("batch", "in", "--shard", bad)
            self.assertEqual(2, done.returncode)
            self.assertIn(f"--shard: '{bad}' is no share", done.stderr)


class Unchanged(Folders):
    def test_only_what_has_changed_is_computed(self):
        self.sheet("a.dxf", 2)
        self.sheet("b.dxf")
        first = self.json("a.dxf", "b.dxf", "--report", "out/i.html")
        self.assertEqual(0, first["unchanged"])
        page = (self.folder / "out/i.html").read_text()
        time.sleep(0.01)
        stamp = (self.folder / "out/a-0.sat").stat().st_mtime_ns

        def again(*options, **more):
            return self.json("a.dxf", "b.dxf", "--report", "out/i.html", *options, **more)["unchanged"]

        self.assertEqual(2, again())
        self.assertEqual(stamp, (self.folder / "out/a-0.sat").stat().st_mtime_ns)
        # The page shows them all the same.
        rows = re.findall(r'class="name">([^<]+)', (self.folder / "out/i.html").read_text())
        self.assertEqual(re.findall(r'class="name">([^<]+)', page), rows)
        # Without a page what was remembered with pictures counts as well, and is not forgotten.
        self.assertEqual(2, self.json("a.dxf", "b.dxf")["unchanged"])
        # Another option, another content, a file that is gone or broken, by force.
        self.assertEqual(0, again("--half", "lower"))
        self.assertEqual(2, again("--half", "lower", "--jobs", "1"))
        self.sheet("b.dxf", seed=5)
        self.assertEqual(1, again("--half", "lower"))
        (self.folder / "out/b-0.sat").unlink()
        self.assertEqual(1, again("--half", "lower"))
        (self.folder / "out/b.dxf").write_text("0\nEOF\n")
        self.assertEqual(1, again("--half", "lower"))
        self.assertFalse(ezdxf.readfile(self.folder / "out/b.dxf").audit().has_errors)
        self.assertEqual(0, again("--half", "lower", "--force"))
        self.assertIn("unchanged", self.batch("a.dxf", "b.dxf", "--half", "lower").stdout)

    @unittest.skipIf(b"__asan_init" in PROGRAM.read_bytes(), "a sanitizer needs memory of its own")
    def test_pictures_that_are_remembered_stay_in_the_file(self):
        self.sheet("a.dxf")
        self.batch("a.dxf", "--report", "out/i.html")
        manifest = self.folder / "out/.qzenvelope-manifest"
        record = json.loads(manifest.read_text().strip().splitlines()[-1])
        record["tools"][0]["svg"] = "x" * 1000000
        (self.folder / "b.dxf").write_text("0\nEOF\n")
        with open(manifest, "a") as file:
            for i in range(150):
                os.link(self.folder / "b.dxf", self.folder / f"b-{i}.dxf")
                file.write(json.dumps({**record, "drawing": f"b-{i}.dxf"}) + "\n")
        run = subprocess.Popen([str(PROGRAM), "batch", "a.dxf"], cwd=self.folder, stdout=subprocess.PIPE,
                               text=True, env=DATED)
        with run.stdout:
            self.assertIn("1 drawing unchanged", run.stdout.read())
        _, status, used = os.wait4(run.pid, 0)
        run.returncode = os.waitstatus_to_exitcode(status)
        self.assertEqual(0, run.returncode)
        self.assertLess(used.ru_maxrss, 80000, "kilobytes")

    def test_equal_names_that_come_to_be(self):
        self.sheet("one/s.dxf")
        self.sheet("two/s.dxf", seed=2)
        self.json("two/s.dxf")
        volume = {}
        for _ in range(2):
            result = self.json("one/s.dxf", "two/s.dxf")
            for drawing in result["drawings"]:
                for file in drawing["tools"][0]["files"]:
                    self.assertTrue((self.folder / file).exists())
                volume.setdefault(drawing["drawing"], set()).add(
                    (drawing["tools"][0]["volume"], *drawing["tools"][0]["files"]))
        self.assertEqual([1, 1], [len(v) for v in volume.values()])

    def test_a_killed_batch_goes_on_where_it_was(self):
        for i in range(12):
            self.sheet(f"in/{i:02}.dxf", 3, seed=i)
        whole = self.json("in", "--out", "whole")
        run = subprocess.Popen([str(PROGRAM), "batch", "in", "--jobs", "1", "--json-lines", "r.jsonl"],
                               cwd=self.folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               env=DATED)
        for _ in range(3000):
            if len(list((self.folder / "out").glob("*.dxf"))) >= 4:
                break
            time.sleep(0.01)
        run.send_signal(signal.SIGKILL)
        run.wait()
        done = self.run_program("report", "r.jsonl", "--table", "t.csv")
        self.assertEqual(1, done.returncode)
        self.assertRegex(done.stderr, r"of 12 drawings: the batch did not come to its end")
        again = self.json("in", "--json-lines", "r.jsonl")
        self.assertLessEqual(3, again["unchanged"])
        self.assertLess(again["unchanged"], 12)
        self.report("r.jsonl", "--table", "t.csv")
        figures = [[(t["tool"], t["volume"]) for d in r["drawings"] for t in d["tools"]]
                   for r in (whole, again)]
        self.assertEqual(figures[0], figures[1])


class Watch(Folders):
    def test_a_watched_folder(self):
        self.sheet("in/a.dxf")
        with open(self.folder / "log", "w") as log:
            run = subprocess.Popen([str(PROGRAM), "batch", "--watch", "in"], cwd=self.folder,
                                   stdout=log, stderr=log, env=DATED)
        self.addCleanup(run.wait)
        self.addCleanup(run.kill)
        page = self.folder / "out/index.html"

        def wait_for(*names):
            for _ in range(600):
                text = page.read_text() if page.exists() else ""
                if set(re.findall(r'class="name">([^<]+)', text)) == set(names):
                    return
                time.sleep(0.1)
            self.fail((self.folder / "log").read_text())

        wait_for("a-0")
        self.sheet("in/b.dxf", 2)
        wait_for("a-0", "b-0", "b-1")
        # One that comes in slowly keeps nobody waiting, and is no broken one meanwhile.
        self.sheet("slow.dxf")
        slow = (self.folder / "slow.dxf").read_text()
        (self.folder / "in/slow.dxf").write_text(slow[:len(slow) // 2])
        (self.folder / "in/broken.dxf").write_text("no drawing at all\n  0\nEOF\n")
        self.sheet("in/c.dxf")
        wait_for("a-0", "b-0", "b-1", "c-0")
        text = page.read_text()
        self.assertRegex(text, r'<li class="failed">in/broken.dxf')
        self.assertNotIn("slow.dxf", text)
        with open(self.folder / "in/slow.dxf", "a") as file:
            for i in range(5):
                step = len(slow) // 10
                file.write(slow[len(slow) // 2 + i * step:][:step] if i < 4 else
                           slow[len(slow) // 2 + 4 * step:])
                file.flush()
                time.sleep(0.4)
        wait_for("a-0", "b-0", "b-1", "c-0", "slow-0")
        self.assertNotIn("FAILED  in/slow", (self.folder / "log").read_text())
        (self.folder / "in/slow.dxf").unlink()
        (self.folder / "in/a.dxf").unlink()
        wait_for("b-0", "b-1", "c-0")
        run.send_signal(signal.SIGINT)
        self.assertEqual(130, run.wait(timeout=20))
        done = self.run_program("batch", "--watch", "nowhere")
        self.assertEqual(2, done.returncode)
        self.assertIn("nowhere is no folder", done.stderr)
        done = self.run_program("batch", "--watch", "in", "--out", "in/.")
        self.assertEqual(2, done.returncode)
        self.assertIn("in is the output folder, too", done.stderr)


class Together(Folders):
    def test_pages_index_and_table_of_many(self):
        # One sheet many times over: what is told counts, not what is computed.
        self.sheet("in/s.dxf", 3)
        self.batch("in", "--json-lines", "one.jsonl", "--split", "auto")
        head, line = (self.folder / "one.jsonl").read_text().splitlines()
        record, head = json.loads(line), json.loads(head)
        with open(self.folder / "many.jsonl", "w") as many:
            many.write(json.dumps({**head, "drawings": 400}) + "\n")
            for i in range(400):
                many.write(json.dumps({**record, "drawing": f"in/{i}.dxf"}) + "\n")
        self.report("many.jsonl", "--report", "r/index.html", "--table", "t.csv")
        index = (self.folder / "r/index.html").read_text()
        pages = re.findall(r'href="(index-files/page-\d+\.html)"', index)
        self.assertEqual(3, len(pages))
        counts = [(self.folder / "r" / p).read_text().count('class="name"') for p in pages]
        self.assertEqual([500, 500, 200], counts)
        for page in pages:
            pictures = re.findall(r'src="([^"]+)"', (self.folder / "r" / page).read_text())
            self.assertEqual(2 * 500 if page != pages[-1] else 2 * 200, len(pictures))
            for picture in pictures:
                self.assertTrue((self.folder / "r/index-files" / picture).is_file(), picture)
        svg = next((self.folder / "r/index-files").glob("*/*.svg"))
        self.assertIn("http://www.w3.org/2000/svg", svg.read_text()[:200])
        rows = list(csv.DictReader(io.StringIO((self.folder / "t.csv").read_text("utf-8-sig"))))
        self.assertEqual(1200, len(rows))
        # A smaller report takes the place of the larger; one that fails leaves it alone, and so does
        # one that would take the place of somebody's files.
        self.report("one.jsonl", "--report", "r/index.html")
        self.assertEqual(["page-00001", "page-00001.html"], self.names("r/index-files"))
        (self.folder / "bad.jsonl").write_text("no results\n")
        self.assertEqual(2, self.run_program("report", "one.jsonl", "bad.jsonl", "--report",
                                             "r/index.html").returncode)
        self.assertEqual(["index-files", "index.html"], self.names("r"))
        (self.folder / "r/index-files/mine.txt").write_text("keep")
        done = self.report("one.jsonl", "--report", "r/index.html", status=1)
        self.assertIn("index-files: the pages would go there", done.stderr)
        self.assertEqual("keep", (self.folder / "r/index-files/mine.txt").read_text())
        self.assertEqual([], [p for p in self.folder.rglob("*.part")])

    def test_drawings_without_tools_fill_pages_too(self):
        self.sheet("in/s.dxf")
        self.batch("in", "--json-lines", "one.jsonl")
        record = json.loads((self.folder / "one.jsonl").read_text().splitlines()[1])
        record.update(tools=[], reason="broken")
        (self.folder / "many.jsonl").write_text(
            "".join(json.dumps({**record, "drawing": f"{i}.dxf"}) + "\n" for i in range(1001)))
        self.report("many.jsonl", "--report", "r/i.html", status=1)
        self.assertEqual(3, len(self.names("r/i-files")))

    def test_what_is_missing_is_told(self):
        for i in range(3):
            self.sheet(f"in/{i}.dxf")
        for k in (1, 3):
            self.batch("in", "--shard", f"{k}/3", "--out", f"o{k}", "--json-lines", f"{k}.jsonl")
        done = self.report("1.jsonl", "3.jsonl", "--table", "t.json", status=1)
        self.assertIn("the results of share 2/3 are missing", done.stderr)
        self.assertEqual(2, len(json.loads((self.folder / "t.json").read_text())))
        text = (self.folder / "1.jsonl").read_text()
        (self.folder / "cut.jsonl").write_text(text[:-200])
        done = self.report("cut.jsonl", "--table", "t.csv", status=1)
        self.assertIn("cut.jsonl: line 2 is not whole", done.stderr)
        for arguments, pattern in ((["in/0.dxf", "--table", "u.csv"], r"line 1: these are no results"),
                                   (["nowhere", "--table", "u.csv"], r"nowhere: the results cannot be read"),
                                   (["1.jsonl"], r"give --report or --table"),
                                   (["1.jsonl", "--table", "u.txt"], r"no kind of table"),
                                   (["1.jsonl", "--report", "1.jsonl"], r"is an input")):
            done = self.run_program("report", *arguments)
            self.assertEqual(2, done.returncode, done.stdout + done.stderr)
            self.assertRegex(done.stderr, pattern)
            self.assertFalse((self.folder / "u.csv").exists())


# A share of the work, as the manual's jobs have it. A share whose number is in the file `kill` is killed
# on its way, as by a machine that goes down.
SHARE = """#!/bin/sh
share=${{1:-$SLURM_ARRAY_TASK_ID}}
{program} batch in --shard $share/3 --out out/$share --jobs 1 --json-lines results-$share.jsonl &
if [ "$(cat kill)" = $share ]; then
    until [ "$(ls out/$share 2>/dev/null | grep -c dxf)" -ge 3 ]; do sleep 0.01; done
    kill -9 $!
fi
wait $!
"""


class Machines(Folders):
    def prepare(self, head=""):
        """The shares' program, and what one batch over everything gives."""
        for i in range(36):
            self.sheet(f"in/{i:02}.dxf", 3, seed=i)
        whole = self.json("in", "--out", "whole")
        script = self.folder / "share.sh"
        script.write_text(SHARE.format(program=PROGRAM).replace("\n", "\n" + head, 1))
        script.chmod(0o755)
        (self.folder / "kill").write_text("2")
        return sorted((t["tool"], t["volume"]) for d in whole["drawings"] for t in d["tools"])

    def told(self, status=0):
        """What the results give that are there, by name and volume; and the warnings."""
        done = self.report(*sorted(p.name for p in self.folder.glob("results-*.jsonl")),
                           "--table", "all.json", status=status)
        table = json.loads((self.folder / "all.json").read_text())
        return sorted((t["tool"], t["volume"]) for t in table), done.stderr

    def check_killed(self, expected):
        tools, warnings = self.told(status=1)
        self.assertLess(len(tools), len(expected))
        self.assertRegex(warnings, r"results-2.jsonl: \d+ of 12 drawings: the batch did not come to its end")
        (self.folder / "kill").write_text("")

    def check_whole(self, expected, output):
        self.assertRegex(output, r"\d+ drawings unchanged since an earlier batch")
        self.assertEqual((expected, ""), self.told())

    def test_gnu_parallel(self):
        if shutil.which("parallel") is None:
            self.skipTest("GNU parallel is not installed")
        expected = self.prepare()

        def run(*options):
            return subprocess.run(["parallel", "--will-cite", "-j", "2", "--joblog", "log", *options,
                                   "./share.sh", ":::", "1", "2", "3"], cwd=self.folder,
                                  capture_output=True, text=True, timeout=300, env=DATED)
        self.assertEqual(1, run().returncode)
        self.check_killed(expected)
        again = run("--resume-failed")
        self.assertEqual(0, again.returncode, again.stderr)
        self.assertEqual(1, again.stdout.count(" tools of "), "the share that failed, and no other")
        self.check_whole(expected, again.stdout)

    def test_a_slurm_job_array(self):
        if not slurm_node.is_installed():
            self.skipTest("Slurm is not installed")
        expected = self.prepare("#SBATCH --ntasks=1\n#SBATCH --output=log-%a\n")
        with slurm_node.SlurmNode() as node:
            def run(array):
                done = subprocess.run(["sbatch", "--wait", "--array=" + array, "share.sh"],
                                      cwd=self.folder, capture_output=True, text=True, timeout=300,
                                      env=dict(node.env, SOURCE_DATE_EPOCH=DATED["SOURCE_DATE_EPOCH"]))
                return done.returncode
            self.assertNotEqual(0, run("1-3"), node.words())
            self.check_killed(expected)
            self.assertEqual(0, run("2"), node.words())
        self.check_whole(expected, (self.folder / "log-2").read_text())


if __name__ == "__main__":
    main()
