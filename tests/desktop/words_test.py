"""Every text of the desktop has its Chinese one, with the same places for values; none is left over."""

import pathlib
import re
import sys
import unittest
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]
DESKTOP = ROOT / "apps" / "qzhost"
# Texts that come from tables of the host and of the engine: the modes of object snap, and why
# something takes no part in an envelope.
FROM_TABLES = [(ROOT / "host/ed/object_snap.cpp", r'\{kSnap\w+, L"\w+", L"([^"]+)"\}'),
               (ROOT / "plugin/engine/EncircleTrace.cpp", r'kNames\[[^]]*\] = \{([^}]*)\}')]
TEXT = r'\b(?:Tr|Word)\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\)'

HOST_TEXT = TEXT.replace("Tr|Word", "HostWord")


def plain(literals):
    """The text of string literals that stand behind one another."""
    joined = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', literals))
    return (joined.replace("\\n", "\n").replace('\\"', '"')
            .encode("utf-8").decode("utf-8").replace("\\u2300", "\u2300").replace("\\u0394", "\u0394"))


def texts():
    found = set()
    for source in DESKTOP.rglob("*.cpp"):
        for literals in re.findall(TEXT, source.read_text(encoding="utf-8")):
            found.add(plain(literals))
    found.update(plain(t) for t in re.findall(HOST_TEXT, (DESKTOP / "words/HostWords.cpp").read_text("utf-8")))
    for path, pattern in FROM_TABLES:
        source = path.read_text(encoding="utf-8")
        for match in re.findall(pattern, source):
            found.update(re.findall(r'"([^"]+)"', match) or [match])
    return found


def catalogue():
    root = ElementTree.parse(DESKTOP / "words" / "qzhost_zh.ts").getroot()
    return {m.findtext("source"): m.findtext("translation") for m in root.iter("message")}


class Words(unittest.TestCase):
    def test_texts_are_found(self):
        self.assertGreater(len(texts()), 100)
        self.assertIn("Type a command", texts())
        self.assertIn("Centre line", texts())

    def test_each_has_a_translation(self):
        known = catalogue()
        self.assertEqual([], sorted(t for t in texts() if not known.get(t)))

    def test_none_is_left_over(self):
        self.assertEqual([], sorted(set(catalogue()) - texts()))

    def test_values_have_their_places(self):
        for english, chinese in catalogue().items():
            with self.subTest(english):
                self.assertEqual(sorted(re.findall(r"%\d", english)), sorted(re.findall(r"%\d", chinese)))


if __name__ == "__main__":
    unittest.main()
