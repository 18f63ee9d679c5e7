# SPDX-License-Identifier: Apache-2.0
"""House rules that a text search can keep: no string connects, no fixed waits, no file that is many rooms."""

import re
from pathlib import Path

FOLDERS = ("platform", "editor", "client", "pages", "release", "server", "workstation", "tests", "benchmarks")
LONGEST_FILE = 450  # of the product; a test may tell a longer story
LONGEST_TEST = 600
# Files that wait a fixed time on purpose, and why.
WAITS = {
    "platform/WbSystem/src/FileLock.cpp": "looks again: the system tells nobody that a lock was let go",
    "tests/e2e/TourDriver.cpp": "looks from a second thread again and again until a state holds",
    "tests/server/tst_crash.cpp": "draws the random moment of a kill",
}
RULES = (
    (re.compile(r"\b(SIGNAL|SLOT)\("), "connects by string; use member-function pointers"),
    (re.compile(r"\bqWait\(|QThread::[mu]?sleep\(|\bthis_thread::sleep_"), "waits a fixed time; wait for a state"),
    (re.compile(r"\bQ_FOREACH\b|\bforeach\s*\("), "uses foreach; use a range-based for"),
)


def findings(root):
    found = []
    for folder in FOLDERS + ("resources",):
        for path in sorted((root / folder).rglob("*")):
            if not path.name.isascii():
                found.append(f"{ascii(path.name)}: its name gets lost where a system has no locale; use ASCII")
            if path.suffix in (".cpp", ".h"):
                found += check_file(path, path.relative_to(root))
    return found


def check_file(path, name):
    lines = path.read_text(encoding="utf-8").splitlines()
    found = []
    for number, line in enumerate(lines, 1):
        for rule, text in RULES:
            if rule.search(line) and not (text.startswith("waits") and str(name) in WAITS):
                found.append(f"{name}:{number}: {text}")
    longest = LONGEST_TEST if name.parts[0] == "tests" else LONGEST_FILE
    if len(lines) > longest:
        found.append(f"{name}: {len(lines)} lines; more than {longest} is more than one room")
    return found
