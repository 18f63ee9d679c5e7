#!/usr/bin/env bash
# Fails, naming the files, when a source is not formatted as .clang-format says. With --fix it formats them.
set -euo pipefail
cd "$(dirname "$0")/.."

# Without git, or in a folder that git does not trust: all but what is built.
sources() {
    git ls-files -z --cached --others --exclude-standard '*.cpp' '*.h' 2>/dev/null ||
        find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -type f -printf '%P\0'
}
mapfile -d '' files < <(sources)
if [ ${#files[@]} -eq 0 ]; then
    echo "No sources were found." >&2
    exit 1
fi

format() {
    printf '%s\0' "${files[@]}" | xargs -0 -n 40 -P 2 clang-format-14 "$@"
}
if [ "${1:-}" = --fix ]; then
    format -i
    exit 0
fi
if report=$(format --dry-run --Werror --ferror-limit=1 2>&1); then
    exit 0
fi
wrong=$(sed -n 's/^\([^:]*\):[0-9]*:[0-9]*: error.*/\1/p' <<<"$report" | sort -u)
if [ -z "$wrong" ]; then
    printf 'The format could not be checked:\n%s\n' "$report" >&2
    exit 1
fi
printf 'Not formatted (tools/check-format.sh --fix mends it):\n%s\n' "$wrong" >&2
exit 1
