#!/usr/bin/env python3
"""The installer for Windows and what it installs, under Wine, from the silent installation to the
removal.

Usage: on_windows.py CORVANELSETUP_EXE PICTURES. Installs, runs an evening of three short rounds by real
keys with a loudspeaker that is recorded, follows a scoring file on a path with umlauts, kills the
program and goes on with its session, starts it twice, installs over the running one and removes it.
Writes what the screen showed into the folder PICTURES. Prints what was looked at; exits with 1 when
something was wrong.
"""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

from desktop import Desktop
from loudspeakers import RATE, SINKS, Loudspeakers, find, sound

FIXTURES = pathlib.Path(__file__).parent.parent / "fixtures"
ROUNDS = {"nRounds": "3", "MinPerRound": "0.25", "MinWarning1": "0.15", "MinWarning": "0.1",
          "MinBetweenRounds": "0.15", "optBreak": "False", "SoundPlay0": "-1", "HintsGiven": "3",
          "ShowMessage": "2000000000", "AutoUpdate": "False", "AutoLaunch": "True",
          "BMSuggest": "False", "BMUpdateSettings": "False"}
ENTRY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Corvanel"


class Windows(Desktop):
    """A Windows of its own, with the program installed where the installer puts it."""

    def __init__(self, setup, pictures):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvanel-windows-"))
        self.setup, self.pictures, self.program = setup, pictures, None
        self.screen, self.display = self.start_screen("1920x1080")
        self.environment = dict(os.environ) | {
            "DISPLAY": self.display, "WINEPREFIX": str(self.folder / "wine"), "WINEDEBUG": "-all",
            "LC_ALL": "C.UTF-8", "WINEDLLOVERRIDES": "mscoree,mshtml=", "LANG": "C.UTF-8"}
        self.manager = subprocess.Popen(["openbox"], env=self.environment,
                                        stderr=subprocess.DEVNULL)
        self.wine("wineboot", "-i")
        # The fonts that every Windows has.
        for font in ("Arial", "Segoe UI", "MS Shell Dlg", "MS Shell Dlg 2", "Tahoma"):
            self.wine("reg", "add", r"HKCU\Software\Wine\Fonts\Replacements", "/v", font, "/d",
                      "Liberation Sans", "/f")
        self.user = next(path for path in (self.folder / "wine/drive_c/users").iterdir()
                         if path.name != "Public")
        self.installed = self.user / "AppData/Local/Programs/Corvanel"
        self.store = self.user / "AppData/Roaming/Corvanel/settings.json"

    def wine(self, *command):
        return subprocess.run(["wine", *map(str, command)], env=self.environment, text=True,
                              capture_output=True, timeout=300)

    def links(self):
        """The places of its links. Wine's desktop is itself a link to a folder of the user's."""
        found = subprocess.run(["find", "-L", self.user, "-maxdepth", "9", "-name", "Corvanel.lnk"],
                               text=True, capture_output=True).stdout.split("\n")
        return {os.path.realpath(path) for path in found if path}

    def install(self):
        return self.wine(self.setup, "/S").returncode

    def launch(self, *options):
        return subprocess.Popen(["wine", self.installed / "corvanel.exe", *map(str, options)],
                                env=self.environment, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def kill(self):
        self.wine("taskkill", "/f", "/im", "corvanel.exe")
        self.program.wait(timeout=30)

    def take_settings(self, more):
        self.store.parent.mkdir(parents=True, exist_ok=True)
        self.store.write_text(json.dumps({"Olvendra": {"Timer": ROUNDS | more}}))

    def picture(self, name):
        subprocess.run(["import", "-window", "root", self.pictures / f"{name}.png"],
                       env=self.environment, check=False)

    def begin(self):
        """Starts the session of the settings."""
        self.wait_for_window("^Corvanel v", 60)
        time.sleep(2)  # a file that was named is opened when the window stands
        until = time.time() + 30
        while self.record() is None and time.time() < until:
            self.key("ctrl+Return")
            time.sleep(1)
        return self.record()

    def close(self):
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False)
        self.manager.kill()
        super().close()


def state(record):
    return record["state"] if record else {"phase": "none"}


def evening(windows, check):
    """From the first start to the end of the third round."""
    windows.take_settings({"Header": "Frühling ♠"})
    windows.start()
    windows.wait_for_window("^Corvanel v", 60)
    time.sleep(3)  # until it is painted
    windows.picture("control")
    check("a session starts", windows.begin() is not None)
    time.sleep(3)
    windows.picture("round")
    windows.key("p")
    time.sleep(1.5)
    check("P pauses", state(windows.record()).get("paused") is True)
    windows.picture("paused")
    windows.key("p")
    until = time.time() + 120
    while (phase := state(windows.record())["phase"]) in ("round", "move") and time.time() < until:
        if phase == "move" and not (windows.pictures / "move.png").exists():
            windows.picture("move")
        time.sleep(0.3)
    check(f"it ends after its last round ({phase})", phase in ("ended", "none"))
    windows.picture("end")
    check("--end makes it end", windows.launch("--end").wait(timeout=60) == 0)
    windows.program.wait(timeout=30)
    check("and its record goes", windows.record() is None)


def scoring(windows, check):
    """A file with umlauts on its path, followed while another program writes it."""
    folder = windows.folder / "wine/drive_c/Bewertung Ä/Frühling"
    folder.mkdir(parents=True)
    live = sorted((FIXTURES / "live").glob("*.bws"))
    shutil.copy(live[0], folder / "tonight.bws")
    windows.take_settings({"MinPerRound": "20", "BMWriteLog": "True"})
    windows.program = windows.launch("C:\\Bewertung Ä\\Frühling\\tonight.bws")
    record = windows.begin()
    check("the scoring file is followed", record is not None and
          record["scoring"]["path"].replace("\\", "/").endswith("Frühling/tonight.bws"))
    time.sleep(7)
    windows.picture("tables before")
    shutil.copy(live[3], folder / "tonight.bws")
    time.sleep(8)
    windows.picture("tables after")
    before, after = (windows.pictures / f"tables {when}.png" for when in ("before", "after"))
    check("and shown anew when it changes", before.read_bytes() != after.read_bytes())


def kills(windows, check):
    """The session that runs is killed and goes on; a second start gives way."""
    check("a second start gives way", windows.launch().wait(timeout=60) == 0)
    windows.kill()
    before = windows.record()
    alive = pathlib.Path(f"{windows.store}.session.alive").read_text().split()
    lived = float(alive[1]) - before["at"]["utc"]
    check(f"the last moment of life is known ({lived:.0f} s after the record)", 5 < lived < 120)
    windows.start()
    windows.wait_for_window("^Corvanel$", 60)
    windows.picture("recovery")
    until = time.time() + 20
    while windows.record()["at"] == before["at"] and time.time() < until:
        windows.key("Return")
        time.sleep(1)
    # The boot and its uptime are the same: so is the mark of the round's end.
    lost = abs(state(windows.record())["roundEnd"] - state(before)["roundEnd"])
    check(f"a killed session goes on ({lost:.3f} s lost)", lost < 0.05)


def over_itself(windows, check):
    """The installer comes while the session runs: the program makes way, and offers to go on."""
    before = windows.record()
    check("it installs over a running one", windows.install() == 0)
    windows.program.wait(timeout=30)
    check("whose session stays", state(windows.record()) == state(before))
    windows.start()
    windows.wait_for_window("^Corvanel$", 60)
    check("and is offered", True)
    windows.key("Return")
    time.sleep(2)
    check("--end", windows.launch("--end").wait(timeout=60) == 0)
    windows.program.wait(timeout=30)


def removal(windows, check):
    def remove(*options):
        windows.wine(windows.installed / "Uninstall.exe", "/S", *options)
        until = time.time() + 30  # it works on in a copy of itself
        while windows.installed.exists() and time.time() < until:
            time.sleep(0.5)
    remove()
    check("it goes", not windows.installed.exists())
    check("with its entries", windows.wine("reg", "query", ENTRY).returncode != 0)
    check("and its links", not windows.links())
    check("but not with the settings", windows.store.exists())
    windows.install()
    remove("/SETTINGS")
    time.sleep(1)
    check("which go when that is asked for", not windows.store.parent.exists())


def heard(speakers, folder):
    """The sounds of the folder that were to be heard."""
    names = set()
    recordings = speakers.close()
    for path in folder.glob("*.wav"):
        wanted = sound(path)
        if any(find(samples, wanted)[1] > 0.8 for _, samples, _ in recordings if len(samples) > RATE):
            names.add(path.name)
    return names


def main():
    setup, pictures = pathlib.Path(sys.argv[1]).absolute(), pathlib.Path(sys.argv[2]).absolute()
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    wrong = []

    def check(what, fine):
        print(("" if fine else "WRONG: ") + what, flush=True)
        wrong.extend([] if fine else [what])

    speakers = Loudspeakers()
    speakers.choose(SINKS[0])
    windows = Windows(setup, pictures)
    try:
        check("it installs in silence", windows.install() == 0)
        check("the program is there", (windows.installed / "corvanel.exe").exists())
        check("and its links", len(windows.links()) == 2)
        sounds = windows.folder / "sounds"
        shutil.copytree(windows.installed, sounds)
        evening(windows, check)
        scoring(windows, check)
        kills(windows, check)
        over_itself(windows, check)
        removal(windows, check)
        names = heard(speakers, sounds)
        check(f"cues were heard: {', '.join(sorted(names))}", len(names) >= 2)
    except (SystemExit, subprocess.TimeoutExpired) as fault:
        windows.picture("fault")
        check(f"{fault}", False)
    finally:
        windows.close()
    print(f"{len(wrong)} faults")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
