#!/usr/bin/env python3
"""Checks that no folder of the sources includes upwards, and that HACKING.md has the picture of who includes whom.

    Layers.py [--update] SOURCE_FOLDER
"""

import os
import re
import sys
from pathlib import Path

# From the lowest to the highest. A folder may include itself and what is above it in this list. Of the headers that
# are installed, those that are named with a folder belong to it.
LAYERS = [
    ("common", ["common"], ["RedfishConfig/Export.h"]),
    ("logging", ["RedfishConfig/logging"], ["RedfishConfig/Log.h"]),
    ("result", ["RedfishConfig/result"], ["RedfishConfig/RedfishConfigResult.h"]),
    ("CommonProc", ["RedfishConfig/CommonProc"], ["RedfishConfig/SettingValue.h", "RedfishConfig/RedfishConfigSettingInfo.h"]),
    ("Rules", ["RedfishConfig/CommonProc/Rules"], []),
    ("Registry", ["RedfishConfig/CommonProc/Registry"], []),
    ("Expression", ["RedfishConfig/CommonProc/RedfishConfigExpression"], ["RedfishConfig/RedfishConfigExpression.h"]),
    ("Setting", ["RedfishConfig/CommonProc/RedfishConfigSetting"], ["RedfishConfig/RedfishConfigSetting.h"]),
    ("Manager", ["RedfishConfig/CommonProc/RedfishConfigSettingManager"],
     ["RedfishConfig/RedfishConfigSettingManager.h", "RedfishConfig/RedfishConfig.h"]),
    ("client", ["client"], []),
    ("intake", ["client/intake"], [f"RedfishConfig/Client/{name}.h" for name in ("Documents", "Finding", "Json", "Value")]),
    ("model", ["client/model"], [f"RedfishConfig/Client/{name}.h" for name in
                                 ("Attribute", "Model", "Rule", "SystemValues", "Truth", "ValueSet")]),
    ("evaluate", ["client/evaluate"], [f"RedfishConfig/Client/{name}.h" for name in ("Cascade", "Evaluate")]),
    ("adapt", ["client/adapt"], ["RedfishConfig/Client/Adapt.h"]),
    ("lint", ["client/lint"], ["RedfishConfig/Client/Lint.h"]),
    ("Client.h", [], ["RedfishConfig/Client/Client.h"]),
    ("app", ["app"], []),
    ("tool", ["tool"], []),
]
NAMES = [name for name, _, _ in LAYERS]
BESIDE = {("lint", "adapt")}  # neighbours that do not know each other

BEGIN, END = "<!-- layers -->\n", "<!-- /layers -->\n"


def layer_of(path):
    """The layer of a file, by the longest folder that it is in; None for files of no layer."""
    for name, _, headers in LAYERS:
        if any(path.endswith("/include/" + header) for header in headers):
            return name
    folders = [(len(folder), name) for name, folders, _ in LAYERS for folder in folders if path.startswith(folder + "/")]
    return max(folders)[1] if folders and "/include/" not in path else None


def target_of(include, quoted, file, root):
    """The file in the sources that an include means; None for one of another library."""
    if not quoted:
        part = "client" if include.startswith("RedfishConfig/Client/") else "RedfishConfig"
        candidate = Path(part, "include", include)
        return candidate.as_posix() if (root / candidate).exists() else None
    for base in (Path(file).parent, Path("."), Path("tool")):
        candidate = os.path.normpath(base / include)
        if (root / candidate).exists():
            return candidate
    return None


def read_edges(root):
    """Pairs of layers, each with the files that include so: {(from, to): [file]}"""
    edges = {}
    for folder in ("common", "RedfishConfig", "client", "app", "tool"):
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            file = path.relative_to(root).as_posix()
            source = layer_of(file)
            assert source is not None, f"{file} is in no layer: name it in {Path(__file__).name}"
            for quote, include in re.findall(r'#include ([<"])([^>"]+)', path.read_text()):
                target = target_of(include, quote == '"', file, root)
                reached = layer_of(target) if target is not None else None
                if reached is not None and reached != source:
                    edges.setdefault((source, reached), []).append(file)
    return edges


def picture(edges):
    """A line for each layer, the highest first: what it includes."""
    width = max(map(len, NAMES))
    lines = []
    for name in reversed(NAMES):
        reached = [other for other in reversed(NAMES) if (name, other) in edges]
        lines.append(f"{name:{width}} -> {', '.join(reached)}" if reached else name)
    return "```\n" + "\n".join(lines) + "\n```\n"


def main(arguments):
    update = "--update" in arguments
    root = Path(arguments[-1])
    edges = read_edges(root)
    failures = 0
    for (source, target), files in sorted(edges.items()):
        if NAMES.index(target) > NAMES.index(source) or (source, target) in BESIDE:
            failures += 1
            print(f"{source} includes {target}: {', '.join(files)}")
    page = root / "HACKING.md"
    text = page.read_text()
    before, rest = text.split(BEGIN)
    drawn, after = rest.split(END)
    if drawn != picture(edges):
        if update:
            page.write_text(before + BEGIN + picture(edges) + END + after)
        else:
            failures += 1
            print("HACKING.md has another picture: run Layers.py --update\n" + picture(edges))
    print(f"{len(edges)} pairs of layers, {failures} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
