"""The simulated unit itself, on its line."""

import os
import re
import select
import termios
import time
import unittest
from pathlib import Path

from harness import BIN, PATIENCE, Case

SCENARIOS = os.path.join(os.path.dirname(__file__), "..", "..", "simulator", "scenarios")


class Line:
    """The line as a program opens it."""

    def __init__(self, path):
        self.fd = os.open(path, os.O_RDWR | os.O_NOCTTY)

    def ask(self, question, last):
        """Sends `question`; what comes back, up to and with the byte `last`."""
        os.write(self.fd, question)
        answer = b""
        while not answer.endswith(last) and select.select([self.fd], [], [], PATIENCE)[0]:
            answer += os.read(self.fd, 1)
        return answer


class Unit(Case):
    def test_answers_in_time_vanishes_comes_back_and_tidies_up(self):
        os.symlink("/nowhere", self.link)  # left over by another run
        unit = self.unit("--scenario", os.path.join(SCENARIOS, "clear.scenario"))
        line = Line(self.link)
        self.addCleanup(lambda: os.close(line.fd))
        modes = termios.tcgetattr(line.fd)[3]
        self.assertEqual(modes & (termios.ECHO | termios.ICANON | termios.ISIG), 0, "raw before anybody makes it so")
        self.assertEqual(line.ask(b"#\x06", b"W"), b"W")
        begin = time.monotonic()
        self.assertEqual(line.ask(b":F", b"#"), b"HUM=0575 LGT=1000 R=0220 WND=0003 TP=-01500 TTP=+01050 TA=+01000 AH=1 "
                                                b"HB=0 AR=1 RB=0 AW=1 AL=0 AC=1 Trg=+03691 FW=21#")
        # 117 characters of ten bits at 9600 bits a second.
        self.assertGreaterEqual(time.monotonic() - begin, 0.121875)

        unit.tell("drop 0.2")
        self.assertFalse(os.path.lexists(self.link))
        self.assertTrue(select.select([line.fd], [], [], PATIENCE)[0], "no hang-up")
        with self.assertRaises(OSError):
            os.write(line.fd, b":")
        path = unit.line(lambda text: text.startswith("/dev/"))
        self.assertEqual(os.readlink(self.link), path)
        os.close(line.fd)
        line = Line(self.link)
        self.assertEqual(line.ask(b":SX-012#\x06", b"W"), b"W")
        self.assertEqual(unit.stop()[0], 0)
        self.assertFalse(os.path.lexists(self.link))
        events = re.sub(r"(?m)^\S+ ", "", Path(self.record).read_text("utf-8"))
        for event in ('rx "#\\x06"\nhandshake\nanswer "W"\n', "gone\n", "command SX -12\nhandshake\n"):
            self.assertIn(event, events)

    def test_refuses_to_replace_a_file(self):
        Path(self.link).write_text("kept")
        unit = self.launch(BIN + "/orvalis-unit", "--link", self.link)
        self.assertEqual((unit.process.wait(PATIENCE), unit.all_lines), (1, []))
        self.assertEqual(Path(self.link).read_text(), "kept")


if __name__ == "__main__":
    unittest.main()
