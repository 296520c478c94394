#!/usr/bin/env python3
"""Holds docs/ARCHITECTURE.md's table and picture of the layers against the CMake lists, and what documents name
against the files."""
import re

import layer_picture
import project

ARCHITECTURE = "docs/ARCHITECTURE.md"
HEADING = ["layer", "may include", "what it is for"]


def table_rows(text):
    """(line, cells) of every row below the table's heading and rule."""
    inside = False
    for number, line in enumerate(text.splitlines(), 1):
        cells = [cell.strip(" `") for cell in line.strip().strip("|").split("|")]
        if not line.lstrip().startswith("|"):
            inside = False
        elif cells == HEADING:
            inside = True
        elif inside and not re.fullmatch(r"[|:\- ]+", line.strip()):
            yield number, cells


def layer_findings(text, layers):
    seen = set()
    for number, cells in table_rows(text):
        layer = cells[0].strip("/")
        documented = set(re.findall(r"\w+", cells[1])) - {"nothing"}
        seen.add(layer)
        if layer not in layers:
            yield ARCHITECTURE, number, f"{layer} is no layer of src/: remove the row"
        elif documented != set(layers[layer]):
            listed = ", ".join(f"`{name}`" for name in sorted(layers[layer])) or "nothing"
            yield ARCHITECTURE, number, f"src/{layer}/CMakeLists.txt lets {layer} include {listed}: write that"
    for layer in sorted(set(layers) - seen):
        yield ARCHITECTURE, 1, f"the layer {layer} is missing: add a row to | {' | '.join(HEADING)} |"


def picture_findings(top, layers):
    file = top / layer_picture.PICTURE
    if not file.exists() or file.read_text() != layer_picture.picture(layers):
        yield layer_picture.PICTURE, 1, "doesn't show the layers as their LAYERS lists are: run tools/layer_picture.py"


def link_findings(top, file, text):
    for number, line in enumerate(text.splitlines(), 1):
        for target in re.findall(r"\]\(([^)\s]+)\)", line):
            path = target.split("#")[0]
            if path and not re.match(r"\w+:", path) and not (top / file.parent / path).exists():
                yield file, number, f"the link to {target} leads nowhere: mend or remove it"


def source_findings(top, file, text):
    """Tests and benchmarks that a document names by their path."""
    for number, line in enumerate(text.splitlines(), 1):
        for path in re.findall(r"`((?:tests|bench)/[\w/.]+\.\w+)`", line):
            if not (top / path).exists():
                yield file, number, f"there is no {path}: mend or remove it"


def main():
    top = project.root()
    architecture = top / ARCHITECTURE
    text = architecture.read_text() if architecture.exists() else ""
    layers = project.layers(top)
    findings = [*layer_findings(text, layers), *picture_findings(top, layers)]
    for file in project.files(top):
        if file.suffix == ".md":
            text = (top / file).read_text()
            findings += link_findings(top, file, text)
            findings += source_findings(top, file, text)
    project.finish(findings)


if __name__ == "__main__":
    main()
