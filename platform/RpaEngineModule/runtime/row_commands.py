# SPDX-License-Identifier: Apache-2.0
"""Commands on whole tables: filter, sort, unique, group, join.

Rows are dictionaries by column name, as the table of the page gives them, or lists, as a workbook gives them; then the
first row holds the names of the columns. What comes out has the form of what went in. Equal rows keep their order.
"""

import decimal
import re

from row_values import has_leading_zero, is_empty, number_of, order_of, same_of, text_of, value_of

MOST_ROWS = 1_000_000


class Rows:
    """The rows of a variable with the names of their columns."""

    def __init__(self, rows, names=None):
        if not isinstance(rows, (list, tuple)):
            raise TypeError("要处理的各行必须是列表，请选择由“读取表格”“读取工作表”等得到的变量")
        self.has_titles = bool(rows) and isinstance(rows[0], (list, tuple))
        kind = (list, tuple) if self.has_titles else dict
        for place, row in enumerate(rows):
            if not isinstance(row, kind):
                raise TypeError(f"第 {place + 1} 行与其他行的形式不同：每行都应是字典，或都是列表")
        if self.has_titles:
            self.titles, self.rows = rows[0], list(rows[1:])
            self.names = [text_of(name) for name in self.titles]
        else:
            self.rows = list(rows)
            self.names = list(names or dict.fromkeys(name for row in rows for name in row))
        # Nothing is known of the columns when there is nothing at all.
        self.is_void = not rows and names is None

    def place(self, name):
        """What a cell of that column is found by."""
        wanted = text_of(name)
        for place, known in enumerate(self.names):
            if text_of(known) == wanted:
                return place if self.has_titles else known
        if self.is_void:
            return wanted
        known = "、".join(text_of(name) for name in self.names[:20]) + ("……" if len(self.names) > 20 else "")
        raise LookupError(f"没有名为“{wanted}”的列，现有的列：{known or '（无）'}")

    def columns(self, names):
        """One column by its name, or several with commas between them."""
        if isinstance(names, (list, tuple)):
            return [self.place(name) for name in names]
        text = text_of(names)
        if not text:
            raise ValueError("请填写列名")
        if any(text_of(name) == text for name in self.names):
            return [self.place(text)]
        names = [name for name in re.split(r"\s*[,，、;；\n]\s*", text) if name]
        return [self.place(name) for name in names or [text]]

    def places(self):
        return list(range(len(self.names))) if self.has_titles else list(self.names)

    def column(self, name):
        if not text_of(name):
            raise ValueError("请填写列名")
        return self.place(name)

    def cells(self, place):
        if self.has_titles:
            return [row[place] if place < len(row) else None for row in self.rows]
        return [row.get(place) for row in self.rows]

    def keys(self, places):
        """For each row what its cells in these columns are."""
        return list(zip(*([same_of(cell) for cell in self.cells(place)] for place in places)))

    def title(self, place):
        return self.names[place] if self.has_titles else text_of(place)

    def number_of_row(self, place):
        """As its author counts."""
        return place + (2 if self.has_titles else 1)

    def like(self, rows):
        """These rows of it in its form."""
        return [self.titles, *rows] if self.has_titles else rows

    def made(self, names, rows):
        """New rows, each a list of cells, in its form."""
        return [list(names), *rows] if self.has_titles else [dict(zip(names, row)) for row in rows]


# Filter

def _compare(test):
    """A cell against a value by their order; a number never against a text."""
    def compare(cell, value):
        left, right = order_of(cell), order_of(value)
        return left[0] == right[0] and test(left, right)
    return compare


def _equals(cell, value):
    if same_of(cell) == same_of(value):
        return True
    left, right = number_of(cell), number_of(value)
    return left is not None and left == right and not has_leading_zero(cell) and not has_leading_zero(value)


_TESTS = {
    "equals": _equals,
    "differs": lambda cell, value: not _equals(cell, value),
    "greater": _compare(lambda left, right: left > right),
    "at_least": _compare(lambda left, right: left >= right),
    "less": _compare(lambda left, right: left < right),
    "at_most": _compare(lambda left, right: left <= right),
    "contains": lambda cell, value: text_of(value) in text_of(cell),
    "lacks": lambda cell, value: text_of(value) not in text_of(cell),
    "begins": lambda cell, value: text_of(cell).startswith(text_of(value)),
    "ends": lambda cell, value: text_of(cell).endswith(text_of(value)),
    "empty": lambda cell, value: is_empty(cell),
    "filled": lambda cell, value: not is_empty(cell),
}
_ORDERED = ("greater", "at_least", "less", "at_most")


def filter_rows(rows, column, comparison, value):
    place, test = rows.column(column), _TESTS[comparison]
    ordered = comparison in _ORDERED
    if is_empty(value) and comparison not in ("empty", "filled", "equals", "differs"):
        raise ValueError("请填写要比较的值")
    return rows.like([row for row, cell in zip(rows.rows, rows.cells(place))
                      if not (ordered and is_empty(cell)) and test(cell, value)])


# Sort

def sort_rows(rows, columns, descending):
    order = list(range(len(rows.rows)))
    for place in reversed(rows.columns(columns)):
        cells = rows.cells(place)
        filled = {at: order_of(cell) for at, cell in enumerate(cells) if not is_empty(cell)}
        empty = [at for at in order if at not in filled]
        order = sorted((at for at in order if at in filled), key=filled.__getitem__, reverse=bool(descending)) + empty
    return rows.like([rows.rows[at] for at in order])


# Unique

def unique_rows(rows, columns, keep):
    keys = rows.keys(rows.columns(columns) if text_of(columns) else rows.places())
    if keep == "last":
        kept = sorted({key: at for at, key in enumerate(keys)}.values())
    else:
        kept = list({key: at for at, key in reversed(list(enumerate(keys)))}.values())
        kept.sort()
    return rows.like([rows.rows[at] for at in kept])


# Group

def _numbers(rows, place, members, cells):
    numbers = []
    for at in members:
        if is_empty(cells[at]):
            continue
        number = number_of(cells[at])
        if number is None:
            raise ValueError(f"第 {rows.number_of_row(at)} 行“{rows.title(place)}”的“{text_of(cells[at])[:40]}”不是数字，不能计算")
        numbers.append(number)
    return numbers


def _sum(rows, place, members, cells):
    return value_of(sum(_numbers(rows, place, members, cells), decimal.Decimal(0)))


def _average(rows, place, members, cells):
    numbers = _numbers(rows, place, members, cells)
    return value_of(sum(numbers, decimal.Decimal(0)) / len(numbers)) if numbers else None


def _extreme(choose):
    def extreme(rows, place, members, cells):
        filled = [cells[at] for at in members if not is_empty(cells[at])]
        if not filled:
            return None
        found = choose(filled, key=order_of)
        number = number_of(found)
        return found if number is None else value_of(number)
    return extreme


def _count(rows, place, members, cells):
    return sum(1 for at in members if not is_empty(cells[at]))


_RESULTS = {"sum": ("合计", _sum), "count": ("个数", _count), "average": ("平均", _average),
            "min": ("最小", _extreme(min)), "max": ("最大", _extreme(max))}


def _free(name, taken):
    number, free = 2, name
    while free in taken:
        free, number = f"{name}{number}", number + 1
    return free


def group_rows(rows, by, function, columns):
    places = rows.columns(by)
    word, result = _RESULTS[function]
    counts_rows = function == "count" and not text_of(columns)
    results = [] if counts_rows else rows.columns(columns)
    groups = {}
    for at, key in enumerate(rows.keys(places)):
        groups.setdefault(key, []).append(at)

    names = [rows.title(place) for place in places]
    for name in ["个数"] if counts_rows else [rows.title(place) + word for place in results]:
        names.append(_free(name, names))
    heads = [rows.cells(place) for place in places]
    columns_of = [(place, rows.cells(place)) for place in results]
    made = []
    for members in groups.values():
        row = [cells[members[0]] for cells in heads]
        row += [len(members)] if counts_rows else [result(rows, place, members, cells) for place, cells in columns_of]
        made.append(row)
    return rows.made(names, made)


# Join

def join_rows(rows, others, column, other_column, kind):
    places = rows.columns(column)
    other_places = others.columns(other_column if text_of(other_column) else column)
    if len(places) != len(other_places):
        raise ValueError("两边用来对应的列数不同")
    added = [place for place in others.places() if place not in other_places]
    found = {}
    for at, key in enumerate(others.keys(other_places)):
        if None not in key:  # who has no number belongs to nobody
            found.setdefault(key, []).append(at)

    names = [text_of(name) for name in rows.names]
    for place in added:
        names.append(_free(others.title(place), names))
    left = list(zip(*(rows.cells(place) for place in rows.places())))
    cells = [others.cells(place) for place in added]
    nothing = [None] * len(added)
    made = []
    for at, key in enumerate(rows.keys(places)):
        partners = found.get(key, ())
        if len(made) + len(partners) > MOST_ROWS:
            raise ValueError(f"结果超过 {MOST_ROWS:,} 行：两边都有许多行的值相同，请先删除重复行")
        if not partners and kind == "left":
            made.append([*left[at], *nothing])
        made += [[*left[at], *(column[other] for column in cells)] for other in partners]
    return rows.made(names, made)
