"""The real Windows program under Wine, between the simulated unit and a reader."""

import os
import shutil
import sqlite3
import subprocess
import sys
import time
import unittest
from pathlib import Path

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "integration"))
from harness import PATIENCE, Case  # noqa: E402

WINDOWS_BIN = os.environ.get("ORVALIS_WINDOWS_BIN", os.path.join(os.getcwd(), "build", "windows", "bin"))
WINE = os.environ.get("WINELOADER", "/usr/lib/wine/wine64")
PROGRAM = os.path.join(WINDOWS_BIN, "orvalis.exe")
# In the order of their classes' last digits, see recording_objects.cpp.
OBJECTS = ("Profile", "util", "Serial")
CLASSES = r"HKEY_LOCAL_MACHINE\Software\Classes"
PORT = 12  # beyond COM9, where the plain name reaches nothing


def windows_path(path):
    return "Z:" + path.replace("/", "\\")


class WindowsCase(Case):
    """The unit's line is COM12. The settings are in a folder of the test's own, or in the system's store."""

    def setUp(self):
        super().setUp()
        name = os.path.join(os.environ["WINEPREFIX"], "dosdevices", "com%d" % PORT)
        if os.path.lexists(name):
            os.remove(name)
        os.symlink(self.link, name)
        self.addCleanup(os.remove, name)
        self.env["ORVALIS_PROFILE_DIR"] = windows_path(self.profile)

    def wine(self, *words):
        return subprocess.run([WINE, *words], env=self.env, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=PATIENCE)

    def program(self, *options):
        return self.launch(WINE, PROGRAM, *options)

    def headless(self, *options):
        return self.program("--headless", "--json", "--port", str(PORT), *options)

    def run_program(self, *options, given=None, env=None):
        return subprocess.run([WINE, PROGRAM, *options], env=env or self.env, input=given or "", capture_output=True,
                              text=True, timeout=PATIENCE)

    def end(self, program):
        """Asks the program to end, as the task manager does; returns its exit code and the seconds that it took."""
        begin = time.monotonic()
        self.wine("taskkill", "/IM", "orvalis.exe")
        return program.process.wait(PATIENCE), time.monotonic() - begin


class SerialLine(WindowsCase):
    def test_a_poll_over_the_real_line_and_its_loss(self):
        unit, program = self.evening(), self.headless()
        self.event(program, "connected to COM%d" % PORT)
        reading = self.reading(program)
        self.assertEqual((reading["sky_c"], reading["diff_c"], reading["rain"], reading["unit_unsafe"], len(reading["frame"])),
                         (-20, 25, 120, False, 117))
        unit.tell("set RB 1")
        self.reading(program, lambda r: r["unit_unsafe"])
        unit.kill()
        self.assertIn("the port COM12 has vanished; the adapter was unplugged", self.event(program, "lost")["event"])
        self.event(program, "Not connected, AutoConnect enabled, starting wait to reconnect: ")
        self.assertEqual(self.end(program)[0], 0)

    def test_says_which_failure_it_was(self):
        for port, text in (("99", "the port COM99 does not exist"), ("NUL", "NUL is not a serial port"),
                           ("300", "there is no serial port number 300")):
            program = self.program("--headless", "--json", "--port", port)
            self.assertIn(text, self.event(program, "connect failed: ")["event"])
            self.end(program)

    def test_its_lines_end_as_windows_lines_do(self):
        self.unit("--fast")
        with subprocess.Popen([WINE, PROGRAM, "--headless", "--json", "--port", str(PORT)], env=self.env,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as program:
            self.assertTrue(program.stdout.readline().endswith(b"}\r\n"))
            self.wine("taskkill", "/IM", "orvalis.exe")
            program.wait(PATIENCE)


class Settings(WindowsCase):
    def test_a_folder_of_ones_own_and_the_systems_store_are_apart(self):
        text = 'C:\\Töne Ω\\雨.wav'
        self.assertEqual(self.run_program("profile", "set", "g_sRainSounds", text).returncode, 0)
        self.assertTrue(os.path.exists(os.path.join(self.profile, "Orvalis.Weather.ini")))
        self.assertEqual(self.run_program("profile", "get", "g_sRainSounds").stdout, text + "\n")
        del self.env["ORVALIS_PROFILE_DIR"]
        self.assertEqual(self.run_program("profile", "set", "g_sRainSounds", "-", given=text + "\n").returncode, 0)
        self.assertEqual(self.run_program("profile", "get", "g_sRainSounds").stdout, text + "\n")
        stored = self.wine("reg", "query", r"HKCU\Software\Orvalis\Orvalis.Weather", "/v", "RegVer").stdout
        self.assertRegex(stored, r"RegVer\s+REG_SZ\s+2\.18")
        self.wine("reg", "delete", r"HKCU\Software\Orvalis", "/f")

    def test_everything_may_stand_below_letters_of_every_kind(self):
        place = os.path.join(self.folder, "Dach über Ω 雨")
        os.mkdir(place)
        program = shutil.copy(PROGRAM, place)
        self.env["ORVALIS_PROFILE_DIR"] = windows_path(os.path.join(place, "Profil ñ"))
        self.set_all({"g_lFullLog": "1", "g_sFullLogPath": windows_path(place), "g_lOneLineLog": "1",
                      "g_sOneLineLogPath": windows_path(place)})
        self.evening()
        running = self.launch(WINE, program, "--headless", "--json", "--port", str(PORT))
        self.reading(running, lambda r: r["ambient_c"] == 5)
        self.assertEqual(self.end(running)[0], 0)
        for name, text in (("Orvalis.txt", " AmbT = 5.0 "), ("orvalis_single.txt", "    5.0 ")):
            self.assertIn(text, Path(place, name).read_text("utf-8"))
        history = sqlite3.connect(os.path.join(place, "Profil ñ", "history.sqlite"))
        self.addCleanup(history.close)
        self.assertIn((500,), history.execute("SELECT ambient FROM cycle").fetchall())


class DriverObjects(WindowsCase):
    """Beside the driver platform: its objects are used, in this order, with these arguments."""

    def setUp(self):
        super().setUp()
        self.calls_file = os.path.join(self.folder, "calls")
        self.env["ORVALIS_CALLS"] = windows_path(self.calls_file)
        del self.env["ORVALIS_PROFILE_DIR"]
        library = windows_path(os.path.join(WINDOWS_BIN, "recording_objects.dll")).replace("\\", r"\\")
        made, gone = "", "[-HKEY_CURRENT_USER\\Software\\OrvalisTests]\n"
        for digit, name in enumerate(OBJECTS, 1):
            class_id = "{6B0E1D5C-3D0E-4A53-9C57-6F6D2E1F0A0%d}" % digit
            by_name, by_id = CLASSES + "\\DriverHelper." + name, CLASSES + "\\CLSID\\" + class_id
            made += '[%s\\CLSID]\n@="%s"\n' % (by_name, class_id)
            made += '[%s\\InprocServer32]\n@="%s"\n"ThreadingModel"="Apartment"\n' % (by_id, library)
            gone += "[-%s]\n[-%s]\n" % (by_name, by_id)
        self.addCleanup(self.import_keys, gone)
        self.import_keys(made)

    def import_keys(self, text):
        path = os.path.join(self.folder, "keys.reg")
        Path(path).write_text("REGEDIT4\n\n" + text)
        self.assertEqual(self.wine("reg", "import", windows_path(path)).returncode, 0)

    def calls(self, of=""):
        return [line for line in Path(self.calls_file).read_text("utf-8").split("\n") if line.startswith(of)]

    def test_the_calls_of_a_run(self):
        unit = self.unit("--fast")
        program = self.headless()
        self.event(program, "connected to COM%d" % PORT)
        self.reading(program)
        self.assertEqual(self.end(program)[0], 0)

        profile = self.calls("Profile")
        self.assertEqual(profile[:5], ["Profile made", 'Profile.DeviceType = "Weather"',
                                       'Profile.Register("Orvalis.Weather", "Orvalis")',
                                       'Profile.GetValue("Orvalis.Weather", "RegVer", "")',
                                       'Profile.WriteValue("Orvalis.Weather", "RegVer", "2.18", "")'])
        self.assertIn('Profile.WriteValue("Orvalis.Weather", "TempMax", "5.0", "Capabilities")', profile)
        self.assertEqual(profile[-3:], ['Profile.WriteValue("Orvalis.Weather", "Position", "12", "")',
                                        'Profile.WriteValue("Orvalis.Weather", "Temp", "5", "")', "Profile released"])
        every = self.calls()
        self.assertLess(every.index('Profile.Register("Orvalis.Weather", "Orvalis")'), every.index("util made"))
        self.assertLess(every.index("util made"), every.index(profile[3]))

        serial = [call for call in self.calls("Serial.") if call != "Serial.Connected"]
        self.assertEqual(serial[:14], [
            "Serial.Port = %d" % PORT, "Serial.Speed = 9600", "Serial.ReceiveTimeout = 4", "Serial.Connected = -1",
            "Serial.ClearBuffers()", 'Serial.Transmit("#")', 'Serial.Transmit("\x06")', "Serial.ReceiveCounted(1)",
            'Serial.Transmit("p")', 'Serial.Transmit("p")', "Serial.ClearBuffers()", 'Serial.Transmit(":")',
            'Serial.Transmit("F")', 'Serial.ReceiveTerminated("#")'])
        self.assertEqual(serial[-1], "Serial.Connected = 0")
        self.assertEqual(every.count("Serial released"), 1)

    def test_a_silent_unit_holds_nothing_up(self):
        unit, program = self.polled_evening()
        unit.tell("fault silent 60")
        asked = len(self.recorded(" rx "))
        self.wait_until(lambda: len(self.recorded(" rx ")) > asked, "the object waits for an answer")
        code, seconds = self.end(program)
        self.assertEqual(code, 0)
        self.assertLess(seconds, 3)

    def test_failures_are_the_objects_own_words(self):
        result = self.run_program("profile", "set", "g_sRainApp", "refused")
        self.assertEqual(result.returncode, 1)
        self.assertIn('"DriverHelper.Profile", WriteValue: the value is refused', result.stderr)
        program = self.program("--headless", "--json", "--port", "99")
        self.assertIn("the port COM99 cannot be opened: \"DriverHelper.Serial\", Connected: COM99 is not there",
                      self.event(program, "connect failed: ")["event"])
        self.end(program)
        unit, program = self.polled_evening()
        unit.kill()
        self.assertIn("the line is gone", self.event(program, "lost")["event"])
        self.assertEqual(self.end(program)[0], 0)


class Panel(WindowsCase):
    def test_closes_with_its_place_kept(self):
        program = self.program("--demo")
        self.wait_until(lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Orvalis$"],
                                               capture_output=True, check=False).stdout, "the panel is seen")
        self.assertEqual(self.end(program)[0], 0)
        self.assertEqual(self.run_program("profile", "get", "Left").stdout, "100\n")


if __name__ == "__main__":
    unittest.main()
