"""What may be said of the weather at a moment, from what the unit really sent; and who checks all the time that nothing
else is said."""

import contextlib
import http.client
import json
import queue
import re
import threading
import time
from pathlib import Path

from test_dbus import Client

GOOD = re.compile(rb"HUM=\d{4} LGT=(\d{4}) R=(\d{4}) WND=\d{4} TP=[+-]\d{5} TTP=[+-]\d{5} TA=([+-]\d{5}) "
                  rb"AH=\d HB=\d AR=(\d) RB=(\d) AW=\d AL=\d AC=\d .{16}#", re.DOTALL)
# Where each value that is compared stands in a frame: a damaged one may still say it well.
FIELDS = {"light_counts": (rb"LGT=(\d{4}) ", 9, 1), "rain_counts": (rb" R=(\d{4}) ", 17, 1),
          "ambient_c": (rb" TA=([+-]\d{5}) ", 54, 100)}
FRESH = 10  # seconds for which a reading is of now
OLDEST = 5  # seconds that an answer may have been under way
LATITUDE = 3  # seconds for the line, the look and a busy machine
HEARD = 5  # seconds after which an interface that said nothing counts as silent


class Frame:
    def __init__(self, moment, data):
        self.moment = moment
        good = GOOD.fullmatch(data) if len(data) == 117 else None
        self.good = good is not None
        self.unsafe = self.good and (good[4], good[5]) != (b"1", b"0")  # its relay is off, and may be on
        self.values = {}
        for name, (form, start, divisor) in FIELDS.items():
            if found := re.compile(form, re.DOTALL).match(data, start):
                self.values[name] = int(found[1]) / divisor


class Truth:
    """The frames of one unit after the other, by the clock of this process."""

    def __init__(self):
        self.lock = threading.Lock()
        self.frames = []
        self.breaks = [time.monotonic()]  # before which no reading counts: starts of the program, sleep
        self.record = None
        self.rest = ""
        self.under_way = 0  # seconds that answers may be, for which an alarm cannot be known
        self.zero = 0  # when the unit of this record began

    def follow(self, path, said):
        """From now on the unit writes this record; `said` is a command that it just got."""
        self.read()
        with self.lock:
            self.record, self.rest = open(path, encoding="utf-8"), ""
            text = Path(path).read_text("utf-8")
            self.zero = time.monotonic() - float(re.findall(r"(?m)^(\S+) console \"%s" % said, text)[-1])

    def begin_again(self):
        with self.lock:
            self.breaks.append(time.monotonic())

    def read(self):
        with self.lock:
            if self.record is None:
                return
            *lines, self.rest = (self.rest + self.record.read()).split("\n")
            for line in lines:
                if found := re.fullmatch(r'(\S+) answer "(.*)"', line):
                    data = found[2].encode().decode("unicode_escape").encode("latin-1")
                    if len(data) > 1:
                        self.frames.append(Frame(self.zero + float(found[1]), data))
            del self.frames[:-300]

    def against_safe(self, moment):
        """Why nobody may say that it is safe at this moment; None when it may be."""
        with self.lock:
            begin = max(b for b in self.breaks if b <= moment)
            good = [frame for frame in self.frames if frame.good and begin <= frame.moment <= moment]
        if len(good) < 2:
            return "fewer than two readings"
        if moment - good[-1].moment > FRESH + OLDEST + LATITUDE:
            return "no reading for %.1f s" % (moment - good[-1].moment)
        if good[-1].moment - good[-2].moment > FRESH + OLDEST + LATITUDE:
            return "a single reading since the silence"
        in_a_row = 0
        for frame in reversed(good):
            if frame.unsafe:
                return "the unit's alarm" if in_a_row < 2 and moment - frame.moment > LATITUDE + self.under_way else None
            in_a_row += 1
        return None

    def against_value(self, name, value, moment):
        with self.lock:
            recent = [frame for frame in self.frames if -LATITUDE < moment - frame.moment < FRESH + OLDEST + LATITUDE]
        told = {frame.values[name] for frame in recent if name in frame.values}
        return None if any(abs(value - one) < 0.006 for one in told) else "%s is %s, told were %s" % (
            name, value, sorted(told))


class Watcher:
    """Looks at each interface ten times a second, and complains of whatever is wrongly safe or of no recent frame."""

    def __init__(self, truth, port, env):
        self.truth, self.port, self.env = truth, port, env
        self.complaints = []
        self.told_unsafe = None  # since when the unit measures what is unsafe
        self.heard = {}  # by interface: when it last answered, and whether it was safe
        self.looks = 0
        self.ended = threading.Event()
        self.threads = [threading.Thread(target=look, daemon=True) for look in (self._look_at_http, self._look_at_bus)]
        for thread in self.threads:
            thread.start()

    def close(self):
        self.ended.set()
        for thread in self.threads:
            thread.join()

    def works(self, interfaces=("observation", "issafe", "D-Bus"), safe=True):
        now = time.monotonic()
        return all(now - self.heard.get(name, (0, False))[0] < HEARD and (self.heard[name][1] or not safe)
                   for name in interfaces)

    def _complain(self, text):
        if len(self.complaints) < 5:
            self.complaints.append(text)

    def _judge(self, name, safe, asked):
        answered = time.monotonic()
        self.looks += 1
        self.truth.read()
        self.heard[name] = (answered, safe)
        if not safe:
            return
        why = [self.truth.against_safe(moment) for moment in (asked, answered)]
        if all(why):
            self._complain("%s said safe: %s" % (name, why[0]))
        told = self.told_unsafe
        if told and asked - told > FRESH + OLDEST + LATITUDE:
            self._complain("%s said safe %.0f s after the unit measured what is not" % (name, asked - told))

    def _look_at_http(self):
        connection = None
        while not self.ended.wait(0.1):
            try:
                connection = connection or http.client.HTTPConnection("127.0.0.1", self.port, timeout=HEARD)
                asked = time.monotonic()
                connection.request("GET", "/api/v1/safetymonitor/0/issafe")
                self._judge("issafe", json.load(connection.getresponse())["Value"], asked)
                asked = time.monotonic()
                connection.request("GET", "/observation")
                told = json.load(connection.getresponse())
                self._judge("observation", told["safe"], asked)
                self._judge_values(told)
            except (OSError, http.client.HTTPException, ValueError, KeyError):
                if connection:
                    connection.close()
                connection = None

    def _judge_values(self, told):
        if told["source"] == "none":
            known = [name for name, value in told["values"].items() if value is not None]
            if known:
                self._complain("known without a reading: %s" % known)
            return
        for name in FIELDS:
            value = told["values"][name]
            if value is not None and (why := self.truth.against_value(name, value, time.monotonic())):
                self._complain(why)

    def _look_at_bus(self):
        client = None
        while not self.ended.wait(0.1):
            try:
                client = client or Client(self.env)
                asked = time.monotonic()
                client.say("get Observation1.Safe")
                answer = client.lines.get(timeout=HEARD)
                if answer is None or "error" in answer:
                    raise OSError(answer)
                self._judge("D-Bus", answer.endswith("true"), asked)
            except (OSError, queue.Empty):
                if client:
                    with contextlib.suppress(OSError):
                        client.kill()
                client = None
        if client:
            client.kill()
