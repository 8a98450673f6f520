#!/usr/bin/python3
"""Computes the text that the details pane must show for each event of a recording.

    expected_details.py RECORDING_DIR OUT_DIR

Writes index.tsv and a file for each channel that has events (see lines_file.py). Each line is an
event, newest first: record id, code (0: a message; 15027: the provider has no message for this event;
2: the provider has no messages at all) and text.
"""

import re
import sys

sys.dont_write_bytecode = True

from lines_file import write_channels
from record import kept_provider
from recording import read_channels, read_events

MESSAGE, MESSAGE_NOT_FOUND, PROVIDER_NOT_FOUND = 0, 15027, 2

FALLBACK = (
    "The description for Event ID {event_id} from source {provider} cannot be found. Either the "
    "component that raises this event is not installed on your local computer or the installation is "
    "corrupted.You can install or repair the component on the local computer.\n\nIf the event "
    "originated on another computer, the display information had to be saved with the event.\n\nThe "
    "following information was included with the event:\n\n{data}\n\nThe message resource is present "
    "but the message was not found in the message table\n"
)

# The value of an element whose name begins with Data. A self-closed element counts as a start tag, as in
# the program, so its value extends to the next </Data>.
_DATA = re.compile(r"<Data[^>]*>(.*?)</Data>", re.DOTALL)


def section(xml, name):
    """Returns this element without its end tag, or "" if its start tag has attributes."""
    match = re.search(f"<{name}>.*?(?=</{name}>)", xml, re.DOTALL)
    return match[0] if match else ""


def event_data(xml):
    """Returns the values of an event, one per line, unchanged from the XML."""
    values = _DATA.findall(section(xml, "EventData")) + _DATA.findall(section(xml, "UserData"))
    kept = (value.rstrip("\r\n") for value in values)
    return "".join(value + "\n" for value in kept if value)


def with_line_end_pairs(text):
    """Converts every line break to CR LF."""
    return re.sub(r"\r\n|\r|\n", "\r\n", text)


def description(event, providers_with_texts):
    """Returns the code and the text of an event, before the line breaks are converted."""
    provider = kept_provider(event)
    if provider in providers_with_texts and event.message is not None:
        return MESSAGE, event.message.rstrip("\0")
    text = FALLBACK.format(
        event_id=int(event.event_id or 0), provider=provider, data=event_data(event.xml)
    )
    return MESSAGE_NOT_FOUND if provider in providers_with_texts else PROVIDER_NOT_FOUND, text


def expected_details(events, providers_with_texts):
    for event in events:
        code, text = description(event, providers_with_texts)
        yield int(event.record_id or 0), code, with_line_end_pairs(text)


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    recording, out = arguments
    channels = read_channels(recording)
    events_of = {channel: read_events(recording, channel) for channel in channels}
    # A provider counts as registered if any of its events in the recording has a message.
    providers_with_texts = {
        event.provider
        for events in events_of.values()
        for event in events
        if event.message is not None
    }
    write_channels(
        out, channels, lambda channel: expected_details(events_of[channel], providers_with_texts)
    )
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
