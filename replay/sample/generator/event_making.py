"""Generates the events of a log from its rows."""

from datetime import date

from .dice import Dice
from .providers import PROVIDERS
from .recording import Event, attribute_xml, system_time, text_xml
from .row import ATTRIBUTED, ERROR, USER_DATA, WARNING, Burst
from .values import USER_SIDS, guid_of, make_values

_SECOND = 10_000_000  # in units of 100 ns
_HOUR = 3600 * _SECOND

# The hours of events. Working hours are repeated, so they are more likely than the night.
_BUSY_HOURS = (*range(24), *range(7, 22), *range(8, 18), *range(8, 18))


def make_log(log):
    """Returns the events of a log, oldest first."""
    dice = Dice(log.channel)
    rows = _choose_rows(log, dice)
    events = []
    record_id = log.first_record_id
    for row, time in zip(rows, _choose_times(log, rows, dice)):
        shown_time = system_time(log.first_day, time)
        events.append(_make_event(row, log.channel, record_id, shown_time, dice))
        record_id += 1 if not dice.one_in(90) else dice.between(2, 40)
    return events


def _choose_rows(log, dice):
    """Returns a row for each event of the log. The rows of a burst stay together."""
    weights = [kind.weight for kind in log.kinds]
    rows = []
    while len(rows) < log.count:
        kind = dice.pick_weighted(log.kinds, weights)
        rows += kind.rows if isinstance(kind, Burst) else (kind,)
    return rows[: log.count]


def _choose_times(log, rows, dice):
    """Returns ascending times over the days of the log, in units of 100 ns since its first day."""
    first, last = (date.fromisoformat(day) for day in (log.first_day, log.last_day))
    days = (last - first).days + 1
    times = sorted(
        (dice.below(days) * 24 + dice.pick(_BUSY_HOURS)) * _HOUR + dice.below(_HOUR)
        for _ in rows
    )
    _keep_bursts_together(log, rows, times, dice)
    for index in range(1, len(times)):
        times[index] = max(times[index], times[index - 1] + 1)
    return times


def _keep_bursts_together(log, rows, times, dice):
    """Moves each row of a burst to within two seconds after the previous one."""
    lengths = {kind.rows[0]: len(kind.rows) for kind in log.kinds if isinstance(kind, Burst)}
    for start, row in enumerate(rows):
        for index in range(start + 1, min(start + lengths.get(row, 1), len(rows))):
            times[index] = times[index - 1] + dice.between(1, 2 * _SECOND)


def _make_event(row, channel, record_id, time, dice):
    provider = PROVIDERS[row.provider]
    values = make_values(row.values, dice)
    return Event(
        provider=provider.name,
        event_id=row.event_id,
        level=row.level,
        keywords=provider.keywords if row.keywords is None else row.keywords,
        time=time,
        record_id=record_id,
        channel=channel,
        payload=_payload_xml(row, provider, values, dice),
        message=None if row.message is None else row.message.format(**dict(values)),
        guid=provider.guid,
        event_source=provider.event_source,
        qualifiers=_qualifiers(row, provider),
        version=None if provider.old else 0,
        opcode=None if provider.old else 0,
        task=row.task,
        activity=_activity(provider, record_id, dice),
        process=_process(provider, dice),
        user=_user(row, provider, dice),
    )


def _qualifiers(row, provider):
    """Returns the high word of a classic event's identifier. Its two highest bits are the severity."""
    if not provider.classic:
        return None
    return {ERROR: 0xC000, WARNING: 0x8000}.get(row.level, 0x4000)


def _process(provider, dice):
    if provider.old or provider.process_id is None:
        return None
    return provider.process_id, 4 * dice.between(30, 3000) if provider.process_id else 0


def _activity(provider, record_id, dice):
    if provider.classic or not dice.one_in(6):
        return None
    return guid_of(f"{provider.name} {record_id}")


def _user(row, provider, dice):
    if row.of_a_user:
        return dice.pick(tuple(USER_SIDS.values()))
    return provider.user


def _payload_xml(row, provider, values, dice):
    if row.form == USER_DATA:
        fields = "".join(f"<{name}>{text_xml(text)}</{name}>" for name, text in values)
        namespace = f"urn:{provider.name.lower().replace(' ', '-')}"
        return f"<UserData><{row.root} xmlns='{namespace}'>{fields}</{row.root}></UserData>"
    attributes = attribute_xml("Name", row.root) if row.form == ATTRIBUTED else ""
    items = "".join(
        f"<Data{'' if provider.classic else attribute_xml('Name', name)}>{text_xml(text)}</Data>"
        for name, text in values
    )
    binary = f"<Binary>{_binary(dice)}</Binary>" if row.binary else ""
    return f"<EventData{attributes}>{items}{binary}</EventData>"


def _binary(dice):
    return "".join(f"{dice.below(256):02X}" for _ in range(4 * dice.between(2, 10)))
