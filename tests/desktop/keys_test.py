"""Every key with every modifier on a real X server, whatever has the focus: the program goes on, and
what can be typed still arrives."""

import shutil

from x_display import DesktopCase, EXAMPLES, main

KEYS = (["F%d" % n for n in range(1, 13)] +
        "Shift_L Control_L Alt_L Super_L Caps_Lock Num_Lock Scroll_Lock Prior Next Home End Insert "
        "Delete BackSpace Left Right Up Down Tab space Pause Menu Print".split() +
        list("abcdefghijklmnopqrstuvwxyz0123456789") +
        "comma period minus plus slash less at".split())
# Leave, close, save over the drawing, or are the window manager's own.
NOT_PRESSED = {"ctrl+q", "ctrl+w", "ctrl+s", "ctrl+F4", "alt+F4", "alt+Tab", "alt+Escape",
               "alt+space", "ctrl+alt+Left", "ctrl+alt+Right", "ctrl+n"}


class Keys(DesktopCase):
    def test_no_key_ends_the_program(self):
        shutil.copy(EXAMPLES / "end-mill.dxf", self.folder)
        desktop = self.start("end-mill.dxf")
        for place in ((500, 300), (500, 860)):  # the drawing, the command line
            desktop.click(*place)
            for modifier in ("", "shift+", "ctrl+", "alt+", "ctrl+shift+"):
                pressed = [modifier + key for key in KEYS if modifier + key not in NOT_PRESSED]
                for first in range(0, len(pressed), 12):
                    # Escape closes what a shortcut has opened: menus, dialogs, prompts.
                    desktop.xdotool("key", "--delay", 4, *pressed[first:first + 12],
                                    "Escape", "Escape", "Escape")
                    self.assertTrue(desktop.alive(), pressed[first:first + 12])
        # Locks that were switched on go off again.
        desktop.keys("Caps_Lock", "Num_Lock", "Scroll_Lock")
        desktop.keys("Escape", "Escape")
        desktop.xdotool("windowactivate", "--sync", desktop.window)
        desktop.click(500, 300)
        desktop.keys("Escape")
        desktop.type("saveas")
        desktop.type("after.dxf")
        desktop.until("the saved drawing", (self.folder / "after.dxf").exists)


if __name__ == "__main__":
    main()
