# SPDX-License-Identifier: Apache-2.0
"""The module shows one class; whatever else it defines stays inside.
Usage: test_exports.py LIBRARY [OBJDUMP], the latter for a DLL"""

import re
import subprocess
import sys

CLASS = "RpaAppEditorWidget"
ALLOWED = re.compile(rf"^(non-virtual thunk to |vtable for |typeinfo for |typeinfo name for )?{CLASS}(::|$)")
EXPECTED = (
    f"{CLASS}::{CLASS}(QWidget*)",
    f"{CLASS}::~{CLASS}()",
    f"{CLASS}::SetExecuteInfo(RobotExecuteInfo const&)",
    f"{CLASS}::BeforeClose()",
    f"{CLASS}::staticMetaObject",
    f"vtable for {CLASS}",
    f"typeinfo for {CLASS}",
)


# A line of a DLL's table of exported names, as objdump prints it.
DLL_NAME = re.compile(r"^\s*\[\s*\d+\](?:\s+\+base\[\s*\d+\]\s+[0-9a-f]+)?\s+(\S+)$", re.MULTILINE)


def output_of(*command, text=None):
    return subprocess.run(command, check=True, capture_output=True, text=True, input=text).stdout


def exports(library):
    output = output_of("nm", "-DC", "--defined-only", library)
    return {re.sub(r"^\S+\s+\S\s+", "", line) for line in output.splitlines()}


def dll_exports(library, objdump):
    table = output_of(objdump, "-p", library).partition("[Ordinal/Name Pointer] Table")[2]
    names = "\n".join(DLL_NAME.findall(table))
    return set(output_of("c++filt", text=names).splitlines())


def main(library, objdump=None):
    found = dll_exports(library, objdump) if objdump else exports(library)
    problems = [f"shows what should stay inside: {name}" for name in sorted(found) if not ALLOWED.match(name)]
    problems += [f"does not show: {name}" for name in EXPECTED if name not in found]
    print("\n".join(problems) or f"{len(found)} symbols, all of {CLASS}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
