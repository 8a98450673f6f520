"""Tests of the built exe. TAVRIN_EXE is its path, TAVRIN_VERSION its version, TAVRIN_TEST_PROGRAM the
path of a test program."""

import os
import unittest
from pathlib import Path
from xml.etree import ElementTree

import pefile

from resource_formats import (DIALOG, GROUP_ICON, MANIFEST, VERSION, fixed_versions, icon_sizes,
                              read_dialog, read_resources, version_text)

PROGRAM = Path(os.environ["TAVRIN_EXE"])
PROJECT_VERSION = os.environ["TAVRIN_VERSION"]
TEST_PROGRAM = Path(os.environ["TAVRIN_TEST_PROGRAM"])

SYSTEM_LIBRARIES = {"advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll",
                    "shell32.dll", "user32.dll", "wevtapi.dll"}
LARGEST_SIZE = 1_400_000

APPLICATION_ICON = 2
SYMBOLS = [133, *range(136, 143), *range(144, 149)]

MODAL_FRAME, SYSTEM_MENU = 0x80, 0x80000
NO_ID = -1
ABOUT_BOX = 103
ABOUT_BOX_CONTROLS = [
    ("static", NO_ID, (14, 14, 21, 20), APPLICATION_ICON),
    ("static", NO_ID, (44, 15, 114, 8), "Tavrin, Version {major_minor}"),
    ("static", NO_ID, (44, 26, 126, 8), "Free software under the MIT licence"),
    ("static", NO_ID, (44, 36, 28, 8), "Icons by "),
    ("syslink", 1000, (75, 36, 27, 10),
     '<a href="https://tavrin.example.org/icons">Tavrin</a>'),
    ("static", NO_ID, (43, 48, 53, 8), "Find it useful? "),
    ("syslink", 1001, (91, 48, 23, 10), '<a href="https://tavrin.example.org/tip">Tip me</a>'),
    ("button", 1, (120, 65, 50, 14), "OK"),
]


class ExeTest(unittest.TestCase):
    exe = pefile.PE(data=PROGRAM.read_bytes())
    header = exe.OPTIONAL_HEADER
    resources = read_resources(exe)


class Security(ExeTest):
    def test_its_addresses_are_random_with_high_entropy(self):
        self.assertEqual(self.header.Magic, pefile.OPTIONAL_HEADER_MAGIC_PE_PLUS)
        self.assertTrue(self.header.IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE)
        self.assertTrue(self.header.IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA)

    def test_it_can_be_relocated(self):
        self.assertFalse(self.exe.FILE_HEADER.IMAGE_FILE_RELOCS_STRIPPED)
        self.assertTrue(self.exe.DIRECTORY_ENTRY_BASERELOC)

    def test_its_data_cannot_be_executed(self):
        self.assertTrue(self.header.IMAGE_DLLCHARACTERISTICS_NX_COMPAT)

    def test_its_code_cannot_be_written(self):
        self.assertEqual([section.Name for section in self.exe.sections
                          if section.IMAGE_SCN_MEM_EXECUTE and section.IMAGE_SCN_MEM_WRITE], [])

    def test_it_loads_system_libraries_only(self):
        imports = {library.dll.decode().lower() for library in self.exe.DIRECTORY_ENTRY_IMPORT}
        self.assertLessEqual(imports, SYSTEM_LIBRARIES)


class WindowFrames(ExeTest):
    def test_they_are_not_those_of_windows_xp(self):
        self.assertGreaterEqual(self.header.MajorSubsystemVersion, 6)


class TestPrograms(ExeTest):
    def test_they_use_the_controls_of_the_program(self):
        test_program = pefile.PE(data=TEST_PROGRAM.read_bytes())
        self.assertEqual(read_resources(test_program)[MANIFEST, 1], self.resources[MANIFEST, 1])


class Size(unittest.TestCase):
    def test_it_is_small(self):
        self.assertLess(PROGRAM.stat().st_size, LARGEST_SIZE)


class VersionOfTheProject(ExeTest):
    def test_it_is_in_the_version_numbers(self):
        numbers = (*map(int, PROJECT_VERSION.split(".")), 0)
        self.assertEqual(fixed_versions(self.resources[VERSION, 1]), (numbers, numbers))

    def test_it_is_in_the_version_texts(self):
        for name in ("FileVersion", "ProductVersion"):
            self.assertEqual(version_text(self.resources[VERSION, 1], name), PROJECT_VERSION)

    def test_it_is_in_the_manifest(self):
        manifest = ElementTree.fromstring(self.resources[MANIFEST, 1])
        identity = manifest.find("{urn:schemas-microsoft-com:asm.v1}assemblyIdentity")
        self.assertEqual(identity.get("version"), PROJECT_VERSION + ".0")


class AboutBox(ExeTest):
    def setUp(self):
        self.dialog = read_dialog(self.resources[DIALOG, ABOUT_BOX])

    def test_it_is_a_modal_frame_with_a_system_menu(self):
        self.assertTrue(self.dialog.style & MODAL_FRAME)
        self.assertTrue(self.dialog.style & SYSTEM_MENU)

    def test_its_caption_font_and_size(self):
        self.assertEqual(self.dialog.caption, "About")
        self.assertEqual((self.dialog.point_size, self.dialog.font), (8, "MS Shell Dlg"))
        self.assertEqual(self.dialog.rectangle[2:], (177, 86))

    def test_its_controls_and_the_version_that_it_states(self):
        major_minor = PROJECT_VERSION.rpartition(".")[0]
        expected = [(kind, identifier, rectangle,
                     text.format(major_minor=major_minor) if isinstance(text, str) else text)
                    for kind, identifier, rectangle, text in ABOUT_BOX_CONTROLS]
        self.assertEqual([tuple(control) for control in self.dialog.controls], expected)


class Icons(ExeTest):
    def sizes(self, identifier):
        return icon_sizes(self.resources[GROUP_ICON, identifier])

    def test_the_application_icon_has_every_size_of_the_shell(self):
        self.assertEqual(self.sizes(APPLICATION_ICON), [16, 20, 24, 32, 40, 48, 64, 128, 256])

    def test_the_symbols_have_every_size_of_a_list(self):
        for identifier in SYMBOLS:
            with self.subTest(icon=identifier):
                self.assertEqual(self.sizes(identifier), [16, 20, 24, 32])


if __name__ == "__main__":
    unittest.main()
