"""Tests of the shell functions that ./run uses for directories of .evtx files."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOLS = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(Path(__file__).resolve().parent))
sys.dont_write_bytecode = True

from evtx_file import write_evtx
from test_evtx_to_recording import event


@unittest.skipUnless(shutil.which("evtxexport"), "evtxexport is not installed")
class FolderOfLogs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        (self.root / "tools").symlink_to(TOOLS)
        self.logs = self.root / "my logs"
        self.logs.mkdir()

    def shell(self, commands):
        return subprocess.run(
            ["sh", "-euc", f'root=$1 logs=$2; . "$root/tools/evtx.sh"; {commands}', "sh",
             str(self.root), str(self.logs)], capture_output=True, text=True, check=False)

    def test_an_unreadable_file_leaves_the_others_to_be_shown_and_is_named(self):
        write_evtx(self.logs / "Alder-Sync%4Operational.evtx", [(1, event())])
        (self.logs / "Broken.evtx").write_bytes(b"no log")
        done = self.shell('recording_of "$logs"; echo shown >&2; report_unread')
        self.assertEqual(done.returncode, 0, done.stderr)
        recording = Path(done.stdout.strip())
        self.assertTrue((recording / "Alder-Sync%4Operational.xml").exists())
        self.assertRegex(done.stderr, r"^shown\nNot read: Broken\.evtx: .+\n$")

    def test_a_conversion_that_fails_as_a_whole_says_why(self):
        done = self.shell('recording_of "$root/no such folder"')
        self.assertEqual(done.returncode, 1)
        self.assertIn("Not read: ", done.stderr)

    def test_the_folder_is_told_from_one_of_a_recording(self):
        self.assertEqual(self.shell('has_evtx "$logs"').returncode, 1)
        write_evtx(self.logs / "System.evtx", [(1, event(channel="System"))])
        self.assertEqual(self.shell('has_evtx "$logs"').returncode, 0)


if __name__ == "__main__":
    unittest.main()
