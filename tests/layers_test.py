#!/usr/bin/env python3
"""A layer includes the standard library and the layers that its CMakeLists.txt names: layers_test.py SRC"""

import pathlib
import re
import sys

faults = []
for layer in ("platform", "core", "analysis", "freshness", "scc", "build", "check", "report", "mail"):
    folder = pathlib.Path(sys.argv[1], layer)
    uses = (folder / "CMakeLists.txt").read_text().partition("USES")[2]
    named = {layer, *re.findall(r"gorbex_(\w+)", uses)}
    for file in sorted([*folder.glob("*.h"), *folder.glob("*.cpp")]):
        for bracket, name in re.findall(r'^\s*#\s*include\s*([<"])([^>"]+)', file.read_text(), re.M):
            if name.rpartition("/")[0] not in named if bracket == '"' else re.search(r"[./]", name):
                faults.append(f"{file} must not include {name}")
sys.exit("\n".join(faults) or 0)
