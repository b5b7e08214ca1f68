"""A whole session by mouse and keys on a real X server: from an empty drawing to the solid's file.

A pin with a step and a ball end is drawn with commands, mirrored, taken back and done again; its
envelope is computed by the dialog and exported; the drawing is saved, and closing asks for what came
after.
"""

from x_display import DesktopCase, main

import dxf_tags

DRAWING = (500, 300)  # a place of the screen inside the drawing
A_LAYER = (980, 178)  # its name in the panel
SELECT_TOOL, EXPORT = (0.23, 0.94), (0.74, 0.94)  # of the dialog


class Session(DesktopCase):
    def test_from_nothing_to_the_solid(self):
        desktop = self.start()
        desktop.click(*DRAWING)
        desktop.until("a window that costs nothing", lambda: desktop.processor_time(3) <= 0.01)
        self.draw(desktop)
        self.change(desktop)
        desktop.say("saveas", "Save drawing as")
        desktop.say("pin", "Saved")  # the ending comes by itself
        self.assertTrue((self.folder / "pin.dxf").exists())
        self.compute(desktop)
        self.export(desktop)
        self.close(desktop)

    def draw(self, desktop):
        desktop.say("zoom", "Specify corner of window")
        desktop.say("c", "Specify center point")
        desktop.say("60,40", "Enter height")
        desktop.type("120")
        # The contour above the axis, in every form of typing; the tip is an arc that goes on smoothly.
        desktop.say("pl", "Specify start point")
        desktop.say("20,40", "Specify next point")
        for point in ("20,55", "@40,0", "@0,-5", "@30<0"):
            desktop.say(point, "Specify next point")
        desktop.say("a", "Specify endpoint of arc")
        desktop.say("100,40", "Specify endpoint of arc")
        desktop.type("")

    def change(self, desktop):
        desktop.say("mi", "Select objects")
        desktop.say("l", "1 found")
        desktop.say("", "first point of mirror line")
        desktop.say("0,40", "second point of mirror line")
        desktop.say("@10,0", "Erase source objects")
        desktop.type("")
        desktop.say("nosuch e", 'Unknown command "NOSUCH"')
        desktop.say("u", "MIRROR undone.")
        desktop.say("redo", "MIRROR redone.")
        desktop.say("dist", "Specify first point")
        # A click into a panel leaves the keys to the prompt.
        desktop.click(*A_LAYER)
        desktop.say("20,25", "Specify second point")
        desktop.say("20,55", "Distance = 30,")
        desktop.keys("F8")
        desktop.until("ortho", lambda: "Ortho on" in desktop.log())
        desktop.keys("F8")
        desktop.say("li", "Select objects")
        desktop.say("all", "2 found")
        desktop.say("", "vertices, open")
        # A click with nothing asked picks; Escape lets go.
        desktop.click(*DRAWING)
        desktop.keys("Escape")

    def back_to_the_drawing(self, desktop):
        desktop.xdotool("windowactivate", "--sync", desktop.window)

    def compute(self, desktop):
        desktop.type("QZTOOLDESIGNProfileAuto3D")
        desktop.press(desktop.find("包络线计算"), *SELECT_TOOL)
        desktop.until("the selection", lambda: "请选择需要计算轮廓的对象" in desktop.log())
        self.back_to_the_drawing(desktop)
        desktop.say("all", "2 found")
        desktop.say("", "请选择中心点")
        desktop.type("60,40")
        desktop.find("包络线计算")
        desktop.until("a changed drawing", lambda: "pin.dxf* - QZHost" in desktop.titles())

    def export(self, desktop):
        desktop.press(desktop.find("包络线计算"), *EXPORT)
        desktop.until("the export", lambda: "请选择包络线" in desktop.log())
        self.back_to_the_drawing(desktop)
        desktop.say("l", "1 found")
        desktop.type("")
        chooser = desktop.find("保存三维文件")
        desktop.xdotool("windowactivate", "--sync", chooser)
        desktop.xdotool("type", "--delay", 10, str(self.folder / "pin.sat"))
        desktop.keys("Return")
        solid = self.folder / "pin.sat"
        desktop.until("the solid", lambda: solid.exists() and
                      "End-of-ACIS-data" in solid.read_text(encoding="utf-8"))
        # The message of success; when it has gone the dialog has the focus again.
        desktop.xdotool("windowactivate", "--sync", desktop.find("^QZHost$"))
        desktop.keys("Return")
        desktop.gone("^QZHost$")
        desktop.find("包络线计算")

    def close(self, desktop):
        question = "^QZHost$"
        self.back_to_the_drawing(desktop)
        desktop.keys("ctrl+w")
        desktop.xdotool("windowactivate", "--sync", desktop.find(question))
        desktop.keys("Escape")
        desktop.gone(question)
        self.back_to_the_drawing(desktop)
        desktop.say("qsave", "Saved")
        entities = dxf_tags.entities(self.folder / "pin.dxf")
        self.assertEqual(1, len(dxf_tags.on_layer(entities, "TempEncircleLine")))
        self.assertEqual(3, len(entities))
        # Nothing has changed since: closing asks no more.
        desktop.keys("ctrl+w")
        desktop.until("no drawing", lambda: "QZHost" in desktop.titles())


if __name__ == "__main__":
    main()
