#!/usr/bin/env python3
"""Every cue of a session is heard: the right one, whole, at its moment, on the chosen loudspeaker.

Usage: heard_cues.py PROGRAM_FOLDER [short|whole] [pulseaudio|pipewire] [LOOPS]. Runs a session beside
LOOPS busy loops, records what two loudspeakers are given and looks for the sounds in it. The default
loudspeaker changes on the way; in a whole session it goes away, too, and the sound server goes and
comes back. Prints each cue's delay; exits with 1 when one is missing, is another, is not whole, comes
more than a second late or from the wrong loudspeaker.
"""

import pathlib
import subprocess
import sys
import threading

from desktop import Desktop
from loudspeakers import RATE, SINKS, Loudspeakers, find, sound, uptime

SHORT = {"nRounds": 2, "MinPerRound": 0.2, "MinWarning1": 0.15, "MinWarning": 0.1,
         "MinBetweenRounds": 0.1, "optBreak": "False"}
WHOLE = {"nRounds": 5, "MinPerRound": 0.3, "MinWarning1": 0.2, "MinWarning": 0.1,
         "MinBetweenRounds": 0.1, "optBreak": "True", "BreakAfterRound": 2, "TimeForBreak": 0.2,
         "MoveAfterBreak": "True", "Skip": "1", "Arrow": "3"}
FINAL = {"SoundPlay0FR": "-1", "SoundPlay1FR": "-1"}
WHOLE_ENOUGH = 0.9


def planned(programs, settings):
    """The cues of the session: seconds after its start, and the sound's name."""
    command = [programs / "corvanel-console", "run", "--speed", "max", "--start", "12:00",
               "--store", "/nowhere/settings.json"]
    for key, value in settings.items():
        command += ["--set", f"{key}={value}"]
    cues = []
    for line in subprocess.run(command, capture_output=True, text=True).stdout.splitlines():
        time, kind, text = line.split("\t")
        hours, minutes, seconds = map(int, time.split(":"))
        if kind == "sound":
            cues.append(((hours - 12) * 3600 + minutes * 60 + seconds, text))
    return cues


def disturb(speakers, cues, whole):
    """What happens to the loudspeakers, as (second, what, the sink that is chosen then)."""
    def come_back():
        speakers.stop()
        speakers.start()
        speakers.choose(SINKS[1])
    times = [second for second, _ in cues]
    # Where it is quiet for long enough.
    quiet = sorted(range(1, len(times)), key=lambda i: times[i - 1] - times[i])
    quiet = sorted(quiet[:2 if whole else 1])
    acts = [(times[quiet[0]] - 4, lambda: speakers.choose(SINKS[0]), SINKS[0])]
    if whole:
        acts.append((times[quiet[1]] - 4, come_back, SINKS[1]))
    return acts


def main():
    programs = pathlib.Path(sys.argv[1])
    whole = len(sys.argv) > 2 and sys.argv[2] == "whole"
    server = sys.argv[3] if len(sys.argv) > 3 else "pulseaudio"
    settings = {key: str(value) for key, value in ((WHOLE if whole else SHORT) | FINAL).items()}
    cues = planned(programs, settings)
    speakers = Loudspeakers(server)
    speakers.choose(SINKS[1])
    loops = []
    desktop = Desktop(programs, settings)
    try:
        desktop.start()
        desktop.wait_for_window("^Corvanel v")
        loops = [subprocess.Popen(["sh", "-c", "while :; do :; done"])
                 for _ in range(int(sys.argv[4]) if len(sys.argv) > 4 else 0)]
        while desktop.record() is None:
            desktop.key("ctrl+Return")
            threading.Event().wait(0.5)
        began = desktop.record()["state"]["roundEnd"] - float(settings["MinPerRound"]) * 60
        acts = disturb(speakers, cues, whole)
        for second, act, _ in acts:
            threading.Event().wait(max(0, began + second - uptime()))
            act()
        threading.Event().wait(max(0, began + cues[-1][0] + 6 - uptime()))
    finally:
        for loop in loops:
            loop.kill()
        desktop.close()
        heard = speakers.close()
    names = {name for _, name in cues}
    sounds = {name: sound(programs / name) for name in names}
    right, delays = 0, []
    for second, name in cues:
        sink = [SINKS[1]] + [chosen for at, _, chosen in acts if at < second]
        window = (began + second - 0.5, began + second + 1.5 + len(sounds[name]) / RATE)
        found = []  # (fit, name, sink, delay)
        for place, samples, start in heard:
            first = max(0, int((window[0] - start) * RATE))
            piece = samples[first:max(0, int((window[1] - start) * RATE))]
            for other, wanted in sounds.items():
                where, fit = find(piece, wanted)
                found.append((fit, other, place, start + (first + where) / RATE - began - second))
        fit, got, place, delay = max(found)
        fine = got == name and place == sink[-1] and fit > WHOLE_ENOUGH and -0.1 < delay < 1
        right += fine
        delays.append(delay)
        print(f"{second:4} s {name:20} {'heard' if fine else 'WRONG'} {delay * 1000:5.0f} ms late, "
              f"fits {fit:.3f}, {got} on {place}")
    print(f"{right} of {len(cues)} cues, {min(delays) * 1000:.0f} to {max(delays) * 1000:.0f} ms late")
    return 0 if right == len(cues) else 1


if __name__ == "__main__":
    sys.exit(main())
