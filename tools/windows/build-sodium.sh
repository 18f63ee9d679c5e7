#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds libsodium for Windows from Debian's source package; about half a minute, nothing when it is there.
set -euo pipefail
cd "$(dirname "$0")"
. ./lib.sh

recipe=1
done_already "$windows_libraries" sodium "$recipe" && exit 0

echo "Building libsodium for Windows ..."
log=$windows_cache/sodium.log
mkdir -p "$windows_cache"
: >"$log"
source=$(debian_source libsodium)
build=$(mktemp -d)
trap 'rm -rf "$build"' EXIT
cp -r "$source" "$build/source"
cd "$build/source"
quietly "$log" autoreconf -fi # Debian's archive comes without a configure script
quietly "$log" ./configure --host="$mingw" --prefix="$windows_libraries" --enable-shared --disable-static \
    CC="$mingw-gcc-posix" CFLAGS="-O2"
quietly "$log" make -j"$(nproc)"
quietly "$log" as_root make install
mark_done "$windows_libraries" sodium "$recipe"
