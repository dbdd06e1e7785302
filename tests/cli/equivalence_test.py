#!/usr/bin/env python3
"""A run that skips what is up to date leaves what one that builds everything leaves:
equivalence_test.py GORBEX COMPILER [--changes N] [--kills N] [--seed N]

Two prefixes hold the same random groups and see the same random changes. After each change one of them is built with
--outdated, the other as a whole: binaries, project files and registry must be the same. The compiler stands for every
input in the binary. With kills, the run that skips is killed at random moments before it is repeated."""

import argparse
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import uuid

arguments = argparse.ArgumentParser()
arguments.add_argument("gorbex")
arguments.add_argument("compiler")
arguments.add_argument("--changes", type=int, default=30)
arguments.add_argument("--kills", type=int, default=4)
arguments.add_argument("--seed", type=int, default=1)
options = arguments.parse_args()
RANDOM = random.Random(options.seed)
PER_GROUP = 40  # changes, until a new group is made
history = []  # what was done to the present group


def fail(what):
    sys.exit(f"FAILED (seed {options.seed}): {what}\n  " + "\n  ".join(history[-12:]))


def identity_of(name):
    """What the compiler gives to the library of a project that was never built."""
    return "{" + str(uuid.uuid5(uuid.UUID("8de73936-bb4d-470e-9013-2a161cc74d0d"), name.lower())).upper() + "}"


class World:
    """A prefix with a copy of the group."""

    def __init__(self, folder, skips):
        self.prefix, self.skips = pathlib.Path(folder), skips
        self.group = self.prefix / "drive_c/G"
        self.env = dict(os.environ, GORBEX_PREFIX=str(self.prefix), STANDIN_COMPILER_SEED="equal")
        subprocess.run([options.compiler, "/regserver"], env=self.env, check=True)
        for bin in ("Bin", "Other", "Old"):
            (self.group / bin).mkdir(parents=True)

    def start(self, *words):
        return subprocess.Popen([options.gorbex, *words], env=self.env, start_new_session=True, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def run(self, *words):
        process = self.start(*words)
        out = process.communicate(timeout=120)[0]
        if process.returncode not in (0, 1):
            fail(f"status {process.returncode} of gorbex {' '.join(words)}: {out}")
        return out

    def build(self, extra):
        return self.run("build", str(self.group / "G.bpf"), "--yes", *(["--outdated"] if self.skips else []), *extra)

    def kill_a_build(self, extra):
        process = self.start("build", str(self.group / "G.bpf"), "--yes", "--outdated", *extra)
        time.sleep(RANDOM.random() * RANDOM.choice([0.03, 0.1, 0.3]))
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.communicate()

    def state(self):
        state = {}
        for file in sorted(self.group.rglob("*")):
            if not file.is_file() or file.suffix not in (".dll", ".vbp", ".exe"):
                continue
            data = file.read_bytes()
            if file.suffix == ".vbp":
                data = b"\n".join(line for line in data.replace(b"\r", b"").split(b"\n") if line)
            state[str(file.relative_to(self.group))] = data
        section = ""
        registry = (self.prefix / "gorbexbuilder.reg")
        for line in registry.read_text("latin-1").splitlines() if registry.exists() else []:
            if line.startswith("["):
                section = line.split("]")[0].lower()
            elif "=" in line and not line.startswith("#") and "gorbexbuilder" not in section:
                state[section + line.split("=")[0]] = line
        return state


class Project:
    def __init__(self, number, uses):
        self.name, self.uses, self.mode, self.title = f"Part{number}", uses, "2", ""
        self.members = {"Thing": self.source("Thing"), "Other": self.source("Other")}
        self.module, self.picture = "Public Sub Main()\r\nEnd Sub\r\n", None

    @staticmethod
    def source(name):
        return {"name": name, "methods": ["Public Sub Work(ByVal Sum As Long)"], "constant": 1, "body": 0, "broken": False}

    def write(self, worlds):
        text = ["Type=OleDll"]
        for used in self.uses:
            text.append(f"Reference=*\\G{identity_of(used)}#1.0#0#..\\Bin\\{used}.dll#{used}")
        text += [f"Class={each}; {each}.cls" for each in self.members] + ["Module=modMain; modMain.bas"]
        if self.picture is not None:
            text.append('ResFile32="Pictures.res"')
        text += [f'Title="{self.title}"', f'ExeName32="{self.name}.dll"', 'Path32="..\\Bin"', f'Name="{self.name}"',
                 f'CompatibleMode="{self.mode}"', f'CompatibleEXE32="..\\Bin\\{self.name}.dll"', "MajorVer=1", "MinorVer=0",
                 "RevisionVer=0", "AutoIncrementVer=0", "OptimizationType=0", "CodeViewDebugInfo=0"]
        for world in worlds:
            folder = world.group / self.name
            folder.mkdir(exist_ok=True)
            for file in folder.glob("*.cls"):
                if file.stem not in self.members:
                    file.unlink()
            self.put(folder / f"{self.name}.vbp", "\r\n".join(text) + "\r\n")
            self.put(folder / "modMain.bas", 'Attribute VB_Name = "modMain"\r\n' + self.module)
            if self.picture is not None:
                self.put(folder / "Pictures.res", self.picture)
            for each in self.members.values():
                self.put(folder / f"{each['name']}.cls", self.text_of(each))

    # What holds the same keeps its time, so that looks are taken for what they are worth.
    @staticmethod
    def put(file, text):
        if not file.exists() or file.read_text("latin-1") != text:
            file.write_text(text, "latin-1", newline="")

    @staticmethod
    def text_of(each):
        lines = ["VERSION 1.0 CLASS", "BEGIN", "  MultiUse = -1  'True", "END", f'Attribute VB_Name = "{each["name"]}"',
                 "Public Enum " + each["name"] + "Kind", f"  First{each['name']} = {each['constant']}", "End Enum"]
        for method in each["methods"]:
            lines += [method, f"  Debug.Print {each['body']}", "End Sub"]
        return "\r\n".join(lines + (["Next"] if each["broken"] else [])) + "\r\n"


class Group:
    def __init__(self, folder):
        self.worlds = [World(folder / name, name == "skips") for name in ("skips", "builds")]
        self.projects = []
        for number in range(RANDOM.randint(3, 6)):
            names = [each.name for each in self.projects]
            self.projects.append(Project(number, RANDOM.sample(names, min(len(names), RANDOM.randint(0, 2)))))
        order = [f"C:\\G\\{each.name}\\{each.name}.vbp" for each in self.projects]
        lines = [f"project={path}" for path in order] + [f"queue=*{path}," for path in order]
        for world in self.worlds:
            (world.group / "G.bpf").write_text("\r\n".join(lines + ["builddir=C:\\G\\Bin\\", "breakcompat=False"]) + "\r\n",
                                               newline="")
        self.write()
        self.settle("the first build")

    def write(self):
        for each in self.projects:
            each.write(self.worlds)

    def settle(self, what, *extra, kills=0):
        skips, builds = self.worlds
        for _ in range(kills):
            skips.kill_a_build(extra)
        printed = skips.build(extra)
        builds.build(extra)
        found, wanted = skips.state(), builds.state()
        if found != wanted:
            names = [name for name in sorted(found.keys() | wanted.keys()) if found.get(name) != wanted.get(name)]
            fail(f"after {what}: {names[:6]}\n{printed}")
        return printed


def files(group, name):
    return [world.group / name for world in group.worlds]


class Change:
    """Whatever may happen to a project and one of its sources."""

    def body(group, project, each):
        each["body"] += 1

    def touch(group, project, each):
        moment = time.time() + RANDOM.choice([-90000, -3, 0, 90000])
        for file in files(group, f"{project.name}/{each['name']}.cls"):
            os.utime(file, (moment, moment))

    def edit_under_an_old_time(group, project, each):
        for file in files(group, f"{project.name}/{each['name']}.cls"):
            kept = file.stat()
            file.write_text(file.read_text("latin-1").replace("Print", "Write"), "latin-1", newline="")
            os.utime(file, ns=(kept.st_atime_ns, kept.st_mtime_ns))
        group.settle("an edit under an old time")

    def build_and_undo(group, project, each):
        each["body"] += 1
        group.write()
        group.settle("an edit")
        each["body"] -= 1

    def interface(group, project, each):
        each["methods"].append(f"Public Sub Do{len(each['methods'])}(Optional ByVal What As Long = {RANDOM.randint(0, 9)})")

    def other_parameter(group, project, each):
        each["methods"][-1] = f"Public Sub Last(ByRef Sum As {RANDOM.choice(['Long', 'String', 'Double'])})"

    def constant(group, project, each):
        each["constant"] += RANDOM.choice([1, -1, 1000000000]) if abs(each["constant"]) < 1000000000 else -each["constant"]

    def broken(group, project, each):
        each["broken"] = True
        group.write()
        group.settle("a source that does not compile")
        each["broken"] = False

    def new_member(group, project, each):
        name = f"New{len(project.members)}"
        if project.members.pop("New2", None) is None:
            project.members[name] = Project.source(name)

    def picture(group, project, each):
        project.picture = str(RANDOM.random())

    def project_line(group, project, each):
        project.title = str(RANDOM.random())

    def missing_member(group, project, each):
        for file in files(group, f"{project.name}/{each['name']}.cls"):
            file.unlink()
        group.settle("a missing source")

    def repoint(group, project, each):
        before = [other.name for other in group.projects[: group.projects.index(project)]]
        project.uses = RANDOM.sample(before, min(len(before), RANDOM.randint(0, 3)))

    def register_another(group, project, each):
        for world in group.worlds:
            copy = world.group / "Old" / f"{project.name}.dll"
            shutil.copy(world.group / "Bin" / f"{project.name}.dll", copy)
            world.run("register", str(copy))

    def unregister(group, project, each):
        for world in group.worlds:
            world.run("unregister", str(world.group / "Bin" / f"{project.name}.dll"))

    def replace_binary(group, project, each):
        other = RANDOM.choice(group.projects).name
        for world in group.worlds:
            source = world.group / "Bin" / f"{other}.dll"
            if source.exists() and other != project.name:
                shutil.copy(source, world.group / "Bin" / f"{project.name}.dll")
                world.run("register", str(world.group / "Bin" / f"{project.name}.dll"))

    def break_compatibility(group, project, each):
        group.settle("broken compatibility", "--break-compat")
        group.write()

    def version(group, project, each):
        group.settle("another version", "--version", f"1.{RANDOM.randint(0, 3)}.{RANDOM.randint(0, 2)}")

    def other_folder(group, project, each):
        for world in group.worlds:
            world.build(["--build-dir", str(world.group / "Other")])
        if group.worlds[0].state() != group.worlds[1].state():
            fail("another folder")


CHANGES = [Change.body, *(change for change in vars(Change).values() if callable(change))]

skipped = built = done = 0
killing = RANDOM.sample(range(options.changes), min(options.kills, options.changes))
while done < options.changes:
    with tempfile.TemporaryDirectory() as folder:
        history.clear()
        group = Group(pathlib.Path(folder))
        for _ in range(min(PER_GROUP, options.changes - done)):
            change = RANDOM.choice(CHANGES)
            project = RANDOM.choice(group.projects)
            kills = killing.count(done)
            history.append(f"{change.__name__} of {project.name}" + (" and a kill" if kills else ""))
            change(group, project, RANDOM.choice(list(project.members.values())))
            group.write()
            counts = group.settle(change.__name__, kills=kills).splitlines()[-2:]
            numbers = re.search(r"(\d+) built.*?(?:(\d+) up to date)?(?:, \d+ not built)? in ", "\n".join(counts))
            built += int(numbers.group(1)) if numbers else 0
            skipped += int(numbers.group(2) or 0) if numbers else 0
            done += 1
if skipped < options.changes:
    fail(f"only {skipped} builds were skipped")
print(f"{done} changes, {min(options.kills, done)} kills: {built} projects built, {skipped} skipped, no difference")
