#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds Qt for Windows (Core, Gui, Widgets, Network with Schannel, Sql with SQLite, Test, Concurrent, Xml,
# PrintSupport) from Debian's source packages into /opt/qt5-mingw. About an hour on two cores; nothing when it is there.
#   tools/windows/build-qt.sh              all of it
#   tools/windows/build-qt.sh --configure  only fetches, patches and configures, to see whether that works
set -euo pipefail
cd "$(dirname "$0")"
. ./lib.sh

[ "${1:-}" = --configure ] || [ ! -x "$windows_qt/bin/moc" ] || exit 0

work=$windows_cache/qt
log=$windows_cache/qt.log
sqlite=$work/sqlite
mkdir -p "$work"

# Debian's tree holds SQLite in parts; Qt's holds none.
build_sqlite() {
    local source=$1
    mkdir -p "$work/sqlite-build" "$sqlite"/{bin,include,lib}
    (
        cd "$work/sqlite-build"
        "$source/configure" --disable-tcl --disable-readline
        make sqlite3.c
        "$mingw-gcc-posix" -O2 -shared -DSQLITE_ENABLE_COLUMN_METADATA -DSQLITE_ENABLE_FTS5 -DSQLITE_ENABLE_RTREE \
            -DSQLITE_OMIT_LOAD_EXTENSION -DSQLITE_API='__declspec(dllexport)' sqlite3.c \
            -o "$sqlite/bin/sqlite3.dll" -Wl,--out-implib,"$sqlite/lib/libsqlite3.dll.a"
        cp sqlite3.h "$sqlite/include/"
    )
}

# The import libraries of Windows have lower-case names here, where case matters.
patch_qt() {
    sed -i 's/"-lSecur32" "-lCrypt32"/"-lsecur32" "-lcrypt32"/' "$1/src/network/ssl/ssl.pri"
    grep -q '"-lsecur32" "-lcrypt32"' "$1/src/network/ssl/ssl.pri"
}

# Tablets would need a header that Debian leaves out.
configure_qt() {
    rm -rf "$work/build"
    mkdir -p "$work/build"
    (
        cd "$work/build"
        "$1/configure" -prefix "$windows_qt" -opensource -confirm-license -release -shared \
            -platform linux-g++ -xplatform win32-g++ -device-option "CROSS_COMPILE=$mingw-" \
            -nomake examples -nomake tests -no-compile-examples -no-pch \
            -no-opengl -no-feature-vulkan -no-feature-tabletevent -no-dbus -no-icu -no-glib -no-openssl -schannel \
            -system-zlib -qt-libpng -qt-libjpeg -qt-freetype -qt-harfbuzz -qt-pcre \
            -sql-sqlite -system-sqlite "SQLITE_PREFIX=$sqlite"
    )
}

run() {
    echo "Qt for Windows: $1 (progress is in $log) ..."
    shift
    "$@" >>"$log" 2>&1 || {
        tail -n 40 "$log" >&2
        exit 1
    }
}

: >"$log"
dpkg-query -W -f '${Status}' tcl 2>/dev/null | grep -q "install ok" ||
    run "installing tcl" as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends tcl
sqlite_source=$(debian_source sqlite3)
qt_source=$(debian_source qtbase-opensource-src)
run "SQLite" build_sqlite "$sqlite_source"
run "patching" patch_qt "$qt_source"
run "configuring" configure_qt "$qt_source"
if [ "${1:-}" = --configure ]; then
    cat "$work/build/config.summary"
    exit 0
fi
run "building" make -C "$work/build" -j"$(nproc)"
run "installing" as_root make -C "$work/build" install
as_root cp -r "$sqlite" "$windows_qt/"
