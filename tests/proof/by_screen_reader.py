#!/usr/bin/env python3
"""An evening of a director who sees nothing: all that he needs is said, and done by what is said.

Usage: by_screen_reader.py PROGRAM_FOLDER. Finds everything in the tree that screen readers use
(AT-SPI, on a session bus of its own) and presses it there. Exits with 1 when something that the
keys reach has no name, a list is without one, the countdown does not say time, state and round, or
when a warning or a phase is not told, or more than these is. 77 where the tree cannot be had.
"""

import os
import re
import subprocess
import sys
import time

if "AT_SPI_OF_ITS_OWN" not in os.environ:
    os.execvpe("dbus-run-session", ["dbus-run-session", "--", sys.executable, *sys.argv],
               os.environ | {"AT_SPI_OF_ITS_OWN": "1"})

try:
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib
except (ImportError, ValueError) as error:
    print(f"skipped: {error}")
    sys.exit(77)

from desktop import Desktop

SETTINGS = {"nRounds": "2", "MinPerRound": "0.3", "MinBetweenRounds": "0.1", "MinWarning1": "0.2",
            "MinWarning": "0.1", "optBreak": "False", "HintsGiven": "3", "ShowMessage": "99"}
TOLD = ["Round 1 of 2", "Round 1 of 2, EARLY WARNING", "Round 1 of 2, LAST WARNING",
        "MOVE FOR THE FINAL ROUND, MOVE", "Final Round of 2", "Final Round of 2, EARLY WARNING",
        "Final Round of 2, LAST WARNING", "Final Round of 2, END OF PLAY"]
LISTS = {Atspi.Role.LIST, Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE,
         Atspi.Role.COMBO_BOX}


def children(node):
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield child


def tree(node):
    yield node
    for child in children(node):
        yield from tree(child)


def shown(node):
    states = node.get_state_set()
    return states.contains(Atspi.StateType.SHOWING) and states.contains(Atspi.StateType.VISIBLE)


class Reader:
    """What a screen reader knows of the program."""

    def __init__(self):
        self.faults, self.told = [], []
        listener = Atspi.EventListener.new(self.heard)
        for event in ["object:property-change:accessible-name"]:
            listener.register(event)
        self.listener = listener
        self.program = self.until(self.find_program, "the program")

    @staticmethod
    def find_program():
        desk = Atspi.get_desktop(0)
        return next((child for child in children(desk) if "orvanel" in (child.get_name() or "")), None)

    def heard(self, event):
        # What has the keys is read aloud when its name changes; all else only when it is looked at.
        parent = event.source.get_parent()
        if parent is not None and parent.get_role() == Atspi.Role.APPLICATION:
            name = event.source.get_name()
            if self.told[-1:] != [name]:
                self.told.append(name)

    @staticmethod
    def until(look, what, seconds=20):
        end = time.time() + seconds
        while time.time() < end:
            while GLib.MainContext.default().iteration(False):
                pass
            try:
                if found := look():
                    return found
            except GLib.Error:
                pass  # it went while it was looked at
            time.sleep(0.05)
        raise SystemExit(f"not found: {what}")

    def window(self, name):
        return self.until(lambda: next((window for window in children(self.program)
                                        if re.search(name, window.get_name() or "") and shown(window)), None),
                          f"window {name}")

    def thing(self, window, name, role=None):
        return self.until(lambda: next((node for node in tree(window)
                                        if re.search(name, node.get_name() or "") and shown(node)
                                        and (role is None or node.get_role() == role)), None), name)

    def press(self, window, name):
        self.thing(window, name, Atspi.Role.PUSH_BUTTON).do_action(0)

    def choose(self, window, entry):
        node = next(node for node in tree(window)
                    if node.get_role() == Atspi.Role.MENU_ITEM and node.get_name().startswith(entry))
        try:
            node.do_action(0)
        except GLib.Error:
            pass  # a dialog answers only when it is closed

    def check_names(self, window):
        for node in tree(window):
            states = node.get_state_set()
            reached = states.contains(Atspi.StateType.FOCUSABLE) and shown(node)
            if (reached or node.get_role() in LISTS) and not node.get_name():
                labels = [r for r in node.get_relation_set()
                          if r.get_relation_type() == Atspi.RelationType.LABELLED_BY]
                if not labels and node.get_role() not in (Atspi.Role.FRAME, Atspi.Role.SCROLL_PANE):
                    self.faults.append(f"no name: a {node.get_role_name()} of {node.get_parent().get_name()} in {window.get_name()} at {node.get_extents(0).x, node.get_extents(0).y}")

    def listen(self, seconds):
        end = time.time() + seconds
        while time.time() < end:
            while GLib.MainContext.default().iteration(False):
                pass
            time.sleep(0.02)


def walk(desk, reader):
    control = reader.window("^Corvanel v")
    reader.check_names(control)
    for entry, title in [("Display...", "Display options"), ("Sounds...", "Sound options"),
                         ("Bridgemate...", "Bridgemate Options"), ("Keyboard", "Keyboard shortcuts")]:
        reader.choose(control, entry)
        reader.check_names(reader.window(title))
        desk.key("Escape")
        reader.listen(0.5)
    reader.press(control, "^Start Timer")
    display = reader.window("Round 1 of 2")
    countdown = reader.until(lambda: next((node for node in tree(display) if node != display
                                           and re.match(r"\d+:\d\d, ", node.get_name() or "")), None),
                             "the countdown")
    seen = {countdown.get_name() for _ in range(6) if reader.listen(0.5) is None}
    if len(seen) < 3 or not all(re.fullmatch(r"0:\d\d, Time remaining for Round 1 of 2.*", n) for n in seen):
        reader.faults.append(f"the countdown says {seen}")
    reader.until(lambda: any("END OF PLAY" in told for told in reader.told), "the end of play", 60)
    said = [re.sub(r"^\d+:\d\d, (Time remaining for )?", "", told) for told in reader.told]
    if said != TOLD:
        reader.faults.append("told: " + "; ".join(reader.told))
    desk.key("Escape")
    reader.press(reader.window("^Corvanel v"), "^Exit")
    desk.program.wait(timeout=10)


def main():
    desk = Desktop(sys.argv[1], SETTINGS)
    desk.environment |= {"DBUS_SESSION_BUS_ADDRESS": os.environ["DBUS_SESSION_BUS_ADDRESS"],
                         "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
    os.environ["DISPLAY"] = desk.display
    manager = subprocess.Popen(["openbox"], env=desk.environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    try:
        Atspi.init()
        desk.start()
        reader = Reader()
        walk(desk, reader)
    finally:
        manager.kill()
        manager.wait()
        desk.close()
    for fault in reader.faults:
        print(fault)
    print(f"{len(reader.told)} told, {len(reader.faults)} faults")
    return 1 if reader.faults else 0


if __name__ == "__main__":
    sys.exit(main())
