"""A sound daemon of our own with one sink that goes nowhere."""

import os
import shutil
import signal
import subprocess
import tempfile

from desktop import wait_for

RATE = 44100


class Daemon:
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
        wait_for(lambda: os.path.exists(self.socket) and self._ask("info").returncode == 0, "the sound daemon")

    def _ask(self, *words):
        return subprocess.run(["pactl", *words], env=self.env, capture_output=True, timeout=10, text=True)

    def plays(self):
        """Waits until a program has a stream on it."""
        wait_for(lambda: self._ask("list", "short", "sink-inputs").stdout, "the game's stream at the daemon")

    def hang(self):
        self.process.send_signal(signal.SIGSTOP)

    def go_on(self):
        self.process.send_signal(signal.SIGCONT)

    def die(self):
        self.process.kill()
        self.process.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.die()
        shutil.rmtree(self.folder)
