"""Opens the main window on the screen of DISPLAY and waits until it is drawn and has nothing left to do."""

import os
import pathlib
import subprocess
import time

from measure import Sample, Samples  # noqa: F401

PATIENCE = 120  # seconds
QUIET = 0.1  # a program that used next to no processor for so long waits for its user
NEXT_TO_NONE = 2  # ticks in that time: scroll bars fade in and out meanwhile


def shown(process):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(process.pid), "--name", r"Group\.bpf"],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return found.returncode == 0


def processor_ticks(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def until_idle(process):
    """The moment from which the program waited for its user."""
    end = time.perf_counter() + PATIENCE
    since, ticks = time.perf_counter(), 0
    while time.perf_counter() - since < QUIET:
        now = processor_ticks(process)
        if now > ticks + NEXT_TO_NONE or not shown(process):
            since, ticks = time.perf_counter(), now
        if process.poll() is not None or time.perf_counter() > end:
            raise SystemExit("bench: the window did not come up")
        time.sleep(0.005)
    return since


def open_until_idle(program, root, file):
    began = time.perf_counter()
    process = subprocess.Popen([program, "--prefix", root, file], cwd=root, env={**os.environ, "HOME": str(root)},
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        ready = until_idle(process)
        status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
        peak = int(next(line for line in status.splitlines() if line.startswith("VmHWM")).split()[1]) * 1024
        return Sample(ready - began, processor_ticks(process) / os.sysconf("SC_CLK_TCK"), peak)
    finally:
        process.kill()
        process.wait()
