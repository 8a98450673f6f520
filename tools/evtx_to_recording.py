#!/usr/bin/python3
"""Converts a directory of .evtx files to a recording for the replay service.

    evtx_to_recording.py SRC DEST

Requires evtxexport (libevtx-utils). .evtx files contain the values of events but no messages, so the
program shows the values. Exits with 1 if a file cannot be read; the other files are still converted.
"""

import re
import subprocess
import sys
from collections import Counter, defaultdict
from dataclasses import dataclass
from pathlib import Path

TYPES = ("Admin", "Operational", "Analytic", "Debug")

# A tag as evtxexport prints it. An attribute may contain quotation marks and angle brackets: it ends at
# the first quotation mark before another attribute or the end of the tag.
_TAG = re.compile(
    r"""<(?P<close>/?)(?P<name>[A-Za-z_][^\s<>/="]*)
        (?P<attributes>(?:\ [^\s<>="]+=".*?"(?=\ [^\s<>="]+="|/?>))*)
        (?P<empty>/?)>""",
    re.VERBOSE | re.DOTALL,
)
_ATTRIBUTE = re.compile(r' ([^\s<>="]+)="(.*?)"(?= [^\s<>="]+="|$)', re.DOTALL)
_EVENT_START = re.compile(r"(?m)^<Event xmlns=")
_BARE_AMPERSAND = re.compile(r"&(?!(?:amp|lt|gt|quot|apos|#\d+|#x[0-9A-Fa-f]+);)")

# Characters that XML does not allow. A recording contains U+FFFD instead.
_NOT_XML = re.compile("[\x00-\x08\x0b\x0c\x0e-\x1f\ufffe\uffff]")


# This version, which is in Debian 12, escapes texts but not attributes. It decodes surrogate pairs
# wrongly: characters above U+FFFF are 0x3FF too low.
_OLD_VERSION = "evtxexport 20181227\n"
_SHIFTED = re.compile("[\U00010000-\U0010fc00]")
_SHIFT = 0x3FF


@dataclass(frozen=True)
class Event:
    record_id: int
    provider: str
    channel: str
    xml: str


class ExportError(Exception):
    """A file that evtxexport cannot read."""


def export(path):
    """Returns the events that evtxexport prints for a file, and whether it escapes attributes."""
    done = subprocess.run(["evtxexport", "-f", "xml", str(path)], capture_output=True, check=False)
    if done.returncode != 0:
        reason = done.stderr.decode("utf-8", "replace").strip().splitlines()
        raise ExportError(reason[0] if reason else f"evtxexport failed with {done.returncode}")
    text = done.stdout.decode("utf-8", "replace")
    old = text.startswith(_OLD_VERSION)
    if old:
        text = _SHIFTED.sub(lambda match: chr(ord(match[0]) + _SHIFT), text)
    starts = [match.start() for match in _EVENT_START.finditer(text)]
    return [text[start:end] for start, end in zip(starts, [*starts[1:], len(text)])], not old


def compact(printed, escaped):
    """Converts a printed event to a recording's form: no layout, single quotes, all tags closed."""
    parts = []
    open_names = []
    position = 0
    value_may_follow = False  # directly after a start tag
    for tag in _TAG.finditer(printed):
        text = printed[position : tag.start()]
        position = tag.end()
        if tag["close"]:
            # White space is a value if it is the only content of an element, otherwise layout.
            if text.strip() or value_may_follow:
                parts.append(_text_xml(text))
            parts.append(f"</{open_names.pop()}>")
            value_may_follow = False
        else:
            if text.strip():
                parts.append(_text_xml(text))
            short = "EventData" not in (*open_names, tag["name"])
            parts.append(_start_tag(tag, short, escaped))
            value_may_follow = not tag["empty"]
            if value_may_follow:
                open_names.append(tag["name"])
        if not open_names:
            return "".join(parts)
    # The old evtxexport truncates an event at a zero character in a value.
    parts.append(_text_xml(printed[position:].rstrip("\n")))
    parts += (f"</{name}>" for name in reversed(open_names))
    return "".join(parts)


def _start_tag(tag, short, escaped):
    attributes = "".join(
        f" {name}='{_attribute_xml(_unescape(value) if escaped else value)}'"
        for name, value in _ATTRIBUTE.findall(tag["attributes"])
    )
    if not tag["empty"]:
        return f"<{tag['name']}{attributes}>"
    # As the service renders it: an empty element of <EventData> has a start tag and an end tag.
    if short:
        return f"<{tag['name']}{attributes}/>"
    return f"<{tag['name']}{attributes}></{tag['name']}>"


def _text_xml(text):
    """Escapes what evtxexport left unescaped in a text."""
    text = _BARE_AMPERSAND.sub("&amp;", _NOT_XML.sub("\ufffd", text))
    return text.replace("<", "&lt;").replace(">", "&gt;")


def _attribute_xml(value):
    value = _NOT_XML.sub("\ufffd", value).replace("&", "&amp;").replace("<", "&lt;")
    return value.replace(">", "&gt;").replace("'", "&apos;")


def _unescape(text):
    for entity, character in (("lt", "<"), ("gt", ">"), ("quot", '"'), ("apos", "'"), ("amp", "&")):
        text = text.replace(f"&{entity};", character)
    return text


def _found(pattern, xml):
    match = re.search(pattern, xml)
    return _unescape(match[1]) if match else ""


def read_log(path):
    """Returns the events of a file."""
    printed, escaped = export(path)
    return [
        Event(
            record_id=int(_found(r"<EventRecordID>(\d+)<", xml) or 0),
            provider=_found(r"<Provider Name='([^']*)'", xml),
            channel=_found(r"<Channel>([^<]*)<", xml),
            xml=xml,
        )
        for xml in (compact(event, escaped) for event in printed)
    ]


def channel_of(path, events):
    """Returns the channel of a file.

    Windows names the file after the channel. The channel of a renamed file is the one that most of
    its events name, except in ForwardedEvents, whose events name their source channels.
    """
    from_name = path.stem.replace("%4", "/")
    named = Counter(event.channel for event in events if event.channel)
    if not named or from_name in named or from_name == "ForwardedEvents":
        return from_name
    return named.most_common(1)[0][0]


def type_of(channel):
    """Derives the type from the last word of a channel's name; classic logs are Admin."""
    last_word = channel.replace("/", "-").rsplit("-", 1)[-1]
    if last_word in TYPES:
        return last_word
    return "Operational" if "/" in channel else "Admin"


def publisher_of(channel, events):
    """Returns the most frequent provider if it begins the channel's name, else the path before "/"."""
    providers = Counter(event.provider for event in events if event.provider)
    if providers:
        most_frequent = providers.most_common(1)[0][0]
        if channel.startswith(most_frequent):
            return most_frequent
    return channel.rsplit("/", 1)[0] if "/" in channel else ""


def channel_file_name(channel):
    return channel.replace("/", "%4") + ".xml"


def channels_xml(logs):
    """Returns channels.xml for these channels and their events, in code unit order."""
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "<channels>"]
    for channel in sorted(logs, key=lambda name: name.encode("utf-16-be")):
        publisher = publisher_of(channel, logs[channel])
        lines.append(
            f'  <channel name="{_quoted(channel)}" type="{type_of(channel)}"'
            f' owningPublisher="{_quoted(publisher)}" enabled="true"/>'
        )
    return "\n".join([*lines, "</channels>", ""])


def _quoted(text):
    return _attribute_xml(text).replace('"', "&quot;")


def events_xml(events):
    """Returns a channel's file: events oldest first, without duplicates."""
    unique = dict.fromkeys(sorted(events, key=lambda event: event.record_id))
    return "\r\n".join(["<Events>", *(event.xml for event in unique), "</Events>", ""])


def convert(source, destination):
    """Converts a directory. Returns a line for each unreadable file."""
    logs = defaultdict(list)
    problems = []
    for path in sorted(path for path in source.iterdir() if path.suffix.lower() == ".evtx"):
        try:
            events = read_log(path)
        except ExportError as error:
            problems.append(f"{path.name}: {error}")
            continue
        logs[channel_of(path, events)] += events
    destination.mkdir(parents=True, exist_ok=True)
    for channel, events in logs.items():
        if events:
            (destination / channel_file_name(channel)).write_bytes(events_xml(events).encode())
    (destination / "channels.xml").write_bytes(channels_xml(logs).encode())
    return problems


def main(arguments):
    if len(arguments) != 2 or not Path(arguments[0]).is_dir():
        print(__doc__, file=sys.stderr)
        return 2
    problems = convert(*map(Path, arguments))
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
