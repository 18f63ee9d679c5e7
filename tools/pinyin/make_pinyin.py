#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the readings of Chinese characters from the Unicode Character Database (Debian: unicode-data).

A line is a syllable as it is typed (without tone, "v" for "ü"), the characters that are read so in the order of a
dictionary (tone, strokes), and, where there are any, a blank and characters that have it as another reading. The
lines stand in the order of the syllables, so that the first characters of all lines are all characters in order.
"""

import argparse
import bz2
import collections
import re
import unicodedata

FOLDER = "/usr/share/unicode"
TONES = {"\u0304": 1, "\u0301": 2, "\u030c": 3, "\u0300": 4}
FIRST, LAST = 0x4E00, 0x9FFF


def fields(file, wanted):
    with bz2.open(f"{FOLDER}/{file}", "rt", encoding="utf-8") as lines:
        for line in lines:
            parts = line.rstrip("\n").split("\t")
            if len(parts) != 3 or parts[1] not in wanted:
                continue
            code = int(parts[0][2:], 16)
            if FIRST <= code <= LAST:
                yield chr(code), parts[1], parts[2]


def syllable_of(reading):
    """("lü", 3) of "lǚ"; a neutral tone comes last."""
    tone, letters = 5, ""
    for char in unicodedata.normalize("NFD", reading):
        if char in TONES:
            tone = TONES[char]
        elif char == "\u0308":
            letters = letters[:-1] + "ü"
        elif "a" <= char <= "z":
            letters += char
    return letters, tone


def typed(syllable):
    return syllable.replace("ü", "v")


def order(syllable):
    """"lü" between "lu" and "luan"."""
    return syllable.replace("ü", "u!")


def read():
    strokes = {char: int(value.split()[0]) for char, _, value in fields("Unihan_IRGSources.txt.bz2", ["kTotalStrokes"])}
    first, spoken, written = {}, collections.defaultdict(set), collections.defaultdict(set)
    for char, field, value in fields("Unihan_Readings.txt.bz2", ["kMandarin", "kHanyuPinlu", "kXHC1983"]):
        if field == "kMandarin":
            first[char] = syllable_of(value.split()[0])
        elif field == "kHanyuPinlu":
            spoken[char] |= {syllable_of(re.sub(r"\(.*", "", reading))[0] for reading in value.split()}
        else:
            written[char] |= {syllable_of(reading.split(":")[1])[0] for reading in value.split()}
    # What nobody says any more would be found where nobody expects it.
    others = {char: spoken.get(char) or written[char] for char in first}
    return first, others, strokes


def write(path):
    first, others, strokes = read()
    main, second = collections.defaultdict(list), collections.defaultdict(list)
    for char, (syllable, tone) in first.items():
        main[syllable].append((tone, strokes.get(char, 99), char))
    for char, syllables in others.items():
        for syllable in syllables - {first.get(char, ("", 0))[0], ""}:
            second[syllable].append(char)
    # "略" is as often typed "lue".
    for syllable in ("lüe", "nüe"):
        second[syllable.replace("ü", "u")] += [char for _, _, char in main[syllable]] + second[syllable]
    with open(path, "w", encoding="utf-8", newline="\n") as out:
        for syllable in sorted(set(main) | set(second), key=order):
            chars = "".join(char for _, _, char in sorted(main[syllable]))
            rest = "".join(sorted(set(second[syllable])))
            out.write(f"{typed(syllable)} {chars}{' ' + rest if rest else ''}\n")


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("file", nargs="?", default="platform/WbFoundation/resources/pinyin.txt")
    write(parser.parse_args().file)
