#!/usr/bin/env python3
"""An evening in which somebody presses and clicks at random: the program goes on, and nothing grows.

Usage: random_actions.py PROGRAM_FOLDER [SECONDS] [SEED]. Drives the real program under openbox, with
a session under way and a scoring file that changes. Only a question whether to exit is never answered
with Yes. Exits with 1 when the program ended, stood still or reported an error, when memory or files
grew (not in a run of less than five minutes), or when it did not end in good order afterwards.
"""

import collections
import contextlib
import json
import pathlib
import random
import re
import shutil
import string
import subprocess
import sys
import time

from desktop import Desktop
from loaded_session import files, memory

WIDTH, HEIGHT = 1024, 768
EVENING = sorted((pathlib.Path(__file__).parent.parent / "fixtures/live").glob("*.bws"))
STANDS_STILL = 30        # seconds after which it will not go on any more
SAMPLE, SAMPLES = 10, 6  # seconds between two looks at memory and files; the least of so many counts
MOST = 20000, 8          # kilobytes and files that may come after the first quarter
CONTROL, BOX = "^Corvanel v[0-9.]+$", "^Corvanel$"
# Windows in which anything may be pressed. In all others, which deal with files, only names are typed.
KNOWN = re.compile(rf"{CONTROL}|display$|[Oo]ptions$|^Sections|^Keyboard|^Play times|^Select (Font|Colo)")
SETTINGS = {"nRounds": "40", "MinPerRound": "2", "MinBetweenRounds": "0.2", "MinWarning1": "1",
            "MinWarning": "0.5", "BreakAfterRound": "3", "TimeForBreak": "1", "LogFile": "-1",
            "BMSuggest": "True", "BMUpdateSettings": "False", "BMAutoMove": "True", "BMAutoPause": "True",
            "BWSfolder": "SCORING"}
# Nothing of openbox's own: a click beside the windows would open a menu of programs.
WINDOW_MANAGER = """<openbox_config xmlns="http://openbox.org/3.4/rc">
<keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard><mouse>
<context name="Client"><mousebind button="Left" action="Press"><action name="Focus"/></mousebind></context>
<context name="Close"><mousebind button="Left" action="Click"><action name="Close"/></mousebind></context>
</mouse></openbox_config>"""
LETTERS = list(string.ascii_lowercase)
KEYS = [  # how often one of these is pressed beside the others
    (6, ["p", "r", "n", "u", "f", "h", "m", "e", "plus", "minus", "KP_Add", "KP_Subtract", "F1", "Escape"]),
    (5, ["Tab", "shift+Tab", "Return", "space", "Escape", "Up", "Down", "Left", "Right"]),
    (3, LETTERS + list(string.digits) + ["comma", "period", "colon", "BackSpace", "Delete", "eacute"]),
    (1, [f"F{number}" for number in range(1, 13)] + ["Home", "End", "Prior", "Next", "Menu", "Insert"]),
    (2, [f"alt+{letter}" for letter in LETTERS] + ["alt+F4", "alt+Down"]),
    (1, [f"ctrl+{key}" for key in ["Return", "a", "c", "v", "x", "z", "Tab", "Home", "End"]]),
    # Of the menus, whose windows would hardly be opened otherwise.
    (2, ["alt+o g", "alt+o d", "alt+o s", "alt+o b", "alt+b o", "alt+b c", "alt+b p", "alt+s e",
         "alt+s i", "alt+s b", "alt+h k", "alt+h m", "alt+c"])]
CLICKS = ["click 1"] * 6 + ["click --repeat 2 1", "click 3", "click --repeat 3 4", "click --repeat 3 5", "",
                            "mousedown 1 mousemove_relative -- -40 25 mouseup 1"]


class Evening(Desktop):
    """The program under openbox, where nothing reaches beyond the folder of the run."""

    def __init__(self, programs, seed):
        super().__init__(programs, SETTINGS, f"{WIDTH}x{HEIGHT}")
        self.chance = random.Random(seed)
        self.done = collections.deque(maxlen=30)
        (self.folder / "home").mkdir(mode=0o700)
        for name in ("HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"):
            self.environment[name] = str(self.folder / "home")
        # Neither is a viewer opened nor the computer switched off.
        for name in ("xdg-open", "systemctl"):
            (self.folder / name).write_text(f"#!/bin/sh\ntouch '{self.folder}/called-{name}'\n")
            (self.folder / name).chmod(0o755)
        # A bus that is looked for and not found is a race for the program's start.
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        self.environment["PATH"] = f"{self.folder}:{self.environment['PATH']}"
        (self.folder / "openbox.xml").write_text(WINDOW_MANAGER)
        self.manager = subprocess.Popen(["openbox", "--config-file", self.folder / "openbox.xml"],
                                        env=self.environment, stderr=subprocess.DEVNULL)
        self.scoring = self.folder / "scoring/tonight.bws"
        self.scoring.parent.mkdir()
        shutil.copyfile(EVENING[0], self.scoring)
        self.store.write_text(self.store.read_text().replace("SCORING", f"{self.scoring.parent}/"))

    def titles(self):
        shown = self.xdotool("search", "--onlyvisible", "--name", ".", "getwindowname", "%@").splitlines()
        return [title for title in shown if title != "Openbox"]

    def record(self):
        """Looks again where it is just being replaced."""
        if (record := super().record()) is None:
            time.sleep(0.2)
            record = super().record()
        return record

    def running(self):
        record = self.record()
        return record is not None and record["state"]["phase"] in ("round", "move", "break")

    def do(self, what):
        """Does it, and waits until all that follows has happened: nobody computes any more."""
        self.done.append(what)
        self.xdotool(*what.split())
        until, before, quiet = time.monotonic() + STANDS_STILL, None, 0
        while quiet < 3:
            time.sleep(0.012)
            if time.monotonic() > until:
                raise SystemExit(f"it has not come to rest for {STANDS_STILL} s")
            if self.program.poll() is not None:
                raise SystemExit(f"the program ended with {self.program.returncode}")
            # Whoever wakes up is counted there.
            now = [pathlib.Path(f"/proc/{one.pid}/status").read_text()
                   for one in (self.program, self.manager, self.screen)]
            asleep = all("State:\tS" in one for one in now)
            quiet = quiet + 1 if now == before and asleep else 0
            before = now

    def reports_error(self):
        """Whether a box is shown with the red sign that only error reports have."""
        pixels, red = self.pixels(), 0
        for window in self.xdotool("search", "--onlyvisible", "--name", BOX).split():
            lines = self.xdotool("getwindowgeometry", "--shell", window)
            place = {name: int(value) for name, value in re.findall(r"(\w+)=(-?\d+)", lines)}
            # The window may stand lower than it is said to, by its title bar.
            for y in range(max(place["Y"] - 40, 0), min(place["Y"] + place["HEIGHT"], HEIGHT)):
                row = len(pixels) - ((HEIGHT - y) * WIDTH - max(place["X"], 0)) * 4
                part = pixels[row:row + 60 * 4]
                red += sum(r > 180 and max(g, b) < 70 for b, g, r in zip(part[::4], part[1::4], part[2::4]))
        return red > 100

    def check(self):
        silent = time.time() - pathlib.Path(f"{self.store}.session.alive").stat().st_mtime
        if self.running() and silent > STANDS_STILL:
            raise SystemExit(f"the session has stood still for {silent:.0f} s")
        if self.reports_error():
            raise SystemExit("it reports an error")

    def to_control_window(self):
        """Closes whatever is open above it."""
        for _ in range(30):
            # Where there are two displays, only that one makes way that is left.
            titles = [title for title in self.titles() if not title.endswith("display")]
            if len(titles) == 1 and re.search(CONTROL, titles[0]):
                window = self.wait_for_window(CONTROL)
                self.do(f"mousemove --window {window} 4 300 click 1")  # closes a menu
                return window
            self.do("key Escape")
        raise SystemExit("the control window does not come back")

    def begin(self):
        """Starts a session of the usual shape, whatever stands in the control window."""
        for _ in range(5):
            self.to_control_window()
            for what in ("key alt+m alt+r ctrl+a", "type 40", "key alt+p ctrl+a", "type 2",
                         "key alt+t ctrl+a", "type 0.2", "key alt+u ctrl+a", "type 1", "key ctrl+Return"):
                self.do(what)
            if self.running():
                return
        raise SystemExit("no session can be started any more")

    def act(self):
        """One thing that somebody does: anything, where it does no harm."""
        chance, titles = self.chance, self.titles()
        if any(re.search(BOX, title) for title in titles):
            self.do("key " + chance.choice(["Escape", "Return"]))
        elif not all(KNOWN.search(title) for title in titles):
            self.do("key " + chance.choice(LETTERS + ["Return"] * 6 + ["Escape"] * 6))
        elif chance.random() < 0.7:
            kind = chance.choices([kind for _, kind in KEYS], [often for often, _ in KEYS])[0]
            self.do("key " + chance.choice(kind))
        else:
            x, y = chance.randrange(WIDTH), chance.randrange(HEIGHT)
            self.do(f"mousemove {x} {y} {chance.choice(CLICKS)}")

    def used(self):
        """Kilobytes of the program and its children, and its open files."""
        total = memory(self.program.pid)
        for children in pathlib.Path(f"/proc/{self.program.pid}/task").glob("*/children"):
            with contextlib.suppress(OSError):  # one has ended meanwhile
                total += sum(map(memory, children.read_text().split()))
        return total, files(self.program.pid)

    def start_evening(self):
        """Starts program and session, and proves that a report would be seen."""
        self.start()
        self.wait_for_window(CONTROL)
        self.wait_for_window(BOX)
        self.do("key Return")  # the latest scoring file is the one
        self.wait_for_window(CONTROL)
        obstacle = pathlib.Path(f"{self.store}.new")
        obstacle.mkdir()
        self.do("key ctrl+Return")
        if not self.reports_error():
            raise SystemExit("that settings cannot be written is not reported")
        self.do("key Return")
        obstacle.rmdir()
        time.sleep(3)
        if not self.running() or self.record()["scoring"]["path"] != str(self.scoring):
            raise SystemExit("the session has not begun, or without the scoring file")

    def leave(self):
        if not self.running():
            self.begin()
        self.to_control_window()
        for answer in ("x", "y", "n"):  # Exit; yes, exit; no, do not switch the computer off
            self.xdotool("key", f"alt+{answer}")
            time.sleep(1)
        ended = self.program.wait(timeout=20)
        json.loads(self.store.read_text())
        if ended != 0 or (self.folder / "called-systemctl").exists():
            raise SystemExit(f"it ended with {ended}, or switched the computer off")


def run(evening, seconds):
    """Returns how much was done, and memory and files now and then after the first quarter."""
    evening.start_evening()
    began, actions, results, used = time.monotonic(), 0, 1, []
    while (now := time.monotonic() - began) < seconds:
        if now > seconds / 4 + SAMPLE * len(used):
            used.append(evening.used())
        if now > results * seconds / len(EVENING):
            shutil.copyfile(EVENING[results], evening.scoring)
            results += 1
            if not evening.record()["scoring"]["path"]:
                evening.to_control_window()
                evening.do("key alt+b o Return")
        if not evening.running():
            evening.begin()  # without a session the way out asks nothing
        evening.act()
        evening.check()
        actions += 1
    evening.leave()
    return actions, used


def main():
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 600
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 1
    evening = Evening(sys.argv[1], seed)
    try:
        actions, used = run(evening, seconds)
    except (SystemExit, OSError, ValueError, subprocess.TimeoutExpired) as fault:
        keys = evening.xdotool("getwindowfocus", "getwindowname").strip()
        print(f"seed {seed}: {fault}; windows {evening.titles()}, of which {keys!r} has the keys; "
              f"before: {'; '.join(evening.done)}")
        return 1
    finally:
        evening.close()
    before, after = (list(map(min, zip(*some))) for some in (used[:SAMPLES], used[-SAMPLES:]))
    print(f"seed {seed}: {actions} actions; kB of memory and open files: {before} to {after}")
    grown = any(late - early > most for early, late, most in zip(before, after, MOST))
    return 1 if grown and seconds >= 300 else 0


if __name__ == "__main__":
    sys.exit(main())
