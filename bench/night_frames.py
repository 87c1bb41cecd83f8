"""Reads a night's frames from the simulated unit, one every two seconds of its accelerated time.

  night_frames.py UNIT_PROGRAM END_MS [HOURS] >FRAMES

Each line: milliseconds since 1970-01-01 UTC, a blank, the frame; the last one is of END_MS.
"""

import os
import select
import subprocess
import sys
import tempfile
import time
import tty

from report import give_up, start, stop, wait_for_line

SPEED = 600
unit_program, end_ms = sys.argv[1], int(sys.argv[2])
count = int(float(sys.argv[3] if len(sys.argv) > 3 else 10) * 1800)
with tempfile.TemporaryDirectory() as folder:
    link = folder + "/unit"
    unit = start(unit_program, "--link", link, "--fast", "--speed", str(SPEED), stdout=subprocess.PIPE)
    wait_for_line(unit, "/dev/")
    begin = time.monotonic()
    line = os.open(link, os.O_RDWR | os.O_NOCTTY)
    tty.setraw(line)
    try:
        for i in range(count):
            time.sleep(max(0, begin + 2 * i / SPEED - time.monotonic()))
            os.write(line, b":F")
            frame = b""
            while not frame.endswith(b"#"):
                if not select.select([line], [], [], 10)[0]:
                    give_up("the unit does not answer")
                frame += os.read(line, 200)
            print(end_ms - 2000 * (count - 1 - i), frame.decode())
    finally:
        stop(unit)
