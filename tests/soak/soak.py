"""Brings about one fault after the other, then at random, and looks on all the time.

    soak.py --quick                  the selection for every build, about a minute
    soak.py [--seed N] [--minutes M] [--only NAME ...]
                                     all of them, then at random for M minutes (20)
"""

import argparse
import contextlib
import datetime
import os
import platform
import random
import signal
import subprocess
import sys
import threading
import time
import traceback
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "integration")]

from faults import FAULTS, LINE, Fault  # noqa: E402: found by the line above
from harness import BIN  # noqa: E402
from truth import OLDEST  # noqa: E402
from world import World  # noqa: E402

QUICK_PATIENCE = 0.2
SETTLED = 11  # seconds: longer than a reading is of now
START_AND_END = Fault("start and end", "of each program", "", "works, and ends in time", lambda world: None)
BEGIN, END = "<!-- faults: begin -->", "<!-- faults: end -->"
# Short disturbances of the line that go on beside another fault.
BESIDE = tuple((fault, 0) for fault in ("fault cut 6", "fault garbage 6", "fault names 6", "fault noise 10")) + tuple(
    (fault, OLDEST) for fault in ("fault late=3 10", "stall 5", "delay 1"))


class Run:
    def __init__(self, arguments):
        self.arguments = arguments
        self.chance = random.Random(arguments.seed)
        self.lock = threading.Lock()
        self.outcomes = {}  # by the fault's name: times brought about, longest recovery, what failed
        self.looks = 0
        self.worlds = set()
        for number in (signal.SIGINT, signal.SIGTERM):
            signal.signal(number, self.give_up)
        self.begin = time.monotonic()

    def give_up(self, number, _):
        """Without waiting for the threads, but leaving nothing behind."""
        for world in list(self.worlds):
            world.doCleanups()
        os._exit(128 + number)

    def say(self, text):
        with self.lock:
            print("%7.1f  %s" % (time.monotonic() - self.begin, text), flush=True)

    def note(self, fault, recovered, failure):
        with self.lock:
            times, longest, failures = self.outcomes.get(fault.name, (0, 0.0, []))
            self.outcomes[fault.name] = (times + 1, max(longest, recovered), failures + ([failure] if failure else []))

    def bring_about(self, world, fault):
        """Whether the world is still of use."""
        failure, recovered = "", 0.0
        try:
            fault.act(world)
            of_the_line = fault.expected.startswith(LINE) and not self.arguments.quick
            recovered = world.until_it_works(SETTLED if of_the_line else 0)
            world.check(fault.torn_lines)
        except Exception as error:  # whatever it is, the run goes on and tells
            place = traceback.extract_tb(error.__traceback__)
            failure = "%s (%s)" % (error, " < ".join("%s:%d" % (os.path.basename(f.filename), f.lineno) for f in place))
        self.note(fault, recovered, failure)
        self.say("%s, %s: %s" % (fault.name, world.kind, failure or "works again after %.1f s" % recovered))
        if failure:
            self.say("  events: %s" % "; ".join(line[:300] for line in world.program.all_lines if '"frame"' not in line)[-3000:])
        return not failure

    @contextlib.contextmanager
    def world(self, kind, seed, patience):
        """None when its start fails."""
        world = World(kind, seed, patience)
        self.worlds.add(world)
        begun = False
        try:
            world.begin()
            begun = True
            yield world
            if world.program.process.poll() is None:
                world.end()
        except Exception as error:  # as above
            self.note(START_AND_END, 0, str(error))
            self.say("%s at its start or end: %s" % (kind, error))
        finally:
            if world.watcher:
                self.looks += world.watcher.looks
            self.worlds.discard(world)
            world.doCleanups()
        if not begun:
            yield None

    def row(self, kind, faults, seed):
        """These faults on one world each after the other; a new world after a failure."""
        chance = random.Random(seed)
        while faults:
            patience = QUICK_PATIENCE if self.arguments.quick else 1.0
            with self.world(kind, chance.randrange(2**32), patience) as world:
                while world and faults and self.bring_about(world, faults.pop(0)):
                    pass
            if not world:
                return

    def one_at_a_time(self, faults):
        if not self.arguments.quick:
            self.chance.shuffle(faults)
        # Mostly they wait: several worlds beside each other.
        groups = [("orvalisd", [f for f in faults if "orvalisd" in f.kinds][k::self.arguments.worlds])
                  for k in range(self.arguments.worlds)]
        groups += [("orvalis", [f]) for f in faults if "orvalisd" not in f.kinds]
        self.together(self.row, [(kind, list(group)) for kind, group in groups if group])

    def together(self, act, arguments):
        with ThreadPoolExecutor(len(arguments) or 1) as pool:
            for done in [pool.submit(act, *each, self.chance.randrange(2**32)) for each in arguments]:
                done.result()

    def at_random(self, minutes):
        end = time.monotonic() + 60 * minutes

        def one(seed):
            chance = random.Random(seed)
            while time.monotonic() < end:
                kind = chance.choice(("orvalisd", "orvalisd", "orvalis --headless", "orvalis"))
                self.random_world(kind, chance, end)

        self.together(one, [()] * self.arguments.worlds)

    def random_world(self, kind, chance, end):
        fitting = [f for f in FAULTS if kind in f.kinds and not f.name.startswith("every")]
        chosen = [chance.choice(fitting) for _ in range(6)]
        self.say("at random on %s: %s" % (kind, ", ".join(f.name for f in chosen)))
        with self.world(kind, chance.randrange(2**32), chance.uniform(QUICK_PATIENCE, 1)) as world:
            for fault in chosen if world else ():
                if time.monotonic() > end:
                    return
                if chance.random() < 0.3 and fault.expected.startswith(LINE):  # those of the line stand each other
                    beside, world.truth.under_way = chance.choice(BESIDE)
                    world.unit.tell(beside)
                    self.say("  beside it: " + beside)
                if not self.bring_about(world, fault):
                    return

    def table(self):
        rows = ["| fault | how | ends | expected | times | outcome |", "|---|---|---|---|---|---|"]
        for fault in {fault.name: fault for fault in (*FAULTS, START_AND_END)}.values():
            if fault.name not in self.outcomes:
                continue
            times, longest, failures = self.outcomes[fault.name]
            outcome = "works again within %.1f s" % longest if not failures else "**FAILED %d times: %s**" % (
                len(failures), failures[0].split(" (")[0][:200])
            rows.append("| %s | %s | %s | %s | %d | %s |" % (
                fault.name, fault.how, fault.ends, fault.expected, times, outcome.replace("|", "/")))
        return "\n".join(rows)

    def heading(self):
        version = subprocess.run([BIN + "/orvalisd", "--version"], capture_output=True, text=True, check=False).stdout.strip()
        commit = subprocess.run(["git", "-C", str(HERE), "rev-parse", "--short", "HEAD"], capture_output=True, text=True,
                                check=False).stdout.strip()
        count = sum(times for times, _, _ in self.outcomes.values())
        version += " (%s)" % commit if commit else ""
        return ("%s, %s, %s, seed %d: %d faults in %d minutes, %d looks at the interfaces, %d failures." % (
            datetime.date.today(), version, platform.platform(terse=True), self.arguments.seed, count,
            (time.monotonic() - self.begin) / 60, self.looks, self.failures()))

    def failures(self):
        return sum(len(failures) for _, _, failures in self.outcomes.values())


def parse():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(10**6))
    parser.add_argument("--minutes", type=float, default=20, help="at random, after one at a time")
    parser.add_argument("--only", nargs="*", help="these faults, by name")
    parser.add_argument("--worlds", type=int, default=6, help="so many beside each other")
    parser.add_argument("--table", default="build/soak/table.md")
    parser.add_argument("--document", help="its table is replaced")
    return parser.parse_args()


def main():
    arguments = parse()
    run = Run(arguments)
    run.say("seed %d" % arguments.seed)
    faults = [f for f in FAULTS if (f.quick or not arguments.quick) and (not arguments.only or f.name in arguments.only)]
    run.one_at_a_time(faults)
    if not arguments.quick and arguments.minutes > 0:
        run.at_random(arguments.minutes)
    text = run.heading() + "\n\n" + run.table() + "\n"
    Path(arguments.table).parent.mkdir(parents=True, exist_ok=True)
    Path(arguments.table).write_text(text, "utf-8")
    if arguments.document:
        document = Path(arguments.document)
        before, rest = document.read_text("utf-8").split(BEGIN)
        document.write_text(before + BEGIN + "\n" + text + END + rest.split(END)[1], "utf-8")
    print(text)
    return 1 if run.failures() else 0


if __name__ == "__main__":
    sys.exit(main())
