#!/usr/bin/python3
"""Makes the pictures of the desktop in docs/, on a display of its own.

    scripts/desktop_pictures.py build/release/bin/qzhost
"""

import pathlib
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from x_display import Desktop, EXAMPLES

SELECT_TOOL = (0.23, 0.94)  # a button, in parts of its dialog


def settle(desktop, seconds=2):
    desktop.xdotool("sleep", seconds)


def envelope(desktop):
    """The dialog beside what it made: both envelopes, the solid, the findings."""
    desktop.xdotool("windowmove", desktop.window, 0, 20)
    desktop.xdotool("windowsize", "--sync", desktop.window, 1396, 850)
    desktop.keys("ctrl+0")
    desktop.type("QZTOOLDESIGNProfileAuto3D")
    dialog = desktop.find("包络线计算")
    desktop.xdotool("windowmove", dialog, 600, 380)
    settle(desktop)
    desktop.press(dialog, *SELECT_TOOL)
    desktop.until("the selection", lambda: "请选择需要计算轮廓的对象" in desktop.log())
    desktop.xdotool("windowactivate", "--sync", desktop.window)
    desktop.say("60,95", "")
    desktop.say("195,155", "2 found")
    desktop.say("", "请选择中心点")
    desktop.type("100,125")
    desktop.until("the envelope", lambda: "包络线：" in desktop.log())
    desktop.find("包络线计算")


def drawing(desktop):
    """A line on its way to a snap, what is drawn, and what has been typed."""
    desktop.xdotool("windowmove", desktop.window, 0, 20)
    desktop.xdotool("windowsize", "--sync", desktop.window, 1396, 850)
    for line in ("zoom", "w", "60,90", "200,160"):
        desktop.type(line)
        settle(desktop, 0.3)
    desktop.say("l", "Specify first point")
    desktop.say("70,100", "Specify next point")
    for x in range(650, 678, 3):
        desktop.xdotool("mousemove", "--sync", x, 242)


def main():
    for name, make, look in (("qzhost", envelope, "light"), ("qzhost-drawing", drawing, "dark")):
        with tempfile.TemporaryDirectory() as folder:
            kept = pathlib.Path(folder) / "config" / "QZHost"
            kept.mkdir(parents=True)
            (kept / "QZHost.conf").write_text("[General]\nlook=%s\n" % look, encoding="ascii")
            desktop = Desktop(pathlib.Path(folder), EXAMPLES / "end-mill.dxf")
            try:
                settle(desktop)
                make(desktop)
                settle(desktop, 3)
                desktop.picture(ROOT / "docs" / (name + ".png"))
            finally:
                desktop.stop()


if __name__ == "__main__":
    main()
