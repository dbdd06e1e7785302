"""Runs commands by turns and compares what they took: a figure is a ratio of medians from one run."""

import dataclasses
import os
import statistics
import subprocess
import time


@dataclasses.dataclass
class Sample:
    wall: float  # seconds
    cpu: float  # seconds of the program and its children, in user and system
    peak: int  # bytes


@dataclasses.dataclass
class Command:
    words: list
    folder: object = None
    environment: dict = dataclasses.field(default_factory=dict)
    before: object = None  # called before each run, not measured
    statuses: tuple = (0,)  # that it may end with


def run(command):
    if command.before:
        command.before()
    began = time.perf_counter()
    process = subprocess.Popen([str(word) for word in command.words], cwd=command.folder,
                               env={**os.environ, **command.environment}, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, used = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in command.statuses:
        raise SystemExit(f"bench: status {process.returncode}: {' '.join(map(str, command.words))[:300]}")
    return Sample(time.perf_counter() - began, used.ru_utime + used.ru_stime, used.ru_maxrss * 1024)


class Samples:
    def __init__(self, samples):
        self.samples = samples

    def median(self, what="wall"):
        return statistics.median(getattr(sample, what) for sample in self.samples)

    def spread(self):
        """Half the distance between the quartiles, as a share of the median."""
        low, _, high = statistics.quantiles([sample.wall for sample in self.samples], n=4)
        return (high - low) / 2 / self.median()


def by_turns(commands, rounds):
    """Each command once to warm up, then all of them by turns. Returns Samples by the commands' names."""
    for command in commands.values():
        run(command)
    samples = {name: [] for name in commands}
    for _ in range(rounds):
        for name, command in commands.items():
            samples[name].append(run(command))
    return {name: Samples(taken) for name, taken in samples.items()}
