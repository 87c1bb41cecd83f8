"""What a person or another program on the desktop sees: alerts, the panel, the dialog, a port in use."""

import os
import unittest
from pathlib import Path

from harness import Case, ScreenCase
from test_dbus import PROPERTIES, SERVICE, BusCase


class Alerts(Case):
    def script(self, name):
        """A program that writes down what it is called with."""
        path = os.path.join(self.folder, name)
        Path(path).write_text('#!/bin/sh\necho "$0 $*" >> "%s/called"\n' % self.folder)
        os.chmod(path, 0o755)
        return path

    def test_the_program_and_the_sound_of_rain_start(self):
        player, close_roof, sound = self.script("pw-play"), self.script("close roof"), self.folder + "/rain sound.wav"
        Path(sound).touch()
        self.env["PATH"] = self.folder + ":" + self.env["PATH"]
        self.set_all({"g_bchkEnableSounds": "1", "g_bchkRainSounds": "1", "g_sRainSounds": sound,
                      "g_bchkRainApp": "1", "g_sRainApp": close_roof})
        unit = self.unit("--fast")
        unit.measure({"R": "100"})
        program = self.daemon()
        self.reading(program, lambda r: r["rain_word"] == "Dry")
        called = Path(self.folder, "called")
        self.assertFalse(called.exists())
        unit.measure({"R": "900"})
        self.wait_until(lambda: called.exists() and set(called.read_text().splitlines()) ==
                        {player + " " + sound, close_roof + " "}, "both are started")


    def test_the_alert_of_the_verdict_has_its_facts_is_tried_again_and_outlives_the_program(self):
        path = os.path.join(self.folder, "close roof")
        with open(path, "w", encoding="utf-8") as file:
            file.write('#!/bin/sh\nenv > "$0.facts"\n[ -e "$0.tried" ] || { touch "$0.tried"; exit 4; }\n'
                       'sleep 3\necho closed; touch "$0.closed"\n')
        os.chmod(path, 0o755)
        self.set("UnsafeApp", path)
        self.set("NoReadingsApp", path)
        self.unit("--fast").measure({"R": "900"})
        self.env["ORVALIS_TEST"] = "1"  # of a program that was started by an alert itself
        program = self.headless()
        self.event(program, "alert Unsafe: %s ended with code 4; trying again in 10 s" % path)
        with open(path + ".facts", encoding="utf-8") as file:
            facts = file.read().splitlines()
        for fact in ("ALERT=unsafe", "VERDICT=unsafe", "REASONS=unit_alarm,rain", "RAIN_COUNTS=900", "TEST=0"):
            self.assertEqual(facts.count("ORVALIS_" + fact), 1, facts)
        self.event(program, "alert Unsafe: started")
        program.kill()
        self.wait_until(lambda: os.path.exists(path + ".closed"), "it goes on")
        self.assertFalse([line for line in program.all_lines if "No readings" in line])

    def test_a_disk_that_hangs_keeps_no_roof_open(self):
        called, log = Path(self.folder, "called"), Path(self.folder, "orvalis_verdicts.txt")
        self.set_all({"UnsafeApp": self.script("close roof"), "SafeHoldSeconds": "0", "g_sFullLogPath": self.folder})
        unit = self.unit("--fast")
        self.event(self.headless(), "SAFE")
        called.unlink(missing_ok=True)
        log.unlink()
        os.mkfifo(log)  # who opens it waits for a reader
        unit.measure({"R": "900"})
        self.wait_until(called.exists, "it is started")


class Port(Case):
    def test_a_port_in_use_is_said(self):
        self.unit("--fast")
        self.reading(self.daemon())
        second = self.headless("--profile", self.folder + "/other")
        self.assertIn("in use", self.event(second, "connect failed: ")["event"])


class Panel(ScreenCase, BusCase):
    def test_a_second_start_raises_the_panel(self):
        self.program("--demo")
        first = self.window("Orvalis")
        self.program("--demo", "--profile", self.folder + "/other")
        self.wait_until(lambda: self.window("Orvalis") != first, "another panel covers the first")
        second = self.run_program("--demo")
        self.assertEqual(second.returncode, 0, second.stderr)
        self.wait_until(lambda: self.window("Orvalis") == first, "it is uppermost")

    def test_a_picture_is_written(self):
        picture = Path(self.folder, "panel.png")
        self.assertEqual(self.run_program("--demo", "--picture", str(picture)).returncode, 0)
        self.assertTrue(picture.read_bytes().startswith(b"\x89PNG"))

    def test_a_clients_setup_ends_with_ok(self):
        self.program("--demo")
        self.wait_until(self.owner, "the name has an owner")
        call = self.call_setup()
        self.focus("Orvalis Setup")
        self.keys("Return")
        self.assertEqual((call.line(lambda line: True), call.process.wait(60)), ("()", 0))

    def assistant(self):
        return self.xdotool("search", "--onlyvisible", "--name", "^Orvalis Assistant$")

    def setting(self, key):
        return self.run_program("profile", "get", key).stdout.strip()

    def test_the_assistant_holds_nobody_up_and_comes_again_until_it_was_skipped(self):
        program = self.program()
        self.focus("Orvalis Assistant")
        self.wait_until(self.owner, "clients are served")
        self.assertEqual(self.gdbus(PROPERTIES + ".Get", SERVICE, "Connected"), "(<false>,)")
        program.kill()
        self.assertEqual(self.setting("Assistant"), "1")
        demo = self.program("--demo")
        self.window("Orvalis")
        self.assertEqual(self.assistant(), [])
        demo.stop()
        program = self.program()
        self.focus("Orvalis Assistant")
        before = Path(self.profile, "Orvalis.Weather.ini").read_text("utf-8")
        self.keys("Escape")
        self.wait_until(lambda: self.setting("Assistant") == "0", "it is skipped")
        after = Path(self.profile, "Orvalis.Weather.ini").read_text("utf-8")
        self.assertEqual(after, before.replace("Assistant=1", "Assistant=0"))

    def test_a_unit_is_searched_and_chosen_by_the_keyboard_alone(self):
        self.unit("--fast")
        program = self.program()
        self.focus("Orvalis Assistant")
        self.keys("alt+p", "=" + self.link, "Tab", "alt+s")
        self.wait_until(lambda: self.recorded(" handshake"), "the search greets it")
        self.keys("Return", "Return", "Return", "Return")
        self.wait_until(lambda: self.setting("Assistant") == "0", "it is stored")
        self.assertEqual([self.setting(key) for key in ("COM Port", "AutoConnect", "AlwaysOnTop", "Centigrade")],
                         [self.link, "1", "False", "True"])
        self.wait_until(lambda: self.recorded(" frame"), "it is connected")
        program.stop()
        self.program()
        self.window("Orvalis")
        self.assertEqual(self.assistant(), [])


if __name__ == "__main__":
    unittest.main()
