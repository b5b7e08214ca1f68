#!/usr/bin/env python3
"""What can be tried of the build for AutoCAD without it: messages, the bundle, the .def file."""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import zipfile
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]


def configure(folder, *options):
    """Its errors, on one line."""
    run = subprocess.run(["cmake", "-G", "Ninja", "-S", str(ROOT), "-B", str(folder / "build"),
                          "-DQZ_AUTOCAD=ON", *options],
                         capture_output=True, text=True, check=False)
    return run.returncode, " ".join(run.stderr.split())


class Messages(unittest.TestCase):
    def test_what_is_missing_of_the_sdk(self):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            sdk = folder / "sdk"
            status, text = configure(folder)
            self.assertNotEqual(0, status)
            self.assertIn("ARX_SDK is not set", text)
            status, text = configure(folder, f"-DARX_SDK={sdk}")
            self.assertNotEqual(0, status)
            self.assertIn("holds no inc/arxHeaders.h", text)
            (sdk / "inc").mkdir(parents=True)
            (sdk / "inc" / "arxHeaders.h").touch()
            (sdk / "lib-x64").mkdir()
            (sdk / "lib-x64" / "rxapi.lib").touch()
            status, text = configure(folder, f"-DARX_SDK={sdk}")
            self.assertNotEqual(0, status)
            self.assertIn("holds no acdb25.lib", text)
            self.assertIn("there are: rxapi.lib", text)


class Bundle(unittest.TestCase):
    def test_names_the_module_and_the_commands(self):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            module = folder / "built.arx"
            module.write_bytes(b"MZ module")
            script = ROOT / "scripts" / "make-bundle"
            for _ in range(2):  # a second time over the first
                subprocess.run([sys.executable, "-B", script, "--module", module, "--out", folder],
                               check=True, capture_output=True)
            bundle = folder / "QZEncircleLine.bundle"
            package = ElementTree.parse(bundle / "PackageContents.xml").getroot()
            version = package.get("AppVersion")
            self.assertRegex(version, r"^\d+\.\d+\.\d+$")
            with zipfile.ZipFile(folder / f"QZEncircleLine-{version}-bundle.zip") as packed:
                self.assertEqual({"QZEncircleLine.bundle/Contents/",
                                  "QZEncircleLine.bundle/Contents/QZEncircleLine.arx",
                                  "QZEncircleLine.bundle/PackageContents.xml"}, set(packed.namelist()))
            entry = package.find("Components/ComponentEntry")
            self.assertEqual(b"MZ module", (bundle / entry.get("ModuleName")).read_bytes())
            self.assertEqual(["Win64"], [r.get("OS") for r in
                                         package.findall("Components/RuntimeRequirements")])
            commands = {c.get("Global") for c in entry.iter("Command")}
            registered = (ROOT / "plugin" / "entry" / "Commands.cpp").read_text(encoding="utf-8")
            known = set(re.findall(r'\{_T\("(\w+)"\)', registered))
            self.assertLessEqual(commands, known)
            self.assertEqual(known - {"QzTestToolDesign"}, commands)
            missing = subprocess.run([sys.executable, "-B", script, "--module", folder / "none"],
                                     capture_output=True, text=True, check=False)
            self.assertEqual(1, missing.returncode)
            self.assertIn("build it first", missing.stderr)

    def test_cpack_makes_the_same_zip(self):
        """Of a build whose module is put there by hand, for there is no compiler for it here."""
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "sdk/inc").mkdir(parents=True)
            (folder / "sdk/inc/arxHeaders.h").touch()
            (folder / "sdk/lib-x64").mkdir()
            (folder / "sdk/lib-x64/one.lib").touch()
            status, text = configure(folder, f"-DARX_SDK={folder}/sdk", "-DARX_LIBRARIES=one",
                                     "-DCMAKE_SKIP_INSTALL_ALL_DEPENDENCY=ON")
            self.assertEqual(0, status, text)
            module = folder / "build/QZEncircleLine.arx"
            module.write_bytes(b"MZ module")
            done = subprocess.run(["cpack", "--config", "build/CPackConfig.cmake", "-B", "packages"],
                                  cwd=folder, capture_output=True, text=True, check=False)
            self.assertEqual(0, done.returncode, done.stdout + done.stderr)
            subprocess.run([sys.executable, "-B", ROOT / "scripts/make-bundle", "--module", module,
                            "--out", folder], check=True, capture_output=True)
            contents = []
            for packed in (*folder.glob("*.zip"), *folder.glob("packages/*.zip")):
                with zipfile.ZipFile(packed) as archive:
                    contents.append((packed.name, {i.filename: archive.read(i) for i in
                                                   archive.infolist() if not i.is_dir()}))
            self.assertEqual(2, len(contents))
            self.assertEqual(contents[0], contents[1])


class Version(unittest.TestCase):
    def test_is_told_alike_everywhere(self):
        def find(file, pattern):
            return re.findall(pattern, (ROOT / file).read_text(encoding="utf-8"), re.M)
        project, = find("CMakeLists.txt", r"^project\(.* VERSION ([\d.]+)")
        self.assertEqual([project], find("CHANGELOG.md", r"^## ([\d.]+)$")[:1])
        resource = "plugin/entry/Version.rc"
        commas = project.replace(".", ",") + ",0"
        self.assertEqual([commas] * 2, find(resource, r"^(?:FILE|PRODUCT)VERSION +([\d,]+)$"))
        self.assertEqual([project + ".0"] * 2,
                         find(resource, r'VALUE "(?:File|Product)Version", "([\d.]+)"'))


class Preset(unittest.TestCase):
    def test_is_for_visual_studio(self):
        presets = json.loads((ROOT / "CMakePresets.json").read_text(encoding="utf-8"))
        found, = [p for p in presets["configurePresets"] if p["name"] == "autocad-2026"]
        self.assertEqual(("Visual Studio 17 2022", "x64", "v143"),
                         (found["generator"], found["architecture"], found["toolset"]))
        self.assertEqual("ON", found["cacheVariables"]["QZ_AUTOCAD"])


if __name__ == "__main__":
    unittest.main()
