"""One observatory: a unit, the program, a bus, clients that look on, and the means to break each of them."""

import contextlib
import json
import mmap
import os
import random
import re
import resource
import shutil
import signal
import sqlite3
import struct
import subprocess
import threading
import time
from pathlib import Path

from harness import BIN, Case, Unit
from ports import free_port
from truth import Truth, Watcher
from web_servers import StuckFtpServer, WebServer

# Seconds within which it has to work again. Under the sanitizers too.
MENDED = 180
# Seconds for an orderly end. Generous: the sanitizers look for leaks then.
END = 20
NOT_OF_NOW = ("Left", "Top", "Mqtt/Announced")  # the program itself may write them


class SoakUnit(Unit):
    """Its weather goes on while commands are given."""

    def tell(self, command):
        self.say(command)
        answer = self.line(lambda text: text == "ok " + command or text.startswith("error"))
        assert answer.startswith("ok"), answer


class World(Case):
    def __init__(self, kind="orvalisd", seed=1, patience=1.0):
        """`patience`: how long faults last, 1 in the long run."""
        super().__init__()
        self.kind, self.chance, self.patience = kind, random.Random(seed), patience
        self.watcher, self.torn_lines = None, False

    def begin(self):
        self.setUp()
        self.disk = os.path.join(self.folder, "disk")
        self.own_disk = self._mount()
        self.profile, self.logs = (os.path.join(self.disk, name) for name in ("profile", "logs"))
        self.env["ORVALIS_PROFILE_DIR"] = self.profile
        os.makedirs(self.logs)
        self.ports = {name: free_port() for name in ("http", "mqtt")}
        self.web, self.ftp = WebServer(), StuckFtpServer(dribbles=self.chance.random() < 0.5)
        self.addCleanup(self.web.close)
        self.addCleanup(self.ftp.close)
        self._clocks()
        self._sounds()
        bus = os.path.join(self.folder, "bus")
        os.makedirs(os.path.join(self.folder, "share"))
        self.env.update(ORVALIS_HTTP_PORT=str(self.ports["http"]), DBUS_SESSION_BUS_ADDRESS="unix:path=" + bus,
                        XDG_DATA_DIRS=os.path.join(self.folder, "share"), QT_QPA_PLATFORM="offscreen")
        self.start_bus()
        self._set({
            "Position": "12", "Temp": "5", "SafeHoldSeconds": "1", "RainThreshold": "444", "g_lFullLog": "1",
            "g_sFullLogPath": self.logs, "g_lOneLineLog": "1", "g_sOneLineLogPath": self.logs, "Mqtt/Enabled": "1", "Mqtt/Host": "localhost", "Network/Station": "Soak",
            "Mqtt/Port": str(self.ports["mqtt"]), "g_bchkEnableSounds": "1", "g_bchkRelaySounds": "1",
            "g_sRelaySounds": os.path.join(self.folder, "rain.wav"), "g_bAllow_PWS": "1", "g_sPWS_name": "SOAK",
            "g_sPWS_password": "soak", "g_sPWS_site": "http://127.0.0.1:%d/" % self.web.port,
            "g_lPWSUpdate_interval_index": "0", "g_bAllow_WEB": "1", "WebcamBuiltIn": "1", "g_lWEBUpdate_interval_index": "0",
            "g_sWEBcam_name": "cam", "g_sWEBcam_site": "127.0.0.1:%d" % self.ftp.port})
        self.truth = Truth()
        self.units = 0
        self.unit = self.program = None
        self.start_unit()
        self.start()
        self.watcher = Watcher(self.truth, self.ports["http"], self.env)
        self.addCleanup(self.watcher.close)
        self.ended = threading.Event()
        weather = threading.Thread(target=self._change_the_weather, daemon=True)
        weather.start()
        self.addCleanup(weather.join)
        self.addCleanup(self.ended.set)
        self.until_it_works()
        self.settings = self.stored()

    _settings_lock = threading.Lock()
    _settings_of = []  # the first world's file, and what in it is its own

    def _set(self, values):
        """A program for each key takes long, so later worlds copy what the first one has."""
        own = [self.folder, str(self.ports["http"]), str(self.ports["mqtt"]), str(self.web.port), str(self.ftp.port)]
        file = Path(self.profile, "Orvalis.Weather.ini")
        with self._settings_lock:
            if not self._settings_of:
                self.set_all(values)
                self._settings_of.extend((file.read_text("utf-8"), own))
                return
        text, its_own = self._settings_of
        for was, is_now in zip(its_own, own):
            text = text.replace(was, is_now)
        os.makedirs(self.profile, 0o700)
        file.write_text(text, "utf-8")
        file.chmod(0o600)

    # ── what it consists of ──────────────────────────────────────────────────────────────────────────────────────────

    def _mount(self):
        """Whether profile and logs have a disk of their own, which can be filled. For that one has to be root."""
        os.makedirs(self.disk)
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=24m,mode=700", "soak", self.disk],
                                 capture_output=True, check=False)
        if mounted.returncode == 0:
            self.addCleanup(subprocess.run, ["umount", "-l", self.disk], check=False)
        return mounted.returncode == 0

    def _clocks(self):
        self.slept = 0
        path = os.path.join(self.folder, "clocks")
        Path(path).write_bytes(bytes(16))
        with open(path, "r+b") as file:
            self.clocks = mmap.mmap(file.fileno(), 16)
        self.program_env = {"SET_CLOCK": path, "LD_PRELOAD": BIN + "/set_clock.so",
                            "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"}

    def set_clocks(self, ahead, sleeps=0):
        """The clock of the day is ahead of the system's, the one that counts sleep goes on by `sleeps`; in seconds."""
        self.slept += sleeps
        self.clocks[:] = struct.pack("<qq", ahead * 1000, self.slept * 1000)

    def _sounds(self):
        players = os.path.join(self.folder, "players")
        os.makedirs(players)
        self.player = Path(players, "pw-play")
        self.play_by("exit 0")
        Path(self.folder, "rain.wav").write_bytes(b"")
        self.env["PATH"] = players + ":" + self.env["PATH"]

    def play_by(self, line):
        """What the player program does."""
        fresh = self.player.with_suffix(".new")
        fresh.write_text("#!/bin/sh\n%s\n" % line)
        fresh.chmod(0o755)
        fresh.rename(self.player)

    def start_bus(self):
        self.bus = self.launch("dbus-daemon", "--session", "--nofork", "--print-address=1",
                               "--address=" + self.env["DBUS_SESSION_BUS_ADDRESS"])
        self.bus.line(lambda line: line.startswith("unix:"))

    def start_unit(self):
        self.units += 1
        self.record = os.path.join(self.folder, "record-%d" % self.units)
        self.unit = SoakUnit(self.link, "--record", self.record, "--seed", str(self.chance.randrange(2**32)))
        self.addCleanup(self.unit.kill)
        self.unit.measure({"TA": "5.00", "TTP": "6.25", "TP": "-20.00", "HUM": "520", "R": "100", "WND": "5",
                           "LGT": "1000", "RB": "0"})
        self.truth.follow(self.record, "set RB 0")

    def _change_the_weather(self):
        count = 0
        while not self.ended.wait(1):
            count += 1
            with contextlib.suppress(OSError, ValueError):
                for command in ("R %d" % (100 + count % 40), "LGT %d" % (980 + count % 40), "TA %.2f" % (5 + count % 200 / 100)):
                    self.unit.say("set " + command)

    def rain(self, falls):
        self.unit.tell("set RB %d" % falls)
        self.watcher.told_unsafe = time.monotonic() if falls else None

    def launch_program(self):
        # Even root must not write where it is forbidden.
        bounded = ["setpriv", "--inh-caps=-all", "--bounding-set=-all"] if os.geteuid() == 0 else []
        words = [BIN + "/orvalisd", "--json"] if self.kind == "orvalisd" else [BIN + "/orvalis"]
        if self.kind == "orvalis --headless":
            words += ["--headless", "--json"]
        usual, self.env = self.env, dict(self.env, **self.program_env)
        try:
            return self.launch(*bounded, *words, "--port", self.link)
        finally:
            self.env = usual

    def start(self):
        self.truth.begin_again()
        self.program = self.launch_program()

    # ── waiting: each wait ends when the program is gone ─────────────────────────────────────────────────────────────

    def check_alive(self):
        code = self.program.process.poll()
        assert code is None, "the program ended by itself, with %s: %s" % (code, self.program.errors[-20:])

    def wait(self, seconds):
        end = time.monotonic() + seconds
        while (left := end - time.monotonic()) > 0:
            self.check_alive()
            time.sleep(min(0.1, left))

    def last(self, seconds, at_least=0):
        """The fault lasts this long, shorter in a hurry."""
        self.wait(max(seconds * self.patience, at_least))

    def wait_for(self, condition, what, patience=MENDED):
        begin = time.monotonic()
        while not (result := condition()):
            self.check_alive()
            assert time.monotonic() - begin < patience, "never: " + what
            time.sleep(0.05)
        return result

    def until_it_works(self, lasts=0):
        """The seconds until every interface says safe again, and does for so long: the end of a reading's ten seconds
        may still be to come."""
        begin = time.monotonic()
        while True:
            again = self.wait_for(lambda: self.watcher.works() and min(h[0] for h in self.watcher.heard.values()) > begin
                                  and time.monotonic(), "it works again; heard: %s" % self.watcher.heard)
            while time.monotonic() < again + lasts and self.watcher.works():
                self.wait(0.1)
            if time.monotonic() >= again + lasts:
                return again - begin
            assert time.monotonic() < begin + MENDED, "does not go on working: %s" % self.watcher.heard

    def until_unsafe(self):
        self.wait_for(lambda: self.watcher.works(safe=False) and not any(h[1] for h in self.watcher.heard.values()), "unsafe")

    def stays(self, seconds, interfaces=("observation", "issafe", "D-Bus"), safe=True):
        """It goes on answering, and is safe all the time."""
        end = time.monotonic() + max(seconds * self.patience, 3)
        while time.monotonic() < end:
            self.check_alive()
            assert self.watcher.works(interfaces, safe), "does not go on: %s" % self.watcher.heard
            time.sleep(0.1)

    # ── the end of the program ───────────────────────────────────────────────────────────────────────────────────────

    def end(self, number=signal.SIGTERM, codes=(0,)):
        try:
            code, took = self.program.stop(number, MENDED)
        except subprocess.TimeoutExpired:
            raise AssertionError("goes on after signal %d: %s" % (number, self.where_it_is())) from None
        assert code in codes, "ended with %s: %s" % (code, self.program.errors[-20:])
        assert took < END, "took %.1f s to end" % took
        self.check_lines()

    def where_it_is(self):
        """What the program does that does not end: its state, its signals, and the calls it is in, which its own report
        of a fault tells."""
        status = Path("/proc/%d/status" % self.program.process.pid).read_text("utf-8")
        told = re.findall(r"(?m)^(?:State|SigPnd|ShdPnd|SigBlk|SigCgt).*", status)
        log = Path(BIN, "orvalis_errors.txt")  # of all worlds
        before = log.stat().st_size if log.exists() else 0
        self.program.process.send_signal(signal.SIGABRT)
        with contextlib.suppress(subprocess.TimeoutExpired):
            self.program.process.wait(END)
        return told + (log.read_text("utf-8", "replace")[before:].splitlines() if log.exists() else [])

    def check_lines(self):
        if self.kind != "orvalis":
            for line in self.program.all_lines[:-1] if self.program.process.returncode else self.program.all_lines:
                json.loads(line)

    # ── what has to be whole ─────────────────────────────────────────────────────────────────────────────────────────

    def stored(self):
        listed = self.run_program("profile", "list")
        assert listed.returncode == 0, listed.stderr
        return [line for line in listed.stdout.splitlines() if not line.startswith(NOT_OF_NOW)]

    def check_store(self, torn_lines):
        """`torn_lines`: a line of a log may be cut, and stays so."""
        self.torn_lines = self.torn_lines or torn_lines
        now = self.stored()
        assert now == self.settings, "settings: %s" % sorted(set(now) ^ set(self.settings))
        self.check_history()
        if self.torn_lines:
            return
        for path in Path(self.disk).rglob("orvalis_*.txt*"):
            self.check_log(path)

    def check_history(self):
        database, options = os.path.join(self.profile, "history.sqlite"), "?mode=ro"
        if not os.path.exists(database):
            return  # it ended before there was one
        if self.program.process.poll() is not None:
            # What a kill left has to be recovered, which is up to the program where it is.
            copy = os.path.join(self.folder, "history.sqlite")
            for end in ("", "-wal"):
                if os.path.exists(database + end):
                    shutil.copy(database + end, copy + end)
            database, options = copy, ""
        with contextlib.closing(sqlite3.connect("file:" + database + options, uri=True, timeout=10)) as history:
            assert (told := history.execute("PRAGMA integrity_check").fetchall()) == [("ok",)], told
        for left in Path(self.folder).glob("history.sqlite*"):
            left.unlink()

    @staticmethod
    def check_log(path):
        data = path.read_bytes() if path.is_file() else b""
        for _ in range(5):  # the end of a line may be on its way
            if data.endswith(b"\n") or not data:
                break
            time.sleep(0.1)
            data = path.read_bytes()
        assert not data or data.endswith(b"\n"), "%s ends in %r" % (path.name, data[-60:])
        lines = data.decode("utf-8").splitlines()
        if path.name == "orvalis_single.txt":
            assert len(lines) == 1 and re.fullmatch(r"[-\d]{10} [:.\d]{11} C M .{65}( \d){5}", lines[0]), lines
        if path.name.startswith("orvalis_verdicts.txt"):
            bad = [line for line in lines if " | " not in line + " "]
            assert not bad, bad

    def check(self, torn_lines=False):
        self.check_alive()
        assert not self.watcher.complaints, self.watcher.complaints
        self.check_lines()
        self.check_store(torn_lines)

    # ── disk ─────────────────────────────────────────────────────────────────────────────────────────────────────────

    @contextlib.contextmanager
    def full_disk(self):
        filler = Path(self.disk, "filler")
        with contextlib.suppress(OSError), open(filler, "wb", buffering=0) as file:
            while True:
                file.write(bytes(4096))
        yield
        filler.unlink()

    @contextlib.contextmanager
    def no_file_grows(self):
        unlimited = (resource.RLIM_INFINITY, resource.RLIM_INFINITY)
        resource.prlimit(self.program.process.pid, resource.RLIMIT_FSIZE, (0, unlimited[1]))
        yield
        resource.prlimit(self.program.process.pid, resource.RLIMIT_FSIZE, unlimited)

    @contextlib.contextmanager
    def in_place_of(self, name, make):
        """Something else stands where a file or folder has to be; that comes back."""
        path, aside = Path(self.disk, name), Path(self.disk, "aside-" + os.path.basename(name))
        if path.exists():
            path.rename(aside)
        make(path)
        yield
        if path.is_dir():
            shutil.rmtree(path)
        else:
            path.unlink(missing_ok=True)
        if aside.exists():
            aside.rename(path)
