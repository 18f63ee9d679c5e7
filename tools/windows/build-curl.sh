#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds libcurl for Windows from Debian's source package: HTTP and HTTPS only, with the system's own TLS (Schannel)
# and certificates, and no other library. About a minute, nothing when it is there.
set -euo pipefail
cd "$(dirname "$0")"
toolchain=$PWD/../../cmake/toolchains/mingw-w64.cmake
. ./lib.sh

recipe=1
done_already "$windows_libraries" curl "$recipe" && exit 0

echo "Building libcurl for Windows ..."
log=$windows_cache/curl.log
mkdir -p "$windows_cache"
: >"$log"
source=$(debian_source curl)
build=$(mktemp -d)
trap 'rm -rf "$build"' EXIT
quietly "$log" cmake -S "$source" -B "$build" -G Ninja \
    -D CMAKE_TOOLCHAIN_FILE="$toolchain" -D CMAKE_BUILD_TYPE=Release -D CMAKE_INSTALL_PREFIX="$windows_libraries" \
    -D BUILD_SHARED_LIBS=ON -D BUILD_CURL_EXE=OFF -D BUILD_TESTING=OFF -D ENABLE_MANUAL=OFF \
    -D HTTP_ONLY=ON -D CURL_USE_SCHANNEL=ON -D ENABLE_UNICODE=ON \
    -D CURL_ZLIB=OFF -D CURL_BROTLI=OFF -D CURL_ZSTD=OFF -D USE_NGHTTP2=OFF -D USE_LIBIDN2=OFF \
    -D CURL_USE_LIBSSH2=OFF -D CURL_USE_LIBSSH=OFF -D CURL_USE_LIBPSL=OFF -D CURL_USE_GSSAPI=OFF
quietly "$log" cmake --build "$build"
quietly "$log" as_root cmake --install "$build"
mark_done "$windows_libraries" curl "$recipe"
