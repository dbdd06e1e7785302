#!/usr/bin/env python3
"""Makes a group of projects of any size in a prefix of its own, with what is registered of it, and the same group as a
build.ninja and a Makefile: the same projects, the same edges, the same files to look at.

generate.py FOLDER [--projects N] [--references N] [--levels N] [--members N] [--shape SHAPE] [--queued]
"""

import argparse
import dataclasses
import os
import pathlib
import random
import shutil
import uuid

SYSTEM_COMPONENTS = 150
SYSTEM_SHARE = 2 / 3
BUILT_AT = 1_600_000_000  # every source is older than every binary, and those of lower levels are older

# What the compiler writes into each project file and no rule of the build reads.
PROPERTIES = """Startup="(None)"
HelpFile=""
Title="{name}"
ExeName32="{name}.dll"
Path32="C:\\Group\\Bin"
Command32=""
Name="{name}"
HelpContextID="0"
Description="Component {name}"
CompatibleMode="2"
CompatibleEXE32="C:\\Group\\Bin\\{name}.dll"
VersionCompatible32="1"
MajorVer=1
MinorVer=0
RevisionVer=0
AutoIncrementVer=0
ServerSupportFiles=0
VersionCompanyName="Group"
CompilationType=0
OptimizationType=0
NoAliasing=0
BoundsCheck=0
OverflowCheck=0
StartMode=1
Unattended=0
ThreadPerObject=0
MaxNumberOfThreads=1
ThreadingModel=1
"""


@dataclasses.dataclass
class Group:
    projects: int = 250
    references: int = 30
    levels: int = 10
    members: int = 20
    shape: str = "levels"  # which queue row depends on which: see DEPENDENCIES
    queued: bool = True
    seed: int = 1


def identity(name):
    return "{" + str(uuid.uuid5(uuid.NAMESPACE_DNS, name)).upper() + "}"


def project_name(number):
    return f"Part{number:05}"


def binary(number):
    return f"C:\\Group\\Bin\\{project_name(number)}.dll"


def project_file(number):
    return f"C:\\Group\\{project_name(number)}\\{project_name(number)}.vbp"


def system_component(number):
    return f"C:\\windows\\system32\\System{number:03}.dll"


def level_of(group, number):
    return number * group.levels // group.projects


def uses(group, number, rng):
    """The projects of lower levels whose binaries a project refers to."""
    lower = [0, number * group.levels // group.projects * group.projects // group.levels][group.levels > 1]
    count = min(lower, group.references - round(group.references * SYSTEM_SHARE))
    return rng.sample(range(lower), count)


def systems(group, rng):
    return rng.sample(range(SYSTEM_COMPONENTS), min(SYSTEM_COMPONENTS, round(group.references * SYSTEM_SHARE)))


def random_lower(group, row, rng):
    lower = level_of(group, row) * group.projects // group.levels
    return rng.randrange(lower) if lower else None


def ring(group, row):
    """Circles of 2, 3, 4... rows: their orders come back together after very many rounds only."""
    start, length = 0, 2
    while start + length <= row:
        start, length = start + length, length + 1
    following = row + 1 if row + 1 < start + length else start
    return following if following < group.projects else None


# Row by row, the row that a queue row depends on.
DEPENDENCIES = {
    "levels": random_lower,
    "chain": lambda group, row, rng: row + 1 if row + 1 < group.projects else None,
    "star": lambda group, row, rng: group.projects - 1 if row + 1 < group.projects else None,
    "pairs": lambda group, row, rng: row ^ 1 if row ^ 1 < group.projects else None,
    "rings": lambda group, row, rng: ring(group, row),
}


def reference_line(component, title):
    return f"Reference=*\\G{identity(component)}#1.0#0#{component}#{title}\n"


def members_of(group, number):
    kinds = [("Form", "frm"), ("Module", "bas"), ("Class", "cls"), ("UserControl", "ctl")]
    for member in range(group.members):
        key, extension = kinds[member % len(kinds)]
        file = f"{key}{member:03}.{extension}"
        yield f"{key}={key}{member:03}; {file}\n" if key in ("Module", "Class") else f"{key}={file}\n", file


def project_text(group, number, used, system):
    text = "Type=OleDll\n"
    text += "".join(reference_line(system_component(n), f"System component {n}") for n in system)
    text += "".join(reference_line(binary(n), project_name(n)) for n in used)
    text += "".join(line for line, _ in members_of(group, number))
    return text + PROPERTIES.format(name=project_name(number))


def write(path, text, time=BUILT_AT):
    path.write_bytes(text.replace("\n", "\r\n").encode("cp1252"))
    os.utime(path, (time, time))


def host(windows_path):
    return "drive_c" + windows_path[2:].replace("\\", "/")


def write_project(root, group, number, used, system):
    folder = root / host(project_file(number)).rsplit("/", 1)[0]
    folder.mkdir()
    write(root / host(project_file(number)), project_text(group, number, used, system))
    for line, file in members_of(group, number):
        write(folder / file, f'Attribute VB_Name = "{line.split("=")[0]}"\nOption Explicit\n')
    write(root / host(binary(number)), "MZ", BUILT_AT + 1 + level_of(group, number))


def write_registry(root, texts):
    """The default values of keys below Software\\Classes."""
    def escaped(text):
        return text.replace("\\", "\\\\").replace('"', '\\"')

    lines = ["WINE REGISTRY Version 2", ";; All keys relative to \\\\Machine"]
    for key, value in texts.items():
        lines += ["", f"[Software\\\\Classes\\\\{escaped(key)}]", f'@="{escaped(value)}"']
    (root / "system.reg").write_bytes(("\n".join(lines) + "\n").encode("cp1252"))


def registered(group):
    components = [system_component(n) for n in range(SYSTEM_COMPONENTS)]
    components += [binary(n) for n in range(group.projects)]
    texts = {f"TypeLib\\{identity(each)}\\1.0\\0\\win32": each for each in components}
    texts["VisualBasic.Project\\shell\\open\\command"] = '"C:\\compiler.exe" "%1"'
    return texts


def queue_lines(group, rng):
    rows = list(range(group.projects))
    if group.shape == "levels":
        random.Random(group.seed).shuffle(rows)
    for row in rows:
        depends = DEPENDENCIES[group.shape](group, row, rng)
        yield f"queue=*{project_file(row)},{'' if depends is None else project_file(depends)}\n"


def write_build_project(root, group, rng):
    text = "".join(f"project={project_file(n)}\n" for n in range(group.projects))
    if group.queued:
        text += "".join(queue_lines(group, rng))
    text += "breakonerror=False\nchangerefs=False\nbuilddir=C:\\Group\\Bin\\\nchangerefs=False\n"
    text += "breakcompat=False\ngetonbuild=False\nversion=\n"
    write(root / "drive_c/Group/Group.bpf", text)


def inputs_of(group, number, used, system):
    folder = host(project_file(number)).rsplit("/", 1)[0]
    files = [host(project_file(number))] + [f"{folder}/{file}" for _, file in members_of(group, number)]
    return files + [host(system_component(n)) for n in system] + [host(binary(n)) for n in used]


def write_build_files(root, edges):
    """The group for ninja and make, and for ninja without the sources that the program never looks at. Everything is up
    to date, and no log of an earlier build is needed to see that."""
    rule = "rule compile\n  command = ./drive_c/compiler.exe $in /make /out log\n  generator = 1\n"
    ninja = references = rule
    makefile = "all: " + " ".join(output for output, _ in edges) + "\n"
    for output, inputs in edges:
        files = " ".join(inputs)
        components = " ".join(file for file in inputs if file.endswith(".dll"))
        ninja += f"build {output}: compile {inputs[0]} | {' '.join(inputs[1:])}\n"
        references += f"build {output}: compile {inputs[0]} | {components}\n"
        makefile += f"{output}: {files}\n\t./drive_c/compiler.exe {inputs[0]} /make /out log\n"
    (root / "build.ninja").write_text(ninja)
    (root / "references.ninja").write_text(references)
    (root / "Makefile").write_text(makefile)


def generate(root, group):
    """Makes the group anew in a folder."""
    root = pathlib.Path(root)
    shutil.rmtree(root, ignore_errors=True)
    rng = random.Random(group.seed)
    for folder in ("drive_c/Group/Bin", "drive_c/windows/system32"):
        (root / folder).mkdir(parents=True)
    for number in range(SYSTEM_COMPONENTS):
        write(root / host(system_component(number)), "MZ")
    edges = []
    for number in range(group.projects):
        used, system = uses(group, number, rng), systems(group, rng)
        write_project(root, group, number, used, system)
        edges.append((host(binary(number)), inputs_of(group, number, used, system)))
    write_registry(root, registered(group))
    write_build_project(root, group, rng)
    write_build_files(root, edges)
    return root


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder")
    for field in ("projects", "references", "levels", "members", "seed"):
        parser.add_argument(f"--{field}", type=int, default=getattr(Group, field))
    parser.add_argument("--shape", choices=DEPENDENCIES, default=Group.shape)
    arguments = vars(parser.parse_args())
    generate(arguments.pop("folder"), Group(**arguments))


if __name__ == "__main__":
    main()
