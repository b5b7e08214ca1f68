"""A real X server and the desktop on it, used by mouse and keys as a person would.

Needs Xvfb, xdotool and openbox; where one is missing the tests say so and are skipped.
"""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "qzenvelope"))

from program import EXAMPLES, PROGRAM, ProgramTest, main

NEEDED = ("Xvfb", "xdotool", "openbox")
PATIENCE = 30.0  # seconds until something expected counts as not coming


class Desktop:
    """The program on a display of its own."""

    def __init__(self, folder, *arguments):
        self.folder = folder
        self.environment = dict(os.environ, HOME=str(folder), XDG_CONFIG_HOME=str(folder / "config"),
                                QT_QPA_PLATFORM="xcb",
                                LANGUAGE="en", LC_ALL="C.UTF-8")
        self.environment.pop("WAYLAND_DISPLAY", None)
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x900x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as said:
            self.environment["DISPLAY"] = ":" + said.readline().strip()
        self.manager = subprocess.Popen(["openbox", "--startup", "touch manager"], env=self.environment, cwd=folder,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        # A window that comes up while the manager starts would be lost.
        for _ in range(200):
            if (folder / "manager").exists():
                break
            time.sleep(0.05)
        self.output = open(folder / "output.txt", "w+", encoding="utf-8")
        self.program = subprocess.Popen([str(PROGRAM), "--log", "log.txt",
                                         *map(str, arguments)], cwd=folder,
                                        env=self.environment, stdout=self.output,
                                        stderr=subprocess.STDOUT)
        self.window = self.find("QZHost$")
        self.xdotool("windowactivate", "--sync", self.window)

    def stop(self):
        for process in (self.program, self.manager, self.server):
            if process.poll() is None:
                process.send_signal(signal.SIGTERM)
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self.output.close()

    def xdotool(self, *words, check=True):
        done = subprocess.run(["xdotool", *map(str, words)], env=self.environment,
                              capture_output=True, text=True, timeout=60)
        if check and done.returncode != 0:
            raise AssertionError("xdotool %s: %s" % (" ".join(map(str, words)), done.stderr))
        return done.stdout.strip()

    def alive(self):
        return self.program.poll() is None

    def processor_time(self, seconds):
        """What the program uses in so many seconds, in seconds of all its threads."""
        def used():
            stat = pathlib.Path("/proc/%d/stat" % self.program.pid).read_text()
            ticks = stat.rsplit(")", 1)[1].split()[11:13]
            return sum(map(int, ticks)) / os.sysconf("SC_CLK_TCK")
        before = used()
        time.sleep(seconds)
        return used() - before

    def until(self, what, happened):
        """Waits for a condition; what it was is told when it does not come."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            found = happened()
            if found:
                return found
            if not self.alive():
                raise AssertionError("the program ended while waiting for " + what + ": " +
                                     self.said())
            time.sleep(0.05)
        raise AssertionError("waited in vain for %s; the windows are %s; the log ends:\n%s" %
                             (what, self.titles(), self.log()[-2000:]))

    def windows(self):
        """The visible windows with their titles, the newest last."""
        ids = self.xdotool("search", "--onlyvisible", "--name", ".", check=False).split()
        return [(i, self.xdotool("getwindowname", i, check=False)) for i in ids]

    def titles(self):
        return [title for _, title in self.windows()]

    def find(self, pattern):
        """The newest visible window of that title."""
        return self.until("a window " + pattern, lambda: [
            i for i, title in self.windows() if re.search(pattern, title)])[-1]

    def comes(self, pattern, seconds):
        """Whether a window of that title comes up in time."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if any(re.search(pattern, title) for title in self.titles()):
                return True
            time.sleep(0.05)
        return False

    def gone(self, pattern):
        self.until("the end of the window " + pattern, lambda: not [
            i for i, title in self.windows() if re.search(pattern, title)])

    def keys(self, *names):
        for name in names:
            self.xdotool("key", "--clearmodifiers", name)

    def type(self, text):
        self.xdotool("type", "--delay", 2, text)
        self.keys("Return")

    def click(self, x, y, button=1):
        """At a place of the screen."""
        self.xdotool("mousemove", "--sync", x, y)
        self.xdotool("click", button)

    def press(self, window, across, down):
        """A place in a window, in parts of its size."""
        place = dict(line.split("=") for line in
                     self.xdotool("getwindowgeometry", "--shell", window).splitlines())
        self.xdotool("mousemove", "--sync", "--window", window,
                     int(across * int(place["WIDTH"])), int(down * int(place["HEIGHT"])))
        self.xdotool("click", 1)

    def say(self, line, expected):
        """Types a line and waits for what is said to it."""
        before = len(self.log())
        self.type(line)
        self.until("%r after %r" % (expected, line), lambda: expected in self.log()[before:])

    def picture(self, path):
        if shutil.which("scrot"):
            subprocess.run(["scrot", "-o", str(path)], env=self.environment, check=False)

    def said(self):
        self.output.flush()
        return (self.folder / "output.txt").read_text(encoding="utf-8")

    def log(self):
        """What the command line has said."""
        path = self.folder / "log.txt"
        return path.read_text(encoding="utf-8") if path.exists() else ""


class DesktopCase(ProgramTest):
    """One desktop a test; a program that has ended by itself is a failure."""

    def setUp(self):
        super().setUp()
        missing = [name for name in NEEDED if shutil.which(name) is None]
        if missing:
            raise unittest.SkipTest("not installed: " + ", ".join(missing))

    def start(self, *arguments):
        desktop = Desktop(self.folder, *arguments)
        self.addCleanup(desktop.stop)
        return desktop
