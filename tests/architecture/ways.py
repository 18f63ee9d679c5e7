# SPDX-License-Identifier: Apache-2.0
"""The files that docs/architecture.md names on the ways through the house are there."""

import re

HEADING = "## Three ways through the house"


def is_there(root, name):
    """`server/http/Connection` or `RpaDrafts/DraftFile`: a file of that name anywhere in that folder."""
    folder, file = name.rsplit("/", 1)
    for base in (root / folder, root / "platform" / folder):
        for pattern in (f"{file}.cpp", f"{file}.h", f"{file}_p.h", file):
            if any(base.rglob(pattern)):
                return True
    return False


def findings(root):
    _, _, ways = (root / "docs" / "architecture.md").read_text(encoding="utf-8").partition(HEADING)
    named = re.findall(r"`(\w[\w./]*/[\w.]+)`", ways)
    return [f"docs/architecture.md: {name} is not there any more" for name in named if not is_there(root, name)]
