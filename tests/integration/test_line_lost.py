"""An adapter that is pulled out: shown, and connected to again as soon as it is back."""

import json
import unittest

from harness import Case


class LineLost(Case):
    def test_a_pulled_out_line_comes_back_by_itself(self):
        unit, program = self.polled_evening()
        unit.tell("drop 5")
        lost = self.event(program, "lost: ")
        self.assertIn(self.link, lost["event"])
        self.event(program, "Not connected, AutoConnect enabled, starting wait to reconnect: ")
        self.event(program, "the adapter is there again, at " + self.link)
        self.event(program, "Reconnect succeeded: ")  # long before the countdown's two minutes
        self.reading(program)
        unit.stop()
        self.event(program, "lost: ")
        self.evening(TA="7.00")
        self.reading(program, lambda reading: reading["ambient_c"] == 7)

    def test_what_a_stuck_line_kept_is_not_a_reading(self):
        unit, program = self.polled_evening()
        unit.tell("stall 15")
        asked = len(self.recorded(" frame"))
        self.wait_until(lambda: len(self.recorded(" frame")) > asked, "a question that is answered before the rain")
        program.forget()
        unit.measure({"R": "900", "RB": "1"})
        said = []
        program.line(lambda line: said.append(line) or "late: An answer from the unit came 1" in line)
        self.assertEqual([line for line in said if "frame" in json.loads(line)], [])
        self.assertTrue(self.reading(program)["unsafe"])


if __name__ == "__main__":
    unittest.main()
