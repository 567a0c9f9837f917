#!/usr/bin/env python3
"""Whatever the update server does, the control window opens within seconds and nothing is harmed.

Usage: bad_update_server.py PROGRAM_FOLDER [EVERY]. Starts the real program against a server on this
computer that misbehaves in one way after the other; with EVERY only in each EVERY-th of them. After
each start the session that the settings describe is started and the program ended. Prints each way
in which something was wrong, and what; exits with 1 when there is one.
"""

import json
import os
import pathlib
import re
import socket
import struct
import subprocess
import sys
import threading
import time

from desktop import Desktop

PATIENCE = 8     # seconds from the start of the program to its control window
LARGEST = 65536  # bytes that are kept of what the server said
MAY_WRITE = "settings.json|bin/version.txt$|outside/pulse"  # the last one is the sound library's
NEWER = b"9,8,7\r\nSounds are louder"
KEPT = {"nRounds": "17", "MinPerRound": "3.5", "Header": "Caf\u00e9 \u2660", "Arrow": "4,8"}

# What an answer consists of beside bytes to send and seconds to wait; at its end the connection is
# closed, unless it is kept.
HOLD, KEEP, RESET = "stays silent", "waits for the next request", "resets the connection"


class Endless(bytes):
    """Sent again and again, until nobody takes it any more."""


def head(*fields, status=b"206 Partial Content", date=b"Fri, 20 Nov 2026 10:00:00 GMT"):
    return b"\r\n".join([b"HTTP/1.1 " + status, b"Last-Modified: " + date, *fields, b"", b""])


def file(body, *fields, **others):
    return [head(b"Content-Length: %d" % len(body), *fields, **others) + body]


def ways(own, elsewhere):
    """The ways to misbehave: a name, the answer to every request, or to the first one and to all
    later ones, and whether a newer version is offered then; None where either may be."""
    good, start = file(NEWER), b"9,8,7\r\n"
    promised, pieces = head(b"Content-Length: 209715200") + start, head(b"Transfer-Encoding: chunked")
    more, fields = Endless(b"louder\r\n" * 500), b"".join(b"X-%d: y\r\n" % i for i in range(20000))
    return [
        ("a newer version", good, True), ("the same version", file(b"%d,%d,%d\r\n" % own), False),
        ("silent", [HOLD], False), ("silent after the date", (good, [HOLD]), False),
        ("closes at once", [], False), ("resets at once", [RESET], False),
        ("half a head", [head()[:40]], False), ("half, then silent", [head()[:40], HOLD], False),
        ("a head in drops", [b"HTTP/1.1 200 OK\r\n", *[b"X: y\r\n", 0.2] * 300], False),
        ("a file in drops", [promised, *[b"x", 0.2] * 300], False),
        ("a head without end", [b"HTTP/1.1 200 OK\r\n", Endless(fields)], False),
        ("slow, but in time", [1, *good], True), ("slow twice", [3.5, *good], False),
        ("resets within the file", [promised, 0.1, RESET], False), ("closes in it", [promised], False),
        ("keeps the connection", [*good, KEEP], True), ("answers twice", [*good, *good, HOLD], None),
        ("200 MB, promised", [promised, HOLD], False), ("200 MB, given", [promised, more], False),
        ("200 MB, not announced", [head() + start, more], False),
        ("a length below 0", [head(b"Content-Length: -5") + NEWER], None),
        ("a length beyond all numbers", [head(b"Content-Length: " + b"9" * 40) + NEWER], None),
        ("a length too short", [head(b"Content-Length: 3") + NEWER], False),
        ("two lengths", [head(b"Content-Length: 7", b"Content-Length: 500") + NEWER], None),
        *((f"status {status!r}", file(NEWER, status=status), False) for status in (
            b"404 Not Found", b"500 Oops", b"204 Nothing", b"401 Who", b"407 Who", b"101 Other", b"-1")),
        ("no HTTP", [NEWER], False), ("bytes at random", [bytes(range(256)) * 20], False),
        *((f"sent to {place!r}", file(b"", b"Location: " + place, status=b"302 Found"), False)
          for place in (elsewhere, b"/timerversion.txt", b"file:///etc/hostname", b"")),
        ("sent elsewhere after the date",
         (good, file(b"", b"Location: " + elsewhere, status=b"307 Found")), False),
        ("no date", file(NEWER, date=b""), False),
        ("a date that is none", file(NEWER, date=b"<b>yesterday</b>\xff %s%n"), True),
        ("20,000 fields", file(NEWER, fields[:-2]), None),
        ("other bytes than asked for", file(NEWER, b"Content-Range: bytes 500-600/50"), None),
        ("said to be packed", file(b"\x1f\x8b\x08 nonsense" * 9, b"Content-Encoding: gzip"), False),
        ("cookies and refreshing", file(NEWER, b"Set-Cookie: \xff=;;", b"Refresh: 0;url=/x"), True),
        ("in pieces", [pieces + b"5\r\n9,8,7\r\n0\r\n\r\n"], True),
        ("in pieces of any size", [pieces + b"FFFFFFFFFFFFFFFFFF\r\n9,8,7\r\n"], False),
        ("in pieces without the last", [pieces + b"5\r\n9,8,7\r\n", HOLD], False),
        ("a byte-order mark", file(b"\xef\xbb\xbf" + NEWER), True),
        ("two bytes a character", file(NEWER.decode().encode("utf-16")), False),
        ("zeros and Latin-1 in the notes", file(start + b"caf\xe9 \0 \xff\xfe\0"), True),
        ("tags and patterns in the notes", file(start + b"<img src=file:///x><h1>%s%n{}"), True),
        ("4,000 lines of notes", file(start + b"- louder\r\n" * 4000), True),
        ("a line of 60,000 characters", file(start + b"W" * 60000), True),
        ("as large as may be", file(start.ljust(LARGEST, b"\n")), True),
        ("a byte larger", file(start.ljust(LARGEST + 1, b"\n")), False),
        *((f"version {text!r}", file(text), offers) for text, offers in (
            (b"0,0,99", False), (b"", False), (b"<!DOCTYPE html><h1>9,8,7</h1>", False), (b"9,8", False),
            (b" 9 , 8 , 7 ", True), (b"9.8.7", False), (b"-9,8,7", False), (b"9,8\0,7", False),
            (b"9e3,8,7", False), (b"99999999999999999999,0,0", False)))]


class Server:
    """Answers every connection in one way, until it is closed."""

    def __init__(self, answer):
        self.first, self.later = answer if isinstance(answer, tuple) else (answer, answer)
        self.asked = 0
        self.over = threading.Event()
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.url = f"http://127.0.0.1:{self.listener.getsockname()[1]}/"
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while not self.over.is_set():
            threading.Thread(target=self.talk, args=self.listener.accept()[:1], daemon=True).start()

    def talk(self, connection):
        with connection:
            try:
                while self.answer(connection):
                    pass
            except OSError:  # the program has left
                pass

    def answer(self, connection):
        """Returns whether another request is waited for."""
        lines = connection.makefile("rb")
        while (line := lines.readline()) != b"\r\n":
            if not line:
                return False
        self.asked += 1
        steps = self.first if self.asked == 1 else self.later
        for step in steps:
            if step == HOLD:
                connection.recv(1)
            elif step == RESET:
                connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            elif isinstance(step, bytes):
                connection.sendall(step)
                while isinstance(step, Endless) and not self.over.wait(0.001):
                    connection.sendall(step)
            elif step != KEEP:
                self.over.wait(step)
        return KEEP in steps

    def close(self):
        self.over.set()
        socket.create_connection(self.listener.getsockname()).close()  # wakes who accepts
        self.listener.close()


class Start(Desktop):
    """A start of the program that may write nowhere but into its own folder."""

    def __init__(self, programs, server):
        super().__init__(programs, KEPT | {"AutoUpdate": "True", "ShowMessage": "2000000000"})
        self.server = server
        self.asked = set()
        (self.folder / "outside").mkdir(mode=0o700)
        for name in ("HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"):
            self.environment[name] = str(self.folder / "outside")
        self.environment |= {"CORVANEL_UPDATE_URL": server.url, "DBUS_SESSION_BUS_ADDRESS": "disabled:"}

    def reaches_control_window(self):
        """Answers what is asked before; false when the window does not come in time."""
        until = time.monotonic() + PATIENCE
        while time.monotonic() < until:
            if self.xdotool("search", "--onlyvisible", "--name", "^Corvanel v"):
                return True
            for window in self.xdotool("search", "--onlyvisible", "--name", "^Corvanel$").split():
                # The splash has the same title; to close it would end the check.
                state = subprocess.run(["xprop", "-id", window, "_NET_WM_STATE"], text=True,
                                       capture_output=True, env=self.environment).stdout
                if "MODAL" in state:
                    self.asked.add(window)
                    self.xdotool("windowfocus", "--sync", window, "key", "Escape")
            time.sleep(0.05)
        return False

    def session(self):
        """Starts it and ends the program. Returns the settings with which it was started."""
        until = time.monotonic() + 10
        while self.record() is None and time.monotonic() < until:
            self.wait_for_window("^Corvanel v", 5)
            self.key("ctrl+Return")
            time.sleep(0.3)
        settings = self.record()["settings"]
        self.wait_for_window("display$")
        self.key("e")
        self.wait_for_window("^Corvanel$")
        self.key("alt+y")
        return settings

    def processes(self):
        """The programs of its folder that run."""
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*/exe"):
            try:
                found.append(os.readlink(process))
            except OSError:  # it has ended meanwhile, or is another user's
                pass
        return [program for program in found if program.startswith(str(self.folder))]

    def faults(self, offers):
        """Starts and ends the program; returns what is wrong with that, line by line."""
        before = set(self.folder.rglob("*"))
        self.start()
        if not self.reaches_control_window():
            return [f"no control window within {PATIENCE} s; questions: {len(self.asked)}"]
        loaded, ended = self.session(), self.program.wait(timeout=20)
        stored = json.loads(self.store.read_text())["Olvendra"]["Timer"]
        new = {str(path.relative_to(self.folder)) for path in set(self.folder.rglob("*")) - before}
        kept = [path.stat().st_size for path in self.folder.glob("bin/version.txt")]
        return [f"{what}: {seen}" for what, seen, fine in (
            ("offers", len(self.asked), offers is None or offers == bool(self.asked)),
            ("requests", self.server.asked, self.server.asked > 0),
            ("loaded settings", loaded, KEPT.items() <= loaded.items()),
            ("stored settings", stored, KEPT.items() <= stored.items()),
            ("the program ended with", ended, ended == 0),
            ("still running", self.processes(), not self.processes()),
            ("left behind", new, all(re.match(MAY_WRITE, name) for name in new)),
            ("kept bytes", kept, max(kept, default=0) <= LARGEST)) if not fine]


def main():
    programs = pathlib.Path(sys.argv[1])
    version = subprocess.run([programs / "corvanel", "--version"], text=True, capture_output=True).stdout
    elsewhere = Server([])
    cases = ways(tuple(map(int, re.findall(r"\d+", version))), elsewhere.url.encode())
    cases = cases[::int(sys.argv[2]) if len(sys.argv) > 2 else 1]
    wrong = 0
    for name, answer, offers in cases:
        server = Server(answer)
        start = Start(programs, server)
        try:
            found = start.faults(offers) + ["it went elsewhere"] * elsewhere.asked
        except (SystemExit, TypeError, ValueError, subprocess.TimeoutExpired) as fault:
            found = [f"{fault!r}"]
        finally:
            server.close()
            start.close()
        elsewhere.asked = 0
        wrong += bool(found)
        for line in found:
            print(f"{name}: {line}", flush=True)
    print(f"{len(cases)} bad servers, {wrong} of them did harm")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
