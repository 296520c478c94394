#!/usr/bin/env python3
"""Collects every text of the program in po/brindle.pot and brings the catalogues, po/LANGUAGE.po, up to date with it:
new texts are added untranslated, those that are gone are taken out.

    tools/texts.py
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

import project

def keywords(*names):
    return ["--keyword", *(f"--keyword={name}" for name in names)]  # none but these


# What carries a text; those with two numbers carry the one form and the many.
OF_SOURCES = keywords("translated:1", "translatable:1", "translatedCount:1,2", "counted:1,2")
# How xgettext is to read files, and their endings.
KINDS = (
    (["--language=C++"], OF_SOURCES, (".h", ".cpp")),
    (["--language=JavaScript"], OF_SOURCES, (".qml",)),
    (["--language=Desktop"], keywords("Name", "GenericName", "Comment", "Keywords"), (".desktop.in",)),
    ([], [], (".metainfo.xml.in",)),
)
HEADER = r'''# The texts of Brindle, to be translated. Made by ./dev texts: change the texts where they stand.
msgid ""
msgstr ""
"Project-Id-Version: brindle\n"
"Language: \n"
"MIME-Version: 1.0\n"
"Content-Type: text/plain; charset=UTF-8\n"
"Content-Transfer-Encoding: 8bit\n"
"Plural-Forms: nplurals=2; plural=n != 1;\n"
'''


def extract(top, template):
    """Writes the texts of the program, and of the files that tell desktops of it, to the file `template`."""
    template.write_text(HEADER)  # so that it is read as UTF-8
    files = [str(file) for file in project.files(top) if file.parts[0] in ("src", "packaging")]
    for language, keywords, endings in KINDS:
        named = [file for file in files if file.endswith(endings)]
        if not named:
            continue
        done = subprocess.run(["xgettext", *language, "--from-code=UTF-8", *keywords, "--join-existing",
                               "--add-comments=Translators:", "--add-location=file", "--no-wrap",
                               f"--output={template}", *named], cwd=top, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(done.stderr)
    # The header is not xgettext's, with its date; and what is meant by {} is no matter of gettext's formats.
    entries = re.sub(r"^#, .*-format\n", "", template.read_text(), flags=re.M).partition("\n\n")[2]
    template.write_text(f"{HEADER}\n{entries}")


def merge(catalogue, template):
    subprocess.run(["msgmerge", "--quiet", "--update", "--backup=none", "--no-fuzzy-matching", "--no-wrap",
                    "--add-location=file", catalogue, template], check=True)
    subprocess.run(["msgattrib", "--no-obsolete", "--no-wrap", "--add-location=file", f"--output-file={catalogue}",
                    catalogue], check=True)


def main():
    top = project.root()
    with tempfile.TemporaryDirectory() as folder:
        template = Path(folder) / "brindle.pot"
        extract(top, template)
        (top / "po" / "brindle.pot").write_text(template.read_text())
    for catalogue in sorted((top / "po").glob("*.po")):
        merge(catalogue, top / "po" / "brindle.pot")


if __name__ == "__main__":
    main()
