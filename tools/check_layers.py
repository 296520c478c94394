#!/usr/bin/env python3
"""Holds every #include of src/ against the LAYERS lists of src/<layer>/CMakeLists.txt."""
import graphlib
import re

import project

# A library's header, where in src/ it may be included, and why not elsewhere.
KEPT_INSIDE = (
    (r"sqlite3.*", r"store/.*", "SQL ends at store/"),
    (r"unicode/.*", r".*\.cpp", "ICU shows in no header of ours"),
    (r"(libmount/.*|libudev\.h|btrfsutil\.h)", r"platform/.*", "the operating system is reached through platform/"),
    (r"CLI/.*", r"(cli|settings)/.*", "arguments are parsed in cli/ and settings/"),
    (r"nlohmann/.*", r"(cli|settings)/.*|model/Coding\.\w+", "JSON is written and read in cli/ and settings/"),
    (r"Q[A-Z]\w*|Qt\w*/.*", r"(app|ui)/.*", "there is no Qt below app/"),
)


def include_findings(file, text, layers):
    layer = file.parts[1]
    for number, line in enumerate(text.splitlines(), 1):
        include = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
        if not include:
            continue
        header = include[2]
        if include[1] == '"':
            owner = header.split("/")[0]
            if "/" not in header or owner not in layers:
                yield file, number, f'no layer has "{header}": write "layer/File.h", or <> for a library'
            elif owner != layer and owner not in layers[layer]:
                yield file, number, (f"{layer}/ may not include {owner}/: move the code, or add {owner} to LAYERS "
                                     f"in src/{layer}/CMakeLists.txt if the layering allows it")
            continue
        for library, places, reason in KEPT_INSIDE:
            if re.fullmatch(library, header) and not re.fullmatch(places, "/".join(file.parts[1:])):
                yield file, number, f"<{header}> does not belong here: {reason}"


def list_findings(layers):
    for layer, used in layers.items():
        for name in used:
            if name not in layers:
                yield f"src/{layer}/CMakeLists.txt", 1, f"LAYERS names {name}, which is no layer: remove or build it"
    try:
        graphlib.TopologicalSorter(layers).prepare()
    except graphlib.CycleError as error:
        cycle = error.args[1]
        yield f"src/{cycle[0]}/CMakeLists.txt", 1, f"LAYERS form a cycle ({' - '.join(cycle)}): take one of them out"


def main():
    top = project.root()
    layers = project.layers(top)
    findings = list(list_findings(layers))
    for file in project.files(top):
        if file.parts[0] != "src" or file.suffix not in (".h", ".cpp"):
            continue
        if len(file.parts) < 3 or file.parts[1] not in layers:
            findings.append((file, 1, "lies in no layer: move it to a folder whose CMakeLists.txt has brindle_layer()"))
        else:
            findings += include_findings(file, (top / file).read_text(), layers)
    project.finish(findings)


if __name__ == "__main__":
    main()
