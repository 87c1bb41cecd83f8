"""The settings file: from the terminal, by several writers, through crashes and damage."""

import configparser
import contextlib
import os
import random
import resource
import signal
import stat
import subprocess
import time
import unittest
from pathlib import Path

from harness import BIN, Case


class ProfileStore(Case):
    def setUp(self):
        super().setUp()
        self.file = Path(self.profile, "Orvalis.Weather.ini")
        self.lock = Path(self.profile, "Orvalis.Weather.ini.lock")

    def parsed(self):
        parser = configparser.RawConfigParser(strict=True)
        parser.optionxform = str
        parser.read_string(self.file.read_text("utf-8"))
        return parser

    def demo(self):
        return self.program("--headless", "--json", "--demo")

    def test_what_is_set_is_in_the_file_and_the_owners_alone(self):
        self.set("RainThreshold", "500")
        self.set("TempMax", "2.5")
        self.set("g_sRainApp", 'C:\\Prog "x", ünï\\a;b=c.exe')
        self.assertEqual(self.run_program("profile", "get", "g_sRainApp").stdout, 'C:\\Prog "x", ünï\\a;b=c.exe\n')
        parser = self.parsed()
        self.assertEqual(parser["General"]["RegVer"], "2.18")
        self.assertEqual(parser["General"]["RainThreshold"], "500")
        self.assertEqual(parser["Capabilities"]["TempMax"], "2.5")
        self.assertEqual(stat.S_IMODE(self.file.stat().st_mode), 0o600)
        for value in ("500", "501"):
            self.file.chmod(0o644)
            self.set("RainThreshold", value)
            self.assertEqual(stat.S_IMODE(self.file.stat().st_mode), 0o600, value)

    def test_a_dump_of_what_reads_a_password_is_empty(self):
        with subprocess.Popen([BIN + "/orvalis", "profile", "set", "g_sPWS_password", "-"], env=self.env,
                              stdin=subprocess.PIPE, stderr=subprocess.DEVNULL) as reader:
            dump = Path(f"/proc/{reader.pid}/coredump_filter")
            self.wait_until(lambda: int(dump.read_text(), 16) == 0, "a dump without heap and stack")
            self.assertIsNone(reader.poll())

    def test_two_writers_keep_each_others_keys(self):
        self.set("Left", "1")
        # A store that is in use for half a second is an error, which a busy machine has now and then.
        loop = ('for i in $(seq 40); do n=0; until "%s/orvalis" profile set %s $i; do n=$((n + 1)); '
                '[ $n -lt 20 ] || exit 1; done; done')
        writers = [subprocess.Popen(["sh", "-c", loop % (BIN, key)], env=self.env)
                   for key in ("RainThreshold", "WindThreshold")]
        self.assertEqual([writer.wait() for writer in writers], [0, 0])
        parser = self.parsed()
        self.assertEqual((parser["General"]["RainThreshold"], parser["General"]["WindThreshold"]), ("40", "40"))

    def look_for_what_others_may_read(self):
        for entry in os.scandir(self.profile):
            with contextlib.suppress(FileNotFoundError):
                mode = entry.stat(follow_symlinks=False).st_mode
                self.assertTrue(".ini.lock" in entry.name or not mode & 0o077, entry.name)

    def test_a_killed_writer_leaves_the_old_file_or_the_new_one_and_others_read_neither(self):
        self.set("RainThreshold", "0")
        chance = random.Random(7)
        for round_number in range(1, 30):
            writer = subprocess.Popen([BIN + "/orvalis", "profile", "set", "RainThreshold", str(round_number)],
                                      env=self.env, umask=0o022)
            end = time.monotonic() + chance.uniform(0, 0.06)
            while time.monotonic() < end:
                self.look_for_what_others_may_read()
            writer.send_signal(signal.SIGKILL)
            writer.wait()
            parser = self.parsed()
            self.assertLessEqual(int(parser["General"]["RainThreshold"]), round_number)
            self.assertEqual(sum(len(parser[section]) for section in parser.sections()), 84)

    def test_damage_is_reported_with_file_key_and_text(self):
        self.set("RainThreshold", "400")
        self.file.write_text(self.file.read_text("utf-8").replace("RainThreshold=400", "RainThreshold=abc"), "utf-8")
        result = self.run_program("--headless", "--demo")
        self.assertEqual(result.returncode, 1)
        for part in (str(self.file), "RainThreshold", "abc"):
            self.assertIn(part, result.stderr)

    def rain_after_a_start(self):
        """What is in force for rain, and what is said of lost settings."""
        program = self.demo()
        self.reading(program)
        program.stop()
        lost = [line for line in program.all_lines if "The settings were destroyed" in line]
        return self.run_program("profile", "get", "RainThreshold").stdout.strip(), lost

    def test_a_destroyed_file_gets_its_copy_back_and_says_so_until_acknowledged(self):
        self.set("RainThreshold", "200")
        self.set("WindsAvgCnt", "15")
        whole = self.file.read_bytes()

        def cut_behind(text):
            return whole[:whole.index(text) + len(text)]

        destroyed = {"empty": b"", "zeros": bytes(len(whole)), "garbage": random.Random(3).randbytes(2000),
                     "cut": whole[:1500], "cut in the stamp": cut_behind(b"RegVer=2.1"),
                     "cut in the last value": cut_behind(b"WindsAvgCnt=1"),
                     "no stamp": whole.replace(b"RegVer=2.18\n", b""), "a folder": os.mkdir, "a pipe": os.mkfifo,
                     "gone": lambda _: None}
        kept = 0
        for name, content in destroyed.items():
            self.file.unlink()
            make = content if callable(content) else lambda file: file.write_bytes(content)
            make(self.file)
            self.assertEqual(self.run_program("profile", "get", "RainThreshold").returncode, 1, name)
            for start in ("first", "second"):
                self.assertIn("The settings were destroyed",
                              self.run_program("profile", "set", "Left", "7").stderr, (name, start))
            self.assertEqual(self.run_program("profile", "get", "RainThreshold").stdout, "200\n", name)
            kept += name != "gone"
            self.assertEqual(len(list(self.file.parent.glob("*.damaged-*"))), kept, name)
            for file in filter(Path.is_file, self.file.parent.glob("*.ini")):
                self.assertEqual(stat.S_IMODE(file.stat().st_mode), 0o600, file)
            self.assertEqual(self.run_program("profile", "acknowledge").returncode, 0)
        self.assertEqual(self.rain_after_a_start(), ("200", []))

    def test_without_a_good_copy_the_defaults_are_said_as_loudly(self):
        self.set("RainThreshold", "200")
        for file in (self.file, Path(self.profile, "Orvalis.Weather.good.ini")):
            file.write_text("[General]\nRainThreshold=200\n")
        rain, lost = self.rain_after_a_start()
        self.assertEqual(rain, "350")
        self.assertIn("no good copy", lost[0])

    def test_a_full_disk_does_not_keep_the_copy_from_standing_in(self):
        self.set("RainThreshold", "200")
        self.file.write_text("")
        program = self.launch("sh", "-c", 'trap "" XFSZ; ulimit -f 0; exec "$0" --headless --json --demo',
                              BIN + "/orvalis")
        self.assertIn("not been saved to disk yet", self.event(program, "The settings were destroyed")["event"])
        self.reading(program)
        program.stop()
        self.assertEqual(self.file.read_text(), "", "what was destroyed is not lost before it is replaced")
        self.assertEqual(self.rain_after_a_start()[0], "200")

    def test_a_running_program_hears_of_the_acknowledgement(self):
        self.set("RainThreshold", "200")
        self.file.write_text("")
        program = self.demo()
        self.event(program, "The settings were destroyed")
        self.assertIn("Acknowledged", self.run_program("profile", "acknowledge").stdout)
        self.event(program, "the loss of the settings was acknowledged")

    def test_a_folder_that_cannot_be_written_is_named(self):
        blocked = Path(self.folder, "file")
        blocked.touch()
        result = self.run_program("--headless", "--demo", "--profile", "%s/below" % blocked)
        self.assertEqual(result.returncode, 1)
        self.assertIn(str(blocked), result.stderr)

    def test_a_write_that_fails_leaves_nothing_behind(self):
        self.set("Left", "100")
        before = self.file.read_text("utf-8")

        def no_room():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (64, 64))

        def set_left(value):
            return subprocess.run([BIN + "/orvalis", "profile", "set", "Left", value], env=self.env,
                                  preexec_fn=no_room, capture_output=True, text=True)

        result = set_left("200")
        self.assertEqual(result.returncode, 1)
        self.assertIn(str(self.file), result.stderr)
        self.assertEqual(set_left("100").returncode, 0, "it stands there already, and needs no room")
        self.assertEqual(self.file.read_text("utf-8"), before)
        killed = Path(self.profile, "Orvalis.Weather.ini.1-1.new")
        killed.mkdir()  # of a program that was killed
        (killed / "written").touch()
        self.set("Top", "1")
        self.assertEqual(sorted(os.listdir(self.profile)), ["Orvalis.Weather.good.ini", "Orvalis.Weather.ini"])

    def test_a_lock_that_nobody_lets_go_holds_nothing_up(self):
        self.set("Left", "100")
        self.lock.mkdir()
        self.assertEqual(self.run_program("profile", "set", "Left", "200").returncode, 1)
        program = self.demo()
        self.reading(program)
        code, seconds = program.stop()
        self.assertEqual(code, 0)
        self.assertLess(seconds, 3)

    def test_locks_that_a_power_failure_left_empty_are_taken_over(self):
        self.set("Left", "100")
        running = Path(self.profile, "Orvalis.Weather.running")
        for file in (self.lock, running):
            file.touch()
            os.utime(file, (0, time.time() - 3600))
        self.set("Left", "200")
        program = self.demo()
        self.reading(program)
        self.assertGreater(running.stat().st_size, 0)


class CommandLine(Case):
    def test_a_value_with_a_minus_sign_may_stand_anywhere_among_the_options(self):
        other = ["--profile", os.path.join(self.folder, "other")]
        for number, order in enumerate([["profile", "set", "Left", *other, "-7"], ["profile", *other, "set", "Left", "-8"]]):
            result = self.run_program(*order)
            self.assertEqual((result.returncode, result.stderr), (0, ""), order)
            self.assertEqual(self.run_program("profile", "get", "Left", *other).stdout, "%d\n" % (-7 - number))
        for order in (["g_sPWS_password", "-", *other], ["g_sPWS_password", *other, "-"]):
            self.assertEqual(self.run_program("profile", "set", *order, given="p4ss\n").returncode, 0, order)
        self.assertEqual(self.run_program("profile", "set", "Left", "-1", "--hedless").returncode, 2)

    def test_nonsense_says_why_and_how(self):
        rows = [(["--hedless"], "hedless"), (["--port"], "port"), (["frobnicate"], "frobnicate"),
                (["--json"], "--headless"), (["--demo", "--port", "/dev/x"], "--demo"), (["profile"], "list"),
                (["profile", "set", "Left"], "KEY VALUE"), (["--subkey", "x"], "profile"),
                (["profile", "list", "--headless"], "profile")]
        for arguments, part in rows:
            result = self.run_program(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            first, second = result.stderr.splitlines()[:2]
            self.assertIn(part, first)
            self.assertTrue(second.startswith("usage: orvalis") and not result.stdout, result)

    def test_the_rest(self):
        self.assertIn("usage:", self.run_program("--help").stdout)
        self.assertRegex(self.run_program("--version").stdout, r"^Orvalis \d+\.\d+\.\d+$")
        bare = {name: value for name, value in self.env.items()
                if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        result = self.run_program(env=bare)
        self.assertEqual(result.returncode, 1)
        self.assertIn("--headless", result.stderr)


if __name__ == "__main__":
    unittest.main()
