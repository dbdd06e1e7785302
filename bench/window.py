"""Opens the main window on the screen of DISPLAY and waits until it is drawn and has nothing left to do."""

import os
import pathlib
import subprocess
import time

from measure import Sample, Samples  # noqa: F401

PATIENCE = 120  # seconds
QUIET = 0.3  # a program that used no processor for so long is idle


def shown(process):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(process.pid), "--name", r"Group\.bpf"],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return found.returncode == 0


def processor_ticks(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return int(fields[11]) + int(fields[12])


def until_idle(process):
    """The moment at which the program last used the processor."""
    end = time.perf_counter() + PATIENCE
    last, ticks = time.perf_counter(), -1
    while time.perf_counter() - last < QUIET or not shown(process):
        now = processor_ticks(process)
        if now != ticks:
            last, ticks = time.perf_counter(), now
        if process.poll() is not None or time.perf_counter() > end:
            raise SystemExit("bench: the window did not come up")
        time.sleep(0.005)
    return last


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
