# SPDX-License-Identifier: Apache-2.0
"""As much of C++ as the operators need: the tokens of a file, and the statements of its function bodies."""

import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""
      (?P<space>\s+)
    | (?P<comment>//[^\n]*|/\*.*?\*/)
    | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
    | (?P<text>(?:u8|u|U|L)?"(?:\\.|[^"\\])*"|(?:u8|u|U|L)?'(?:\\.|[^'\\])*')
    | (?P<number>\d[\w.']*)
    | (?P<word>[A-Za-z_]\w*)
    | (?P<sign>::|->|<<=|>>=|<=|>=|==|!=|&&|\|\||\+\+|--|\+=|-=|\*=|/=|<<|.)
    """,
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)
CLOSING = {"(": ")", "[": "]", "{": "}"}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclass(frozen=True)
class Statement:
    """One statement that ends with a semicolon; first and last are indexes of its tokens."""

    first: int
    last: int
    block: int  # statements with the same number stand in the same pair of braces
    controlled: bool  # it is the body of an if, else or loop without braces


def tokenize(source):
    """The tokens of a file without blanks, comments and preprocessor lines."""
    tokens = []
    for match in TOKEN.finditer(source):
        if match.lastgroup not in ("space", "comment", "directive"):
            tokens.append(Token(match.lastgroup, match.group(), match.start(), match.end()))
    return tokens


def partners(tokens):
    """For every bracket the index of the bracket that it belongs to."""
    found, open_ones = {}, []
    for index, token in enumerate(tokens):
        if token.text in CLOSING:
            open_ones.append(index)
        elif token.text in CLOSING.values() and token.kind == "sign" and open_ones:
            other = open_ones.pop()
            found[other], found[index] = index, other
    return found


def bodies(tokens, pairs):
    """The function bodies, as pairs of the indexes of their braces; a body within a body counts once."""
    found, index, head = [], 0, 0
    while index < len(tokens):
        text = tokens[index].text
        if text == "{":
            words = [token.text for token in tokens[head:index]]
            if "(" in words and "=" not in words:
                found.append((index, pairs[index]))
                index = pairs[index]
            elif "=" in words:
                index = pairs[index]  # the initial value of a table
            head = index + 1
        elif text in (";", "}"):
            head = index + 1
        index += 1
    return found


def statements(tokens, pairs, body):
    """The statements of a body, those of nested blocks and lambdas included."""
    found = []
    starts = {body[0] + 1: False}
    for index in range(body[0] + 1, body[1]):
        text = tokens[index].text
        if text == "{" or text == "}" or text == ";":
            starts.setdefault(index + 1, False)
        elif text == "else":
            starts[index + 1] = True
        elif text == ")" and tokens[pairs[index] - 1].text in ("if", "for", "while", "switch"):
            starts[index + 1] = True
        elif text == ":" and _labels(tokens, index):
            starts[index + 1] = False
    for first in sorted(starts):
        last = _end(tokens, pairs, first, body[1])
        if last is not None and _is_simple(tokens, first):
            found.append(Statement(first, last, _block(tokens, pairs, first, body[0]), starts[first]))
    return [one for one in found if not _in_parentheses_of_for(tokens, pairs, one.first, body[0])]


def conditions(tokens, pairs, body):
    """The conditions of the body's ifs, whiles and conditional operators, as index ranges [first, last]."""
    for index in range(body[0] + 1, body[1]):
        text = tokens[index].text
        if text in ("if", "while") and tokens[index + 1].text == "(":
            inside = [token.text for token in tokens[index + 2 : pairs[index + 1]]]
            if "=" not in inside and ";" not in inside:  # a declared condition has no value of its own
                yield index + 2, pairs[index + 1] - 1
        elif text == "?":
            first = _operand_start(tokens, pairs, index)
            if first < index:
                yield first, index - 1


def calls(tokens, pairs, body):
    """The argument lists of the body's calls, each as a list of index ranges [first, last]."""
    for index in range(body[0] + 1, body[1]):
        before = tokens[index - 1]
        named = before.kind == "word" and before.text not in ("if", "for", "while", "switch", "return")
        if tokens[index].text != "(" or not (named or before.text == ">"):
            continue
        yield arguments(tokens, pairs, index)


def arguments(tokens, pairs, opening):
    """The arguments between a parenthesis and its partner, as a list of index ranges [first, last]."""
    found, first, at = [], opening + 1, opening + 1
    while at < pairs[opening]:
        if tokens[at].text in CLOSING:
            at = pairs[at]
        elif tokens[at].text == ",":
            found.append((first, at - 1))
            first = at + 1
        at += 1
    if first < pairs[opening]:
        found.append((first, pairs[opening] - 1))
    return found


def _labels(tokens, index):
    for before in range(index - 1, max(index - 6, -1), -1):
        if tokens[before].text in ("case", "default"):
            return True
        if tokens[before].text in (";", "{", "}", "?", "("):
            return False
    return False


def _end(tokens, pairs, first, limit):
    index = first
    while index < limit:
        text = tokens[index].text
        if text == ";":
            return index
        if text == "}":
            return None
        index = pairs[index] + 1 if text in CLOSING else index + 1
    return None


def _is_simple(tokens, first):
    return tokens[first].text not in (
        "if", "for", "while", "do", "switch", "case", "default", "else", "{", "}", ";", "using", "static",
        "constexpr", "struct", "enum",
    )  # fmt: skip


def _block(tokens, pairs, first, outermost):
    index = first - 1
    while index > outermost:
        text = tokens[index].text
        if text == "{":
            return index
        index = pairs[index] - 1 if text in ("}", ")", "]") else index - 1
    return outermost


def _in_parentheses_of_for(tokens, pairs, first, outermost):
    index = first - 1
    while index > outermost:
        text = tokens[index].text
        if text == "(":
            return tokens[index - 1].text == "for"
        if text == "{":
            return False
        index = pairs[index] - 1 if text in ("}", ")", "]") else index - 1
    return False


def _operand_start(tokens, pairs, question):
    index = question
    while True:
        before = tokens[index - 1].text
        if before in (")", "]", "}"):
            index = pairs[index - 1]
        elif before in ("=", "return", ",", "(", "{", ";", "?", ":", "<<"):
            return index
        else:
            index -= 1
