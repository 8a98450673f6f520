#!/usr/bin/env python3
"""Checks that the files which documents and comments name exist.

Checks every path that begins with a folder of the repository, every name with the suffix of a
source file, and in a document's code spans every file name. A name may lack the first folders of
its path. "*" matches anything, and so does NAME, which the reader replaces. Prints every name
without a file; exits with 1 if there is one.
"""

import fnmatch
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
NOT_OURS = {".git", "build", "__pycache__"}
DATA = "tests/fuzz/corpus/"

# The comment marker of each file suffix. Documents, and Python with its docstrings, are read whole.
COMMENTS = {".md": "", ".py": "", ".cpp": "//", ".h": "//", ".rc": "//", ".mjs": "//"}
COMMENTS.update(dict.fromkeys(("", ".cmake", ".ps1", ".sh", ".txt", ".yml"), "#"))

CODE_SPAN = re.compile(r"`([^`]+)`")
FILE_NAME = re.compile(
    r"(?<![\w./*-])(?!build/)[\w./*-]+\.(?:cmake|cpp|h|json|md|png|ps1|py|rc|sh|svg|txt|yml)(?!\w)"
)
SOURCE_NAME = re.compile(r'(?<!")\b\w+\.(?:cpp|py|sh)\b(?!")')  # in quotes it is code


def read_tree(folder):
    """The files and folders below a folder, as paths from the root."""
    for path in sorted(folder.iterdir()):
        if path.name not in NOT_OURS:
            yield path.relative_to(ROOT).as_posix()
            if path.is_dir():
                yield from read_tree(path)


def prose(name):
    """The documents' text and the comments of a file, by line number."""
    path = ROOT / name
    if path.is_dir() or path.suffix not in COMMENTS or name.startswith(DATA):
        return
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        start = line.find(COMMENTS[path.suffix])
        if start >= 0:
            yield number, line[start:].replace("\\", "/")  # Windows' separator


def missing_names(tree):
    tops = "|".join(re.escape(name) for name in tree if "/" not in name)
    path_from_root = re.compile(rf"(?<![\w./}}>*-])(?:{tops})/[\w./*%-]*")
    known = ["/" + name for name in tree] + ["/" + name.removesuffix(".in") for name in tree]

    def is_there(pattern):
        return fnmatch.filter(known, pattern.rstrip("./").replace("NAME", "*"))

    for file in tree:
        for number, text in prose(file):
            names = SOURCE_NAME.findall(text)
            if file.endswith(".md"):
                names = FILE_NAME.findall(" ".join(CODE_SPAN.findall(text)))
            patterns = ["/" + name for name in path_from_root.findall(text)]
            patterns += ["*/" + name.removeprefix("./") for name in names]
            for pattern in patterns:
                if not is_there(pattern):
                    yield f"{file}:{number}: there is no {pattern.lstrip('*/')}"


def main():
    found = list(missing_names(list(read_tree(ROOT))))
    print("\n".join(found), file=sys.stderr, end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
