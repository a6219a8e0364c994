#!/usr/bin/env bash
# Tries a package out in a fresh Debian 12: installs it there with its dependencies alone, runs it as
# a user on a display, opens a collection through the desktop's file types, and purges it.
#
#   tools/check_package.sh PACKAGE.deb [OLDER.deb]
#
# With an older package that one is installed and used first, and the upgrade must leave the user's
# data as it was. Needs root, the network and mmdebstrap. BASE=FILE.tar keeps the bare Debian for the
# next time. Pictures of what came up on the display are left in out/package.
set -euo pipefail
source_root=$(realpath "$(dirname "$0")/..")
((EUID == 0)) || { echo "check_package: needs root, for a system of its own" >&2; exit 1; }
[[ $# -ge 1 && -f $1 ]] || { echo "usage: tools/check_package.sh PACKAGE.deb [OLDER.deb]" >&2; exit 2; }

root=$(mktemp -d)
trap 'rm -rf --one-file-system "$root"' EXIT
chmod 755 "$root"
base=${BASE:-$root.tar}
[[ -f $base ]] || mmdebstrap --quiet --variant=minbase bookworm "$base"
tar -C "$root" -xf "$base"
[[ -n ${BASE:-} ]] || rm -f "$base"

mkdir "$root/check"
cp "$1" "$root/check/new.deb"
[[ -z ${2:-} ]] || cp "$2" "$root/check/old.deb"
cp "$source_root/tools/check_package_inside.sh" "$root/check/"
cp --remove-destination -L /etc/resolv.conf "$root/etc/resolv.conf"
printf '#!/bin/sh\nexit 101\n' > "$root/usr/sbin/policy-rc.d"
chmod +x "$root/usr/sbin/policy-rc.d"

status=0
# A mount and process namespace of its own: what is left running ends with the check.
unshare --mount --pid --fork --mount-proc="$root/proc" \
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
    bash /check/check_package_inside.sh || status=$?
mkdir -p "$source_root/out/package"
cp "$root"/check/*.png "$source_root/out/package/" 2> /dev/null || true
exit "$status"
