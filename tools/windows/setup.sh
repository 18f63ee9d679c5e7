#!/usr/bin/env bash
# Brings what building for Windows needs: Debian's packages, Qt, libsodium and libcurl. Quick when all is there.
# Qt is taken from /opt/qt5-mingw, else unpacked from qt5-mingw64.tar.xz (RPA_WINDOWS_QT_ARCHIVE, or ../shared/ beside
# the repository), else built once from Debian's source package, which takes about an hour.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/lib.sh"

"$here/../setup.sh" windows

if [ ! -x "$windows_qt/bin/moc" ]; then
    archive=${RPA_WINDOWS_QT_ARCHIVE:-$here/../../../shared/qt5-mingw64.tar.xz}
    if [ -f "$archive" ]; then
        echo "Unpacking Qt for Windows ..."
        as_root tar -C "$(dirname "$windows_qt")" -xf "$archive"
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
