# SPDX-License-Identifier: Apache-2.0
"""Puts checks into a program: a call before each statement that has a breakpoint, and around whatever is cleaned up
when a statement fails. Everything else stays the code that it was.

A line that is wanted is answered for by the first statement at it or behind it (an "anchor"). The code of one function
can be exchanged while the program runs; a frame that runs already keeps what it had.
"""

import ast
import bisect
import copy
import gc
import types

AT, FAILED = "__rpa_at__", "__rpa_failed__"
MODULE = ("<module>", 0)
FUTURES = 0x1ff0000  # the flags of a code object that say what it imported from __future__
DEFINITIONS = (ast.FunctionDef, ast.AsyncFunctionDef, ast.ClassDef)
FUNCTIONS = (ast.FunctionDef, ast.AsyncFunctionDef)
TRIES = (ast.Try, getattr(ast, "TryStar", ast.Try))
WITHS = (ast.With, ast.AsyncWith)


def key_of(code):
    return MODULE if code.co_name == "<module>" else (code.co_name, code.co_firstlineno)


def _key_of_node(node):
    return node.name, min([node.lineno, *(entry.lineno for entry in node.decorator_list)])


def parts_of(code):
    yield code
    for const in code.co_consts:
        if isinstance(const, types.CodeType):
            yield from parts_of(const)


def blocks_of(node):
    """The lists of statements inside a statement, in the order of the text."""
    for name in ("body", "handlers", "orelse", "finalbody", "cases"):
        block = getattr(node, name, None)
        if isinstance(block, list) and block:
            yield name, block


def _leading(body):
    """How many statements have to stay the first ones."""
    count = 0
    if body and isinstance(body[0], ast.Expr) and isinstance(getattr(body[0].value, "value", None), str):
        count = 1
    while count < len(body) and isinstance(body[count], ast.ImportFrom) and body[count].module == "__future__":
        count += 1
    return count


def _is_of(part, node):
    first, last = part.get("first") or 0, part.get("last") or 0
    chosen = node.end_lineno >= first and (not last or node.lineno <= last)
    return chosen or isinstance(node, DEFINITIONS + (ast.Import, ast.ImportFrom))


def _call(name, line, *arguments):
    call = ast.Expr(ast.Call(ast.Name(name, ast.Load()), [ast.Constant(value) for value in arguments], []))
    return _at_line(call, line)


def _at_line(tree, line):
    for node in ast.walk(tree):
        if "lineno" in node._attributes and not hasattr(node, "lineno"):
            node.lineno = node.end_lineno = line
            node.col_offset = node.end_col_offset = 0
    return tree


class Program:
    """places: for each line the line at which its statement begins, 0 for one of no statement; None: the text's own.
    part: {"first", "last"} lines; only what stands there runs, and what defines names (last 0: to the end).
    tree: of the source, when it was read already."""

    def __init__(self, source, filename, places=None, part=None, tree=None):
        self.filename = filename
        self.tree = tree or ast.parse(source, filename)
        self.tree.body = [node for node in self.tree.body if not part or _is_of(part, node)]
        self.outside = source.count("\n") + 2
        self.own_text = places is None
        self.guarded = False
        self.anchors = []       # lines that have one, ascending
        self.loops = {}         # line of a loop -> its last line
        self.places = [0] * (self.outside + 1)
        self._look(self.tree, True)
        self.anchors = sorted(set(self.anchors))
        if places is not None:
            self.places = places + [0] * (self.outside + 1 - len(places))
            self.loops = {self.place_of(line): last for line, last in self.loops.items()}
        self.codes = {}         # key -> the code objects that it had, the newest last
        self.hooks = {}         # id of a code object -> the lines that it checks
        self.unit_hooks = [{} for _ in self.tree.body]
        self.wanted = {}        # key -> the lines that are to be checked
        self.waiting = {}       # id of a code object that no function has yet -> what takes its place
        self.flags = 0

    def _look(self, node, takes_docstring):
        for name, block in blocks_of(node):
            skipped = _leading(block) if name == "body" and takes_docstring else 0
            for place, inner in enumerate(block):
                line = getattr(inner, "lineno", 0)  # a case has none
                if line:
                    self.places[line:inner.end_lineno + 1] = [line] * (inner.end_lineno + 1 - line)
                    if place >= skipped:
                        self.anchors.append(line)
                if isinstance(inner, (ast.For, ast.AsyncFor, ast.While)):
                    self.loops[line] = inner.end_lineno
                self._look(inner, isinstance(inner, DEFINITIONS))

    def anchor_of(self, line):
        """The line of the statement that answers for the line; 0 behind the last one."""
        found = bisect.bisect_left(self.anchors, line)
        return self.anchors[found] if found < len(self.anchors) else 0

    def place_of(self, line):
        return self.places[line] if 0 < line < len(self.places) else 0

    # Weaving

    def compile(self, lines):
        """The whole program, before it runs."""
        body, skipped = [], _leading(self.tree.body)
        for number, lines_of_unit in enumerate(self._by_unit(lines)):
            body += self._weave_unit(number, lines_of_unit)
        if self.guarded:
            body[skipped:] = self._guard(body[skipped:])
        code = compile(ast.Module(body, self.tree.type_ignores), self.filename, "exec", dont_inherit=True)
        self._merge()
        self.adopt(code)
        for part in parts_of(code):
            self.hooks[id(part)] = self.wanted.get(key_of(part), frozenset())
        return code

    def adopt(self, code):
        """Code that runs, or is about to."""
        self.flags = code.co_flags & FUTURES
        for part in parts_of(code):
            self.codes.setdefault(key_of(part), []).append(part)

    def exchange(self, lines, everything=False):
        """From now on functions that are called check these lines and no others."""
        for number, lines_of_unit in enumerate(self._by_unit(lines)):
            before = set().union(*self.unit_hooks[number].values())
            if everything or lines_of_unit != before:
                unit = ast.Module(self._weave_unit(number, lines_of_unit), [])
                code = compile(unit, self.filename, "exec", self.flags, dont_inherit=True)
                for part in parts_of(code):
                    if part is not code:
                        self._replace(part, self.unit_hooks[number].get(key_of(part), frozenset()), everything)
        self._merge()

    def _replace(self, code, lines, everything):
        versions = self.codes.setdefault(key_of(code), [])
        newest = self.hooks.get(id(versions[-1]), frozenset()) if versions else None
        if newest == lines and not everything:
            return
        olds = {id(old): old for old in versions}
        versions.append(code)
        self.hooks[id(code)] = lines
        found = self.give(code, olds)
        for identity in olds:
            if found or not lines:
                self.waiting.pop(identity, None)
            else:
                self.waiting[identity] = code

    def give(self, code, olds):
        """Functions that have one of the old code objects get this one; whether there were any."""
        found = False
        for function in gc.get_referrers(*olds.values()):
            if type(function) is types.FunctionType and id(function.__code__) in olds:
                function.__code__ = code
                found = True
        return found

    def _by_unit(self, lines):
        starts = [unit.lineno for unit in self.tree.body]
        units = [set() for _ in starts]
        for line in lines:
            anchor = self.anchor_of(line)
            if anchor:
                units[bisect.bisect_right(starts, anchor) - 1].add(line)
        return units

    def _merge(self):
        self.wanted = {}
        for hooks in self.unit_hooks:
            for key, lines in hooks.items():
                self.wanted[key] = self.wanted.get(key, frozenset()) | lines

    def _weave_unit(self, number, lines):
        self._open = {}
        self._record = self.unit_hooks[number] = {}
        for line in sorted(lines):
            self._open.setdefault(self.anchor_of(line), []).append(line)
        first = _leading(self.tree.body)
        return self._weave_one(self.tree.body[number], MODULE, number >= first)

    def _checks(self, line, key):
        calls = []
        for wanted in self._open.pop(line, ()):
            self._record[key] = self._record.get(key, frozenset()) | {wanted}
            calls.append(_call(AT, line if self.own_text else wanted, wanted))
        return calls

    def _weave_one(self, node, key, checked=True):
        checks = self._checks(node.lineno, key) if checked else []
        return checks + [self._weave(node, key)]

    def _weave_block(self, block, key, skipped=0):
        result = []
        for place, node in enumerate(block):
            result += self._weave_one(node, key, place >= skipped)
        return result

    def _weave(self, node, key):
        inner_key = _key_of_node(node) if isinstance(node, DEFINITIONS) else key
        result = copy.copy(node)
        for name, block in blocks_of(node):
            if name in ("handlers", "cases"):
                setattr(result, name, [self._weave_branch(branch, key) for branch in block])
            else:
                skipped = _leading(block) if inner_key is not key and name == "body" else 0
                woven = self._weave_block(block, inner_key, skipped)
                if self.guarded and self._is_cleaned_up(node, name):
                    woven[skipped:] = self._guard(woven[skipped:])
                setattr(result, name, woven)
        return result

    def _weave_branch(self, branch, key):
        result = copy.copy(branch)
        checks = self._checks(branch.lineno, key) if hasattr(branch, "lineno") else []
        result.body = checks + self._weave_block(branch.body, key)
        return result

    @staticmethod
    def _is_cleaned_up(node, name):
        """Whether something happens between a failure in this block and the failure of the block around it."""
        if isinstance(node, TRIES):
            return name == "body" or (name == "orelse" and bool(node.finalbody))
        return name == "body" and isinstance(node, FUNCTIONS + WITHS)

    def _guard(self, body):
        if not body:
            return body
        failed = [_call(FAILED, self.outside), ast.Raise(None, None)]
        handler = _at_line(ast.ExceptHandler(None, None, failed), self.outside)
        place = {name: getattr(handler, name) for name in handler._attributes}
        return [ast.Try(body, [handler], [], [], **place)]
