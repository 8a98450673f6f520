"""Reads a recording: its channels and the values of its events.

An XML parser converts CR LF to LF, so it is used only to find where elements begin and end. Texts are
taken from the bytes of the file, which keeps their line breaks.
"""

import re
from dataclasses import dataclass
from pathlib import Path
from xml.etree import ElementTree
from xml.parsers import expat

_DEPTH_OF_EVENT = 2  # below <Events>
_ENTITIES = {"lt": "<", "gt": ">", "amp": "&", "quot": '"', "apos": "'"}
_REFERENCE = re.compile(r"&(#x[0-9A-Fa-f]+|#[0-9]+|[a-z]+);")


@dataclass(frozen=True)
class Channel:
    path: str
    type: str
    publisher: str
    enabled: bool
    denied: bool

    @property
    def load_result(self):
        """The result of a query for the channel's events."""
        if self.denied:
            return 5
        if self.type in ("Analytic", "Debug"):
            return 15022 if self.enabled else 50  # the program reads newest first
        return 0


@dataclass
class Event:
    """The values of one event as written in its XML. None if a value is absent."""

    provider: str | None = None
    event_id: str | None = None
    level: str | None = None
    keywords: str | None = None
    time: str | None = None
    record_id: str | None = None
    process_id: str | None = None
    message: str | None = None
    xml: str = ""  # as the service renders it, without <RenderingInfo>


def read_channels(directory):
    """Returns the channels of channels.xml, in file order."""
    root = ElementTree.parse(Path(directory) / "channels.xml").getroot()
    return [
        Channel(
            path=element.get("name"),
            type=element.get("type"),
            publisher=element.get("owningPublisher", ""),
            enabled=element.get("enabled") == "true",
            denied=element.get("access") == "denied",
        )
        for element in root.iter("channel")
    ]


def read_events(directory, channel):
    """Returns the events of a channel, newest first, as the program reads them."""
    path = Path(directory) / (channel.path.replace("/", "%4") + ".xml")
    return _EventsReader(path.read_bytes()).events[::-1] if path.exists() else []


def unescape(text):
    """Replaces the references in a text. Keeps its line breaks."""
    return _REFERENCE.sub(_referenced, text)


def _referenced(match):
    name = match[1]
    if name.startswith("#x"):
        return chr(int(name[2:], 16))
    return chr(int(name[1:])) if name.startswith("#") else _ENTITIES[name]


# The values in <System>: attributes or texts of elements.
_SYSTEM_ATTRIBUTES = {
    "Provider": ("Name", "provider"),
    "TimeCreated": ("SystemTime", "time"),
    "Execution": ("ProcessID", "process_id"),
}
_SYSTEM_TEXTS = {
    "EventID": "event_id",
    "Level": "level",
    "Keywords": "keywords",
    "EventRecordID": "record_id",
}


class _EventsReader:
    """Reads the events of a channel's file."""

    def __init__(self, content):
        self.events = []
        self._content = content
        self._path = []
        self._starts = []  # byte offset of the start tag of each open element
        self._rendering = None  # byte range of the event's <RenderingInfo>
        self._parser = expat.ParserCreate("utf-8")
        self._parser.StartElementHandler = self._start
        self._parser.EndElementHandler = self._end
        self._parser.Parse(content, True)

    def _start(self, name, attributes):
        self._path.append(name)
        self._starts.append(self._parser.CurrentByteIndex)
        place = self._path[_DEPTH_OF_EVENT:]
        if len(self._path) == _DEPTH_OF_EVENT:
            self.events.append(Event())
            self._rendering = None
        elif place == ["System", name] and name in _SYSTEM_ATTRIBUTES:
            attribute, field = _SYSTEM_ATTRIBUTES[name]
            setattr(self.events[-1], field, attributes.get(attribute))

    def _end(self, name):
        start = self._starts.pop()
        place = self._path[_DEPTH_OF_EVENT:]
        is_event = len(self._path) == _DEPTH_OF_EVENT
        self._path.pop()
        if place == ["System", name] and name in _SYSTEM_TEXTS:
            setattr(self.events[-1], _SYSTEM_TEXTS[name], self._text_from(start))
        elif place == ["RenderingInfo", "Message"]:
            self.events[-1].message = self._text_from(start)
        elif place == ["RenderingInfo"]:
            self._rendering = (start, self._end_of_element(start))
        elif is_event:
            self.events[-1].xml = self._xml(start, self._end_of_element(start))

    def _behind_start_tag(self, start):
        return self._content.index(b">", start) + 1

    def _is_short(self, start):
        return self._content.startswith(b"/>", self._behind_start_tag(start) - 2)

    def _end_of_element(self, start):
        """Returns the offset after the element that just ended. The parser is at its end tag."""
        if self._is_short(start):
            return self._behind_start_tag(start)
        return self._content.index(b">", self._parser.CurrentByteIndex) + 1

    def _text_from(self, start):
        """Returns the text of the element that just ended."""
        if self._is_short(start):
            return ""
        inside = self._content[self._behind_start_tag(start) : self._parser.CurrentByteIndex]
        return unescape(inside.decode())

    def _xml(self, start, end):
        if not self._rendering:
            return self._content[start:end].decode()
        without, behind = self._rendering
        return (self._content[start:without] + self._content[behind:end]).decode()
