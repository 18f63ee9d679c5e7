# SPDX-License-Identifier: Apache-2.0
"""A whole run over a small project: built, changed, relinked and tested for real."""

import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path
from types import SimpleNamespace

import paths  # noqa: F401
import build
import run
import trial
from changes import Equivalents, of_span
from results import Results, table

CODE = """int Sum(int a, int b)
{
    int unused = 7;
    (void)unused;
    return a + b;
}
int Bound(int a)
{
    while (a > 9)
        a = a - 10;
    return a;
}
"""
TEST = """#include <cstdio>
int Sum(int, int);
int Bound(int);
int main()
{
    std::puts("starts");
    if (Sum(1, 2) != 3) { std::puts("FAIL!  : sum"); std::fflush(stdout); for (;;) {} }
    return Bound(17) == 7 ? 0 : 1;
}
"""
PROJECT = """cmake_minimum_required(VERSION 3.16)
project(Small CXX)
enable_testing()
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
add_library(objects OBJECT code.cpp)
set_target_properties(objects PROPERTIES POSITION_INDEPENDENT_CODE ON)
add_library(small SHARED $<TARGET_OBJECTS:objects>)
add_subdirectory(tests)
"""
TESTS = """add_executable(by_library test.cpp)
target_link_libraries(by_library PRIVATE small)
add_executable(by_objects test.cpp $<TARGET_OBJECTS:objects>)
add_executable(by_itself test.cpp ../code.cpp)
foreach(name by_library by_objects)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "HOME=${CMAKE_CURRENT_BINARY_DIR}/home;DATA=${CMAKE_CURRENT_BINARY_DIR}/home/data")
endforeach()
"""


@unittest.skipUnless(all(map(shutil.which, ("cmake", "ninja", "g++"))), "no tools to build with")
class SmallProject(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        (cls.folder / "tests").mkdir()
        for name, text in (("code.cpp", CODE), ("CMakeLists.txt", PROJECT), ("tests/test.cpp", TEST), ("tests/CMakeLists.txt", TESTS)):
            (cls.folder / name).write_text(text, encoding="utf-8")
        flags = ["-DCMAKE_SHARED_LINKER_FLAGS=-Wl,--enable-new-dtags", "-DCMAKE_EXE_LINKER_FLAGS=-Wl,--enable-new-dtags"]
        subprocess.run(["cmake", "-S", cls.folder, "-B", cls.folder / "build", "-G", "Ninja", *flags], check=True, capture_output=True)
        subprocess.run(["ninja", "-C", cls.folder / "build"], check=True, capture_output=True)
        cls.build = build.FinishedBuild(cls.folder / "build", cls.folder, "bin/libsmall.so", ["tests"])
        cls.bench = build.Bench(cls.build, cls.folder / "bench")
        cls.base = {"code.cpp": cls.bench.compile("code.cpp", CODE)}

    def change(self, old, new):
        start = CODE.index(old)
        return of_span(CODE, "code.cpp", "test", start, start + len(old), new)

    def outcome(self, change, only=None, limit=20):
        tests = [test for test in self.build.tests if only in (None, test.name)]
        order = trial.Order(tests, {})
        return trial.try_change(self.bench, change, lambda _: CODE, self.base, order, lambda _: limit)

    def test_finds_both_kinds_of_tests(self):
        self.assertEqual({test.name: test.uses_objects for test in self.build.tests},
                         {"by_library": False, "by_objects": True})  # fmt: skip

    def test_each_kind_of_test_notices_a_wrong_result_by_itself(self):
        for name in ("by_library", "by_objects"):
            outcome = self.outcome(self.change("while (a > 9)", "while (a > 99)"), name)
            self.assertEqual((outcome.kind, outcome.test), (trial.NOTICED, name))

    def test_the_first_complaint_ends_a_test_that_would_go_on_for_ever(self):
        outcome = self.outcome(self.change("a + b", "a - b"))
        self.assertEqual((outcome.kind, outcome.words), (trial.NOTICED, "FAIL!  : sum"))

    def test_a_test_that_takes_too_long_has_noticed(self):
        self.assertEqual(self.outcome(self.change("a - 10", "a + 0"), limit=1).kind, trial.TIMEOUT)

    def test_a_change_without_a_test_survives(self):
        self.assertEqual(self.outcome(self.change("a > 9", "a >= 9")).kind, trial.SURVIVED)

    def test_a_change_of_no_code_is_known_by_its_object(self):
        self.assertEqual(self.outcome(self.change("unused = 7", "unused = 8")).kind, trial.SAME_CODE)

    def test_a_change_that_does_not_compile_is_none(self):
        self.assertEqual(self.outcome(self.change("a + b", "a + ")).kind, trial.INVALID)

    def test_the_build_stays_as_it_was(self):
        before = {path: path.stat().st_mtime_ns for path in (self.folder / "build").rglob("*") if path.is_file()}
        self.outcome(self.change("a + b", "a - b"))
        after = {path: path.stat().st_mtime_ns for path in (self.folder / "build").rglob("*") if path.is_file()}
        self.assertEqual(before, after)

    def test_each_worker_gives_its_tests_a_home_of_their_own(self):
        environment = self.bench.environment_for(self.build.tests[0])
        self.assertTrue(environment["HOME"].startswith(str(self.bench.folder)))
        self.assertEqual(environment["DATA"], environment["HOME"] + "/data")

    def test_what_noticed_last_time_comes_first(self):
        order = trial.Order(self.build.tests, {})
        for test in self.build.tests:
            order.hits.clear()
            order.learn("code.cpp", test.name)
            self.assertEqual(order.of("code.cpp")[0].name, test.name)

    def test_results_are_found_again_and_counted(self):
        path = self.folder / "results.jsonl"
        changes = [self.change("a + b", "a - b"), self.change("a > 9", "a >= 9"), self.change("unused = 7", "unused = 8")]
        results = Results(path)
        for change in changes:
            results.add(change, self.outcome(change))
        path.write_text(path.read_text() + '{"key": "cut o', encoding="utf-8")
        again = Results(path)
        self.assertEqual([again.outcome_of(one) for one in changes], [trial.NOTICED, trial.SURVIVED, trial.SAME_CODE])
        text, survivors = table(changes, again, Equivalents(self.folder / "none.txt"))
        self.assertEqual(survivors, [changes[1]])
        self.assertEqual(text.splitlines()[-1].split(), ["all", "3", "1", "0", "1", "1", "50.0", "%"])
        (self.folder / "equivalent.txt").write_text("code.cpp: 9 is never asked\n- while (a > 9)\n+ while (a >= 9)\n")
        text, survivors = table(changes, again, Equivalents(self.folder / "equivalent.txt"))
        self.assertEqual((survivors, text.splitlines()[-1].split()[-2]), ([], "100.0"))


class WhatIsTried(unittest.TestCase):
    def is_open(self, again, known, reason=None):
        bench = SimpleNamespace(
            options=SimpleNamespace(again=again),
            results=SimpleNamespace(outcome_of=lambda change: known),
            equivalents=SimpleNamespace(reason=lambda change: reason),
        )
        return run.Run._is_open(bench, None)

    def test_what_is_not_known_yet(self):
        self.assertTrue(self.is_open(False, None))
        self.assertFalse(self.is_open(False, trial.SURVIVED))
        self.assertFalse(self.is_open(False, trial.NOTICED))

    def test_again_what_survived_without_a_reason(self):
        self.assertTrue(self.is_open(True, trial.SURVIVED))
        self.assertFalse(self.is_open(True, trial.SURVIVED, "nobody asks"))
        self.assertFalse(self.is_open(True, trial.NOTICED))
        self.assertFalse(self.is_open(True, None))


if __name__ == "__main__":
    unittest.main()
