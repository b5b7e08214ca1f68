"""The pages name files that are there, every source of the engine, and every room with its arrows."""

import pathlib
import re
import sys
import unittest

import include_arrows

ROOT = include_arrows.ROOT
PAGES = sorted(ROOT.glob("docs/*.md")) + [ROOT / "README.md"]
# A file's name in backquotes: a known ending, nothing that varies.
FILE = re.compile(r"`([\w./-]+\.(?:h|cpp|py|cmake|txt|md|rc|scr|dxf|def|svg|png))`")
LINK = re.compile(r"\]\((?!http)([^)#]+)\)")
TOP = ("plane/", "plugin/", "host/", "product/", "apps/", "tests/", "bench/", "docs/", "examples/",
       "scripts/", "cmake/")
# Pages that are being written and that the map names already.
COMING = {"visibility.md"}
# What users make, not what stands here.
MADE = {"StdAfx.h", "afxwin.h", "arxHeaders.h", "PackageContents.xml"}


def sources():
    return set(include_arrows.sources())


class Pages(unittest.TestCase):
    def test_there_are_pages(self):
        self.assertGreater(len(PAGES), 8)

    def test_links_lead_somewhere(self):
        for page in PAGES:
            for target in LINK.findall(page.read_text(encoding="utf-8")):
                with self.subTest(page=page.name, link=target):
                    self.assertTrue((page.parent / target).exists() or target in COMING)

    def test_named_files_are_there(self):
        names = {path.rsplit("/", 1)[-1] for path in sources()}
        for page in PAGES:
            for name in FILE.findall(page.read_text(encoding="utf-8")):
                with self.subTest(page=page.name, file=name):
                    if name.startswith(TOP):
                        self.assertTrue((ROOT / name).exists(), "there is no such file")
                    elif "/" not in name and name.endswith((".h", ".cpp")):
                        known = name in names or (ROOT / "host/include" / name).exists()
                        self.assertTrue(known or name in MADE, "no source has that name")

    def test_every_source_of_the_engine_is_named(self):
        text = "".join(page.read_text(encoding="utf-8") for page in PAGES)
        named = {name.rsplit("/", 1)[-1].rsplit(".", 1)[0] for name in FILE.findall(text)}
        engine = {pathlib.Path(p).stem for p in sources() if p.startswith("plugin/engine/")}
        self.assertGreater(len(engine), 20)
        self.assertEqual([], sorted(engine - named), "not named: add a row to docs/house.md")


class Rooms(unittest.TestCase):
    """The map's table of rooms says what the test of the includes enforces."""

    def test_rows(self):
        text = (ROOT / "docs/house.md").read_text(encoding="utf-8")
        rows = {cells[1].strip("` "): cells for cells in
                (line.split("|") for line in text.splitlines()) if len(cells) == 6}
        for room, (_, allowed) in include_arrows.ROOMS.items():
            with self.subTest(room=room):
                self.assertTrue(room in rows, "no row in docs/house.md")
                seen = set(re.findall(r"`([\w/]+)`", rows[room][3]))
                wanted = " ".join(f"`{to}`" for to in allowed.split())
                self.assertEqual(set(allowed.split()), seen, f"its row should say: {wanted}")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[1:]], verbosity=1)
