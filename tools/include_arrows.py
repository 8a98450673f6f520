#!/usr/bin/env python3
"""Checks the include order of the source folders, and that includes form no cycle.

A folder may include only itself and the folders after it in its list. A header and its source count
as one file. Prints every violation and exits with 1 if there is one.
"""

import pathlib
import re
import sys

# In each list, a folder may include only itself and later folders.
ORDERS = {
    "src": [
        "ui",
        "ui/actions",
        "ui/controls",
        "ui/rules",
        "query",
        "eventlog/loading",
        "eventlog/details",
        "eventlog/channels",
        "eventlog/records",
        "eventlog/service",
        "diag",
        "base",
    ],
    "replay": [
        "api",
        "service",
        "script",
        "results",
        "recording",
        "xpath",
        "events",
        "calls",
        "platform",
        "text",
    ],
}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def read_includes(top):
    """Returns the files below top that each of them includes, by path relative to top."""
    files = {
        path.relative_to(top).as_posix(): path
        for path in sorted(top.rglob("*/*"))
        if path.suffix in (".h", ".cpp")
    }

    def included(path):
        for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            name = name.removeprefix(top.name + "/")  # replay/ is included from the root
            if name in files:
                yield name

    return {name: list(included(path)) for name, path in files.items()}


def folder_of(name):
    return pathlib.PurePosixPath(name).parent.as_posix()


def arrows_against(order, includes):
    for name, included in includes.items():
        if folder_of(name) not in order:
            yield f"{name}: its folder is not in the order"
            continue
        for other in included:
            if order.index(folder_of(other)) < order.index(folder_of(name)):
                yield f"{name} includes {other}: {folder_of(other)} is above {folder_of(name)}"


def subjects(includes):
    """Merges each header and its source into one node."""
    graph = {}
    for name, included in includes.items():
        stem = name.rsplit(".", 1)[0]
        others = {other.rsplit(".", 1)[0] for other in included} - {stem}
        graph.setdefault(stem, set()).update(others)
    return graph


def cycles(graph):
    """Yields a line for each cycle that a depth-first search finds."""
    state = {}

    def walk(node, path):
        state[node] = "open"
        for other in sorted(graph[node]):
            if state.get(other) == "open":
                yield " -> ".join(path[path.index(other) :] + [other])
            elif other not in state:
                yield from walk(other, path + [other])
        state[node] = "done"

    for node in sorted(graph):
        if node not in state:
            yield from walk(node, [node])


def violations(root):
    for top, order in ORDERS.items():
        includes = read_includes(root / top)
        yield from (f"{top}: {line}" for line in arrows_against(order, includes))
        yield from (f"{top}: cycle {line}" for line in cycles(subjects(includes)))


def main():
    found = list(violations(pathlib.Path(__file__).resolve().parent.parent))
    print("\n".join(found), file=sys.stderr, end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
