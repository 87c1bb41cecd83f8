"""Ports of loopback for the servers of tests, of tests that run beside each other too."""

import random
import socket

_taken = []


def free_ports(count):
    """The first of so many in a row. Below 32768: that is what fits into the program's URLs, and where the system takes
    no ports for clients. A port is this process's until it ends, as it binds a name beside it which nothing else uses."""
    while True:
        first = random.randint(20000, 32000)
        claims = []
        try:
            for port in range(first, first + count):
                claims.append(socket.socket(socket.AF_UNIX))
                claims[-1].bind("\0orvalis-test-port-%d" % port)
                with socket.socket() as probe:
                    # A process that another thread starts has it too for a moment, which then keeps out nobody.
                    probe.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
                    probe.bind(("127.0.0.1", port))
        except OSError:
            for claim in claims:
                claim.close()
            continue
        _taken.extend(claims)
        return first


def free_port():
    return free_ports(1)
