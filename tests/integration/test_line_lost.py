"""An adapter that is pulled out: shown, counted down from, and connected again."""

import json
import time
import unittest

from harness import Case


class LineLost(Case):
    def test_a_pulled_out_line_comes_back_by_itself(self):
        unit = self.unit("--fast")
        program = self.headless()
        self.reading(program)
        unit.tell("drop 5")
        lost = self.event(program, "lost: ")
        self.assertIn(self.link, lost["event"])
        self.event(program, "Not connected, AutoConnect enabled, starting wait to reconnect: ")
        self.event(program, "Reconnect succeeded: ", patience=200)
        self.reading(program)

    def test_what_a_stuck_line_kept_is_not_a_reading(self):
        unit = self.unit("--fast")
        unit.measure({"R": "100", "RB": "0"})
        program = self.headless()
        self.reading(program)
        unit.tell("stall 15")
        time.sleep(5)  # long enough for a question that is answered before the rain
        program.forget()
        unit.measure({"R": "900", "RB": "1"})
        said = []
        program.line(lambda line: said.append(line) or "late: An answer from the unit came 1" in line)
        self.assertEqual([line for line in said if "frame" in json.loads(line)], [])
        self.assertTrue(self.reading(program)["unsafe"])

    def test_a_unit_that_lost_power_gets_its_switches_again(self):
        unit = self.unit("--fast")
        with open(self.link, "wb", buffering=0) as line:
            line.write(b":AL1:AH0")
        program = self.headless()
        self.reading(program, lambda r: "AH=0" in r["frame"] and "AL=1" in r["frame"])
        unit.tell("power 12")
        self.event(program, "the unit answers again")
        reading = self.reading(program)
        self.assertIn("AH=0", reading["frame"])
        self.assertIn("AL=1", reading["frame"])


if __name__ == "__main__":
    unittest.main()
