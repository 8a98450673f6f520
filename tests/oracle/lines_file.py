r"""Writes files in a simple format: UTF-8, one record per line, fields separated by tabs.

In a field, a backslash, a tab, a line feed and a carriage return are written as \\ \t \n \r. A lone
surrogate is written as three bytes, as UTF-8 encodes other characters in its range.
"""

from pathlib import Path

_ESCAPES = str.maketrans({"\\": r"\\", "\t": r"\t", "\n": r"\n", "\r": r"\r"})


def escape(field):
    return str(field).translate(_ESCAPES)


def write_lines(path, records):
    text = "".join("\t".join(map(escape, record)) + "\n" for record in records)
    Path(path).write_bytes(text.encode("utf-8", "surrogatepass"))


def write_channels(directory, channels, records_of):
    """Writes a file for each channel that has records, and index.tsv with all channels.

    Each line of the index has the path, the file (empty if there is none), the number of records, and
    the code with which loading the channel ends (0 for success).
    """
    directory = Path(directory)
    directory.mkdir(parents=True, exist_ok=True)
    index = []
    for number, channel in enumerate(channels):
        records = list(records_of(channel)) if channel.load_result == 0 else []
        file_name = f"{number:04d}.tsv" if records else ""
        if records:
            write_lines(directory / file_name, records)
        index.append((channel.path, file_name, len(records), channel.load_result))
    write_lines(directory / "index.tsv", index)
