#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes sources that contain many tests each, so that a checker reads Qt's headers once for all tests of a folder.

Every test stands in a namespace of its own: tests of one folder may use the same names, and each has a main(). What they
include is included before. Helpers, which have no main(), stand beside them: the names in their unnamed namespaces differ.
Nothing of the product needs to be built: the forms that its headers need are made here, and what moc makes of a test is
left out, as nothing is linked.
"""

import argparse
import json
import re
import shlex
import subprocess
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FORM_FOLDERS = ("forms", "workstation/forms") # of what is tested as it is linked, from its own headers
TESTS_PER_SOURCE = 24
MAIN = re.compile(r"^(\w+_MAIN\(|int main\()", re.MULTILINE)
DEFINITION = re.compile(r"^\w[\w:<>*& ]*?[ *&](\w+)::~?\w+\(", re.MULTILINE)
TYPE = re.compile(r"^\s*(?:class|struct|namespace) (\w+)", re.MULTILINE)
INCLUDE = re.compile(r"^#include ([<\"](.+)[>\"])$", re.MULTILINE)
# Of no use here: names are other files' names, too; moc defines what is not defined; Qt's QSKIP is called as it says.
UNWANTED = ("-Wno-shadow", "-Wno-undefined-internal", "-Wno-gnu-zero-variadic-macro-arguments")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", type=Path, help="the configured build that knows how tests are compiled")
    parser.add_argument("out", type=Path, help="where the sources and their compile_commands.json are written")
    parser.add_argument("folders", nargs="+", help="whose sources are taken, with the folders below them")
    parser.add_argument("--only", action="append", default=[], help="no source but this one; repeatable")
    return parser.parse_args()


def main():
    options = arguments()
    out = options.out.resolve()
    for folder in ("forms", "moc"):
        (out / folder).mkdir(parents=True, exist_ok=True)
    make_forms(out / "forms")
    flags = compile_flags(options)
    commands = []
    for folder, files in sorted(by_folder(flags).items()):
        for number, lot in enumerate(lots(files)):
            source = out / f"{folder.replace('/', '-')}-{number}.cpp"
            source.write_text(combined(lot, out / "moc"), encoding="utf-8")
            places = (f"-I{out}/moc", f"-I{out}/forms", f"-I{ROOT / folder}")
            command = ["clang++-14", *places, *together(flags[file] for file in lot), *UNWANTED, "-c", str(source)]
            commands.append({"directory": str(options.build.resolve()), "file": str(source), "arguments": command})
            print(source)
    (out / "compile_commands.json").write_text(json.dumps(commands, indent=1), encoding="utf-8")


def make_forms(folder):
    for form in (form for name in FORM_FOLDERS for form in sorted((ROOT / name).glob("*.ui"))):
        subprocess.run(["uic", str(form), "-o", str(folder / f"ui_{form.stem}.h")], check=True)


def compile_flags(options):
    """How each source is compiled: what comes after the compiler, without the names of input and output."""
    flags = {}
    only = {str(ROOT / file) for file in options.only}
    folders = tuple(f"{ROOT / folder}/" for folder in options.folders)
    for entry in json.loads((options.build / "compile_commands.json").read_text(encoding="utf-8")):
        file = entry["file"]
        if file.startswith(folders) and (not only or file in only):
            words = shlex.split(entry["command"])
            flags[file] = words[1:words.index("-o")]
    return flags


def by_folder(flags):
    folders = defaultdict(list)
    for file in sorted(flags):
        folders[str(Path(file).parent.relative_to(ROOT))].append(file)
    return folders


def lots(files):
    alone = [file for file in files if must_stand_alone(read(file))]
    others = [file for file in files if file not in alone]
    count = -(-len(others) // TESTS_PER_SOURCE)
    return [others[start::count] for start in range(count)] + [[file] for file in alone]


def must_stand_alone(text):
    """A test that tells Qt of a type, or brings its own operations of the product's types, fits in no namespace."""
    foreign = set(DEFINITION.findall(text)) - set(TYPE.findall(text))
    return MAIN.search(text) and (foreign or "\nQ_DECLARE_METATYPE(" in text)


def read(file):
    return Path(file).read_text(encoding="utf-8")


def together(all_flags):
    """The flags of several sources, each once: a macro that two of them give different values keeps the first."""
    result = {}
    for flags in all_flags:
        pairs = iter(flags)
        for flag in pairs:
            words = [flag, next(pairs)] if flag in ("-isystem", "-include") else [flag]
            key = flag.split("=")[0] if flag.startswith("-D") else tuple(words)
            result.setdefault(key, words)
    return [word for words in result.values() for word in words]


def combined(files, moc_folder):
    includes = {}
    for file in files:
        for quoted, name in INCLUDE.findall(read(file)):
            if name.endswith(".moc"):
                (moc_folder / name).write_text("", encoding="utf-8")
            else:
                includes[quoted] = None
    lines = [f"#if __has_include({name})\n#include {name}\n#endif" for name in includes] # not on every system
    for number, file in enumerate(files):
        include = f'#include "{file}"'
        in_namespace = len(files) > 1 and MAIN.search(read(file))
        lines.append(f"namespace Test{number} {{\n{include}\n}}" if in_namespace else include)
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    main()
