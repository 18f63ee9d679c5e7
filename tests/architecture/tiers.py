# SPDX-License-Identifier: Apache-2.0
"""Compares every #include of the tree with the tables of docs/architecture.md.

The tables are the law: a folder that is not in them, or an include that they do not allow, is a finding.
"""

import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]', re.MULTILINE)
QT_GUI = re.compile(r"^(Qt(Widgets|Gui|Svg|WebEngine\w*)/|Q(Widget|Application|GuiApplication|Dialog|Painter|Icon|Pixmap|Image|Label)$)")
SOURCES = ("*.cpp", "*.h")


def read_tiers(document):
    """{library: tier} of the rows `| 0 | `OxBase`, … | … |` of the platform table."""
    tiers = {}
    for row in re.findall(r"^\|\s*(\d)\s*\|([^|]*)\|", document, re.MULTILINE):
        for library in re.findall(r"`(\w+)`", row[1]):
            tiers[library] = int(row[0])
    return tiers


def read_layers(document):
    """Module folders, lowest first, of the line `Layers: `client/` < `pages/` < …`."""
    line = re.search(r"^Layers: (.*)$", document, re.MULTILINE)
    return re.findall(r"`(\w+)/`", line.group(1)) if line else []


def sources(folder):
    return sorted(path for pattern in SOURCES for path in folder.rglob(pattern))


def includes(path):
    return INCLUDE.findall(path.read_text(encoding="utf-8"))


def library_of(include, tiers):
    first = include.split("/", 1)[0]
    return first if "/" in include and first in tiers else None


def quoted_elsewhere(path, include, own_folder):
    """A quoted include must name a file of the same folder (generated forms excepted)."""
    if include == "RpaResources.h":  # of resources/, which everybody who shows something may use
        return False
    if include.startswith("ui_") or include.endswith(".moc") or include.startswith("moc_"):
        return False
    name = Path(include).name
    if "platform/" in include or ".." in Path(include).parts:
        return True
    return not any(own_folder.rglob(name))


def check_platform(root, tiers):
    for library in sorted(p.name for p in (root / "platform").iterdir() if p.is_dir()):
        if library not in tiers:
            yield f"platform/{library}: stands in no tier of docs/architecture.md"
            continue
        folder = root / "platform" / library
        for path in sources(folder):
            for kind, include in includes(path):
                used = library_of(include, tiers)
                where = f"{path.relative_to(root)}: <{include}>"
                if used and used != library and tiers[used] >= tiers[library]:
                    yield f"{where}: tier {tiers[library]} may not use tier {tiers[used]}"
                if kind == '"' and quoted_elsewhere(path, include, folder):
                    yield f"{where}: a private header of another folder"
                if include.startswith("RpaEditorManager/") or Path(include).name == "RpaAppEditorWidget.h":
                    yield f"{where}: the platform may not use the module"


def check_module(root, tiers, layers):
    owner = {}
    for layer in layers:
        for path in (root / layer).rglob("*.h"):
            owner[path.name] = layer
    for number, layer in enumerate(layers):
        for path in sources(root / layer):
            for kind, include in includes(path):
                used = owner.get(Path(include).name) if kind == '"' else None
                if used and layers.index(used) > number:
                    yield f"{path.relative_to(root)}: \"{include}\": {layer}/ may not use {used}/"
                if re.match(r"(workstation|server|tests)/", include):
                    yield f"{path.relative_to(root)}: \"{include}\": the module may not use it"


def check_workstation(root, tiers):
    for path in sources(root / "workstation"):
        for kind, include in includes(path):
            if kind == '"' and quoted_elsewhere(path, include, root / "workstation"):
                yield f"{path.relative_to(root)}: \"{include}\": only the module's one header, by angle brackets"
            if re.match(r"(editor|client|pages|release)/", include):
                yield f"{path.relative_to(root)}: \"{include}\": inside of the module"
            if include.startswith("RpaEditorManager/") and include != "RpaEditorManager/RpaAppEditorWidget.h":
                yield f"{path.relative_to(root)}: <{include}>: not the module's public header"


def check_server(root, tiers):
    for path in sources(root / "server"):
        for kind, include in includes(path):
            used = library_of(include, tiers)
            where = f"{path.relative_to(root)}: <{include}>"
            if used and tiers[used] > 0:
                yield f"{where}: the server may use tier 0 only"
            if QT_GUI.match(include):
                yield f"{where}: the server has no window"
            if include.startswith("RpaEditorManager/"):
                yield f"{where}: the server may not use the module"


def findings(root):
    document = (root / "docs" / "architecture.md").read_text(encoding="utf-8")
    tiers, layers = read_tiers(document), read_layers(document)
    if not tiers or not layers:
        return ["docs/architecture.md: no tier table or no line of layers"]
    found = list(check_platform(root, tiers))
    found += check_module(root, tiers, layers)
    found += check_workstation(root, tiers)
    found += check_server(root, tiers)
    return found


if __name__ == "__main__":
    result = findings(Path(sys.argv[1]).resolve())
    print("\n".join(result) or "every include is allowed")
    sys.exit(1 if result else 0)
