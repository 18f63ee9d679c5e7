#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Finds out which Debian packages are missing and installs them: as root or with sudo; otherwise it prints the line to
# run and stops. Quick when nothing is missing.
#   tools/setup.sh run     what building and starting the workstation needs
#   tools/setup.sh test    the same and what the tests need
#   tools/setup.sh ci      the same and the second compiler with its checker (see tools/check-tidy.sh)
#   tools/setup.sh windows what building for Windows and running its tests need (see tools/windows/setup.sh)
set -euo pipefail

run_packages=(
    g++ cmake ninja-build ccache pkg-config
    qtbase5-dev qttranslations5-l10n libqt5sql5-sqlite libqt5sql5-psql
    qtwebengine5-dev libqt5webchannel5-dev
    libboost1.74-dev libsodium-dev libssl-dev libcurl4-openssl-dev zlib1g-dev
    libkf5syntaxhighlighting-dev qtkeychain-qt5-dev libsecret-1-0
    python3 python3-venv python3-pip python3-openpyxl python3-requests python3-jedi python3-pyflakes
    fonts-noto-cjk fonts-dejavu-core
    xvfb xauth openbox xdotool x11-utils
)
test_packages=(
    clang-format-14 openssl postgresql-15 libbenchmark-dev python3-yaml dbus binutils procps
)
ci_packages=(
    clang-14 clang-tidy-14
)

windows_packages=(
    g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine wine64 nsis
    cmake ninja-build ccache pkg-config make dpkg-dev autoconf automake libtool libboost1.74-dev
    python3 python3-yaml qttranslations5-l10n binutils xvfb xauth fonts-noto-cjk fonts-dejavu-core
)

case "${1:-run}" in
run) wanted=("${run_packages[@]}") ;;
test) wanted=("${run_packages[@]}" "${test_packages[@]}") ;;
ci) wanted=("${run_packages[@]}" "${test_packages[@]}" "${ci_packages[@]}") ;;
windows) wanted=("${windows_packages[@]}") ;;
*)
    sed -n '2,7s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac

# One query for all: a package that dpkg does not know at all makes no line, so the installed ones are subtracted.
installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null | awk '$2=="installed"{print $1}' || true)
missing=()
for package in "${wanted[@]}"; do
    grep -qxF "$package" <<<"$installed" || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

if [ "$(id -u)" -eq 0 ]; then
    as_root=()
elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
    as_root=(sudo)
else
    echo "These Debian packages are missing. Please run:" >&2
    echo "  sudo apt-get update && sudo apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
