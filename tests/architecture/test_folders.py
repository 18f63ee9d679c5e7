# SPDX-License-Identifier: Apache-2.0
"""The arrows between inner folders, and tests of the test: each rule must find what it is there for."""

import unittest

from folders import findings
from tree import DOCUMENT, ROOT, TreeTestCase


class TheTree(unittest.TestCase):
    def test_every_arrow_between_folders_is_allowed(self):
        self.assertEqual(findings(ROOT), [])


class TheRules(TreeTestCase):
    def setUp(self):
        super().setUp()
        for folder in ("base", "http", "app"):
            self.write(f"server/{folder}/{folder}.h", "")
        self.write("server/README.md", "`base/` `http/` `app/` `new/`")
        self.write("platform/Low/README.md", "`a/` `b/` `src/c/`")

    def assert_finding(self, part):
        self.assert_found(findings(self.root), part)

    def test_arrows_of_the_table_are_allowed(self):
        self.write("server/http/a.cpp", '#include "../base/base.h"\n#include "http.h"\n')
        self.write("server/app/a.cpp", '#include "../base/base.h"\n#include "../http/http.h"\n')
        self.write("server/main.cpp", '#include "app/app.h"\n')
        self.assertEqual(findings(self.root), [])

    def test_an_arrow_that_is_not_in_the_table_is_found(self):
        self.write("server/base/a.cpp", '#include "../http/http.h"\n')
        self.assert_finding("server/base may not use server/http/")

    def test_a_folder_without_a_row_is_found(self):
        self.write("server/new/a.cpp", "")
        self.assert_finding("server/new/: stands in no row")

    def test_a_row_that_names_a_folder_below_it_is_found(self):
        self.write("docs/architecture.md", DOCUMENT.replace("`server/base/` | –", "`server/base/` | `http/`"))
        self.assert_finding("cannot form a loop")

    def test_a_header_beside_the_folders_uses_none_of_them(self):
        self.write("server/shared.h", '#include "base/base.h"\n')
        self.write("server/http/a.cpp", '#include "../shared.h"\n')
        self.assert_finding("server/ may not use server/base/")

    def test_folders_of_a_library_that_use_each_other_are_found(self):
        self.write("platform/Low/src/a/a.h", '#include "b.h"\n')
        self.write("platform/Low/src/b/b.h", '#include "c.h"\n')
        self.write("platform/Low/src/c/c.h", "")
        self.assertEqual(findings(self.root), [])
        self.write("platform/Low/src/c/c.cpp", '#include "a.h"\n')
        self.assert_finding("a, b, c use each other in a circle")

    def test_a_folder_that_no_readme_explains_is_found(self):
        self.write("platform/Low/src/odd/odd.h", "")
        self.assert_finding("platform/Low/README.md: does not say what odd/ holds")

    def test_a_half_of_the_widget_that_calls_past_its_header_is_found(self):
        self.write("editor/RpaAppEditorMembers.h", "struct Members\n{\n    void ShowLine(int line);\n    int line = 0;\n};\n")
        self.write("release/a.cpp", "m->line = 1;\n")
        self.assertEqual(findings(self.root), [])
        self.write("release/b.cpp", "m->ShowLine(1);\n")
        self.assert_finding("through the widget's header")


if __name__ == "__main__":
    unittest.main()
