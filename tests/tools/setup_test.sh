#!/usr/bin/env bash
# The set-up script against a made-up system: a folder of commands that only record their calls.
set -euo pipefail
setup=$(realpath "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/tools" "$folder/bin"
cp "$setup" "$folder/tools/setup.sh"
printf '%s\n' '# list' 'one build first' 'two  build' 'three bench of another group' > "$folder/packages.txt"
for command in bash env dirname; do ln -s "$(command -v $command)" "$folder/bin/$command"; done

fake() { # NAME BODY
    printf '#!%s\n%s\n' "$(command -v bash)" "$2" > "$folder/bin/$1"
    chmod +x "$folder/bin/$1"
}
fail() { echo "FAILED: $1"; cat "$folder/calls" "$folder/said" 2> /dev/null; exit 1; }
installed() { fake dpkg-query "for name in $*; do echo -n \"installed:\$name \"; done; exit 1"; }
run() { # STATUS [GROUP...]
    local expected=$1 status=0
    : > "$folder/calls"
    PATH="$folder/bin" "$folder/tools/setup.sh" "${@:2}" > "$folder/said" 2>&1 || status=$?
    ((status == expected)) || fail "exit status $status instead of $expected"
}
fake apt-get "echo \"apt-get \$* as \$DEBIAN_FRONTEND\" >> $folder/calls"
fake sudo "echo \"sudo \$1\" >> $folder/calls; exec \"\$@\""

installed one two
run 0
[[ ! -s $folder/calls ]] || fail "apt was asked although nothing is missing"

installed two
run 0
grep -q '^apt-get -q update as noninteractive$' "$folder/calls" || fail "no update"
grep -q '^apt-get -q install -y --no-install-recommends one as noninteractive$' "$folder/calls" ||
    fail "not exactly the missing package"
[[ $(head -c 4 "$folder/calls") == sudo || $EUID == 0 ]] || fail "a user went without sudo"

run 0 build bench
grep -q 'one three as' "$folder/calls" || fail "two groups"

fake apt-get 'exit 100'
run 100
if ((EUID != 0)); then
    rm "$folder/bin/sudo"
    run 1
    grep -q 'apt-get install one' "$folder/said" || fail "no word on what to do"
fi
rm "$folder/bin/dpkg-query"
run 0
grep -q 'one two' "$folder/said" || fail "no word on what is needed"
