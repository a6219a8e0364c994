#!/usr/bin/env bash
# Everything that `make bench` measures: the operations in process, then whole processes.
# Exit status 1 when a limit isn't kept.
set -uo pipefail
build=$(realpath "$1")
bench=$(realpath "$(dirname "$0")")
cd "$build"
status=0
QT_QPA_PLATFORM=offscreen bench/kelvrane_bench || status=1
QT_QPA_PLATFORM=offscreen bench/locked_history || status=1
echo
"$bench/bench_start.py" "$build" || status=1
exit $status
