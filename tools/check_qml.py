#!/usr/bin/env python3
"""Finds QML that does without the theme, that no module holds, or that qmlformat would write otherwise."""
import re
import shutil
import subprocess

import project

LENGTHS = (r"(?:Layout\.)?(?:width|height|x|y|implicit\w+|preferred\w+|minimum\w+|maximum\w+|spacing|\w+Spacing|"
           r"(?:\w+\.)*margins?|(?:\w+\.)*\w+Margins?|\w*[pP]adding|radius|border\.width|cellWidth|cellHeight)")
LENGTH = re.compile(rf"^\s*{LENGTHS}:\s*(?P<value>.+)$")
# What leaves no length of its own: a frame that grows with the text, a factor or divisor, and -1 for none.
NOT_A_LENGTH = re.compile(r"Theme\.scaled\([^()]*\)|\w+\[[^\]]*\]|\b[\d.]+\s*\*|[*/]\s*[\d.]+|-1\b")
# How large a window is to begin with is its own affair.
OF_WINDOW = re.compile(r"    (minimum)?([wW]idth|[hH]eight): \d+$")
NUMBER = re.compile(r"(?<![\w.])(\d+(?:\.\d+)?)(?![\w.])")

RAW_COLOR = re.compile(r'"#[0-9A-Fa-f]{3,8}"|\bQt\.(?:rgba|hsla|hsva|lighter|darker|tint|color)\(')
NAMED_COLOR = re.compile(r'\b\w*[cC]olor:\s*"(?!transparent")\w+"')
FONT_SIZE = re.compile(r"\b(?:pixelSize|pointSize):\s*[\d.]+\s*$")


def line_findings(file, text):
    for number, line in enumerate(text.splitlines(), 1):
        code = line.split("//")[0]
        if RAW_COLOR.search(code) or NAMED_COLOR.search(code):
            yield file, number, "a colour of its own: take a token of Theme, or add one to src/ui/theme/Palette.cpp"
        if FONT_SIZE.search(code):
            yield file, number, "a font size of its own: take a text role of Theme"
        if file.name.endswith("Window.qml") and OF_WINDOW.match(code):
            continue
        length = LENGTH.match(code)
        if length and any(float(found) != 0 for found in NUMBER.findall(NOT_A_LENGTH.sub("", length["value"]))):
            yield file, number, "a length of its own: take a measure of Theme, or Theme.scaled() for what holds text"


def module_files(top, folder):
    """The QML files that the folder's module names."""
    cmake_file = top / folder / "CMakeLists.txt"
    if not cmake_file.exists():
        return set()
    return {name for _, command, words in project.commands(cmake_file) if command == "brindle_qml_module"
            for name in project.keyword_values(words, "QML_FILES")}


def formatter():
    return shutil.which("qmlformat") or shutil.which("qmlformat", path="/usr/lib/qt6/bin")


def format_findings(top, files):
    program = formatter()
    if files and not program:
        yield files[0], 1, "cannot be held against qmlformat, which is not installed (qt6-declarative-dev-tools)"
        return
    for file in files:
        done = subprocess.run([program, top / file], capture_output=True, text=True)
        if done.returncode != 0:
            yield file, 1, "cannot be read by qmlformat"
        elif done.stdout != (top / file).read_text():
            yield file, 1, f"is not formatted: run {program} -i on it"


def main():
    top = project.root()
    files = [file for file in project.files(top) if file.suffix == ".qml"]
    findings = list(format_findings(top, files))
    for file in files:
        if file.parts[:2] != ("src", "ui"):
            continue
        if str(file.relative_to(file.parent)) not in module_files(top, file.parent):
            findings.append((file, 1, f"is in no module: name it in {file.parent}/CMakeLists.txt"))
        if file.parent.name != "theme":
            findings += line_findings(file, (top / file).read_text())
    project.finish(findings)


if __name__ == "__main__":
    main()
