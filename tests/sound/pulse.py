"""A sound daemon of our own with one sink that goes nowhere."""

import os
import signal
import subprocess
import tempfile

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
        self.log = log
        self.start()

    def start(self):
        if os.path.exists(self.socket):
            os.remove(self.socket)
        self.process = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
             "--realtime=yes", "--high-priority=yes", "--log-target=stderr",
             "-L", f"module-native-protocol-unix socket={self.socket} auth-anonymous=1",
             "-L", f"module-null-sink sink_name=fento rate={RATE} channels=1 format=s16le"],
            stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log, env=self.env)
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
