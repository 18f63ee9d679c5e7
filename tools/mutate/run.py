#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Changes the module's code a little, one change at a time, and tells which changes its tests do not notice."""

import argparse
import json
import random
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import build
import trial
from changes import Equivalents, from_patches
from operators import all_changes
from results import Results, table

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
LAYERS = ("client", "pages", "editor", "release")
TEST_FOLDERS = tuple(f"tests/{layer}" for layer in LAYERS)
LIBRARY = "bin/libRpaEditorManager.so"


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--file", action="append", default=[], help="only files with this in their name; repeatable")
    parser.add_argument("--sample", type=int, help="so many changes, drawn at random")
    parser.add_argument("--seed", type=int, default=1, help="another seed, another sample")
    parser.add_argument("--patches", action="store_true", help="only the changes of patches/")
    parser.add_argument("--again", action="store_true", help="try earlier survivors anew, nothing else")
    parser.add_argument("--list", action="store_true", help="show the changes, try none")
    parser.add_argument("--table", action="store_true", help="show what is known already, try none")
    parser.add_argument("--within", type=float, help="only tests that take less than so many seconds; for a first look")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--work", type=Path, default=ROOT / "build" / "mutate", help="folder of copy, build, results")
    parser.add_argument("--build", type=Path, help="a finished build of this tree instead of one of the copy's own")
    return parser.parse_args()


def main():
    options = arguments()
    sources = {}

    def read(file):
        return sources.setdefault(file, (ROOT / file).read_text(encoding="utf-8"))

    changes = chosen(options, read)
    if options.list:
        print("\n".join(change.as_text() for change in changes))
        return 0
    results = Results(options.work / "results.jsonl")
    equivalents = Equivalents(HERE / "equivalent.txt")
    if not options.table:
        Run(options, read, results, equivalents).try_all(changes)
    text, survivors = table(changes, results, equivalents)
    print("\n".join(["", "Survivors:", ""] + [f"{change.as_text()}\n" for change in survivors]) + "\n" + text)
    return 1 if survivors else 0


def chosen(options, read):
    files = [
        str(path.relative_to(ROOT)).replace("\\", "/")
        for layer in LAYERS
        for path in sorted((ROOT / layer).rglob("*.cpp"))
    ]
    changes = from_patches(HERE / "patches", read)
    if not options.patches:
        for file in files:
            changes += all_changes(file, read(file))
    if options.file:
        changes = [change for change in changes if any(part in change.file for part in options.file)]
    if options.sample is not None and options.sample < len(changes):
        drawn = set(random.Random(options.seed).sample(range(len(changes)), options.sample))
        changes = [change for index, change in enumerate(changes) if index in drawn]
    return changes


class Run:
    def __init__(self, options, read, results, equivalents):
        self.options, self.read, self.results, self.equivalents = options, read, results, equivalents
        folder, root = self._build()
        self.build = build.FinishedBuild(folder, root, LIBRARY, TEST_FOLDERS)
        self.lock = threading.Lock()
        self.base_objects, self.seconds = {}, {}
        self.times_file = options.work / "times.json"  # of the unchanged programs, each with the program's age
        self.times = json.loads(self.times_file.read_text(encoding="utf-8")) if self.times_file.exists() else {}
        self.order = trial.Order(self.build.tests, self.seconds)
        results.teach(self.order)
        self.benches = [
            build.Bench(self.build, options.work.resolve() / f"worker{index}") for index in range(options.jobs)
        ]

    def try_all(self, changes):
        todo = [change for change in changes if self._is_open(change)]
        if not todo:
            return
        self._measure(sorted({change.file for change in todo}))
        began, done = time.monotonic(), []

        def try_one(bench, change):
            outcome = trial.try_change(bench, change, self.read, self.base_objects, self.order, self._limit)
            with self.lock:
                self.results.add(change, outcome)
                done.append(change)
                minutes = (time.monotonic() - began) / 60
                print(f"[{minutes:.0f} min] {len(done)}/{len(todo)} {outcome.kind} {outcome.seconds:.0f} s"
                      f" {outcome.test} | {change.file}:{change.line} {change.operator}", flush=True)  # fmt: skip

        self._share(todo, try_one)

    def _build(self):
        if self.options.build:
            return self.options.build.resolve(), ROOT
        copy, folder = self.options.work.resolve() / "source", self.options.work.resolve() / "build"
        build.copy_tree(ROOT, copy)
        build.make_build(copy, folder, [f"{name}/all" for name in TEST_FOLDERS], self.options.jobs)
        return folder, copy

    def _is_open(self, change):
        known = self.results.outcome_of(change)
        if self.options.again:
            return known == trial.SURVIVED and not self.equivalents.reason(change)
        return known is None

    # The unchanged code: every test passes, and takes so long.
    def _measure(self, files):
        self._share(files, self._compile_base)
        next(bench for bench in self.benches if bench.file).check_that_the_library_is_found()
        self._share(self.build.tests, self._time)
        if self.options.within:
            self.order.tests = [test for test in self.build.tests if self.seconds[test.name] < self.options.within]

    def _compile_base(self, bench, file):
        self.base_objects[file] = bench.compile(file, self.read(file))

    def _time(self, bench, test):
        stamp = (self.build.folder / test.program).stat().st_mtime_ns
        known = self.times.get(test.name)
        if known and known[0] == stamp:
            self.seconds[test.name] = known[1]
            return
        result = trial.run_test(bench, test, self.build.folder / test.program, None, 600)
        if result.kind != trial.SURVIVED:
            raise SystemExit(f"{test.name} fails on the unchanged code: {result.words}")
        self.seconds[test.name] = result.seconds
        with self.lock:
            self.times[test.name] = (stamp, result.seconds)
            self.times_file.write_text(json.dumps(self.times), encoding="utf-8")

    # Every worker takes the next thing until there is none left.
    def _share(self, things, work):
        queue = iter(list(things))

        def work_on(bench):
            while True:
                with self.lock:
                    thing = next(queue, None)
                if thing is None:
                    return
                work(bench, thing)

        with ThreadPoolExecutor(len(self.benches)) as pool:
            for worker in [pool.submit(work_on, bench) for bench in self.benches]:
                worker.result()

    def _limit(self, name):
        return 30 + 6 * self.seconds[name]


if __name__ == "__main__":
    sys.exit(main())
