# SPDX-License-Identifier: Apache-2.0
"""Whether the program itself will handle an error, told before anything is unwound."""

import ast

from debug_code import DEFINITIONS, MODULE, TRIES, _key_of_node, blocks_of, key_of


def line_of(error, frame):
    """The line at which the frame stood when the error went through it."""
    entry, line = error.__traceback__, frame.f_lineno
    while entry is not None:
        if entry.tb_frame is frame:
            line = entry.tb_lineno
        entry = entry.tb_next
    return line


class Catches:
    def __init__(self, program):
        self.program = program
        self.tries = {}  # key of the code -> (first line, last line, handlers)
        self._look(program.tree, MODULE)

    def _look(self, node, key):
        for _, block in blocks_of(node):
            for inner in block:
                if isinstance(inner, TRIES) and inner.handlers:
                    self.tries.setdefault(key, []).append(
                        (inner.body[0].lineno, inner.body[-1].end_lineno, inner.handlers))
                self._look(inner, _key_of_node(inner) if isinstance(inner, DEFINITIONS) else key)

    def will_handle(self, error, frames):
        """frames: (frame, line at which it stands) of the program, the innermost first."""
        return any(self._handles(error, frame, line) for frame, line in frames)

    def _handles(self, error, frame, line):
        for first, last, handlers in self.tries.get(key_of(frame.f_code), ()):
            if first <= line <= last and any(self._fits(error, handler.type, frame) for handler in handlers):
                return True
        return False

    def _fits(self, error, wanted, frame):
        if wanted is None:
            return True
        code = compile(ast.Expression(wanted), self.program.filename, "eval")
        try:
            return isinstance(error, eval(code, frame.f_globals, frame.f_locals))
        except Exception:  # the program will fail over it, too
            return False
