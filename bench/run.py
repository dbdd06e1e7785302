#!/usr/bin/env python3
"""Measures the program beside its peers: run.py BUILD_FOLDER WORK_FOLDER [--quick] [--page] [--only NAME]

Everything is made in the work folder. With --page the figures and pictures go into docs/performance.md.
"""

import argparse
import functools
import json
import os
import pathlib
import shutil
import subprocess
import sys
import time

import generate
import window
from measure import Command, by_turns, run
from report import Report

ROOT = pathlib.Path(__file__).resolve().parent.parent
BPF = "drive_c/Group/Group.bpf"
SHAPES = ("chain", "levels", "star", "pairs", "rings")
ROUNDS = 11


class Bench:
    def __init__(self, build, work, sizes):
        self.build, self.work, self.sizes = build.resolve(), work.resolve(), sizes
        self.report = Report()

    def program(self, name):
        folder = {"gorbex": "src/cli", "gorbexbuilder": "src/ui"}.get(name, "bench")
        return self.build / folder / name

    def gorbex(self, root, *words):
        return Command([self.program("gorbex"), "--prefix", root, *words], root, {"HOME": str(root)})

    def group(self, **spec):
        root = generate.generate(self.work / "group", generate.Group(**spec))
        shutil.copy(self.program("bench-compiler"), root / "drive_c/compiler.exe")
        return root

    def load(self):
        """Loading a group and judging every reference. The build file that ninja reads has every project as
        one edge, and everything is up to date, so that ninja too looks at every file and does nothing."""
        self.report.section("Loading and scanning, 30 references and 20 sources for each project")
        growth = {}
        for size in self.sizes:
            root = self.group(projects=size)
            taken = by_turns({
                "gorbex graph": self.gorbex(root, "graph", BPF),
                "ninja -n": Command(["ninja", "-n"], root),
                "ninja -n without sources": Command(["ninja", "-n", "-f", "references.ninja"], root),
                "bare loop": Command([self.program("bench-floor"), *self.look_lists(root)], root),
                "bare loop, each reference": Command([self.program("bench-floor"), *self.all_looks(root)], root),
                "gorbex show": self.gorbex(root, "show", BPF),
                "gorbex show --json": self.gorbex(root, "show", "--json", BPF)}, ROUNDS)
            for name, samples in taken.items():
                self.report.point("Loading and scanning", name, size, samples.median())
            growth[size] = taken["gorbex graph"]
            self.compare_load(size, taken, root)
        for size in self.sizes:
            if 2 * size in growth:
                goal = size == 2000
                self.report.compare(f"{2 * size} projects against {size}", growth[2 * size], growth[size],
                                    2.2 if goal else None, "Load and scan 4,000 projects, against 2,000" if goal else None)

    def compare_load(self, size, taken, root):
        goal = size == 2000
        ours, ninja = taken["gorbex graph"], taken["ninja -n"]
        self.report.compare(f"{size} projects: graph against ninja -n", ours, ninja, 3.0 if goal else None,
                            "Load and scan 2,000 projects, against `ninja -n`" if goal else None)
        self.report.compare(f"{size} projects: graph against ninja -n without sources", ours,
                            taken["ninja -n without sources"])
        self.report.compare(f"{size} projects: graph against the bare loop", ours, taken["bare loop"])
        self.report.compare(f"{size} projects: graph against the bare loop that looks once for each reference", ours,
                            taken["bare loop, each reference"])
        self.report.compare(f"{size} projects: that bare loop against ninja -n", taken["bare loop, each reference"], ninja,
                            page="Only a loop that reads the 2,000 project files and looks once per reference, against `ninja -n`"
                            if goal else None)
        self.report.compare(f"{size} projects: show --json against ninja -n", taken["gorbex show --json"], ninja,
                            4.0 if goal else None, "`show --json` of 2,000 projects, against `ninja -n`" if goal else None)
        if goal:
            allowed = 4 * project_bytes(root) + (20 << 20)
            self.report.add("2000 projects: peak memory of show, as a share of 4 times the project files + 20 MB",
                            taken["gorbex show"].median("peak") / allowed, target=1.0,
                            page="Peak memory of `show`, 2,000 projects, as a share of 4 times their files + 20 MB")

    def look_lists(self, root):
        """The project files, and what the program looks at: bindings, binaries, system components."""
        projects = sorted(str(path) for path in root.glob("drive_c/Group/*/*.vbp"))
        looks = [f"{pathlib.Path(path).parent}/mssccprj.scc" for path in projects]
        for folder in ("Group/Bin", "windows/system32"):
            looks += [str(path) for path in (root / "drive_c" / folder).iterdir()]
        return self.written(root, "looks.txt", projects, looks)

    def all_looks(self, root):
        """The same, but a system component is looked at as often as projects refer to it: no verdict is remembered."""
        projects = sorted(root.glob("drive_c/Group/*/*.vbp"))
        looks = [f"{path.parent}/mssccprj.scc" for path in projects]
        looks += [str(path) for path in (root / "drive_c/Group/Bin").iterdir()]
        for path in projects:
            fields = (line.split("#") for line in path.read_text("cp1252").splitlines() if line.startswith("Reference="))
            looks += [str(root / generate.host(each[3])) for each in fields if "system32" in each[3]]
        return self.written(root, "all.txt", [str(path) for path in projects], looks)

    def written(self, root, name, projects, looks):
        files = root / "projects.txt", root / name
        for file, lines in zip(files, (projects, looks)):
            file.write_text("\n".join(lines) + "\n")
        return files

    def arrange(self):
        self.report.section("Arrange, without loading")
        for size in self.sizes:
            slowest = max(self.arrange_shape(size, shape) for shape in SHAPES)
            goal = size == 2000
            self.report.add(f"{size} rows, the slowest shape", slowest, "s of processor time", target=0.5 if goal else None,
                            page="Arrange 2,000 rows, the slowest of five shapes" if goal else None)

    def arrange_shape(self, size, shape):
        root = self.group(projects=size, references=0, members=0, shape=shape)
        taken = by_turns({"arrange": self.gorbex(root, "queue", BPF, "arrange"),
                          "load": self.gorbex(root, "queue", BPF)}, ROUNDS // 2)
        seconds = max(taken["arrange"].median("cpu") - taken["load"].median("cpu"), 0)
        self.report.point("Arrange", shape, size, seconds)
        return seconds

    def outdated(self):
        """A run over a group in which everything is up to date, after one that has built all of it."""
        self.report.section("A run that skips what is up to date, 30 references and 20 sources for each project")
        growth = {}
        for size in self.sizes:
            root = self.group(projects=size)
            build = self.gorbex(root, "build", "--outdated", "--yes", BPF)
            for _ in range(2):  # the second takes up how the files look that the first has written
                run(build)
                time.sleep(2.1)
            taken = by_turns({"gorbex build --outdated": build, "gorbex graph": self.gorbex(root, "graph", BPF),
                              "ninja": Command(["ninja"], root)}, ROUNDS)
            for name, samples in taken.items():
                self.report.point("Nothing to build", name, size, samples.median())
            growth[size] = ours = taken["gorbex build --outdated"]
            goal = size == 2000
            self.report.compare(f"{size} projects: against gorbex graph", ours, taken["gorbex graph"], 1.5 if goal else None,
                                "A run over 2,000 projects that are up to date, against `gorbex graph`" if goal else None)
            self.report.compare(f"{size} projects: against ninja", ours, taken["ninja"],
                                page="The same, against `ninja` over the same files" if goal else None)
        for size in self.sizes:
            if 2 * size in growth:
                goal = size == 2000  # measured one after the other, so that only processor times can be compared
                self.report.add(f"{2 * size} projects against {size}, processor time",
                                growth[2 * size].median("cpu") / growth[size].median("cpu"), target=2.2 if goal else None,
                                page="The same over 4,000 projects, against 2,000, in processor time" if goal else None)
        self.first_run()

    def first_run(self, projects=500):
        """What the option costs when nothing is recorded, and how long the record becomes."""
        root = self.group(projects=projects)
        record = root / "drive_c/Program Files/GorbexBuilder/gorbexbuilder.built"
        build = [self.gorbex(root, "build", "--yes", *option, BPF) for option in ([], ["--outdated"])]
        for each in build:
            each.before = lambda: record.unlink(missing_ok=True)
        taken = by_turns({"without": build[0], "with": build[1]}, ROUNDS)
        self.report.compare(f"{projects} projects, nothing recorded: with the option against without it", taken["with"],
                            taken["without"], 1.1, f"A first run over {projects} projects, with `--outdated` against without it")
        build[0].before = None
        sizes = []
        for _ in range(4):  # each run replaces all lines of the one before
            run(build[0])
            sizes.append(record.stat().st_size)
        spec = generate.Group(projects=projects)
        inputs = projects * (spec.members + spec.references + 2)  # and the project file, and the compiler
        self.report.add(f"{projects} projects: bytes of the record for each input, replaced lines included", max(sizes) / inputs,
                        "bytes", target=150, page="The record of builds, for each input, replaced lines included")

    def check(self):
        """Everything that a check before a run looks at, among it every source."""
        self.report.section("A check before a run, 30 references and 20 sources for each project")
        growth = {}
        for size in self.sizes:
            root = self.group(projects=size)
            check = self.gorbex(root, "check", BPF)
            check.statuses = (1,)  # the group's queue is not arranged, and its binaries have no interface
            taken = by_turns({"gorbex check": check, "gorbex graph": self.gorbex(root, "graph", BPF)}, ROUNDS // 2)
            growth[size] = ours = taken["gorbex check"]
            goal = size == 2000
            self.report.point("A check", "gorbex check", size, ours.median())
            self.report.compare(f"{size} projects: check against graph", ours, taken["gorbex graph"], 2.0 if goal else None,
                                "A check of 2,000 projects and their sources, against `gorbex graph`" if goal else None)
        for size in self.sizes:
            if 2 * size in growth:
                self.report.compare(f"{2 * size} projects against {size}", growth[2 * size], growth[size])

    def overhead(self, projects=500):
        self.report.section("Overhead of a run, with a compiler that only writes its log")
        for size in self.sizes:
            taken = self.run_by_turns(size, 3 if size > projects else ROUNDS // 2)
            for name, samples in taken.items():
                self.report.point("A run", name, size, samples.median())
            goal = size == projects
            self.report.compare(f"{size} projects: gorbex build against ninja -j1", taken["gorbex"], taken["ninja"],
                                1.0 if goal else None,
                                f"A run over {projects} projects with an instant compiler, against `ninja -j1`" if goal else None)
            self.report.compare(f"{size} projects: gorbex build against make -j1", taken["gorbex"], taken["make"])

    def run_by_turns(self, projects, rounds):
        root = self.group(projects=projects, references=0, members=0)
        files = [generate.host(generate.project_file(n)) for n in range(projects)]
        compiler = "./drive_c/compiler.exe"
        ninja = f"rule run\n  command = {compiler} $in /make /out log\n"
        ninja += "".join(f"build never/{n}: run {file}\n" for n, file in enumerate(files))
        make = f"all: {' '.join(f'run{n}' for n in range(projects))}\n.PHONY: all\n"
        make += "".join(f"run{n}:\n\t{compiler} {file} /make /out log\n" for n, file in enumerate(files))
        (root / "run.ninja").write_text(ninja)
        (root / "run.mk").write_text(make)
        return by_turns({"gorbex": self.gorbex(root, "build", "--all", "--yes", BPF),
                         "ninja": Command(["ninja", "-j1", "-f", "run.ninja"], root),
                         "make": Command(["make", "-j1", "-f", "run.mk"], root)}, rounds)

    def together(self, projects=64, seconds=0.2):
        """Compilers that wait show the schedule alone; those that compute share the machine's processors."""
        self.report.section(f"{projects} projects side by side, {seconds} s each")
        worst = {"ideal": 0, "ninja": 0}
        for levels in (4, 8, 16):
            root = self.group(projects=projects, levels=levels, references=9, members=0)
            chain = self.write_ninja_of_uses(root)
            for kind in ("BENCH_WAIT", "BENCH_WORK"):
                alone = None
                for jobs in (1, 2, 4, 8, 16):
                    ours = self.gorbex(root, "build", "--all", "--yes", BPF, "--jobs", jobs)
                    peer = Command(["ninja", f"-j{jobs}", "-f", "uses.ninja"], root)
                    for command in (ours, peer):
                        command.environment = {**command.environment, kind: str(round(seconds * 1000))}
                    taken = by_turns({"gorbex": ours, "ninja": peer}, 2)
                    wall = taken["gorbex"].median()
                    alone = alone or wall
                    ideal = max(chain * seconds, projects * seconds / jobs) + alone - projects * seconds
                    what = f"{levels} levels, {kind[6:].lower()}, {jobs} at once"
                    if kind == "BENCH_WAIT":
                        self.report.point("64 compilers that wait", f"{levels} levels", jobs, wall, "compilers at once")
                        self.report.add(f"{what}: against the critical path and the sum", wall / ideal, target=1.05)
                        worst["ideal"] = max(worst["ideal"], wall / ideal)
                    self.report.compare(f"{what}: against ninja -j{jobs}", taken["gorbex"], taken["ninja"], 1.05)
                    worst["ninja"] = max(worst["ninja"], wall / taken["ninja"].median())
        self.report.add("the worst against the critical path and the sum", worst["ideal"], target=1.05,
                        page=f"{projects} projects with 1 to 16 jobs, against the longer of critical path and sum / jobs (worst)")
        self.report.add("the worst against ninja", worst["ninja"], target=1.05,
                        page=f"{projects} projects with 1 to 16 jobs, against `ninja -j` over the same graph (worst)")

    def write_ninja_of_uses(self, root):
        """The same graph for ninja, as gorbex sees it. Returns the projects of its longest chain."""
        graph = self.gorbex(root, "graph", "--json", BPF)
        said = json.loads(subprocess.run([str(word) for word in graph.words], cwd=root, capture_output=True, check=True).stdout)
        uses = {}
        for user, used in said["edges"]:
            uses.setdefault(user, []).append(used)
        paths = [node["path"] for node in said["nodes"]]
        numbers = {path: number for number, path in enumerate(paths)}
        text = "rule run\n  command = ./drive_c/compiler.exe $in /make /out log.$out\n"
        for path in paths:
            needed = " ".join(f"never{numbers[used]}" for used in uses.get(path, []))
            text += f"build never{numbers[path]}: run {generate.host(path)} | {needed}\n"
        (root / "uses.ninja").write_text(text)

        @functools.cache
        def chain(path):
            return 1 + max((chain(used) for used in uses.get(path, [])), default=0)

        return max(chain(path) for path in paths)

    def rewriting(self, identities=20):
        self.report.section(f"New identities in references: {identities} identities in many sources")
        for size in self.sizes:
            files = size * 5 // 2
            taken = self.rewrite_by_turns(files, identities)
            for name, samples in taken.items():
                self.report.point("New identities", f"{name}, 2.5 sources for each project", size, samples.median())
            self.report.compare(f"{files} sources: against sed -i, which minds letter case", taken["gorbex"], taken["sed"],
                                page="Rewrite 20 identities in 5,000 sources, against `sed -i`" if files == 5000 else None)
            self.report.compare(f"{files} sources: against sed -i with its flag I", taken["gorbex"], taken["sed caseless"])

    def rewrite_by_turns(self, files, identities):
        changes = write_sources(self.work / "sources", files, identities)
        expressions = [word for old, new in changes for word in ("-e", f"s/{old}/{new}/g")]
        caseless = [word + "I" if word.startswith("s/") else word for word in expressions]
        copies = []

        def fresh(name):
            """A new copy each time: a file system is slow to reuse the places of files just removed."""
            copies.append(self.work / f"sources-{len(copies)}")
            shutil.rmtree(copies[-1], ignore_errors=True)
            shutil.copytree(self.work / "sources", copies[-1])
            (self.work / name).unlink(missing_ok=True)
            (self.work / name).symlink_to(copies[-1])
            os.sync()

        def sed(name, words):
            sources = sorted(path.name for path in (self.work / "sources/drive_c/Rewrite").iterdir())
            return Command(["sed", "-i", *words, *sources], self.work / name / "drive_c/Rewrite", {"LC_ALL": "C"},
                           lambda: fresh(name))

        taken = by_turns({
            "gorbex": Command([self.program("bench-parts"), "rewrite", self.work / "ours"], before=lambda: fresh("ours")),
            "sed": sed("theirs", expressions), "sed caseless": sed("theirs", caseless)}, 3)
        same_result(self.work / "ours", self.work / "theirs")
        for copy in copies:
            shutil.rmtree(copy)
        return taken

    def window(self):
        self.report.section("The window, from its start until it is idle")
        for size in self.sizes:
            root = self.group(projects=size)
            ours = window.Samples([window.open_until_idle(self.program("gorbexbuilder"), root, BPF) for _ in range(6)][1:])
            show = by_turns({"show": self.gorbex(root, "show", BPF)}, 5)["show"]
            for name, samples in (("window", ours), ("gorbex show", show)):
                self.report.point("The window", name, size, samples.median())
            goal = size == 2000
            self.report.compare(f"{size} projects: against gorbex show", ours, show, 2.5 if goal else None,
                                "The window of 2,000 projects, until it is idle, against `gorbex show`" if goal else None)
            self.report.add(f"{size} projects: peak memory", ours.median("peak") / (1 << 20), "MB")

    def mail(self, requests=1000):
        self.report.section(f"Requests by mail: {requests} in one look, without a compile, each with its answer")
        for size in self.sizes:
            taken = self.serve_by_turns(size, requests)
            for what, unit in (("wall", "ms"), ("cpu", "ms of processor time")):
                alone = (taken["full"].median(what) - taken["empty"].median(what)) / requests
                self.report.add(f"{size} projects: one request", alone * 1000, unit)
            self.report.point("A request by mail", "1,000 requests", size, alone * requests)

    def serve_by_turns(self, projects, requests):
        root = self.group(projects=projects, references=0, members=0)
        folder = root / "Maildir/.Builder"
        subprocess.run([self.program("gorbex"), "--prefix", root, "settings", "MailTransport",
                        f"sendmail://{self.program('bench-compiler')}"], check=True, stdout=subprocess.DEVNULL)

        def fill(count):
            shutil.rmtree(root / "Maildir", ignore_errors=True)
            for part in ("cur", "new", "tmp", "../cur", "../new", "../tmp"):
                (folder / part).mkdir(parents=True, exist_ok=True)
            for number in range(count):
                (folder / f"new/{number:06}.host").write_text(
                    f"From: Anna Berg <anna@dev.example>\r\nSubject: Build Request\r\n"
                    f"Message-ID: <{number}@dev.example>\r\n\r\nPRO {generate.project_file(0)},\r\n")

        def serve(count):
            command = self.gorbex(root, "serve", BPF, "--once", "--no")
            command.before = lambda: fill(count)
            return command

        return by_turns({"full": serve(requests), "empty": serve(0)}, 3)

    def log(self, lines=100_000):
        self.report.section(f"The activity log, {lines} lines")
        root = self.group(projects=10, references=0, members=0)
        parts = self.program("bench-parts")
        beside = root / "drive_c/Program Files/GorbexBuilder/plain.log"
        beside.parent.mkdir(parents=True, exist_ok=True)
        taken = by_turns({"log": Command([parts, "log", root, lines], before=lambda: clear_logs(root)),
                          "plain": Command([parts, "plain", beside, lines],
                                           before=lambda: beside.unlink(missing_ok=True))}, 5)
        self.report.compare("against plain open, write and close", taken["log"], taken["plain"],
                            page="100,000 log lines, against open, write and close")


def project_bytes(root):
    return sum(path.stat().st_size for path in root.glob("drive_c/Group/*/*.vbp"))


def clear_logs(root):
    shutil.rmtree(root / "drive_c/Program Files/GorbexBuilder/Logs", ignore_errors=True)
    shutil.rmtree(root / "drive_c/Program Files/GorbexBuilder/logs", ignore_errors=True)


def write_sources(root, files, identities):
    """A project that refers to components whose identities are new, and its modules, which name some of the old ones."""
    shutil.rmtree(root, ignore_errors=True)
    folder = root / "drive_c/Rewrite"
    folder.mkdir(parents=True)
    old, new, interface = ([generate.identity(f"{kind}{n}") for n in range(identities)] for kind in ("old", "new", "own"))
    text = "Type=OleDll\n"
    for n in range(identities):
        text += f"Reference=*\\G{old[n]}#1.0#0#C:\\Bin\\{interface[n]}.dll#{interface[n]}.dll\n"
    text += "".join(f"Module=Module{n:04}; Module{n:04}.bas\n" for n in range(files))
    generate.write(folder / "Rewrite.vbp", text)
    for n in range(files):
        lines = "".join(f"    Total = Total + Price({line}) * Quantity\n" for line in range(100))
        names = "".join(f'Object = "{old[(n + i) % identities]}#1.0#0"; "Part{i}.ocx"\n' for i in range(3))
        generate.write(folder / f"Module{n:04}.bas", names + lines)
    generate.write_registry(root, {f"Interface\\{interface[n]}\\TypeLib": new[n] for n in range(identities)})
    return list(zip(old, new))


def same_result(ours, theirs):
    for path in sorted((ours / "drive_c/Rewrite").iterdir())[:50]:
        if path.read_bytes() != (theirs / "drive_c/Rewrite" / path.name).read_bytes():
            sys.exit(f"bench: {path.name} was rewritten otherwise")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("--quick", action="store_true", help="only groups of 250 and 500 projects")
    parser.add_argument("--page", action="store_true", help="write docs/performance.md and its pictures")
    names = ("load", "outdated", "check", "arrange", "overhead", "together", "rewriting", "log", "mail", "window")
    parser.add_argument("--only", choices=names, action="append", help="only these measurements")
    arguments = parser.parse_args()
    arguments.work.mkdir(parents=True, exist_ok=True)
    sizes = [250, 500] if arguments.quick else [250, 500, 1000, 2000, 4000]
    bench = Bench(arguments.build, arguments.work, sizes)
    for name in arguments.only or names:
        getattr(bench, name)()
    if arguments.page:
        bench.report.write(ROOT / "docs")


if __name__ == "__main__":
    main()
