"""What the program says in Chinese and English: complete, nothing left over, and on any machine."""

import os
import re
import shutil
import subprocess
import unittest

from program import EXAMPLES, PROGRAM, ROOT, ProgramTest, main

PO = ROOT / "apps/qzenvelope/po/zh_CN.po"
COMMANDS = ("compute", "batch", "report", "info", "copy")
# Words of commands, files and figures that stay as they are in any language.
LATIN = re.compile(r"[A-Za-z]{2,}(?: [a-z]{2,}){2,}")


def texts(po):
    """The messages of a catalogue: text and translation."""
    pairs, current = [], None
    for line in po.splitlines():
        if line.startswith(("msgid ", "msgstr ")):
            if line.startswith("msgid "):
                pairs.append(["", ""])
            current = 0 if line.startswith("msgid ") else 1
            line = line.split(" ", 1)[1]
        if line.startswith('"') and current is not None:
            pairs[-1][current] += line[1:-1]
    return dict(map(tuple, pairs))


class Catalogue(unittest.TestCase):
    @unittest.skipUnless(shutil.which("xgettext"), "gettext is not installed")
    def test_every_text_is_translated_and_every_translation_used(self):
        pot = subprocess.run([ROOT / "scripts/update-words", "--list"], capture_output=True, text=True,
                             check=True).stdout
        known = texts(PO.read_text(encoding="utf-8"))
        self.assertEqual(set(texts(pot)), set(known), "scripts/update-words brings them together")
        self.assertEqual([], [text for text, words in known.items() if not words])
        self.assertNotIn("fuzzy", PO.read_text(encoding="utf-8"))
        for text, words in known.items():
            if not text:
                continue  # the head of the file
            # Blanks at both ends keep words apart that are put together; Chinese punctuation has its own.
            self.assertEqual(text.endswith("\\n"), words.endswith("\\n"), text)
            self.assertEqual(re.findall(r"--[a-z][a-z-]*", text).count("--help"),
                             re.findall(r"--[a-z][a-z-]*", words).count("--help"), text)
            for option in set(re.findall(r"--[a-z][a-z-]*", text)):
                self.assertIn(option, words)

    def test_texts_of_the_program_are_marked(self):
        """No sentence in a refusal or an option's help that translators do not see."""
        for file in sorted((ROOT / "apps/qzenvelope").glob("*.cpp")):
            source = re.sub(r"//[^\n]*|#include[^\n]*", "", file.read_text(encoding="utf-8"))
            for found in re.finditer(r'(?P<before>[\w(]*\(?)\s*(?P<text>"(?:[^"\\]|\\.)*"(?:\s*"(?:[^"\\]|\\.)*")*)',
                                     source):
                text = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', found["text"]))
                if re.search(r"[a-z]{3,} [a-z]{2,}", text):
                    self.assertRegex(found["before"], r"(Tr|Noted)\($", f"{file.name}: {text}")


class Language(ProgramTest):
    def say(self, *arguments, **environment):
        clean = {k: v for k, v in os.environ.items() if k not in ("LANG", "LANGUAGE", "LC_ALL", "LC_MESSAGES")}
        done = subprocess.run([str(PROGRAM), *map(str, arguments)], cwd=self.folder, capture_output=True,
                              text=True, timeout=120, env=dict(clean, **environment), encoding="utf-8")
        return done.stdout + done.stderr

    def test_help_is_whole_in_both(self):
        for command in ("", *COMMANDS):
            words = [*command.split(), "--help"]
            english, chinese = self.say(*words), self.say(*words, "--lang", "zh")
            self.assertNotRegex(english, r"[\u4e00-\u9fff]")
            options = re.compile(r"^ +(?:-\w,)?(--[a-z-]+)", re.M)
            self.assertEqual(options.findall(english), options.findall(chinese))
            for line in chinese.splitlines():
                if not line.startswith("  qzenvelope "):
                    self.assertNotRegex(line, LATIN)

    def test_who_asks_for_what(self):
        def is_chinese(*arguments, **environment):
            return "没有给出命令" in self.say(*arguments, **environment)
        self.assertFalse(is_chinese())
        self.assertFalse(is_chinese(LANG="C.UTF-8"))
        # None of these locales is installed on a bare machine.
        for environment in ({"LANG": "zh_CN.UTF-8"}, {"LC_ALL": "zh_CN.GBK", "LANG": "de_DE.UTF-8"},
                            {"LANG": "en_US.UTF-8", "LANGUAGE": "zh_CN:en"}, {"LC_MESSAGES": "zh_TW"}):
            self.assertTrue(is_chinese(**environment), environment)
        self.assertFalse(is_chinese(LANG="zh_CN.UTF-8", LC_ALL="en_US.UTF-8"))
        self.assertIn("Usage:", self.say("--lang", "en", "--help", LANG="zh_CN.UTF-8"))
        self.assertIn("用法", self.say("--lang=zh", "--help", LANG="en_US.UTF-8"))
        for bad in (["info", EXAMPLES / "end-mill.dxf", "--lang", "fr"], ["--lang", "xx", "info", "a.dxf"]):
            self.assertIn("--lang", self.say(*bad))

    def test_runs_and_refusals(self):
        drawing = EXAMPLES / "tool-sheet.dxf"
        told = self.say("batch", drawing, "--lang", "zh", "--table", "t.csv")
        self.assertRegex(told, r"4 把刀具 / 1 张图纸: \d 完成")
        told = self.say("compute", EXAMPLES / "end-mill.dxf", "--lang", "zh")
        self.assertIn("包络线     闭合多段线", told)
        self.assertIn("图层（实体数", self.say("info", drawing, "--lang", "zh"))
        self.assertIn("x*.dxf：没有文件与该模式匹配", self.say("batch", "x*.dxf", "--lang", "zh"))
        self.assertIn("不是数字", self.say("compute", drawing, "--centre", "a,b", "--lang", "zh"))
        # Figures and JSON are the same in any language.
        one, other = (self.say("info", drawing, "--json", "--lang", lang) for lang in ("en", "zh"))
        self.assertEqual(one, other)


if __name__ == "__main__":
    main()
