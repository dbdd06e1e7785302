#!/usr/bin/env python3
"""How the work grows with the group, in instructions: growth_test.py GORBEX

Instructions are counted, since no other load of the machine disturbs that.

Twice as many projects must cost little more than twice as much: a slip into quadratic time costs four times as much.
A round of Arrange is linear, but rows that all hang on one another take up to as many rounds as there are rows: there
twice as many rows may cost four times as much, and a slip costs eight times.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "bench"))
import generate  # noqa: E402

GORBEX = pathlib.Path(sys.argv[1]).resolve()
SMALL = 100
LINEAR, BY_ROUNDS = 2.5, 5.0


def instructions(root, *words):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", GORBEX, "--prefix", root, *words]
    ended = subprocess.run(command, cwd=root, text=True, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    if ended.returncode != 0:
        sys.exit(f"FAILED: {words}: {ended.stderr}")
    return int(re.search(r"Collected : (\d+)", ended.stderr).group(1))


def load(root):
    return instructions(root, "graph", "drive_c/Group/Group.bpf") - instructions(root, "--version")


def check(root):
    return instructions(root, "check", "--ignore", "compatible-binary-missing,queue-order,compiler-missing",
                        "drive_c/Group/Group.bpf")


def arrange(root):
    file = "drive_c/Group/Group.bpf"
    return instructions(root, "queue", file, "arrange") - instructions(root, "queue", file)


def growth(folder, measure, **spec):
    """The cost of a group of twice the size, as a multiple."""
    small, large = (measure(generate.generate(folder, generate.Group(projects=size, **spec)))
                    for size in (SMALL, 2 * SMALL))
    return large / small


def main():
    with tempfile.TemporaryDirectory() as folder:
        bare = {"references": 0, "members": 0}
        cases = [("loading and scanning", LINEAR, load, {}),
                 ("checking", LINEAR, check, {}),
                 ("Arrange, levels", LINEAR, arrange, {**bare, "shape": "levels"}),
                 ("Arrange, pairs", LINEAR, arrange, {**bare, "shape": "pairs"}),
                 ("Arrange, chain", BY_ROUNDS, arrange, {**bare, "shape": "chain"}),
                 ("Arrange, star", BY_ROUNDS, arrange, {**bare, "shape": "star"})]
        too_much = []
        for what, limit, measure, spec in cases:
            factor = growth(folder, measure, **spec)
            print(f"{what}: {factor:.2f} times the instructions for twice the projects (less than {limit})")
            if factor >= limit:
                too_much.append(what)
        if too_much:
            sys.exit(f"FAILED: {', '.join(too_much)}")


main()
