"""Events listed one by one: legal but rare forms, and events of other computers."""

from dataclasses import replace

from .providers import PLAIN_KEYWORDS, PROVIDERS
from .recording import Event
from .row import CRITICAL, ERROR, FAILURE, INFORMATION, SUCCESS, VERBOSE, WARNING
from .values import SYSTEM_SID, guid_of

_PROBE = PROVIDERS["Lantern-Diagnostics-Probe"]
_PROBE_CHANNEL = "Lantern-Diagnostics-Probe/Operational"

_LONG_LINE = "0123456789abcdef" * 640  # 10 KB
_MANY_LINES = "\n".join(f"Sensor {n:03d}: {n * 37 % 100} °C" for n in range(1, 181))


def _data(*pairs, attributes=""):
    items = "".join(f"<Data Name='{name}'>{value}</Data>" for name, value in pairs)
    return f"<EventData{attributes}>{items}</EventData>"


_STEP = _data(("Step", "1"))

# The special property of each probe event. The program shows the values of an event without a message,
# so these events test the display of values.
_PROBE_EVENTS = (
    # No message: the program shows the values unchanged from the XML.
    dict(payload=_data(("First", "two values"), ("Second", "in a row"))),
    dict(payload="<EventData><Data Name='Empty'/><Data Name='Next'>after it</Data></EventData>"),
    dict(payload="<EventData><Data Name='Only'/></EventData>"),
    dict(payload=_data(("Markup", "a &lt; b &amp;&amp; b &gt; c, &quot;q&quot; &apos;a&apos;"))),
    dict(payload=_data(("Lines", "first\r\nsecond\r\n"), ("Feeds", "first\nsecond\n\n"))),
    dict(payload=_data(("Returns", "first\rsecond\r"), ("Ends", "\r\n\r\n"), ("Last", "end"))),
    dict(payload=_data(("Twice", "the same"), ("Twice", "the same"))),
    dict(payload=_data(("Blank", " "), ("Tab", "\tindented"), ("Empty", ""))),
    dict(payload=_data(("Hidden", "not shown"), attributes=" Name='PROBE_STEP'")),
    dict(payload="<EventData></EventData>"),
    dict(payload="<EventData/>"),
    dict(payload=""),
    dict(payload="<EventData><Data>unnamed</Data><Data></Data><Binary>0001FE</Binary></EventData>"),
    dict(payload="<EventData><Binary>4C414E5445524E</Binary></EventData>"),
    dict(payload="<UserData><Step xmlns='urn:lantern:probe'><Number>4</Number></Step></UserData>"),
    dict(payload="<UserData><Step xmlns='urn:lantern:probe'><Data>a value</Data>"
                 "<DataSource>a longer name</DataSource><Data>one more</Data></Step></UserData>"),
    dict(payload=_data(("Nested", "kept <b>as</b> it is"))),
    dict(payload=_data(("Long", _LONG_LINE))),
    dict(payload=_data(("Table", _MANY_LINES.replace("\n", "\r\n")))),
    dict(payload=_data(("Control", "bell \ufffd and zero \ufffd"), ("Emoji", "🧭 𝔸 ﬀ e\u0301"))),
    dict(payload=_data(("Right", "\u200fשלום, عالم\u200e, and back"))),
    dict(payload=_data(("Reference", "A&#66;C&#x20AC;"), ("ReferencedLineEnds", "x&#13;&#10;"))),
    # Levels and keywords.
    dict(level=CRITICAL, message="The probe lost its power supply."),
    dict(level=VERBOSE, message="The probe counted 12 ticks."),
    dict(level=0, message="The probe said nothing about the level."),
    dict(level=0, keywords=SUCCESS, message="The probe was let in."),
    dict(level=0, keywords=FAILURE, message="The probe was turned away."),
    dict(level=0, keywords=SUCCESS | FAILURE, message="The probe was both let in and turned away."),
    dict(level=0, keywords=SUCCESS & ~PLAIN_KEYWORDS, message="The top bit is missing."),
    dict(level=WARNING, keywords=SUCCESS, message="The probe was let in, with a warning."),
    dict(level=6, message="The probe used level 6."),
    dict(level=7, message="The probe used level 7."),
    dict(level=8, message="The probe used level 8."),
    dict(level=16, message="The probe used level 16."),
    dict(level=255, message="The probe used the highest level."),
    # Extreme numbers, names and times.
    dict(event_id=0, process=(0, 0), message="The probe has no process."),
    dict(event_id=65535, process=(4294967295, 4294967295), message="These are the highest."),
    dict(level=ERROR, version=None, opcode=None, process=None,
         message="The probe has no process id at all."),
    dict(provider="Lantern-Diagnostics-Probe-", payload=_STEP),
    dict(provider="Lantern/Probe-A", payload=_STEP),
    dict(provider="Lantern's \"odd\" <provider> & sons", payload=_STEP),
    dict(provider="Lantern-" + "Very-" * 24 + "Long", payload=_STEP),
    dict(provider="灯台-診断", payload=_STEP),
    dict(time="2025-11-09T23:59:59.999Z", message="The probe's clock knows milliseconds."),
    dict(time="2025-11-10T00:00:00.000000001Z", message="The probe's clock knows nanoseconds."),
    dict(time="2025-10-01T04:05:06.0000000Z", message="The probe's clock had been set back."),
    dict(time="2025-11-10T07:00:00Z", message="The probe's clock knows whole seconds."),
    dict(user="S-1-5-20", activity=guid_of("activity"), message="The probe took part in it."),
    # Messages.
    dict(message="One line.\n\nAfter an empty one.\n"),
    dict(message=_MANY_LINES),
    dict(message=_LONG_LINE),
    dict(message="a < b && b > c \"quoted\" 'twice'"),
    dict(message="Left \u200eto\u200e right, \u202bימין לשמאל\u202c, and \u2067عربي\u2069 inside."),
)

_FIRST_PROBE_RECORD = 4_294_967_290  # the ids pass 32 bits


def _probe_log():
    base = Event(
        provider=_PROBE.name, event_id=500, level=INFORMATION, keywords=PLAIN_KEYWORDS,
        time="", record_id=0, channel=_PROBE_CHANNEL, payload=_STEP, guid=_PROBE.guid,
        process=(_PROBE.process_id, 5120), user=SYSTEM_SID,
    )
    for index, fields in enumerate(_PROBE_EVENTS):
        event = replace(
            base,
            event_id=500 + index,
            record_id=_FIRST_PROBE_RECORD + index,
            time=f"2025-11-08T09:{index:02d}:{index * 7 % 60:02d}.5000000Z",
        )
        other = fields.get("provider")
        yield replace(event, guid=guid_of(other) if other else event.guid, **fields)


def _forwarded(day, computer, provider, event_id, level, fraction, payload, message):
    return Event(
        provider=provider, event_id=event_id, level=level, keywords=PLAIN_KEYWORDS,
        time=f"2025-11-{day:02d}T18:20:07.{fraction}Z", record_id=0, channel="ForwardedEvents",
        payload=payload, message=message, guid=guid_of(provider), process=(1208, 4410),
        computer=computer,
    )


# Forwarded by the other computers of the network.
_FORWARDED = (
    _forwarded(2, "HEDGEROW", "Microsoft-Windows-Kernel-General", 12, INFORMATION, "1200000",
               _data(("Date", "2025-11-02")), "The operating system started at 2025-11-02."),
    _forwarded(3, "laptop-bjarne", "Alder-Sync", 7, WARNING, "482137905",
               _data(("Document", "Facture d'été.odt")),
               "« Facture d’été.odt » a été modifié à deux endroits. "
               "Les deux versions ont été gardées."),
    _forwarded(4, "HEDGEROW", "Microsoft-Windows-Ntfs", 55, ERROR, "0310000",
               _data(("Volume", "E:")), "A damage was found in the file system of the volume E:."),
    _forwarded(4, "laptop-bjarne", "Pinnacle-Docking-Station", 3, INFORMATION, "770000000",
               _data(("Port", "4"), ("Reason", "unplugged")), None),
    _forwarded(9, "HEDGEROW", "Harbor-Backup-Agent", 300, ERROR, "5500000",
               _data(("Share", r"\\KESTREL\backup")),
               "The backup of E:\\ failed.\n\nThe target \\\\KESTREL\\backup did not answer."),
)

LOGS = {
    _PROBE_CHANNEL: tuple(_probe_log()),
    "ForwardedEvents": tuple(
        replace(event, record_id=41 + index) for index, event in enumerate(_FORWARDED)
    ),
}
