"""Measures the HTTP front with wrk, beside a server that does nothing else."""

import re
import socket
import subprocess
import threading
import time

from report import awake, give_up, processor_share, row, run, start, stop, wait_for_line

PATH = "/api/v1/safetymonitor/0/issafe"


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as server:
        return server.getsockname()[1]


def load(port, connections):
    """The median latency in microseconds, and requests a second."""
    text = run("wrk", "-t1", "-c%d" % connections, "-d4", "--latency", "http://127.0.0.1:%d%s" % (port, PATH))
    number, unit = re.search(r"50%\s+([\d.]+)(us|ms|s)", text).groups()
    return (float(number) * {"us": 1, "ms": 1e3, "s": 1e6}[unit],
            float(re.search(r"Requests/sec:\s+([\d.]+)", text).group(1)))


def wait_until_open(port):
    """The process that is to listen there is watched: its end ends the wait."""
    while True:
        try:
            socket.create_connection(("127.0.0.1", port)).close()
            return
        except OSError:
            time.sleep(0.05)


def poll_each_second(port, clients, stopped):
    """Many clients with a connection each, as observatory programs ask."""
    request = ("GET %s HTTP/1.1\r\nHost: localhost\r\n\r\n" % PATH).encode()
    connections = [socket.create_connection(("127.0.0.1", port), timeout=10) for _ in range(clients)]
    while not stopped.wait(1):
        for connection in connections:
            connection.sendall(request)
            connection.recv(4096)
    for connection in connections:
        connection.close()


def network(world):
    port = free_port()
    program = world.start("--port", world.link, program="orvalisd", env=dict(world.env, ORVALIS_HTTP_PORT=str(port)))
    wait_until_open(port)
    peer = start(world.binaries + "/beast_server", stdout=subprocess.PIPE)
    peer_port = int(wait_for_line(peer, ""))
    with awake():
        latency, peer_latency = load(port, 1)[0], load(peer_port, 1)[0]
    row("issafe on one connection", "%.0f us" % latency, "< 300 us", latency < 300, "an empty server %.0f us" % peer_latency)
    rate, peer_rate = load(port, 16)[1], load(peer_port, 16)[1]
    row("issafe on 16 connections", "%.0f/s" % rate, "> 10000/s", rate > 10_000, "an empty server %.0f/s" % peer_rate)
    stop(peer)
    stopped = threading.Event()
    poller = threading.Thread(target=poll_each_second, args=(port, 64, stopped), daemon=True)
    poller.start()
    time.sleep(2)
    share = processor_share(20, program.pid)
    if not poller.is_alive():
        give_up("the 64 clients failed")
    row("processor time with 64 clients once a second", "%.2f %%" % share, "< 1 %", share < 1)
    stopped.set()
    poller.join(20)
    stop(program)
