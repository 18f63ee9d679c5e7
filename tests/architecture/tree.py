# SPDX-License-Identifier: Apache-2.0
"""A small tree in which a test of a rule writes what the rule must find."""

import shutil
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DOCUMENT = """
| Tier | Libraries | May use |
|---|---|---|
| 0 | `Low` | Qt only |
| 1 | `Middle`, `Other` | 0 |

Layers: `client/` < `editor/`

| Folder | May use |
|---|---|
| `server/base/` | – |
| `server/http/` | `base/` |
| `server/app/` | all above |
"""


class TreeTestCase(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.root)
        self.write("docs/architecture.md", DOCUMENT)
        for folder in ("platform/Low", "platform/Middle", "platform/Other", "client", "editor", "server", "workstation"):
            (self.root / folder).mkdir(parents=True)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def assert_found(self, found, part):
        self.assertEqual(len(found), 1, found)
        self.assertIn(part, found[0])
