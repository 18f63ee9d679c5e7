#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Fails, naming the files, when a source is not formatted as .clang-format says and without needless braces. With
# --fix it formats them.
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

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
{
    cat .clang-format
    echo 'RemoveBracesLLVM: true'
} >"$scratch/braces"

# Twice: while it removes braces, clang-format 14 breaks the line before every lambda.
format() {
    printf '%s\0' "${files[@]}" | xargs -0 -n 40 -P 2 clang-format-14 -i --style="file:$scratch/braces"
    printf '%s\0' "${files[@]}" | xargs -0 -n 40 -P 2 clang-format-14 -i
}
if [ "${1:-}" = --fix ]; then
    format
    exit 0
fi

mkdir "$scratch/tree"
cp .clang-format "$scratch/tree"
printf '%s\0' "${files[@]}" | xargs -0 cp --parents -t "$scratch/tree"
(cd "$scratch/tree" && format)
wrong=()
for file in "${files[@]}"; do
    cmp -s "$file" "$scratch/tree/$file" || wrong+=("$file")
done
if [ ${#wrong[@]} -eq 0 ]; then
    exit 0
fi
printf 'Not formatted (tools/check-format.sh --fix mends it):\n' >&2
printf '%s\n' "${wrong[@]}" >&2
exit 1
