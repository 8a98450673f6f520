r"""Files of lines that any program can read: UTF-8, one record a line, fields separated by tabs.

Within a field a backslash, a tab, a line feed and a carriage return are written \\ \t \n \r. A lone
surrogate is written as the three bytes that UTF-8 would have for it.
"""

from pathlib import Path

_ESCAPES = str.maketrans({"\\": r"\\", "\t": r"\t", "\n": r"\n", "\r": r"\r"})


def escape(field):
    return str(field).translate(_ESCAPES)


def write_lines(path, records):
    text = "".join("\t".join(map(escape, record)) + "\n" for record in records)
    Path(path).write_bytes(text.encode("utf-8", "surrogatepass"))


def write_channels(directory, channels, records_of):
    """Writes a file for each channel that has records, and index.tsv that names them all.

    A line of the index: path, file (empty if there is none), number of records, and the code with
    which loading the channel ends (0 for success).
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
