# SPDX-License-Identifier: Apache-2.0
"""Tells which of the wanted packages are there.

Reads [[name, version], ...] as JSON and writes [[installed version or "", fits], ...] in the same order. Runs in the
Python of the environment, or in the system's where there is no environment yet.
"""

import importlib.metadata
import json
import sys

try:
    from pip._vendor.packaging.version import Version
except ImportError:  # then versions must be spelled alike
    Version = str


def state(name, wanted):
    try:
        there = importlib.metadata.version(name)
    except importlib.metadata.PackageNotFoundError:
        return ["", False]
    if not there:
        return ["", False]
    if not wanted:
        return [there, True]
    try:
        return [there, Version(there) == Version(wanted)]
    except ValueError:
        return [there, there == wanted]


print(json.dumps([state(*package) for package in json.load(sys.stdin)]))
