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
        program.line(lambda line: said.append(line) or "late: An answer of the unit came 1" in line)
        self.assertEqual([line for line in said if "frame" in json.loads(line)], [])
        self.assertTrue(self.reading(program)["unsafe"])


if __name__ == "__main__":
    unittest.main()
