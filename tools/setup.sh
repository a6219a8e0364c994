#!/usr/bin/env bash
# Installs the Debian packages of packages.txt that are missing.
#
#   tools/setup.sh [GROUP...]     groups as in packages.txt; "build" when none is named
#
# Asks dpkg first and runs apt-get only for what isn't there, as root or through sudo.
set -euo pipefail
list="$(dirname "$0")/../packages.txt"
groups=" ${*:-build} "

wanted=()
while read -r package group _; do
    [[ -z $package || $package == \#* ]] && continue
    [[ $groups == *" $group "* ]] && wanted+=("$package")
done < "$list"

if ! command -v dpkg-query > /dev/null; then
    echo "setup: not a Debian system; going on with what is here." >&2
    echo "setup: needed, by their Debian names: ${wanted[*]}" >&2
    exit 0
fi

# A virtual or foreign-architecture name never matters here: the list names real packages.
installed=" $(dpkg-query -W -f='${db:Status-Status}:${Package} ' "${wanted[@]}" 2> /dev/null || true)"
missing=()
for package in "${wanted[@]}"; do
    [[ $installed == *" installed:$package "* ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0

run=()
if ((EUID != 0)); then
    if ! command -v sudo > /dev/null; then
        echo "setup: these packages are missing, and neither root nor sudo is at hand:" >&2
        echo "    ${missing[*]}" >&2
        echo "setup: as root, run: apt-get update && apt-get install ${missing[*]}" >&2
        exit 1
    fi
    run=(sudo)
fi
echo "setup: installing ${missing[*]}"
apt=("${run[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q)
"${apt[@]}" update
"${apt[@]}" install -y --no-install-recommends "${missing[@]}"
