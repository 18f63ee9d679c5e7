# SPDX-License-Identifier: Apache-2.0
"""Builds one changed file, and what hangs on it, beside a finished build that stays as it is."""

import json
import os
import shlex
import shutil
import subprocess
from dataclasses import dataclass, field
from pathlib import Path


class DoesNotCompile(Exception):
    pass


@dataclass(frozen=True)
class Test:
    """A test program of the module."""

    name: str
    program: str  # below the build folder
    folder: str
    environment: dict = field(hash=False, compare=False)
    uses_objects: bool  # linked from the layers' objects; else it uses the module's library


class FinishedBuild:
    """A build folder of Ninja in which the module and its tests are up to date. Nothing is written to it."""

    def __init__(self, folder, root, library, test_folders):
        self.folder, self.root, self.library = Path(folder), Path(root), library
        self.links = {}
        self.compile_commands = self._find_compile_commands()
        self.tests = self._find_tests(test_folders)

    def compile_command(self, file):
        return self.compile_commands[str(self.root / file)]

    def object_of(self, file):
        return _output(self.compile_command(file))

    def link_command(self, output):
        if output not in self.links:
            lines = self._ninja("-t", "commands", "-s", output).splitlines()
            command = lines[-1].removeprefix(": && ").removesuffix(" && :")
            self.links[output] = shlex.split(command)
        return self.links[output]

    # Other programs may compile a file of the module for themselves; those are none of its tests.
    def _find_compile_commands(self):
        linked = set(self.link_command(self.library))
        commands = {}
        for entry in json.loads((self.folder / "compile_commands.json").read_text(encoding="utf-8")):
            command = shlex.split(entry["command"])
            if _output(command) in linked:
                commands[entry["file"]] = command
        return commands

    def _ninja(self, *arguments):
        return subprocess.run(
            ["ninja", "-C", str(self.folder), "--quiet", *arguments], check=True, capture_output=True, text=True
        ).stdout

    def _find_tests(self, test_folders):
        listed = subprocess.run(
            ["ctest", "--test-dir", str(self.folder), "--show-only=json-v1"], check=True, capture_output=True, text=True
        ).stdout
        tests = []
        for entry in json.loads(listed)["tests"]:
            values = {one["name"]: one["value"] for one in entry.get("properties", ())}
            folder = Path(values.get("WORKING_DIRECTORY", ".")).resolve()
            wanted = any(folder == (self.folder / name).resolve() for name in test_folders)
            program = Path(entry["command"][0]) if entry.get("command") else None
            if not wanted or not program or len(entry["command"]) > 1 or self.folder.resolve() not in program.parents:
                continue
            output = str(program.relative_to(self.folder.resolve()))
            words = self.link_command(output)
            environment = dict(one.split("=", 1) for one in values.get("ENVIRONMENT", ()) if "=" in one)
            uses_objects = self.library not in words
            if uses_objects and not any(word.endswith(".cpp.o") and not word.startswith("tests/") for word in words):
                continue  # a test of the tests' own tools
            tests.append(Test(entry["name"], output, str(folder), environment, uses_objects))
        return tests


def _output(command):
    return command[command.index("-o") + 1]


class Bench:
    """The folder in which one worker builds and runs its changes."""

    def __init__(self, build, folder, compile_flags=("-w", "-O1")):
        self.build, self.folder, self.flags = build, Path(folder), list(compile_flags)
        self.file = None
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)

    def compile(self, file, source):
        """The bytes of the object that the source gives in the place of the file."""
        place = self.folder / "source" / file
        place.parent.mkdir(parents=True, exist_ok=True)
        place.write_text(source, encoding="utf-8")
        self.file, self.object = file, self.folder / "changed.o"
        command = list(self.build.compile_command(file))
        command[command.index("-o") + 1] = str(self.object)
        command[command.index("-c") + 1] = str(place)
        command = [word for word in command if word not in ("-Werror", "-O3", "-O2")] + self.flags
        done = subprocess.run(command, cwd=self.build.folder, capture_output=True, text=True)
        if done.returncode != 0:
            raise DoesNotCompile(done.stderr)
        for built in ("library", "program"):
            shutil.rmtree(self.folder / built, ignore_errors=True)
        return self.object.read_bytes()

    def program_of(self, test):
        """Links what the test needs; returns the program and the folder of the module's library."""
        if not test.uses_objects:
            self._link(self.build.library, "library")
            return self.build.folder / test.program, self.folder / "library"
        words = self.build.link_command(test.program)
        if self.build.object_of(self.file) not in words:
            return None, None  # the change is in a layer that this test knows nothing of
        return self._link(test.program, "program"), self.folder / "library"

    def _link(self, output, into):
        target = self.folder / into / Path(output).name
        if target.exists():
            return target
        target.parent.mkdir(exist_ok=True)
        changed = self.build.object_of(self.file)
        command = [str(self.object) if word == changed else word for word in self.build.link_command(output)]
        command[command.index("-o") + 1] = str(target)
        subprocess.run(command, cwd=self.build.folder, check=True, capture_output=True)
        return target

    def check_that_the_library_is_found(self):
        """A program that is linked to find its library at one fixed place would run the unchanged code."""
        test = next((test for test in self.build.tests if not test.uses_objects), None)
        if not test:
            return
        program, library = self.program_of(test)
        environment = {**os.environ, "LD_LIBRARY_PATH": str(library)}
        seen = subprocess.run(["ldd", str(program)], env=environment, check=True, capture_output=True, text=True).stdout
        if str(library) not in seen:
            raise RuntimeError(f"{test.name} does not use the library that was built for it; link with RUNPATH (mold)")

    def environment_for(self, test):
        """The test's own environment with a home of this worker's."""
        home = self.folder / "home" / test.name
        (home / "run").mkdir(parents=True, exist_ok=True)
        (home / "run").chmod(0o700)
        former = test.environment.get("HOME", "\0")
        return {name: value.replace(former, str(home)) for name, value in test.environment.items()}


def copy_tree(root, target):
    """Brings the copy of all files under version control up to date; what did not change keeps its time."""
    names = subprocess.run(
        ["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        check=True,
        capture_output=True,
    ).stdout.decode()
    for name in filter(None, names.split("\0")):
        source, copy = Path(root) / name, Path(target) / name
        if not source.is_file():
            continue
        if not copy.is_file() or copy.read_bytes() != source.read_bytes():
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, copy)


def make_build(source, folder, targets, jobs):
    """Configures and builds the copy: the module's library and its tests."""
    if not (Path(folder) / "build.ninja").exists():
        subprocess.run(
            ["cmake", "-S", str(source), "-B", str(folder), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
             "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DRPA_BUILD_BENCHMARKS=OFF", *_linker()],
            check=True,
        )  # fmt: skip
    subprocess.run(["ninja", "-C", str(folder), f"-j{jobs}", *targets], check=True)


def _linker():
    if not shutil.which("mold"):
        return []
    return [f"-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld=mold" for kind in ("EXE", "SHARED")]
