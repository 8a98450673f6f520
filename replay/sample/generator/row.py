"""What a row of the event tables says."""

from dataclasses import dataclass

CRITICAL, ERROR, WARNING, INFORMATION, VERBOSE = 1, 2, 3, 4, 5
AUDIT = 0  # an audit has no level; its keywords say how it ended

SUCCESS = 0x8020000000000000
FAILURE = 0x8010000000000000

# The forms that the values of an event can take.
DATA, ATTRIBUTED, USER_DATA = "EventData", "EventData with attributes", "UserData"


@dataclass(frozen=True)
class Row:
    """One kind of event: {Name} in the message stands for the value of that name."""

    provider: str
    event_id: int
    level: int
    values: str = ""  # names of generator/values.py, in order
    message: str | None = None
    weight: int = 1
    keywords: int | None = None  # None: those of the provider
    task: int = 0
    form: str = DATA
    root: str = ""  # the element within UserData, or the name of the attributed EventData
    binary: bool = False
    of_a_user: bool = False  # written on behalf of one of the users


@dataclass(frozen=True)
class Burst:
    """Rows that follow each other within seconds."""

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
