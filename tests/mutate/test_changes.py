# SPDX-License-Identifier: Apache-2.0
"""Changes that people wrote down, and those that nobody can notice."""

import tempfile
import unittest
from pathlib import Path

import paths
from changes import Change, Equivalents, from_patches, of_span

SOURCE = "void f()\n{\n    One();\n    Two();\n    Two();\n}\n"


class Lists(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def write(self, text, name="list.txt"):
        (self.folder / name).write_text(text, encoding="utf-8")

    def patches(self):
        return from_patches(self.folder, lambda file: SOURCE)

    def test_an_entry_replaces_its_lines_with_their_indent(self):
        self.write("# why\na.cpp: calls three instead\n- One();\n- Two();\n+ Three();\n")
        (change,) = self.patches()
        self.assertEqual(change.operator, "patch: calls three instead")
        self.assertEqual(change.apply(SOURCE), "void f()\n{\n    Three();\n    Two();\n}\n")

    def test_lines_can_be_taken_away(self):
        self.write("a.cpp: does not call one\n- One();\n+\n")
        self.assertNotIn("One", self.patches()[0].apply(SOURCE))

    def test_lines_that_are_not_there_any_more_are_an_error(self):
        self.write("a.cpp: calls four\n- Three();\n+ Four();\n")
        self.assertRaisesRegex(ValueError, "calls four.* 0 times", self.patches)

    def test_lines_that_stand_there_twice_are_an_error(self):
        self.write("a.cpp: calls four\n- Two();\n+ Four();\n")
        self.assertRaisesRegex(ValueError, "2 times", self.patches)

    def test_an_entry_without_words_is_an_error(self):
        self.write("- Two();\n+ Four();\n\nnonsense\n")
        self.assertRaises(ValueError, self.patches)

    def test_an_equivalent_is_known_wherever_it_moved(self):
        self.write("a.cpp: nobody hears the order\n- One();\n- Two();\n+ Two();\n+ One();\n", "equivalent.txt")
        equivalents = Equivalents(self.folder / "equivalent.txt")
        old, new = "    One();\n    Two();", "    Two();\n    One();"
        self.assertEqual(equivalents.reason(Change("a.cpp", 7, "any", old, new)), "nobody hears the order")
        self.assertIsNone(equivalents.reason(Change("b.cpp", 7, "any", old, new)))
        self.assertIsNone(equivalents.reason(Change("a.cpp", 7, "any", old, old)))


class Keys(unittest.TestCase):
    def test_stay_when_other_lines_come_and_go(self):
        start = SOURCE.index("One")
        before = of_span(SOURCE, "a.cpp", "x", start, start + 3, "Six")
        after = of_span("\n\n" + SOURCE, "a.cpp", "x", start + 2, start + 5, "Six")
        self.assertNotEqual(before.line, after.line)
        self.assertEqual(before.key, after.key)


class TheTree(unittest.TestCase):
    def test_every_patch_fits_the_code(self):
        read = lambda file: (paths.ROOT / file).read_text(encoding="utf-8")
        self.assertGreater(len(from_patches(paths.TOOL / "patches", read)), 0)

    def test_every_equivalent_names_lines_that_are_there(self):
        for entry in Equivalents(paths.TOOL / "equivalent.txt").entries:
            lines = [line.strip() for line in (paths.ROOT / entry.file).read_text(encoding="utf-8").split("\n")]
            for line in entry.old.split("\n"):
                self.assertIn(line.strip(), lines, entry)


if __name__ == "__main__":
    unittest.main()
