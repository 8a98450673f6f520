"""The rows of the event tables."""

from dataclasses import dataclass

CRITICAL, ERROR, WARNING, INFORMATION, VERBOSE = 1, 2, 3, 4, 5
AUDIT = 0  # an audit has no level; its keywords contain the outcome

SUCCESS = 0x8020000000000000
FAILURE = 0x8010000000000000

# The forms of an event's values.
DATA, ATTRIBUTED, USER_DATA = "EventData", "EventData with attributes", "UserData"


@dataclass(frozen=True)
class Row:
    """One kind of event. {Name} in the message is replaced by the value of that name."""

    provider: str
    event_id: int
    level: int
    values: str = ""  # names from generator/values.py, in order
    message: str | None = None
    weight: int = 1
    keywords: int | None = None  # None: the provider's keywords
    task: int = 0
    form: str = DATA
    root: str = ""  # the element within UserData, or the name of the attributed EventData
    binary: bool = False
    of_a_user: bool = False  # logged on behalf of one of the users


@dataclass(frozen=True)
class Burst:
    """Rows whose events follow each other within seconds."""

    rows: tuple[Row, ...]
    weight: int = 1


@dataclass(frozen=True)
class Log:
    """The events of one channel."""

    channel: str
    first_record_id: int
    count: int
    first_day: str
    last_day: str
    kinds: tuple[Row | Burst, ...]
