# SPDX-License-Identifier: Apache-2.0
# Sourced by the scripts beside it: where things are, and how Debian's sources are fetched.

shopt -s inherit_errexit # a source that cannot be had ends the script

windows_qt=/opt/qt5-mingw
windows_libraries=/opt/mingw-libs
# Not given: in any folder beside the repository's.
windows_qt_archive=${RPA_WINDOWS_QT_ARCHIVE:-$(
    compgen -G "$(dirname "${BASH_SOURCE[0]}")/../../../*/qt5-mingw64.tar.xz" | head -n 1 || true
)}
windows_cache=${XDG_CACHE_HOME:-$HOME/.cache}/rpa-windows
mingw=x86_64-w64-mingw32

# as_root COMMAND...: as root, or with sudo where it asks for nothing.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
        sudo "$@"
    else
        echo "Please run this as root: $*" >&2
        return 1
    fi
}

# quietly LOG COMMAND...: the command's output goes to the log; its end is shown when the command fails.
quietly() {
    local log=$1
    shift
    if ! "$@" >>"$log" 2>&1; then
        tail -n 30 "$log" >&2
        return 1
    fi
}

# debian_source PACKAGE: prints the folder with the package's source, Debian's patches applied. The lists of sources
# are kept beside the sources, so the machine's own package lists stay as they are.
debian_source() {
    local package=$1
    local home=$windows_cache/source
    local folder=$home/$package
    if [ ! -e "$folder/complete" ]; then
        mkdir -p "$folder"
        # A mirror may lack the sources of security updates; then the version before them serves.
        download_source "$package" cat || download_source "$package" grep -v security
        dpkg-source -q --no-check -x "$folder"/*.dsc "$folder/unpacked" >&2 # apt has checked the signed sums
        touch "$folder/complete"
    fi
    echo "$folder/unpacked"
}

# download_source PACKAGE FILTER...: from the Debian mirrors of this machine that the filter lets through.
download_source() {
    local package=$1
    shift
    local home=$windows_cache/source
    local lists=$home/lists-$1
    mkdir -p "$lists/partial" "$home/archives/partial"
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT) $(ORIGIN)' 'Created-By: Packages' | "$@" |
        awk '$NF == "Debian" { print "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]", $1, $2, $3 }' |
        sort -u >"$home/debian.list"
    local options=(-qq -o "Dir::Etc::SourceList=$home/debian.list" -o Dir::Etc::SourceParts=-
        -o "Dir::State::Lists=$lists" -o "Dir::Cache=$home/archives" -o APT::Sandbox::User=root)
    apt-get "${options[@]}" update >&2 &&
        (cd "$home/$package" && rm -rf ./* && apt-get "${options[@]}" source --download-only "$package" >&2)
}

# done_already PREFIX NAME VERSION: whether that version was installed there by these scripts.
done_already() {
    [ "$(cat "$1/.$2-built" 2>/dev/null)" = "$3" ]
}

mark_done() {
    echo "$3" | as_root tee "$1/.$2-built" >/dev/null
}
