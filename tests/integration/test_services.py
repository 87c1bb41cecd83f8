"""The program as a service: what it tells systemd, how its lines reach the journal, and its alert programs outside."""

import os
import signal
import socket
import subprocess
import sys
import time
import unittest

from harness import BIN, PATIENCE, Case


class Manager:
    """What systemd hears of a service."""

    def __init__(self, folder):
        self.path = os.path.join(folder, "notify")
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.socket.bind(self.path)

    def hear(self, begin, patience=PATIENCE):
        """The next message that begins so; None when none comes."""
        end = time.monotonic() + patience
        while (left := end - time.monotonic()) > 0:
            self.socket.settimeout(left)
            try:
                message = self.socket.recv(4096).decode()
            except TimeoutError:
                return None
            if message.startswith(begin):
                return message
        return None


class ServiceTest(Case):
    def service(self, **variables):
        """orvalisd on the line, its errors in a file that is called the journal."""
        path = os.path.join(self.folder, "journal")
        with open(path, "a", encoding="utf-8") as journal:
            about = os.fstat(journal.fileno())
            env = dict(self.env, JOURNAL_STREAM="%d:%d" % (about.st_dev, about.st_ino), **variables)
            process = subprocess.Popen([BIN + "/orvalisd", "--port", self.link], env=env, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=journal)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def journal(self, text):
        def lines():
            with open(os.path.join(self.folder, "journal"), encoding="utf-8") as journal:
                return [line for line in journal if text in line]
        return self.wait_until(lines, text)[0]

    def test_systemd_hears_of_a_hang_and_of_nothing_else(self):
        self.unit("--fault", "silent")
        manager = Manager(self.folder)
        self.addCleanup(manager.socket.close)
        watched = {"NOTIFY_SOCKET": manager.path, "WATCHDOG_USEC": "1000000"}
        service = self.service(**watched)
        self.assertEqual(manager.hear("STATUS="), "STATUS=UNSAFE: no_connection")
        self.assertTrue(manager.hear("READY=1"))
        for _ in range(8):  # the unit has not answered all the time
            self.assertTrue(manager.hear("WATCHDOG=1", 1))
        service.send_signal(signal.SIGSTOP)
        while manager.hear("WATCHDOG=1", 0.2):
            pass
        self.assertIsNone(manager.hear("WATCHDOG=1", 1.5))
        service.send_signal(signal.SIGCONT)
        self.assertTrue(manager.hear("WATCHDOG=1"))
        # A second one waits for the place, and takes it.
        second = self.service(**watched)
        self.assertTrue(manager.hear("STATUS=waits"))
        third = self.service(**watched)
        self.assertTrue(manager.hear("STATUS=waits"))
        third.terminate()
        self.assertEqual(third.wait(PATIENCE), 0)
        service.terminate()
        self.assertTrue(manager.hear("STOPPING=1"))
        self.assertEqual(service.wait(PATIENCE), 0)
        self.assertTrue(manager.hear("READY=1"))
        self.assertIsNone(second.poll())

    def test_what_is_for_another_process_is_not_taken(self):
        self.unit()
        manager = Manager(self.folder)
        self.addCleanup(manager.socket.close)
        self.service(NOTIFY_SOCKET=manager.path, SYSTEMD_EXEC_PID="1")
        self.journal("connected to")
        self.assertIsNone(manager.hear("", 0.2))

    def test_lines_in_the_journal_have_levels(self):
        self.set("UnsafeApp", "/nowhere/close")
        unit = self.unit("--fast")
        self.service()
        self.assertTrue(self.journal("orvalis: connected to").startswith("<5>"))
        unit.kill()
        self.assertTrue(self.journal("orvalis: lost: ").startswith("<4>"))
        self.assertTrue(self.journal("/nowhere/close").startswith("<3>"))

    def runner(self):
        path = os.path.join(self.folder, "runner")
        with open(os.path.join(self.folder, "printed"), "wb") as printed:
            process = subprocess.Popen(
                ["systemd-socket-activate", "--seqpacket", "--accept", "--inetd", "-l", path, BIN + "/orvalisd",
                 "--run-program"], env=self.env, stdout=printed, stderr=printed)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.wait_until(lambda: os.path.exists(path), "the runner listens")
        return path

    def test_alert_programs_run_outside_and_only_those_of_root(self):
        runner = self.runner()
        own = os.path.join(self.folder, "own")
        with open(own, "w", encoding="utf-8") as script:
            script.write("#!/bin/sh\n")
        os.chmod(own, 0o777)

        def ask(*parts):
            with socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET) as client:
                client.connect(runner)
                client.send("".join(part + "\0" for part in parts).encode())
                client.settimeout(PATIENCE)
                return client.recv(4096).decode()

        self.assertEqual(ask("/usr/bin/env", "ORVALIS_ALERT=unsafe", "BASH_ENV=/tmp/evil"), "ended:")
        with open(os.path.join(self.folder, "printed"), encoding="utf-8") as printed:
            text = printed.read()
        self.assertIn("ORVALIS_ALERT=unsafe\n", text)
        self.assertNotIn("BASH_ENV", text)
        self.assertIn("belong to root", ask(own))
        self.assertIn("was not found", ask("/nowhere/close"))
        # The service itself hears how its program ended.
        self.set("UnsafeApp", "/bin/false")
        self.unit("--fast", "--fault", "silent")
        self.service(ORVALIS_PROGRAM_RUNNER=runner)
        self.assertTrue(self.journal("/bin/false ended with code 1; trying again in 10 s").startswith("<3>"))


if __name__ == "__main__":
    sys.dont_write_bytecode = True
    unittest.main()
