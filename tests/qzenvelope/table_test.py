"""The table of a batch, and what its tools are called."""

import csv
import io
import json
import math
import unittest

import ezdxf

from framed_tools import Sheet
from program import EXAMPLES, ProgramTest, main

# As (x, radius) from the left, tips to the right: what the table must say of each.
DRILL = ([(0, 0), (0, 6), (50, 6), (60, 4), (110, 4), (110 + 4 / math.tan(math.radians(59)), 0)],
         {"DC diameter at the tip": 8, "greatest diameter": 12, "SIG point angle": 118,
          "PL point length": 4 / math.tan(math.radians(59)), "DMM shank diameter": 12,
          "LS shank length": 50, "OAL overall length": 110 + 4 / math.tan(math.radians(59)),
          "RE corner radius": None, "LCF cutting length": None, "DN neck diameter": None})
FLAT = ([(0, 0), (0, 8), (90, 8), (90, 5), (120, 5), (120, 0)],
        {"greatest diameter": 16, "OAL overall length": 120, "DC diameter at the tip": None,
         "DMM shank diameter": None})


class Table(ProgramTest):
    def batch(self, *arguments, status=0):
        done = self.run_program("batch", *arguments)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return done

    def rows(self, path="t.csv"):
        raw = (self.folder / path).read_bytes()
        self.assertTrue(raw.startswith(b"\xef\xbb\xbf"))
        self.assertEqual(raw.count(b"\n"), raw.count(b"\r\n"))
        return list(csv.DictReader(io.StringIO(raw.decode("utf-8-sig"), newline="")))

    def sheet(self, *tools, name="s.dxf"):
        sheet = Sheet()
        for number, profile in tools:
            sheet.add(number, profile=profile)
        sheet.save(self.folder / name)
        return sheet

    def assert_figures(self, expected, row):
        for column, value in expected.items():
            if value is None:
                self.assertEqual("", row[column], column)
            else:
                self.assertAlmostEqual(value, float(row[column]), delta=1e-6, msg=column)

    def test_csv_and_json_say_the_same(self):
        self.sheet(("D-1", DRILL[0]), ("F,2", FLAT[0]), ("=1+2", DRILL[0]))
        self.batch("s.dxf", "--table", "t.csv", "--out", "one")
        self.batch("s.dxf", "--table", "deep/t.json", "--out", "two")
        rows = self.rows()
        self.assertEqual(["D-1", "F,2", "'=1+2"], [r["tool number"] for r in rows])
        self.assert_figures(DRILL[1], rows[0])
        self.assert_figures(FLAT[1], rows[1])
        self.assertEqual("millimetres", rows[0]["unit"])
        self.assertIn("one/D-1.sat", rows[0]["files"])
        table = json.loads((self.folder / "deep/t.json").read_text())
        self.assertEqual(["D-1", "F,2", "=1+2"], [t["tool"] for t in table])
        for row, tool in zip(rows, table):
            for column, name in (("DC diameter at the tip", "dc"), ("SIG point angle", "sig"),
                                 ("volume", "volume")):
                self.assertEqual(None if row[column] == "" else float(f"{float(row[column]):.7g}"),
                                 tool[name] if tool[name] is None else float(f"{tool[name]:.7g}"))

    def test_a_split_tool_and_a_failed_one(self):
        sheet = self.sheet(("D-1", DRILL[0]))
        sheet.add("EMPTY", profile=[(0, 0), (0, 0)], centre_line=False)
        sheet.save(self.folder / "s.dxf")
        self.batch("s.dxf", "--split", "32.5", "--stl", "--profile", "--table", "t.csv", status=1)
        rows = self.rows()
        self.assert_figures({**DRILL[1], "LCF cutting length": 32.5,
                             "DCX greatest diameter of the cutting part": 8}, rows[0])
        for file in ("D-1-CUT.stl", "D-1-NOCUT.stl", "D-1-profile.dxf", "D-1.sat"):
            self.assertTrue((self.folder / "out" / file).is_file(), file)
            self.assertIn(file, rows[0]["files"])
        self.assertTrue(rows[1]["verdict"].startswith("failed: "))
        self.assertEqual("", rows[1]["volume"])

    def test_names_by_file_and_by_texts(self):
        sheet = self.sheet(("A", DRILL[0]), ("B", FLAT[0]))
        sheet.space.add_text("Tool T-017 HSS", height=3).set_placement((30, 12))
        sheet.space.add_mtext("\\fArial;first line\\PT-018").set_location((240, 20))
        sheet.space.add_text("T-999", height=3).set_placement((5000, 5000))
        sheet.save(self.folder / "s.dxf")
        cases = [(["--name", "file"], ["s-1", "s-2"]), (["--name-pattern", "T-###"], ["T-017", "T-018"]),
                 (["--name-pattern", "T-9##"], ["A", "B"]), ([], ["A", "B"])]
        for options, names in cases:
            with self.subTest(options=options):
                self.batch("s.dxf", *options, "--table", "t.csv", "--out", "o" + "".join(options)[-5:])
                rows = self.rows()
                self.assertEqual(names, [r["tool number"] for r in rows])
                self.assertEqual("T-9##" in options,
                                 "no text near the tool matches" in rows[0]["verdict"])

    def test_bad_requests(self):
        self.sheet(("A", DRILL[0]))
        cases = [(["--table", "t.xls"], r"--table: 't\.xls' is no kind of table"),
                 (["--table", "out/A.sat.csv", "--report", "out/A.sat.csv"], r"are one file"),
                 (["--name", "text"], r"--name"),
                 (["--table", "s.dxf"], r"no kind of table")]
        for options, pattern in cases:
            done = self.run_program("batch", "s.dxf", *options)
            self.assertEqual(2, done.returncode, done.stdout)
            self.assertRegex(done.stderr, pattern)
            self.assertEqual(["s.dxf"], [n for n in self.left_behind() if n != "out"])

    def test_the_examples_sheet(self):
        self.batch(EXAMPLES / "tool-sheet.dxf", "--table", "t.csv", "--tip", "right")
        rows = self.rows()
        self.assertEqual(4, len(rows))
        for row in rows:
            self.assertGreater(float(row["DC diameter at the tip"]), 0)
            self.assertGreaterEqual(float(row["greatest diameter"]), float(row["DC diameter at the tip"]))


if __name__ == "__main__":
    main()
