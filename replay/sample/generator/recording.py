"""Writes events and channels in the form of a recording: see replay/README.md."""

from dataclasses import dataclass
from datetime import datetime, timedelta

NAMESPACE = "http://schemas.microsoft.com/win/2004/08/events/event"
COMPUTER = "KESTREL"

# Characters that XML does not allow. A recording contains U+FFFD instead.
_UNPRINTABLE = {code: "\ufffd" for code in range(32) if chr(code) not in "\t\n\r"}


@dataclass(frozen=True)
class Event:
    """One event. A field that is None or empty is omitted from the XML."""

    provider: str
    event_id: int
    level: int
    keywords: int
    time: str  # in the form of SystemTime
    record_id: int
    channel: str
    payload: str  # the XML after <System>
    message: str | None = None
    guid: str | None = None
    event_source: str | None = None
    qualifiers: int | None = None
    version: int | None = 0
    opcode: int | None = 0
    task: int = 0
    activity: str | None = None
    process: tuple[int, int] | None = None  # process and thread id
    user: str | None = None
    computer: str = COMPUTER


def text_xml(text):
    """Escapes the text of an element."""
    text = text.translate(_UNPRINTABLE)
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def attribute_xml(name, value):
    """Returns a blank and an attribute in single quotes, or "" if the value is None."""
    if value is None:
        return ""
    return f" {name}='{text_xml(str(value)).replace(chr(39), '&apos;')}'"


def system_time(first_day, ticks):
    """Formats a time with seven fraction digits, as current Windows versions do. Ticks are 100 ns."""
    seconds, fraction = divmod(ticks, 10_000_000)
    moment = datetime.fromisoformat(first_day) + timedelta(seconds=seconds)
    return f"{moment:%Y-%m-%dT%H:%M:%S}.{fraction:07d}Z"


def _element(name, value):
    return "" if value is None else f"<{name}>{value}</{name}>"


def _system_xml(event):
    provider = (
        attribute_xml("Name", event.provider)
        + attribute_xml("Guid", event.guid)
        + attribute_xml("EventSourceName", event.event_source)
    )
    parts = [
        f"<Provider{provider}/>",
        f"<EventID{attribute_xml('Qualifiers', event.qualifiers)}>{event.event_id}</EventID>",
        _element("Version", event.version),
        _element("Level", event.level),
        _element("Task", event.task),
        _element("Opcode", event.opcode),
        _element("Keywords", f"0x{event.keywords:x}"),
        f"<TimeCreated SystemTime='{event.time}'/>",
        _element("EventRecordID", event.record_id),
    ]
    if event.process:
        process, thread = event.process
        parts.append(f"<Correlation{attribute_xml('ActivityID', event.activity)}/>")
        parts.append(f"<Execution ProcessID='{process}' ThreadID='{thread}'/>")
    parts += [
        _element("Channel", text_xml(event.channel)),
        _element("Computer", text_xml(event.computer)),
        f"<Security{attribute_xml('UserID', event.user)}/>",
    ]
    return "<System>" + "".join(parts) + "</System>"


def event_xml(event):
    """Returns the <Event> element. Its message has CR LF line breaks."""
    rendering = ""
    if event.message is not None:
        message = text_xml(event.message).replace("\n", "\r\n")
        rendering = f"<RenderingInfo Culture='en-US'><Message>{message}</Message></RenderingInfo>"
    return f"<Event xmlns='{NAMESPACE}'>{_system_xml(event)}{event.payload}{rendering}</Event>"


def event_file(events):
    """Returns the bytes of a channel's file."""
    lines = ["<Events>", *map(event_xml, events), "</Events>", ""]
    return "\r\n".join(lines).encode("utf-8")


def channel_file_name(path):
    """Returns the name of a channel's file."""
    return path.replace("/", "%4") + ".xml"


def channels_file(channels):
    """Returns the bytes of channels.xml, sorted by name."""
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "<channels>"]
    for channel in sorted(channels, key=lambda channel: channel.name.encode("utf-16-be")):
        access = f' access="{channel.access}"' if channel.access else ""
        lines.append(
            f'  <channel name="{_quoted(channel.name)}" type="{channel.type}"'
            f' owningPublisher="{_quoted(channel.publisher)}"'
            f' enabled="{"true" if channel.enabled else "false"}"{access}/>'
        )
    return "\n".join([*lines, "</channels>", ""]).encode("utf-8")


def _quoted(text):
    return text_xml(text).replace('"', "&quot;")
