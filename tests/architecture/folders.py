# SPDX-License-Identifier: Apache-2.0
"""Compares the #includes between the inner folders of one program or library with the table of docs/architecture.md.

What lies beside the folders (a main.cpp, a header that all of them share) is in none of them.
"""

import re

from tiers import includes, sources

NEIGHBOURS = ("release", "server", "workstation")  # each inner folder has a row in the table
MEMBERS = "editor/RpaAppEditorMembers.h"  # what the halves of RpaAppEditorWidget hold
OPERATION = re.compile(r"^    \w[\w:<>*& ]* (\w+)\([^;]*\)(?: const)?;", re.MULTILINE)


def read_arrows(document):
    """{"server": {"http": ["base"]}} of the rows `| `server/http/` | `base/` |`; "all above" is every row before."""
    arrows = {}
    for top, folder, allowed in re.findall(r"^\|\s*`(\w+)/(\w+)/`\s*\|([^|]*)\|", document, re.MULTILINE):
        rows = arrows.setdefault(top, {})
        rows[folder] = list(rows) if "all above" in allowed else re.findall(r"`(\w+)/`", allowed)
    return arrows


def inner_folder(path, top):
    parts = path.relative_to(top).parts
    return parts[0] if len(parts) > 1 else None


def used_folders(top):
    """(file, its folder, the header, the header's folder) of each include that leaves an inner folder for another."""
    owner = {path.name: inner_folder(path, top) for path in sources(top) if path.suffix == ".h"}
    for path in sources(top):
        folder = inner_folder(path, top)
        for kind, include in includes(path):
            used = owner.get(include.rsplit("/", 1)[-1]) if kind == '"' else None
            if used and used != folder and (folder or path.suffix == ".h"):
                yield path, folder, include, used


def check_neighbours(root, arrows):
    for top in NEIGHBOURS:
        rows = arrows.get(top, {})
        for folder in sorted({inner_folder(path, root / top) for path in sources(root / top)} - {None} - set(rows)):
            yield f"{top}/{folder}/: stands in no row of docs/architecture.md"
        above = []
        for folder, allowed in rows.items():
            for used in sorted(set(allowed) - set(above)):
                yield f"docs/architecture.md: {top}/{folder}/ may use {used}/, which is not above it: rows cannot form a loop"
            above.append(folder)
        for path, folder, include, used in used_folders(root / top):
            if used not in rows.get(folder, ()):
                yield f'{path.relative_to(root)}: "{include}": {top}/{folder or ""} may not use {top}/{used}/'


def check_libraries(root):
    """Inner folders of a library need no table, but they must not use each other in a circle."""
    for library in sorted(path for path in (root / "platform").iterdir() if path.is_dir()):
        arrows = {}
        for _, folder, _, used in used_folders(library / "src"):
            arrows.setdefault(folder, set()).add(used)
        while ends := [folder for folder in arrows if not arrows[folder] & set(arrows)]:
            for folder in ends:
                del arrows[folder]
        if arrows:
            yield f"platform/{library.name}/src: {', '.join(sorted(map(str, arrows)))} use each other in a circle"


def check_readmes(root):
    """Whoever opens a program or a library reads what each of its inner folders holds."""
    tops = [(root / name, root / name) for name in ("server", "workstation")]
    tops += [(path / "src", path) for path in (root / "platform").iterdir() if path.is_dir()]
    for top, home in sorted(tops):
        readme = home / "README.md"
        text = readme.read_text(encoding="utf-8") if readme.exists() else ""
        for folder in sorted({inner_folder(path, top) for path in sources(top)} - {None}):
            if f"{folder}/`" not in text:
                yield f"{home.relative_to(root)}/README.md: does not say what {folder}/ holds"


def check_halves(root):
    """The halves of the widget share values; whatever one does for the other, the widget's header declares."""
    members = root / MEMBERS
    operations = OPERATION.findall(members.read_text(encoding="utf-8")) if members.exists() else []
    for path in sources(root / "release"):
        for name in re.findall(r"\bm->(\w+)\(", path.read_text(encoding="utf-8")):
            if name in operations:
                yield f"{path.relative_to(root)}: m->{name}(): call it through the widget's header"


def findings(root):
    arrows = read_arrows((root / "docs" / "architecture.md").read_text(encoding="utf-8"))
    return [*check_neighbours(root, arrows), *check_libraries(root), *check_readmes(root), *check_halves(root)]
