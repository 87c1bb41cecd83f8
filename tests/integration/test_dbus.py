"""The automation object on a real session bus, used by other processes."""

import os
import re
import signal
import subprocess
import textwrap
import time
import unittest
from pathlib import Path

from harness import BIN, PATIENCE, Case, Process

SERVICE, PATH = "org.orvalis.Weather", "/org/orvalis/Weather"
OBSERVATION = "org.orvalis.Observation1"
DOCUMENT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "docs", "dbus.md")
PROPERTIES = "org.freedesktop.DBus.Properties"


class Client(Process):
    """A client that stays on the bus; see tests/clients/weather_client.cpp."""

    def __init__(self, env):
        super().__init__([BIN + "/weather_client"], env=env, stdin=True)

    def ask(self, command):
        self.say(command)
        return self.line(lambda line: True)


class BusCase(Case):
    """A bus of its own for each test; it may start the program, with the unit on the test's line."""

    def setUp(self):
        super().setUp()
        services = os.path.join(self.folder, "share", "dbus-1", "services")
        os.makedirs(services)
        Path(services, SERVICE + ".service").write_text("[D-BUS Service]\nName=%s\nExec=%s --automation --port %s\n" % (
            SERVICE, BIN + "/orvalis", self.link))
        self.env["XDG_DATA_DIRS"] = os.path.join(self.folder, "share")
        self.env["QT_QPA_PLATFORM"] = "offscreen"
        self.env["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=%s/bus" % self.folder
        self.start_bus()

    def start_bus(self):
        self.bus = self.launch("dbus-daemon", "--session", "--nofork", "--print-address=1",
                               "--address=" + self.env["DBUS_SESSION_BUS_ADDRESS"])
        self.bus.line(lambda line: line.startswith("unix:"))

    def client(self):
        client = Client(self.env)
        self.addCleanup(client.kill)
        return client

    def answer(self, *words):
        result = subprocess.run(words, env=self.env, capture_output=True, text=True, timeout=PATIENCE)
        return (result.stdout or result.stderr).strip()

    def gdbus(self, method, *arguments, path=PATH, of=SERVICE):
        return self.answer("gdbus", "call", "--session", "-d", of, "-o", path, "-m", method, *arguments)

    def call_setup(self):
        """A client that asks for the setup and waits for its end."""
        return self.launch("gdbus", "call", "--session", "-d", SERVICE, "-o", PATH, "-m", SERVICE + ".SetupDialog")

    def member(self, name):
        return self.answer("busctl", "--user", "get-property", SERVICE, PATH, SERVICE, name)

    def observed(self, name):
        return self.answer("busctl", "--user", "get-property", SERVICE, PATH, OBSERVATION, name)

    def owner(self):
        """The process that has the name, or none."""
        found = re.search(r"uint32 (\d+)", self.gdbus("org.freedesktop.DBus.GetConnectionUnixProcessID", SERVICE,
                                                      path="/", of="org.freedesktop.DBus"))
        return int(found[1]) if found else None


class StartedByAPerson(BusCase):
    def test_members_answer_with_their_types_and_errors(self):
        _, program = self.polled_evening(R="371")
        # From the values above: 48.867 % shown as 48.9, 18 mph by 0.8689762.
        rows = {"Safe": "b true", "AmbientTemperature": "d 5", "Clouds": "d 0", "Name": 's "Orvalis"',
                "Precipitation": "b true", "RelativeHumidity": "d 0.49", "WindVelocity": "d 15.6416",
                "Connected": "b true", "WindSpeedCloseD": "i 12", "WindSpeedWarn": "d 0.278", "Temperature": "d 5"}
        for name, value in rows.items():
            self.assertEqual(self.member(name), value)
        everything = self.gdbus(PROPERTIES + ".GetAll", SERVICE)
        self.assertEqual(set(re.findall(r"'(\w+)': <", everything)), set(rows))

        for name in ("BarometricPressure", "DewPoint", "InsideTemperature", "WindDirection"):
            self.assertIn("org.orvalis.Weather.Error.NotImplemented:  is not implemented by this Orvalis server.",
                          self.gdbus(PROPERTIES + ".Get", SERVICE, name))
        self.assertEqual(self.gdbus(SERVICE + ".Halt"), "()")
        self.assertIn("Error.RunTime: No setup dialog", self.gdbus(SERVICE + ".SetupDialog"))

        wrong = [((PROPERTIES + ".Get", SERVICE, "Pressure"), "UnknownProperty"),
                 ((PROPERTIES + ".Get", "org.nobody", "Safe"), "UnknownInterface"),
                 ((PROPERTIES + ".Set", SERVICE, "Safe", "<true>"), "PropertyReadOnly"),
                 ((PROPERTIES + ".Set", SERVICE, "Connected", "<1>"), "InvalidArgs"),
                 ((SERVICE + ".Halt", "1"), "InvalidArgs"), ((SERVICE + ".Stop",), "UnknownMethod"),
                 (("org.nobody.Halt",), "UnknownInterface")]
        for call, error in wrong:
            self.assertIn("org.freedesktop.DBus.Error." + error, self.gdbus(*call), call)
        self.assertIn("UnknownObject", self.gdbus(SERVICE + ".Halt", path="/org/nobody"))
        self.assertEqual(program.stop()[0], 0)

    def test_a_lost_bus_is_said_and_served_again_when_it_is_back(self):
        self.unit("--fast")
        program = self.daemon()
        self.wait_until(self.owner, "the name has an owner")
        self.bus.kill()
        os.remove(self.folder + "/bus")
        self.event(program, "clients cannot use the D-Bus interface")
        self.reading(program)
        self.start_bus()
        self.event(program, "clients can use the D-Bus interface again", patience=2 * PATIENCE)
        self.assertEqual(self.client().ask("get Precipitation"), "Precipitation = false")

    def test_a_silent_bus_holds_up_nobody(self):
        self.unit("--fast")
        os.kill(self.bus.process.pid, signal.SIGSTOP)  # the system goes on taking its connections
        program = self.daemon()
        self.event(program, "clients cannot use the D-Bus interface: the session bus does not answer")
        self.reading(program)
        self.assertEqual(program.stop()[0], 0)

    def test_safe_is_of_now_while_the_setup_is_open_and_never_old(self):
        unit, program = self.evening(), self.program("--port", self.link)
        self.wait_until(self.owner, "the name has an owner")  # a call before would have the bus start another program
        client = self.client()
        self.wait_until(lambda: client.ask("get Safe") == "Safe = true", "it never was safe")
        self.call_setup()
        asked = len(self.recorded(" frame"))
        self.wait_until(lambda: len(self.recorded(" frame")) > asked + 6, "thirteen seconds of polling")
        self.assertEqual(client.ask("get Safe"), "Safe = true")
        # The first answer after a sleep: no frame has come, because the unit sleeps as well.
        for process in (program, unit):
            process.process.send_signal(signal.SIGSTOP)
        client.say("get Safe")
        time.sleep(11)
        program.process.send_signal(signal.SIGCONT)
        self.assertEqual(client.line(lambda line: True), "Safe = false")
        unit.process.send_signal(signal.SIGCONT)
        self.wait_until(lambda: client.ask("get Safe") == "Safe = true", "it is not safe again")
        unit.process.send_signal(signal.SIGSTOP)
        self.wait_until(lambda: client.ask("get Safe") == "Safe = false", "the silence was not noticed")

    def test_a_call_that_waits_holds_up_nobody(self):
        unit = self.unit("--fast")
        unit.tell("fault silent 60")
        program = self.headless()
        self.wait_until(self.owner, "the name has an owner")
        waiting, leaving, asking = self.client(), self.client(), self.client()
        waiting.say("set Connected 1")
        leaving.say("set Connected 1")
        self.assertEqual(asking.ask("get Connected"), "Connected = true")  # being connected
        leaving.kill()
        self.assertEqual(asking.ask("get Precipitation"), "Precipitation = false")
        self.assertTrue(waiting.lines.empty(), "the unit is silent for four seconds")
        self.assertEqual(waiting.line(lambda line: True),
                         "error org.orvalis.Weather.Error.NotConnected: The Orvalis unit is not connected")
        self.assertEqual(asking.ask("get Connected"), "Connected = false")
        unit.tell("fault none")
        self.assertEqual(waiting.ask("set Connected 1"), "done")
        waiting.stop(signal.SIGKILL)
        self.reading(program)  # a person started it: it stays
        self.assertEqual(program.stop()[0], 0, program.errors)


class StartedByTheBus(BusCase):
    def test_works_for_its_clients_and_ends_with_the_last(self):
        self.unit("--fast")
        first = self.client()
        second = self.client()
        self.assertEqual(first.ask("set Connected 1"), "done")
        self.assertEqual(second.ask("get Connected"), "Connected = true")
        process = self.owner()
        # The second one still needs the link.
        self.assertEqual(first.ask("set Connected 0"), "done")
        self.assertEqual(second.ask("get Connected"), "Connected = true")
        second.stop(signal.SIGKILL)
        self.wait_until(lambda: first.ask("set Connected 0") != "done", "the killed client still counts")
        self.assertEqual(first.ask("get Connected"), "Connected = false")
        self.assertEqual(self.owner(), process)
        first.stop(signal.SIGKILL)
        self.wait_until(lambda: not os.path.exists("/proc/%d" % process), "the program stayed without a client")

    def test_clients_that_come_and_go_are_all_answered(self):
        self.unit("--fast")
        for _ in range(5):  # each starts the program, or meets the one that is ending
            self.assertEqual(self.member("Name"), 's "Orvalis"')
        several = [self.client() for _ in range(4)]
        for client in several:
            client.say("get Precipitation")
        for client in several:
            self.assertEqual(client.line(lambda line: True), "Precipitation = false")
        self.assertIsNotNone(self.owner())
        for client in several:
            client.kill()
        self.wait_until(lambda: self.owner() is None, "the program stayed without a client")

    def test_who_reads_the_observation_alone_is_a_client_too(self):
        reader = self.client()
        self.assertEqual(reader.ask("get Observation1.Safe"), "Observation1.Safe = false")
        process = self.owner()
        time.sleep(1)
        self.assertEqual(self.owner(), process)
        reader.kill()
        self.wait_until(lambda: not os.path.exists("/proc/%d" % process), "the program stayed without a client")


class Observed(BusCase):
    def setUp(self):
        super().setUp()
        self.set("SafeHoldSeconds", "1")

    def test_is_read_and_announced_as_of_now(self):
        unit = self.unit("--fast")
        unit.measure({"TA": "5.00", "TTP": "6.25", "TP": "-20.00", "HUM": "520", "R": "200", "WND": "20", "RB": "0"})
        program = self.headless()
        self.wait_until(self.owner, "the name has an owner")
        heard = Process(["gdbus", "monitor", "--session", "-d", SERVICE], env=self.env)
        self.addCleanup(heard.kill)
        announced = r".*PropertiesChanged \('%s', .*'Safe': <%%s>" % OBSERVATION
        heard.line(lambda line: re.match(announced % "true", line))
        # From the values above: 18 mph are 8.04672 m/s.
        rows = {"Safe": "b true", "Reasons": "as 0", "Explanation": 's ""', "Source": 's "unit"'}
        for name, value in rows.items():
            self.assertEqual(self.observed(name), value)
        self.assertRegex(self.observed("AgeSeconds"), r"^d [0-9.]+$")
        kind, since = self.observed("Since").split()
        self.assertEqual(kind, "x")
        self.assertLess(abs(time.time() - int(since) / 1000), PATIENCE)
        values = self.observed("Values")
        for value in ("a{sv} 13 ", '"ambient_c" d 5 ', '"sky_c" d -20 ', '"difference_c" d 25 ', '"wind_m_s" d 8.04672',
                      '"rain_counts" d 200 ', '"cloud_cover_percent" d 0 '):
            self.assertIn(value, values)
        for call, error in [((".Get", OBSERVATION, "Name"), "UnknownProperty"),
                            ((".Set", OBSERVATION, "Safe", "<true>"), "PropertyReadOnly")]:
            self.assertIn("org.freedesktop.DBus.Error." + error, self.gdbus(PROPERTIES + call[0], *call[1:]))

        # An account of now, even before the first tick after a sleep.
        program.process.send_signal(signal.SIGSTOP)
        unit.process.send_signal(signal.SIGSTOP)
        time.sleep(11)
        heard.forget()
        asked = Process(["busctl", "--user", "get-property", SERVICE, PATH, OBSERVATION, "Reasons"], env=self.env)
        self.addCleanup(asked.kill)
        program.process.send_signal(signal.SIGCONT)
        self.assertEqual(asked.line(lambda line: True), 'as 1 "stale"')
        unit.process.send_signal(signal.SIGCONT)
        heard.line(lambda line: re.match(announced % "true", line))
        unit.process.send_signal(signal.SIGSTOP)
        stale = heard.line(lambda line: re.match(announced % "false", line))
        self.assertIn("'Reasons': <['stale']>", stale)
        self.assertLess(float(re.search(r"'AgeSeconds': <([0-9.]+)>", stale).group(1)), 11.5)
        self.assertIn("'Values': <@a{sv} {}>", stale)
        begin = time.monotonic()
        heard.line(lambda line: re.match(announced % "false", line))  # it still says that it works
        self.assertLess(time.monotonic() - begin, 6)
        self.assertEqual(program.stop()[0], 0)
        heard.line(lambda line: "'stopping'" in line)

    def test_the_example_notices_whatever_happens(self):
        with open(DOCUMENT, encoding="utf-8") as file:
            found = re.search(r"A program in Python.*?\n\n((?:    .*\n|\n)+)", file.read())
        script = os.path.join(self.folder, "example.py")
        with open(script, "w", encoding="utf-8") as file:
            file.write(textwrap.dedent(found.group(1)))
        unit = self.unit("--fast")
        unit.measure({"RB": "0"})
        example = Process(["/usr/bin/python3", script], env=self.env)  # the one that has Debian's modules
        self.addCleanup(example.kill)
        example.line(lambda line: line == "safe")
        unit.process.send_signal(signal.SIGSTOP)
        example.line(lambda line: line == "unsafe: no reading for 10 s")
        unit.process.send_signal(signal.SIGCONT)
        example.line(lambda line: line == "safe")
        os.kill(self.owner(), signal.SIGSTOP)
        example.line(lambda line: line == "unsafe: no announcement for 10 s", patience=14)
        os.kill(self.owner(), signal.SIGCONT)
        example.line(lambda line: line == "safe")
        os.kill(self.owner(), signal.SIGKILL)
        example.line(lambda line: line == "unsafe: Orvalis is not running", patience=2)
        example.line(lambda line: line == "safe")  # started anew
        process = self.owner()
        example.kill()
        self.wait_until(lambda: not os.path.exists("/proc/%d" % process), "the program stayed without a client")


if __name__ == "__main__":
    unittest.main()
