"""The observation as an automation object of its own on Windows."""

import os
import time
import unittest

from test_com import ComCase, servers
from test_program import WindowsCase, windows_path

SCRIPT = windows_path(os.path.join(os.path.dirname(os.path.abspath(__file__)), "observation.vbs"))


class Observation(ComCase):
    def observe(self, *words):
        """What the script prints. Wine's script host sometimes says nothing at all; then once more."""
        for _ in range(3):
            output = self.wine("cscript", "//nologo", SCRIPT, *words).stdout.splitlines()
            if output:
                break
        self.assertEqual(output[-1:], ["end"], output)
        return output[:-1]

    def test_a_script_reads_everything_and_counts_as_a_client(self):
        unit = self.unit("--fast")
        unit.measure({"TA": "5.00", "TP": "-20.00", "R": "200", "WND": "20", "RB": "0"})
        self.set("SafeHoldSeconds", "1")
        output = self.observe("connect")
        self.assertEqual(output[0], "Safe Boolean True")
        kind, since = output[1].split()[1:]
        self.assertEqual(kind, "Double")
        self.assertLess(abs(time.time() - int(since)), 120)
        self.assertRegex("\n".join(output[2:]), r"^Explanation \nAgeSeconds Double [0-4]\nSource unit\nambient_c 5\n")
        # 18 mph are 8.04672 m/s.
        for line in ("sky_c -20", "difference_c 25", "wind_m_s 8.04672", "rain_counts 200", "cloud_cover_percent 0",
                     "ambient_c 0 "):
            self.assertIn(line, output)
        self.assertRegex(output[-1], "^pressure 9 ")
        self.wait_until(lambda: not servers(), "the program stayed without a client")

    def test_before_the_first_reading_it_is_old_and_knows_no_value(self):
        output = self.observe()
        self.assertEqual(output[0], "Safe Boolean False")
        self.assertEqual(output[2:6], ["Reason no_connection", "Explanation not connected to the unit",
                                       "AgeSeconds Double 1000000000", "Source none"])
        self.assertEqual([line.split()[:2] for line in output[6:]], [["ambient_c", "13"], ["pressure", "9"]])


class Registration(WindowsCase):
    def test_comes_and_goes_with_the_other_class(self):
        key = r"HKLM\Software\Classes\Orvalis.Observation\CLSID"
        ComCase.register("/RegServer")
        class_id = self.wine("reg", "query", key, "/ve").stdout.split()[-1]
        places = [key, r"HKLM\Software\Classes\CLSID\%s\LocalServer32" % class_id,
                  r"HKLM\Software\Classes\Interface\{FCE1C41F-336C-45A8-8CC8-DF3139666F3B}"]
        for step, code in (("/RegServer", 0), ("/UnregServer", 1)):
            ComCase.register(step)
            for place in places:
                for view in ("/reg:32", "/reg:64"):
                    self.assertEqual(self.wine("reg", "query", place, view).returncode, code, (step, place, view))


if __name__ == "__main__":
    unittest.main()
