"""Sound servers with two loudspeakers that swallow everything, and what was to be heard from them."""

import os
import pathlib
import subprocess
import tempfile
import threading
import time
import wave

import numpy

RATE = 11025  # samples a second, of recordings and of the sounds that are looked for in them
SINKS = ["internal_speaker", "usb_loudspeaker"]


def uptime():
    """Seconds, on the clock in which the program's record has its marks."""
    return time.clock_gettime(time.CLOCK_BOOTTIME)


class Recording(threading.Thread):
    """Everything that a loudspeaker is given, from now on."""

    def __init__(self, sink):
        super().__init__(daemon=True)
        self.sink = sink
        self.recorder = subprocess.Popen(
            ["parec", "-d", f"{sink}.monitor", "--raw", "--format=s16le", f"--rate={RATE}",
             "--channels=1", "--latency-msec=10", "--property=node.dont-reconnect=true"], stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL, bufsize=0)
        self.bytes = bytearray()
        self.began = []  # when the first sample was played, judged by each piece that came
        self.start()

    def run(self):
        while piece := self.recorder.stdout.read(4096):
            self.began.append(uptime() - len(self.bytes) / 2 / RATE)
            self.bytes += piece

    def end(self):
        """The samples from -1 to 1 and the uptime of the first. The pieces come late, never early."""
        self.recorder.kill()
        self.join()
        if not self.began:
            return numpy.zeros(0), 0.0
        samples = numpy.frombuffer(bytes(self.bytes[:len(self.bytes) // 2 * 2]), dtype="<i2")
        return samples / 32768, min(self.began)


class Loudspeakers:
    """A sound server of its own; every program that is started after it uses it."""

    def __init__(self, server="pulseaudio"):
        self.server = server
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvanel-sound-"))
        self.folder.chmod(0o700)
        self.programs, self.recordings, self.heard = [], [], []
        os.environ |= {"XDG_RUNTIME_DIR": str(self.folder), "PULSE_RUNTIME_PATH": str(self.folder),
                       "XDG_STATE_HOME": str(self.folder), "PULSE_SERVER": f"unix:{self.folder}/native"}
        self.start()

    def start(self):
        def run(*command):
            self.programs.append(subprocess.Popen(
                command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                start_new_session=True))
        if self.server == "pipewire":
            run("dbus-run-session", "--", "sh", "-c",
                "pipewire & sleep 0.3; wireplumber & pipewire-pulse & wait")
        else:
            run("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                "-L", f"module-native-protocol-unix auth-anonymous=1 socket={self.folder}/native")
        for _ in range(100):
            if self.ask("info").returncode == 0:
                break
            time.sleep(0.1)
        # The recordings would follow a default that changes.
        self.ask("load-module", "module-null-sink", "sink_name=nothing")
        self.ask("set-default-source", "nothing.monitor")
        for sink in SINKS:
            self.ask("load-module", "module-null-sink", f"sink_name={sink}")
        time.sleep(0.5)
        self.recordings = [Recording(sink) for sink in SINKS]

    def ask(self, *words):
        return subprocess.run(["pactl", *words], capture_output=True, text=True, timeout=10)

    def choose(self, sink):
        for _ in range(50):
            self.ask("set-default-sink", sink)
            if self.ask("get-default-sink").stdout.strip() == sink:
                return
            time.sleep(0.1)

    def stop(self):
        """The server goes, as in a crash."""
        self.heard += [(recording.sink, *recording.end()) for recording in self.recordings]
        self.recordings = []
        for program in self.programs:
            os.killpg(program.pid, 9)
            program.wait()
        self.programs = []

    def close(self):
        """All that was heard: lists of the sink, its samples and the uptime of the first."""
        self.stop()
        return self.heard


def sound(path):
    """A wave file of 16 bits as it comes out of a recording."""
    with wave.open(str(path)) as file:
        samples = numpy.frombuffer(file.readframes(file.getnframes()), dtype="<i2") / 32768
        step = file.getframerate() // RATE
        return samples[:len(samples) // step * step].reshape(-1, step).mean(axis=1)


def find(samples, wanted):
    """Where `wanted` stands in `samples` and how well it fits from 0 to 1: 1 is all of it."""
    if len(samples) < len(wanted):
        return 0, 0.0
    size = 1 << (len(samples) + len(wanted)).bit_length()
    product = numpy.fft.rfft(samples, size) * numpy.conj(numpy.fft.rfft(wanted, size))
    fits = numpy.fft.irfft(product, size)[:len(samples) - len(wanted) + 1]
    power = numpy.cumsum(numpy.concatenate(([0.0], samples ** 2)))
    power = power[len(wanted):] - power[:-len(wanted)]
    fits = fits / numpy.sqrt(numpy.maximum(power, 1e-3) * numpy.sum(wanted ** 2))
    best = int(numpy.argmax(fits))
    return best, float(fits[best])
