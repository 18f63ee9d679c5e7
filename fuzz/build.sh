#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Builds the fuzz targets into the folder named, build/fuzz when none is. Needs clang++-14 and Qt 5.
set -eu
cd "$(dirname "$0")/.."
out=${1:-build/fuzz}
rich=platform/WbWebKernal/src/html
mkdir -p "$out"
# shellcheck disable=SC2046 # several flags
clang++-14 -std=c++17 -O1 -g -fPIC -fsanitize=fuzzer,address,undefined -I"$rich" \
    $(pkg-config --cflags Qt5Gui) -o "$out/fuzz_html_sanitizer" \
    fuzz/fuzz_html_sanitizer.cpp "$rich/HtmlTokens.cpp" "$rich/HtmlVocabulary.cpp" "$rich/RichHtmlSanitizer.cpp" \
    "$rich/RichImages.cpp" "$rich/RichTally.cpp" "$rich/RichWords.cpp" \
    $(pkg-config --libs Qt5Gui)
