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

import texts

ACCENTED = str.maketrans("aceinouyACEINOUY", "áçéíñóúýÁÇÉÍÑÓÚÝ")
# What a text keeps: the places of its values, and the ends of its lines.
KEPT = re.compile(r"(\{[^}]*\}|%\d|&\w+;|\\.)")
PLURAL_FORMS = "nplurals=2; plural=n != 1;"


def pseudo(text):
    pieces = KEPT.split(text)
    pieces[::2] = [piece.translate(ACCENTED) for piece in pieces[::2]]
    letters = sum(len(piece.strip()) for piece in pieces[::2])
    words = " ".join(["lóñg"] * ((letters // 2 + 4) // 5))
    joined = "".join(pieces)
    body = re.sub(r"(?:[ .:…]|\\n)+$", "", joined)
    return joined if not words else f"{body} {words}{joined[len(body):]}"


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
        texts.extract(Path(__file__).resolve().parent.parent, template)
        header = (f'msgid ""\nmsgstr ""\n"Content-Type: text/plain; charset=UTF-8\\n"\n'
                  f'"Plural-Forms: {PLURAL_FORMS}\\n"\n')
        catalogue = Path(work) / "brindle.po"
        catalogue.write_text("\n".join([header, *filled(template.read_text())]))
        subprocess.run(["msgfmt", f"--output-file={folder / 'brindle.mo'}", catalogue], check=True)


if __name__ == "__main__":
    main()
