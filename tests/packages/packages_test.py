#!/usr/bin/env python3
"""The programs installed, and as packages: they run from where they are put, with all that belongs to
them. The Debian package is tried in a bare system, which is fetched when this runs as root."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(sys.argv[1]).resolve()
COMMANDS = ("compute", "batch", "report", "info", "copy")
# What is tried of an installed program, by a shell, wherever its root is.
TRY = """set -e
cd "$(mktemp -d)"
qzenvelope --version
qzenvelope compute {docs}/examples/end-mill.dxf -o mill.dxf --svg mill.svg \\
    --sat mill.sat --step mill.stp --stl mill.stl --png mill.png >/dev/null
qzenvelope batch {docs}/examples/tool-sheet.dxf --report out/index.html --table out/tools.csv >/dev/null || [ $? = 1 ]
printf 'command QZTOOLDESIGNProfileAuto3D\\ndump dialogs\\n' >session.scr
QT_QPA_PLATFORM=offscreen qzhost --script session.scr {docs}/examples/end-mill.dxf >session.txt
grep -q 186 session.txt
for file in mill.dxf mill.svg mill.sat mill.stp mill.stl mill.png out/index.html out/tools.csv; do
    [ -s $file ] || {{ echo "$file is missing"; exit 1; }}
done
echo all there
"""


def run(*words, **more):
    done = subprocess.run(list(map(str, words)), capture_output=True, text=True, check=False, **more)
    if done.returncode != 0:
        raise AssertionError(f"{words}\n{done.stdout[-3000:]}\n{done.stderr[-3000:]}")
    return done.stdout


def commit():
    done = subprocess.run(["git", "-C", str(ROOT), "rev-parse", "--short=10", "HEAD"], capture_output=True,
                          text=True, check=False)
    return done.stdout.strip() or "unknown commit"


class Case(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def check_programs(self, prefix, docs=None):
        """They run by their links, and load what lies beside them."""
        docs = docs or prefix / "share/doc/qzenvelope"
        told = run("sh", "-c", TRY.format(docs=docs),
                   env=dict(os.environ, PATH=f"{prefix}/bin:{os.environ['PATH']}"))
        self.assertRegex(told, r"^qzenvelope \d+\.\d+\.\d+ \(\w+( commit)?\)\n")
        self.assertIn("all there", told)


class Installed(Case):
    def setUp(self):
        super().setUp()
        run("cmake", "--install", BUILD, "--prefix", self.folder)

    def test_programs(self):
        self.check_programs(self.folder)
        # The program that was built last knows the commit of that build.
        version = run(self.folder / "bin/qzenvelope", "--version")
        header = (BUILD / "generated/version.h").read_text()
        self.assertIn(re.search(r'QZ_COMMIT "(.*)"', header)[1], version)

    def test_manual_pages_know_every_option(self):
        for command in ("", *COMMANDS):
            help_text = run(self.folder / "bin/qzenvelope", *command.split(), "--help")
            name = "qzenvelope" + (command and "-" + command)
            page = (self.folder / "share/man/man1" / (name + ".1")).read_text()
            plain = page.replace("\\-", "-").replace("\\fB", "").replace("\\fR", "")
            for option in re.findall(r"^ +(?:-\w,)?(--[a-z-]+)", help_text, re.M):
                self.assertIn(option, plain, name)
            self.assertRegex(plain, rf"\.SH NAME\n{name} - \w+")
            if shutil.which("man"):
                done = subprocess.run(["man", "--warnings", "-l", self.folder / "share/man/man1" / (name + ".1")],
                                      capture_output=True, text=True, check=True,
                                      env=dict(os.environ, MANPAGER="cat", LC_ALL="C.UTF-8"))
                self.assertEqual("", done.stderr)
        self.assertTrue((self.folder / "share/man/man1/qzhost.1").stat().st_size > 500)

    def complete(self, *words):
        script = self.folder / "share/bash-completion/completions/qzenvelope"
        line = " ".join(f"'{w}'" for w in words)
        return run("bash", "-c", f"source {script}; COMP_WORDS=({line}); COMP_CWORD={len(words) - 1}; "
                   '_qzenvelope 2>/dev/null; printf "%s\\n" "${COMPREPLY[@]}"', cwd=self.folder,
                   env=dict(os.environ, PATH=f"{self.folder}/bin:{os.environ['PATH']}")).split()

    def test_completion(self):
        self.assertEqual(sorted([*COMMANDS, "--help", "--version"]), sorted(self.complete("qzenvelope", "")))
        self.assertEqual(["report"], self.complete("qzenvelope", "r"))
        for command in COMMANDS:
            help_text = run(self.folder / "bin/qzenvelope", command, "--help")
            options = set(re.findall(r"^ +(?:-\w,)?(--[a-z-]+)", help_text, re.M))
            self.assertLessEqual(options, set(self.complete("qzenvelope", command, "--")))
        self.assertEqual(["--shard"], self.complete("qzenvelope", "batch", "--sh"))
        self.assertEqual(["layers", "line"], sorted(self.complete("qzenvelope", "compute", "--split", "l")))
        self.assertEqual(["share"], self.complete("qzenvelope", "batch", "sh"))
        self.assertEqual(["share"], self.complete("qzenvelope", "batch", "--watch", "sh"))

    def test_the_desktop_knows_the_host(self):
        entry = self.folder / "share/applications/qzhost.desktop"
        text = entry.read_text()
        self.assertIn("MimeType=image/vnd.dxf;", text)
        program = re.search(r"^Exec=(\w+)", text, re.M)[1]
        self.assertTrue(os.access(self.folder / "bin" / program, os.X_OK))
        icon = re.search(r"^Icon=(\w+)", text, re.M)[1]
        self.assertIn("<svg", (self.folder / f"share/icons/hicolor/scalable/apps/{icon}.svg").read_text()[:200])
        if shutil.which("desktop-file-validate"):
            self.assertEqual("", run("desktop-file-validate", entry))


class Packed(Case):
    def setUp(self):
        super().setUp()
        run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", self.folder)

    def only(self, pattern):
        found = [p for p in self.folder.glob(pattern) if p.is_file()]
        self.assertEqual(1, len(found), found)
        return found[0]

    def test_packages(self):
        self.check_archive(self.only("*.tar.gz"))
        package = self.only("*.deb")
        fields = run("dpkg-deb", "--field", package)
        for library in ("libgeos-c1v5", "libqt6widgets6", "libocct-data-exchange-7", "libpng16-16", "libc6"):
            self.assertRegex(fields, rf"(?m)^Depends: .*\b{library}")
        files = run("dpkg-deb", "--contents", package)
        self.assertNotRegex(files, r"/(tests|build)/|\.a\n|\.h\n")
        if os.geteuid() != 0 or not shutil.which("debootstrap"):
            self.skipTest("the package was made, not installed: that takes root and debootstrap")
        self.check_in_a_bare_system(package)

    def check_archive(self, archive):
        with tarfile.open(archive) as packed:
            packed.extractall(self.folder / "unpacked", filter="data") if hasattr(
                tarfile, "data_filter") else packed.extractall(self.folder / "unpacked")
        top, = (self.folder / "unpacked").iterdir()
        self.check_programs(top / "usr" if (top / "usr").is_dir() else top)

    def check_in_a_bare_system(self, package):
        system = self.folder / "system"
        run("debootstrap", "--variant=minbase", "bookworm", system)
        # Programs find what lies beside them by it.
        done = subprocess.run(["mount", "-t", "proc", "proc", system / "proc"], capture_output=True, check=False)
        if done.returncode != 0:
            self.skipTest("the package was made, not installed: nothing can be mounted here")
        self.addCleanup(run, "umount", system / "proc")
        shutil.copy(package, system / "package.deb")
        shutil.copy("/etc/resolv.conf", system / "etc/resolv.conf")
        inside = dict(PATH="/usr/sbin:/usr/bin:/sbin:/bin", DEBIAN_FRONTEND="noninteractive", LC_ALL="C.UTF-8")

        def chroot(*words):
            return run("chroot", system, *words, env=inside)
        chroot("apt-get", "install", "-y", "--no-install-recommends", "/package.deb")
        told = chroot("sh", "-c", TRY.format(docs="/usr/share/doc/qzenvelope"))
        self.assertIn("all there", told)
        chroot("apt-get", "remove", "-y", "qzenvelope")
        self.assertEqual([], [str(p) for p in (system / "usr").rglob("*qzenvelope*")])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=1)
