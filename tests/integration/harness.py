"""Starts the real program and the simulated unit as processes of their own, and reads what they say."""

import json
import os
import queue
import shutil
import signal
import subprocess
import tempfile
import threading
import time
import unittest
from pathlib import Path

BIN = os.environ.get("ORVALIS_BIN", os.path.join(os.getcwd(), "build", "dev", "bin"))
# How long a thing may take that has to happen at all. Generous: the machines are slow and the sanitizers slower.
PATIENCE = 60
# Who started the tests, nohup or a script, may have had these ignored, which what they start would inherit.
for _ignored in (signal.SIGINT, signal.SIGHUP):
    if signal.getsignal(_ignored) == signal.SIG_IGN:
        signal.signal(_ignored, signal.SIG_DFL)


class Process:
    """A process whose standard output is read line by line, in the background."""

    def __init__(self, arguments, env=None, stdin=False):
        self.process = subprocess.Popen(
            arguments, env=env, stdin=subprocess.PIPE if stdin else subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, errors="replace", bufsize=1)
        self.lines = queue.Queue()
        self.all_lines = []  # those that were taken from the queue too
        self.errors = []
        self._readers = [threading.Thread(target=self._read, args=reader, daemon=True) for reader in (
            (self.process.stdout, self.all_lines.append, self.lines.put), (self.process.stderr, self.errors.append))]
        for reader in self._readers:
            reader.start()

    def _read(self, pipe, *takers):
        for line in pipe:
            for take in takers:
                take(line.rstrip("\n"))
        if pipe is self.process.stdout:
            self.lines.put(None)

    def line(self, matches, patience=PATIENCE):
        """The next line that `matches`; lines before it are dropped."""
        end = time.monotonic() + patience
        seen = []
        while True:
            try:
                line = self.lines.get(timeout=max(0.01, end - time.monotonic()))
            except queue.Empty:
                raise AssertionError("no such line; seen: %r; standard error: %r" % (seen[-10:], self.errors[-10:]))
            if line is None:
                self.lines.put(None)  # for the next one who waits
                raise AssertionError("%s: its output ended, its exit code is %s; seen: %r; standard error: %r" % (
                    self.process.args, self.process.poll(), seen[-10:], self.errors[-10:]))
            seen.append(line)
            if matches(line):
                return line

    def say(self, text):
        self.process.stdin.write(text + "\n")
        self.process.stdin.flush()

    def forget(self):
        while not self.lines.empty():
            if self.lines.get_nowait() is None:
                self.lines.put(None)
                return

    def stop(self, number=signal.SIGTERM, patience=PATIENCE):
        """Ends the process; returns its exit code and the seconds that it took."""
        begin = time.monotonic()
        self.process.send_signal(number)
        code = self.process.wait(patience)
        for reader in self._readers:
            reader.join(patience)
        return code, time.monotonic() - begin

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        for pipe in (self.process.stdin, self.process.stdout, self.process.stderr):
            if pipe:
                pipe.close()


class Unit(Process):
    """The simulated sensor unit on a line of its own."""

    def __init__(self, link, *options):
        super().__init__([BIN + "/orvalis-unit", "--link", link, "--commands", *options], stdin=True)
        self.line(lambda text: text.startswith("/dev/"))

    def tell(self, command):
        self.say(command)
        answer = self.line(lambda text: text.startswith(("ok", "error")))
        assert answer.startswith("ok"), answer

    def measure(self, values):
        """From now on the unit sends these values, by field."""
        for field, value in values.items():
            self.tell("set %s %s" % (field, value))


class Case(unittest.TestCase):
    """Each test has a folder, a profile and a line of its own; what it started is ended."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="orvalis-test-")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.profile = os.path.join(self.folder, "profile")
        self.link = os.path.join(self.folder, "unit")
        self.record = os.path.join(self.folder, "record")
        self.launched = []
        # Several tests run at a time, and there is but one port.
        self.env = dict(os.environ, ORVALIS_PROFILE_DIR=self.profile, ORVALIS_HTTP_PORT="0", LC_ALL="C.UTF-8")

    def unit(self, *options):
        unit = Unit(self.link, "--record", self.record, *options)
        self.addCleanup(unit.kill)
        return unit

    def evening(self, **measured):
        """The unit on a clear, windy evening, but for what is `measured`."""
        unit = self.unit("--fast")
        unit.measure({"TA": "5.00", "TTP": "6.25", "TP": "-20.00", "HUM": "520", "R": "120", "WND": "20", "LGT": "1000",
                      "RB": "0", **measured})
        return unit

    def polled_evening(self, **measured):
        """The same with the headless program that reads it."""
        unit, program = self.evening(**measured), self.headless()
        self.reading(program, lambda r: r["ambient_c"] == 5)
        return unit, program

    def recorded(self, text):
        """The unit's records that have `text` in them."""
        return [line for line in Path(self.record).read_text("utf-8").splitlines() if text in line]

    def launch(self, *words, stdin=False):
        process = Process(words, env=self.env, stdin=stdin)
        self.launched.append(process)
        self.addCleanup(process.kill)
        return process

    def program(self, *options):
        return self.launch(BIN + "/orvalis", *options)

    def headless(self, *options):
        return self.program("--headless", "--json", "--port", self.link, *options)

    def daemon(self):
        """The executable without windows."""
        return self.launch(BIN + "/orvalisd", "--json", "--port", self.link)

    def run_program(self, *options, given=None, env=None):
        return subprocess.run([BIN + "/orvalis", *options], env=env or self.env, input=given, capture_output=True,
                              text=True, timeout=PATIENCE)

    def set(self, key, value):
        result = self.run_program("profile", "set", key, value)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def set_all(self, values):
        for key, value in values.items():
            self.set(key, value)

    def wait_until(self, condition, what):
        """What `condition` returns when it is true at last."""
        end = time.monotonic() + PATIENCE
        while not (result := condition()):
            self.assertLess(time.monotonic(), end, "never: " + what)
            time.sleep(0.1)
        return result

    @staticmethod
    def reading(program, matches=lambda reading: True, patience=PATIENCE):
        """The next reading that `matches`."""
        return json.loads(program.line(
            lambda line: "frame" in json.loads(line) and matches(json.loads(line)), patience))

    @staticmethod
    def event(program, text, patience=PATIENCE):
        """The next event that begins with `text`."""
        return json.loads(program.line(lambda line: json.loads(line).get("event", "").startswith(text), patience))


class ScreenCase(Case):
    """With a screen of its own."""

    def setUp(self):
        super().setUp()
        screen = subprocess.Popen(["Xvfb", "-displayfd", "1", "-noreset", "-screen", "0", "1280x1024x24"], stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(screen.wait)
        self.addCleanup(screen.terminate)
        self.env["DISPLAY"] = ":" + screen.stdout.readline().strip()
        screen.stdout.close()
        self.env.pop("QT_QPA_PLATFORM", None)

    def xdotool(self, *words):
        return subprocess.run(["xdotool", *words], env=self.env, capture_output=True, text=True,
                              timeout=PATIENCE).stdout.split()

    def window(self, name):
        """The uppermost window of this name, when it is there."""
        def found():
            running = any(program.process.poll() is None for program in self.launched)
            return self.xdotool("search", "--onlyvisible", "--name", "^%s$" % name) or self.assertTrue(
                running, "no program is left whose window “%s” could be" % name)
        return self.wait_until(found, name)[-1]

    def focus(self, name):
        window = self.window(name)
        self.xdotool("windowfocus", "--sync", window)
        return window

    def keys(self, *keys):
        for key in keys:
            if key.startswith("="):
                self.xdotool("key", "ctrl+a")
                self.xdotool("type", key[1:])
            else:
                self.xdotool("key", key)
            time.sleep(0.1)
