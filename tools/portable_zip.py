"""Packs the files of a folder so that the same files make the same bytes.

A usual packer also stores who packed, on what day and in which order the disk named the files.

    portable_zip.py ZIP FOLDER SECONDS

SECONDS since 1970, UTC, are the time that every file gets.
"""

import sys
import time
import zipfile
from pathlib import Path

UNIX = 3
REGULAR_FILE = 0o100644


def entry(name, seconds):
    info = zipfile.ZipInfo(name, time.gmtime(seconds)[:6])
    info.compress_type = zipfile.ZIP_DEFLATED
    info.create_system = UNIX
    info.external_attr = REGULAR_FILE << 16
    return info


def write_zip(output, folder, seconds):
    files = [path for path in folder.rglob("*") if path.is_file()]
    with zipfile.ZipFile(output, "w", compresslevel=9) as archive:
        for path in sorted(files):
            name = path.relative_to(folder).as_posix()
            archive.writestr(entry(name, seconds), path.read_bytes())


if __name__ == "__main__":
    write_zip(Path(sys.argv[1]), Path(sys.argv[2]), int(sys.argv[3]))
