"""Web publishing: the real program between the simulated unit and real servers."""

import json
import os
import re
import shutil
import stat
import subprocess
import time
import unittest
from pathlib import Path

import web_servers
from harness import BIN, PATIENCE, Case, ScreenCase
from web_servers import FtpServer, StuckFtpServer, WebServer

# Worked by hand and with bc from TA=5.00, TP=-20.00, HUM=520, WND=20, R=120.
QUERY = (rb"ID=KTEST1&PASSWORD=s3cr%t/x y&dateutc=20\d\d%2D\d\d%2D\d\d%2B\d\d%3A\d\d%2E\d\d%2E00&tempf=%20%2041%2E0"
         rb"&windspeedmph=%2018%2E0&windgustmph=%20%2018%2E0&humidity=%2048%2E9&clouds=SKC"
         rb"&softwaretype=orvalis%20v01&action=updateraw&realtime=1&rtfreq=5\.0")
PASSWORD = "s3cr%t/x y"
END = 2  # seconds that an end may take: one, and one for a busy machine


class PublishCase(Case):
    def web_server(self, *acts):
        server = WebServer(*acts)
        self.addCleanup(server.close)
        return server

    def allow(self, server):
        self.set_all({"g_bAllow_PWS": "1", "g_sPWS_name": "KTEST1", "g_sPWS_password": PASSWORD, "g_sPWS_site":
                      "http://127.0.0.1:%d/weatherstation/updateweatherstation.php" % server.port})

    @staticmethod
    def peak_megabytes(pid):
        return int(re.search(r"VmHWM:\s+(\d+)", Path("/proc/%d/status" % pid).read_text())[1]) / 1024


class Readings(PublishCase):
    def test_they_arrive_to_the_byte_and_on_their_interval(self):
        self.evening()
        server = self.web_server()
        self.allow(server)
        program = self.headless()
        first, request = server.wait_for(1, PATIENCE)
        self.assertRegex(request, rb"\AGET /weatherstation/updateweatherstation\.php\?" + QUERY +
                         rb" HTTP/1\.0\r\nHost: 127\.0\.0\.1\r\nConnection: close\r\n\r\n\Z")
        last, _ = server.wait_for(4, PATIENCE)
        self.assertAlmostEqual((last - first) / 3, 6, delta=0.7)
        sent = time.strptime(re.search(rb"dateutc=(.*?)&", request)[1].decode(), "%Y%%2D%m%%2D%d%%2B%H%%3A%M%%2E%S%%2E00")
        self.assertLess(abs(time.mktime(time.gmtime()) - time.mktime(sent)), 120)
        self.assertNotIn("s3cr", Path("/proc/%d/cmdline" % program.process.pid).read_text())
        program.stop()
        said = "".join(program.all_lines + program.errors)
        self.assertNotIn("s3cr", said)
        self.assertNotIn("readings upload", said)

    def test_a_server_that_misbehaves_holds_nothing_up(self):
        self.evening()
        acts = [web_servers.reset, web_servers.redirect, web_servers.flood, web_servers.refuse_politely,
                web_servers.silent, web_servers.drip]
        server = self.web_server(*acts)
        self.allow(server)
        # What the address sanitizer holds back of freed memory would hide what the program holds.
        self.env["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1"
        program = self.headless()
        server.wait_for(2, PATIENCE)
        before_flood = self.peak_megabytes(program.process.pid)
        arrivals = [server.wait_for(count, PATIENCE)[0] for count in range(1, len(acts) + 3)]
        for before, after in zip(arrivals, arrivals[1:]):
            self.assertAlmostEqual(after - before, 6, delta=1)
        self.event(program, "readings upload: works again")
        self.assertLess(self.peak_megabytes(program.process.pid) - before_flood, 10)
        self.assertEqual(program.stop()[0], 0)
        listed = [json.loads(line) for line in program.all_lines]
        readings = [self.seconds(line["time"]) for line in listed if "frame" in line]
        for before, after in zip(readings, readings[1:]):
            self.assertLess(after - before, 3, "a working cycle was held up")
        events = [line["event"] for line in listed if line.get("event", "").startswith("readings upload")]
        self.assertEqual(events, [
            "readings upload: the server closed the connection without answering",
            "readings upload: the server redirects (status 302), and redirects are not followed",
            "readings upload: works again",
            "readings upload: the server refused (status 200): its text says that the ID or the password is wrong",
            "readings upload: previous upload aborted: the next one is due",
            "readings upload: works again"])

    @staticmethod
    def seconds(text):
        hours, minutes, seconds = text[11:23].split(":")
        return int(hours) * 3600 + int(minutes) * 60 + float(seconds)


class Window(PublishCase, ScreenCase):
    def setUp(self):
        super().setUp()
        # A folder of its own for the program: that is where pictures and the script go.
        self.bin = os.path.join(self.folder, "bin")
        os.mkdir(self.bin)
        shutil.copy(os.path.join(BIN, "orvalis"), self.bin)

    def start(self):
        program = self.launch(self.bin + "/orvalis", "--port", self.link)
        self.panel = self.window("Orvalis")
        return program

    def in_bin(self, name):
        return Path(self.bin, name)

    def test_what_is_typed_is_sent_and_the_picture_arrives(self):
        self.evening()
        server = self.web_server()
        ftp = FtpServer(self.folder)
        self.addCleanup(ftp.close)
        program = self.start()
        self.wait_until(lambda: len(self.recorded(" frame")) >= 3, "there are readings")
        self.focus("Orvalis")
        self.keys("alt+w")
        self.focus("Orvalis Web Publishing")
        self.keys("alt+i", "=KTEST1", "alt+p", "=" + PASSWORD, "alt+n", "=anonymous",
                  "alt+v", "=ftp://127.0.0.1:%d/pictures" % ftp.port,
                  "alt+u", "=http://127.0.0.1:%d/u?k=v" % server.port, "Tab", "space", "alt+t")
        _, request = server.wait_for(1, PATIENCE)
        self.assertRegex(request, rb"\AGET /u\?k=v&" + QUERY + rb" HTTP/1\.0\r\n")

        script = self.in_bin("winscp.txt").read_text("utf-8").split("\n")
        self.assertEqual(script[3], "open ftp://anonymous:%s@127.0.0.1:%d/pictures" % (PASSWORD, ftp.port))
        self.assertEqual(script[5:], ['put "%s"' % self.in_bin("image.jpg"), "exit", ""])
        self.assertEqual(stat.S_IMODE(self.in_bin("winscp.txt").stat().st_mode), 0o600)

        # Switched off, nothing is captured. Then by the program itself: the box, the list, the other box, the button.
        self.assertFalse(self.in_bin("screenshot.bmp").exists())
        self.keys("alt+v", "Tab", "space", "alt+b", "Tab", "space")
        sent = Path(ftp.root, "pictures", "image.jpg")
        self.wait_until(self.in_bin("image.jpg").exists, "image.jpg")
        self.wait_until(lambda: sent.exists() and sent.stat().st_size == self.in_bin("image.jpg").stat().st_size,
                        "the picture at the server")
        head = self.in_bin("screenshot.bmp").read_bytes()
        self.assertEqual((head[:2], int.from_bytes(head[28:30], "little")), (b"BM", 24))
        # What arrived is the panel, as the screen shows it.
        self.xdotool("windowraise", self.panel)
        seen = os.path.join(self.folder, "seen.png")

        def looks_as_seen(picture):
            # A raised window is painted when its program gets to it.
            subprocess.run(["import", "-window", self.panel, seen], env=self.env, check=True, timeout=PATIENCE)
            difference = subprocess.run(["compare", "-metric", "RMSE", picture, seen, "null:"], capture_output=True,
                                        text=True, timeout=PATIENCE).stderr
            return float(re.search(r"\(([\d.e-]+)\)", difference)[1]) < 0.1

        for picture in (sent, self.in_bin("screenshot.bmp")):
            self.wait_until(lambda: looks_as_seen(picture), "%s is as the screen shows it" % picture)
        self.assertIn('anon password "%s"' % PASSWORD.replace(" ", "_"), Path(ftp.log).read_text())  # as it writes it

        for key, value in {"g_sPWS_name": "KTEST1", "g_sPWS_password": PASSWORD, "g_bAllow_PWS": "1",
                           "g_bAllow_WEB": "1", "WebcamBuiltIn": "1"}.items():
            self.assertEqual(self.run_program("profile", "get", key).stdout, value + "\n")
        self.assertEqual(program.stop()[0], 0)
        self.assertNotIn("s3cr", self.in_bin("orvalis_errors.txt").read_text("utf-8") + "".join(program.errors))

    def test_an_ftp_server_that_is_stuck_holds_up_neither_the_polling_nor_the_end(self):
        self.evening()
        self.set_all({"g_bAllow_WEB": "1", "WebcamBuiltIn": "1", "g_lWEBUpdate_interval_index": "0",
                      "g_sWEBcam_name": "cam", "g_sPWS_password": PASSWORD})
        for server in (StuckFtpServer(dribbles=False), StuckFtpServer(dribbles=True)):
            with self.subTest(dribbles=server.dribbles):
                self.addCleanup(server.close)
                self.set("g_sWEBcam_site", "127.0.0.1:%d" % server.port)
                program = self.start()
                self.assertTrue(server.stuck.wait(PATIENCE))
                before = len(self.recorded(" frame"))
                self.wait_until(lambda: len(self.recorded(" frame")) >= before + 2, "the polling goes on")
                code, seconds = program.stop()
                self.assertEqual(code, 0)
                self.assertLess(seconds, END)

    def test_name_servers_that_say_nothing_do_not_hold_up_the_end(self):
        self.evening()
        asked = Path(self.folder, "asked")
        self.env["SILENT_NAMES"] = str(asked)
        self.set_all({"g_sPWS_name": "KTEST1", "g_sPWS_password": PASSWORD, "g_sWEBcam_name": "cam",
                      "g_bAllow_PWS": "1", "g_sPWS_site": "http://service.example/",
                      "g_lPWSUpdate_interval_index": "0", "g_bAllow_WEB": "1", "WebcamBuiltIn": "1",
                      "g_sWEBcam_site": "webcam.example", "g_lWEBUpdate_interval_index": "0"})
        self.env["LD_PRELOAD"] = os.path.join(BIN, "silent_names.so")
        self.env["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
        program = self.start()
        self.wait_until(lambda: asked.exists() and len(set(asked.read_text().split())) == 2, "both names are asked for")
        code, seconds = program.stop()
        self.assertEqual(code, 0)
        self.assertLess(seconds, END)


if __name__ == "__main__":
    unittest.main()
