#!/usr/bin/env python3
"""Makes a catalogue that nobody speaks: every text accented and longer by half, so that a window shows which of its
texts are not translated, and which have no room to grow.

    tools/pseudo_locale.py FOLDER

writes FOLDER/en_XA/LC_MESSAGES/brindle.mo, for bindtextdomain(3) with LANGUAGE=en_XA.
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

import project

ACCENTED = str.maketrans("aceinouyACEINOUY", "áçéíñóúýÁÇÉÍÑÓÚÝ")
# What a text keeps: the places of its values.
KEPT = re.compile(r"(\{[^}]*\}|%\d|&\w+;)")
# All of its strings are texts.
PLATFORM_TEXTS = "src/model/PlatformText.h"
PLURAL_FORMS = "nplurals=2; plural=n != 1;"


def pseudo(text):
    pieces = KEPT.split(text)
    pieces[::2] = [piece.translate(ACCENTED) for piece in pieces[::2]]
    letters = sum(len(piece.strip()) for piece in pieces[::2])
    words = " ".join(["lóñg"] * ((letters // 2 + 4) // 5))
    joined = "".join(pieces)
    body = joined.rstrip(" .:…")
    return joined if not words else f"{body} {words}{joined[len(body):]}"


def extracted(top, template):
    """The texts of the C++ and QML files, as xgettext finds them, in the template file."""
    sources = [str(file) for file in project.files(top) if file.parts[0] == "src" and file.suffix in (".h", ".cpp", ".qml")]
    keywords = ("--keyword", "--keyword=translated:1", "--keyword=translatedCount:1,2")
    by_language = (("C++", keywords, [source for source in sources if source.endswith((".h", ".cpp"))]),
                   ("JavaScript", keywords, [source for source in sources if source.endswith(".qml")]),
                   ("C++", ("--extract-all",), [PLATFORM_TEXTS]))
    for language, options, files in by_language:
        subprocess.run(["xgettext", f"--language={language}", "--from-code=UTF-8", *options, "--join-existing",
                        f"--output={template}", "--no-location", *files],
                       cwd=top, check=True, stderr=subprocess.DEVNULL)


def unquoted(lines):
    return "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', lines))


def filled(template):
    """The entries of a template, each translated into its pseudo text."""
    for entry in template.split("\n\n")[1:]:
        found = re.search(r'^msgid ((?:".*"\n?)+)(?:msgid_plural ((?:".*"\n?)+))?', entry, re.M)
        if not found:
            continue
        text = unquoted(found[1])
        if found[2]:
            many = unquoted(found[2])
            yield (f'msgid "{text}"\nmsgid_plural "{many}"\nmsgstr[0] "{pseudo(text)}"\n'
                   f'msgstr[1] "{pseudo(many)}"\n')
        elif text:
            yield f'msgid "{text}"\nmsgstr "{pseudo(text)}"\n'


def main():
    folder = Path(sys.argv[1]) / "en_XA" / "LC_MESSAGES"
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as work:
        template = Path(work) / "brindle.pot"
        template.write_text('msgid ""\nmsgstr ""\n"Content-Type: text/plain; charset=UTF-8\\n"\n')
        extracted(Path(__file__).resolve().parent.parent, template)
        header = (f'msgid ""\nmsgstr ""\n"Content-Type: text/plain; charset=UTF-8\\n"\n'
                  f'"Plural-Forms: {PLURAL_FORMS}\\n"\n')
        catalogue = Path(work) / "brindle.po"
        catalogue.write_text("\n".join([header, *filled(template.read_text())]))
        subprocess.run(["msgfmt", f"--output-file={folder / 'brindle.mo'}", catalogue], check=True)


if __name__ == "__main__":
    main()
