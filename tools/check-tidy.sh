#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the module, the platform, the server and the workstation with clang, and fails where clang-tidy finds in their
# sources what .clang-tidy forbids. Tests are left out, and what Qt's tools generate.
#   tools/check-tidy.sh                   everything: after the build 6.5 minutes of one core, half of that of two
#   tools/check-tidy.sh --changed [BASE]  what differs from BASE (main), and the files that are compiled with it
# The preset `clang` compiles several files as one; so they are checked, and read Qt's headers once for all of them.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/clang
product=(client editor pages platform release resources server workstation)

changed=()
if [ "${1:-}" = --changed ]; then
    changed_files=$(git diff --name-only --diff-filter=d "${2:-main}" -- "${product[@]}")
    new_files=$(git ls-files --others --exclude-standard -- "${product[@]}")
    mapfile -t changed < <(grep -E '\.(cpp|h)$' <<<"$changed_files"$'\n'"$new_files")
    if [ ${#changed[@]} -eq 0 ]; then
        exit 0
    fi
fi

cmake --preset clang >/dev/null
cmake --build --preset clang # what Qt's tools generate is read, too

mapfile -t files < <(
    sed -nE 's|^ *"file": "([^"]*)".*|\1|p' "$build/compile_commands.json" |
        grep -E "/Unity/unity_|^$PWD/($(IFS='|' && echo "${product[*]}"))/"
)
if [ ${#changed[@]} -gt 0 ]; then # a header by itself
    mapfile -t files < <(
        printf "$PWD/%s\"\n" "${changed[@]}" | grep -lF -f - "${files[@]}"
        printf "$PWD/%s\n" "${changed[@]}" | grep -xF -f - <(printf '%s\n' "${files[@]}") # compiled by itself
        printf '%s\n' "${changed[@]}" | grep '\.h$'
    )
fi
printf '%s\0' "${files[@]}" | xargs -0 -r -n 1 -P "$(nproc)" clang-tidy-14 --quiet -p "$build"
