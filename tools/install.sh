#!/usr/bin/env bash
# Installs what was built, or takes it away again.
#
#   tools/install.sh install BUILD PREFIX     DESTDIR in the environment goes before every path
#   tools/install.sh uninstall BUILD          exactly the files that install put there
#
# Users' data is never among these files. The record of them lies in BUILD.
set -euo pipefail
build=$2
record=${INSTALL_RECORD:-$build/installed_files.txt}

# Menus, file types and icons are read from caches; a packager's tool sees to those itself.
refresh() { # PREFIX
    [[ -z ${DESTDIR:-} ]] || return 0
    local share=$1/share
    run() { if command -v "$1" > /dev/null; then "$@" > /dev/null 2>&1 || true; fi; }
    [[ ! -d $share/mime/packages ]] || run update-mime-database "$share/mime"
    [[ ! -d $share/applications ]] || run update-desktop-database "$share/applications"
    [[ ! -d $share/icons/hicolor ]] || run gtk-update-icon-cache -qtf "$share/icons/hicolor"
}

case $1 in
install)
    prefix=$(realpath -ms "$3")
    cmake --install "$build" --prefix "$prefix"
    { # CMake lists them without DESTDIR
        if [[ -n ${DESTDIR:-} ]]; then echo; else echo "$prefix"; fi
        while IFS= read -r file || [[ -n $file ]]; do
            echo "${DESTDIR:-}$file"
        done < "$build/install_manifest.txt"
    } > "$record"
    [[ -z $prefix ]] || refresh "$prefix"
    ;;
uninstall)
    [[ -f $record ]] || { echo "install: nothing was installed from $build" >&2; exit 1; }
    prefix=$(head -n 1 "$record") # empty when DESTDIR was set
    while IFS= read -r file; do
        rm -f -- "$file"
        # Folders of the program's own go with their last file, shared ones stay.
        folder=$(dirname "$file")
        while [[ $folder == */kelvrane || $folder == */kelvrane/* ]]; do
            rmdir -- "$folder" 2> /dev/null || break
            folder=$(dirname "$folder")
        done
    done < <(tail -n +2 "$record")
    rm -f "$record"
    [[ -z $prefix ]] || refresh "$prefix"
    ;;
*)
    echo "usage: tools/install.sh install BUILD PREFIX | uninstall BUILD" >&2
    exit 2
    ;;
esac
