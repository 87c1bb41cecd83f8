"""The history that the headless program stores, read as anybody can read it."""

import datetime
import json
import os
import sqlite3
import time
import unittest
from pathlib import Path

from harness import Case

BATCH_SECONDS = 60


class History(Case):
    def stored(self, columns="*", table="cycle"):
        connection = sqlite3.connect("file:%s/history.sqlite?mode=ro" % self.profile, uri=True)
        try:
            return connection.execute("SELECT %s FROM %s ORDER BY time" % (columns, table)).fetchall()
        finally:
            connection.close()

    @staticmethod
    def told(program):
        """The verdicts that the program printed."""
        told = [json.loads(line) for line in program.all_lines]
        return [(line["verdict"] == "safe", " ".join(line["reasons"]), line["explanation"])
                for line in told if "verdict" in line]

    def test_a_kill_loses_at_most_the_last_minute_and_damage_is_survived(self):
        unit = self.unit("--fast", "--speed", "60")
        program = self.headless()
        said = {}
        begin = time.monotonic()
        while time.monotonic() - begin < 1.25 * BATCH_SECONDS:
            reading = self.reading(program)
            said[int(datetime.datetime.fromisoformat(reading["time"]).timestamp() * 1000)] = reading
        program.process.kill()
        killed_at = time.time() * 1000
        program.process.wait()

        rows = self.stored("time, sky, ambient, dew_point, wind, gust, humidity, conditions")
        self.assertGreater(len(rows), 20)
        self.assertLess(killed_at - rows[-1][0], 1000 * (BATCH_SECONDS + 10))
        names = ("sky_c", "ambient_c", "dew_point_c", "wind_mph", "wind_gust_mph", "humidity_percent")
        for row in rows:
            # The line and the row are made in the same cycle, milliseconds apart.
            moment = min(said, key=lambda m: abs(m - row[0]))
            self.assertLess(abs(moment - row[0]), 200)
            reading = said[moment]
            for name, hundredths in zip(names, row[1:]):
                self.assertAlmostEqual(reading[name], hundredths / 100, delta=0.0051, msg=name)
            # What the unit itself sent, cut from its line.
            frame = reading["frame"]
            self.assertEqual((row[1], row[2]), (int(frame[37:43]), int(frame[58:64])))
            self.assertEqual(bool(row[7] & 16), frame[83] != "0")
        verdicts = self.stored("safe, reasons, explanation, time, until", "verdict")
        self.assertEqual([row[:3] for row in verdicts], self.told(program)[:len(verdicts)])
        self.assertIn((0, "hold"), [row[:2] for row in verdicts])
        self.assertLess(killed_at - verdicts[-1][4], 1000 * (BATCH_SECONDS + 10))
        for before, after in zip(verdicts, verdicts[1:]):
            self.assertEqual(before[4], after[3])  # one at any time

        for name in ("history.sqlite", "history.sqlite-wal"):  # the journal alone would mend the rest
            Path(self.profile, name).write_bytes(b"not a database any more" * 500)
        program = self.headless()
        self.assertIn("-damaged-", self.event(program, "the history was damaged")["event"])
        self.reading(program)
        self.assertEqual(program.stop()[0], 0)  # which stores what there is
        self.assertIn(len(self.stored()), (1, 2))
        verdicts = self.stored("safe, reasons, explanation", "verdict")
        self.assertEqual(verdicts, self.told(program))
        self.assertEqual(verdicts[-1][:2], (0, "stopping"))
        self.assertEqual(len([name for name in os.listdir(self.profile) if "-damaged-" in name and
                              name.endswith(".sqlite")]), 1)

    def test_made_up_values_are_not_stored_and_a_missing_folder_is_said(self):
        program = self.program("--headless", "--json", "--demo")
        self.reading(program)
        program.stop()
        self.assertEqual(self.stored(), [])
        self.assertEqual(self.stored("safe, reasons", "verdict")[-1], (0, "demo stopping"))
        os.remove(self.profile + "/history.sqlite")
        os.mkdir(self.profile + "/history.sqlite")  # where the file has to be
        self.unit("--fast")
        program = self.headless()
        self.event(program, "cannot read the history")
        self.reading(program)
        self.assertEqual(program.stop()[0], 0)


if __name__ == "__main__":
    unittest.main()
