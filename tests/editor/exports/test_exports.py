"""The module shows one class; whatever else it defines stays inside. Usage: test_exports.py LIBRARY"""

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


def exports(library):
    output = subprocess.run(["nm", "-DC", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    return {re.sub(r"^\S+\s+\S\s+", "", line) for line in output.splitlines()}


def main(library):
    found = exports(library)
    problems = [f"shows what should stay inside: {name}" for name in sorted(found) if not ALLOWED.match(name)]
    problems += [f"does not show: {name}" for name in EXPECTED if name not in found]
    print("\n".join(problems) or f"{len(found)} symbols, all of {CLASS}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
