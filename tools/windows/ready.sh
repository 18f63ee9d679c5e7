#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Whether everything is there that building for Windows needs; names the first thing that is missing. Brings nothing.
set -euo pipefail
cd "$(dirname "$0")"
. ./lib.sh

for program in "$mingw-g++-posix" "$mingw-windres" /usr/lib/wine/wine64 makensis; do
    command -v "$program" >/dev/null || {
        echo "No $program (tools/windows/setup.sh brings it)" >&2
        exit 1
    }
done
for file in "$windows_qt/bin/moc" "$windows_libraries"/lib/{libsodium,libcurl}.dll.a "$windows_libraries/include/boost"; do
    [ -e "$file" ] || {
        echo "No $file (tools/windows/setup.sh brings it)" >&2
        exit 1
    }
done
