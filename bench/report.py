"""The figures as lines on the screen, as tables of the page on speed, and as pictures of their growth."""

import dataclasses
import os
import re
import subprocess


@dataclasses.dataclass
class Figure:
    what: str
    value: float
    unit: str  # "times" for a ratio
    target: float = None
    spread: float = None
    cpu: float = None  # the same ratio of processor times
    page: str = None  # its name on the page on speed; figures without one are shown on the screen only

    def text(self):
        if self.unit == "times":
            return f"{self.value:.2f} times"
        return f"{self.value:.3g} {self.unit}"

    def verdict(self):
        if self.target is None:
            return ""
        return f"{'met' if self.value <= self.target else '**missed**'} (at most {self.target:g})"


class Report:
    def __init__(self):
        self.sections = []
        self.series = {}
        self.across = {}

    def section(self, title):
        print(f"\n{title}", flush=True)
        self.sections.append((title, []))

    def add(self, what, value, unit="times", **more):
        figure = Figure(what, value, unit, **more)
        self.sections[-1][1].append(figure)
        cpu = f"  processor {figure.cpu:.2f}" if figure.cpu is not None else ""
        spread = f"  ±{figure.spread:.0%}" if figure.spread is not None else ""
        print(f"  {what}: {figure.text()}{spread}{cpu}  {figure.verdict().replace('*', '')}", flush=True)

    def compare(self, what, ours, peer, target=None, page=None):
        self.add(what, ours.median() / peer.median(), target=target, spread=ours.spread() + peer.spread(),
                 cpu=ours.median("cpu") / peer.median("cpu"), page=page)

    def point(self, plot, line, size, seconds, across="projects"):
        self.across[plot] = across
        self.series.setdefault(plot, {}).setdefault(line, []).append((size, seconds))

    def markdown(self):
        cores = len(os.sched_getaffinity(0))
        text = f"Measured on {cores} {'core' if cores == 1 else 'cores'}.\n"
        text += "\n| measured | median | spread | processor time | target |\n|---|---|---|---|---|\n"
        for each in (figure for _, figures in self.sections for figure in figures if figure.page):
            spread = "" if each.spread is None else f"±{each.spread:.0%}"
            cpu = "" if each.cpu is None else f"{each.cpu:.2f} times"
            text += f"| {each.page} | {each.text()} | {spread} | {cpu} | {each.verdict()} |\n"
        for plot in self.series:
            text += f"\n![{plot}](images/performance/{file_name(plot)})\n"
        return text

    def write(self, docs):
        page = docs / "performance.md"
        begin, end = "<!-- figures: scripts/bench -->", "<!-- end of the figures -->"
        body = re.sub(re.escape(begin) + ".*" + re.escape(end),
                      lambda _: f"{begin}\n{self.markdown()}{end}", page.read_text(), flags=re.S)
        page.write_text(body)
        folder = docs / "images" / "performance"
        folder.mkdir(parents=True, exist_ok=True)
        for plot, lines in self.series.items():
            draw(folder / file_name(plot), plot, self.across[plot], lines)


def file_name(plot):
    return re.sub(r"[^a-z]+", "-", plot.lower()).strip("-") + ".svg"


def draw(file, title, across, lines):
    falls = all(points[0][1] > points[-1][1] for points in lines.values())
    key = "right" if falls else "left"
    script = (f'set terminal svg size 720,400 font "sans,12" background "white"\nset output "{file}"\n'
              f'set title "{title}"\nset xlabel "{across}"\nset ylabel "seconds"\nset key {key} top\nset grid\n'
              "set xrange [0:*]\nset yrange [0:*]\nplot ")
    script += ", ".join(f'"-" title "{name}" with linespoints pt 7' for name in lines) + "\n"
    for points in lines.values():
        script += "".join(f"{x} {y}\n" for x, y in points) + "e\n"
    subprocess.run(["gnuplot"], input=script, text=True, check=True)
