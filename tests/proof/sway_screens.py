#!/usr/bin/env python3
"""On Wayland, where no program may place its windows, each display still comes to its own screen.

Usage: sway_screens.py PROGRAM_FOLDER. Runs the real program under sway with two outputs that nobody
sees, as a program of Wayland and as one of X. Needs sway, xwayland, qt6-wayland, wtype and
dbus-daemon. Prints what is not as it should be; exits with 1 when something is not, and with 77
where one of them is missing.
"""

import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOM, TWIN, CONTROL = " - room display", " - director's display", ""
CONFIG = """output HEADLESS-1 resolution 1920x1080 position 0 0
output HEADLESS-2 resolution 1920x1080 position 1920 0
xwayland force
"""
NOBODY = 65534  # sway does not run as root


class Sway:
    """The program with two monitors under sway, in a folder of their own."""

    def __init__(self, programs, environment):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvanel-sway-"))
        shutil.copytree(programs, self.folder / "bin", ignore=shutil.ignore_patterns("*tests*"))
        (self.folder / "config").write_text(CONFIG)
        timer = {"AutoUpdate": "False", "AutoLaunch": "True", "BMSuggest": "False",
                 "ExtraMonitor": "True", "DisplayState": "-1", "MinPerRound": "20"}
        (self.folder / "settings.json").write_text(json.dumps({"Olvendra": {"Timer": timer}}))
        (self.folder / "run").mkdir(mode=0o700)
        if os.getuid() == 0:
            for path in (self.folder, *self.folder.rglob("*")):
                os.chown(path, NOBODY, NOBODY)
        self.environment = {
            "PATH": os.environ["PATH"], "HOME": str(self.folder),
            "XDG_RUNTIME_DIR": str(self.folder / "run"), "WLR_BACKENDS": "headless",
            "WLR_HEADLESS_OUTPUTS": "2", "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_RENDERER": "pixman"}
        self.sway = self.begin("dbus-run-session", "sway", "-c", str(self.folder / "config"))
        time.sleep(4)
        run = self.folder / "run"
        if not list(run.glob("sway-ipc*")):
            self.program = self.sway
            self.close()
            print("sway cannot be started here")
            raise SystemExit(77)
        self.environment["SWAYSOCK"] = str(next(run.glob("sway-ipc*")))
        self.environment["WAYLAND_DISPLAY"] = next(run.glob("wayland-?")).name
        self.environment["DISPLAY"] = self.message_of_child("echo $DISPLAY")
        self.environment |= environment
        self.program = self.begin(self.folder / "bin/corvanel", "--store",
                                  self.folder / "settings.json")
        time.sleep(4)

    def begin(self, *command):
        user = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
        return subprocess.Popen([*(user if os.getuid() == 0 else []), *command],
                                env=self.environment, start_new_session=True,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def message_of_child(self, command):
        """What a program says that sway itself starts."""
        answer = self.folder / "run" / "answer"
        subprocess.run(["swaymsg", "exec", f"{command} > {answer}"], env=self.environment,
                       check=True, stdout=subprocess.DEVNULL)
        time.sleep(1)
        return answer.read_text().strip()

    def close(self):
        for process in {self.program, self.sway}:
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def press(self, *arguments):
        # A keyboard of its own each time: what comes first may be lost.
        subprocess.run(["wtype", "-k", "Shift_L", "-s", "300", *arguments, "-s", "100"],
                       env=self.environment, check=False)
        time.sleep(1.5)

    def windows(self):
        """What follows the program's name in each title: its output, full screen, has the keys."""
        tree = json.loads(subprocess.run(["swaymsg", "-t", "get_tree"], env=self.environment,
                                         text=True, capture_output=True, check=True).stdout)
        found = {}

        def walk(node, output):
            output = node["name"] if node["type"] == "output" else output
            if node.get("pid"):
                title = re.sub(r"^Corvanel v[\d.]+", "", node["name"])
                found[title] = (output, node["fullscreen_mode"] == 1, node["focused"])
            for child in node["nodes"] + node["floating_nodes"]:
                walk(child, output)

        walk(tree, "")
        return found

    def paused(self):
        record = json.loads((self.folder / "settings.json.session").read_text())
        return record["state"]["paused"]


def drive(name, programs, environment):
    wrong = []

    def expect(what, seen, wanted):
        if seen != wanted:
            wrong.append(f"{name}, {what}: {seen}, wanted {wanted}")

    both = {ROOM: ("HEADLESS-2", True, False), TWIN: ("HEADLESS-1", False, True)}
    sway = Sway(programs, environment)
    try:
        sway.press("-M", "ctrl", "-s", "200", "-k", "Return", "-s", "200", "-m", "ctrl")
        expect("start", sway.windows(), both)
        sway.press("h")
        expect("H", sway.windows(), {TWIN: both[TWIN]})
        sway.press("h")
        expect("H H", sway.windows(), both)
        sway.press("p")
        expect("the keys are the twin's", sway.paused(), True)
        sway.press("-k", "Escape")
        expect("Escape", sway.windows(),
               {ROOM: both[ROOM], CONTROL: ("HEADLESS-1", False, True)})
        expect("the program runs", sway.program.poll(), None)
    finally:
        sway.close()
    return wrong


def main():
    if not all(shutil.which(tool) for tool in ("sway", "Xwayland", "wtype", "dbus-run-session")):
        print("sway, xwayland, wtype or dbus-run-session is missing")
        return 77
    wrong = drive("as found", sys.argv[1], {})
    wrong += drive("without X", sys.argv[1], {"QT_QPA_PLATFORM": "wayland"})
    print("\n".join(wrong) or "each display is on its own screen")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
