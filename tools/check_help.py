#!/usr/bin/env python3
"""Holds the help together.

    tools/check_help.py HELP_FOLDER SOURCE_FOLDER

Prints each fault and exits 1 when there is one. The rules:
  - a link leads to a page and an anchor that are there, and a picture is there;
  - the contents name every page, and contents and index lead to what is there;
  - no page sets a colour, so that all read in light and in dark palettes, and none runs a script;
  - every page that the program asks for is there (frame/help_topics.cpp), and the pages of
    reference name each formula function and each template variable that the sources have.
"""

import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from xml.etree import ElementTree

# Names that the sources hold, and the page that must have each of them.
NAMED = [
    ("worksheet/formula_functions.cpp", r'row\("([A-Z]+)"', "Spread_Sheet_Screen/Formula_Functions.htm"),
    ("timesheets/template_variables.cpp", r'"(#\w+#)"', "Spread_Sheet_Screen/Template_Variables.htm"),
]
COLORS = re.compile(r"(?:\bbgcolor=|[^-]color\s*:|background(?:-color)?\s*:)", re.I)


class Page(HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.links, self.files, self.anchors, self.tags = [], [], set(), set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.tags.add(tag)
        if "name" in values and tag == "a":
            self.anchors.add(values["name"])
        if "href" in values:
            (self.links if tag == "a" else self.files).append(values["href"])
        if tag == "img":
            self.files.append(values.get("src", ""))


def check(folder, sources):
    pages = {
        str(path.relative_to(folder)): Page(path.read_text(encoding="utf-8"))
        for path in sorted(folder.rglob("*.htm"))
    }

    def target(page, link):
        """The page and anchor that a link names, seen from a page; None for an outside one."""
        if re.match(r"[a-z]+:", link):
            return None
        name, _, anchor = link.partition("#")
        path = (folder / page).parent / name if name else folder / page
        inside = path.resolve()
        if not inside.is_relative_to(folder):
            return link, anchor
        return str(inside.relative_to(folder)), anchor

    def is_missing(place):
        name, anchor = place
        return name not in pages or (anchor and anchor not in pages[name].anchors)

    for name, page in pages.items():
        for link in page.links:
            place = target(name, link)
            if place and is_missing(place):
                yield f"{name}: the link to {link} leads nowhere"
        for file in page.files:
            if not ((folder / name).parent / file).is_file():
                yield f"{name}: {file} is missing"
        if "script" in page.tags:
            yield f"{name}: the help runs no scripts"
        if COLORS.search((folder / name).read_text(encoding="utf-8")):
            yield f"{name}: a page sets no colours"

    project = ElementTree.parse(folder / "kelvrane.qhp")
    contents = [section.get("ref") for section in project.iter("section")]
    for name in pages:
        if name not in contents:
            yield f"kelvrane.qhp: the contents don't name {name}"
    for keyword in project.iter("keyword"):
        if is_missing(target("kelvrane.qhp", keyword.get("ref"))):
            yield f"kelvrane.qhp: the keyword {keyword.get('name')} leads nowhere"
    for ref in contents:
        if is_missing(target("kelvrane.qhp", ref)):
            yield f"kelvrane.qhp: the contents name {ref}, which isn't there"

    topics = sources / "frame/help_topics.cpp"
    for name in re.findall(r'"([^"]+\.htm)"', topics.read_text(encoding="utf-8")):
        if name not in pages:
            yield f"{topics.name}: {name} isn't there"
    for source, pattern, page in NAMED:
        text = (folder / page).read_text(encoding="utf-8")
        for name in re.findall(pattern, (sources / source).read_text(encoding="utf-8")):
            if f"<tt>{name}</tt>" not in text:
                yield f"{page}: {name} of {source} isn't told of"


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    faults = list(check(*(Path(folder).resolve() for folder in sys.argv[1:])))
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
