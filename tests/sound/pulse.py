"""A sound daemon of our own with one sink that goes nowhere, and a recorder of what goes there."""

import os
import signal
import subprocess
import tempfile
import threading
import time
from array import array

from desktop import wait_for

RATE = 44100


class Closing:
    """Closed at the end of its `with`."""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()


class Daemon(Closing):
    """PulseAudio in the foreground, in a folder of its own, found by its socket only."""

    def __init__(self, log):
        self.folder = tempfile.mkdtemp(prefix="fento-pulse-")
        self.socket = self.folder + "/native"
        self.server = "unix:" + self.socket
        self.env = {k: v for k, v in os.environ.items() if not k.startswith(("PULSE", "XDG_", "DISPLAY", "DBUS"))}
        self.env.update(HOME=self.folder, XDG_RUNTIME_DIR=self.folder, PULSE_RUNTIME_PATH=self.folder,
                        PULSE_SERVER=self.server, LC_ALL="C.UTF-8")
        self.process = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
             "--realtime=yes", "--high-priority=yes", "--log-target=stderr",
             "-L", f"module-native-protocol-unix socket={self.socket} auth-anonymous=1",
             "-L", f"module-null-sink sink_name=fento rate={RATE} channels=1 format=s16le"],
            stdin=subprocess.DEVNULL, stdout=log, stderr=log, env=self.env)
        wait_for(lambda: os.path.exists(self.socket) and self.ask("info").returncode == 0, "the sound daemon")

    def ask(self, *words):
        return subprocess.run(["pactl", *words], env=self.env, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              stdin=subprocess.DEVNULL, timeout=10, text=True)

    def streams(self):
        """How many programs play on it."""
        return len(self.ask("list", "short", "sink-inputs").stdout.split("\n")) - 1

    def hang(self):
        os.kill(self.process.pid, signal.SIGSTOP)

    def go_on(self):
        os.kill(self.process.pid, signal.SIGCONT)

    def die(self):
        self.process.kill()
        self.process.wait()

    def close(self):
        if self.process.poll() is None:
            self.go_on()
            self.process.terminate()
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                self.die()
        subprocess.run(["rm", "-rf", self.folder], check=False)


class Recorder(Closing):
    """Everything that the sink gets, from now on, and when each sample of it went by.

    The position of a sample is exact; the moments at which chunks arrive are late by a varying time, never
    early. The earliest of them, reckoned back by position, gives the clock: what it says is the latest moment
    at which a sample can have been on its way out of the sink.
    """

    def __init__(self, daemon, log):
        self.samples = array("h")
        self.start = None
        self.process = subprocess.Popen(
            ["parec", "--raw", "--format=s16le", f"--rate={RATE}", "--channels=1", "--device=fento.monitor",
             "--latency-msec=4", "--volume=65536"],
            env=daemon.env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=log)
        self.thread = threading.Thread(target=self._read, daemon=True)
        self.thread.start()
        wait_for(lambda: len(self.samples) > RATE // 2, "the recording to run")

    def _read(self):
        moments, left = [], b""
        while True:
            chunk = os.read(self.process.stdout.fileno(), 65536)
            now = time.monotonic()
            if not chunk:
                return
            left += chunk
            whole = len(left) // 2 * 2
            self.samples.frombytes(left[:whole])
            left = left[whole:]
            moments.append((now, now - len(self.samples) / RATE))
            # The sink's clock and ours drift apart: only the last seconds count.
            while moments[0][0] < now - 20:
                moments.pop(0)
            self.start = min(moment[1] for moment in moments)

    def position(self):
        return len(self.samples)

    def moment(self, position):
        return self.start + position / RATE

    def close(self):
        self.process.terminate()
        self.process.wait(5)
        self.thread.join(5)
