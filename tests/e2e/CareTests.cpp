#include "e2e/Records.h"
#include "support/OtherProgram.h"
#include "support/TempHistory.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <map>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;
using Arguments = std::vector<std::string>;

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Every file below a folder with its contents.
std::map<std::string, std::string> everyFile(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files[entry.path()] = bytesOf(entry.path());
    return files;
}

/// A history of one location, with a change.
class CaredForHistory : public testing::Test {
protected:
    CaredForHistory() {
        openToAll(folder.path());
        for (int i = 0; i < 300; ++i) writeFile(tree / ("file" + std::to_string(i)), 10);
        EXPECT_EQ(brindle.run({"check", tree}).exitCode, 0);
        writeFile(tree / "more", 5);
        EXPECT_EQ(brindle.run({"check"}).exitCode, 0);
    }

    void damage() const {
        std::fstream file(brindle.historyFile(), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(100);  // where the list of the tables is
        file << std::string(3000, 'x');
    }

    /// The points that something is to be done about.
    [[nodiscard]] Arguments concerns(int expectedExitCode = 6) const {
        Arguments names;
        const auto health = brindle.json({"doctor"}, expectedExitCode);
        for (const auto& point : health["points"])
            if (!point["isWell"]) names.push_back(point["point"]);
        return names;
    }

    [[nodiscard]] std::vector<fs::path> kept(const std::string& what) const {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(brindle.dataDirectory()))
            if (entry.path().filename().string().starts_with("History-" + what))
                found.push_back(entry.path());
        return found;
    }

    TempFolder folder;
    fs::path tree = folder.path() / "tree";
    Brindle brindle;
};

TEST_F(CaredForHistory, IsLookedAtWithoutAWrite) {
    const auto expectUntouched = [&](const Arguments& expected, int code) {
        const auto before = everyFile(brindle.home());
        EXPECT_EQ(concerns(code), expected);
        EXPECT_EQ(everyFile(brindle.home()), before);
    };
    expectUntouched({}, 0);
    writeFile(brindle.dataDirectory() / "History-new.sqlite.partial", 1);
    fs::permissions(brindle.dataDirectory(), fs::perms(0755));
    fs::create_directories(folder.path() / "elsewhere");
    fs::rename(tree, folder.path() / "elsewhere/moved");
    expectUntouched({"privacy", "location", "leftovers"}, 6);
    fs::rename(folder.path() / "elsewhere/moved", tree);
    fs::permissions(brindle.dataDirectory(), fs::perms(0700));
    fs::remove(brindle.dataDirectory() / "History-new.sqlite.partial");
    {
        const OtherProgram other(brindle.dataDirectory());
        expectUntouched({}, 0);
        EXPECT_THAT(brindle.run({"doctor"}).output, HasSubstr(std::to_string(other.process())));
    }
    damage();
    expectUntouched({"database"}, 6);
    EXPECT_THAT(brindle.run({"doctor"}).output, HasSubstr("brindle doctor --recover"));
    fs::remove_all(brindle.dataDirectory());
    expectUntouched({}, 0);
    EXPECT_FALSE(fs::exists(brindle.dataDirectory()));
}

TEST_F(CaredForHistory, CanBeLookedAtOnAReadOnlyDisk) {
    if (!brindle.giveUpRoot()) GTEST_SKIP() << "can't act as another user";
    for (const auto& entry : fs::directory_iterator(brindle.dataDirectory()))
        fs::permissions(entry.path(), fs::perms(0444));
    fs::permissions(brindle.dataDirectory(), fs::perms(0555));
    EXPECT_EQ(concerns(), Arguments{"privacy"});
    fs::permissions(brindle.historyFile(), fs::perms::none);
    EXPECT_EQ(concerns(), (Arguments{"database", "privacy"}));
}

TEST_F(CaredForHistory, IsRecoveredOnTheUsersWordOnly) {
    const auto before = Records(brindle).inventory();
    EXPECT_EQ(brindle.json({"doctor", "--recover"})["recovered"], false);
    EXPECT_TRUE(kept("damaged").empty());
    damage();
    const std::string damaged = bytesOf(brindle.historyFile());
    for (const Arguments& arguments : {Arguments{"status"}, {"check"}, {"day"}, {"include", folder.path()}}) {
        const auto result = brindle.run(arguments);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_THAT(result.error, HasSubstr("brindle doctor --recover"));
    }
    EXPECT_EQ(brindle.run({"status", "--example"}).exitCode, 0);
    {
        const OtherProgram other(brindle.dataDirectory());
        EXPECT_EQ(brindle.run({"doctor", "--recover"}).exitCode, 5);
    }
    EXPECT_EQ(bytesOf(brindle.historyFile()), damaged);
    const auto result = brindle.run({"doctor", "--recover"});
    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_THAT(result.output, HasSubstr("Files of the last checks: 301."));
    ASSERT_EQ(kept("damaged").size(), 1U);
    EXPECT_EQ(bytesOf(kept("damaged").front()), damaged);
    EXPECT_EQ(Records(brindle).inventory(), before);
    EXPECT_EQ(concerns(0), Arguments());

    std::ofstream(brindle.historyFile(), std::ios::trunc).close();
    rowsOf(brindle.historyFile(), "CREATE TABLE another (x)");
    const std::string foreign = bytesOf(brindle.historyFile());
    EXPECT_EQ(brindle.run({"doctor", "--recover"}).exitCode, 3);
    EXPECT_EQ(brindle.run({"check"}).exitCode, 3);
    EXPECT_EQ(bytesOf(brindle.historyFile()), foreign);
}

TEST_F(CaredForHistory, MovesWithABackup) {
    const auto before = Records(brindle).everything();
    const fs::path backup = brindle.home() / "backup.sqlite";
    {
        const OtherProgram other(brindle.dataDirectory());
        ProgramLaunch launch = brindle.launch({"backup", backup});
        launch.umask = 0;
        EXPECT_EQ(runProgram(launch).exitCode, 0);
    }
    EXPECT_EQ(fs::status(backup).permissions(), fs::perms(0600));
    EXPECT_EQ(everythingIn(backup), before);
    writeFile(brindle.home() / "precious", 3);
    fs::create_symlink(brindle.home() / "precious", brindle.home() / "link");
    const std::string first = bytesOf(backup);
    writeFile(tree / "later", 7);
    ASSERT_EQ(brindle.run({"check"}).exitCode, 0);
    EXPECT_EQ(brindle.run({"backup", backup}).exitCode, 2);
    EXPECT_EQ(bytesOf(backup), first);
    EXPECT_EQ(brindle.run({"backup", "--force", brindle.home() / "link"}).exitCode, 2);
    EXPECT_EQ(brindle.run({"backup", brindle.home() / "no such folder/file"}).exitCode, 3);
    EXPECT_EQ(bytesOf(brindle.home() / "precious"), "xxx");
    const auto later = Records(brindle).everything();
    EXPECT_EQ(brindle.run({"backup", "--force", backup}).exitCode, 0);
    EXPECT_EQ(everythingIn(backup), later);
    std::ofstream(backup, std::ios::binary) << first;

    // What can't be restored changes nothing.
    writeFile(brindle.home() / "text", 9000);
    std::ofstream(brindle.home() / "cut", std::ios::binary) << first.substr(0, first.size() - 4096);
    std::ofstream(brindle.home() / "empty").close();
    for (const auto& file : {fs::path("text"), fs::path("cut"), fs::path("empty"), fs::path("share"),
                             fs::path(brindle.historyFile())})
        EXPECT_EQ(brindle.run({"restore", "--yes", brindle.home() / file}).exitCode, 2) << file;
    EXPECT_EQ(brindle.run({"restore", backup}).exitCode, 2);  // nobody can be asked
    {
        const OtherProgram other(brindle.dataDirectory());
        EXPECT_EQ(brindle.run({"restore", "--yes", backup}).exitCode, 5);
    }
    EXPECT_EQ(Records(brindle).everything(), later);
    EXPECT_TRUE(kept("").empty());

    EXPECT_EQ(brindle.run({"restore", "--yes", backup}).exitCode, 0);
    EXPECT_EQ(Records(brindle).everything(), before);
    ASSERT_EQ(kept("before-restore").size(), 1U);
    EXPECT_EQ(everythingIn(kept("before-restore").front()), later);
    EXPECT_EQ(bytesOf(backup), first);
    for (const auto& entry : fs::directory_iterator(brindle.home()))
        EXPECT_THAT(entry.path().filename().string(), testing::Not(StartsWith("."))) << "left behind";
}

}  // namespace
}  // namespace brindle
