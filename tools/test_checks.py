#!/usr/bin/env python3
"""Plants one fault after the other in a small sound project and sees that the right check finds each."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import layer_picture
import texts

TOOLS = Path(__file__).resolve().parent
CHECKS = ("check_layers.py", "check_tests_built.py", "check_words.py", "check_docs.py", "check_qml.py", "check_texts.py")

DAYS = '#: src/model/linux/Clock.cpp\nmsgid "{} of {} day"\nmsgid_plural "{} of {} days"\n'
GERMAN = texts.HEADER.replace('"Language: ', '"PO-Revision-Date: \\n"\n"Last-Translator: \\n"\n"Language-Team: \\n"\n"Language: de')

SOUND = {
    "CMakeLists.txt": "add_subdirectory(src)\nadd_subdirectory(tests)\n",
    "src/CMakeLists.txt": "add_subdirectory(model)\nadd_subdirectory(store)\n",
    "src/model/CMakeLists.txt": "brindle_layer(model  # values\n  SOURCES Day.cpp linux/Clock.cpp)\n",
    "src/model/Day.cpp": '#include "model/Day.h"\n#include <unicode/calendar.h>\n',
    "src/model/Day.h": "struct timespec codespec();\n",
    "src/model/linux/Clock.cpp": 'auto text = translatedCount("{} of {} day", "{} of {} days", count);\n',
    "src/store/CMakeLists.txt": "brindle_layer(store SOURCES Store.cpp LAYERS model LIBRARIES SQLite::SQLite3)\n",
    "src/store/Store.cpp": '#include "model/Day.h"\n#include <sqlite3.h>\n',
    "src/ui/parts/CMakeLists.txt": "brindle_qml_module(parts QML_FILES Bar.qml MODULES theme)\n",
    "src/ui/parts/Bar.qml": "import QtQuick\n\nRectangle {\n    width: 2 * Theme.gap\n    height: Theme.scaled(48)\n"
                            "    x: parent.width / 2\n    color: flat ? \"transparent\" : Theme.line\n}\n",
    layer_picture.PICTURE: layer_picture.picture({"model": [], "store": ["model"]}),
    "po/brindle.pot": f"{texts.HEADER}\n{DAYS}msgstr[0] \"\"\nmsgstr[1] \"\"\n",
    "po/de.po": f"{GERMAN}\n{DAYS}msgstr[0] \"{{}} von {{}} Tag\"\nmsgstr[1] \"{{1}} Tage, davon {{0}}\"\n",
    "tests/CMakeLists.txt": "brindle_test(model_tests SOURCES DayTests.cpp LAYERS model)\n",
    "tests/DayTests.cpp": '// "/home/ann/Music" has one part 2 folders deep\n',
    "README.md": "See [the layers](docs/ARCHITECTURE.md#layers) and [elsewhere](https://example.org).\n",
    "docs/ARCHITECTURE.md": "| layer | may include | what it is for |\n|---|---|---|\n"
                            "| `model/` | nothing | values |\n| `store/` | `model` | rows |\n",
}


def german(one, many):
    return f'{GERMAN}\n{DAYS}msgstr[0] "{one}"\nmsgstr[1] "{many}"\n'


def bar(line):
    return f"import QtQuick\n\nRectangle {{\n    {line}\n}}\n"


# The check that must find it, the file that is planted, its text, and how the finding begins.
PLANTED = (
    ("check_layers.py", "src/model/Day.h", '\n#include "store/Store.h"\n', "src/model/Day.h:2: model/ may not"),
    ("check_layers.py", "src/model/Day.h", '#include "Day.h"\n', "src/model/Day.h:1: no layer has"),
    ("check_layers.py", "src/model/Day.h", "#include <sqlite3.h>\n", "src/model/Day.h:1: <sqlite3.h>"),
    ("check_layers.py", "src/store/Store.cpp", "#  include <QString>\n", "src/store/Store.cpp:1: <QString>"),
    ("check_layers.py", "src/model/Day.h", "#include <unicode/ucal.h>\n", "src/model/Day.h:1: <unicode/ucal.h>"),
    ("check_layers.py", "src/model/CMakeLists.txt", "brindle_layer(model SOURCES Day.cpp LAYERS store)\n",
     "src/model/CMakeLists.txt:1: LAYERS form a cycle"),
    ("check_layers.py", "src/model/CMakeLists.txt", "brindle_layer(model SOURCES Day.cpp LAYERS gone)\n",
     "src/model/CMakeLists.txt:1: LAYERS names gone"),
    ("check_layers.py", "src/util/Strings.h", "", "src/util/Strings.h:1: lies in no layer"),
    ("check_tests_built.py", "tests/CMakeLists.txt", "# DayTests.cpp\n", "tests/DayTests.cpp:1: is not built"),
    ("check_tests_built.py", "CMakeLists.txt", "add_subdirectory(src)\n", "tests/DayTests.cpp:1: is not built"),
    ("check_tests_built.py", "src/model/Late.cpp", "", "src/model/Late.cpp:1: is not built"),
    ("check_words.py", "src/model/Day.h", "\n// Rounds as specified.\n", 'src/model/Day.h:2: "as specified"'),
    ("check_words.py", "src/model/Day.h", "// The Spec: see Part 3.1\n", 'src/model/Day.h:1: "Spec"'),
    ("check_words.py", "src/model/Day.h", "// see Part 3.1\n", 'src/model/Day.h:1: "Part 3"'),
    ("check_words.py", "docs/HOW.md", "cd /wo" "rk/main\n", 'docs/HOW.md:1: "/wo' 'rk/m"'),
    ("check_words.py", "docs/HOW.md", "cd /home/annette/x\n", 'docs/HOW.md:1: "/home/a"'),
    ("check_words.py", "docs/HOW.md", "from deb.debian.org\n", 'docs/HOW.md:1: "deb.debian.org"'),
    ("check_words.py", "docs/spec.md", "", "docs/spec.md (its name):1:"),
    ("check_docs.py", "README.md", "\nSee [more](docs/MORE.md).\n", "README.md:2: the link to docs/MORE.md"),
    ("check_docs.py", "src/store/CMakeLists.txt", "brindle_layer(store SOURCES Store.cpp)\n",
     "docs/ARCHITECTURE.md:4: src/store/CMakeLists.txt lets store include nothing"),
    ("check_docs.py", "src/scan/CMakeLists.txt", "brindle_layer(scan SOURCES)\n",
     "docs/ARCHITECTURE.md:1: the layer scan is missing"),
    ("check_docs.py", "src/store/CMakeLists.txt", "", "docs/ARCHITECTURE.md:4: store is no layer"),
    ("check_docs.py", layer_picture.PICTURE, "<svg/>", "docs/pictures/layers.svg:1: doesn't show the layers"),
    ("check_qml.py", "src/ui/parts/Bar.qml", bar("width: parent.width - 12"), "src/ui/parts/Bar.qml:4: a length"),
    ("check_qml.py", "src/ui/parts/Bar.qml", bar("anchors.leftMargin: 3"), "src/ui/parts/Bar.qml:4: a length"),
    ("check_qml.py", "src/ui/parts/Bar.qml", bar('color: "#203040"'), "src/ui/parts/Bar.qml:4: a colour"),
    ("check_qml.py", "src/ui/parts/Bar.qml", bar('border.color: "red"'), "src/ui/parts/Bar.qml:4: a colour"),
    ("check_qml.py", "src/ui/parts/Bar.qml", bar("font.pixelSize: 12"), "src/ui/parts/Bar.qml:4: a font size"),
    ("check_qml.py", "src/ui/parts/Bar.qml", bar("visible:true"), "src/ui/parts/Bar.qml:1: is not formatted"),
    ("check_qml.py", "src/ui/parts/Late.qml", bar("visible: true"), "src/ui/parts/Late.qml:1: is in no module"),
    ("check_texts.py", "src/ui/parts/Bar.qml", bar('text: "Clear"'), "src/ui/parts/Bar.qml:4: a text that"),
    ("check_texts.py", "src/model/Day.h", '\nauto text = "No day was found.";\n', "src/model/Day.h:2: a text that"),
    ("check_texts.py", "src/model/Day.h", 'auto text = translated("A day");\n', "po/brindle.pot:1: is not up to date"),
    ("check_texts.py", "po/de.po", f"{GERMAN}\n", "po/de.po:1: has other texts than the program"),
    ("check_texts.py", "po/de.po", german("", ""), "po/de.po:15: “{} of {} day” is not translated"),
    ("check_texts.py", "po/de.po", german("{} von {}", "{0} von {2} Tagen"), "po/de.po:15: “{} of {} day” doesn't have the places"),
    ("check_texts.py", "po/de.po", german("{} von {}", "{0} von {}"), "po/de.po:15: “{} of {} day” mixes {} and {0}"),
)

SKIPPING = """<testsuite><testcase name="Ran" status="run"/>
<testcase name="Left" status="notrun"><skipped message="SKIP_REGULAR_EXPRESSION_MATCHED"/>
<system-out>[ RUN      ] Left
tests/LeftTests.cpp:7: Skipped
needs a drive

[  SKIPPED ] Left (0 ms)</system-out></testcase>
<testcase name="Off" status="disabled"><system-out>Disabled</system-out></testcase></testsuite>"""


def run(tool, argument, **environment):
    done = subprocess.run([sys.executable, TOOLS / tool, argument], capture_output=True, text=True,
                          env={**os.environ, **environment})
    return done.returncode, done.stdout + done.stderr


class Checks(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.top = Path(folder.name)
        for name, text in SOUND.items():
            self.write(name, text)

    def write(self, name, text):
        (self.top / name).parent.mkdir(parents=True, exist_ok=True)
        (self.top / name).write_text(text)

    def test_sound_project_passes(self):
        for check in CHECKS:
            self.assertEqual((0, ""), run(check, self.top))

    def test_planted_faults_are_found(self):
        for check, file, text, beginning in PLANTED:
            with self.subTest(check=check, file=file, text=text):
                self.setUp()
                self.write(file, text)
                status, output = run(check, self.top)
                self.assertEqual(1, status, output)
                self.assertTrue(any(line.startswith(beginning) for line in output.splitlines()), output)

    def test_commit_messages_and_ignored_files(self):
        git = ["git", "-C", self.top, "-c", "user.name=Ann", "-c", "user.email=ann@example.org"]
        self.write(".gitignore", "/private.md\n")
        self.write("private.md", "the seed\n")
        subprocess.run([*git, "init", "--quiet"], check=True)
        self.assertEqual((0, ""), run("check_words.py", self.top))
        subprocess.run([*git, "commit", "--quiet", "--allow-empty", "-m", "Round\n\nas designed"], check=True)
        status, output = run("check_words.py", self.top)
        self.assertEqual(1, status)
        self.assertRegex(output, r'^commit \w+:3: "as designed"')

    def test_skipped_tests_fail_only_where_none_may_be_skipped(self):
        self.write("report.xml", SKIPPING)
        for environment, expected in (({"CI": "", "BRINDLE_NO_SKIP": ""}, 0), ({"CI": "true"}, 1),
                                      ({"CI": "", "BRINDLE_NO_SKIP": "1"}, 1)):
            status, output = run("skipped_tests.py", self.top / "report.xml", **environment)
            self.assertEqual(expected, status)
            self.assertIn("Left (needs a drive)\n  Off (disabled)\n", output)


if __name__ == "__main__":
    unittest.main()
