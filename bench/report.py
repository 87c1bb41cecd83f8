"""Shared by the measurements: the table of figures and budgets, and process statistics."""

import os
import statistics
import subprocess
import sys
import time

TICKS = os.sysconf("SC_CLK_TCK")
rows = []


def row(what, figure, budget, kept):
    rows.append(kept)
    print("%-58s %14s   %-14s %s" % (what, figure, budget, "" if kept else "EXCEEDED"), flush=True)


def leave():
    """Exit code 1 when a budget is exceeded."""
    sys.exit(0 if all(rows) else 1)


def check_running(process):
    """Ends the measurement when the process it waits for is gone."""
    if process.poll() is not None:
        sys.exit("%s ended with code %d" % (" ".join(process.args), process.returncode))


def wait_for_line(process, part):
    while part not in (line := process.stdout.readline()):
        if not line:
            process.wait()
            check_running(process)


def cpu_seconds(pid):
    with open("/proc/%d/stat" % pid) as file:
        fields = file.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def processor_share(pid, seconds):
    """Percent of a core, over the next `seconds`."""
    begin, cpu = time.monotonic(), cpu_seconds(pid)
    time.sleep(seconds)
    return 100 * (cpu_seconds(pid) - cpu) / (time.monotonic() - begin)


def megabytes(pid, *kinds):
    """The sum of these lines in the process's smaps_rollup."""
    with open("/proc/%d/smaps_rollup" % pid) as file:
        return sum(int(line.split()[1]) for line in file if line.split(":")[0] in kinds) / 1024


def resident_megabytes(pid):
    return megabytes(pid, "Rss")


def start_to_window(start, stop, env, budget):
    times = []
    for _ in range(9):
        begin = time.monotonic()
        process = start()
        # xdotool's --sync polls twice a second, which is too coarse.
        while not subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Orvalis$"], env=env,
                                 capture_output=True, timeout=20).stdout:
            check_running(process)
            time.sleep(0.005)
        times.append(time.monotonic() - begin)
        stop(process)
    median = statistics.median(times)
    row("start to window", "%.2f s" % median, "< %g s" % budget, median < budget)
