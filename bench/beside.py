"""orvalisd beside indiserver with its weather simulator: start, memory, processor time, and a property read.

Both are asked by the same client on a kept connection, in turns, so that the machine is as busy for the one as for the
other. The simulator reads no line: what it needs is the least that such a server needs.
"""

import contextlib
import os
import re
import socket
import statistics
import time

from network_load import free_port
from report import awake, megabytes, processor_share, row, start, stop

SIMULATOR = "indi_simulator_weather"


def connect(port):
    """As soon as the server, which is watched, listens."""
    while True:
        with contextlib.suppress(ConnectionRefusedError):
            return socket.create_connection(("127.0.0.1", port), timeout=10)
        time.sleep(0.001)


def has(mark):
    return lambda got: mark in got


ANSWERED = has(b"</defNumberVector>")


def is_whole(got):
    """Whether this is an answer of HTTP to its last byte."""
    head, _, body = got.partition(b"\r\n\r\n")
    length = re.search(rb"\r\nContent-Length: (\d+)\r\n", head + b"\r\n")
    return length and len(body) >= int(length[1])


def ask(connection, request, is_answer):
    connection.sendall(request)
    got = b""
    while not is_answer(got):
        part = connection.recv(65536)
        if not part:
            raise ConnectionError("the server closed the connection")
        got += part


def indi_question(device, name):
    return b'<getProperties version="1.7" device="%s" name="%s"/>' % (device, name)


def listen(port):
    """A client that hears of everything: the servers send the others nothing."""
    connection = connect(port)
    ask(connection, b'<getProperties version="1.7"/>', has(b'name="CONNECTION"'))
    return connection


def indi_command(kind, device, name, item, value):
    return b'<new%sVector device="%s" name="%s"><one%s name="%s">%s</one%s></new%sVector>' % (
        kind, device, name, kind, item, value, kind, kind)


class IndiServer:
    """indiserver with one driver and a home of its own."""

    def __init__(self, world, driver):
        self.port = free_port()
        home = world.folder + "/home-of-%d" % self.port
        os.mkdir(home)
        self.process = start("indiserver", "-p", str(self.port), "-u", home + "/socket", driver,
                             env=dict(world.env, HOME=home), stdout=world.nowhere, stderr=world.nowhere)

    def pids(self):
        pid = self.process.pid
        with open("/proc/%d/task/%d/children" % (pid, pid)) as file:
            return [pid, *map(int, file.read().split())]


def http_question(path):
    return b"GET %s HTTP/1.1\r\nHost: localhost\r\n\r\n" % path


def daemon(world, port, *options):
    env = dict(world.env, ORVALIS_HTTP_PORT=str(port))
    return world.start(*options, program="orvalisd", env=env)


def median_ms(times):
    return "%.0f ms" % (1000 * statistics.median(times))


def starts(world):
    ours, theirs = [], []
    for _ in range(9):
        begin, port = time.monotonic(), free_port()
        program = daemon(world, port)
        with connect(port) as connection:
            ask(connection, http_question(b"/observation"), is_whole)
            ours.append(time.monotonic() - begin)
        stop(program)
        begin = time.monotonic()
        server = IndiServer(world, SIMULATOR)
        with connect(server.port) as connection:
            ask(connection, indi_question(b"Weather Simulator", b"CONNECTION"), has(b"</defSwitchVector>"))
            theirs.append(time.monotonic() - begin)
        stop(server.process)
    row("orvalisd, start to the first answer", median_ms(ours), "", True, "indiserver " + median_ms(theirs))


def shares(what, seconds, ours, theirs, budget=None):
    share, other = processor_share(seconds, *ours), processor_share(seconds, *theirs)
    row("orvalisd, processor time %s" % what, "%.3f %%" % share, "< %g %%" % budget if budget else "",
        not budget or share < budget, "indiserver %.3f %%" % other)


def reads(world, asked):
    """`asked`: what, port, request, is_answer, budget in microseconds or None."""
    with contextlib.ExitStack() as stack:
        connections = [stack.enter_context(connect(port)) for _, port, *_ in asked]
        times = [[] for _ in asked]
        stack.enter_context(awake())
        for _ in range(20):
            for (_, _, request, is_answer, _), connection, taken in zip(asked, connections, times):
                for _ in range(500):
                    begin = time.perf_counter()
                    ask(connection, request, is_answer)
                    taken.append(1e6 * (time.perf_counter() - begin))
    medians = [statistics.median(taken) for taken in times]
    other = medians[-1]
    for (what, *_, budget), median in zip(asked[:-1], medians):
        row("  " + what, "%.0f us" % median, "< %d us" % budget if budget else "", not budget or median < budget,
            "%s %.0f us, ratio %.2f" % (asked[-1][0], other, median / other))


def beside(world, seconds):
    starts(world)

    port = free_port()
    program, server = daemon(world, port), IndiServer(world, SIMULATOR)
    with connect(server.port) as connection:
        ask(connection, indi_question(b"Weather Simulator", b"CONNECTION"), has(b"</defSwitchVector>"))
    time.sleep(2)
    shares("without a unit", seconds / 2, [program.pid], server.pids())
    stop(program)

    program = daemon(world, port, "--port", world.link)
    with listen(server.port) as connection:
        ask(connection, indi_command(b"Switch", b"Weather Simulator", b"CONNECTION", b"CONNECT", b"On"), ANSWERED)
        ask(connection, indi_command(b"Number", b"Weather Simulator", b"WEATHER_UPDATE", b"PERIOD", b"2"),
            has(b'name="WEATHER_PARAMETERS"'))
    time.sleep(6)
    shares("while polling, over %d s" % seconds, seconds, [program.pid], server.pids(), 0.1)
    driver = IndiServer(world, world.binaries + "/indi_orvalis_weather")
    with listen(driver.port) as connection:
        ask(connection, indi_command(b"Text", b"Orvalis", b"DEVICE_ADDRESS", b"PORT", b"%d" % port), has(b"Vector>"))
    time.sleep(15)  # until the driver has readings
    shares("with its INDI driver asking every 2 s", seconds, [program.pid], server.pids())
    for kind, budget in (("Rss", 25), ("Pss", None)):
        ours, theirs = megabytes((kind,), program.pid), megabytes((kind,), *server.pids())
        row("orvalisd, %s memory" % {"Rss": "resident", "Pss": "proportional"}[kind], "%.1f MB" % ours,
            "< %d MB" % budget if budget else "", not budget or ours < budget,
            "indiserver and its driver %.1f MB, ratio %.2f" % (theirs, ours / theirs))

    print("a property read over a kept connection, median of 10,000")
    reads(world, [("HTTP, the whole observation", port, http_question(b"/observation"), is_whole, 300),
                  ("HTTP, Alpaca's issafe", port, http_question(b"/api/v1/safetymonitor/0/issafe"), is_whole, 300),
                  ("INDI, WEATHER_PARAMETERS of our driver", driver.port,
                   indi_question(b"Orvalis", b"WEATHER_PARAMETERS"), ANSWERED, None),
                  ("the simulator's", server.port, indi_question(b"Weather Simulator", b"WEATHER_PARAMETERS"),
                   ANSWERED, None)])
    for process in (driver.process, server.process, program):
        stop(process)
