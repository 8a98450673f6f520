#!/usr/bin/python3
"""Computes the tree that the program must show for a recording.

    expected_tree.py RECORDING_DIR OUT_FILE

Writes a line for each item in display order (see lines_file.py): depth, text, icon index and node id
(the path of a channel). The order of siblings with equal texts is undefined; they are sorted here by
id.
"""

import sys
from dataclasses import dataclass, field

sys.dont_write_bytecode = True

from lines_file import write_lines
from recording import read_channels

CLASSIC = ("Application", "Security", "Setup", "System", "Forwarded Events")
MAX_PARTS = 3

# The icon of each kind of node.
ROOT, PUBLISHER, WINDOWS_LOGS, SERVICES_LOGS = 0, 1, 2, 3
CHANNEL_ICONS = {"Debug": 4, "Admin": 5, "Analytic": 6, "Operational": 7}


class InvalidNode(Exception):
    """The program stops filling the tree at a channel of unknown type."""


@dataclass
class Node:
    text: str
    id: str
    icon: int | None
    children: dict = field(default_factory=dict)

    def child(self, text, identity, icon):
        """Returns the child with this id and icon, creating it if necessary."""
        return self.children.setdefault((identity, icon), Node(text, identity, icon))


def publisher_parts(publisher):
    """Splits a publisher's name into at most three parts. Drops an empty part at the end."""
    parts = publisher.split("-", MAX_PARTS - 1)
    return parts if parts[-1] else parts[:-1]


def leaf_text(path, publisher):
    """Returns the text of a channel: the end of its path if the path begins with the publisher."""
    if not publisher or not path.startswith(publisher):
        return path
    for separator in "/-":
        if separator in path:
            return path.rpartition(separator)[2]
    return path


def build_tree(channels):
    root = Node("Event Viewer (Local)", "Event-Viewer-Local", ROOT)
    windows = root.child("Windows Logs", "Windows-Logs", WINDOWS_LOGS)
    services = root.child(
        "Applications and Service Logs", "Applications-And-Service-Logs", SERVICES_LOGS
    )
    for channel in channels:
        parts = publisher_parts(channel.publisher)
        first = parts[0] if channel.publisher else channel.path
        parent = windows if first in CLASSIC else services
        for index, part in enumerate(parts):
            parent = parent.child(part, "-".join(parts[: index + 1]), PUBLISHER)
        parent.child(
            leaf_text(channel.path, channel.publisher), channel.path, CHANNEL_ICONS.get(channel.type)
        )
    return root


def shown(node, depth=0):
    """Yields the items of a subtree. Siblings are in the order of their texts' UTF-16 code units."""
    if node.icon is None:
        raise InvalidNode(node.id)
    yield depth, node.text, node.icon, node.id
    order = sorted(
        node.children.values(), key=lambda child: (_units(child.text), _units(child.id))
    )
    for child in order:
        yield from shown(child, depth + 1)


def _units(text):
    return text.encode("utf-16-be", "surrogatepass")


def expected_tree(channels):
    items = []
    try:
        for item in shown(build_tree(channels)):
            items.append(item)
    except InvalidNode:
        pass  # the items before it are shown
    return items


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    recording, out = arguments
    write_lines(out, expected_tree(read_channels(recording)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
