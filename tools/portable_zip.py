"""Packs the files of a directory reproducibly: the same files always yield the same bytes.

Other packers also store the user, the time and the order of the files on the disk.

    portable_zip.py ZIP DIR SECONDS

Every file gets the time SECONDS, in seconds since 1970, UTC.
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
