# SPDX-License-Identifier: Apache-2.0
"""Breakpoints and the expressions that go with them."""

import re
import types

LOG_CHARACTERS = 2000
FIELD = re.compile(r"\{([^{}]*)\}")


class Expression:
    """Compiled once; evaluated in a frame of the program."""

    def __init__(self, text, mode="eval"):
        self.code = compile(text.strip(), "<expression>", mode, dont_inherit=True)
        # Code inside the code (a comprehension) sees globals only.
        self.nested = any(isinstance(const, types.CodeType) for const in self.code.co_consts)

    def value(self, frame):
        if frame.f_locals is frame.f_globals or not self.nested:
            return eval(self.code, frame.f_globals, frame.f_locals)
        return eval(self.code, {**frame.f_globals, **frame.f_locals})


def _read(text):
    """An expression, or the error that it is."""
    try:
        return Expression(text)
    except Exception as error:  # too deep for the compiler, too
        return error


class Point:
    """One breakpoint: {"line", "condition", "hits", "rule": "from" | "at" | "every", "log"}."""

    def __init__(self, spec):
        self.spec = spec
        condition = spec.get("condition") or ""
        self.condition = _read(condition) if condition.strip() else None
        self.wanted_hits = int(spec.get("hits") or 0)
        self.rule = spec.get("rule") or "from"
        self.log = spec.get("log") or ""
        self.parts = [(part, _read(part)) if index % 2 else part for index, part in enumerate(FIELD.split(self.log))]
        self.hits = 0
        self.trouble = ""

    def meets(self, frame):
        """Whether this arrival counts; trouble says why it could not be told."""
        self.trouble = ""
        if self.condition is not None:
            try:
                if isinstance(self.condition, Exception):
                    raise self.condition
                if not self.condition.value(frame):
                    return False
            except Exception as error:
                self.trouble = f"断点条件无法计算：{type(error).__name__}: {error}"[:LOG_CHARACTERS]
                return True
        self.hits += 1
        if self.wanted_hits < 1:
            return True
        if self.rule == "at":
            return self.hits == self.wanted_hits
        if self.rule == "every":
            return self.hits % self.wanted_hits == 0
        return self.hits >= self.wanted_hits

    def log_text(self, frame, short):
        return "".join(part if isinstance(part, str) else self._field(*part, frame, short) for part in self.parts)

    @staticmethod
    def _field(text, expression, frame, short):
        try:
            if isinstance(expression, Exception):
                raise expression
            value = expression.value(frame)
            return value[:LOG_CHARACTERS] if type(value) is str else short(value)  # a secret is none
        except Exception as error:
            return f"{{{text}：{type(error).__name__}}}"
