#!/usr/bin/env python3
"""A real session on a loaded machine: no second skipped, none shown twice, no memory or file lost.

Usage: loaded_session.py PROGRAM_FOLDER [MINUTES] [SCORING_FILE]. Starts two busy loops beside the
program, watches the screen's memory every few milliseconds and prints what it saw; exits with 1
when a second was skipped or shown twice, or memory or files grew. Seconds in which the whole machine
stood still, so that the watching stopped too, prove nothing and are left out.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import time

from desktop import Desktop

WIDTH, HEIGHT = 1024, 768
COUNTDOWN = (200, 560)  # the rows of the screen in which only the countdown changes
SETTLES = 600           # seconds until every part was used once and memory is measured
SAMPLES = 6             # ten seconds apart, of which the least counts: a sound may be playing
STALL = 0.3             # seconds between two looks after which a look was missed


def memory(pid):
    """Kilobytes that are the process's own, in memory or taken away from it for the moment."""
    lines = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()
    return sum(int(line.split()[1]) for line in lines if line.startswith(("Anonymous:", "Swap:")))


def files(pid):
    return len(os.listdir(f"/proc/{pid}/fd"))


def watch(desktop, seconds):
    """The moments at which the countdown changed, those at which the watching had stood still, and
    memory and files, every ten seconds once all has settled."""
    pixels = desktop.pixels()
    start = len(pixels) - WIDTH * HEIGHT * 4
    rows = slice(start + COUNTDOWN[0] * WIDTH * 4, start + COUNTDOWN[1] * WIDTH * 4)
    pid = desktop.program.pid
    shown, changes, stalls, used = pixels[rows], [], [], []
    began = looked = time.monotonic()
    while time.monotonic() - began < seconds:
        time.sleep(0.01)
        now = pixels[rows]
        if time.monotonic() - looked > STALL:
            stalls.append(time.monotonic())
        looked = time.monotonic()
        if now != shown:
            # What is painted in several steps is one change.
            if not changes or time.monotonic() - changes[-1] > 0.2:
                changes.append(time.monotonic())
            shown = now
        if looked - began > min(SETTLES, seconds / 3) + 10 * len(used):
            used.append((memory(pid), files(pid)))
    return changes, stalls, used


def main():
    programs = sys.argv[1]
    minutes = float(sys.argv[2]) if len(sys.argv) > 2 else 60
    settings = {"nRounds": "20", "MinPerRound": str(max(minutes / 6, 1)),
                "MinBetweenRounds": "1", "optBreak": "False", "DisplayState": "0"}
    desktop = Desktop(programs, settings, f"{WIDTH}x{HEIGHT}")
    loops = []
    try:
        desktop.start()
        desktop.wait_for_window("^Corvanel v")
        if len(sys.argv) > 3:
            shutil.copy(sys.argv[3], desktop.folder / "tonight.bws")
        desktop.key("ctrl+Return")
        time.sleep(2)
        loops = [subprocess.Popen(["sh", "-c", "while :; do :; done"]) for _ in range(2)]
        changes, stalls, used = watch(desktop, minutes * 60 - 5)
    finally:
        for loop in loops:
            loop.kill()
        desktop.close()
    gaps = [(after - before, any(before - STALL < stall < after + STALL for stall in stalls))
            for before, after in zip(changes, changes[1:])]
    seen = [gap for gap, stalled in gaps if not stalled]
    wrong = [gap for gap in seen if gap > 1.5 or gap < 0.5]
    print(f"{len(changes)} seconds shown in {changes[-1] - changes[0]:.1f} s: "
          f"{len(wrong)} skipped or shown twice, {min(seen):.3f} to {max(seen):.3f} s apart; "
          f"{len(gaps) - len(seen)} not seen")
    memory_before, files_before = map(min, zip(*used[:SAMPLES]))
    memory_after, files_after = map(min, zip(*used[-SAMPLES:]))
    print(f"memory {memory_before} to {memory_after} kB, files {files_before} to {files_after}")
    # In a short run the program is still settling.
    grown = minutes > 20 and (memory_after - memory_before > 1024 or files_after > files_before)
    return 1 if wrong or grown or len(seen) < minutes * 30 else 0


if __name__ == "__main__":
    sys.exit(main())
