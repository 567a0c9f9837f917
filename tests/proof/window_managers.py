#!/usr/bin/env python3
"""The windows stay where they are put, on every desktop, and the director keeps the keys.

Usage: window_managers.py PROGRAM_FOLDER [WINDOW_MANAGER...]. Drives the real program under each
window manager (default: openbox, xfwm4, metacity, mutter; those that are not installed are left out)
on an X server with two outputs that nobody sees. Prints what is not where it belongs; exits with 1
when something is not, and with 77 where such a server cannot be started.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

from desktop import Desktop

CONTROL = r"^Corvanel v[0-9.]+$"
DISPLAYS = "display$"
COMMANDS = {"openbox": ["openbox"],
            "xfwm4": ["dbus-run-session", "xfwm4", "--compositor=off"],
            "metacity": ["metacity"],
            # As GNOME sets it: a dialog is pinned to the middle of the window that it belongs to.
            "mutter": ["dbus-run-session", "sh", "-c",
                       "gsettings set org.gnome.mutter attach-modal-dialogs true;"
                       "exec mutter --x11 --sm-disable"]}
WIDTH, HEIGHT = 1920, 1080
LEFT, RIGHT = (0, 0, WIDTH, HEIGHT), (WIDTH, 0, WIDTH, HEIGHT)
NORMAL = {"FormX": "4500", "FormY": "3000", "FormSizeX": "15000", "FormSizeY": "9000"}
SERVER = """
Section "Device"
  Identifier "dummy"
  Driver "dummy"
  VideoRam 256000
EndSection
Section "Monitor"
  Identifier "monitor"
  HorizSync 5.0-1000.0
  VertRefresh 5.0-200.0
  Modeline "1920x1080" 148.50 1920 2008 2052 2200 1080 1084 1089 1125
EndSection
Section "Screen"
  Identifier "screen"
  Device "dummy"
  Monitor "monitor"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Modes "1920x1080"
    Virtual 3840 1080
  EndSubSection
EndSection
Section "ServerFlags"
  Option "AutoAddDevices" "false"
EndSection
"""


class Desk(Desktop):
    """The program under a window manager, on one or two outputs."""

    def __init__(self, programs, manager, outputs, settings):
        self.extra = tempfile.mkdtemp(prefix="corvanel-outputs-")
        self.outputs = outputs
        super().__init__(programs, NORMAL | {"MinPerRound": "20", "DisplayState": "0"} | settings)
        settings = {"XDG_CONFIG_HOME": self.extra, "GSETTINGS_BACKEND": "keyfile"}
        self.manager = subprocess.Popen(COMMANDS[manager], env=self.environment | settings,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                        start_new_session=True)
        time.sleep(2)

    def start_screen(self, size):
        config = pathlib.Path(self.extra, "xorg.conf")
        config.write_text(SERVER)
        read, write = os.pipe()
        screen = subprocess.Popen(
            ["Xorg", "-displayfd", str(write), "-config", config, "-configdir", self.extra,
             "-logfile", f"{self.extra}/log", "-noreset", "-novtswitch", "-sharevts"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        display = ":" + os.read(read, 16).decode().strip()
        if display == ":":
            print("no X server with outputs of its own can be started here")
            raise SystemExit(77)
        if self.outputs == 2:
            environment = os.environ | {"DISPLAY": display}
            for arguments in (["--addmode", "DUMMY1", "1920x1080"],
                              ["--output", "DUMMY1", "--mode", "1920x1080", "--right-of", "DUMMY0"]):
                subprocess.run(["xrandr", *arguments], env=environment, check=True)
        return screen, display

    def outputs_become(self, *arguments):
        subprocess.run(["xrandr", *arguments], env=self.environment, check=True)
        time.sleep(4)

    def close(self):
        os.killpg(self.manager.pid, 9)
        self.manager.wait()
        super().close()
        shutil.rmtree(self.extra, ignore_errors=True)

    def windows(self, title="."):
        """(x, y, width, height, full screen) of every window that is shown."""
        found = []
        for number in self.xdotool("search", "--onlyvisible", "--name", title).split():
            # Of the window itself: xdotool counts frames in.
            seen = subprocess.run(["xwininfo", "-id", number], text=True, capture_output=True,
                                  env=self.environment).stdout
            place = re.findall(r"(?:Absolute upper-left [XY]|Width|Height): +(-?\d+)", seen)
            state = subprocess.run(["xprop", "-id", number, "_NET_WM_STATE"], text=True,
                                   env=self.environment, capture_output=True).stdout
            if place:
                found.append((*map(int, place), "FULLSCREEN" in state))
        return found

    def press(self, *keys, then=1.5):
        for key in keys:
            self.key(key)
        time.sleep(then)

    def open(self, left=400):
        """Starts the program and puts its control window on a screen. Returns where it is then."""
        self.start()
        window = self.wait_for_window(CONTROL)
        time.sleep(1)
        self.xdotool("windowmove", "--sync", window, str(left), "150")
        time.sleep(1)
        return self.windows(CONTROL)[0]

    def stored(self):
        timer = json.loads(self.store.read_text())["Olvendra"]["Timer"]
        return {key: timer.get(key) for key in [*NORMAL, "DisplayState"]}

    def paused(self):
        record = self.record()
        return record is not None and record["state"]["paused"]


class Findings(list):
    def expect(self, what, seen, wanted):
        if seen != wanted:
            self.append(f"{what}: {seen}, wanted {wanted}")


def within(window, screen):
    x, y, width, height = window[:4]
    return (screen[0] <= x and x + width <= screen[0] + screen[2] + 8 and
            screen[1] <= y and y + height <= screen[1] + screen[3] + 8)


def one_screen(programs, manager, found):
    desk = Desk(programs, manager, 1, {})
    try:
        control = desk.open()
        desk.press("ctrl+Return")
        for turn in ("start", "return", "second return"):
            found.expect(turn, desk.windows(DISPLAYS), [(*LEFT, True)])
            desk.press("Escape")
            found.expect(f"control window after {turn}", desk.windows(CONTROL), [control])
            desk.press("alt+c")
        desk.press("F1")
        found.expect("F1 stands beside the countdown",
                     [x > WIDTH * 0.6 for x, *_ in desk.windows("shortcuts")], [True])
        desk.press("Escape")
        desk.press("f")
        found.expect("F takes it out of full screen", [w[2:] for w in desk.windows(DISPLAYS)],
                     [(1000, 600, False)])
        desk.press("f")
        found.expect("F F", desk.windows(DISPLAYS), [(*LEFT, True)])
        desk.press("e", then=1)
        desk.press("alt+y", then=2)
        found.expect("the program has ended", desk.program.poll(), 0)
        found.expect("the store", desk.stored(), NORMAL | {"DisplayState": "0"})
    finally:
        desk.close()


def two_screens(programs, manager, left, found):
    """With the control window on the left or the right screen; the room's is the other."""
    desk = Desk(programs, manager, 2, {"ExtraMonitor": "True"})
    own, room = (LEFT, RIGHT) if left < WIDTH else (RIGHT, LEFT)
    side = "left" if own == LEFT else "right"
    try:
        desk.open(left)
        desk.press("ctrl+Return", then=2.5)

        def expect_displays(when):
            windows = desk.windows(DISPLAYS)
            found.expect(f"{side}, {when}: the room's", [w for w in windows if w[4]],
                         [(*room, True)])
            found.expect(f"{side}, {when}: the twin on its screen",
                         [within(w, own) for w in windows if not w[4]], [True])

        expect_displays("start")
        for _ in range(2):
            desk.press("h")
        expect_displays("H H")
        desk.press("p")
        found.expect(f"{side}: the keys are the twin's after H H", desk.paused(), True)
        desk.press("F1")
        found.expect(f"{side}: F1 opens on the twin's screen",
                     [within(w, own) for w in desk.windows("shortcuts")], [True])
        desk.press("Escape")
        desk.press("m")
        desk.press("m")
        expect_displays("M M")
        desk.press("p")
        found.expect(f"{side}: the keys are the twin's after M M", desk.paused(), False)
        desk.press("e")
        found.expect(f"{side}: the question is on the twin's screen",
                     [within(w, own) for w in desk.windows("^Corvanel$")], [True])
        desk.press("Escape")
        desk.press("Escape")
        found.expect(f"{side}: the control window comes back to its screen",
                     [within(w, own) for w in desk.windows(CONTROL)], [True])
    finally:
        desk.close()


def cable_pulled(programs, manager, found):
    """The room's screen goes in mid-session and comes back."""
    desk = Desk(programs, manager, 2, {"ExtraMonitor": "True"})
    try:
        desk.open()
        desk.press("ctrl+Return", then=2.5)
        desk.outputs_become("--output", "DUMMY1", "--off")
        found.expect("without its screen: both displays on the other",
                     [within(w, LEFT) for w in desk.windows(DISPLAYS)], [True, True])
        desk.press("p")
        found.expect("without its screen: the keys", desk.paused(), True)
        desk.outputs_become("--output", "DUMMY1", "--mode", "1920x1080", "--right-of", "DUMMY0")
        windows = desk.windows(DISPLAYS)
        found.expect("its screen is back: the room's", [w for w in windows if w[4]],
                     [(*RIGHT, True)])
        found.expect("its screen is back: the twin",
                     [within(w, LEFT) for w in windows if not w[4]], [True])
        found.expect("the session ran on", desk.program.poll(), None)
    finally:
        desk.close()


# It sees only outputs to which something is connected, and nothing is connected to the second one.
ONE_SCREEN_ONLY = {"xfwm4"}


def main():
    programs = pathlib.Path(sys.argv[1])
    managers = sys.argv[2:] or [name for name in COMMANDS if shutil.which(name)]
    wrong = 0
    for manager in managers:
        found = Findings()
        one_screen(programs, manager, found)
        for left in () if manager in ONE_SCREEN_ONLY else (400, WIDTH + 400):
            two_screens(programs, manager, left, found)
        if manager not in ONE_SCREEN_ONLY:
            cable_pulled(programs, manager, found)
        print(f"{manager}: {'all in place' if not found else ''}")
        for line in found:
            print("  " + line)
        wrong += len(found)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
