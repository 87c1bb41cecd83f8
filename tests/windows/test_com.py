"""The automation object on Windows, used by scripts and by a C++ program, each a process of its own."""

import os
import shutil
import subprocess
import time
import unittest
from pathlib import Path

from test_program import PATIENCE, PORT, PROGRAM, WINE, WINDOWS_BIN, WindowsCase, windows_path

# Each step leaves one line: its text with the type and the value, or with the error. Without the last line the script
# did not get through.
SCRIPT = """Dim weather, value
On Error Resume Next
Set weather = CreateObject("Orvalis.Weather")
%s
WScript.Echo "end"
"""
STEP = """value = Empty
Err.Clear
%s
If Err.Number = 0 Then
  WScript.Echo "{0} = " & TypeName(value) & " " & CStr(value)
Else
  WScript.Echo "{0} raised " & Hex(Err.Number) & " [" & Err.Source & "] " & Err.Description
End If
"""
CLIENT = os.path.join(WINDOWS_BIN, "com_client.exe")


def servers():
    """The processes of the program in this Windows, whoever started them. Others of the machine may run it too."""
    own = ("WINEPREFIX=" + os.environ["WINEPREFIX"]).encode()
    found = []
    for name in os.listdir("/proc"):
        try:
            process = Path("/proc", name)
            if (b"orvalis.exe" in (process / "cmdline").read_bytes().lower().split(b"\0")[0] and
                    own in (process / "environ").read_bytes().split(b"\0")):
                found.append(int(name))
        except (OSError, ValueError):
            continue
    return found


class ComCase(WindowsCase):
    @classmethod
    def setUpClass(cls):
        cls.register("/RegServer")

    @classmethod
    def tearDownClass(cls):
        cls.register("/UnregServer")

    @staticmethod
    def register(switch):
        result = subprocess.run([WINE, PROGRAM, switch], capture_output=True, text=True, timeout=PATIENCE, check=False)
        assert result.returncode == 0, result.stderr

    def setUp(self):
        super().setUp()
        self.set("COM Port", str(PORT))
        self.addCleanup(self.wait_until, lambda: not servers(), "a program stayed")

    def hold(self):
        """A client that keeps an object until it is let go."""
        return self.launch(WINE, CLIENT, "hold", stdin=True)

    def script(self, *steps):
        """What a script prints that reads these members, or does what is written. Wine's script host sometimes says
        nothing at all; then once more."""
        path = os.path.join(self.folder, "steps.vbs")
        Path(path).write_text(SCRIPT % "".join(
            STEP.format(step) % (("" if " " in step else "value = ") + "weather." + step) for step in steps))
        for _ in range(3):
            output = self.wine("cscript", "//nologo", windows_path(path)).stdout.splitlines()
            if output:
                break
        self.assertEqual(output[-1:], ["end"], output)
        return output[:-1]


class Members(ComCase):
    def test_scripts_and_compiled_clients_see_the_same(self):
        _, program = self.polled_evening(R="371")
        not_served = " raised 80040400 [Orvalis]  is not implemented by this Orvalis server."
        members = [
            "Safe = Boolean True", "AmbientTemperature = Single 5", "BarometricPressure" + not_served,
            "Clouds = Single 0", "DewPoint" + not_served, "InsideTemperature" + not_served, "Name = String Orvalis",
            "Precipitation = Boolean True", "RelativeHumidity = Single 0.49", "WindDirection" + not_served,
            "WindVelocity = Single 15.64157", "Connected = Boolean True", "WindSpeedCloseD = Long 12",
            "WindSpeedWarn = Double 0.278", "Temperature = Double 5", "Halt = Empty "]
        self.assertEqual(self.script(*(line.split()[0] for line in members)), members)
        # The automation system's own numbers: no such member, wrong count, wrong type, not to be put.
        wrong = self.script("Pressure", "Halt 1", "Connected = weather.Name", "Safe = True")
        self.assertEqual([line.split(" [")[0] for line in wrong[:3]],
                         ["Pressure raised 1B6", "Halt 1 raised 1C2", "Connected = weather.Name raised D"])
        self.assertIn("raised", wrong[3])
        # Wine does not carry the text of an error from process to process here, as Windows does.
        self.assertEqual(self.wine(CLIENT, "early").stdout.splitlines(), [
            "Safe 0 -1", "AmbientTemperature 0 5", "Name 0 Orvalis", "WindSpeedCloseD 0 12", "WindSpeedWarn 0 0.278",
            "ISupportErrorInfo 1", "DewPoint 80040400 ", "Halt 0 "])
        # A person started this program: it stays, and so does its link.
        self.assertEqual(self.script("Connected = False", "Connected"), ["Connected = False = Empty ",
                         "Connected = Boolean True"])
        self.reading(program)
        self.assertEqual(self.end(program)[0], 0)


class StartedForAClient(ComCase):
    def test_works_and_ends_with_its_client(self):
        self.unit("--fast")
        gone = "Connected = False raised 80040402 [Orvalis] The Orvalis unit is not connected"
        self.assertEqual(self.script("Connected", "Connected = True", "Connected", "Connected = False", "Connected"), [
            "Connected = Boolean False", "Connected = True = Empty ", "Connected = Boolean True", gone,
            "Connected = Boolean False"])
        self.wait_until(lambda: not servers(), "the program stayed without a client")

    def test_is_one_for_all_and_ends_with_the_last(self):
        self.unit("--fast")
        clients = [self.hold() for _ in range(3)]
        for client in clients:
            client.line(lambda line: line == "held")
        self.wait_until(lambda: len(servers()) == 1, "one program for all")
        first = servers()
        # The others may still need the link.
        self.assertEqual(self.script("Connected = True", "Connected = False", "Connected")[1:],
                         ["Connected = False = Empty ", "Connected = Boolean True"])
        self.assertEqual(servers(), first)
        for client in clients:
            client.say("")
            client.process.wait(PATIENCE)  # Wine does not notice that a killed client is gone
        left = time.monotonic()
        self.wait_until(lambda: not servers(), "the program stayed without a client")
        self.assertLess(time.monotonic() - left, 8)

    def test_that_cannot_start_ends_at_once(self):
        settings = Path(self.profile, "Orvalis.Weather.ini")
        settings.write_text(settings.read_text("utf-8").replace("WindSpeedCloseD=12", "WindSpeedCloseD=twelve"), "utf-8")
        # A client gets no object; a window that asks somebody to close it would keep the program.
        self.script("Safe")
        self.wait_until(lambda: not servers(), "the program stayed without a client")
        self.assertRegex(Path(WINDOWS_BIN, "orvalis_errors.txt").read_text("utf-8").splitlines()[-1],
                         "could not start: .*\"WindSpeedCloseD\" cannot be used: ")

    def test_a_unit_that_is_silent_is_not_connected(self):
        self.unit("--fault", "silent:1:60")
        self.assertEqual(self.script("Connected = True", "Name"),
                         ["Connected = True raised 80040402 [Orvalis] The Orvalis unit is not connected",
                          "Name = String Orvalis"])


class Registration(WindowsCase):
    def test_is_whole_or_not_at_all(self):
        def query(key, *options):
            return self.wine("reg", "query", key, *options)

        key = r"HKLM\Software\Classes\Orvalis.Weather\CLSID"
        ComCase.register("/RegServer")
        class_id = query(key, "/ve").stdout.split()[-1]
        self.assertIn('orvalis.exe"',
                      query(r"HKLM\Software\Classes\CLSID\%s\LocalServer32" % class_id, "/ve").stdout.lower())
        # Again, as an upgrade does, where this user alone had another one.
        own = [r"HKCU\Software\Classes\CLSID\%s" % class_id, r"HKCU\Software\Classes\Orvalis.Weather"]
        for place in own:
            self.assertEqual(self.wine("reg", "add", place + r"\LocalServer32", "/ve", "/d", "old.exe").returncode, 0)
        ComCase.register("/RegServer")
        for place in own:
            self.assertEqual(query(place).returncode, 1, "it hides the one for all users")
        # Programs of 32 bits have a part of the registry to themselves.
        types = r"HKLM\Software\Classes\TypeLib\{68C10D0F-6203-4FDC-B903-9FC45F5749E2}\1.0\0\win32"
        interface = r"HKLM\Software\Classes\Interface\{4F2EFF6B-E5B9-467A-84D3-8CBD65CF7BDD}"
        self.assertIn("orvalis.exe\\2", query(types, "/ve").stdout.lower())
        self.assertIn("{00020424-0000-0000-C000-000000000046}",
                      query(interface + r"\ProxyStubClsid32", "/ve", "/reg:32").stdout)
        # A copy in a second folder takes the registration over, and gives back none that is not its own.
        copy = shutil.copy(PROGRAM, self.folder)
        self.assertEqual(self.wine(copy, "/UnregServer").returncode, 0)
        self.assertEqual(query(key).returncode, 0, "another folder's registration is gone")
        ComCase.register("-unregserver")
        for place in (key, r"HKLM\Software\Classes\CLSID\%s" % class_id, types, interface):
            for view in ("/reg:32", "/reg:64"):
                self.assertEqual(query(place, view).returncode, 1, place + view)


if __name__ == "__main__":
    unittest.main()
