"""What the checks share: the project's files, its CMake lists, and how findings are told."""
import os
import re
import subprocess
import sys
from pathlib import Path


def root():
    """The checkout to check: the first argument, else the one that this file lies in."""
    return Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent.parent).resolve()


def files(top):
    """Every file that git tracks or would add, relative to `top`; all but build/ in a copy without git."""
    git = ["git", "-c", "safe.directory=*", "-C", top, "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    if (top / ".git").exists():
        names = subprocess.run(git, capture_output=True, check=True, text=True).stdout.split("\0")
        return sorted({Path(name) for name in names if name and (top / name).is_file()})
    found = []
    for folder, folders, names in os.walk(top):
        folders[:] = [name for name in folders if name not in ("build", "__pycache__")]
        found += [(Path(folder) / name).relative_to(top) for name in names]
    return sorted(found)


def commands(cmake_file):
    """(line, name, arguments) of every command of a CMake file that takes no nested parentheses."""
    text = re.sub(r"#[^\n]*", "", cmake_file.read_text())
    for match in re.finditer(r"(\w+)\s*\(([^()]*)\)", text):
        words = [quoted or plain for quoted, plain in re.findall(r'"([^"]*)"|(\S+)', match[2])]
        yield text.count("\n", 0, match.start()) + 1, match[1], words


def layers(top):
    """{layer: the layers named in its LAYERS list}, read from src/<layer>/CMakeLists.txt."""
    found = {}
    for cmake_file in sorted((top / "src").glob("*/CMakeLists.txt")):
        for _, name, words in commands(cmake_file):
            if name == "brindle_layer":
                found[words[0]] = keyword_values(words, "LAYERS")
    return found


def keyword_values(words, keyword):
    """The arguments between `keyword` and the next keyword, which is all capitals."""
    if keyword not in words:
        return []
    values = []
    for word in words[words.index(keyword) + 1:]:
        if re.fullmatch(r"[A-Z]+", word):
            break
        values.append(word)
    return values


def finish(findings):
    """Prints the findings, (file, line, sentence), and ends the program: 1 when there are any."""
    for file, line, sentence in findings:
        print(f"{file}:{line}: {sentence}")
    sys.exit(1 if findings else 0)
