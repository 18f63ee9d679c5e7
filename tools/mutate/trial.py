# SPDX-License-Identifier: Apache-2.0
"""Tries one change: the tests run until the first of them fails."""

import os
import selectors
import signal
import subprocess
import time
from collections import defaultdict
from dataclasses import dataclass

from build import DoesNotCompile

NOTICED, TIMEOUT, SURVIVED = "noticed", "timeout", "survived"
INVALID, SAME_CODE = "does not compile", "same code"


@dataclass
class Outcome:
    kind: str
    test: str = ""  # the program that noticed
    words: str = ""  # its first complaint
    seconds: float = 0.0


class Order:
    """Which test is likely to notice a change of a file, learnt from what noticed earlier ones."""

    def __init__(self, tests, seconds):
        self.tests, self.seconds = tests, seconds
        self.hits = defaultdict(int)

    def learn(self, file, test):
        self.hits[file, test] += 1

    def of(self, file):
        def worth(test):
            hits = self.hits[file, test.name] + (0.2 if test.uses_objects else 0.1)
            return hits / (0.5 + self.seconds.get(test.name, 1.0))

        return sorted(self.tests, key=worth, reverse=True)


def run_test(bench, test, program, library, limit):
    """Runs one test program until it ends, complains or takes too long."""
    environment = {**os.environ, **bench.environment_for(test)}
    if library:
        environment["LD_LIBRARY_PATH"] = str(library)
    began = time.monotonic()
    process = subprocess.Popen(
        [str(program)], cwd=bench.folder, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
        stdin=subprocess.DEVNULL, start_new_session=True,
    )  # fmt: skip
    try:
        complaint = _read(process, began + limit)
    finally:
        _end_group(process)
    seconds = time.monotonic() - began
    if complaint is None:
        return Outcome(TIMEOUT, test.name, f"longer than {limit:.0f} s", seconds)
    if complaint or process.returncode != 0:
        return Outcome(NOTICED, test.name, complaint or f"ended with {process.returncode}", seconds)
    return Outcome(SURVIVED, test.name, "", seconds)


def try_change(bench, change, read, base_objects, order, limits):
    """What becomes of a change."""
    began = time.monotonic()

    def outcome(kind, test="", words=""):
        return Outcome(kind, test, words, time.monotonic() - began)

    try:
        changed = bench.compile(change.file, change.apply(read(change.file)))
    except DoesNotCompile:
        return outcome(INVALID)
    if changed == base_objects.get(change.file):
        return outcome(SAME_CODE)
    for test in order.of(change.file):
        program, library = bench.program_of(test)
        if program is None:
            continue
        result = run_test(bench, test, program, library, limits(test.name))
        if result.kind != SURVIVED:
            order.learn(change.file, test.name)
            return outcome(result.kind, test.name, result.words)
    return outcome(SURVIVED)


# The first complaint, an empty text when there is none, nothing when the time is over. A failed program is not
# heard to its end.
def _read(process, until):
    heard = b""
    with selectors.DefaultSelector() as selector:
        selector.register(process.stdout, selectors.EVENT_READ)
        while True:
            left = until - time.monotonic()
            if left <= 0 or not selector.select(left):
                return None
            part = os.read(process.stdout.fileno(), 65536)
            if not part:
                process.wait()
                return ""
            heard += part
            *lines, heard = heard.split(b"\n")
            for line in lines:
                if line.startswith((b"FAIL!", b"XPASS", b"QFATAL")):
                    return line.decode(errors="replace")


def _end_group(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()
    process.stdout.close()
