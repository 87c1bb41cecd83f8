"""Reads what heaptrack recorded and prints the bytes allocated at the quietest and at the fullest moment of each hour."""

import sys

HOUR = 3_600_000  # of the recorded milliseconds

sizes, allocated, hours, hour = [], 0, {}, 0
for line in sys.stdin:
    kind = line[0]
    if kind == "+":
        allocated += sizes[int(line[2:], 16)]
    elif kind == "-":
        allocated -= sizes[int(line[2:], 16)]
    elif kind == "a":
        sizes.append(int(line.split()[1], 16))
    elif kind == "c":
        hour = int(line[2:], 16) // HOUR
    if kind in "+-":
        low, high = hours.get(hour, (allocated, allocated))
        hours[hour] = (min(low, allocated), max(high, allocated))
for hour, (low, high) in hours.items():
    print("%4d h  %8d to %8d" % (hour, low, high))
