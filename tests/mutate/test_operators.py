# SPDX-License-Identifier: Apache-2.0
"""What the operators make of code, and what they leave alone."""

import unittest

import paths  # noqa: F401
import operators


def made(source, operator=None):
    """The new lines that the operators make, those of one operator if it is named."""
    changes = operators.all_changes("a.cpp", source)
    return [one.new.strip() for one in changes if operator in (None, one.operator)]


def in_function(*lines):
    return "void f()\n{\n" + "\n".join("    " + line for line in lines) + "\n}\n"


class Statements(unittest.TestCase):
    def test_a_call_is_removed(self):
        self.assertEqual(made(in_function("Run();"), "statement removed"), [""])

    def test_a_connection_is_removed_under_its_own_name(self):
        self.assertEqual(made(in_function("connect(a, &A::B, this, &C::D);"), "connection removed"), [""])

    def test_a_declaration_stays(self):
        for declaration in ("int value = Count();", "const QString name;", "auto* one = Make();"):
            self.assertEqual(made(in_function(declaration), "statement removed"), [])

    def test_the_body_of_a_condition_becomes_empty_not_the_next_statement(self):
        self.assertEqual(made(in_function("if (x)", "    Run();", "Stop();"), "statement removed"), [";", ""])

    def test_neighbours_are_swapped_within_their_block_only(self):
        source = in_function("One();", "Two();", "{", "    Three();", "}", "Four();")
        self.assertEqual(made(source, "statements swapped"), ["Two();\n    One();"])

    def test_connections_of_different_things_are_not_swapped(self):
        ours = "connect(a, &A::B, this, &C::D);"
        for other in ("connect(b, &A::B, this, &C::E);", "connect(a, qOverload<int>(&A::X), this, &C::D);"):
            self.assertEqual(made(in_function(ours, other), "statements swapped"), [])
        other = "connect(a, &A::B, this, &C::E);"
        self.assertEqual(made(in_function(ours, other), "statements swapped"), [f"{other}\n    {ours}"])
        self.assertNotEqual(made(in_function(ours, "disconnect(b, &A::B, this, &C::D);"), "statements swapped"), [])

    def test_plain_values_that_know_nothing_of_each_other_are_not_swapped(self):
        for pair in (("saving = false;", "bool good = true;"), ("auto* a = qobject_cast<A*>(x);", "m->b = c;")):
            self.assertEqual(made(in_function(*pair), "statements swapped"), [])
        for pair in (
            ("a = 1;", "b = a;"), ("a = b;", "b = 1;"), ("x->a = 1;", "y->a = 2;"), ("a = Next();", "b = 1;"),
            ("a = 1;", "Run();"), ("List<int> a = b;", "c = 1;"),
        ):  # fmt: skip
            self.assertEqual(len(made(in_function(*pair), "statements swapped")), 1, pair)

    def test_statements_of_a_lambda_are_found(self):
        self.assertIn("call([] {  });", made(in_function("call([] { Run(); });"), "statement removed"))

    def test_the_head_of_a_for_is_no_statement(self):
        source = in_function("for (int i = 0; i < 3; ++i)", "    Run(i);")
        self.assertEqual(made(source, "statement removed"), [";"])


class Values(unittest.TestCase):
    def test_conditions_are_forced_and_negated(self):
        source = in_function("if (a && b)", "    Run();")
        self.assertEqual(made(source, "condition forced true"), ["if (true)"])
        self.assertEqual(made(source, "condition forced false"), ["if (false)"])
        self.assertEqual(made(source, "condition negated"), ["if (!(a && b))"])

    def test_the_condition_of_an_operator_is_one_too(self):
        source = in_function("return open ? name : QString();")
        self.assertEqual(made(source, "condition forced true"), ["return true ? name : QString();"])

    def test_a_declared_condition_is_left_alone(self):
        self.assertEqual(made(in_function("if (auto* one = Find())", "    Run();"), "condition forced true"), [])

    def test_comparisons_and_connectives_are_exchanged(self):
        source = in_function("return a == b || c < d;")
        self.assertEqual(made(source, "comparison"), [
            "return a != b || c < d;", "return a == b && c < d;", "return a == b || c <= d;",
        ])  # fmt: skip

    def test_angle_brackets_of_a_template_are_no_comparison(self):
        self.assertEqual(made(in_function("auto one = Make<Thing>();"), "comparison"), [])

    def test_constants_and_texts_change(self):
        source = in_function('Show(0, true, QStringLiteral("text"));')
        self.assertEqual(made(source, "constant"), [
            'Show(1, true, QStringLiteral("text"));', 'Show(0, false, QStringLiteral("text"));',
        ])  # fmt: skip
        self.assertEqual(made(source, "text"), ['Show(0, true, QStringLiteral("text~"));'])

    def test_named_numbers_outside_functions_change(self):
        self.assertEqual(made("constexpr int length = 20;\n"), ["constexpr int length = 21;"])

    def test_arguments_change_places(self):
        source = in_function("Save(id, Make(a, b), app);")
        self.assertEqual(made(source, "arguments swapped"), [
            "Save(Make(a, b), id, app);", "Save(id, app, Make(a, b));", "Save(id, Make(b, a), app);",
        ])  # fmt: skip

    def test_answers_change(self):
        self.assertEqual(made(in_function("return ready;"), "return value"), ["return {};"])
        self.assertEqual(made(in_function("return ready;"), "return value negated"), ["return !(ready);"])
        self.assertEqual(made(in_function("if (x)", "    return;"), "return removed"), [";"])

    def test_names_that_are_mixed_up_are_exchanged(self):
        source = in_function("Show(text, ToastError);")
        self.assertEqual(made(source, "name exchanged"), ["Show(text, ToastSuccess);"])
        source = in_function("Load(m->currentSnapshotId);")
        self.assertEqual(made(source, "twin"), ["Load(m->ui->version_combo->GetCurrentData().toString());"])

    def test_comments_and_includes_never_change(self):
        self.assertEqual(made('#include "a.h"\n// if (x == 0) Run();\n/* "text" */\n'), [])


class Lines(unittest.TestCase):
    def test_that_stand_there_twice_are_told_apart_by_those_before(self):
        source = in_function("One();", "if (a)", "    return;", "Two();", "if (b)", "    return;", "if (b)", "    Three();")
        changes = [one for one in operators.all_changes("a.cpp", source) if one.operator == "return removed"]
        self.assertEqual([(one.line, one.new.split()) for one in changes],
                         [(4, ["if", "(a)", ";"]), (7, ["if", "(b)", ";"])])  # fmt: skip
        self.assertEqual(changes[1].apply(source).split("\n")[7], "        ;")
        first, second = [one for one in operators.all_changes("a.cpp", source) if one.new.endswith("if (true)")][1:]
        self.assertEqual([first.old.split()[0], second.old.split()[0]], ["Two();", "return;"])


class EveryChange(unittest.TestCase):
    def test_fits_the_code_and_is_told_apart_from_the_others(self):
        for layer in ("client", "pages", "editor", "release"):
            for path in (paths.ROOT / layer).rglob("*.cpp"):
                source = path.read_text(encoding="utf-8")
                changes = operators.all_changes(path.name, source)
                for change in changes:
                    self.assertNotEqual(change.apply(source), source)
                self.assertEqual(len({change.key for change in changes}), len(changes))


if __name__ == "__main__":
    unittest.main()
