"""What can go wrong, one function each: it brings the fault about and ends it. What has to hold during all of them, the
watcher sees; what has to hold after each, the run checks."""

import contextlib
import os
import signal
import socket
import struct
import time
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

import web_servers
from test_dbus import Client
from test_mqtt import FakeBroker, closes_after_connect, never_answers, sends_a_byte_a_second, sends_a_megabyte
from world import MENDED

HTTP = ("observation", "issafe")
DAY = 86400
SHARES = 12


@dataclass
class Fault:
    name: str
    how: str
    ends: str
    expected: str
    act: Callable
    quick: bool = False
    kinds: tuple = ("orvalisd", "orvalis --headless", "orvalis")
    torn_lines: bool = False  # a full disk may cut a line in two


# ── the line and the unit ────────────────────────────────────────────────────────────────────────────────────────────


def on_the_line(command, seconds, at_least=0.0):
    """A fault of the unit's answers, in the rain and in fine weather."""
    def act(world):
        lasts = max(seconds * world.patience, at_least)
        for falls in (True, False):
            world.rain(falls)
            world.until_unsafe() if falls else world.until_it_works()
            world.unit.tell(command % lasts)
            world.wait(lasts)
            world.unit.tell("fault none")
    return act


def drop(world):
    lasts = max(15 * world.patience, 4)
    world.unit.tell("drop %.1f" % lasts)
    world.wait(lasts)


def power(world):
    before = len(world.recorded(" command SR 444"))
    world.unit.tell("power %.1f" % max(15 * world.patience, 6))
    world.wait_for(lambda: len(world.recorded(" command SR 444")) > before, "its settings are sent again")


def the_line(commands, seconds):
    """A line that holds answers up, each way for so long."""
    def act(world):
        for command in commands:
            world.unit.tell(command)
            world.last(seconds)
    return act


def unit_again(world):
    world.unit.kill()
    with contextlib.suppress(FileNotFoundError):
        os.remove(world.link)  # as the adapter's name goes with it
    world.last(12, 3)
    world.start_unit()


def unit_stopped(world):
    world.unit.process.send_signal(signal.SIGSTOP)
    world.last(20, 12)
    world.unit.process.send_signal(signal.SIGCONT)


def every_byte(kind, share):
    """Each length of a cut frame, each place of a wrong byte, in the rain; in shares, because each takes a timeout."""
    def act(world):
        world.rain(True)
        world.until_unsafe()
        for number in range(1 + share, 117, SHARES):
            struck = len(world.recorded(" fault " + kind))
            world.unit.tell("fault %s=%d" % (kind, number))
            world.wait_for(lambda n=struck: len(world.recorded(" fault " + kind)) > n, "a frame is asked for")
        world.rain(False)
    return act


# ── the program, its machine and its clocks ──────────────────────────────────────────────────────────────────────────


def asleep(world):
    """Short, long, and for ten minutes by the clocks that count sleep."""
    for seconds, slept in ((3, 0), (12, 0), (2, 600)):
        world.program.process.send_signal(signal.SIGSTOP)
        time.sleep(seconds)
        if slept:
            world.truth.begin_again()
            world.set_clocks(slept, slept)
        world.program.process.send_signal(signal.SIGCONT)
        world.last(6)
    world.until_it_works()
    world.set_clocks(0)


def clock_set(world):
    for ahead in (DAY, -2 * DAY, 3600, -3600, 400 * DAY, 0):
        world.set_clocks(ahead)
        world.stays(6)


def ends(numbers):
    """By signals, at random moments. In the first of them the system itself ends it."""
    def act(world):
        for number in numbers:
            world.wait(world.chance.uniform(0, 5 * world.patience))
            if number == signal.SIGKILL:
                world.program.stop(number)
            else:
                world.end(number, (0, -number))
            world.check_store(False)
            world.start()
    return act


def racing_starts(world):
    world.end()
    world.truth.begin_again()
    programs = [world.launch_program() for _ in range(10)]
    end = time.monotonic() + MENDED
    while sum(one.process.poll() is None for one in programs) > 1:
        assert time.monotonic() < end, "they do not leave the place to one"
        time.sleep(0.1)
    left = [one for one in programs if one.process.poll() is None]
    assert left, "none remained: %s" % [one.errors for one in programs]
    world.program = left[0]
    for one in programs:
        if one is not world.program:
            one.process.wait()
            time.sleep(0.1)  # for its last words
            assert any("already running" in line for line in one.errors), (one.process.returncode, one.errors)


# ── disk and profile ─────────────────────────────────────────────────────────────────────────────────────────────────


def flips(world):
    """Something to store and to log. It must answer all the time."""
    for falls in (True, False):
        world.rain(falls)
        world.stays(8, safe=False)


def disk_full(world):
    """Where there is no disk to fill, the program may not let its files grow."""
    if world.own_disk:
        with world.full_disk():
            flips(world)
            refused = world.run_program("profile", "set", "Left", "77")
            assert refused.returncode in (0, 1), refused
    with world.no_file_grows():
        flips(world)
    flips(world)


def unwritable(world):
    folders = (world.profile, world.logs)
    for folder in folders:
        os.chmod(folder, 0o500)
    flips(world)
    for folder in folders:
        os.chmod(folder, 0o700)


def in_place_of(name, make):
    def act(world):
        with world.in_place_of(name, make):
            flips(world)
    return act


def pipes_for_logs(world):
    """Whoever opens a pipe that nobody reads waits for ever."""
    with contextlib.ExitStack() as pipes:
        for name in ("orvalis_verdicts.txt", "orvalis_single.txt", "orvalis_single.txt.new", "orvalis_log.txt"):
            pipes.enter_context(world.in_place_of("logs/" + name, os.mkfifo))
        flips(world)


def destroyed(path, world):
    """What a dying disk makes of a file."""
    size = max(path.stat().st_size, 100)
    path.write_bytes(world.chance.randbytes(size))


def pipes_at_the_start(world):
    world.end()
    names = ("Orvalis.Weather.running", "Orvalis.Weather.ini.lock", "Orvalis.Weather.good.ini",
             "history.sqlite-journal")
    for name in names:
        Path(world.profile, name).unlink(missing_ok=True)
        os.mkfifo(Path(world.profile, name))
    world.start()
    world.until_it_works()
    assert not any(Path(world.profile, name).is_fifo() for name in names), "a pipe is still there"


def settings_destroyed(world):
    destroyed(Path(world.profile, "Orvalis.Weather.ini"), world)
    flips(world)
    world.program.stop(signal.SIGKILL)
    world.start()
    world.wait_for(lambda: any("settings were destroyed" in line for line in world.program.all_lines + world.program.errors),
                   "the loss is said") if world.kind != "orvalis" else world.wait(5)
    world.wait(5)
    assert not any(heard[1] for heard in world.watcher.heard.values()), "safe with lost settings"
    assert world.run_program("profile", "acknowledge").returncode == 0


def history_destroyed(world):
    for name in ("history.sqlite", "history.sqlite-wal"):
        path = Path(world.profile, name)
        if path.exists():
            destroyed(path, world)
    flips(world)
    world.end()
    world.start()


# ── the network ──────────────────────────────────────────────────────────────────────────────────────────────────────


def port_taken(world):
    world.end()
    with socket.create_server(("127.0.0.1", world.ports["http"])):
        world.start()
        world.last(10, 3)


def silent_clients(world):
    """Hundreds that connect and say nothing, half a request, nonsense, or read no answer."""
    words = (b"", b"GET /observation HT", b"\0\xff\r\n\r\n" * 50, b"GET /observation/stream HTTP/1.1\r\nHost: localhost\r\n\r\n")
    with contextlib.ExitStack() as clients:
        for number in range(400):
            with contextlib.suppress(OSError):
                client = clients.enter_context(socket.create_connection(("127.0.0.1", world.ports["http"]), 2))
                client.sendall(words[number % len(words)])
        world.last(20, 5)
        begin = time.monotonic()
        world.wait_for(lambda: world.watcher.works() and min(h[0] for h in world.watcher.heard.values()) > begin,
                       "the roof's own client is answered", 30)


def clients_killed(world):
    """In the middle of a call."""
    for _ in range(3):
        world.program.process.send_signal(signal.SIGSTOP)
        callers = [Client(world.env) for _ in range(8)]
        for caller in callers:
            caller.say("get Safe")
        sockets = [socket.create_connection(("127.0.0.1", world.ports["http"])) for _ in range(8)]
        for one in sockets:
            one.sendall(b"GET /observation HTTP/1.1\r\nHost: localhost\r\n\r\n")
        time.sleep(0.3)
        for caller in callers:
            caller.kill()
        for one in sockets:
            one.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
            one.close()
        world.program.process.send_signal(signal.SIGCONT)
        world.wait(2)


@contextlib.contextmanager
def without_the_bus(world):
    path = os.path.join(world.folder, "bus")
    world.bus.kill()
    with contextlib.suppress(FileNotFoundError):
        os.remove(path)
    yield path
    with contextlib.suppress(FileNotFoundError):
        os.remove(path)
    world.start_bus()


def bus_lost(world):
    with without_the_bus(world):
        world.stays(15, HTTP)


def bus_silent(world):
    """Longer than the minute after which the program tries again."""
    with without_the_bus(world) as path, socket.socket(socket.AF_UNIX) as silent:
        silent.bind(path)
        silent.listen()
        world.stays(70, HTTP)


def garbage_from(world):
    def serve(connection):
        connection.recv(1000)
        connection.sendall(world.chance.randbytes(5000))
    return serve


def broker_hostile(world):
    for behave in (never_answers, closes_after_connect, sends_a_megabyte, sends_a_byte_a_second, garbage_from(world)):
        broker = FakeBroker(behave, port=world.ports["mqtt"])
        world.stays(12)
        broker.close()


def broker_stopped(world):
    config = Path(world.folder, "broker.conf")
    config.write_text("listener %d 127.0.0.1\nallow_anonymous true\npersistence false\nuser root\n" % world.ports["mqtt"])
    broker = world.launch("/usr/sbin/mosquitto", "-c", str(config))
    world.last(20, 10)
    for number in (signal.SIGSTOP, signal.SIGCONT):
        broker.process.send_signal(number)
        world.stays(15)
    broker.kill()
    world.stays(5)


def web_server_hostile(world):
    acts = [web_servers.drip, web_servers.reset, web_servers.redirect, web_servers.flood, web_servers.refuse_politely,
            web_servers.silent]
    before = len(world.web.requests)
    world.web.acts = list(acts)
    world.wait_for(lambda: len(world.web.requests) >= before + len(acts), "each is asked")
    world.stays(10)
    world.wait_for(lambda: len(world.web.requests) > before + len(acts) + 1, "readings are uploaded again")


def ftp_server_hostile(world):
    """It takes a picture, so it needs the windows. The server is there from their start."""
    world.wait_for(world.ftp.stuck.is_set, "the server is asked")
    world.stays(60)


def sound_gone(world):
    for line in ("exec sleep 1000", "exit 1", "kill -SEGV $$", None):
        if line:
            world.play_by(line)
        else:
            world.player.unlink(missing_ok=True)
        flips(world)
    world.play_by("exit 0")


LINE = "unsafe when readings are late, damaged or missing; values right or unknown"
GOES_ON = "readings, verdict and all interfaces go on"
FAULTS = [
    Fault("line lost", "the adapter vanishes, and comes back under another device", "15 s", LINE, drop, quick=True),
    *(Fault(name, how, "with the last", LINE, every_byte(kind, share)) for share in range(SHARES) for name, how, kind in (
        ("every length", "frames cut after each character, in 12 parts", "cut"),
        ("every length, ended", "the same with the end of a frame at the cut", "short"),
        ("every byte", "each character of a frame wrong, one by one", "garbage"))),
    Fault("noisy frames", "up to 20 wrong bytes in a frame", "20 s, in rain and without", LINE,
          on_the_line("fault garbage %.1f", 20, 3), quick=True),
    Fault("damaged names", "a letter of a field's name", "the same", LINE, on_the_line("fault names %.1f", 20)),
    Fault("damaged digits", "digits that turn into others, in rain and without", "the same",
          "never safe in rain; a wrong digit is a measurement", on_the_line("fault digits %.1f", 20)),
    Fault("noise", "arbitrary bytes between frames", "the same", LINE, on_the_line("fault noise %.1f", 20, 3), quick=True),
    Fault("slow answers", "a tenth of the line's speed", "the same", LINE, on_the_line("fault slow %.1f", 20)),
    Fault("wrong greeting", "a greeting answered by another letter, after silence", "20 s", LINE,
          lambda world: [on_the_line("fault %s %%.1f" % kind, 20)(world) for kind in ("silent", "wrong-answer")]),
    Fault("late by 3 s", "each answer", "the same", LINE, on_the_line("fault late=3 %.1f", 20)),
    Fault("late by 7 s", "each answer", "the same", LINE, on_the_line("fault late=7 %.1f", 20)),
    Fault("late by 13 s", "each answer", "the same", LINE, on_the_line("fault late=13 %.1f", 30)),
    Fault("a delaying line", "2, 4, 7 and 13 s", "100 s", LINE,
          the_line(("delay 2", "delay 4", "delay 7", "delay 13", "delay 0"), 25)),
    Fault("a stuck line", "stalls of 4 and 14 s, bursts every 3 and 8 s", "100 s", LINE,
          the_line(("stall 4", "stall 14", "bursts 3", "bursts 8", "bursts 0"), 20)),
    Fault("silence", "the unit does not answer", "25 s, in rain and without", LINE, on_the_line("fault silent %.1f", 25, 12)),
    Fault("unit stopped", "its process stands still", "20 s", LINE, unit_stopped, quick=True),
    Fault("unit restarted", "another unit under the same name", "12 s", LINE, unit_again, quick=True),
    Fault("power cycle", "the unit loses its power and its settings", "15 s", LINE + "; its settings are sent again", power,
          quick=True),
    Fault("machine asleep", "3 s, 12 s, and ten minutes by its clocks", "wakes up", "no old reading after it", asleep,
          quick=True),
    Fault("clock set", "a day ahead, two back, an hour, 400 days", "set right", GOES_ON, clock_set, quick=True),
    Fault("signals", "TERM, INT, HUP at random moments", "started again", "ends in time, everything whole",
          ends((signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGTERM)), quick=True),
    Fault("killed", "KILL at random moments", "started again", "everything whole", ends((signal.SIGKILL,) * 3),
          quick=True),
    Fault("ten starts at once", "", "", "one remains, nine say why they leave", racing_starts, quick=True),
    Fault("disk full", "profile and logs", "room again", GOES_ON + "; files whole", disk_full, quick=True, torn_lines=True),
    Fault("folders not writable", "profile and logs", "writable again", GOES_ON, unwritable),
    Fault("a file for the profile", "in place of its folder", "the folder is back", GOES_ON,
          in_place_of("profile", Path.touch)),
    Fault("a folder for the settings", "in place of their file", "the file is back", GOES_ON,
          in_place_of("profile/Orvalis.Weather.ini", Path.mkdir)),
    Fault("a folder for the history", "in place of its file", "the file is back", GOES_ON,
          in_place_of("profile/history.sqlite", Path.mkdir)),
    Fault("pipes for logs", "that nobody reads, in place of the files", "the files are back", GOES_ON, pipes_for_logs,
          quick=True),
    Fault("pipes at the start", "in place of the locks and the copy of the settings", "replaced", GOES_ON,
          pipes_at_the_start),
    Fault("settings destroyed", "random bytes, then KILL", "started again, acknowledged",
          "the copy comes back; unsafe until acknowledged", settings_destroyed, quick=True),
    Fault("history destroyed", "random bytes in its file", "started again", GOES_ON, history_destroyed),
    Fault("profile removed", "the whole folder", "it is back", GOES_ON, in_place_of("profile", lambda path: None)),
    Fault("port taken", "another program has the HTTP port at the start", "given back", "the same port within a minute",
          port_taken),
    Fault("silent clients", "400 that say nothing, half a request, nonsense, or do not read", "they leave",
          "clients on this machine are answered", silent_clients, quick=True),
    Fault("clients killed", "in a call, on D-Bus and HTTP", "at once", GOES_ON, clients_killed, quick=True),
    Fault("bus lost", "the bus is killed", "started again", "the others go on; served again within a minute", bus_lost),
    Fault("bus silent", "it takes connections and says nothing", "started again",
          "the others go on; served again within a minute", bus_silent),
    Fault("broker hostile", "silent, closing, endless, dripping, nonsense", "it leaves", GOES_ON, broker_hostile),
    Fault("broker stopped", "a real one stands still, goes on, is killed", "", GOES_ON, broker_stopped),
    Fault("web server hostile", "drips, resets, redirects, floods, refuses, silent", "it is well again",
          GOES_ON + "; uploads again", web_server_hostile),
    Fault("FTP server hostile", "silent or dripping", "with the program", GOES_ON, ftp_server_hostile, kinds=("orvalis",)),
    Fault("sound system gone", "its player hangs, fails, crashes, is missing", "it is back", GOES_ON, sound_gone,
          kinds=("orvalisd",)),
]
