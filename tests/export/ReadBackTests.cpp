#include "export/StatementExport.h"
#include "store/StoredHistory.h"
#include "support/Program.h"
#include "support/Rounds.h"
#include "support/TempHistory.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

namespace brindle {
namespace {

namespace fs = std::filesystem;

// Reads a statement as a program would that knows nothing of Brindle. Its names come from a file of their
// bytes in hexadecimal digits, one a line.
constexpr const char* readBack = R"(
import csv, re, sys
statement, names, sheet = sys.argv[1:]
def text(name):
    told = name.decode("utf-8", "replace")
    return "'" + told if told[:1] in tuple("=+-@\t\r") else told
def cells(name):
    folder, _, file = name.rpartition(b"/")
    return [text(b"/one/" + name), text(b"/one/" + folder), text(file)]
def rows(file):
    with open(file, encoding="utf-8-sig", newline="") as lines: return list(csv.reader(lines, strict=True))
def compare(found, wanted):
    found, wanted = sorted(map(tuple, found)), sorted(map(tuple, wanted))
    assert found == wanted, [sorted(set(some) - set(others))[:3] for some, others in ((found, wanted), (wanted, found))]
wanted = [cells(bytes.fromhex(line)) for line in open(names)]
if not sheet:
    told = rows(statement)
    assert told[0][2:5] == ["File", "Folder", "Path"] and all(len(row) == 10 for row in told)
    compare([row[4:1:-1] for row in told[1:]], wanted)
    with open(statement + ".again", "w", encoding="utf-8-sig", newline="") as file: csv.writer(file).writerows(told)
    assert open(statement, "rb").read() == open(statement + ".again", "rb").read()
else:
    # A spreadsheet knows one line end only, and takes a name of figures for a number. That file's path is none.
    wanted = [[re.sub("\r\n?|\n\r?", "\n", cell) for cell in row] for row in wanted]
    numbers = {path for path, _, file in wanted if re.fullmatch(r"[\d\s.,:/%$()eE+-]*\d[\d\s.,:/%$()eE+-]*", file)}
    def without_number(row): return row[:2] if row[0] in numbers else row
    told = rows(sheet)
    compare([without_number(row[4:1:-1]) for row in told[1:]], [without_number(row) for row in wanted])
    for column in (5, 9): assert all(re.fullmatch(r"-?\d+", row[column]) for row in told[1:])
)";

/// A name that a file can have, made to trouble whoever reads a table.
std::string randomName(std::mt19937_64& random) {
    static const std::vector<std::string> parts = {
        "=",    "+", "-", "@",    "\t",       "\r",           "\n", ",",    "\"", "'",
        "\r\n", " ", "a", "\xff", "\xe6\x96", "\xed\xa0\x80", "é",  "\x1b", ";",  "1"};
    std::string name;
    const auto length = 1 + random() % 6;
    while (name.size() < length) {
        const char byte = static_cast<char>(1 + random() % 255);
        name += random() % 3 != 0 ? parts[random() % parts.size()] : std::string(1, byte == '/' ? '_' : byte);
    }
    return name;
}

class StatementReadBack : public testing::Test {
protected:
    /// Writes the statement of a day on which these files were added, and a file of their names.
    void writeStatement(const Files& files) {
        history.include("one");
        history.check("one", {});
        history.check("one", files);
        StoredHistory source(history.sharedStore(), history.calendar, [this] { return history.now; });
        const LocalDay day = history.calendar.day(history.now);
        ASSERT_EQ(exportStatement(planExport(source, day, day, {}, false).value(), openOutputFile(statement),
                                  source, source.snapshot().get(), history.calendar, {}, [](std::int64_t) {}),
                  std::ssize(files));
        std::ofstream hex(names);
        for (const auto& [name, size] : files) {
            for (const char c : name) hex << fmt::format("{:02x}", static_cast<unsigned char>(c));
            hex << "\n";
        }
    }

    [[nodiscard]] ProgramResult run(std::vector<std::string> arguments) const {
        return runProgram({.arguments = std::move(arguments),
                           .environment = {std::string("PATH=") + std::getenv("PATH"),
                                           "HOME=" + folder.path().native(), "PYTHONIOENCODING=utf-8"}});
    }

    void expectNamesIn(const fs::path& file, const std::string& sheet = {}) const {
        const auto result = run({"python3", "-c", readBack, file, names, sheet});
        EXPECT_EQ(result.exitCode, 0) << result.error;
    }

    TempFolder folder;
    TempHistory history;
    fs::path statement = folder.path() / "statement.csv";
    fs::path names = folder.path() / "names";
};

TEST_F(StatementReadBack, AnyNameIsReadBackByOtherPrograms) {
    const std::uint64_t seed = testSeed();
    SCOPED_TRACE("BRINDLE_TEST_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    Files files;
    const int rows = std::min(testRounds(1), 20) * 2000;  // a spreadsheet takes its time
    for (int i = 0; i < rows; ++i) files[randomName(random) + "/" + randomName(random)] = 1 + i;
    ASSERT_NO_FATAL_FAILURE(writeStatement(files));
    expectNamesIn(statement);

    if (!areTestsLong()) return;
    // As a person opens it who takes formulas for formulas and all else as it stands; then saved with the
    // text of every formula in its cell, where none may have come about.
    const auto saved =
        run({"soffice", "--headless", "-env:UserInstallation=file://" + (folder.path() / "office").native(),
             "--infilter=CSV:44,34,76,1,,0,false,true,false,false,false,-1,true", "--convert-to",
             "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true,false,true", "--outdir",
             folder.path() / "sheet", statement});
    ASSERT_EQ(saved.exitCode, 0) << "Long tests need LibreOffice Calc. " << saved.error;
    expectNamesIn(statement, folder.path() / "sheet/statement.csv");
}

}  // namespace
}  // namespace brindle
