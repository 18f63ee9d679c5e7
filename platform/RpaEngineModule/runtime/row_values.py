# SPDX-License-Identifier: Apache-2.0
"""How cells are read, compared and put in order.

A cell without anything but blanks is empty. Numbers count as numbers however they are written, with separators of
thousands, a currency sign or in full width; dates likewise. In order come numbers, then dates, then texts (Chinese by
pinyin, behind Latin letters, where upper and lower case count alike), and cells that are empty stay last both ways.
To tell whether two cells are the same a text must be written exactly like a number to be that number: "7" is 7, "007"
and "1.10" are texts of their own.
"""

import datetime
import decimal
import functools
import os
import re

_EXACT = re.compile(r"-?(?:0|[1-9][0-9]{0,29})(?:\.[0-9]{0,29}[1-9])?")
_NUMBER = re.compile(r"([+-]?)[¥￥$€]?([+-]?)([0-9]{1,30}|[0-9]{1,3}(?:,[0-9]{3}){1,9})(\.[0-9]{0,30})?(%?)")
_DATE = re.compile(r"([0-9]{4})([-/.年])([0-9]{1,2})[-/.月]([0-9]{1,2})日?(?:[ T]+([0-9]{1,2}):([0-9]{2})(?::([0-9]{2}))?)?")
_WIDE = {ord(wide): narrow for wide, narrow in zip("０１２３４５６７８９．，－＋％　", "0123456789.,-+% ")}
_RANK_NUMBER, _RANK_DATE, _RANK_TEXT = range(3)


def text_of(cell):
    if cell is None:
        return ""
    if isinstance(cell, bool):
        return "是" if cell else "否"
    if isinstance(cell, datetime.datetime):
        return cell.isoformat(" ") if cell.time() != datetime.time() else cell.date().isoformat()
    if isinstance(cell, float) and cell.is_integer() and abs(cell) < 1e15:
        return str(int(cell))
    return str(cell).strip()


def is_empty(cell):
    return cell is None or cell != cell or (isinstance(cell, str) and not cell.strip())


def _own_number(cell):
    """The number that a cell is, None for one that is none; texts are not read."""
    if isinstance(cell, bool):
        return None
    if isinstance(cell, int):
        return cell
    if isinstance(cell, float):
        return decimal.Decimal(repr(cell)) if cell - cell == 0 else None
    return cell if isinstance(cell, decimal.Decimal) and cell.is_finite() else None


def number_of(cell):
    """The number that a cell shows, None for one that shows none."""
    if not isinstance(cell, str):
        return _own_number(cell)
    text = cell.strip()
    found = _NUMBER.fullmatch(text if text.isascii() else text.translate(_WIDE).strip())
    if not found or (found[1] and found[2]):
        return None
    number = decimal.Decimal(found[1] + found[2] + found[3].replace(",", "") + (found[4] or ""))
    return number / 100 if found[5] else number


def has_leading_zero(cell):
    return isinstance(cell, str) and re.match(r"\s*[+-]?0[0-9]", cell) is not None


def _date_of(text):
    found = _DATE.fullmatch(text)
    if not found:
        return None
    parts = [int(part or 0) for part in found.group(1, 3, 4, 5, 6, 7)]
    try:
        return datetime.datetime(*parts).isoformat()
    except ValueError:
        return None


@functools.lru_cache(maxsize=None)
def _pinyin():
    """For str.translate: each Chinese character becomes one that stands for its place in a dictionary."""
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "pinyin.txt")
    with open(path, encoding="utf-8") as file:
        chars = "".join(line.rstrip("\n").split(" ")[1] for line in file)
    return {ord(char): 0xF0000 + place for place, char in enumerate(chars)}


def order_of(cell):
    """What a cell that is not empty is put in order by."""
    number = number_of(cell)
    if number is not None:
        return _RANK_NUMBER, number
    text = text_of(cell)
    date = _date_of(text)
    if date is not None:
        return _RANK_DATE, date
    return _RANK_TEXT, text.casefold().translate(_pinyin()), text


def same_of(cell):
    """Equal for cells that are the same; None for an empty one."""
    if is_empty(cell):
        return None
    number = _own_number(cell)
    if number is None and isinstance(cell, str) and _EXACT.fullmatch(cell.strip()):
        number = decimal.Decimal(cell.strip())
    return text_of(cell) if number is None else number


def value_of(number):
    """A number as programs like it."""
    if isinstance(number, decimal.Decimal):
        return int(number) if number == number.to_integral_value() and abs(number) < 10 ** 15 else float(number)
    return number
