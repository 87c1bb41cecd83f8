"""The program and a real MQTT broker, or something that only looks like one."""

import contextlib
import getpass
import json
import os
import signal
import socket
import subprocess
import threading
import time
import unittest

from harness import BIN, Case, Process
from ports import free_port

AVAILABILITY = "orvalis/Dome_A/availability"


class FakeBroker:
    """Accepts connections and treats each with `behave(connection)`."""

    def __init__(self, behave, address="127.0.0.1", port=0):
        self.server = socket.create_server((address, port))
        self.port = self.server.getsockname()[1]
        self.connections = []
        threading.Thread(target=self._serve, args=(behave,), daemon=True).start()

    def _serve(self, behave):
        while True:
            try:
                connection = self.server.accept()[0]
                self.connections.append(connection)
                behave(connection)
            except OSError:
                if self.server.fileno() < 0:
                    return

    def close(self):
        with contextlib.suppress(OSError):
            self.server.shutdown(socket.SHUT_RDWR)  # otherwise it listens while accept waits
        for one in (self.server, *self.connections):
            one.close()


def never_answers(connection):
    pass


def closes_after_connect(connection):
    connection.recv(1000)
    connection.close()


def sends_a_megabyte(connection):
    connection.recv(1000)
    connection.sendall(b"\x30\xff\xff\xff\x7f" + b"x" * 1_000_000)


def sends_a_byte_a_second(connection):
    def drip():
        with contextlib.suppress(OSError):
            for byte in b"\x20\x7f" + bytes(100):
                time.sleep(1)
                connection.sendall(bytes([byte]))
    threading.Thread(target=drip, daemon=True).start()


class Mqtt(Case):
    def setUp(self):
        super().setUp()
        self.port = free_port()
        self.set_all({"Network/Station": "Dome A", "SafeHoldSeconds": "1", "Mqtt/Enabled": "1",
                      "Mqtt/Host": "localhost", "Mqtt/Port": str(self.port)})

    def broker(self, *lines):
        path = os.path.join(self.folder, "broker.conf")
        with open(path, "w", encoding="utf-8") as file:
            file.write("\n".join(["listener %d 127.0.0.1" % self.port, "persistence false",
                                  "user " + getpass.getuser(), *lines]))
        process = Process(["/usr/sbin/mosquitto", "-c", path])
        self.addCleanup(process.kill)
        self.wait_until(lambda: socket.socket().connect_ex(("127.0.0.1", self.port)) == 0, "broker")
        return process

    def listen(self, *options):
        """A subscriber to everything: retained or not, topic, payload."""
        process = Process(["mosquitto_sub", "-h", "localhost", "-p", str(self.port), "-t", "#", "-F", "%r %t %p",
                           *options])
        self.addCleanup(process.kill)
        return process

    def kept(self, *options):
        """What the broker keeps, by topic."""
        late = subprocess.run(["mosquitto_sub", "-h", "localhost", "-p", str(self.port), "-t", "#", "-F", "%r %t %p",
                               "-W", "1", "--retained-only", *options], capture_output=True, text=True, check=False)
        return {topic: payload for _, topic, payload in (line.split(" ", 2) for line in late.stdout.splitlines())}

    def assert_on_its_ticks(self, program, seconds):
        """Working cycles come every two seconds, however the broker behaves."""
        program.forget()
        begin = time.monotonic()
        times = []
        while time.monotonic() - begin < seconds:
            self.reading(program, patience=4)
            times.append(time.monotonic())
        gaps = [b - a for a, b in zip(times, times[1:])]
        self.assertLess(max(gaps), 3, gaps)

    def trouble(self, program, text):
        self.assertIn(text, self.event(program, "MQTT publishes nothing: ")["event"])

    def certificates(self):
        """An authority of our own, a certificate of it for localhost, and another authority."""
        for words in ("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=ours "
                      "-keyout ca.key -out ca.pem",
                      "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=other "
                      "-keyout other.key -out other.pem",
                      "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=localhost "
                      "-addext subjectAltName=DNS:localhost -addext basicConstraints=critical,CA:FALSE "
                      "-CA ca.pem -CAkey ca.key -keyout broker.key -out broker.pem"):
            subprocess.run(["openssl", *words.split()], cwd=self.folder, capture_output=True, check=True)
        return (os.path.join(self.folder, name) for name in ("ca.pem", "other.pem", "broker.pem", "broker.key"))

    def test_a_subscriber_sees_what_is_of_now_and_that_the_program_is_gone(self):
        ca, other, certificate, key = self.certificates()
        passwords = os.path.join(self.folder, "passwords")
        subprocess.run(["mosquitto_passwd", "-c", "-b", passwords, "dome", "geheim"], check=True, capture_output=True)
        encrypted = ("password_file " + passwords, "certfile " + certificate, "keyfile " + key)
        broker = self.broker(*encrypted)
        login = ("--cafile", ca, "-u", "dome", "-P", "geheim")
        self.set_all({"Mqtt/Tls": "1", "Mqtt/User": "dome", "Mqtt/Password": "geheim", "Mqtt/CaFile": other})
        self.evening()
        program = self.daemon()
        self.trouble(program, "is not from an authority that is trusted")
        program.stop()

        for settings, why in (({"Mqtt/CaFile": ca, "Mqtt/Host": "127.0.0.1"}, "is for another name"),
                              ({"Mqtt/Host": "localhost", "Mqtt/Password": "falsch"}, "does not accept the user name")):
            self.set_all(settings)
            program = self.daemon()
            self.trouble(program, why)
            program.stop()

        self.set("Mqtt/Password", "geheim")
        listener = self.listen(*login)
        program = self.daemon()
        discovery = listener.line(lambda line: "homeassistant/device/orvalis" in line)
        self.assertIn('"dev_cla":"safety"', discovery)
        self.assertIn('"online"', listener.line(lambda line: AVAILABILITY in line))
        verdict = listener.line(lambda line: "Dome_A/verdict" in line and '"safe":true' in line)
        self.assertTrue(verdict.startswith("0 "))
        reading = json.loads(listener.line(lambda line: "Dome_A/observation" in line).split(" ", 2)[2])
        self.assertEqual((reading["values"]["ambient_c"], reading["safe"]), (5, True))
        self.assertEqual(sorted(topic.split("/")[-1] for topic in self.kept(*login)), ["availability", "config"])

        # The broker is gone for a while, and later stands still.
        broker.stop()
        self.trouble(program, "")
        self.assert_on_its_ticks(program, 6)
        self.broker(*encrypted)
        self.event(program, "MQTT works again")
        self.assertIn('"online"', self.kept(*login)[AVAILABILITY])

        program.stop(signal.SIGKILL)
        self.wait_until(lambda: '"offline"' in self.kept(*login)[AVAILABILITY], "offline")
        secrets = [line for line in program.all_lines + program.errors if "geheim" in line]
        self.assertEqual(secrets, [])
        listed = self.run_program("profile", "list").stdout
        self.assertNotIn("geheim", listed)

    def test_the_last_word_is_offline_and_a_stopped_broker_gets_nothing_old(self):
        broker = self.broker("allow_anonymous true")
        listener = self.listen()
        self.evening()
        program = self.daemon()
        listener.line(lambda line: "Dome_A/verdict" in line and '"safe":true' in line)
        broker.process.send_signal(signal.SIGSTOP)
        self.assert_on_its_ticks(program, 8)
        self.trouble(program, "no answer")
        broker.process.send_signal(signal.SIGCONT)
        listener.forget()
        self.event(program, "MQTT works again")
        words = [line.split(" ", 2) for line in listener.all_lines]
        times = [json.loads(payload)["time"] for _, topic, payload in words if topic.endswith("/observation")]
        self.assertEqual(times, sorted(times), "an old word after a new one")
        self.assertEqual(program.stop()[0], 0)
        listener.line(lambda line: "Dome_A/verdict" in line and '"stopping"' in line)
        self.assertIn('"offline"', listener.line(lambda line: AVAILABILITY in line))

    def test_what_only_looks_like_a_broker_holds_nothing_up(self):
        self.evening()
        for behave, why in ((never_answers, "no answer"), (closes_after_connect, "ended the connection"),
                            (sends_a_megabyte, "MQTT"), (sends_a_byte_a_second, "no answer")):
            with self.subTest(behave.__name__):
                broker = FakeBroker(behave)
                self.set("Mqtt/Port", str(broker.port))
                program = self.daemon()
                self.trouble(program, why)
                self.assert_on_its_ticks(program, 6)
                code, took = program.stop()
                self.assertEqual(code, 0)
                self.assertLess(took, 3)
                broker.close()

    def test_a_password_goes_to_another_machine_only_where_that_is_allowed(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as route:
            route.connect(("192.0.2.1", 9))  # sends nothing; the address that it would come from is not loopback
            own_address = route.getsockname()[0]
        received = []
        broker = FakeBroker(lambda connection: received.append(connection.recv(1000)), own_address)
        self.addCleanup(broker.close)
        self.set_all({"Mqtt/Host": own_address, "Mqtt/Port": str(broker.port), "Mqtt/User": "dome",
                      "Mqtt/Password": "geheim"})
        self.evening()
        program = self.daemon()
        self.trouble(program, "over an unencrypted line")
        program.stop()
        self.assertEqual(set(received), {b""})
        self.set("Mqtt/AllowPlainPassword", "1")
        self.daemon()
        self.wait_until(lambda: b"geheim" in received[-1], "password")

    def test_a_silent_name_server_holds_nothing_up_and_the_end_does_not_wait(self):
        self.set("Mqtt/Host", "broker.example")
        self.env.update(LD_PRELOAD=BIN + "/silent_names.so", SILENT_NAMES=os.path.join(self.folder, "names"),
                        ASAN_OPTIONS=os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0")
        self.evening()
        program = self.daemon()
        self.wait_until(lambda: os.path.exists(os.path.join(self.folder, "names")), "look-up")
        self.assert_on_its_ticks(program, 6)
        code, took = program.stop()
        self.assertEqual(code, 0)
        self.assertLess(took, 3)


if __name__ == "__main__":
    unittest.main()
