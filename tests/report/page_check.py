#!/usr/bin/env python3
"""Looks at the page of a report as a browser and a reader that cannot see it do: page_check.py PAGE
Fails for markup that is not closed, a reference to something else, headings out of order, tables without
captions or scopes, pictures without words, and colours of text that are too close to what is below them."""

import html.parser
import pathlib
import re
import sys

VOID = {"meta", "rect", "line", "br"}
faults = []


class Page(html.parser.HTMLParser):
    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.open, self.level, self.pictures, self.ids = [], 0, [], set()

    def handle_startendtag(self, tag, attributes):
        self.handle_starttag(tag, attributes)
        if tag not in VOID:
            self.handle_endtag(tag)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag in ("script", "link", "img", "iframe", "object") or {"src", "href", "onclick"} & set(values):
            faults.append(f"<{tag}> leads out of the page")
        if "id" in values:
            if values["id"] in self.ids:
                faults.append(f"two elements are {values['id']}")
            self.ids.add(values["id"])
        if re.fullmatch("h[1-6]", tag):
            if int(tag[1]) > self.level + 1:
                faults.append(f"<{tag}> comes after a heading of level {self.level}")
            self.level = int(tag[1])
        if tag == "th" and "scope" not in values:
            faults.append("a table's heading without scope")
        if values.get("role") == "img":
            self.pictures.append((len(self.open), values.get("aria-labelledby", "").split(), []))
        elif tag in ("title", "desc") and self.pictures and len(self.open) == self.pictures[-1][0] + 1:
            self.pictures[-1][2].append(tag)
        if tag == "svg" and "svg" not in self.open and values.get("role") != "img":
            faults.append("a picture without a role")
        if self.open and self.open[-1] == "table" and tag != "caption" and not self.captioned:
            faults.append("a table without a caption")
        self.captioned = tag == "caption" or (tag != "table" and getattr(self, "captioned", False))
        if tag not in VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        if tag in VOID:
            return
        if not self.open or self.open.pop() != tag:
            sys.exit(f"</{tag}> closes something else, at {self.getpos()}")


def luminance(colour):
    parts = [int(colour[i : i + 2], 16) / 255 for i in (1, 3, 5)]
    linear = [p / 12.92 if p <= 0.03928 else ((p + 0.055) / 1.055) ** 2.4 for p in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    high, low = sorted((luminance(one), luminance(other)), reverse=True)
    return (high + 0.05) / (low + 0.05)


text = pathlib.Path(sys.argv[1]).read_bytes().decode("utf-8")  # raises for anything else
page = Page()
page.feed(text)
page.close()
if page.open:
    faults.append(f"not closed: {page.open}")
if len(page.pictures) != 2:
    faults.append(f"{len(page.pictures)} pictures")
for _, labels, words in page.pictures:
    if words != ["title", "desc"] or not set(labels) <= page.ids:
        faults.append(f"a picture has only {words} {labels}")
themes = re.findall(r":root \{(.*?)\}", text, re.S)
assert len(themes) == 2, "light and dark"
for theme in themes:
    colours = dict(re.findall(r"--([\w-]+): (#[0-9a-f]{6})", theme))
    pairs = [(word, ground) for word in ("text", "faint") for ground in ("back", "box")]
    pairs += [(word, "back") for word in ("built", "failed", "fresh", "warning")]
    faults += [f"{a} on {b}: {contrast(colours[a], colours[b]):.2f}" for a, b in pairs
               if contrast(colours[a], colours[b]) < 4.5]
    if contrast(colours["critical"], colours["back"]) < 3:
        faults.append("the critical path cannot be seen")
bars = re.findall(r"\.timeline (\S+) rect \{ fill: (#\w+).*?\}\s*\.timeline \1 text \{ fill: (#\w+)", text)
assert len(bars) == 8, "light and dark"
faults += [f"text on {name}" for name, fill, ink in bars if contrast(fill, ink) < 4.5]
sys.exit("\n".join(faults) or 0)
