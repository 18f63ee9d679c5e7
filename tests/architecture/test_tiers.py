# SPDX-License-Identifier: Apache-2.0
"""The architecture test, and tests of the test: each rule must find what it is there for."""

import unittest

import hygiene
import tiers
from tree import ROOT, TreeTestCase


class TheTree(unittest.TestCase):
    def test_every_include_is_allowed(self):
        self.assertEqual(tiers.findings(ROOT), [])

    def test_no_source_breaks_a_house_rule(self):
        self.assertEqual(hygiene.findings(ROOT), [])


class TheRules(TreeTestCase):
    def assert_finding(self, part):
        self.assert_found(tiers.findings(self.root), part)

    def test_a_clean_tree_has_no_findings(self):
        self.write("platform/Middle/src/a.cpp", '#include <Low/low.h>\n#include "a.h"\n')
        self.write("platform/Middle/src/a.h", "")
        self.write("editor/e.cpp", '#include "c.h"\n#include <Middle/m.h>\n')
        self.write("client/c.h", "")
        self.assertEqual(tiers.findings(self.root), [])

    def test_a_lower_tier_may_not_use_a_higher_one(self):
        self.write("platform/Low/src/a.cpp", "#include <Middle/m.h>\n")
        self.assert_finding("tier 0 may not use tier 1")

    def test_a_library_may_not_use_its_own_tier(self):
        self.write("platform/Middle/src/a.cpp", "#include <Other/o.h>\n")
        self.assert_finding("tier 1 may not use tier 1")

    def test_a_library_may_not_use_private_headers_of_another(self):
        self.write("platform/Low/src/low_p.h", "")
        self.write("platform/Middle/src/a.cpp", '#include "low_p.h"\n')
        self.assert_finding("private header")

    def test_a_lower_layer_may_not_use_a_higher_one(self):
        self.write("editor/e.h", "")
        self.write("client/c.cpp", '#include "e.h"\n')
        self.assert_finding("client/ may not use editor/")

    def test_the_workstation_sees_one_header_of_the_module(self):
        self.write("workstation/w.cpp", "#include <RpaEditorManager/Inside.h>\n")
        self.assert_finding("not the module's public header")

    def test_the_server_has_no_window(self):
        self.write("server/s.cpp", "#include <QWidget>\n")
        self.assert_finding("no window")

    def test_the_server_uses_tier_0_only(self):
        self.write("server/s.cpp", "#include <Middle/m.h>\n")
        self.assert_finding("tier 0 only")

    def test_a_library_without_a_tier_is_found(self):
        (self.root / "platform/New").mkdir()
        self.assert_finding("stands in no tier")

    def test_string_connects_and_fixed_waits_are_found(self):
        self.write("client/a.cpp", "connect(a, SIGNAL(x()), b, SLOT(y()));\n")
        self.write("tests/b.cpp", "QTest::qWait(100);\n")
        self.assertEqual(len(hygiene.findings(self.root)), 2)

    def test_a_file_name_beyond_ascii_is_found(self):
        self.write("resources/\u62a5\u8868", "")
        self.assertIn("ASCII", hygiene.findings(self.root)[0])

    def test_a_file_that_grew_too_long_is_found(self):
        self.write("client/long.cpp", "int x;\n" * (hygiene.LONGEST_FILE + 1))
        self.assertIn("lines", hygiene.findings(self.root)[0])


if __name__ == "__main__":
    unittest.main()
