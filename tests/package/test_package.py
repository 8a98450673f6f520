"""Tests of the release package. Environment variables:

TAVRIN_EXE        the built program
TAVRIN_VERSION    its version
TAVRIN_PACKAGE    the zip; its checksum and the manifests are next to it
TAVRIN_CPACK      the command that creates it, as words separated by semicolons
TAVRIN_START      the command that starts a window test, likewise: an emulator, if necessary, and
                  the path of the test program
TAVRIN_SERVICE    the DLL of the replay service
"""

import hashlib
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

import pefile

VERSION = os.environ["TAVRIN_VERSION"]
ZIP = Path(os.environ["TAVRIN_PACKAGE"])
PACKAGE = ZIP.parent
URL = f"https://tavrin.example.org/releases/{VERSION}/{ZIP.name}"

FILES = ["CHANGELOG.md", "LICENSE", "README.md", "Tavrin.exe"]

SIGNER = "import sys; open(sys.argv[1], 'ab').write(b'signed')"


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


class PackageTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def pack_again(self, *options, **environment):
        """Creates the package in a temporary directory and returns its zip."""
        subprocess.run(
            [*os.environ["TAVRIN_CPACK"].split(";"), "-B", str(self.folder / "work"),
             "-D", f"CPACK_TAVRIN_OUTPUT_DIR={self.folder / 'output'}", *options],
            check=True, stdout=subprocess.DEVNULL, env={**os.environ, **environment})
        return self.folder / "output" / ZIP.name


class Zip(PackageTest):
    def test_it_contains_only_the_program_licence_readme_and_changelog(self):
        with zipfile.ZipFile(ZIP) as archive:
            self.assertEqual(archive.namelist(), FILES)

    def test_it_holds_the_built_program(self):
        with zipfile.ZipFile(ZIP) as archive:
            self.assertEqual(archive.read("Tavrin.exe"),
                             Path(os.environ["TAVRIN_EXE"]).read_bytes())

    def test_only_a_visual_cpp_build_has_the_name_of_the_release(self):
        """g++ imports the C library msvcrt.dll; Visual C++ links its own statically."""
        with zipfile.ZipFile(ZIP) as archive:
            exe = pefile.PE(data=archive.read("Tavrin.exe"))
        imports = [library.dll for library in exe.DIRECTORY_ENTRY_IMPORT]
        maker = "-mingw" if b"msvcrt.dll" in imports else ""
        self.assertEqual(ZIP.name, f"Tavrin-{VERSION}-windows-x64{maker}.zip")

    def test_its_texts_have_the_line_ends_of_the_repository(self):
        with zipfile.ZipFile(ZIP) as archive:
            for name in FILES[:-1]:
                self.assertNotIn(b"\r", archive.read(name), name)

    def test_its_checksum_lies_beside_it(self):
        checksum = (PACKAGE / (ZIP.name + ".sha256")).read_text("ascii")
        self.assertEqual(checksum, f"{sha256(ZIP)}  {ZIP.name}\n")

    def test_it_is_the_same_wherever_it_is_packed(self):
        self.assertEqual(sha256(self.pack_again(TZ="XYZ-9")), sha256(ZIP))

    def test_its_program_is_signed_when_a_command_is_given(self):
        signer = self.folder / "signer.py"
        signer.write_text(SIGNER, "ascii")
        signed = self.pack_again(
            "-D", f"CPACK_TAVRIN_SIGN_COMMAND={Path(sys.executable).as_posix()};{signer.as_posix()}")
        with zipfile.ZipFile(signed) as archive:
            self.assertTrue(archive.read("Tavrin.exe").endswith(b"signed"))


class Manifests(unittest.TestCase):
    def test_scoop_gets_the_version_the_address_and_the_checksum(self):
        manifest = json.loads((PACKAGE / "scoop" / "tavrin.json").read_text("utf-8"))
        self.assertEqual(manifest["version"], VERSION)
        self.assertEqual(manifest["architecture"]["64bit"], {"url": URL, "hash": sha256(ZIP)})

    def test_winget_gets_the_address_and_the_checksum(self):
        lines = (PACKAGE / "winget" / "Tavrin.Tavrin.installer.yaml").read_text("utf-8").split("\n")
        self.assertIn(f"    InstallerUrl: {URL}", lines)
        self.assertIn(f"    InstallerSha256: {sha256(ZIP)}", lines)

    def test_every_winget_manifest_has_the_version(self):
        manifests = sorted((PACKAGE / "winget").iterdir())
        self.assertEqual([path.name for path in manifests],
                         ["Tavrin.Tavrin.installer.yaml", "Tavrin.Tavrin.locale.en-US.yaml",
                          "Tavrin.Tavrin.yaml"])
        for path in manifests:
            self.assertIn(f"PackageVersion: {VERSION}\n", path.read_text("utf-8"))

    def test_nothing_is_left_to_fill_in(self):
        for path in PACKAGE.glob("*/*"):
            self.assertNotIn("@", path.read_text("utf-8"), path)


class UnpackedProgram(PackageTest):
    def test_it_opens_its_window_from_an_empty_folder(self):
        """The window test starts the program next to it."""
        with zipfile.ZipFile(ZIP) as archive:
            archive.extractall(self.folder)
        *emulator, window_test = os.environ["TAVRIN_START"].split(";")
        for path in (window_test, os.environ["TAVRIN_SERVICE"]):
            shutil.copy(path, self.folder)
        run = subprocess.run(
            [*emulator, str(self.folder / Path(window_test).name),
             "--gtest_filter=ChannelTree.ShowsFoldersAndChannelsInOrdinalOrderWithTheirIcons"],
            cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=100)
        self.assertEqual(run.returncode, 0, run.stdout)
        self.assertIn(b"[  PASSED  ] 1 test", run.stdout)


if __name__ == "__main__":
    unittest.main()
