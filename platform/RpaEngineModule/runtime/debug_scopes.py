# SPDX-License-Identifier: Apache-2.0
"""Where a program that stands still has its variables: locals, globals, parameters and table of the page."""

import ctypes
import inspect

from debug_values import HIDDEN_KINDS, is_a

TABLE_ROWS = 100


class Refused(ValueError):
    """The text is for the author."""


class Scope:
    """Variables by name: [(name, value)], and how one is set."""

    def __init__(self, title, entries, store):
        self.title, self.entries, self.store = title, entries, store


def scopes_of(frame, call_failed):
    own = [] if frame.f_locals is frame.f_globals else [_locals(frame)]
    return own + [_globals(frame), *_page(call_failed)]


def _visible(names):
    return sorted((name, value) for name, value in list(names.items())
                  if not name.startswith("__") and not is_a(value, HIDDEN_KINDS) and name not in ("_", "rpa"))


def _locals(frame):
    return Scope("局部变量", _visible(frame.f_locals), lambda name, value: set_local(frame, name, value))


def _globals(frame):
    return Scope("全局变量", _visible(frame.f_globals), frame.f_globals.__setitem__)


def _page(call_failed):
    """The parameters and the table of the page, where there are any."""
    import rpa_api

    try:
        names = rpa_api._call("param.names")
        parameters = [(name, rpa_api.get_param(name)) for name in names]
        scopes = [Scope("界面参数", parameters, rpa_api.set_param)] if names else []
    except call_failed:
        scopes = []
    try:
        return scopes + [Scope("界面表格", _table_rows(rpa_api), None)]
    except call_failed:
        return scopes


def _table_rows(rpa_api):
    columns = rpa_api.table_columns()
    rows = rpa_api._call("table.rows", 0)[:TABLE_ROWS]
    return [(f"[{number}]", dict(zip(columns, cells))) for number, cells in enumerate(rows)]


def value_in(frame, expression):
    """What the expression assigns stays: locals of the function, and what is none of them as a global."""
    names, code = frame.f_locals, frame.f_code
    if names is frame.f_globals or expression.nested:
        return expression.value(frame)
    value = eval(expression.code, frame.f_globals, names)
    if code.co_flags & inspect.CO_OPTIMIZED:
        for name in set(names) - {*code.co_varnames, *code.co_cellvars, *code.co_freevars}:
            frame.f_globals[name] = names.pop(name)
    keep_locals(frame)
    return value


def keep_locals(frame):
    """What was assigned in f_locals becomes the function's own. Asking for f_locals again would undo it."""
    if frame.f_code.co_flags & inspect.CO_OPTIMIZED and hasattr(ctypes.pythonapi, "PyFrame_LocalsToFast"):
        ctypes.pythonapi.PyFrame_LocalsToFast(ctypes.py_object(frame), ctypes.c_int(0))


def set_local(frame, name, value):
    frame.f_locals[name] = value
    keep_locals(frame)
