#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Fails, naming the files, when a source does not say its licence in its first lines. With --fix it is written there.
set -euo pipefail
cd "$(dirname "$0")/.."

line='SPDX-License-Identifier: Apache-2.0'
sources() {
    git ls-files -z --cached --others --exclude-standard \
        '*.cpp' '*.h' '*.py' '*.sh' '*.cmake' '*CMakeLists.txt' run test .ci/run
}

mapfile -d '' files < <(sources)
if [ ${#files[@]} -eq 0 ]; then
    echo "No sources were found." >&2
    exit 1
fi
mapfile -t silent < <(for file in "${files[@]}"; do head -n 2 "$file" | grep -qF "$line" || echo "$file"; done)
if [ ${#silent[@]} -eq 0 ]; then
    exit 0
fi
if [ "${1:-}" != --fix ]; then
    printf 'Without a licence (tools/check-licence.sh --fix adds it):\n' >&2
    printf '%s\n' "${silent[@]}" >&2
    exit 1
fi
for file in "${silent[@]}"; do
    case "$file" in
    *.cpp | *.h) sed -i "1i // $line\n" "$file" ;;
    *) if head -n 1 "$file" | grep -q '^#!'; then sed -i "1a # $line" "$file"; else sed -i "1i # $line" "$file"; fi ;;
    esac
done
