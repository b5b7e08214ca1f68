"""The report page in a real browser: stands alone, can be sorted, shows the warnings."""

import re
import unittest

from browser import run_in_page
from framed_tools import Sheet
from program import EXAMPLES, ProgramTest, main

ROWS = """[...document.querySelectorAll('tbody tr')].map(row => row.innerText)"""


class ReportPage(ProgramTest):
    def report(self, *arguments, status=0):
        done = self.run_program("batch", *arguments, "--report", "out/page.html")
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        return self.folder / "out/page.html"

    def test_stands_alone_and_shows_every_tool(self):
        page = self.report(EXAMPLES / "tool-sheet.dxf")
        text = page.read_text(encoding="utf-8")
        links = re.findall(r"""(?:src|href)\s*=\s*["']?([^"'\s>]+)|url\(([^)]*)\)|@import""", text)
        for link in links:
            self.assertRegex("".join(link), r"^(#|data:)")
        found = run_in_page(page, "() => { const loaded = performance.getEntriesByType('resource')"
                            ".map(r => r.name).filter(n => !n.startsWith('data:'));"
                            "const rows = [...document.querySelectorAll('tbody tr')].map(row => ({"
                            "text: row.innerText, paths: row.querySelectorAll('svg path').length,"
                            "envelope: row.querySelectorAll('svg path.envelope').length,"
                            "solid: [...row.querySelectorAll('img')].map(i => i.naturalWidth)}));"
                            "return {loaded, rows}; }")
        self.assertEqual([], found["loaded"])
        self.assertEqual(4, len(found["rows"]))
        for row in found["rows"]:
            self.assertEqual(1, row["envelope"])
            self.assertGreater(row["paths"], 8)
            self.assertEqual(1, len(row["solid"]))
            self.assertGreater(row["solid"][0], 100, "the picture of the solid cannot be shown")
        careless = [row["text"] for row in found["rows"] if "T-104" in row["text"]][0]
        self.assertRegex(careless, r"(?i)lower", "the halves differ")
        self.assertRegex(careless, r"0\.8\b", "by how much")

    def test_every_column_sorts_both_ways(self):
        sheet = Sheet(5)
        volumes = {}
        for name in ("b2", "a10", "c1", "a9"):
            volumes[name] = sheet.add(name)[1]
        sheet.save(self.folder / "s.dxf")
        page = self.report("s.dxf")
        heads = run_in_page(page, "() => [...document.querySelectorAll('thead th')]"
                            ".map(h => h.innerText)")
        column = [i for i, head in enumerate(heads) if "olume" in head][0]
        click = "document.querySelectorAll('thead th')[%d]" % column
        sort = ("() => { const h = " + click + "; const target = h.querySelector('button') || h;"
                "const states = []; for (let i = 0; i < 2; ++i) { target.click();"
                "states.push(" + ROWS + "); } return states; }")
        up, down = run_in_page(page, sort)
        order = [[next(n for n in volumes if re.search(r"\b%s\b" % n, text)) for text in rows]
                 for rows in (up, down)]
        rising = sorted(volumes, key=volumes.get)
        self.assertIn(order[0], (rising, rising[::-1]))
        self.assertEqual(order[0], order[1][::-1])

    def test_names_are_text_and_failures_are_told(self):
        sheet = Sheet()
        sheet.add("<b>&amp;\"x")
        sheet.add("blind", centre_line=False)
        sheet.save(self.folder / "s.dxf")
        page = self.report("s.dxf", status=1)
        # The name itself is bold on the page; nothing inside it may be an element.
        rows, bold = run_in_page(page, "() => [" + ROWS + ", document.querySelectorAll("
                                 "'tbody b.name *').length]")
        self.assertEqual(2, len(rows))
        self.assertEqual(0, bold)
        self.assertTrue(any('<b>&amp;"x' in row for row in rows), rows)
        self.assertTrue(any("blind" in row and "no axis is drawn" in row for row in rows), rows)


if __name__ == "__main__":
    main()
