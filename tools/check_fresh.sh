#!/usr/bin/env bash
# Builds and tests what is checked in on bare machines: a fresh Debian 12 and a fresh Debian 13 with
# git and make, a clone of this repository, and nothing else of this machine. Runs `make test` and, as
# there is no display, `make run`, which is the tour. Says at the end what it saw.
#
#   tools/check_fresh.sh [SUITE...]     bookworm and trixie when none is named
#
# Needs root, the network and mmdebstrap. In the environment:
#   MIRROR=ADDRESS   where packages come from; this machine's own mirror without it
#   CCACHE=FOLDER    keeps compiled files from run to run, each suite's apart; off without it
# Logs, and the tour's pictures, are left in out/fresh.
set -euo pipefail
source_root=$(realpath "$(dirname "$0")/..")
suites=("$@")
((${#suites[@]})) || suites=(bookworm trixie)
((EUID == 0)) || { echo "check_fresh: needs root, for systems of their own" >&2; exit 1; }

results=$source_root/out/fresh
[[ -z ${CCACHE:-} ]] || CCACHE=$(realpath -m "$CCACHE")
work=$(mktemp -d "${TMPDIR:-/tmp}/fresh-XXXXXX")
child=
clean_up() {
    if [[ -n $child ]]; then
        kill -- "-$child" 2> /dev/null || true # unshare takes all that runs inside along
        wait "$child" 2> /dev/null || true
    fi
    rm -rf --one-file-system "$work"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP
# In the background, because a signal is only looked at between two commands or in a wait; a group of
# processes of its own, which ends as one.
run() {
    local status=0
    set -m
    "$@" &
    child=$!
    set +m
    wait "$child" || status=$?
    child=
    return "$status"
}

# The lines of this machine's apt for its own Debian, for another one.
sources() { # SUITE
    local keys=/usr/share/keyrings/debian-archive-keyring.gpg options='' own
    [[ ! -f $keys ]] || options="[signed-by=$keys] "
    if [[ -n ${MIRROR:-} ]]; then
        echo "deb $options$MIRROR $1 main"
        return
    fi
    own=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
    apt-get indextargets --format '$(ORIGIN)|$(REPO_URI)|$(CODENAME)|$(COMPONENT)' 'Created-By: Packages' |
        sort -u | while IFS='|' read -r origin address suite component; do
            [[ $origin == Debian && $component == main ]] || continue
            case $suite in
            "$own" | "$own-updates" | "$own-security") echo "deb $options$address $1${suite#"$own"} main" ;;
            esac
        done
}

make_root() { # SUITE FOLDER
    sources "$1" > "$work/sources"
    [[ -s $work/sources ]] || {
        echo "check_fresh: apt knows no mirror of Debian here; run apt-get update, or set MIRROR" >&2
        return 1
    }
    # Which way apt reaches its mirror, and what it thinks of this machine's clock.
    apt-config dump | grep -E '^Acquire::(https?::|ftp::|Check-|ForceIPv|Retries)' > "$work/apt.conf" || true
    mmdebstrap --quiet --variant=minbase --include=ca-certificates,git,make \
        --aptopt="$work/apt.conf" "$1" "$2" "$work/sources" || return
    cp --remove-destination -L /etc/resolv.conf "$2/etc/resolv.conf"
    printf '#!/bin/sh\nexit 101\n' > "$2/usr/sbin/policy-rc.d" # no service is started
    chmod +x "$2/usr/sbin/policy-rc.d"
    git clone --quiet --no-hardlinks "$source_root" "$2/kelvrane"
}

# Mounts and processes of their own: both end with the command, whatever it leaves behind.
inside() { # FOLDER COMMAND
    local root=$1 shared=()
    if [[ -n ${CCACHE:-} ]]; then
        mkdir -p "$CCACHE/$suite" "$root/ccache"
        shared=(CCACHE_DIR=/ccache
            CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime)
    fi
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child --mount-proc="$root/proc" bash -ec '
        root=$1 shared=$2 command=$3
        shift 3
        mkdir -p "$root/dev/shm"
        mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
        [[ -z $shared ]] || mount --bind "$shared" "$root/ccache"
        exec chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 "$@" \
            bash -c "cd /kelvrane && $command"
    ' bash "$root" "${CCACHE:+$CCACHE/$suite}" "$2" "${shared[@]}" < /dev/null
}

check() { # SUITE: a line of the report; status 1 when something failed
    local suite=$1 root=$work/$1 log=$results/$1 began=$SECONDS test_status=0 tour_status=0
    local test_began whole configured installed compiler qt count failed warnings tests pictures
    mkdir -p "$log"
    rm -rf "${log:?}"/*
    echo "== $suite: a bare system"
    run make_root "$suite" "$root" > "$log/system.log" 2>&1 || {
        cat "$log/system.log" >&2
        echo "$suite: no system to build in" >> "$work/report"
        return 1
    }
    echo "== $suite: make test"
    test_began=$EPOCHSECONDS
    run inside "$root" 'make test 2>&1' > "$log/test.log" || test_status=$?
    whole=$((EPOCHSECONDS - test_began))
    echo "== $suite: make run"
    run inside "$root" 'make run 2>&1' > "$log/run.log" || tour_status=$?

    # CMake writes this file first, and once.
    configured=$(find "$root/kelvrane/build" -name CMakeSystem.cmake -printf '%Ts' 2> /dev/null || true)
    installed=$((${configured:-$test_began} - test_began))
    compiler=$(inside "$root" 'g++ -dumpfullversion' || echo none)
    qt=$(inside "$root" 'dpkg-query -W -f "\${Version}" qt6-base-dev' || echo none)
    read -r failed count < <(sed -nE \
        's/^[0-9]+% tests passed, ([0-9]+) tests? failed out of ([0-9]+).*/\1 \2/p' "$log/test.log") || true
    tests=$(sed -nE 's/^Total Test time \(real\) = +([0-9]+).*/\1/p' "$log/test.log")
    warnings=$(grep -cE '^[^ ]+:[0-9]+:[0-9]+: warning: ' "$log/test.log" || true)
    cp -r "$root/kelvrane/out/tour" "$log/tour" 2> /dev/null || true
    pictures=$(find "$log" -name '*.png' | wc -l)
    rm -rf --one-file-system "$root"
    {
        printf '%s: g++ %s, Qt %s\n' "$suite" "$compiler" "${qt%%[+-]*}"
        printf '    %s tests, %s passed; %s warnings\n' "${count:-no}" "$((${count:-0} - ${failed:-0}))" "$warnings"
        printf '    the tour left %s pictures\n' "$pictures"
        printf '    %s s to install, %s s to build, %s s to test, %s s in all\n' "$installed" \
            "$((whole - installed - ${tests:-0}))" "${tests:-0}" "$((SECONDS - began))"
        ((test_status == 0)) || printf '    FAILED: make test, see %s\n' "out/fresh/$suite/test.log"
        ((tour_status == 0 && pictures > 0)) || printf '    FAILED: make run, see %s\n' "out/fresh/$suite/run.log"
    } >> "$work/report"
    ((test_status == 0 && ${count:-0} > 0 && tour_status == 0 && pictures > 0))
}

status=0
for suite in "${suites[@]}"; do
    check "$suite" || status=1
done
printf '\n== %s\n' "$(git -C "$source_root" log -1 --format='%h %s')"
cat "$work/report"
exit "$status"
