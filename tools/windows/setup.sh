#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Brings what building for Windows needs: Debian's packages, Qt, libsodium and libcurl. Quick when all is there.
# Qt is taken from /opt/qt5-mingw, else unpacked from RPA_WINDOWS_QT_ARCHIVE (by default a qt5-mingw64.tar.xz in a folder
# beside the repository), else built once from Debian's source package, which takes about an hour.
#   tools/windows/setup.sh          all of it
#   tools/windows/setup.sh --quick  ends with an error where Qt would have to be built
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/lib.sh"

if [ "${1:-}" = --quick ] && [ ! -x "$windows_qt/bin/moc" ] && [ ! -f "$windows_qt_archive" ]; then
    echo "Qt for Windows is neither in $windows_qt nor in an archive (RPA_WINDOWS_QT_ARCHIVE); building it takes an hour" >&2
    exit 1
fi
"$here/../setup.sh" windows

if [ ! -x "$windows_qt/bin/moc" ]; then
    if [ -f "$windows_qt_archive" ]; then
        echo "Unpacking Qt for Windows ..."
        as_root tar -C "$(dirname "$windows_qt")" -xf "$windows_qt_archive"
    else
        "$here/build-qt.sh"
    fi
fi

# Boost is headers only. A folder with nothing but this link: all of /usr/include would bring Linux headers along.
if [ ! -e "$windows_libraries/include/boost" ]; then
    as_root mkdir -p "$windows_libraries/include"
    as_root ln -s /usr/include/boost "$windows_libraries/include/boost"
fi
"$here/build-sodium.sh"
"$here/build-curl.sh"
