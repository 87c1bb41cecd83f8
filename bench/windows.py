"""Measures the Windows program under Wine; prints each figure with its budget.

Wine's own share is large: an empty automation server is measured for comparison.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time

import report
from report import leave, megabytes, processor_share, resident_megabytes, row, stage, start_to_window, wait_for_line

BIN, UNIT, SECONDS = sys.argv[1], sys.argv[2], float(sys.argv[3])
PROGRAM, LOAD = os.path.join(BIN, "orvalis.exe"), os.path.join(BIN, "com_load.exe")
WINE = os.environ["WINELOADER"]
PATIENCE = 60


def start(*words, output=subprocess.DEVNULL):
    return report.start(WINE, *words, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL)


def run(*words):
    return subprocess.run([WINE, *words], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True, timeout=PATIENCE).stdout


def stop(process):
    report.let_go(process)
    run("taskkill", "/IM", "orvalis.exe")
    process.wait(PATIENCE)


def private_megabytes(pid):
    return megabytes(("Private_Dirty",), pid)


def watch(name, options, empty, limit):
    process = start(PROGRAM, "--port", "12", *options)
    time.sleep(8)
    ours, theirs = map(float, run(LOAD, "measure", "300").split())
    row("%s: a property read over an empty server's (%.0f us)" % (name, theirs), "%.2f" % (ours / theirs), "< 1.5",
        ours < 1.5 * theirs)
    share = processor_share(SECONDS, process.pid)
    row("  processor time over %d s" % SECONDS, "%.2f %%" % share, "< 0.3 %", share < 0.3)
    memory, alone = resident_megabytes(process.pid), resident_megabytes(empty.pid)
    row("  resident memory over an empty server's (%.0f MB)" % alone, "%.1f MB" % (memory - alone), "< %d MB" % limit,
        memory - alone < limit)
    print("    of it the program's own: %.1f MB (the empty server's: %.1f MB)" % (
        private_megabytes(process.pid), private_megabytes(empty.pid)), flush=True)
    stop(process)


size = os.path.getsize(PROGRAM) / 1e6
row("the executable", "%.1f MB" % size, "< 25 MB", size < 25)
folder = tempfile.mkdtemp(prefix="orvalis-bench-")
os.environ["ORVALIS_PROFILE_DIR"] = "Z:" + folder.replace("/", "\\")
line = os.path.join(os.environ["WINEPREFIX"], "dosdevices", "com12")
with stage("the program under Wine", 600 + 2 * int(SECONDS)):
    run(PROGRAM, "/RegServer")
    unit = report.start(UNIT, "--link", folder + "/unit", stdout=subprocess.PIPE)
    server = start(LOAD, "serve", output=subprocess.PIPE)
    wait_for_line(unit, "/dev/")
    wait_for_line(server, "")
    if os.path.lexists(line):
        os.remove(line)
    os.symlink(folder + "/unit", line)
    try:
        start_to_window(lambda: start(PROGRAM, "--demo"), stop, os.environ, 1)
        watch("headless", ["--headless"], server, 30)
        watch("panel", [], server, 70)
    finally:
        os.remove(line)
        run(PROGRAM, "/UnregServer")
        report.stop(server)
        report.stop(unit)
        shutil.rmtree(folder, ignore_errors=True)
leave()
