"""What a process can ask of the editor and its page: parameters, table, dialogs, browser, captured elements, log."""

import datetime
import json
import time

_call = None
_log = None
_processes = {}


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

def get_param(name):
    return _call("param.get", name)


def set_param(name, value):
    _call("param.set", name, _plain(value))


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


def _column(column):
    if isinstance(column, int):
        return column
    columns = table_columns()
    if column not in columns:
        raise LookupError(f"表格没有名为“{column}”的列")
    return columns.index(column)


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


_FIND = """(function () {
  const byCss = css => { try { return css ? document.querySelector(css) : null; } catch (e) { return null; } };
  const byXpath = path => { try { return path ? document.evaluate(path, document, null,
      XPathResult.FIRST_ORDERED_NODE_TYPE, null).singleNodeValue : null; } catch (e) { return null; } };
  const element = byCss(%s) || byXpath(%s);
  if (!element) return {found: false};
  const act = %s;
  return {found: true, value: act(element)};
})()"""

_ACTIONS = {
    "exists": "element => true",
    "click": "element => { element.scrollIntoView({block: 'center'}); element.focus(); element.click(); return true; }",
    "text": "element => /^(INPUT|TEXTAREA|SELECT)$/.test(element.tagName) ? element.value : element.innerText",
    "table": """element => Array.from((element.closest('table') || element).querySelectorAll('tr'))
        .map(row => Array.from(row.querySelectorAll('th,td')).map(cell => cell.innerText.trim()))
        .filter(row => row.length)""",
}


def _input_action(text):
    return """element => { element.focus(); element.value = %s;
        element.dispatchEvent(new Event('input', {bubbles: true}));
        element.dispatchEvent(new Event('change', {bubbles: true})); return true; }""" % json.dumps(str(text))


def _on_element(element, action, timeout):
    """Does the action on the element as soon as it is there."""
    node = _call("element", element)
    script = _FIND % (json.dumps(node["css"]), json.dumps(node["xpath"]), action)
    give_up = time.monotonic() + float(timeout)
    while True:
        result = browser_script(script)
        if isinstance(result, dict) and result.get("found"):
            return result.get("value")
        if time.monotonic() >= give_up:
            raise LookupError(f"网页上找不到元素“{node['name']}”")
        time.sleep(0.1)


def browser_click(element, timeout=10):
    _on_element(element, _ACTIONS["click"], timeout)


def browser_input(element, text, timeout=10):
    _on_element(element, _input_action(text), timeout)


def browser_read(element, timeout=10):
    return _on_element(element, _ACTIONS["text"], timeout)


def browser_wait(element, timeout=10):
    _on_element(element, _ACTIONS["exists"], timeout)


def browser_table(element, timeout=10):
    """The rows of a table as lists of cell texts."""
    return _on_element(element, _ACTIONS["table"], timeout)
