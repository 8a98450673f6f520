#!/usr/bin/python3
"""Computes the rows that the program must show for each channel of a recording.

    expected_rows.py RECORDING_DIR OUT_DIR

Writes index.tsv and a file for each channel that has events (see lines_file.py). Each line is a row,
newest first: the cells, the icon's index or -1, and the provider's name as the record stores it.
Times use the current UTC offset of the time zone in TZ.
"""

import sys

sys.dont_write_bytecode = True

from lines_file import write_channels
from record import cells, icon, kept_provider
from recording import read_channels, read_events


def expected_rows(directory, channel):
    for event in read_events(directory, channel):
        yield [*cells(event), icon(event), kept_provider(event)]


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    recording, out = arguments
    write_channels(out, read_channels(recording), lambda channel: expected_rows(recording, channel))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
