# SPDX-License-Identifier: Apache-2.0
"""Answers what the program editor asks about a Python text: completions, signatures, documentation, places of a name.

Started as: python3 -I -B -u -X utf8 code_helper.py. One line of JSON per question on standard input, one per answer on
standard output. The text is looked at and never run: jedi reads modules as files; what it loads to look at are compiled
modules of this Python alone, never those of the author's folders or packages.

A question: {"id", "ask", "line", "column"} and, where they changed since the last one, "text" and "paths" (folders with
modules, besides Python's own). Lines count from 1, columns from 0 in characters.
"""

import gc
import json
import keyword
import os
import queue
import re
import sys
import threading

# What every program of this workstation has without an import.
PRELUDE = "import rpa\n"
MOST_ITEMS = 2000
MOST_PLACES = 5000
MOST_SIGNATURES = 6
TEXT_CHARACTERS = 4000
LABEL_CHARACTERS = 200
QUESTIONS_BETWEEN_COLLECTIONS = 20
FOLDER = os.path.dirname(os.path.abspath(__file__))
# What programs have besides Python: rpa.pyi.
MODULES = os.path.join(FOLDER, "modules")
# A name, or one that is given as an argument.
NAME = re.compile(r"[^\W\d]\w*=?\Z")

# Looked at while nobody asks: what they need is then in memory when somebody does.
WARM_UP = (
    "", "rpa.", "import os\nos.", "''.", "[].", "{}.", "import datetime\ndatetime.datetime.now().", "import json\njson.",
    "with open('') as f:\n    f.", "import re\nre.match('', '').", "import time\ntime.", "import pathlib\npathlib.Path('').",
    "import openpyxl\nopenpyxl.load_workbook('').", "import requests\nrequests.get('').",
)


class Texts:
    """The text that questions are about, and how jedi sees it."""

    def __init__(self, jedi):
        self.jedi = jedi
        self.environment = jedi.InterpreterEnvironment()
        self.text = ""
        self.look_in([])

    def look_in(self, paths):
        self.project = self.jedi.Project(MODULES, added_sys_path=[MODULES, *paths], smart_sys_path=False)

    def script(self, text=None):
        return self.jedi.Script(PRELUDE + (self.text if text is None else text), project=self.project, environment=self.environment)


def bounded(text, characters=TEXT_CHARACTERS):
    text = str(text)
    return text if len(text) <= characters else text[:characters] + "…"


def first_paragraph(text):
    return bounded(str(text).strip().split("\n\n")[0], LABEL_CHARACTERS * 2)


def with_inserted(text, line, column, inserted):
    lines = text.split("\n")
    row = lines[line - 1]
    lines[line - 1] = row[:column] + inserted + row[column:]
    return "\n".join(lines)


def complete(texts, line, column, question):
    inserted = question.get("insert", "")
    text = texts.text
    if inserted:
        text = with_inserted(text, line, column, inserted)
    elif not text.split("\n")[line - 1].strip():
        # A line that is empty belongs to no function as jedi sees it; with any name on it, it does.
        text = with_inserted(text, line, column, "_")
    found = texts.script(text).complete(line + 1, column + len(inserted))
    items = [[name.name, name.type] for name in found[:MOST_ITEMS] if NAME.match(name.name)]
    return {"items": items}


def signatures(texts, line, column, _):
    found = []
    for signature in texts.script().get_signatures(line + 1, column)[:MOST_SIGNATURES]:
        place, start = signature.bracket_start
        found.append({
            "name": bounded(signature.name, LABEL_CHARACTERS),
            "parameters": [bounded(part.to_string(), LABEL_CHARACTERS) for part in signature.params],
            "current": -1 if signature.index is None else signature.index,
            "text": first_paragraph(signature.docstring(raw=True)),
            "line": place - 1,
            "column": start,
        })
    return {"signatures": found}


def explain(texts, line, column, _):
    found = []
    for name in texts.script().help(line + 1, column)[:MOST_SIGNATURES]:
        heads = [signature.to_string() for signature in name.get_signatures()[:MOST_SIGNATURES]]
        kinds = sorted({value.name for value in name.infer()}) if name.type in ("statement", "param", "instance") else []
        found.append({
            "name": bounded(name.name, LABEL_CHARACTERS),
            "kind": name.type,
            "heads": [bounded(head, TEXT_CHARACTERS) for head in heads],
            "values": [bounded(kind, LABEL_CHARACTERS) for kind in kinds[:MOST_SIGNATURES]],
            "text": bounded(name.docstring(raw=True)),
        })
    return {"names": found}


def described(name):
    """Where a name is defined; a line below 1: not in the text."""
    inside = name.module_path is None and name.line is not None and name.line > 1
    path = str(name.module_path or "")
    own = os.path.dirname(path) == MODULES
    # jedi knows what is built into Python from descriptions of its own.
    has_file = path and not inside and not own and "typeshed" not in path
    return {
        "name": bounded(name.full_name or name.name, LABEL_CHARACTERS),
        "line": name.line - 1 if inside else 0,
        "column": name.column if inside else 0,
        "file": bounded(path) if has_file else "",
        "fileLine": name.line or 0 if has_file else 0,
        "own": own or (name.module_path is None and name.line == 1),
    }


def define(texts, line, column, _):
    script = texts.script()
    found = script.goto(line + 1, column, follow_imports=True, follow_builtin_imports=True)
    return {"definitions": [described(name) for name in found[:MOST_SIGNATURES]]}


def is_of_import(leaf):
    """Another name there would be another module: all but what stands behind "as"."""
    parent = leaf.parent
    if parent.type in ("import_as_name", "dotted_as_name"):
        return parent.children[-1] is not leaf
    return parent.type in ("import_name", "import_from", "dotted_name", "import_as_names", "dotted_as_names")


def find_places(texts, line, column, _):
    script = texts.script()
    leaf = script._module_node.get_name_of_position((line + 1, column))
    if leaf is None or keyword.iskeyword(leaf.value):
        return {"refused": "nothing"}
    definitions = [described(name) for name in script.goto(line + 1, column)]
    if any(definition["line"] < 1 for definition in definitions):
        return {"refused": "elsewhere", "name": bounded(leaf.value, LABEL_CHARACTERS)}
    places = {(leaf.line, leaf.column)}
    places |= {(name.line, name.column) for name in script.get_references(line + 1, column, scope="file")
               if name.module_path is None and name.line > 1 and name.name == leaf.value}
    leaves = [script._module_node.get_name_of_position(place) for place in sorted(places)[:MOST_PLACES]]
    leaves = [found for found in leaves if found is not None and found.value == leaf.value]
    if any(is_of_import(found) for found in leaves):
        return {"refused": "import", "name": bounded(leaf.value, LABEL_CHARACTERS)}
    return {"name": leaf.value, "places": [[found.line - 1, found.column] for found in leaves]}


ANSWERS = {"complete": complete, "signatures": signatures, "explain": explain, "define": define, "places": find_places}


def answer(texts, question):
    if "paths" in question:
        texts.look_in([str(path) for path in question["paths"]])
    if "text" in question:
        texts.text = question["text"]
    lines = texts.text.split("\n")
    line = min(max(int(question["line"]), 1), len(lines))
    column = min(max(int(question["column"]), 0), len(lines[line - 1]))
    return ANSWERS[question["ask"]](texts, line, column, question)


def load_jedi():
    import jedi

    jedi.settings.auto_import_modules = []  # they would be run
    jedi.settings.dynamic_params_for_other_modules = False
    sys.path.insert(0, FOLDER)
    try:
        import jedi_scopes
        jedi_scopes.quicken()
    finally:
        sys.path.remove(FOLDER)
    return jedi


def read_lines(source, questions):
    for line in source:
        questions.put(line)
    questions.put(None)


def warm_up(texts, questions):
    """While nobody asks."""
    for text in WARM_UP:
        if not questions.empty():
            return
        lines = text.split("\n")
        try:
            found = texts.script(text).complete(len(lines) + 1, len(lines[-1]))
            for name in found[:MOST_ITEMS]:
                name.type
        except Exception:  # a module that is not there
            pass
    gc.collect()
    gc.freeze()


def serve(texts, questions, send):
    answered = 0
    while True:
        line = questions.get()
        if line is None:
            return
        question = json.loads(line)
        try:
            result = answer(texts, question)
        except Exception as error:  # jedi's own mistakes in texts that are half written
            result = {"failed": bounded(f"{type(error).__name__}: {error}", LABEL_CHARACTERS)}
        result["id"] = question["id"]
        send(result)
        answered += 1
        if questions.empty() and answered % QUESTIONS_BETWEEN_COLLECTIONS == 0:
            gc.collect()


def main():
    # Whatever prints must not come between the answers.
    output = os.fdopen(os.dup(1), "w", encoding="utf-8", newline="\n")
    null = os.open(os.devnull, os.O_WRONLY)
    os.dup2(null, 1)
    os.dup2(null, 2)

    def send(value):
        output.write(json.dumps(value, separators=(",", ":")) + "\n")
        output.flush()

    try:
        jedi = load_jedi()
    except ImportError:
        send({"id": 0, "missing": True})
        return
    questions = queue.SimpleQueue()
    threading.Thread(target=read_lines, args=(sys.stdin, questions), daemon=True).start()
    # Between questions and not in the middle of one.
    gc.disable()
    texts = Texts(jedi)
    send({"id": 0, "ready": True, "version": bounded(jedi.__version__, LABEL_CHARACTERS)})
    warm_up(texts, questions)
    serve(texts, questions, send)


if __name__ == "__main__":
    main()
