#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the module, the platform, the server and the workstation with clang, and fails where clang-tidy finds in their
# sources what .clang-tidy forbids; what Qt's tools generate is left out.
#   tools/check-tidy.sh                   everything: after the build 6.5 minutes of one core, half of that of two
#   tools/check-tidy.sh --changed [BASE]  what differs from BASE (main), and the files that are compiled with it
# The preset `clang` compiles several files as one; so they are checked, and read Qt's headers once for all of them.
#   tools/check-tidy.sh --tests [--changed [BASE]]   about 8 minutes of one core
# The same for tests and benchmarks with tests/.clang-tidy. They are not built, and tools/tidy/combine_tests.py combines
# them; clang's warnings are errors here, too.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/clang
folders=(client editor pages platform release resources server workstation)
if [ "${1:-}" = --tests ]; then
    shift
    build=build/clang-tests
    # Not yet: tests/{program,recovery,release,server,workstation}, tests/platform/{WbFoundation,WbHttpModule,WbWebKernal}
    folders=(
        benchmarks
        tests/{client,contract,e2e,editor,monkey,pages,support}
        tests/platform/{Ox,Rpa}* tests/platform/Wb{BaseUI,BrowserLite,Core,System}
    )
fi

changed=()
if [ "${1:-}" = --changed ]; then
    changed_files=$(git diff --name-only --diff-filter=d "${2:-main}" -- "${folders[@]}")
    new_files=$(git ls-files --others --exclude-standard -- "${folders[@]}")
    mapfile -t changed < <(grep -E '\.(cpp|h)$' <<<"$changed_files"$'\n'"$new_files")
    if [ ${#changed[@]} -eq 0 ]; then
        exit 0
    fi
fi

check() { # arguments of clang-tidy; the files come in, a line each
    xargs -r -d '\n' -n 1 -P "$(nproc)" clang-tidy-14 --quiet "$@"
}

check_tests() {
    cmake --preset clang -B "$build" -DBUILD_TESTING=ON -DRPA_BUILD_BENCHMARKS=ON -DCMAKE_UNITY_BUILD=OFF >/dev/null
    local only=()
    if [ ${#changed[@]} -gt 0 ]; then # a header with what includes it
        mapfile -t only < <(
            printf '%s\n' "${changed[@]}" | grep '\.cpp$' || true
            printf '%s\n' "${changed[@]}" | sed -nE 's|(.*/)?(.*\.h)$|#include "\2"|p' |
                grep -rlxF --include='*.cpp' -f - "${folders[@]}" || true
        )
        if [ ${#only[@]} -eq 0 ]; then
            return
        fi
    fi
    tools/tidy/combine_tests.py "$build" "$build/combined" "${folders[@]}" ${only[@]+"${only[@]/#/--only=}"} |
        check -p "$build/combined" --config-file=tests/.clang-tidy
}

check_product() {
    cmake --preset clang >/dev/null
    cmake --build --preset clang # what Qt's tools generate is read, too
    local files
    mapfile -t files < <(
        sed -nE 's|^ *"file": "([^"]*)".*|\1|p' "$build/compile_commands.json" |
            grep -E "/Unity/unity_|^$PWD/($(IFS='|' && echo "${folders[*]}"))/"
    )
    if [ ${#changed[@]} -gt 0 ]; then # a header by itself
        mapfile -t files < <(
            printf "$PWD/%s\"\n" "${changed[@]}" | grep -lF -f - "${files[@]}" || true
            printf "$PWD/%s\n" "${changed[@]}" | grep -xF -f - <(printf '%s\n' "${files[@]}") || true # compiled by itself
            printf '%s\n' "${changed[@]}" | grep '\.h$'
        )
    fi
    [ ${#files[@]} -eq 0 ] || printf '%s\n' "${files[@]}" | check -p "$build"
}

if [ "$build" = build/clang ]; then
    check_product
else
    check_tests
fi
