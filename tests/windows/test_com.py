"""The automation object on Windows, used by scripts and by a C++ program, each a process of its own."""

import os
import shutil
import subprocess
import tempfile
import time
import unittest

from test_program import PATIENCE, PORT, PROGRAM, WINE, WINDOWS_BIN, Process, WindowsCase, windows_path

SCRIPT = windows_path(os.path.join(os.path.dirname(os.path.abspath(__file__)), "members.vbs"))
CLIENT = os.path.join(WINDOWS_BIN, "com_client.exe")
MEMBERS = ("Safe", "AmbientTemperature", "BarometricPressure", "Clouds", "DewPoint", "InsideTemperature", "Name",
           "Precipitation", "RelativeHumidity", "WindDirection", "WindVelocity", "Connected", "WindSpeedCloseD",
           "WindSpeedWarn", "Temperature", "Halt")


def servers():
    """The processes of the program in this Windows, whoever started them. Others of the machine may run it too."""
    own = ("WINEPREFIX=" + os.environ["WINEPREFIX"]).encode()
    found = []
    for name in os.listdir("/proc"):
        try:
            with open("/proc/%s/cmdline" % name, "rb") as file:
                if b"orvalis.exe" not in file.read().lower().split(b"\0")[0]:
                    continue
            with open("/proc/%s/environ" % name, "rb") as file:
                if own in file.read().split(b"\0"):
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

    def set(self, key, value):
        self.assertEqual(self.run_program("profile", "set", key, value).returncode, 0)

    def hold(self):
        """A client that keeps an object until it is let go."""
        client = Process([WINE, CLIENT, "hold"], env=self.env, stdin=True)
        self.addCleanup(client.kill)
        return client

    @staticmethod
    def let_go(client):
        client.process.stdin.write("\n")
        client.process.stdin.flush()
        client.process.wait(PATIENCE)  # Wine does not notice that a killed client is gone

    def script(self, *steps):
        """What the script prints for each step. Wine's script host sometimes says nothing at all; then once more."""
        for _ in range(3):
            output = self.wine("cscript", "//nologo", SCRIPT, *steps).stdout.splitlines()
            if output:
                break
        self.assertEqual(output[-1:], ["end"], output)
        return output[:-1]


class Members(ComCase):
    def test_scripts_and_compiled_clients_see_the_same(self):
        unit = self.unit("--fast")
        unit.measure({"TA": "5.00", "TTP": "6.25", "TP": "-20.00", "HUM": "520", "R": "371", "WND": "20",
                      "RB": "0"})
        program = self.headless()
        self.reading(program, lambda r: r["ambient_c"] == 5)
        not_served = " raised 80040400 [Orvalis]  is not implemented by this Orvalis server."
        self.assertEqual(self.script(*MEMBERS), [
            "Safe = Boolean True", "AmbientTemperature = Single 5", "BarometricPressure" + not_served,
            "Clouds = Single 0", "DewPoint" + not_served, "InsideTemperature" + not_served, "Name = String Orvalis",
            "Precipitation = Boolean True", "RelativeHumidity = Single 0.49", "WindDirection" + not_served,
            "WindVelocity = Single 15.64157", "Connected = Boolean True", "WindSpeedCloseD = Long 12",
            "WindSpeedWarn = Double 0.278", "Temperature = Double 5", "Halt = Empty "])
        # The automation system's own numbers: no such member, wrong count, wrong type.
        wrong = self.script("Pressure", "Halt(1)", "Connected=word", "Safe=True")
        self.assertEqual([line.split(" [")[0] for line in wrong[:3]],
                         ["Pressure raised 1B6", "Halt(1) raised 1C2", "Connected=word raised D"])
        self.assertIn("raised", wrong[3])

        # Wine does not carry the text of an error from process to process here, as Windows does.
        early = self.wine(CLIENT, "early").stdout.splitlines()
        self.assertEqual([line.split(" [")[0] for line in early], [
            "Safe 0 -1", "AmbientTemperature 0 5", "Name 0 Orvalis", "WindSpeedCloseD 0 12", "WindSpeedWarn 0 0.278",
            "ISupportErrorInfo 1", "DewPoint 80040400", "Halt 0"])
        late = self.wine(CLIENT, "late").stdout.splitlines()
        self.assertEqual(late, [
            "Safe 0 type 11", "Clouds 0 type 4",
            "DewPoint raised 80040400 [Orvalis]  is not implemented by this Orvalis server.", "Pressure 80020006",
            "Safe with an argument 8002000e", "Halt with an argument 8002000e", "put Safe 80020003",
            "put Connected word 80020005"])
        # A person started this program: it stays, and so does its link.
        self.assertEqual(self.script("Connected=False", "Connected"), ["Connected=False = Empty ",
                                                                       "Connected = Boolean True"])
        self.reading(program)
        self.assertEqual(self.end(program)[0], 0)


class StartedForAClient(ComCase):
    def test_works_and_ends_with_its_client(self):
        self.unit("--fast")
        gone = "Connected=False raised 80040402 [Orvalis] The Orvalis unit is not connected"
        self.assertEqual(self.script("Connected", "Connected=True", "Connected", "Connected=False", "Connected"), [
            "Connected = Boolean False", "Connected=True = Empty ", "Connected = Boolean True", gone,
            "Connected = Boolean False"])
        self.wait_until(lambda: not servers(), "the program stayed without a client")

    def test_counts_its_clients(self):
        self.unit("--fast")
        holder = self.hold()
        holder.line(lambda line: line == "held")
        first = servers()
        self.assertEqual(len(first), 1)
        # The holder may still need the link.
        self.assertEqual(self.script("Connected=True", "Connected=False", "Connected")[1:],
                         ["Connected=False = Empty ", "Connected = Boolean True"])
        self.assertEqual(servers(), first)
        self.let_go(holder)
        self.wait_until(lambda: not servers(), "the program stayed without a client")

    def test_that_cannot_start_ends_at_once(self):
        path = os.path.join(self.profile, "Orvalis.Weather.ini")
        with open(path, encoding="utf-8") as file:
            text = file.read()
        with open(path, "w", encoding="utf-8") as file:
            file.write(text.replace("WindSpeedCloseD=12", "WindSpeedCloseD=twelve"))
        # A client gets no object; a window that asks somebody to close it would keep the program.
        self.wine("cscript", "//nologo", SCRIPT, "Safe")
        self.wait_until(lambda: not servers(), "the program stayed without a client")
        with open(os.path.join(WINDOWS_BIN, "orvalis_errors.txt"), encoding="utf-8") as file:
            self.assertRegex(file.readlines()[-1], "could not start: .*\"WindSpeedCloseD\" cannot be used: ")

    def test_a_unit_that_is_silent_is_not_connected(self):
        self.unit("--fault", "silent:1:60")
        self.assertEqual(self.script("Connected=True", "Name"),
                         ["Connected=True raised 80040402 [Orvalis] The Orvalis unit is not connected",
                          "Name = String Orvalis"])

    def test_several_clients_at_once_start_one(self):
        clients = [self.hold() for _ in range(3)]
        for client in clients:
            client.line(lambda line: line == "held")
        self.wait_until(lambda: len(servers()) == 1, "there are %d programs" % len(servers()))
        for client in clients:
            self.let_go(client)

    def test_several_who_leave_at_once_leave_no_program(self):
        clients = [self.hold() for _ in range(3)]
        for client in clients:
            client.line(lambda line: line == "held")
        for client in clients:
            self.let_go(client)
        left = time.monotonic()
        self.wait_until(lambda: not servers(), "a program stayed")
        self.assertLess(time.monotonic() - left, 8)


class Registration(WindowsCase):
    def test_is_whole_or_not_at_all(self):
        key = r"HKLM\Software\Classes\Orvalis.Weather\CLSID"
        ComCase.register("/RegServer")
        class_id = self.wine("reg", "query", key, "/ve").stdout.split()[-1]
        server = self.wine("reg", "query", r"HKLM\Software\Classes\CLSID\%s\LocalServer32" % class_id, "/ve").stdout
        self.assertIn('orvalis.exe"', server.lower())
        # Again, as an upgrade does, where this user alone had another one.
        own = [r"HKCU\Software\Classes\CLSID\%s" % class_id, r"HKCU\Software\Classes\Orvalis.Weather"]
        for place in own:
            self.assertEqual(self.wine("reg", "add", place + r"\LocalServer32", "/ve", "/d", "old.exe").returncode, 0)
        ComCase.register("/RegServer")
        for place in own:
            self.assertEqual(self.wine("reg", "query", place).returncode, 1, "it hides the one for all users")
        # Programs of 32 bits have a part of the registry to themselves.
        types = r"HKLM\Software\Classes\TypeLib\{68C10D0F-6203-4FDC-B903-9FC45F5749E2}\1.0\0\win32"
        interface = r"HKLM\Software\Classes\Interface\{4F2EFF6B-E5B9-467A-84D3-8CBD65CF7BDD}"
        self.assertIn("orvalis.exe\\2", self.wine("reg", "query", types, "/ve").stdout.lower())
        self.assertIn("{00020424-0000-0000-C000-000000000046}",
                      self.wine("reg", "query", interface + r"\ProxyStubClsid32", "/ve", "/reg:32").stdout)
        # A copy in a second folder takes the registration over, and gives back none that is not its own.
        second = tempfile.mkdtemp(prefix="orvalis-test-")
        self.addCleanup(shutil.rmtree, second)
        copy = shutil.copy(PROGRAM, second)
        self.assertEqual(self.wine(copy, "/UnregServer").returncode, 0)
        self.assertEqual(self.wine("reg", "query", key).returncode, 0, "another folder's registration is gone")
        ComCase.register("-unregserver")
        for place in (key, r"HKLM\Software\Classes\CLSID\%s" % class_id, types, interface):
            for view in ("/reg:32", "/reg:64"):
                left = self.wine("reg", "query", place, view)
                self.assertEqual(left.returncode, 1, left.stdout)


if __name__ == "__main__":
    unittest.main()
