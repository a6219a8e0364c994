#!/usr/bin/env python3
"""Measures whole processes on a display of their own, each against its floor.

    bench/bench_start.py BUILD_FOLDER [--pairs N] [--idle SECONDS] [--rows N]

  start       from the start of the process to the first paint of its window, against an empty
              window with a tray icon and a table; both started in turns, median of the ratios
  history     the same start with a history of 1,250,000 rows against one of a single row
  network     the same start with an update host that takes connections and never answers, against
              one with no host
  memory      proportional set size 10 seconds after all windows are gone, against the same floor
  sleep       wake-ups of the idle process, and whether it writes anything

The program says "first paint" on standard error when KELVRANE_TRACE_PAINT is set, and removes all
its screens after it when the variable is "unload". Exit status 1 when a limit isn't kept.
"""

import argparse
import json
import os
import select
import signal
import socket
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

START_LIMIT, HISTORY_LIMIT, NETWORK_LIMIT, MEMORY_LIMIT = 2.0, 1.1, 1.1, 1.4
WAKE_UPS_PER_TICK = 4  # a tick comes every 10 seconds
PATIENCE = 30  # seconds
SETTLING = 20  # without a tray the window that stands in comes after 20 seconds, once


class Display:
    """An X server without a screen, on a number that it finds itself."""

    def __enter__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
            pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            self.name = ":" + numbers.readline().strip()
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()


class Running:
    """A process from its start until the end of the block; seconds is the time to its paint."""

    def __init__(self, display, command, home=None, trace="1"):
        environment = dict(os.environ, DISPLAY=display.name, QT_QPA_PLATFORM="xcb",
                           KELVRANE_TRACE_PAINT=trace)
        environment.pop("WAYLAND_DISPLAY", None)
        if home:
            environment["KELVRANE_HOME"] = str(home)
        self.command, self.environment = command, environment

    def __enter__(self):
        begin = time.monotonic()
        self.process = subprocess.Popen(self.command, env=self.environment,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.PIPE)
        said = b""
        while b"first paint" not in said:
            left = begin + PATIENCE - time.monotonic()
            ready, _, _ = select.select([self.process.stderr], [], [], max(left, 0))
            more = os.read(self.process.stderr.fileno(), 4096) if ready else b""
            if not more:
                self.__exit__()
                sys.exit(f"{self.command[0]}: no first paint; it said: {said.decode()}")
            said += more
        self.seconds = time.monotonic() - begin
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        self.process.stderr.close()

    def proc(self, name):
        return Path(f"/proc/{self.process.pid}/{name}").read_text()

    def pss_kib(self):
        return int(next(line for line in self.proc("smaps_rollup").splitlines()
                        if line.startswith("Pss:")).split()[1])

    def wake_ups(self):
        return sum(int(line.split()[1]) for line in self.proc("status").splitlines()
                   if "voluntary_ctxt_switches" in line)


def start_pairs(display, pairs, first, second):
    """Median milliseconds of both, and the median of the ratios first / second."""
    times = {first: [], second: []}
    for turn in range(-1, pairs):
        for which in (first, second) if turn % 2 else (second, first):
            command, home = which
            with Running(display, list(command), home) as running:
                if turn >= 0:  # the first pair only warms the file cache
                    times[which].append(running.seconds * 1000)
    ratios = [a / b for a, b in zip(times[first], times[second])]
    return (statistics.median(times[first]), statistics.median(times[second]),
            statistics.median(ratios))


def set_update_host(home, host):
    path = Path(home, "settings.json")
    settings = json.loads(path.read_text())
    settings["keys"]["Software\\brindlemoor-ware\\Kelvrane"]["UpdateWebHost"] = host
    path.write_text(json.dumps(settings))


def contents(folder):
    return {path: path.stat().st_mtime_ns for path in Path(folder).rglob("*")}


class Table:
    def __init__(self):
        self.over = 0
        print(f"{'name':38} {'median':>12} {'floor':>12} {'ratio':>7} {'limit':>9}")

    def row(self, name, figure, floor, ratio, limit):
        kept = ratio <= limit
        self.over += not kept
        print(f"{name:38} {figure:>12} {floor:>12} {ratio:7.2f} {limit:9.2f}  "
              f"{'ok' if kept else 'OVER'}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("build", type=Path)
    parser.add_argument("--pairs", type=int, default=21)
    parser.add_argument("--idle", type=int, default=30)
    parser.add_argument("--rows", type=int, default=1_250_000)
    arguments = parser.parse_args()
    build = arguments.build.resolve()
    program, window = (str(build / "kelvrane"),), (str(build / "bench/empty_window"),)

    with tempfile.TemporaryDirectory(dir=build) as folder, Display() as display:
        short, long, asking = (Path(folder, name) for name in ("short", "long", "asking"))
        for home, rows in ((short, 1), (long, arguments.rows), (asking, 1)):
            subprocess.run([build / "bench/prepare_folder", home, str(rows)], check=True,
                           env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
        table = Table()
        time_, floor, ratio = start_pairs(display, arguments.pairs, (program, short), (window, None))
        table.row("start to first paint", f"{time_:.0f} ms", f"{floor:.0f} ms", ratio, START_LIMIT)
        time_, floor, ratio = start_pairs(display, arguments.pairs, (program, long), (program, short))
        table.row(f"start, {arguments.rows:,} rows against 1", f"{time_:.0f} ms", f"{floor:.0f} ms",
                  ratio, HISTORY_LIMIT)
        with socket.create_server(("127.0.0.1", 0)) as silent:
            set_update_host(asking, f"127.0.0.1:{silent.getsockname()[1]}")
            time_, floor, ratio = start_pairs(display, arguments.pairs, (program, asking),
                                              (program, short))
        table.row("start, silent update host against none", f"{time_:.0f} ms", f"{floor:.0f} ms",
                  ratio, NETWORK_LIMIT)

        # One after the other: shared pages would otherwise be split between the two.
        with Running(display, [*window, "close"]) as empty:
            time.sleep(10)
            floor = empty.pss_kib()
        with Running(display, list(program), long, trace="unload") as idle:
            time.sleep(10)
            memory = idle.pss_kib()
            table.row("memory without screens", f"{memory / 1024:.1f} MiB", f"{floor / 1024:.1f} MiB",
                      memory / floor, MEMORY_LIMIT)
            time.sleep(SETTLING)
            wake_ups, files = idle.wake_ups(), contents(long)
            time.sleep(arguments.idle)
            wake_ups = idle.wake_ups() - wake_ups
            allowed = (arguments.idle / 10 + 1) * WAKE_UPS_PER_TICK
            table.row(f"wake-ups in {arguments.idle} s", str(wake_ups), f"{allowed:.0f}",
                      wake_ups / allowed, 1)
            if contents(long) != files:
                table.over += 1
                print("the idle process wrote to its folder  OVER")
    sys.exit(1 if table.over else 0)


if __name__ == "__main__":
    main()
