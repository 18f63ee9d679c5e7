#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Runs a Windows program under wine and gives its exit code; ctest does it with every test of the preset windows.
#   tools/windows/run.sh PROGRAM.exe [ARGUMENTS...]
# Set from outside, if need be:
#   RPA_TEST_REPORT  the file of a QtTest program's report, printed at its end: under wine it prints nothing itself
#   RPA_PYTHON       the Python of runs and installations, as Windows writes it (wine_python.exe beside the program)
#   RPA_WINEPREFIX   wine's own folder, its drive C: (build/wine)
#   RPA_RUN_ALONE    the program brings its DLLs itself; none are named here
#   WINEPATH         folders with DLLs that go first, as Windows writes them
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/lib.sh"

wine=/usr/lib/wine/wine64 # not the script "wine", which asks for the 32-bit one
server=/usr/lib/wine/wineserver64
server_seconds=20 # after the last program
on_windows() { printf 'Z:%s' "${1//\//\\}"; }

export WINEPREFIX=${RPA_WINEPREFIX:-$here/../../build/wine}
# Windows of the system need a screen, if only one in memory. All programs of a folder of wine's share the screen of the
# first, also when that has none; so those that bring one have a folder to themselves, one program after another.
if [ "${QT_QPA_PLATFORM:-windows}" = windows ] && [ -z "${DISPLAY:-}" ] && command -v xvfb-run >/dev/null; then
    mkdir -p "$(dirname "$WINEPREFIX")"
    exec 8>"$WINEPREFIX.screen"
    flock 8
    RPA_WINEPREFIX=$WINEPREFIX-screen RPA_OWN_SCREEN=1 exec xvfb-run -a -s '-screen 0 1440x900x24' "$0" "$@"
fi
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
path=${WINEPATH:-}
[ -n "${RPA_RUN_ALONE:-}" ] || for folder in "$windows_qt/bin" "$windows_qt/sqlite/bin" "$windows_libraries/bin" \
    "$(dirname "$("$mingw-g++-posix" -print-file-name=libstdc++-6.dll)")" "/usr/$mingw/lib"; do
    path+="${path:+;}$(on_windows "$folder")"
done
export WINEPATH=$path
# What draws in memory takes its fonts from one folder.
fonts=$WINEPREFIX/fonts
export QT_QPA_FONTDIR=${QT_QPA_FONTDIR:-$(on_windows "$fonts")}
# Wine keeps the variables of a Linux Qt to itself, but for those that name it.
for name in $(compgen -e QT_); do
    export "WINE$name=${!name}"
done

# Linux' Python takes the place of one for Windows where nobody chose another.
python=$(dirname "$(realpath "$1")")/wine_python.exe
if [ -z "${RPA_PYTHON:-}" ] && [ -e "$python" ]; then
    export RPA_PYTHON=$(on_windows "$python")
fi

mkdir -p "$WINEPREFIX"
exec 9>"$WINEPREFIX.lock"
flock 9
# The first ever makes wine's folder.
if [ ! -e "$WINEPREFIX/ready" ]; then
    DISPLAY='' "$wine" wineboot --init
    DISPLAY='' "$wine" winecfg -v win10
    "$server" --wait
    mkdir -p "$fonts"
    ln -sf /usr/share/fonts/opentype/noto/NotoSansCJK-*.ttc /usr/share/fonts/truetype/dejavu/DejaVuSans*.ttf "$fonts"
    touch "$WINEPREFIX/ready"
fi </dev/null >/dev/null 2>&1 8>&- 9>&-
# Wine's server and services outlive the program that needs them first. Were they its children, they would keep its
# output open, and who waits for its end there (ctest does) would wait for theirs. So they are started before it; and as
# the desktop comes with the first window only, a test's output goes to a file.
if "$server" -p"$server_seconds"; then # else it runs already
    "$wine" wineboot
fi </dev/null >/dev/null 2>&1 8>&- 9>&-
exec 9>&-
[ -z "${RPA_OWN_SCREEN:-}" ] || trap '"$server" -k || true' EXIT # the screen goes, too

code=0
if [ -z "${RPA_TEST_REPORT:-}" ]; then
    "$wine" "$@" || code=$?
    exit "$code"
fi
rm -f "$RPA_TEST_REPORT"
"$wine" "$@" -o "$(on_windows "$RPA_TEST_REPORT"),txt" >"$RPA_TEST_REPORT.output" 2>&1 || code=$?
cat "$RPA_TEST_REPORT.output" "$RPA_TEST_REPORT"
exit "$code"
