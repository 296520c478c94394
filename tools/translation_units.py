#!/usr/bin/env python3
"""Prints what a build compiles to have every .cpp file below the named folders compiled, a path a line: the
file itself, or the file in which CMake combined it with others (UNITY_BUILD).

Arguments: the build folder, which has a compile_commands.json, and the folders of sources. Ends with 1 when a
source is compiled nowhere, and names it.
"""
import json
import re
import sys
from pathlib import Path

INCLUDED = re.compile(r'^#include "(.+\.cpp)"$', re.MULTILINE)


def sources_of(unit):
    included = INCLUDED.findall(unit.read_text()) if unit.parent.name == "Unity" else [unit]
    return {Path(source).resolve() for source in included}


def main():
    build, *folders = map(Path, sys.argv[1:])
    wanted = {source.resolve() for folder in folders for source in folder.rglob("*.cpp")}
    commands = json.loads((build / "compile_commands.json").read_text())
    units = {Path(command["file"]) for command in commands}
    sources = {unit: sources_of(unit) & wanted for unit in units if unit.is_file()}
    missing = wanted.difference(*sources.values())
    for source in sorted(missing):
        print(f"{source} is compiled nowhere", file=sys.stderr)
    # The longest first, so that no core waits for one at the end.
    chosen = sorted((unit for unit in sources if sources[unit]), key=lambda unit: (-len(sources[unit]), unit))
    print(*chosen, sep="\n")
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
