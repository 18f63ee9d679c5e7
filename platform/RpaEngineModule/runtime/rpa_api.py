# SPDX-License-Identifier: Apache-2.0
"""What a process can ask of the editor and its page: parameters, table, dialogs, browser, captured elements, log."""

import datetime
import functools
import json
import os
import time

_call = None
_log = None
_processes = {}
_secret_params = None


def connect(call, log):
    """call(name, *arguments) -> value; log(level, text)."""
    global _call, _log
    _call, _log = call, log


def set_processes(processes):
    _processes.clear()
    _processes.update(processes)


def run_process(name):
    try:
        process = _processes[name]
    except KeyError:
        raise LookupError(f"找不到流程“{name}”") from None
    return process()


def unknown_command(name):
    raise LookupError(f"此工作站不认识命令“{name}”，请更新或删除该步骤")


# Log

def log(text, level="info"):
    _log(level, str(text))


# Parameters of the page

class _Secret(str):
    """The value of a password parameter; it is typed into password fields only."""


def get_param(name):
    global _secret_params
    value = _call("param.get", name)
    if _secret_params is None:
        _secret_params = frozenset(_call("param.secrets"))
    return _Secret(value) if name in _secret_params and isinstance(value, str) else value


def set_param(name, value):
    # Several files or choices.
    several = isinstance(value, (list, tuple))
    _call("param.set", name, [_plain(entry) for entry in value] if several else _plain(value))


def set_progress(name, percent):
    """Moves a progress bar of the page: 0 to 100, beyond that to the end on this side."""
    _call("param.set", name, min(100.0, max(0.0, float(percent))))


def set_picture(name, path):
    """Shows a picture of a file on the page; an empty path shows none."""
    _call("param.set", name, os.path.abspath(os.fspath(path)) if path else "")


# Table of the page

def table_columns():
    return _call("table.columns")


def table_count():
    return _call("table.count")


def table_rows():
    """All rows as a list of dictionaries by column name."""
    columns = table_columns()
    rows = []
    while True:
        part = _call("table.rows", len(rows))
        if not part:
            return rows
        rows.extend(dict(zip(columns, cells)) for cells in part)


def table_get(row, column):
    return _call("table.get", int(row), _column(column))


def table_set(row, column, value):
    _call("table.set", int(row), _column(column), _plain(value))


def table_append(values):
    if isinstance(values, dict):
        values = [values.get(name) for name in table_columns()]
    return _call("table.append", [_plain(value) for value in values])


def table_clear():
    _call("table.clear")


def table_fill(rows):
    """Puts the rows in the place of all rows; what does not fit leaves the table as it was."""
    filled = _row_commands().Rows(rows)
    columns = table_columns()
    places = [filled.names.index(name) if name in filled.names else -1 for name in columns]
    for name in filled.names:
        if name not in columns:
            raise LookupError(f"界面表格没有名为“{name}”的列，请先在界面设计中添加这一列")
    cells = [[None] * len(filled.rows) if place < 0 else filled.cells(filled.places()[place]) for place in places]
    before = [[row.get(name) for name in columns] for row in table_rows()]
    table_clear()
    try:
        count = _extend([[_plain(cell) for cell in row] for row in zip(*cells)])
        if count < len(filled.rows):
            raise ValueError(f"第 {filled.number_of_row(count)} 行的值与界面表格的列不符，表格没有改变")
    except Exception:
        table_clear()
        _extend(before)
        raise


def _extend(rows):
    """How many of the rows the table took: none behind one that does not fit."""
    for first in range(0, len(rows), 1000):
        part = rows[first:first + 1000]
        count = _call("table.extend", part)
        if count < len(part):
            return first + count
    return len(rows)


def _column(column):
    if isinstance(column, int):
        return column
    columns = table_columns()
    if column not in columns:
        raise LookupError(f"表格没有名为“{column}”的列")
    return columns.index(column)


# Whole tables

def _row_commands():
    import row_commands  # only programs that use them pay for it
    return row_commands


def rows_of(source, rows):
    """The rows of the page's table, or those of a variable."""
    if source == "page":
        return _row_commands().Rows(table_rows(), table_columns())
    if rows is None:
        raise ValueError("请填写要处理的各行，或把来源改为界面表格")
    return _row_commands().Rows(rows)


def filter_rows(rows, column, comparison, value):
    return _row_commands().filter_rows(rows, column, comparison, value)


def sort_rows(rows, columns, order):
    return _row_commands().sort_rows(rows, columns, order == "descending")


def unique_rows(rows, columns, keep):
    return _row_commands().unique_rows(rows, columns, keep)


def group_rows(rows, by, function, columns):
    return _row_commands().group_rows(rows, by, function, columns)


def join_rows(rows, others, column, other_column, kind):
    return _row_commands().join_rows(rows, rows_of("rows", others), column, other_column, kind)


def _plain(value):
    """A value that JSON can carry."""
    if isinstance(value, (datetime.date, datetime.datetime)):
        return value.isoformat()
    if value is None or isinstance(value, (bool, int, float, str)):
        return value
    return str(value)


# Dialogs

def message(text):
    _call("dialog.message", str(text))


def confirm(text):
    return bool(_call("dialog.confirm", str(text)))


def ask(text, value=""):
    """The text that the user typed, None when it was cancelled."""
    return _call("dialog.input", str(text), str(value))


# Browser

def browser_open(url):
    _call("browser.open", str(url))


def browser_script(script):
    return _call("browser.script", script)


_REASONS = {
    "missing": "网页上找不到元素“{}”",
    "several": "网页上有多个元素与“{}”相符，无法确定是哪一个，请重新捕获",
    "changed": "网页已改变：元素“{}”的位置上是别的元素，没有对它操作，请重新捕获",
    "secret": "密码只能填写到密码框中，“{}”不是密码框",
}

_ACTIONS = {
    "exists": "element => true",
    "click": "element => { element.scrollIntoView({block: 'center'}); element.focus(); element.click(); return true; }",
    "text": "element => /^(INPUT|TEXTAREA|SELECT)$/.test(element.tagName) ? element.value : element.innerText",
    "table": """element => Array.from((element.closest('table') || element).querySelectorAll('tr'))
        .map(row => Array.from(row.querySelectorAll('th,td')).map(cell => cell.innerText.trim()))
        .filter(row => row.length)""",
}


@functools.lru_cache(maxsize=None)
def _find_element():
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "find_element.js")
    with open(path, encoding="utf-8") as file:
        return file.read().strip()


def _input_action(text):
    return """element => { element.focus(); element.value = %s;
        element.dispatchEvent(new Event('input', {bubbles: true}));
        element.dispatchEvent(new Event('change', {bubbles: true})); return true; }""" % json.dumps(str(text))


def _on_element(element, action, timeout, reads=False, secret=False):
    """Does the action on the element as soon as it is there and is believed to be the captured one."""
    node = _call("element", element)
    script = "%s(%s, %s, %s, %s)" % (_find_element(), json.dumps(node), action, json.dumps(reads), json.dumps(secret))
    give_up = time.monotonic() + float(timeout)
    while True:
        result = browser_script(script)
        if not isinstance(result, dict):
            result = {}
        if result.get("found"):
            return result.get("value")
        reason = _REASONS.get(result.get("reason"), _REASONS["missing"])
        if result.get("reason") == "secret" or time.monotonic() >= give_up:
            raise LookupError(reason.format(node["name"]))
        time.sleep(0.1)


def browser_click(element, timeout=10):
    _on_element(element, _ACTIONS["click"], timeout)


def browser_input(element, text, timeout=10):
    _on_element(element, _input_action(text), timeout, secret=isinstance(text, _Secret))


def browser_read(element, timeout=10):
    return _on_element(element, _ACTIONS["text"], timeout, reads=True)


def browser_wait(element, timeout=10):
    _on_element(element, _ACTIONS["exists"], timeout, reads=True)


def browser_table(element, timeout=10):
    """The rows of a table as lists of cell texts."""
    return _on_element(element, _ACTIONS["table"], timeout, reads=True)
