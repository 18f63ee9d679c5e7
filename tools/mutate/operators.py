# SPDX-License-Identifier: Apache-2.0
"""The operators: what is changed in code that nobody chose by hand."""

import re
from collections import Counter
from dataclasses import replace

import cpp
from changes import of_span

COMPARISONS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&"}

# Names that are easily mixed up; each is exchanged for the next of its row.
ROWS = (
    ("AppSnapshotDevelop", "AppSnapshotGray", "AppSnapshotOnline"),
    ("ToastError", "ToastSuccess", "ToastWarning", "ToastInformation", "ToastDone"),
    ("RequestStatus::Loading", "RequestStatus::Failed", "RequestStatus::Succeeded"),
    ("BeforeCloseResult::NothingPending", "BeforeCloseResult::Resolved", "BeforeCloseResult::Refused"),
    ("QMessageBox::Yes", "QMessageBox::No"),
    ("Wb::PrimaryButton", "Wb::SecondaryButton"),
    ("grayRelease", "publishOnline"),
    ("visualKind", "programKind"),
    ("UIDesignPage", "ProcessPage", "ExtendPage"),
    ("NotifySaveAppSnapshotInfo", "NotifyUpdateAppSnapshotInfo", "NotifyDeleteAppSnapshotInfo"),
    ("NotifyGetSnapshotList", "NotifyGetDevSnapshotData", "NotifyGrayOrRelease"),
    ("Qt::LeftButton", "Qt::RightButton"),
    ("Qt::PointingHandCursor", "Qt::ArrowCursor"),
    ("Qt::NoFocus", "Qt::StrongFocus"),
    ("m->visualEditor", "m->programEditor"),
    ("saveIdentity", "updateIdentity"),
)

# A declaration or an assignment of one name whose value neither calls nor creates anything.
PLAIN = re.compile(
    r"(?:(?:const )?(?:auto|bool|int)\s*[*&]?\s*(?:const )?)?(?:\w+(?:->|\.))*(?P<name>\w+) = "
    r"(?:[\w:]+|(?:qobject|static)_cast<[\w:*& ]+>\(\w+\));"
)

# The same thing of something else.
TWINS = (
    ("m->ui->version_combo->GetCurrentData().toString()", "m->currentSnapshotId"),
    ("m->currentSnapshotId", "m->ui->version_combo->GetCurrentData().toString()"),
    ("GetSnapshot(0)", "GetSnapshot(Snapshots()->GetCount() - 1)"),
    ("GetSnapshotId(0)", "GetSnapshotId(Snapshots()->GetCount() - 1)"),
    ("->hide()", "->show()"),
    ("->show()", "->hide()"),
    (".constFirst()", ".constLast()"),
    (".first()", ".last()"),
)


def all_changes(file, source):
    """Every change that the operators know for a file, in the order of its lines."""
    code = _Code(file, source)
    for body in code.bodies:
        _statements(code, body)
        _conditions(code, body)
        _arguments(code, body)
        _tokens(code, body)
    _constants(code)
    unique = {}
    for change in code.changes:
        if change.old != change.new:
            unique.setdefault((change.line, change.old, change.new), change)
    return sorted(_told_apart(source, list(unique.values())), key=lambda one: one.line)


# Changes of equal lines take as many of the lines before as it needs to tell one from the other.
def _told_apart(source, changes):
    lines = source.split("\n")
    while True:
        counts = Counter(change.key for change in changes)
        if len(counts) == len(changes):
            return changes
        changes = [change if counts[change.key] == 1 else _with_line_before(lines, change) for change in changes]


def _with_line_before(lines, change):
    before = lines[change.line - 2] + "\n"
    return replace(change, line=change.line - 1, old=before + change.old, new=before + change.new)


class _Code:
    def __init__(self, file, source):
        self.file, self.source = file, source
        self.tokens = cpp.tokenize(source)
        self.pairs = cpp.partners(self.tokens)
        self.bodies = cpp.bodies(self.tokens, self.pairs)
        self.changes = []

    def text(self, first, last):
        return self.source[self.tokens[first].start : self.tokens[last].end]

    def add(self, operator, first, last, replacement):
        start, end = self.tokens[first].start, self.tokens[last].end
        self.changes.append(of_span(self.source, self.file, operator, start, end, replacement))


def _statements(code, body):
    previous = None
    for one in cpp.statements(code.tokens, code.pairs, body):
        text = code.text(one.first, one.last)
        if code.tokens[one.first].text == "return":
            _return(code, one)
        elif not _declares(code, one):
            kind = "connection removed" if "connect(" in text else "statement removed"
            code.add(kind, one.first, one.last, ";" if one.controlled else "")
        if previous and previous.block == one.block and previous.last + 1 == one.first and not one.controlled:
            _swap(code, previous, one)
        previous = one


def _swap(code, one, other):
    if code.tokens[one.first].text in ("return", "break") or code.tokens[other.first].text in ("return", "break"):
        return
    first, second = code.text(one.first, one.last), code.text(other.first, other.last)
    if _connect_different_things(code, one, other) or _are_plain_and_apart(first, second):
        return
    between = code.source[code.tokens[one.last].end : code.tokens[other.first].start]
    code.add("statements swapped", one.first, other.last, second + between + first)


# Slots are called in the order of their connections only where one signal of one sender has several.
def _connect_different_things(code, one, other):
    sources = []
    for statement in (one, other):
        opening = statement.first + 1
        if code.tokens[statement.first].text != "connect" or code.tokens[opening].text != "(":
            return False
        arguments = cpp.arguments(code.tokens, code.pairs, opening)
        sources.append([code.text(*part) for part in arguments[:2]])
    return sources[0] != sources[1]


def _are_plain_and_apart(first, second):
    names = [found["name"] for found in map(PLAIN.fullmatch, (first, second)) if found]
    return (
        len(names) == 2
        and not re.search(rf"\b{names[0]}\b", second)
        and not re.search(rf"\b{names[1]}\b", first)
    )


def _return(code, one):
    if one.first + 1 == one.last:
        code.add("return removed", one.first, one.last, ";" if one.controlled else "")
        return
    value = code.text(one.first + 1, one.last - 1)
    if value in ("true", "false"):
        return  # done as a constant
    code.add("return value", one.first, one.last, "return {};")
    code.add("return value negated", one.first, one.last, f"return !({value});")


def _declares(code, one):
    first, second = code.tokens[one.first], code.tokens[one.first + 1]
    if first.text in ("const", "auto", "constexpr"):
        return True
    return first.kind == "word" and first.text not in ("delete", "emit", "break") and second.kind == "word"


def _conditions(code, body):
    for first, last in cpp.conditions(code.tokens, code.pairs, body):
        text = code.text(first, last)
        signs = [code.tokens[index].text for index in range(first, last + 1)]
        if not {"==", "!="} & set(signs) and (signs[0] != "!" or {"&&", "||"} & set(signs)):
            code.add("condition negated", first, last, f"!({text})")  # else another operator does the same
        code.add("condition forced true", first, last, "true")
        code.add("condition forced false", first, last, "false")


def _arguments(code, body):
    for arguments in cpp.calls(code.tokens, code.pairs, body):
        for one, other in zip(arguments, arguments[1:]):
            between = code.source[code.tokens[one[1]].end : code.tokens[other[0]].start]
            code.add("arguments swapped", one[0], other[1], code.text(*other) + between + code.text(*one))


def _tokens(code, body):
    for index in range(body[0] + 1, body[1]):
        token = code.tokens[index]
        if token.kind == "sign" and token.text in COMPARISONS and not _is_template(code, index):
            code.add("comparison", index, index, COMPARISONS[token.text])
        elif token.text == "!" and code.tokens[index + 1].kind == "word":
            code.add("not removed", index, index, "")
        elif token.text in ("+", "-") and code.tokens[index - 1].kind in ("word", "number"):
            code.add("arithmetic", index, index, "-" if token.text == "+" else "+")
        else:
            _literal(code, index)
    _names(code, body)


def _literal(code, index):
    token = code.tokens[index]
    if token.text in ("true", "false"):
        code.add("constant", index, index, "false" if token.text == "true" else "true")
    elif token.kind == "number" and token.text.isdigit():
        code.add("constant", index, index, str(int(token.text) + 1))
    elif token.kind == "text" and token.text.endswith('"') and len(token.text) > 2:
        code.add("text", index, index, token.text[:-1] + '~"')


def _names(code, body):
    start, end = code.tokens[body[0]].end, code.tokens[body[1]].start
    choices = [(row[at], row[(at + 1) % len(row)]) for row in ROWS for at in range(len(row))]
    for operator, pairs in (("name exchanged", choices), ("twin", TWINS)):
        for old, new in pairs:
            name = r"(?<![\w:>.])" * old[0].isalpha() + re.escape(old) + r"(?!\w)"
            for match in re.finditer(name, code.source[start:end]):
                at = start + match.start()
                code.changes.append(of_span(code.source, code.file, operator, at, at + len(old), new))


# Values that stand outside the functions: named numbers and tables.
def _constants(code):
    inside = [range(*body) for body in code.bodies]
    for index, token in enumerate(code.tokens):
        if not any(index in body for body in inside) and token.kind in ("number", "text"):
            _literal(code, index)


def _is_template(code, index):
    if code.tokens[index].text not in ("<", ">"):
        return False
    start = code.tokens[index].start
    spaced = code.source[start - 1] == " " and code.source[start + 1] == " "
    return not spaced  # clang-format puts blanks around a comparison only
