"""The desktop program on a virtual screen, as the proofs drive it. Needs xvfb and xdotool."""

import json
import mmap
import os
import pathlib
import shutil
import subprocess
import tempfile
import time


class Desktop:
    """A virtual screen with a program folder and a settings file of their own."""

    def __init__(self, programs, settings, size="1024x768"):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvanel-proof-"))
        # A copy: the program may be built anew meanwhile.
        shutil.copytree(programs, self.folder / "bin", ignore=shutil.ignore_patterns("*tests*"))
        self.store = self.folder / "settings.json"
        timer = {"AutoUpdate": "False", "AutoLaunch": "True", "BMSuggest": "False"} | settings
        self.store.write_text(json.dumps({"Olvendra": {"Timer": timer}}))
        self.screen, self.display = self.start_screen(size)
        # No session bus is looked for: that would start one for each program.
        self.environment = {"DBUS_SESSION_BUS_ADDRESS": "disabled:"} | os.environ | {
            "DISPLAY": self.display, "QT_QPA_PLATFORM": "xcb"}
        self.program = None

    def start_screen(self, size):
        read, write = os.pipe()
        screen = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", size + "x24", "-noreset",
             "-fbdir", str(self.folder)], pass_fds=[write], stderr=subprocess.DEVNULL)
        return screen, ":" + os.read(read, 16).decode().strip()

    def close(self):
        if self.program:
            self.program.kill()
            self.program.wait()
        self.screen.kill()
        self.screen.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def launch(self, *options):
        return subprocess.Popen(
            [self.folder / "bin" / "corvanel", "--store", self.store, *options],
            env=self.environment,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def start(self):
        self.program = self.launch()

    def second_copy(self):
        """Starts the program once more; returns what it ended with."""
        return self.launch().wait(timeout=20)

    def make_way(self):
        """Has another start end the program, as an installer does."""
        if self.launch("--end").wait(timeout=20) != 0:
            raise SystemExit("the program did not make way")
        self.program.wait(timeout=1)

    def kill(self):
        self.program.kill()
        self.program.wait()

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.environment, text=True,
                              capture_output=True).stdout

    def wait_for_window(self, name, seconds=20):
        """Waits for a visible window whose title matches; gives it the keys."""
        until = time.time() + seconds
        while time.time() < until:
            found = self.xdotool("search", "--onlyvisible", "--name", name).split()
            if found:
                self.xdotool("windowfocus", "--sync", found[-1])
                return found[-1]
            time.sleep(0.02)
        raise SystemExit(f"no window {name} within {seconds} s")

    def key(self, name):
        self.xdotool("key", name)

    def record(self):
        """The session as the program has written it down; nothing while there is none."""
        try:
            return json.loads(pathlib.Path(f"{self.store}.session").read_text())
        except FileNotFoundError:
            return None

    def pixels(self):
        """The screen's memory: compare slices of it to see whether something changed."""
        with open(self.folder / "Xvfb_screen0", "rb") as file:
            return mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
