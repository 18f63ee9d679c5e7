# SPDX-License-Identifier: Apache-2.0
"""What a program did outside of itself: each call with start, duration, a short input and result. span_code.py has the
calls made here. What comes faster than it can be told is added up, the oldest first.
"""

import builtins
import collections
import re
import threading
import time
import types

from debug_values import SECRET, Reader, is_a
from span_code import CALL

TEXT = 120
ERROR = 200
AT_ONCE = 1000              # between two times that the editor is told
IN_A_FRAME = 100
FOLDED_LINES = 10000

# By the module of a function, or of the type whose method it is: the longest name that fits counts.
KINDS = {
    "_io": "file", "io": "file", "codecs": "file", "posix": "file", "nt": "file", "os": "file", "shutil": "file",
    "pathlib": "file", "glob": "file", "csv": "file", "_csv": "file", "zipfile": "file", "tarfile": "file",
    "urllib": "http", "http": "http", "requests": "http", "httpx": "http", "ftplib": "http", "socket": "http",
    "openpyxl": "excel", "xlrd": "excel", "xlwt": "excel", "pandas": "excel",
    "smtplib": "mail", "imaplib": "mail", "poplib": "mail", "subprocess": "program",
    **dict.fromkeys(("sqlite3", "_sqlite3", "pymysql", "MySQLdb", "psycopg2", "pyodbc", "cx_Oracle", "oracledb",
                     "sqlalchemy"), "database"),
    "rpa_api": "dialog",
}
NAMED = {"system": "program", "popen": "program", "startfile": "program", "read_csv": "file", "to_csv": "file",
         "read_sql": "database", "to_sql": "database", "list": "file"}
FUNCTIONS = (types.FunctionType, types.BuiltinFunctionType, types.MethodType, type)
IN_MEMORY = ("StringIO", "BytesIO")
PRIVATE = re.compile(
    r"((?:pass(?:word|wd)?|pwd|token|secret|api[-_]?key|authorization|密码|口令)[\"']?\s*[=:]\s*)[^\s&;,]+(?:\s[^\s&;,]+)?", re.I)
USER_OF_ADDRESS = re.compile(r"(//[^/@:\s]*:)[^/@\s]+@")


def without_secrets(text):
    return PRIVATE.sub(r"\1" + SECRET, USER_OF_ADDRESS.sub(r"\1" + SECRET + "@", text))


def kind_of_call(function):
    """Empty when it does not touch the outside."""
    if type(function) not in FUNCTIONS:
        return ""
    owner = getattr(function, "__self__", None) if type(function) is not type else None
    if owner is None or type(owner) is types.ModuleType:
        module, name = getattr(function, "__module__", None), function.__name__
    else:
        owner = owner if type(owner) is type else type(owner)
        module, name = owner.__module__, function.__name__
        if owner.__name__ in IN_MEMORY:
            return ""
    if type(module) is not str:
        return ""
    if function is list:
        return "file"
    kind = KINDS.get(module) or KINDS.get(module.partition(".")[0], "")
    if kind == "dialog" and name.startswith("browser_"):
        return "browser"
    return NAMED.get(name, kind) if kind else ""


READER = Reader(lambda call: (False, "…"))  # texts of built-in types only


def _short(value):
    if is_a(value, str):
        return without_secrets(str.__getitem__(value, slice(4 * TEXT)))[:TEXT] if type(value) is str else \
            (SECRET if type(value).__name__ == "_Secret" else READER.short(value)[:TEXT])
    if is_a(value, (list, tuple)) and all(type(entry) is str for entry in value[:20]):
        return without_secrets(" ".join(value[:20])[:4 * TEXT])[:TEXT]
    if type(value).__module__ == "pathlib":
        return str(value)[:TEXT]
    return without_secrets(READER.short(value))[:TEXT]


def input_of(kind, name, arguments, named):
    """What tells one call from another; never what could be private."""
    if name in ("write", "writelines", "writerows", "list", "commit", "fetchall", "login"):
        return ""
    first = arguments[0] if arguments else next(iter(named.values()), None)
    if first is None:
        return ""
    if kind == "http" and type(first).__name__ == "Request":
        return without_secrets(f"{first.get_method()} {first.full_url}")[:TEXT]
    if kind == "mail" and name == "send_message":
        return _short(f"{first.get('To')} {first.get('Subject')}")
    if not arguments and PRIVATE.match(next(iter(named)) + "="):
        return SECRET
    return _short(first)


def result_of(value):
    if value is None:
        return ""
    if is_a(value, (bool, int, float)):
        return READER.short(value)[:TEXT]
    if is_a(value, str):
        return _short(value) if len(value) < TEXT else f"{str.__len__(value)} 个字符：{_short(value)}"[:TEXT]
    if is_a(value, (bytes, bytearray)):
        return f"{len(value)} 字节"
    if is_a(value, (list, tuple, dict, set)):
        return f"{len(value)} 项"
    for name in ("status", "status_code", "returncode"):
        if type(value).__module__.partition(".")[0] in KINDS:
            number = getattr(value, name, None)
            if type(number) is int:
                return str(number)
    return ""


def _quietly(read, *arguments):
    """What is noted of a call must never change what becomes of it."""
    try:
        return read(*arguments)
    except Exception:
        return ""


class Spans:
    def __init__(self):
        self.sites = []
        self.lock = threading.Lock()
        self.began = time.perf_counter()
        self.spans = collections.deque()
        self.sums = {}

    def begin(self):
        """Right before the program."""
        self.began = time.perf_counter()
        setattr(builtins, CALL, self.call)

    def now(self):
        return int((time.perf_counter() - self.began) * 1e6)

    def call(self, site, function, /, *arguments, **named):
        kind = _quietly(kind_of_call, function)
        if not kind:
            return function(*arguments, **named)
        line, name = self.sites[site], function.__name__
        text = _quietly(input_of, kind, name, arguments, named)
        start = time.perf_counter()
        try:
            result = function(*arguments, **named)
        except BaseException as error:
            self.add(start, line, kind, name, text, "", _quietly(self.words, error) or type(error).__name__)
            raise
        self.add(start, line, kind, name, text, _quietly(result_of, result), "")
        return result

    @staticmethod
    def words(error):
        return without_secrets(f"{type(error).__name__}: {error}")[:ERROR]

    def add(self, start, line, kind, name, text, result, error):
        span = (int((start - self.began) * 1e6), int((time.perf_counter() - start) * 1e6), line, kind, name, text,
                result, error)
        with self.lock:
            self.spans.append(span)
            if len(self.spans) > AT_ONCE:
                self.fold(self.spans.popleft())

    def fold(self, span):
        key = (span[2], span[3])
        count, total, longest, failed = self.sums.get(key, (0, 0, 0, 0))
        if key in self.sums or len(self.sums) < FOLDED_LINES:
            self.sums[key] = count + 1, total + span[1], max(longest, span[1]), failed + bool(span[7])

    def flush(self, link):
        """From the thread that watches, and at the end."""
        with self.lock:
            spans, self.spans = list(self.spans), collections.deque()
            sums, self.sums = [[*key, *sums] for key, sums in self.sums.items()], {}
        for first in range(0, max(len(spans), len(sums)), IN_A_FRAME):
            last = first + IN_A_FRAME
            link.send({"t": "spans", "spans": spans[first:last], "sums": sums[first:last]})


def without_wrapper(error):
    """Takes the frames of this file out of the tracebacks of an error, and of those that led to it."""
    seen = set()
    while error is not None and id(error) not in seen:
        seen.add(id(error))
        error.__traceback__ = _without(error.__traceback__)
        error = error.__cause__ or error.__context__


def _without(trace):
    kept = []
    while trace is not None:
        if trace.tb_frame.f_code.co_filename != __file__:
            kept.append(trace)
        trace = trace.tb_next
    for entry, following in zip(kept, kept[1:] + [None]):
        entry.tb_next = following
    return kept[0] if kept else None
