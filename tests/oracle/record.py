"""Computes what the program stores of an event and shows in a row of the event list."""

import re
import time
from datetime import datetime, timedelta

LEVEL_NAMES = (
    "Information", "Critical", "Error", "Warning", "Information", "Verbose",
    "Audit Success", "Audit Failure",
)
LEVEL_ABOVE_TABLE = "Unknown"
ICONS = {0: 0, 4: 0, 3: 1, 2: 2, 6: 3, 7: 4}
NO_ICON = -1

AUDIT_SUCCESS, AUDIT_FAILURE = 0x8020000000000000, 0x8010000000000000
PROVIDER_NAME_UNITS = 127

_TIME = re.compile(r"(\d+)-(\d+)-(\d+)T(\d+):(\d+):(\d+)")


def level_code(event):
    """Returns the level. The level of an audit comes from its keywords."""
    level = int(event.level or 0)
    if level:
        return level
    keywords = int(event.keywords or "0", 16)
    for code, mask in ((6, AUDIT_SUCCESS), (7, AUDIT_FAILURE)):
        if keywords & mask == mask:
            return code
    return 0


def level_name(level):
    return LEVEL_NAMES[level] if level < len(LEVEL_NAMES) else LEVEL_ABOVE_TABLE


def local_time(event):
    """Formats the local time with today's UTC offset, even if another offset applied on that day."""
    match = _TIME.match(event.time or "1601-01-01T00:00:00")
    moment = datetime(*map(int, match.groups()))
    moment += timedelta(seconds=time.localtime().tm_gmtoff)
    return (
        f"{moment.day:02d}/{moment.month:02d}/{moment.year:02d} "
        f"{moment.hour:02d}:{moment.minute:02d}:{moment.second:02d}"
    )


def kept_provider(event):
    """Returns the provider's name, truncated to the size of the record's field."""
    units = (event.provider or "").encode("utf-16-le")[: 2 * PROVIDER_NAME_UNITS]
    return units.decode("utf-16-le", "surrogatepass")


def short_source(event):
    """Returns the last part of the whole provider's name."""
    name = event.provider or ""
    return name if "/" in name else name.rpartition("-")[2]


def cells(event):
    """Returns the cells of the event's row."""
    return [
        level_name(level_code(event)),
        local_time(event),
        short_source(event),
        str(int(event.event_id or 0)),
        str(int(event.process_id or 0)),
        str(int(event.record_id or 0)),
    ]


def icon(event):
    return ICONS.get(level_code(event), NO_ICON)
