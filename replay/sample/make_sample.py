#!/usr/bin/python3
"""Writes the sample recording next to this script.

    make_sample.py            write channels.xml and the channels' files
    make_sample.py --check    write nothing; exit with 1 if a file on disk is wrong

Every run writes the same bytes: random choices have fixed seeds, and dates are fixed. To add events to
a channel, add rows to a table in generator/windows_logs.py or generator/services_logs.py.
"""

import sys
from pathlib import Path

sys.dont_write_bytecode = True  # write only the recording to this directory

from generator import services_logs, special_logs, windows_logs
from generator.channels import CHANNELS
from generator.event_making import make_log
from generator.recording import channel_file_name, channels_file, event_file

HERE = Path(__file__).resolve().parent


def make_files():
    """Returns the files of the recording as {name: bytes}."""
    files = {"channels.xml": channels_file(CHANNELS)}
    logs = {log.channel: make_log(log) for log in (*windows_logs.LOGS, *services_logs.LOGS)}
    logs.update(special_logs.LOGS)
    for channel, events in logs.items():
        files[channel_file_name(channel)] = event_file(events)
    return files


def write(files):
    for path in HERE.glob("*.xml"):
        if path.name not in files:
            path.unlink()
    for name, content in files.items():
        (HERE / name).write_bytes(content)


def differences(files):
    """Yields a line for each wrong file next to this script."""
    for name, content in sorted(files.items()):
        path = HERE / name
        if not path.exists():
            yield f"{name} is missing"
        elif path.read_bytes() != content:
            yield f"{name} differs"
    for path in sorted(HERE.glob("*.xml")):
        if path.name not in files:
            yield f"{path.name} should not be there"


def main(arguments):
    files = make_files()
    if arguments == ["--check"]:
        found = list(differences(files))
        print("\n".join(found) or f"{len(files)} files are as they should be")
        return 1 if found else 0
    if arguments:
        print(__doc__, file=sys.stderr)
        return 2
    write(files)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
