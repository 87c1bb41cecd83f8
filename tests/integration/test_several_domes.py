"""The example of a site with three domes, with the real broker and the real Prometheus."""

import json
import os
import signal
import subprocess
import unittest
import urllib.parse
import urllib.request
from pathlib import Path

import harness
from ports import free_ports

EXAMPLE = Path(__file__).parents[2] / "examples" / "several-domes"


class SeveralDomes(harness.Case):
    def ask(self, path, **parameters):
        url = "http://127.0.0.1:%d/api/v1/%s?%s" % (self.port + 4, path, urllib.parse.urlencode(parameters))
        try:
            with urllib.request.urlopen(url, timeout=harness.PATIENCE) as answer:
                return json.load(answer)["data"]
        except urllib.error.URLError:
            return {}

    def domes(self, expression):
        """By dome, what the expression has for it."""
        return {row["metric"]["dome"]: row["value"][1]
                for row in self.ask("query", query=expression).get("result", [])}

    def alerts(self):
        return {(alert["labels"]["alertname"], alert["labels"]["dome"]) for alert in self.ask("alerts").get("alerts", [])}

    def test_one_prometheus_and_one_broker_see_all_three(self):
        self.port = free_ports(5)
        self.env.pop("ORVALIS_HTTP_PORT")
        site = Path(self.folder) / "site"
        self.env["ORVALIS_BIN"] = harness.BIN
        program = self.launch(str(EXAMPLE / "start.sh"), str(site), str(self.port))
        self.addCleanup(program.stop)
        program.line(lambda line: line.startswith("MQTT:"))
        self.wait_until(lambda: self.domes("orvalis_safe") == {"A": "1", "B": "0", "C": "1"}, "all three, B in the rain")
        self.wait_until(lambda: self.alerts() == {("DomeUnsafe", "B")}, "the alert for B alone")

        dashboard = json.loads((EXAMPLE / "grafana-dashboard.json").read_text("utf-8"))
        for panel in dashboard["panels"]:
            for target in panel["targets"]:
                rows = self.ask("query", query=target["expr"].replace("$dome", ".*"))
                self.assertTrue(rows["result"], target["expr"])

        said = subprocess.run(["mosquitto_sub", "-p", str(self.port + 3), "-t", "orvalis/+/availability", "-C", "3", "-W",
                               str(harness.PATIENCE)], capture_output=True, text=True, check=True).stdout.splitlines()
        self.assertEqual({(dome["station"], dome["state"]) for dome in map(json.loads, said)},
                         {("Dome " + dome, "online") for dome in "ABC"})

        # A program that hangs answers nobody; what it said last must not count.
        processes = subprocess.run(["pgrep", "-f", "orvalisd --port %s/dome-A.line" % site], capture_output=True, text=True,
                                   check=True).stdout.split()
        for process in processes:
            os.kill(int(process), signal.SIGSTOP)
            self.addCleanup(os.kill, int(process), signal.SIGCONT)
        self.wait_until(lambda: ("DomeAbsent", "A") in self.alerts(), "the alert for A")
        self.assertEqual(self.domes("orvalis_safe"), {"B": "0", "C": "1"})

    def test_the_alert_rules_say_what_they_should(self):
        subprocess.run(["promtool", "test", "rules", "alerts_test.yml"], cwd=EXAMPLE, check=True, capture_output=True,
                       timeout=harness.PATIENCE)


if __name__ == "__main__":
    unittest.main()
