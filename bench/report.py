"""Shared by the measurements: processes and the time they are given, the table of figures, process statistics.

Every wait ends: with the process that is waited for (SIGCHLD) and with its stage's time (SIGALRM). Both end the measurement
and say why, whatever it is waiting in.
"""

import atexit
import contextlib
import ctypes
import os
import platform
import signal
import statistics
import subprocess
import sys
import time

PATIENCE = 10  # seconds that a process gets to end
BEGIN, END = "<!-- figures -->", "<!-- end of the figures -->"

watched = []  # processes that have no reason to end
stages = []
rows = []


def give_up(text):
    """Ends the measurement, where a part of it may have failed already."""
    sys.exit("bench: %s%s" % ("in “%s”: " % stages[-1] if stages else "", text))


def name(process):
    return "%s (pid %d)" % (" ".join(process.args), process.pid)


def look_for_the_gone(*_):
    for process in list(watched):
        if process.poll() is not None:
            watched.remove(process)
            give_up("%s ended by itself, with code %d" % (name(process), process.returncode))


def end_with_parent():
    ctypes.CDLL(None).prctl(1, signal.SIGKILL)  # PR_SET_PDEATHSIG


def kill_the_rest():
    rest, watched[:] = list(watched), []
    for process in rest:
        process.kill()


signal.signal(signal.SIGCHLD, look_for_the_gone)
signal.signal(signal.SIGTERM, lambda *_: give_up("ended by a signal"))
signal.signal(signal.SIGALRM, lambda *_: give_up("took too long; still running: %s" % ", ".join(map(name, watched))))
atexit.register(kill_the_rest)


@contextlib.contextmanager
def stage(what, seconds):
    """A part of the measurement, and the time in which it is over or given up."""
    stages.append(what)
    signal.alarm(seconds)
    yield
    signal.alarm(0)
    stages.pop()


def start(*command, **options):
    """A process that is to run until `stop`: when it ends before, so does the measurement."""
    process = subprocess.Popen(command, text=True, preexec_fn=end_with_parent, **options)
    watched.append(process)
    look_for_the_gone()  # in case it ended before it was watched
    return process


def let_go(process):
    """It may end from here on."""
    if process in watched:
        watched.remove(process)


def stop(process):
    let_go(process)
    process.terminate()
    try:
        process.wait(PATIENCE)
    except subprocess.TimeoutExpired:
        process.kill()
        give_up("%s did not end within %d s" % (name(process), PATIENCE))
    for pipe in (process.stdin, process.stdout):
        if pipe:
            pipe.close()


@contextlib.contextmanager
def awake():
    """Keeps the processors awake, by what gives way to everything: how long a sleeping one of a virtual machine takes to
    wake up, up to 0.1 ms and several times in each call, is the host's figure and hides ours."""
    busy = [start("chrt", "--idle", "0", "sh", "-c", "while :; do :; done") for _ in range(os.cpu_count())]
    try:
        yield
    finally:
        for process in busy:
            stop(process)


def run(*command, **options):
    """The output of a process that ends by itself."""
    try:
        return subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              preexec_fn=end_with_parent, **options).stdout
    except subprocess.CalledProcessError as error:
        give_up("%s %s" % (error, error.stderr[-2000:]))


def row(what, figure, budget, kept, beside=""):
    """One figure; `budget` may be empty, `beside` is what another program needs for the same."""
    rows.append((what, figure, budget, kept, beside))
    print("%-58s %14s   %-14s %-8s %s" % (what, figure, budget, "" if kept else "EXCEEDED", beside), flush=True)


def load():
    return "%.1f, %.1f and %.1f" % os.getloadavg()


load_before = load()


def machine():
    with open("/proc/cpuinfo") as file:
        model = next((line.split(":")[1].strip() for line in file if line.startswith("model name")), platform.machine())
    version = run("git", "describe", "--always", "--dirty").strip()
    return ("Measured on %s at %s: %s, %d cores, Linux %s. Load of the machine over the last 1, 5 and 15 minutes: %s "
            "before, %s after." % (time.strftime("%Y-%m-%d"), version, model, os.cpu_count(), platform.release(),
                                   load_before, load()))


def document(path):
    """Puts the figures between the two marks of this file."""
    table = ["", machine(), "", "| figure | ours | budget | beside it |", "|---|---|---|---|"]
    for what, figure, budget, kept, beside in rows:
        indented = "– " + what.strip() if what.startswith(" ") else what
        table.append("| %s | %s%s | %s | %s |" % (indented, figure, "" if kept else " **over**", budget, beside))
    with open(path, encoding="utf-8") as file:
        before, rest = file.read().split(BEGIN)
    with open(path, "w", encoding="utf-8") as file:
        file.write(before + BEGIN + "\n".join([*table, "", END]) + rest.split(END)[1])


def leave():
    """Exit code 1 when a budget is exceeded."""
    over = [what.strip() for what, _, _, kept, _ in rows if not kept]
    if over:
        print("over budget: " + "; ".join(over))
    sys.exit(1 if over else 0)


def wait_for_line(process, part):
    """The next line with `part` in it. The process is watched: its end ends the wait."""
    for line in iter(process.stdout.readline, ""):
        if part in line:
            return line
    give_up(name(process) + " closed its output")


def cpu_seconds(*pids):
    """What the processes have used, to the nanosecond."""
    used = 0
    for pid in pids:
        for task in os.listdir("/proc/%d/task" % pid):
            with open("/proc/%d/task/%s/schedstat" % (pid, task)) as file:
                used += int(file.read().split()[0])
    return used / 1e9


def processor_share(seconds, *pids):
    """Percent of a core, over the next `seconds`."""
    begin, cpu = time.monotonic(), cpu_seconds(*pids)
    time.sleep(seconds)
    return 100 * (cpu_seconds(*pids) - cpu) / (time.monotonic() - begin)


def megabytes(kinds, *pids):
    """The sum of these lines in the processes' smaps_rollup."""
    total = 0
    for pid in pids:
        with open("/proc/%d/smaps_rollup" % pid) as file:
            total += sum(int(line.split()[1]) for line in file if line.split(":")[0] in kinds)
    return total / 1024


def resident_megabytes(*pids):
    return megabytes(("Rss",), *pids)


def start_to_window(start_one, stop_one, env, budget):
    times = []
    for _ in range(9):
        begin = time.monotonic()
        process = start_one()
        # xdotool's --sync polls twice a second, which is too coarse.
        while not subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Orvalis$"], env=env,
                                 capture_output=True, timeout=20).stdout:
            time.sleep(0.005)
        times.append(time.monotonic() - begin)
        stop_one(process)
    median = statistics.median(times)
    row("start to window", "%.2f s" % median, "< %g s" % budget, median < budget)
