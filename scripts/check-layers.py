#!/usr/bin/env python3
"""Checks the direction of the includes between the folders of src/: downwards only, and no cycle among neighbours.

Below `ui` and `platform` only the C++ standard library is allowed, and few libraries of headers alone in the folders
that need them: no Qt and no operating-system headers.

A driver in drivers/ is a program of its own, that talks to ours over the network: it includes nothing of src/.
"""

import pathlib
import re
import sys

# From the bottom up; a folder may include those of the levels below it, and neighbours of its own level.
LEVELS = [
    ["base"],
    ["config"],
    ["reading"],
    ["unit", "verdict", "panel", "logs", "history", "publish"],
    ["app"],
    ["server", "network"],
    ["ui", "platform"],
]
STANDARD_LIBRARY_ONLY = {folder for level in LEVELS[:-1] for folder in level}
# What a folder may include besides, by the beginning of the header's name.
HEADER_LIBRARIES = {"app": ("nlohmann/",), "network": ("boost/", "nlohmann/")}
# The files of src/ itself, above all folders, in their own order.
CONNECTING = [["core"], ["program_windows", "program_assistant", "launch"], ["main", "orvalisd"]]

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
STANDARD_HEADER = re.compile(r"[a-z_]+")

LEVEL = {name: number for number, level in enumerate(LEVELS + CONNECTING) for name in level}


def node_of(path):
    """What a file belongs to: its folder, or for a file of src/ itself its own name."""
    return str(path.parent) if len(path.parts) > 1 else path.stem


def level_of(node):
    return LEVEL.get(node.split("/")[0])


def find_cycle(graph):
    done, trail = set(), []

    def visit(node):
        if node in trail:
            return [*trail[trail.index(node) :], node]
        if node in done:
            return None
        trail.append(node)
        for target in sorted(graph.get(node, ())):
            cycle = visit(target)
            if cycle:
                return cycle
        trail.pop()
        done.add(node)
        return None

    return next(filter(None, map(visit, sorted(graph))), None)


def check_drivers(drivers):
    return [
        f"drivers/{path.relative_to(drivers)}: includes {quoted}, which is not its own"
        for path in sorted([*drivers.rglob("*.h"), *drivers.rglob("*.cpp")])
        for quoted, _ in INCLUDE.findall(path.read_text(encoding="utf-8"))
        if quoted and not (path.parent / quoted).exists()
    ]


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    source = root / "src"
    complaints, graph = check_drivers(root / "drivers"), {}
    for path in sorted([*source.rglob("*.h"), *source.rglob("*.cpp")]):
        name = path.relative_to(source)
        node = node_of(name)
        if level_of(node) is None:
            complaints.append(f"src/{name}: not in any level")
            continue
        for quoted, system in INCLUDE.findall(path.read_text(encoding="utf-8")):
            if system:
                folder = node.split("/")[0]
                allowed = STANDARD_HEADER.fullmatch(system) or system.startswith(HEADER_LIBRARIES.get(folder, ()))
                if folder in STANDARD_LIBRARY_ONLY and not allowed:
                    complaints.append(f"src/{name}: <{system}> is not a standard library header")
                continue
            if not (source / quoted).exists():
                continue  # generated, or a library's
            target = node_of(pathlib.Path(quoted))
            if target == node:
                continue
            graph.setdefault(node, set()).add(target)
            if level_of(target) is None or level_of(target) > level_of(node):
                complaints.append(f"src/{name}: includes {quoted}, which is above it")
    cycle = find_cycle(graph)
    if cycle:
        complaints.append("folders include each other: " + " -> ".join(cycle))
    print("\n".join(complaints), end="\n" if complaints else "", file=sys.stderr)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
