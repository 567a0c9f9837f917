#!/usr/bin/env python3
"""A scoring file that is opened with the program is followed: by a first start, and by a second one
that hands it to the first. Usage: opened_with.py PROGRAM_FOLDER. Exits with 1 when it is not."""

import pathlib
import shutil
import sys
import time

from desktop import Desktop

FIXTURE = pathlib.Path(__file__).parent.parent / "fixtures" / "friday.bws"


def followed(desktop):
    """The file that the session follows which is then started."""
    desktop.wait_for_window("^Corvanel v")
    time.sleep(1)
    desktop.key("ctrl+Return")
    until = time.time() + 10
    while desktop.record() is None and time.time() < until:
        time.sleep(0.1)
    return (desktop.record() or {"scoring": {"path": "no session"}})["scoring"]["path"]


def main():
    wrong = 0
    for again in (False, True):
        desktop = Desktop(sys.argv[1], {"BMUpdateSettings": "False"})
        file = desktop.folder / "Frühling 7.bws"
        shutil.copy(FIXTURE, file)
        try:
            desktop.program = desktop.launch(*[] if again else [file])
            desktop.wait_for_window("^Corvanel v")
            time.sleep(1)
            handed = desktop.launch(file).wait(timeout=20) if again else 0
            seen = followed(desktop)
        finally:
            desktop.close()
        fine = handed == 0 and seen == str(file)
        wrong += not fine
        print(f"{'second' if again else 'first'} start with a file: {'followed' if fine else seen}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
