"""An adapter that is pulled out: shown, counted down from, and connected again."""

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


if __name__ == "__main__":
    unittest.main()
