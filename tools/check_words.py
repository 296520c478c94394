#!/usr/bin/env python3
"""Finds words that no file, file name or commit message of the project uses."""
import re
import subprocess
from pathlib import Path

import project

STATE_THE_RULE = "state the rule itself"
NEUTRAL_PATH = "write a path that no machine of ours has, such as /home/ann"

# What is not written, and what to do instead.
UNWANTED = [(re.compile(pattern), advice) for pattern, advice in (
    (r"(?i)(?<![\w-])(spec|specs|specifications?)(?![\w-])", STATE_THE_RULE),
    (r"\bParts? \d|§ ?\d", STATE_THE_RULE),
    (r"(?i)\bas (given|designed|specified)\b", STATE_THE_RULE),
    (r"(?i)\bthe (seed|mission)\b", STATE_THE_RULE),
    (r"(?<![\w/.}])/work/\w", NEUTRAL_PATH),
    (r"(?<![\w.}])/home/(?!(ann|bob|eve)\b)\w", NEUTRAL_PATH),
    (r"(?<![\w.}])/root/", NEUTRAL_PATH),
    (r"(?i)\b[\w.]+\.(debian|ubuntu|npmjs|pythonhosted|golang)\.(org|com)\b", "leave the package host to the reader's system"),
)]

# The words stand here to be looked for, or planted to be found.
ALLOWED_FILES = {Path("tools/check_words.py"), Path("tools/test_checks.py")}


def findings_in(name, text):
    for number, line in enumerate(text.splitlines(), 1):
        for pattern, advice in UNWANTED:
            found = pattern.search(line)
            if found:
                yield name, number, f'"{found[0]}" is not written here: {advice}'


def commit_messages(top):
    """(short hash, message) of the last 50 commits; none in a copy without git or before the first commit."""
    git = ["git", "-c", "safe.directory=*", "-C", top, "log", "-50", "--format=%h%n%B%x00"]
    if not (top / ".git").exists():
        return
    for commit in subprocess.run(git, capture_output=True, text=True).stdout.split("\0"):
        short_hash, _, message = commit.strip().partition("\n")
        yield short_hash, message


def main():
    top = project.root()
    findings = []
    for file in project.files(top):
        findings += findings_in(f"{file} (its name)", str(file))
        content = (top / file).read_bytes()
        if b"\0" not in content and file not in ALLOWED_FILES:
            findings += findings_in(file, content.decode(errors="replace"))
    for short_hash, message in commit_messages(top):
        findings += findings_in(f"commit {short_hash}", message)
    project.finish(findings)


if __name__ == "__main__":
    main()
