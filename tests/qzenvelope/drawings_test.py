"""info and copy on drawings of every version, and whole runs on real drawings by others."""

import json
import re
import stat
import unittest

import dxf_tags
from program import ENVELOPE_LAYER, EXAMPLES, ProgramTest, main, shared_drawings

# name: version, tool number and where the frame carries it
FRAMES = {
    "stepped-drill": ("AC1024", "0001", "attribute"),
    "end-mill": ("AC1032", "EM50-2", "xdata"),
    "ball-nose": ("AC1015", "QD-0008", "xrecord"),
    "t-slot-cutter": ("AC1009", None, None),
}


class Info(ProgramTest):
    def info(self, drawing):
        done = self.run_program("info", drawing, "--json")
        self.assertEqual(0, done.returncode, done.stderr)
        return json.loads(done.stdout)

    def test_frames_layers_and_versions(self):
        for name, (version, number, carrier) in FRAMES.items():
            with self.subTest(tool=name):
                info = self.info(EXAMPLES / (name + ".dxf"))
                self.assertEqual(version, info["version"])
                self.assertEqual("millimetres" if version != "AC1009" else "not stated", info["units"])
                frames = [(f["tool"], f["carrier"]) for f in info["frames"]]
                self.assertEqual([(number, carrier)] if number else [], frames)
                self.assertEqual(info["entities"], sum(info["types"].values()))
                self.assertEqual(info["entities"], sum(l["entities"] for l in info["layers"]))
                self.assertEqual(0, info["unreadable"])
                self.assertIsNone(info["tasks"])

    def test_what_the_text_says(self):
        done = self.run_program("info", EXAMPLES / "ball-nose.dxf")
        self.assertEqual(0, done.returncode, done.stderr)
        for part in ("DXF AC1015, code page ANSI_936, units millimetres", "LWPOLYLINE", "轮廓线",
                     "CENTER", "tool QD-0008", "Stored task list: none", "Faults in the file: none"):
            self.assertIn(part, done.stdout)

    def test_layer_states_and_a_stored_task_list(self):
        text = (EXAMPLES / "ball-nose.dxf").read_bytes().decode("gbk")
        newline = "\r\n" if "\r\n" in text else "\n"
        # The hidden lines' layer: off (negative colour), frozen (1) and locked (4).
        layer = re.compile(r"(  2\r?\n虚线\r?\n 70\r?\n)(\d+)(\r?\n 62\r?\n)(\d+)")
        self.assertRegex(text, layer)
        text = layer.sub(r"\g<1>5\g<3>-\g<4>", text)
        root = re.search(r"  0\r?\nSECTION\r?\n  2\r?\nOBJECTS\r?\n  0\r?\nDICTIONARY\r?\n  5\r?\n(\w+)",
                         text)
        head, tail = text[: root.end()], text[root.end():]
        at = tail.index("AcDbDictionary") + len("AcDbDictionary") + len(newline)
        at = tail.index("  3" + newline, at)
        tail = tail[:at] + newline.join(["  3", "QZDJBLX", "350", "F001", ""]) + tail[at:]
        end = tail.index(newline.join(["  0", "ENDSEC"]))
        stored = ["  0", "DICTIONARY", "  5", "F001", "330", root.group(1), "100",
                  "AcDbDictionary", "281", "1", "  3", "BLX", "350", "F002", "  0", "XRECORD",
                  "  5", "F002", "330", "F001", "100", "AcDbXrecord", "280", "1", " 91", "2",
                  " 92", "1", "  1", "铣刀", " 90", "0", " 90", "0", " 92", "0", "290", "1", ""]
        tail = tail[:end] + newline.join(stored) + tail[end:]
        path = self.folder / "changed.dxf"
        path.write_bytes((head + tail).encode("gbk"))
        info = self.info(path)
        self.assertEqual({"items": 7}, info["tasks"])
        hidden = next(l for l in info["layers"] if l["name"] == "虚线")
        self.assertEqual((False, True, True), (hidden["on"], hidden["frozen"], hidden["locked"]))
        self.assertEqual(2, hidden["entities"])


class Copy(ProgramTest):
    def drawings(self):
        yield from sorted(EXAMPLES.glob("*.dxf"))
        try:
            yield from sorted(shared_drawings().glob("*.dxf"))
        except unittest.SkipTest as reason:
            print(reason)

    def test_every_byte_comes_back(self):
        for drawing in self.drawings():
            with self.subTest(drawing=drawing.name):
                done = self.run_program("copy", drawing, "copy.dxf")
                self.assertEqual((0, ""), (done.returncode, done.stderr))
                same = self.folder / "copy.dxf"
                self.assertEqual(dxf_tags.read_tags(drawing), dxf_tags.read_tags(same))
                self.assertEqual(drawing.read_bytes(), same.read_bytes())

    def test_onto_itself(self):
        path = self.folder / "tool.dxf"
        path.write_bytes((EXAMPLES / "end-mill.dxf").read_bytes())
        path.chmod(0o640)
        done = self.run_program("copy", path.name, path.name)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        self.assertEqual((EXAMPLES / "end-mill.dxf").read_bytes(), path.read_bytes())
        self.assertEqual(0o640, stat.S_IMODE(path.stat().st_mode))
        self.assertEqual(["tool.dxf"], self.left_behind())


class Layers(ProgramTest):
    """Layers that are off, frozen, locked or current, by changing the table of an example."""

    # Step by step: that way layers are switched.
    WHERE = ("--algorithm", "3", "--centre", "140,120", "--window", "50,100,230,140")

    def changed(self, **flags):
        """The stepped drill with the given values of group 70 for layers; 'off' for a negative colour."""
        text = (EXAMPLES / "stepped-drill.dxf").read_text(encoding="utf-8")
        for layer, flag in flags.items():
            entry = re.compile(r"(AcDbLayerTableRecord\n  2\n" + layer.lstrip("_") +
                               r"\n 70\n *)\d+(\n 62\n *)(\d+)")
            self.assertRegex(text, entry)
            text = entry.sub(r"\g<1>0\g<2>-\3" if flag == "off" else rf"\g<1>{flag}\2\3", text)
        path = self.folder / "changed.dxf"
        path.write_text(text, encoding="utf-8")
        return path

    def test_a_window_picks_what_is_displayed(self):
        everything = self.compute(EXAMPLES / "stepped-drill.dxf", *self.WHERE)
        for flag in (1, "off"):
            with self.subTest(flag=flag):
                run = self.compute(self.changed(EDGES=flag), *self.WHERE)
                hidden = run["selection"]["not_displayed"]
                self.assertEqual(11, hidden)
                self.assertEqual(everything["picked"] - hidden, run["picked"])
                self.assertEqual(everything["envelope"]["extents"], run["envelope"]["extents"])
        done = self.run_program("compute", self.changed(EDGES=1, OUTLINE="off", CENTER=1, DIM=1),
                                *self.WHERE)
        self.assertEqual(1, done.returncode)
        self.assertRegex(done.stderr, r"entities inside the window are invisible or on layers")

    def test_without_a_window_hidden_entities_are_picked_too(self):
        centre = ("--centre", "140,120")
        run = self.compute(self.changed(EDGES=1, OUTLINE="off"), *centre)
        everything = self.compute(EXAMPLES / "stepped-drill.dxf", *centre)
        self.assertEqual(everything["picked"], run["picked"])
        self.assertEqual(everything["envelope"]["vertices"], run["envelope"]["vertices"])

    def test_locked_layers_take_no_part_and_nothing_stays_behind(self):
        # Layer 0 is the current one: the axis line must not get stuck on it.
        path = self.changed(EDGES=4, _0=4)
        run = self.compute(path, *self.WHERE, "-o", "out.dxf")
        left = {(l["reason"], l["what"]): l["count"] for l in run["trace"]["left_out"]}
        self.assertEqual(11, left.get(("locked", "EDGES")), left)
        before, after = dxf_tags.entities(path), dxf_tags.entities(self.folder / "out.dxf")
        self.assertEqual(before, after[:-1])
        self.assertEqual(ENVELOPE_LAYER, dxf_tags.value(after[-1], 8))

    def test_every_layer_is_on_afterwards_and_the_current_one_is_kept(self):
        path = self.changed(EDGES="off", HIDDEN="off")
        self.compute(path, *self.WHERE, "-o", "out.dxf")
        info = json.loads(self.run_program("info", "out.dxf", "--json").stdout)
        self.assertEqual([], [l["name"] for l in info["layers"] if not l["on"]])
        head = lambda p: dxf_tags.sections(dxf_tags.read_tags(p))["HEADER"]
        current = lambda tags: tags[tags.index((9, b"$CLAYER")) + 1]
        self.assertEqual(current(head(path)), current(head(self.folder / "out.dxf")))


class RealDrawings(ProgramTest):
    def test_spindle(self):
        drawing = shared_drawings() / "spindle_camm3.dxf"
        where = ("--centre", "60,0", "--window", "-30,-38,205,38")
        halves = {}
        for half in ("upper", "lower"):
            run = self.compute(drawing, *where, "--half", half, "-o", half + ".dxf")
            envelope = halves[half] = run["envelope"]
            self.assertTrue(envelope["closed"])
            self.assertAlmostEqual(74, envelope["diameter"], delta=1e-6)
            self.assertFalse(envelope["self_crossing"]["crosses"])
            after = dxf_tags.entities(self.folder / (half + ".dxf"))
            self.assertEqual(dxf_tags.entities(drawing), after[:-1])
            self.assertEqual(ENVELOPE_LAYER, dxf_tags.value(after[-1], 8))
        mirrored = [[x, -y + 0.0, -b + 0.0] for x, y, b in halves["lower"]["vertices"]]
        self.assertAlmostEqual(halves["upper"]["length"], halves["lower"]["length"], delta=1e-6)
        for corner in mirrored:
            nearest = min(abs(x - corner[0]) + abs(y - corner[1])
                          for x, y, _ in halves["upper"]["vertices"])
            self.assertLess(nearest, 1e-6, corner)

    def test_every_drawing_gives_a_result_or_says_why_not(self):
        for drawing in sorted(shared_drawings().glob("*.dxf")):
            with self.subTest(drawing=drawing.name):
                box = json.loads(self.run_program("info", drawing, "--json").stdout)["extents"]
                box = box or [0, 0, 1, 1]
                middle = f"{(box[0] + box[2]) / 2},{(box[1] + box[3]) / 2}"
                done = self.run_program("compute", drawing, "--centre", middle, "--json")
                self.assertIn(done.returncode, (0, 1), done.stderr)
                self.assertEqual(done.returncode == 0, done.stderr == "")
                if done.stdout:
                    found = json.loads(done.stdout)["envelope"] is not None
                    self.assertEqual(done.returncode == 0, found)


if __name__ == "__main__":
    main()
