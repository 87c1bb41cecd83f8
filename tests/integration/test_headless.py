"""The headless program between the simulated unit and a reader."""

import datetime
import fcntl
import json
import os
import re
import shutil
import signal
import subprocess
import time
import unittest

from harness import BIN, PATIENCE, Case


class Headless(Case):
    def test_readings_are_what_the_unit_measures(self):
        self.set("RainThreshold", "444")
        unit, program = self.evening(HB="2"), self.headless()
        self.event(program, "connected to " + self.link)
        reading = self.reading(program, lambda r: r["ambient_c"] == 5)
        expected = {"source": "unit", "connected": True, "body_c": 6.25, "wind_mph": 18, "heater": "?",
                    "unit_unsafe": False}
        self.assertEqual({name: reading[name] for name in expected}, expected)
        self.assertEqual((len(reading["frame"]), reading["frame"][-1]), (117, "#"))
        self.assertIsNotNone(datetime.datetime.fromisoformat(reading["time"]).utcoffset())
        unit.tell("set RB 1")
        unit.tell("set R 465")
        reading = self.reading(program, lambda r: r["rain_word"] == "Rain")
        self.assertTrue(self.reading(program)["unsafe"])
        self.assertEqual(program.stop(signal.SIGINT)[0], 0)
        self.assertEqual(len(self.recorded(" command SR 444")), 1)
        self.assertEqual(len(self.recorded(" command ")), 9, "each setting is sent once")

    def test_faults_of_the_unit_are_survived_and_nothing_stale_is_said(self):
        unit, program = self.polled_evening()
        for fault in ("short", "cut", "garbage", "slow"):
            unit.tell("fault %s 3" % fault)
            asked = len(self.recorded(" frame"))
            self.wait_until(lambda: len(self.recorded(" frame")) >= asked + 2, "asked again after " + fault)
        unit.tell("fault silent 16")
        asked = len(self.recorded(" rx "))
        # Then an answer that was under way has come and gone.
        self.wait_until(lambda: len(self.recorded(" rx ")) > asked, "a question into the silence")
        program.forget()
        said = []
        program.line(lambda line: said.append(line) or "stale: no complete frame since" in line)
        self.assertEqual([line for line in said if '"frame"' in line], [], "readings in the silence")
        unit.tell("set TA 7.77")
        self.event(program, "fresh again")
        self.reading(program, lambda r: r["ambient_c"] == 7.77)
        self.assertEqual(program.stop()[0], 0)

    def test_demo_mode_needs_no_line(self):
        program = self.program("--headless", "--json", "--demo")
        reading = self.reading(program)
        self.assertEqual((reading["source"], reading["connected"], reading["ambient_c"], reading["sky_c"]),
                         ("demo", False, 5, -9.99))
        self.reading(program, lambda r: r["unsafe"] and r["rain_word"] == "Rain" and r["light_word"] == "Day")
        program.stop()

    def test_times_for_people_are_in_the_desktops_format(self):
        self.env["LC_ALL"] = "en_US.UTF-8"
        program = self.program("--headless", "--demo")
        program.line(lambda line: re.match(r"\d{1,2}:\d\d:\d\d [AP]M  (safe|UNSAFE)", line))

    def test_stops_at_once_whatever_it_waits_for(self):
        unit = self.unit()
        def silence(program):
            self.reading(program)
            unit.tell("fault silent 60")
            asked = len(self.recorded(" rx "))
            self.wait_until(lambda: len(self.recorded(" rx ")) > asked, "a question into the silence")

        waits = {"a connect": ("fault silent 60", lambda p: self.wait_until(lambda: self.recorded(" rx "), "greeted")),
                 "a frame": ("fault none", silence), "nothing": ("fault none", self.reading)}
        for name, (command, reach) in waits.items():
            unit.tell(command)
            program = self.headless()
            reach(program)
            code, seconds = program.stop()
            self.assertEqual(code, 0, name)
            self.assertLess(seconds, 3, name)
        early = dict(self.env, LD_PRELOAD=os.path.join(BIN, "early_signal.so"),
                     ASAN_OPTIONS=os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0")
        self.assertEqual(self.run_program("--headless", env=early).returncode, 0)
        # What was asked to do a single thing and did not must not look as if it had.
        self.assertEqual(self.run_program("profile", "set", "Left", "7", env=early).returncode, -signal.SIGTERM)

    def test_what_nohup_has_ignored_stays_ignored(self):
        self.unit("--fast")
        for words in (["orvalis", "--headless", "--json", "--port", self.link], ["orvalis-unit", "--link", self.link + "2"]):
            program = self.launch("sh", "-c", 'trap "" HUP INT; exec "$0" "$@"', os.path.join(BIN, words[0]), *words[1:])
            program.line(lambda text: '"frame"' in text or text.startswith("/dev/"))
            for number in (signal.SIGHUP, signal.SIGINT):
                program.process.send_signal(number)
            with self.assertRaises(subprocess.TimeoutExpired, msg=words[0]):
                program.process.wait(1)
            self.assertEqual(program.stop()[0], 0)

    def test_a_reader_that_stops_reading_or_goes_does_not_hold_it_up(self):
        self.unit("--fast")
        reader, writer = os.pipe()
        fcntl.fcntl(writer, fcntl.F_SETPIPE_SZ, 4096)  # full after a few lines
        program = subprocess.Popen([BIN + "/orvalis", "--headless", "--json", "--port", self.link], env=self.env,
                                   stdout=writer, stderr=subprocess.DEVNULL)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        os.close(writer)
        for count in (12, 16):
            self.wait_until(lambda: len(self.recorded(" frame")) >= count, "it asks on, %d times" % count)
            if count == 12:
                os.close(reader)
        self.assertIsNone(program.poll())


class SecondStart(Case):
    def test_leaves_the_profile_to_the_first_until_it_is_gone(self):
        first = self.program("--headless", "--json", "--demo")
        self.reading(first)
        second = self.run_program("--headless", "--demo")
        self.assertEqual(second.returncode, 1)
        self.assertIn("already running", second.stderr)
        self.assertIsNone(first.process.poll())
        first.process.kill()
        first.process.wait()
        running = os.path.join(self.profile, "Orvalis.Weather.running")
        left = running + ".rmlock"  # of one that was killed as it took over
        shutil.copy(running, left)
        self.env["TMPDIR"] = os.path.join(self.folder, "long" * 30)  # no name for a second start fits behind it
        os.mkdir(self.env["TMPDIR"])
        third = self.program("--headless", "--json", "--demo")
        self.reading(third)
        self.assertFalse(os.path.exists(left))
        self.assertIn("a second start cannot bring this program to the front", "\n".join(third.all_lines))


class CannotConnect(Case):
    def test_says_which_failure_it_was(self):
        rows = [(self.folder + "/nothing", "does not exist"), (self.folder, "is not a serial port"),
                ("/dev/null", "is not a serial port")]
        for port, text in rows:
            program = self.program("--headless", "--json", "--port", port)
            self.assertIn(text, self.event(program, "connect failed: ")["event"])
            self.event(program, "Not connected, AutoConnect enabled")
            self.assertEqual(program.stop()[0], 0)
            self.assertTrue(any(text in line for line in program.errors), program.errors)


if __name__ == "__main__":
    unittest.main()
