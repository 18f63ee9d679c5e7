# SPDX-License-Identifier: Apache-2.0
"""Finds the calls of a program that may touch the outside, and lets rpa_spans.py make them. Nothing else of the program
changes: a statement without such a call is compiled as it stands.
"""

import ast
import re

CALL = "__rpa_call__"

# What an imported module offers, by the module's first name; a prefix ends with a star.
MODULES = {
    "builtins": ("open",), "io": ("open",), "codecs": ("open",),
    "os": ("open", "remove", "unlink", "rename", "replace", "listdir", "scandir", "makedirs", "mkdir", "rmdir",
           "system", "popen", "startfile"),
    "shutil": ("copy*", "move", "rmtree", "make_archive", "unpack_archive"),
    "glob": ("glob",), "zipfile": ("ZipFile",), "tarfile": ("open",),
    "urllib": ("urlopen", "urlretrieve"),
    "requests": ("get", "post", "put", "delete", "patch", "head", "options", "request"),
    "httpx": ("get", "post", "put", "delete", "patch", "head", "options", "request"),
    "ftplib": ("FTP*",), "socket": ("create_connection",),
    "openpyxl": ("load_workbook",), "xlrd": ("open_workbook",), "pandas": ("read_*",),
    "smtplib": ("SMTP*",), "imaplib": ("IMAP4*",), "poplib": ("POP3*",),
    "subprocess": ("run", "call", "check_call", "check_output", "Popen", "getoutput", "getstatusoutput"),
    "rpa": ("browser_*", "message", "confirm", "ask"),
    **{name: ("connect",) for name in ("sqlite3", "pymysql", "MySQLdb", "psycopg2", "pyodbc", "cx_Oracle", "oracledb")},
}
# Of whatever object; rpa_spans.py looks at its type.
METHODS = frozenset((
    "read", "readlines", "writelines", "writerows", "read_text", "write_text", "read_bytes", "write_bytes",
    "unlink", "exists", "iterdir", "glob", "rglob", "extractall", "save", "to_excel", "to_csv", "to_sql",
    "post", "sendmail", "send_message", "execute", "executemany", "executescript", "commit", "fetchall", "communicate"))
# Whether there can be any, told without reading the program. What is imported by itself may have any name.
HINT = re.compile(r"\b(?:(?:%s)\w*\s*\(|from\s+(?:%s)\b)" % (
    "|".join(sorted({name.rstrip("*") for names in MODULES.values() for name in names}
                    | METHODS | {"reader", "DictReader"})),
    "|".join(sorted(MODULES))))


class _Names:
    """What the program's names stand for, as far as its imports tell."""

    def __init__(self, tree):
        self.modules, self.functions = {"rpa": "rpa"}, {"open": ("builtins", "open")}
        for node in ast.walk(tree):
            if isinstance(node, ast.Import):
                for entry in node.names:
                    self.modules[entry.asname or entry.name.partition(".")[0]] = entry.name.partition(".")[0]
            elif isinstance(node, ast.ImportFrom) and node.module and not node.level:
                for entry in node.names:
                    root = node.module.partition(".")[0]
                    self.functions[entry.asname or entry.name] = root, entry.name
                    self.modules.setdefault(entry.asname or entry.name, root)

    def touches_outside(self, function):
        if isinstance(function, ast.Name):
            return _offers(*self.functions.get(function.id, ("", "")))
        if not isinstance(function, ast.Attribute):
            return False
        root = function.value
        while isinstance(root, ast.Attribute):
            root = root.value
        if isinstance(root, ast.Name) and _offers(self.modules.get(root.id, ""), function.attr):
            return True
        return function.attr in METHODS


def _offers(module, name):
    return any(name.startswith(known[:-1]) if known[-1] == "*" else name == known for known in MODULES.get(module, ()))


def _takes_all(names, call):
    """list(csv.reader(...)): reading happens while the list is made."""
    return (isinstance(call.func, ast.Name) and call.func.id == "list" and len(call.args) == 1
            and isinstance(call.args[0], ast.Call) and isinstance(call.args[0].func, ast.Attribute)
            and call.args[0].func.attr in ("reader", "DictReader")
            and isinstance(call.args[0].func.value, ast.Name)
            and names.modules.get(call.args[0].func.value.id) == "csv")


def _writes_once(node):
    """The calls of "with open(...) as file: file.write(...)". In a loop a span for each line would cost more than it."""
    for entry in getattr(node, "items", ()):
        if isinstance(entry.optional_vars, ast.Name):
            for inner in node.body:
                call = getattr(inner, "value", None) if isinstance(inner, ast.Expr) else None
                if (isinstance(call, ast.Call) and isinstance(call.func, ast.Attribute) and call.func.attr == "write"
                        and isinstance(call.func.value, ast.Name) and call.func.value.id == entry.optional_vars.id):
                    yield call


def weave(tree, sites):
    """Changes the tree; sites: gets the line of each call, whose place in it is its number."""
    names, awaited, written = _Names(tree), set(), set()
    for node in ast.walk(tree):
        if isinstance(node, ast.Await):
            awaited.add(id(node.value))
        if isinstance(node, (ast.With, ast.AsyncWith)):
            written.update(map(id, _writes_once(node)))
        if not isinstance(node, ast.Call) or id(node) in awaited:
            continue
        if names.touches_outside(node.func) or _takes_all(names, node) or id(node) in written:
            number = ast.copy_location(ast.Constant(len(sites)), node.func)
            sites.append(node.lineno)
            node.args[:0] = [number, node.func]
            node.func = ast.copy_location(ast.Name(CALL, ast.Load()), node.func)
    return tree


def parse(source, filename, sites):
    """The tree of the program with its calls of the outside; None when it has none."""
    return weave(ast.parse(source, filename), sites) if HINT.search(source) else None
