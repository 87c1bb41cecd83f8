"""orvalisd with all that it can serve at a time: the HTTP server, and an MQTT broker over TLS."""

import getpass
import os
import subprocess
import time

from network_load import free_port, wait_until_open
from report import processor_share, resident_megabytes, row, run, start, stop

KEY = "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 "


def start_broker(folder, port):
    for words in (KEY + "-subj /CN=bench -keyout ca.key -out ca.pem",
                  KEY + "-subj /CN=localhost -addext subjectAltName=DNS:localhost -addext "
                  "basicConstraints=critical,CA:FALSE -CA ca.pem -CAkey ca.key -keyout broker.key -out broker.pem"):
        run("openssl", *words.split(), cwd=folder)
    with open(folder + "/broker.conf", "w") as file:
        file.write("listener %d 127.0.0.1\nallow_anonymous true\npersistence false\nuser %s\n"
                   "certfile %s/broker.pem\nkeyfile %s/broker.key\n" % (port, getpass.getuser(), folder, folder))
    process = start("/usr/sbin/mosquitto", "-c", folder + "/broker.conf", stderr=subprocess.DEVNULL)
    wait_until_open(port)
    return process


def with_broker(world, seconds):
    folder, port = world.folder + "/broker", free_port()
    os.mkdir(folder)
    process = start_broker(folder, port)
    for key, value in (("Enabled", "1"), ("Host", "localhost"), ("Port", str(port)), ("Tls", "1"),
                       ("CaFile", folder + "/ca.pem")):
        run(world.binaries + "/orvalis", "profile", "set", "Mqtt/" + key, value, env=world.env)
    program = world.start("--port", world.link, program="orvalisd", env=dict(world.env, ORVALIS_HTTP_PORT=str(free_port())))
    run("mosquitto_sub", "-h", "localhost", "-p", str(port), "--cafile", folder + "/ca.pem", "-t", "orvalis/#", "-C", "3",
        "-W", "60")
    time.sleep(10)
    share, memory = processor_share(seconds, program.pid), resident_megabytes(program.pid)
    stop(program)
    run(world.binaries + "/orvalis", "profile", "set", "Mqtt/Enabled", "0", env=world.env)
    stop(process)
    row("processor time, orvalisd with MQTT over TLS", "%.3f %%" % share, "< 0.1 %", share < 0.1)
    row("resident memory, orvalisd with HTTP and MQTT over TLS", "%.1f MB" % memory, "< 25 MB", memory < 25)
