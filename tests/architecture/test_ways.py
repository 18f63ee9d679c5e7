# SPDX-License-Identifier: Apache-2.0
"""The ways through the house, and a test of the test."""

import unittest

from tree import DOCUMENT, ROOT, TreeTestCase
from ways import HEADING, findings


class TheTree(unittest.TestCase):
    def test_every_file_on_the_ways_is_there(self):
        self.assertEqual(findings(ROOT), [])

    def test_there_are_ways(self):
        self.assertIn(HEADING, (ROOT / "docs" / "architecture.md").read_text(encoding="utf-8"))


class TheRules(TreeTestCase):
    def test_a_file_that_is_gone_is_found(self):
        self.write("platform/Low/src/inner/Here_p.h", "")
        self.write("server/base/Digest.cpp", "")
        self.write("docs/architecture.md", f"{DOCUMENT}\n{HEADING}\n| `Low/Here` | `server/base/Digest` |\n| `Low/Gone` |\n")
        self.assert_found(findings(self.root), "Low/Gone is not there")


if __name__ == "__main__":
    unittest.main()
