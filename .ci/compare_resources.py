"""Compares two compiled resource files (.res).

    compare_resources.py ONE OTHER

Both must contain the same resources: type, name, language and bytes. Dialogs are compared without
case, because llvm-rc and windres write the names of window classes in different case.
"""

import struct
import sys
from pathlib import Path

DIALOG = 5


def _name(data, at):
    """Reads a number or a zero-terminated text. Returns it and the offset after it."""
    if data[at:at + 2] == b"\xff\xff":
        return struct.unpack_from("<H", data, at + 2)[0], at + 4
    end = at
    while data[end:end + 2] != b"\0\0":
        end += 2
    return data[at:end].decode("utf-16-le"), end + 2


def resources(data):
    """{(type, name, language): bytes}"""
    found = {}
    at = 0
    while at < len(data):
        size, header_size = struct.unpack_from("<II", data, at)
        kind, place = _name(data, at + 8)
        name, place = _name(data, place)
        place = (place + 3) & ~3
        language = struct.unpack_from("<IHHII", data, place)[2]
        start = at + header_size
        if size:
            content = data[start:start + size]
            found[kind, name, language] = content.upper() if kind == DIALOG else content
        at = (start + size + 3) & ~3
    return found


def main():
    one, other = (resources(Path(name).read_bytes()) for name in sys.argv[1:3])
    different = [key for key in {**one, **other} if one.get(key) != other.get(key)]
    for key in different:
        print("different:", key, len(one.get(key, b"")), len(other.get(key, b"")))
    print(f"{len(one)} resources, {len(different)} different")
    return 1 if different or not one else 0


if __name__ == "__main__":
    sys.exit(main())
