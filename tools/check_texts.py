#!/usr/bin/env python3
"""Finds texts that people see and that no catalogue can translate, and catalogues that don't fit the texts."""
import re
import subprocess
import tempfile
from pathlib import Path

import project
import texts

LITERAL = r'"(?:[^"\\\n]|\\.)*"'
LITERALS = rf"{LITERAL}(?:\s*{LITERAL})*"
COMMENT = re.compile(rf"({LITERAL})|//[^\n]*|/\*.*?\*/", re.S)
MARKED = re.compile(rf"\b(?:translated|translatable|translatedCount|counted)\(\s*{LITERALS}(?:,\s*{LITERALS})?")
# What tells a developer, or the log, of a fault that no user can bring about.
OF_FAULT = re.compile(rf"\b(?:runtime_error|logic_error|invalid_argument|fputs|QML_UNCREATABLE)\(\s*{LITERALS}")
# Words that follow each other, or a sentence's end; not a command line.
PROSE = re.compile(r"^(?!brindle ).*(?:[A-Za-z]{2,}[,;:]? [a-z]{2,}|[a-z]{2,}\.$|[a-z]{2,}…$)", re.S)
SHOWN_BY_QML = re.compile(r"^\s*(?:property string )?(?:text|title|label|caption|message|placeholderText|"
                          r"Accessible\.(?:name|description)):(?P<value>.*)$")
# SQL, scripts for shells, names of the example's files and of the system's, and no texts at all.
WITHOUT_TEXTS = ("src/store/", "src/platform/", "src/example/", "src/cli/Completions.cpp", "src/ui/marks/",
                 "src/ui/theme/")
# Formats and names, which are the same in every language, and errors that are told by their types.
FIXED = {"Brindle", "Added in bytes", "Freed in bytes", "Growth in bytes", "Change in bytes", "Observed at",
         "Example estimate", "Estimated bytes", "Estimated files", "Tracked bytes", "Removed location", "Stopped.",
         "The folder isn't there.", "The folder can't be read."}

# What a translation keeps: its values.
PLACE = re.compile(r"\{(\d*)\}")
ENTRY = re.compile(r'^msgid (?P<one>(?:"[^\n]*"\n)+)(?:msgid_plural (?P<many>(?:"[^\n]*"\n)+))?'
                   r'(?P<translations>(?:msgstr[^\n]*\n(?:"[^\n]*"\n)*)+)', re.M)
# A translation ends as its text does; in other scripts, with their own marks.
ENDINGS = {"…": "…", ":": ":：", ".": ".。", "?": "?؟", ";": ";", " ": " "}


def blanked(match):
    """Keeps the lines where they are."""
    return "\n" * match[0].count("\n")


def literal_findings(top, file):
    text = COMMENT.sub(lambda match: match[1] or blanked(match), (top / file).read_text())
    text = OF_FAULT.sub(blanked, MARKED.sub(blanked, text))
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("#"):
            continue
        shown = SHOWN_BY_QML.match(line) if file.suffix == ".qml" else None
        found = [literal[1:-1] for literal in re.findall(LITERAL, line)]
        if any(PROSE.search(literal) and literal not in FIXED for literal in found):
            yield file, number, "a text that is not in the catalogue: hand it to translated()"
        elif shown and re.match(r'\s*"[^"]*[A-Za-z]{2}', shown["value"]) and found[0] not in FIXED:
            yield file, number, "a text that is not in the catalogue: hand it to translated()"


def unquoted(lines):
    return "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', lines))


def entries(catalogue):
    """{(the one form, the many or ""): (line, translations)} of a catalogue but for its header."""
    text = catalogue.read_text() + "\n"
    found = {}
    for match in ENTRY.finditer(text):
        key = unquoted(match["one"]), unquoted(match["many"] or "")
        if key[0]:
            translations = re.split(r"^msgstr", match["translations"], flags=re.M)[1:]
            found[key] = text.count("\n", 0, match.start()) + 1, [unquoted(one) for one in translations]
    return found


def places(text):
    """Which values stand in the text, by number: those of "{} of {}" are 0 and 1."""
    found = PLACE.findall(text)
    return [str(number) for number in range(len(found))] if "" in found else found


def fault_of(key, translation):
    """What is wrong with a translation of the texts; nothing when all is well."""
    text = key[1] or key[0]
    if not translation:
        return "is not translated"
    if {"", *PLACE.findall(translation)} != {""} and "" in PLACE.findall(translation):
        return "mixes {} and {0}"
    expected, found = set(places(text)), set(places(translation))
    # A form for one or two may do without the number.
    if not found <= expected or (found != expected and not key[1]):
        return "doesn't have the places of its text"
    if len(expected) == 1 and found and ("{}" in text) != ("{}" in translation):
        return "doesn't write {} as its text does"
    if translation[:1].isspace() != text[:1].isspace():
        return "doesn't begin with a space as its text does"
    if text[-1] in ENDINGS and translation[-1] not in ENDINGS[text[-1]]:
        return f"doesn't end with “{text[-1]}” as its text does"
    return None


def catalogue_findings(top, catalogue, expected):
    name = catalogue.relative_to(top)
    check = subprocess.run(["msgfmt", "--check", "--output-file=/dev/null", catalogue], capture_output=True, text=True)
    for line in check.stderr.splitlines() if check.returncode != 0 else []:
        number = re.search(r":(\d+):", line)
        yield name, int(number[1]) if number else 1, line
    found = entries(catalogue)
    if found.keys() != expected:
        yield name, 1, "has other texts than the program: run ./dev texts"
    for number, line in enumerate(catalogue.read_text().splitlines(), 1):
        if line.startswith("#, fuzzy"):
            yield name, number, "is doubtful (fuzzy): see to the translation and take the mark out"
    for key, (line, translations) in found.items():
        for fault in filter(None, (fault_of(key, translation) for translation in translations)):
            yield name, line, f"“{key[0]}” {fault}"
            break


def main():
    top = project.root()
    findings = []
    for file in project.files(top):
        if file.suffix in (".h", ".cpp", ".qml") and file.parts[0] == "src" \
                and not str(file).startswith(WITHOUT_TEXTS):
            findings += literal_findings(top, file)
    template = top / "po" / "brindle.pot"
    if template.exists():
        with tempfile.TemporaryDirectory() as folder:
            made = Path(folder) / "brindle.pot"
            texts.extract(top, made)
            if made.read_text() != template.read_text():
                findings.append((template.relative_to(top), 1, "is not up to date: run ./dev texts"))
        expected = entries(template).keys()
        for catalogue in sorted(template.parent.glob("*.po")):
            findings += catalogue_findings(top, catalogue, expected)
    project.finish(findings)


if __name__ == "__main__":
    main()
