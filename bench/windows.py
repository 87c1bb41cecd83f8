"""Measures the Windows program under Wine; prints each figure with its budget.

Wine's own share is large: an empty automation server is measured for comparison.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time

from report import leave, megabytes, processor_share, resident_megabytes, row, start_to_window

BIN, UNIT, SECONDS = sys.argv[1], sys.argv[2], float(sys.argv[3])
PROGRAM, LOAD = os.path.join(BIN, "orvalis.exe"), os.path.join(BIN, "com_load.exe")
WINE = os.environ["WINELOADER"]
PATIENCE = 60


def start(*words, output=subprocess.DEVNULL):
    return subprocess.Popen([WINE, *words], stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.DEVNULL,
                            text=True)


def run(*words):
    with start(*words, output=subprocess.PIPE) as process:
        return process.communicate(timeout=PATIENCE)[0]


def stop(process):
    run("taskkill", "/IM", "orvalis.exe")
    process.wait(PATIENCE)


def private_megabytes(pid):
    return megabytes(pid, "Private_Dirty")


def watch(name, options, empty, limit):
    process = start(PROGRAM, "--port", "12", *options)
    time.sleep(8)
    ours, theirs = map(float, run(LOAD, "measure", "300").split())
    row("%s: a property read over an empty server's (%.0f us)" % (name, theirs), "%.2f" % (ours / theirs), "< 1.5",
        ours < 1.5 * theirs)
    share = processor_share(process.pid, SECONDS)
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
run(PROGRAM, "/RegServer")
with subprocess.Popen([UNIT, "--link", folder + "/unit"], stdout=subprocess.PIPE) as unit, \
        start(LOAD, "serve", output=subprocess.PIPE) as server:
    unit.stdout.readline()
    server.stdout.readline()
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
        server.terminate()
        unit.terminate()
        shutil.rmtree(folder, ignore_errors=True)
leave()
