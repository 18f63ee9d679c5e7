# SPDX-License-Identifier: Apache-2.0
"""What was found out so far, kept line by line so that an interrupted run goes on; and the table of it."""

import json
from collections import defaultdict
from pathlib import Path

from trial import INVALID, NOTICED, SAME_CODE, SURVIVED, TIMEOUT


class Results:
    def __init__(self, path):
        self.path = Path(path)
        self.by_key = {}
        if self.path.exists():
            for line in self.path.read_text(encoding="utf-8").splitlines():
                if line.endswith("}"):  # the last line may have been cut off
                    record = json.loads(line)
                    self.by_key[record["key"]] = record

    def add(self, change, outcome):
        record = {
            "key": change.key, "file": change.file, "line": change.line, "operator": change.operator,
            "outcome": outcome.kind, "test": outcome.test, "words": outcome.words,
            "seconds": round(outcome.seconds, 1), "old": change.old, "new": change.new,
        }  # fmt: skip
        self.by_key[change.key] = record
        self.path.parent.mkdir(parents=True, exist_ok=True)
        with self.path.open("a", encoding="utf-8") as file:
            file.write(json.dumps(record, ensure_ascii=False) + "\n")

    def outcome_of(self, change):
        record = self.by_key.get(change.key)
        return record["outcome"] if record else None

    def teach(self, order):
        for record in self.by_key.values():
            if record["outcome"] in (NOTICED, TIMEOUT) and record["test"]:
                order.learn(record["file"], record["test"])


def table(changes, results, equivalents):
    """The table by file as text, and the survivors."""
    rows = defaultdict(lambda: defaultdict(int))
    survivors = []
    for change in changes:
        kind = results.outcome_of(change)
        if kind is None or kind == INVALID:
            continue
        if kind == SURVIVED and equivalents.reason(change):
            kind = "equivalent"
        rows[change.file][kind] += 1
        if kind == SURVIVED:
            survivors.append(change)
    total = defaultdict(int)
    for row in rows.values():
        for kind, count in row.items():
            total[kind] += count
    lines = [_line("file", "tried", "noticed", "(timeouts)", "equivalent", "survived", "noticed of the rest")]
    lines += [_counts(file, rows[file]) for file in sorted(rows)]
    lines.append(_counts("all", total))
    return "\n".join(lines), survivors


def _counts(name, row):
    tried = sum(row.values())
    noticed = row[NOTICED] + row[TIMEOUT]
    equivalent = row["equivalent"] + row[SAME_CODE]
    share = f"{100 * noticed / (tried - equivalent):.1f} %" if tried > equivalent else "-"
    return _line(name, tried, noticed, row[TIMEOUT], equivalent, row[SURVIVED], share)


def _line(name, *cells):
    return f"{name:42}" + "".join(f"{cell!s:>12}" for cell in cells[:-1]) + f"{cells[-1]:>21}"
