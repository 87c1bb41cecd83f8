"""The INDI driver in a real indiserver, as INDI's own tools see it: with the real program, and with sources that are none."""

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

# From a cause to the status that clients see: ten seconds of age, and two between questions.
SOON = 12


class Source:
    """Stands in for the program: sends `parts` to every request, `pause` seconds apart, and closes the connection."""

    UUID = "01234567-89ab-cdef-0123-456789abcdef"

    def __init__(self):
        self.server = socket.create_server(("127.0.0.1", 0))
        self.port = self.server.getsockname()[1]
        self.pause = 0
        self.say()
        threading.Thread(target=self.run, daemon=True).start()

    def say(self, **changed):
        """An observation but for what is `changed`."""
        body = json.dumps({"station": "Dome", "uuid": self.UUID, "age_s": 1, "safe": True, "reasons": [], "values":
                           dict.fromkeys(("ambient_c", "humidity_percent", "dew_point_c", "wind_m_s", "wind_gust_m_s",
                                          "cloud_cover_percent", "sky_c"), 10), "words": {"rain": None}, **changed})
        self.parts = [b"HTTP/1.1 200 OK\r\nContent-Length: %d\r\n\r\n" % len(body), body.encode()]

    def run(self):
        while True:
            connection = self.server.accept()[0]
            threading.Thread(target=self.answer, args=(connection,), daemon=True).start()

    def answer(self, connection):
        with connection:
            try:
                connection.recv(65536)
                for part in self.parts:
                    connection.sendall(part)
                    time.sleep(self.pause)
            except OSError:
                pass


class Indi(Case):
    def setUp(self):
        super().setUp()
        self.env["HOME"] = self.folder
        self.indi_port = free_port()

    def server(self):
        server = self.launch("indiserver", "-p", str(self.indi_port), "-u", self.folder + "/indi",
                             BIN + "/indi_orvalis_weather")
        self.wait_until(lambda: self.get("DEVICE_ADDRESS.PORT"), "the driver")
        return server

    def get(self, name):
        """The value of a property, None when there is none."""
        result = subprocess.run(["indi_getprop", "-p", str(self.indi_port), "-t", "1", "-1", "Orvalis." + name],
                                capture_output=True, text=True, timeout=10)
        return result.stdout.strip() if result.returncode == 0 else None

    def write(self, assignment):
        subprocess.run(["indi_setprop", "-p", str(self.indi_port), "-t", "1", "Orvalis." + assignment],
                       capture_output=True, timeout=10, check=False)

    def sees(self, status, reason):
        """Waits for the status with a reason in which this text occurs."""
        end = time.monotonic() + SOON
        while True:
            seen = (self.get("WEATHER_STATUS.WEATHER_SAFETY"), self.get("SAFETY_REASONS.REASONS"))
            if seen[0] == status and reason in (seen[1] or ""):
                self.assertEqual(self.get("SAFETY_STATUS.SAFETY"), status)
                return
            self.assertLess(time.monotonic(), end, "wanted %s, %s; seen %s" % (status, reason, seen))
            time.sleep(0.2)

    def test_the_program_from_before_its_start_to_after_its_end(self):
        del self.env["ORVALIS_HTTP_PORT"]
        port = free_port()
        self.set_all({"Network/Port": str(port), "SafeHoldSeconds": "1"})
        self.server()
        self.write("DEVICE_ADDRESS.ADDRESS;PORT=127.0.0.1;%d" % port)
        self.sees("Alert", "no answer from Orvalis: ")
        unit, program = self.evening(), self.daemon()
        self.sees("Ok", "Safe")
        self.assertEqual(float(self.get("WEATHER_PARAMETERS.WEATHER_TEMPERATURE")), 5)
        unit.tell("set R 900")
        self.sees("Alert", "rain 900 counts")
        # Nothing that a client writes turns this into Ok, or takes it away.
        for assignment in ("WEATHER_OVERRIDE.OVERRIDE=On", "WEATHER_UPDATE.PERIOD=0", "WEATHER_SAFETY.MAX_OK=1",
                           "WEATHER_PARAMETERS.WEATHER_SAFETY=0", "CONNECTION.CONNECT;DISCONNECT=Off;On"):
            self.write(assignment)
        self.sees("Alert", "rain 900 counts")
        self.assertEqual(self.get("CONNECTION.CONNECT"), "On")
        unit.tell("set R 120")
        self.sees("Ok", "Safe")
        unit.tell("stall 15")
        self.sees("Alert", "no reading for ")
        self.assertIsNone(self.get("WEATHER_PARAMETERS.WEATHER_TEMPERATURE"))
        self.wait_until(lambda: self.get("WEATHER_STATUS.WEATHER_SAFETY") == "Ok", "safe after the silence")
        for way in (signal.SIGSTOP, signal.SIGCONT, signal.SIGKILL):
            program.process.send_signal(way)
            self.sees(*(("Ok", "Safe") if way == signal.SIGCONT else ("Alert", "no answer from Orvalis")))
        self.daemon()
        self.sees("Ok", "Safe")

    def test_a_source_that_is_no_orvalis_or_another_one(self):
        source = Source()
        server = self.server()
        self.write("DEVICE_ADDRESS.ADDRESS;PORT=127.0.0.1;%d" % source.port)
        self.sees("Ok", "Safe")
        for parts, pause, reason in (
                ([b"HTTP/1.1 200 OK\r\n\r\n", b'{"safe": true}'], 0, "no observation"),
                ([b"HTTP/1.1 200 OK\r\n\r\n", b" " * 5_000_000], 0, "sends too much"),
                ([b"HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:9/\r\nContent-Length: 0\r\n\r\n"], 0, "status 302"),
                ([bytes((b,)) for b in b"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}"], 1, "longer than 4 seconds")):
            source.parts, source.pause = parts, pause
            self.sees("Alert", reason)
        source.pause = 0
        source.say(station="Next dome <&>", uuid=Source.UUID.replace("0", "f"))
        self.sees("Alert", "another station")
        # Which one is followed outlives the driver, whatever is in INDI's configuration.
        server.stop()
        with open(self.folder + "/.indi/Orvalis_config.xml", "a+", encoding="utf-8") as file:
            file.seek(0)
            saved = file.read()
            file.truncate(0)
            file.write(saved.replace("</INDIDriver>", '<newSwitchVector device="Orvalis" name="STATION_FOLLOW">'
                                     '<oneSwitch name="FOLLOW">On</oneSwitch></newSwitchVector></INDIDriver>'))
        self.server()
        self.sees("Alert", "another station")
        self.write("CONFIG_PROCESS.CONFIG_LOAD=On")
        self.sees("Alert", "another station")
        self.write("STATION_FOLLOW.FOLLOW=On")
        self.sees("Ok", "Safe")
        self.assertEqual(self.get("STATION.NAME"), "Next dome <&>")

    def test_says_that_it_is_unsafe_before_it_ends(self):
        source = Source()
        os.makedirs(self.folder + "/.indi")
        with open(self.folder + "/.indi/Orvalis_config.xml", "w", encoding="utf-8") as file:
            file.write('<INDIDriver><newTextVector device="Orvalis" name="DEVICE_ADDRESS"><oneText name="PORT">%d'
                       '</oneText></newTextVector></INDIDriver>' % source.port)
        for end in (lambda driver: driver.process.stdin.close(), lambda driver: driver.process.terminate()):
            driver = Process([BIN + "/indi_orvalis_weather"], env=self.env, stdin=True)
            self.addCleanup(driver.kill)
            driver.say('<getProperties version="1.7"/>')
            driver.line(lambda line: line.strip() == "Ok", SOON)  # of a light
            end(driver)
            driver.line(lambda line: line.strip() == "Alert", SOON)
            driver.process.wait(SOON)


if __name__ == "__main__":
    unittest.main()
