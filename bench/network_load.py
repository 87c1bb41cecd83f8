"""Measures the HTTP front with wrk, beside a server that does nothing else."""

import re
import socket
import subprocess
import threading
import time

from report import check_running, processor_share, row

PATH = "/api/v1/safetymonitor/0/issafe"


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as server:
        return server.getsockname()[1]


def load(port, connections):
    """The median latency in microseconds, and requests a second."""
    text = subprocess.run(["wrk", "-t1", "-c%d" % connections, "-d4", "--latency", "http://127.0.0.1:%d%s" % (port, PATH)],
                          check=True, capture_output=True, text=True).stdout
    number, unit = re.search(r"50%\s+([\d.]+)(us|ms|s)", text).groups()
    return (float(number) * {"us": 1, "ms": 1e3, "s": 1e6}[unit],
            float(re.search(r"Requests/sec:\s+([\d.]+)", text).group(1)))


def wait_until_open(process, port):
    while True:
        check_running(process)
        try:
            socket.create_connection(("127.0.0.1", port)).close()
            return
        except OSError:
            time.sleep(0.05)


def poll_each_second(port, clients, stopped):
    """Many clients with a connection each, as observatory programs ask."""
    request = ("GET %s HTTP/1.1\r\nHost: localhost\r\n\r\n" % PATH).encode()
    connections = [socket.create_connection(("127.0.0.1", port)) for _ in range(clients)]
    while not stopped.wait(1):
        for connection in connections:
            connection.sendall(request)
            connection.recv(4096)
    for connection in connections:
        connection.close()


def network(world, stop, binaries):
    port = free_port()
    world.env["ORVALIS_HTTP_PORT"] = str(port)
    program = world.start("--port", world.link, program="orvalisd")
    del world.env["ORVALIS_HTTP_PORT"]
    wait_until_open(program, port)
    peer = subprocess.Popen([binaries + "/beast_server"], stdout=subprocess.PIPE, text=True)
    peer_port = int(peer.stdout.readline())
    latency, peer_latency = load(port, 1)[0], load(peer_port, 1)[0]
    row("issafe on one connection (an empty server: %.0f us)" % peer_latency, "%.0f us" % latency, "< 300 us",
        latency < 300)
    rate, peer_rate = load(port, 16)[1], load(peer_port, 16)[1]
    row("issafe on 16 connections (an empty server: %.0f/s)" % peer_rate, "%.0f/s" % rate, "> 10000/s", rate > 10_000)
    stop(peer)
    stopped = threading.Event()
    poller = threading.Thread(target=poll_each_second, args=(port, 64, stopped))
    poller.start()
    time.sleep(2)
    share = processor_share(program.pid, 20)
    row("processor time with 64 clients once a second", "%.2f %%" % share, "< 1 %", share < 1)
    stopped.set()
    poller.join()
    stop(program)
