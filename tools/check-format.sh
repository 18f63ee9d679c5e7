#!/usr/bin/env bash
# Fails, naming the files, when a source is not formatted as .clang-format says. With --fix it formats them.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "${1:-}" = --fix ]; then
    git ls-files -z '*.cpp' '*.h' | xargs -0 -r -n 40 -P 2 clang-format-14 -i
    exit 0
fi
wrong=$(git ls-files -z '*.cpp' '*.h' |
    xargs -0 -r -n 40 clang-format-14 --dry-run --Werror --ferror-limit=1 2>&1 |
    sed -n 's/^\([^:]*\):[0-9]*:[0-9]*: error.*/\1/p' | sort -u || true)
if [ -n "$wrong" ]; then
    printf 'Not formatted (tools/check-format.sh --fix mends it):\n%s\n' "$wrong" >&2
    exit 1
fi
