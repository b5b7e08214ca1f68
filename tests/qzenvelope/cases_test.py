"""Outlines of generated tools compared with those an independent program gives, when they are there."""

import json
import os
import pathlib
import unittest

from program import ROOT, ProgramTest, main

TOLERANCE = 1e-6  # drawing units, and for bulges


def same(expected, actual):
    return len(expected) == len(actual) and all(
        abs(e - a) <= TOLERANCE for corner, other in zip(expected, actual)
        for e, a in zip(corner, other))


def difference(expected, actual):
    for i, (corner, other) in enumerate(zip(expected, actual)):
        if not same([corner], [other]):
            return f"vertex {i} of {len(actual)} is {other}, expected {corner} of {len(expected)}"
    return f"{len(actual)} vertices, expected {len(expected)}"


class Cases(ProgramTest):
    def test_outlines(self):
        folder = pathlib.Path(os.environ.get("QZ_SHARED", ROOT.parent / "shared")) / "cases"
        if not folder.is_dir():
            raise unittest.SkipTest("no cases beside this checkout: " + str(folder))
        for path in sorted(folder.glob("*.json")):
            case = json.loads(path.read_text())
            with self.subTest(case=path.stem):
                run = self.compute(folder / case["drawing"], "--algorithm", "3", *case["arguments"])
                actual = run["envelope"]["vertices"]
                accepted = [case["vertices"], *case["alternates"]]
                self.assertTrue(any(same(e, actual) for e in accepted),
                                difference(accepted[0], actual))
                self.assertEqual(case["trace"]["selected"], run["picked"])


if __name__ == "__main__":
    main()
