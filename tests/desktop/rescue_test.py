"""A program that was killed, on a real X server: the next start offers what had been drawn."""

import shutil

from x_display import DesktopCase, EXAMPLES, main

import dxf_tags


class Rescue(DesktopCase):
    def copies(self):
        return sorted(p.name for p in self.folder.rglob("autosave/*.dxf"))

    def test_what_was_drawn_is_offered_and_kept(self):
        drawing = self.folder / "end-mill.dxf"
        shutil.copy(EXAMPLES / drawing.name, self.folder)
        before = len(dxf_tags.entities(drawing))
        desktop = self.start(drawing.name)
        desktop.click(500, 300)
        desktop.keys("Escape")
        desktop.say("l", "Specify first point")
        desktop.say("0,0", "Specify next point")
        desktop.say("10,10", "Specify next point")
        # While the prompt still waits.
        desktop.until("the copy", self.copies)
        for _ in range(2):  # what was rescued outlives a second crash
            desktop.program.kill()
            desktop.program.wait()
            desktop.stop()
            self.assertTrue(self.copies())
            desktop = self.start(drawing.name)
            desktop.keys("Return")
            desktop.until("the rescued drawing", lambda: "end-mill.dxf* - QZHost" in desktop.titles())
            desktop.until("no second one", lambda: "is open already" in desktop.log())
        desktop.xdotool("windowactivate", "--sync", desktop.find("end-mill"))
        desktop.say("qsave", "Saved")
        self.assertEqual(before + 1, len(dxf_tags.entities(drawing)))


if __name__ == "__main__":
    main()
