"""Esc on a real X server while a long computation goes on: it stops, and nothing was drawn."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "qzhost"))

import drawings
from x_display import DesktopCase, main


class Stop(DesktopCase):
    def test_escape_stops_a_computation(self):
        drawings.many_lines(self.folder, 100000)
        desktop = self.start("many.dxf")
        desktop.click(500, 300)
        desktop.type("QZTOOLDESIGNProfileAuto3D")
        dialog = desktop.find("包络线计算")
        desktop.press(dialog, 53 / 226, 239 / 254)  # 选择刀具图
        desktop.gone("包络线计算")
        desktop.say("all", "100000 found")
        desktop.keys("Return")
        desktop.until("the second prompt", lambda: "请选择中心点" in desktop.log())
        desktop.type("0,50")
        progress = desktop.find("执行进度")
        desktop.xdotool("windowfocus", progress)
        desktop.keys("Escape")
        desktop.until("the end of the run", lambda: "已取消计算" in desktop.log())
        desktop.gone("执行进度")
        desktop.find("包络线计算")
        self.assertTrue(desktop.alive())


if __name__ == "__main__":
    main()
