# SPDX-License-Identifier: Apache-2.0
"""A small change of the product's code, and the lists in which people write such changes down."""

import hashlib
from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True)
class Change:
    file: str  # below the root of the tree, with slashes
    line: int
    operator: str
    old: str  # whole lines, as they stand
    new: str

    @property
    def key(self):
        """Stays the same while other lines of the file come and go."""
        text = "\0".join((self.file, self.operator, trimmed(self.old), trimmed(self.new)))
        return hashlib.sha256(text.encode()).hexdigest()[:12]

    def apply(self, source):
        lines = source.split("\n")
        count = self.old.count("\n") + 1
        at = self.line - 1
        if "\n".join(lines[at : at + count]) != self.old:
            raise ValueError(f"{self.file}:{self.line} is not what it was")
        return "\n".join(lines[:at] + self.new.split("\n") + lines[at + count :])

    def as_text(self):
        old = "\n".join("- " + line for line in self.old.split("\n"))
        new = "\n".join("+ " + line for line in self.new.split("\n"))
        return f"{self.file}:{self.line} [{self.operator}]\n{old}\n{new}"


@dataclass(frozen=True)
class Entry:
    """One entry of a list: the file, what is replaced by what, and the words about it."""

    file: str
    words: str
    old: str
    new: str


def trimmed(text):
    return "\n".join(line.strip() for line in text.strip("\n").split("\n")).strip()


def of_span(source, file, operator, start, end, replacement):
    """The change that replaces source[start:end]."""
    begin = source.rfind("\n", 0, start) + 1
    stop = source.find("\n", end)
    stop = len(source) if stop < 0 else stop
    old = source[begin:stop]
    new = source[begin:start] + replacement + source[end:stop]
    return Change(file, source.count("\n", 0, begin) + 1, operator, old, new)


def read_entries(path):
    """The entries of a list; their form is told in README.md."""
    entries, words, old, new = [], None, [], []

    def finish():
        if words is not None:
            file, _, text = words.partition(": ")
            if not text or not old:
                raise ValueError(f"{path.name}: not an entry: {words}")
            entries.append(Entry(file, text.strip(), "\n".join(old), "\n".join(new)))

    for line in path.read_text(encoding="utf-8").split("\n"):
        if line.startswith("- ") or line == "-":
            old.append(line[2:])
        elif line.startswith("+ ") or line == "+":
            new.append(line[2:])
        elif line.startswith("  ") and words and not old:
            words += " " + line.strip()
        elif line and not line.startswith("#"):
            finish()
            words, old, new = line, [], []
    finish()
    return entries


def from_patches(folder, read):
    """The changes written down in a folder; an entry that does not fit the code any more is an error."""
    changes = []
    for path in sorted(Path(folder).glob("*.txt")):
        for entry in read_entries(path):
            source = read(entry.file)
            at = _find_once(source, entry, path.name)
            new = _with_indent_of(source, at, entry)
            changes.append(of_span(source, entry.file, f"patch: {entry.words}", at[0], at[1], new))
    return changes


def _find_once(source, entry, name):
    wanted = trimmed(entry.old).split("\n")
    lines = source.split("\n")
    places = [
        number
        for number in range(len(lines) - len(wanted) + 1)
        if [line.strip() for line in lines[number : number + len(wanted)]] == wanted
    ]
    if len(places) != 1:
        raise ValueError(f"{name}: {entry.file} has the lines of \"{entry.words}\" {len(places)} times")
    start = sum(len(line) + 1 for line in lines[: places[0]])
    end = start + sum(len(line) + 1 for line in lines[places[0] : places[0] + len(wanted)]) - 1
    return start, end


def _with_indent_of(source, at, entry):
    first = source[at[0] : at[1]]
    indent = first[: len(first) - len(first.lstrip())]
    return "\n".join(indent + line.strip() for line in entry.new.split("\n")) if entry.new else ""


class Equivalents:
    """The changes that nobody can notice, each with its reason."""

    def __init__(self, path):
        self.entries = read_entries(path) if path.exists() else []
        self._reasons = {(one.file, trimmed(one.old), trimmed(one.new)): one.words for one in self.entries}

    def reason(self, change):
        return self._reasons.get((change.file, trimmed(change.old), trimmed(change.new)))
