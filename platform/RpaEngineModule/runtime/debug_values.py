# SPDX-License-Identifier: Apache-2.0
"""Values of a program as an author reads them: type, size and a short text, their inside on demand.

Nothing here trusts a value: what is built in is read by its own type's operations, whatever a subclass makes of them;
only the text of other objects is asked of the object, by somebody who gives it little time.
"""

import itertools
import types

TEXT = 200
ENTRIES = 8
PAGE = 200
CHUNK = 2000
NAME = 200
SECRET = "••••••"
HIDDEN_KINDS = (types.ModuleType, types.FunctionType, types.BuiltinFunctionType, type)
SEQUENCES = (list, tuple)
SETS = (set, frozenset)
BYTES = (bytes, bytearray)


_name_of = type.__dict__["__name__"].__get__  # whatever a metaclass makes of it


def kind_of(value):
    return "str" if _is_secret(value) else _name_of(type(value))[:NAME]


def is_a(value, kinds):
    """isinstance() believes what an object says of its class."""
    return issubclass(type(value), kinds)


def _is_secret(value):
    return is_a(value, str) and _name_of(type(value)) == "_Secret"


def _base(value, kinds):
    return next((kind for kind in kinds if is_a(value, kind)), None)


def _is_frame_of_data(value):
    return _name_of(type(value)) == "DataFrame" and hasattr(type(value), "iloc")


class Reader:
    """ask(call) -> (whether it went well, result or reason) gives foreign code little time."""

    def __init__(self, ask):
        self.ask = ask

    def size_of(self, value):
        kind = _base(value, (str, dict) + SEQUENCES + SETS + BYTES)
        if kind is not None:
            return kind.__len__(value)
        if _is_frame_of_data(value):
            done, size = self.ask(lambda: len(value))
            return size if done and is_a(size, int) else -1
        return -1

    def short(self, value, depth=2):
        if is_a(value, str):
            return self._text(value)
        if value is None or is_a(value, (bool, float, complex)):
            return type(value).__repr__(value)[:TEXT] if type(value).__module__ == "builtins" else self._foreign(value)
        if is_a(value, int):
            return self._number(value)
        kind = _base(value, (dict,) + SEQUENCES + SETS + BYTES)
        if kind is None:
            return self._foreign(value)
        if kind in BYTES:
            return kind.__repr__(kind(memoryview(value)[:TEXT]))[:TEXT]
        return self._container(value, kind, depth)[:TEXT]

    @staticmethod
    def _text(value):
        if _is_secret(value):
            return SECRET
        cut = str.__len__(value) > TEXT
        return str.__repr__(str.__getitem__(value, slice(TEXT)))[:TEXT + 2] + ("…" if cut else "")

    @staticmethod
    def _number(value):
        bits = int.bit_length(value)
        return int.__repr__(value)[:TEXT] if bits < 600 else f"约 2 的 {bits} 次方"

    def _container(self, value, kind, depth):
        opening, closing = {dict: "{}", list: "[]", tuple: "()"}.get(kind, ("{", "}"))
        count = kind.__len__(value)
        if not count:
            return opening + closing if kind not in SETS else "set()"
        if depth == 0:
            return f"{opening}…{closing}"
        if kind is dict:
            entries = [f"{self.short(key, depth - 1)}: {self.short(inner, depth - 1)}"
                       for key, inner in itertools.islice(self._safe(dict.items(value)), ENTRIES)]
        else:
            first = itertools.islice(self._safe(kind.__iter__(value)), ENTRIES)
            entries = [self.short(inner, depth - 1) for inner in first]
        more = ["…"] if count > ENTRIES else []
        return opening + ", ".join(entries + more) + closing

    @staticmethod
    def _safe(entries):
        """Another thread may change what is being read."""
        try:
            yield from entries
        except RuntimeError:
            return

    def _foreign(self, value):
        done, text = self.ask(lambda: repr(value))
        if done:
            return str.__getitem__(text, slice(TEXT)) + ("…" if str.__len__(text) > TEXT else "")
        return f"<{kind_of(value)}：{text}>"[:TEXT]

    # What is inside

    def count_of(self, value):
        kind = _base(value, (dict,) + SEQUENCES + SETS)
        if kind is not None:
            return kind.__len__(value)
        if is_a(value, str):
            length = 0 if _is_secret(value) else str.__len__(value)
            return -(-length // CHUNK) if length > TEXT else 0
        if _is_frame_of_data(value):
            return max(0, self.size_of(value))
        return len(self._attributes(value))

    def page_of(self, value, first, count):
        """[(name, value, whether it can be set)] from the first one on."""
        first, count = max(0, first), min(max(0, count), PAGE)
        kind = _base(value, (dict,) + SEQUENCES + SETS)
        if is_a(value, str):
            return self._chunks(value, first, count) if self.count_of(value) else []
        if kind is dict:
            entries = itertools.islice(self._safe(dict.items(value)), first, first + count)
            return [(self.short(key, 1), inner, True) for key, inner in entries]
        if kind is not None:
            entries = itertools.islice(self._safe(kind.__iter__(value)), first, first + count)
            return [(f"[{first + place}]", inner, kind is list) for place, inner in enumerate(entries)]
        if _is_frame_of_data(value):
            return self._rows(value, first, count)
        return [(name[:NAME], inner, True) for name, inner in self._attributes(value)[first:first + count]]

    @staticmethod
    def _chunks(value, first, count):
        starts = range(first * CHUNK, min((first + count) * CHUNK, str.__len__(value)), CHUNK)
        return [(f"[{start}]", Chunk(str.__getitem__(value, slice(start, start + CHUNK))), False) for start in starts]

    def _rows(self, value, first, count):
        done, rows = self.ask(lambda: [dict(zip(list(value.columns), list(value.iloc[place])))
                                       for place in range(first, min(first + count, len(value)))])
        return [(f"[{first + place}]", row, False) for place, row in enumerate(rows)] if done else []

    def _attributes(self, value):
        if is_a(value, HIDDEN_KINDS + (int, float, complex) + BYTES) or value is None:
            return []
        done, names = self.ask(lambda: object.__getattribute__(value, "__dict__"))
        if not done or not is_a(names, dict):
            return []
        entries = list(dict.items(names))
        return [(name, inner) for name, inner in entries if type(name) is str and not name.startswith("__")]

    def set_inside(self, value, index, name, new):
        """Puts a new value in the place of an inner one that page_of() gave; False where that cannot be."""
        if is_a(value, list):
            list.__setitem__(value, index, new)
        elif is_a(value, dict):
            keys = list(itertools.islice(dict.keys(value), index, index + 1))
            if not keys:
                return False
            value[keys[0]] = new
        elif is_a(value, SEQUENCES + SETS + (str,)) or _is_frame_of_data(value):
            return False
        else:
            setattr(value, name, new)
        return True


class Chunk:
    """A piece of a long text, shown whole."""

    def __init__(self, text):
        self.text = text
