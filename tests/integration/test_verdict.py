"""The verdict of the real program on the real line: the same reasons in the lines, the log and the roof's file."""

import json
import os
import re
import signal
import time
import unittest

from harness import Case

# What the unit is made to do, the reason that appears, and what makes it go.
CAUSES = [
    ({"RB": "1"}, "unit_alarm", {"RB": "0"}),
    ({"R": "400"}, "rain", {"R": "100"}),
    ({"WND": "60"}, "wind", {"WND": "0"}),
    ({"LGT": "100"}, "light", {"LGT": "1000"}),
    ({"TP": "5"}, "clouds", {"TP": "-30"}),
    ({"AR": "0"}, "relay_off", {"AR": "1"}),
]


class Verdict(Case):
    def setUp(self):
        super().setUp()
        for key, value in {"SafeHoldSeconds": "0", "VerdictWind": "1", "VerdictLight": "1", "VerdictClouds": "1",
                           "g_lOneLineLog": "1", "g_sOneLineLogPath": self.folder, "g_sFullLogPath": self.folder}.items():
            self.set(key, value)

    def verdict(self, program, matches):
        """The next change of the verdict whose reasons match."""
        return json.loads(program.line(lambda line: "verdict" in json.loads(line) and
                                       matches(json.loads(line)["reasons"])))

    def roof(self):
        with open(os.path.join(self.folder, "orvalis_single.txt"), encoding="utf-8") as file:
            values = file.read().split()
        return values[-1], int(values[13])  # the roof-close request, the seconds since the last frame

    def logged(self):
        with open(os.path.join(self.folder, "orvalis_verdicts.txt"), encoding="utf-8") as file:
            return re.findall(r"(?m)^\S+ (?:safe|unsafe (.+?):) ", file.read())

    def test_each_reason_comes_and_goes_under_one_name_everywhere(self):
        unit = self.unit("--fast")
        unit.measure({"R": "100", "WND": "0", "LGT": "1000", "TP": "-30", "TA": "5", "RB": "0"})
        program = self.headless()
        self.assertEqual(self.verdict(program, lambda r: True)["reasons"], ["no_connection"])
        self.verdict(program, lambda r: r == [])
        self.wait_until(lambda: self.roof()[0] == "0", "the roof's file says that it is safe")  # with the next reading
        for cause, reason, remedy in CAUSES:
            unit.measure(cause)
            change = self.verdict(program, lambda r, reason=reason: reason in r)
            self.assertEqual(change["verdict"], "unsafe")
            reading = self.reading(program)
            self.assertEqual((reading["safe"], reading["unsafe"], reason in reading["reasons"]), (False, True, True))
            self.wait_until(lambda: self.roof()[0] == "1", "the roof's file asks to close for " + reason)
            unit.measure(remedy)
            self.assertEqual(self.verdict(program, lambda r: r == [])["verdict"], "safe")
        unit.tell("fault silent 60")
        self.verdict(program, lambda r: r == ["stale"])
        self.wait_until(lambda: self.roof()[0] == "1" and self.roof()[1] > 12, "the record goes on without frames")
        unit.tell("fault none")
        self.verdict(program, lambda r: r == [])
        self.assertEqual(self.run_program("profile", "get", "ForceUnsafe").stdout, "0\n")
        self.assertEqual(program.stop()[0], 0)
        self.assertEqual(json.loads([line for line in program.all_lines if "verdict" in line][-1])["reasons"], ["stopping"])
        self.assertEqual(self.roof()[0], "1")
        lines = self.logged()
        for reason in ["no_connection", *(c[1] for c in CAUSES), "stale", "hold", "stopping"]:
            self.assertTrue(any(reason in line for line in lines), (reason, lines))

    def test_a_stopped_program_wakes_up_unsafe(self):
        unit = self.unit("--fast")
        unit.measure({"R": "100", "WND": "0", "LGT": "1000", "TP": "-30", "TA": "5", "RB": "0"})
        program = self.headless()
        self.verdict(program, lambda r: r == [])
        program.process.send_signal(signal.SIGSTOP)
        time.sleep(11)  # longer than a reading is of now
        program.process.send_signal(signal.SIGCONT)
        self.assertEqual(self.verdict(program, lambda r: True)["verdict"], "unsafe")
        self.verdict(program, lambda r: r == [])

    def test_damaged_frames_never_say_safe(self):
        unit = self.unit("--fast")
        unit.measure({"R": "400", "RB": "1", "WND": "0"})
        program = self.headless()
        self.reading(program)
        unit.tell("fault garbage 25")
        end = time.monotonic() + 25
        while time.monotonic() < end:
            line = json.loads(program.line(lambda line: True))
            self.assertNotEqual(line.get("verdict"), "safe")
            self.assertFalse(line.get("safe"), line)


if __name__ == "__main__":
    unittest.main()
