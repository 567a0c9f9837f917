#!/usr/bin/env python3
"""Kills the running desktop program at random moments and goes on with its session each time.

Usage: kill_and_resume.py PROGRAM_FOLDER [TIMES] [SEED]. Exits with 1 when the session lost or won a
second in any of them, or did not keep what was done just before; or when a second copy of the program
did not give way to the first.
"""

import random
import sys
import time

from desktop import Desktop

ROUND, MOVE = 30.0, 12.0  # seconds
LOST = 1.0                # seconds, at most


def start_of_session(record):
    """When the session would have started, as seconds of the computer's uptime, had every round
    and move run its full time. It must stay the same whatever happens to the program."""
    state = record["state"]
    if state["phase"] == "move":
        return state["moveEnd"] - state["round"] * (ROUND + MOVE)
    paused = record["at"]["uptime"] - state["pauseMark"] if state["paused"] else 0
    return state["roundEnd"] + paused - (state["round"] - 1) * (ROUND + MOVE) - ROUND


def press(desktop, key, before):
    """Presses the key, again where the window was not ready for it, until the session's record is
    another one than `before`. Returns the new one."""
    for _ in range(10):
        desktop.key(key)
        until = time.time() + 1
        while time.time() < until:
            record = desktop.record()
            if record and (not before or record["at"] != before["at"]):
                return record
            time.sleep(0.01)
    raise SystemExit(f"{key} did nothing")


def one_kill(desktop, chance, pause, gently):
    """Returns the seconds lost, and whether a pause that was pressed was kept. `gently`: the program
    is not killed but asked to make way."""
    time.sleep(chance.uniform(0, 3))
    if pause:
        desktop.key("p")
        time.sleep(0.3)
    desktop.make_way() if gently else desktop.kill()
    before = desktop.record()
    time.sleep(chance.uniform(0, 0.5))
    desktop.start()
    desktop.wait_for_window("^Corvanel$")
    after = press(desktop, "Return", before)
    kept = before["state"]["paused"] == after["state"]["paused"] == pause
    if pause:
        # The pause's mark has moved with the marks that it stops: nothing else has.
        def left(record):
            state = record["state"]
            end = state["moveEnd"] if state["phase"] == "move" else state["roundEnd"]
            return end - state["pauseMark"]
        lost = left(after) - left(before)
        desktop.wait_for_window("^Corvanel v")
        press(desktop, "p", after)
    else:
        lost = start_of_session(after) - start_of_session(before)
    return abs(lost), kept


def main():
    programs = sys.argv[1]
    times = int(sys.argv[2]) if len(sys.argv) > 2 else 200
    chance = random.Random(int(sys.argv[3]) if len(sys.argv) > 3 else 1)
    desktop = Desktop(programs, {"nRounds": "999", "MinPerRound": str(ROUND / 60),
                                 "MinBetweenRounds": str(MOVE / 60), "optBreak": "False",
                                 "MinWarning": "0.2", "MinWarning1": "0.4"})
    worst, forgotten = 0.0, 0
    try:
        desktop.start()
        desktop.wait_for_window("^Corvanel v")
        press(desktop, "ctrl+Return", None)
        second = desktop.second_copy()
        for number in range(times):
            lost, kept = one_kill(desktop, chance, pause=number % 5 == 4,
                                  gently=number % 3 == 2)
            worst = max(worst, lost)
            forgotten += not kept
    finally:
        desktop.close()
    print(f"second copy: {'gave way' if second == 0 else second}")
    print(f"{times} kills: at most {worst:.3f} s lost, {forgotten} times a state not kept")
    return 1 if worst > LOST or forgotten or second != 0 else 0


if __name__ == "__main__":
    sys.exit(main())
