#!/usr/bin/env python3
"""Holds the house's floors: an include points down, never up, never in a circle.

    tools/check_layers.py SOURCE_FOLDER

Prints each include that breaks a rule and exits 1 when there is one. The rules:
  - a file includes only what lies on its own floor or below;
  - files don't include each other in a circle, and neither do folders of one floor;
  - core files (everything but screens, widgets/ and app/) include nothing of Qt Widgets,
    PrintSupport or Help, and don't name QApplication.
"""

import re
import sys
from pathlib import Path

# One row a floor, bottom to top: the folders that stand on it, then single modules, which count
# more than their folder. "screens" are the files frmX in any folder.
FLOORS = [
    (["platform"], []),
    (["worksheet", "chartspace"], []),
    (["frame"], ["charts/chart_types"]),
    (["timevalues"], []),
    (["history"], []),
    (["records"], []),
    (["timekeeping"], []),
    (["timesheets", "collections", "charts", "calendar", "options", "update"], []),
    (["tray"], []),
    (["startup"], []),
    (["widgets", "screens"], []),
    (["app"], []),
]
NOT_CORE = {"widgets", "screens", "app"}

# Public headers of the modules that core must not link.
WINDOW_HEADERS = re.compile(
    r"Qt(Widgets|PrintSupport|Help)(/.*)?|Q(Widget|Application|Style\w*|Dialog\w*|\w+Dialog"
    r"|\w*Layout|\w*Button|\w+Box|Label|LineEdit|\w*TextEdit|TextBrowser|MainWindow|Menu|MenuBar"
    r"|SystemTrayIcon|ToolBar|ToolTip|StatusBar|Splitter|TabBar|\w+View|\w+Widget|HeaderView"
    r"|ScrollArea|ScrollBar|Slider|Dial|ProgressBar|Frame|Completer|\w*ItemDelegate|Graphics\w+"
    r"|Printer\w*|Help\w+|SizeGrip|KeySequenceEdit|Wizard\w*)"
)
# Names that the pattern above takes in, but that belong to Core or Gui.
CORE_HEADERS = {"QStyleHints", "QStringView", "QByteArrayView", "QAnyStringView", "QUtf8StringView",
                "QPageLayout", "QTextLayout"}

INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
COMMENTS = re.compile(r'//[^\n]*|/\*.*?\*/', re.DOTALL)
STRINGS = re.compile(r'"(?:\\.|[^"\\\n])*"')


def module_of(name):
    return re.sub(r"\.(h|cpp)$", "", name)


def folder_of(name):
    """The folder that a file counts to: the subsystems' screens are a folder of their own."""
    folder, _, file = name.rpartition("/")
    top = folder.split("/")[0]
    return "screens" if re.match(r"frm[A-Z]", file) and top != "widgets" else top


def floor_of(name):
    module, folder = module_of(name), folder_of(name)
    for level, (_, modules) in enumerate(FLOORS):
        if module in modules:
            return level
    for level, (folders, _) in enumerate(FLOORS):
        if folder in folders:
            return level
    return None


def circles(edges):
    """The groups of nodes that reach each other (strongly connected, two nodes or more)."""
    index, low, stack, found = {}, {}, [], []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        for target in sorted(edges.get(node, ())):
            if target not in index:
                visit(target)
                low[node] = min(low[node], low[target])
            elif target in stack:
                low[node] = min(low[node], index[target])
        if low[node] == index[node]:
            group = []
            while not group or group[-1] != node:
                group.append(stack.pop())
            if len(group) > 1:
                found.append(sorted(group))

    sys.setrecursionlimit(10000)
    for node in sorted(edges):
        if node not in index:
            visit(node)
    return found


def check(source):
    faults, files, folders = [], {}, {}
    for path in sorted(source.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        name = path.relative_to(source).as_posix()
        text = COMMENTS.sub("", path.read_text(encoding="utf-8"))
        floor = floor_of(name)
        if floor is None:
            faults.append(f"{name}: its folder stands on no floor (add it to the table)")
            continue
        core = folder_of(name) not in NOT_CORE
        for quoted, angled in INCLUDE.findall(text):
            if angled:
                header = angled.rpartition("/")[2]
                windows = WINDOW_HEADERS.fullmatch(header) or WINDOW_HEADERS.fullmatch(angled)
                if core and windows and header not in CORE_HEADERS:
                    faults.append(f"{name}: includes <{angled}>; core knows no windows")
                continue
            if not (source / quoted).is_file():
                if quoted.endswith(".moc") or quoted.startswith("moc_"):
                    continue
                faults.append(f'{name}: includes "{quoted}", which src/ doesn\'t have')
                continue
            target = floor_of(quoted)
            if target is not None and target > floor:
                faults.append(f'{name}: includes "{quoted}", which lies above it')
            files.setdefault(name, set()).add(quoted)
            if target == floor:
                folders.setdefault(folder_of(name), set()).add(folder_of(quoted))
        if core and re.search(r"\bQApplication\b", STRINGS.sub("", text)):
            faults.append(f"{name}: names QApplication; core knows no windows")
    for graph, what in ((files, "files"), (folders, "folders")):
        graph = {node: targets - {node} for node, targets in graph.items()}
        faults += [f"{what} in a circle: {', '.join(group)}" for group in circles(graph)]
    return faults


def main():
    if len(sys.argv) != 2 or not Path(sys.argv[1]).is_dir():
        sys.exit(__doc__)
    faults = check(Path(sys.argv[1]))
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
