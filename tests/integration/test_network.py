"""The program's word to other programs over HTTP, from the unit's line to the answer."""

import json
import socket
import time
import unittest
import urllib.error
import urllib.request

from harness import Case


class Network(Case):
    def setUp(self):
        super().setUp()
        with socket.create_server(("127.0.0.1", 0)) as free:
            self.port = free.getsockname()[1]
        del self.env["ORVALIS_HTTP_PORT"]
        self.set_all({"Network/Port": str(self.port), "SafeHoldSeconds": "1"})

    def get(self, path):
        try:
            with urllib.request.urlopen("http://127.0.0.1:%d%s" % (self.port, path), timeout=10) as answer:
                return json.load(answer)
        except (urllib.error.URLError, ConnectionError):
            return {}

    def is_safe(self):
        return self.get("/api/v1/safetymonitor/0/issafe").get("Value")

    def test_a_line_that_falls_silent_is_unsafe_within_ten_seconds(self):
        unit = self.evening()
        self.daemon()
        self.wait_until(self.is_safe, "safe")
        self.assertEqual(self.get("/roof-status"), {"roof_status": {"open_ok": 1, "reasons": ""}})
        self.assertEqual(self.get("/api/v1/observingconditions/0/temperature")["Value"], 5)
        unit.tell("stall 20")
        begin = time.monotonic()
        self.wait_until(lambda: self.is_safe() is False, "unsafe")
        self.assertLess(time.monotonic() - begin, 12)
        self.assertEqual(self.get("/api/v1/observingconditions/0/temperature")["ErrorNumber"], 0x40B)
        self.assertEqual(self.get("/observation")["reasons"][0]["name"], "stale")
        self.wait_until(self.is_safe, "safe again")

    def test_a_port_that_is_taken_stops_nothing(self):
        with socket.create_server(("127.0.0.1", self.port)):
            self.evening()
            program = self.daemon()
            event = self.event(program, "Cannot serve the network on 127.0.0.1:%d: " % self.port)["event"]
            self.assertIn("another program has the port", event)
            self.reading(program)


if __name__ == "__main__":
    unittest.main()
