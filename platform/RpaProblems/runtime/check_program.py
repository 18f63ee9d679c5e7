# SPDX-License-Identifier: Apache-2.0
"""Looks for mistakes in a program without running it.

Reads the program from standard input and writes {"syntax": [line, text]} or {"pyflakes": whether it is there, "found":
[[line, kind, [words]], ...]} as JSON. Kinds are the names of pyflakes' messages.
"""

import ast
import json
import sys
import warnings

MOST = 1000
LONGEST = 200


def words(message):
    return [str(word)[:LONGEST] for word in message.message_args]


def found(tree):
    try:
        from pyflakes import checker
    except ImportError:  # then only the grammar is looked at
        return {"pyflakes": False, "found": []}
    messages = sorted(checker.Checker(tree, builtins={"rpa"}).messages, key=lambda message: message.lineno)
    return {"pyflakes": True, "found": [[m.lineno, type(m).__name__, words(m)] for m in messages[:MOST]]}


def check(program):
    try:
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            tree = ast.parse(program)
    except (SyntaxError, ValueError) as error:  # a null character is the latter
        return {"syntax": [getattr(error, "lineno", None) or 1, str(getattr(error, "msg", error))[:LONGEST]]}
    except (RecursionError, MemoryError):
        return {"pyflakes": False, "found": []}
    try:
        return found(tree)
    except RecursionError:
        return {"pyflakes": False, "found": []}


if __name__ == "__main__":
    sys.stdout.write(json.dumps(check(sys.stdin.buffer.read().decode("utf-8", "replace"))))
