#include "platform/FileLock.h"
#include "settings/SettingsFile.h"
#include "support/TempFolder.h"
#include "support/TestMounts.h"
#include "support/Unprivileged.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace brindle {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using Json = nlohmann::ordered_json;

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class SettingsFileTest : public testing::Test {
protected:
    SettingsFileTest() { fs::permissions(temporary.path(), fs::perms(0755)); }

    void contain(const std::string& text) const {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }

    /// What a write that must fail tells.
    [[nodiscard]] std::string failure() const {
        try {
            file.write("key", true);
        } catch (const SettingsError& error) {
            return error.what();
        }
        return "nothing failed";
    }

    void expectNothingBeside() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path.parent_path()))
            names.push_back(entry.path().filename());
        EXPECT_THAT(names, UnorderedElementsAre("preferences.json", "preferences.json.lock"));
    }

    const TempFolder temporary;
    const fs::path path = temporary.path() / "config/Brindle/preferences.json";
    const SettingsFile file{path.native()};
};

TEST_F(SettingsFileTest, IsMadeForItsOwnerAloneAtTheFirstWrite) {
    EXPECT_EQ(file.read().values, Json::object());
    EXPECT_FALSE(fs::exists(temporary.path() / "config")) << "reading makes nothing";

    const mode_t mask = ::umask(0);
    EXPECT_FALSE(file.write("key", "ä"));
    ::umask(mask);
    EXPECT_EQ(contentsOf(path), "{\n  \"key\": \"ä\"\n}\n");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(path.parent_path()).permissions(), fs::perms(0700));

    fs::permissions(path, fs::perms(0644));
    file.write("key", 1);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0600));
}

TEST_F(SettingsFileTest, AWriteKeepsEveryOtherKeyAndMindsNothingThatAKilledProgramLeft) {
    contain(
        R"({"z": [1, {"deep": null}], "key": "old", "a": 1.5, "": "\u0000ü", "big": 18446744073709551615})");
    std::ofstream(path.native() + ".new") << "{\"half";
    std::ofstream(path.native() + ".lock") << "999999";
    file.write("key", false);
    file.write("new", 7);
    EXPECT_EQ(
        file.read().values.dump(),
        R"({"z":[1,{"deep":null}],"key":false,"a":1.5,"":"\u0000ü","big":18446744073709551615,"new":7})");
    expectNothingBeside();
}

TEST_F(SettingsFileTest, ADamagedFileIsSetAsideAndTold) {
    const std::string cases[] = {"",         "{\"key\": tr",
                                 "[1]",      "\xff\xfe{}",
                                 "{} extra", "{\"key\":" + std::string(80, '[') + std::string(80, ']') + "}"};
    int number = 0;
    for (const auto& damaged : cases) {
        SCOPED_TRACE(damaged);
        contain(damaged);
        const std::string kept = ++number == 1 ? "preferences-damaged.json"
                                               : "preferences-damaged-" + std::to_string(number) + ".json";
        // Whoever comes first finds it.
        const auto note = number % 2 == 0 ? file.read().note : file.write("key", number);
        EXPECT_EQ(note.value_or(""),
                  "The settings in “" + path.native() + "” were damaged. They are kept in “" +
                      (path.parent_path() / kept).native() + "”, and the usual ones hold.");
        EXPECT_EQ(contentsOf(path.parent_path() / kept), damaged);
        EXPECT_EQ(file.read().values, number % 2 == 0 ? Json::object() : Json({{"key", number}}));
        EXPECT_FALSE(file.read().note);
    }
}

TEST_F(SettingsFileTest, ALinkIsReadAndNeverReplaced) {
    const fs::path target = temporary.path() / "elsewhere.json";
    fs::create_directories(path.parent_path());
    fs::create_symlink(target, path);
    for (const std::string contents : {"{\"kept\": 1}", "damaged"}) {
        std::ofstream(target) << contents;
        const bool isDamaged = contents == "damaged";
        EXPECT_EQ(file.read().values.size(), isDamaged ? 0U : 1U);
        EXPECT_THAT(file.read().note.value_or(""), HasSubstr(isDamaged ? "are damaged, and the usual" : ""));
        EXPECT_THAT(failure(), HasSubstr("is a symbolic link and was left as it is."));
        EXPECT_EQ(contentsOf(target), contents);
    }
    EXPECT_TRUE(fs::is_symlink(path));
}

TEST_F(SettingsFileTest, WhatCannotBeReadOrChangedIsToldAndLeftAsItIs) {
    const fs::path folder = path.parent_path();
    fs::create_directories(folder);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_THAT(file.read().note.value_or(""), HasSubstr("can't be read"));
    EXPECT_THAT(failure(), HasSubstr("can't be changed"));
    fs::remove(path);

    contain("{" + std::string(2'000'000, ' ') + "}");
    EXPECT_THAT(failure(), HasSubstr("can't be changed (File too large)."));
    EXPECT_EQ(fs::file_size(path), 2'000'002U);

    contain("{}");
    fs::permissions(path, fs::perms::none);
    fs::permissions(folder, fs::perms(0555));
    EXPECT_TRUE(holdsUnprivileged(
        [&] { return file.read().note && failure().find("can't be changed") != std::string::npos; }));
    fs::permissions(folder, fs::perms(0700));
    EXPECT_EQ(contentsOf(path), "{}");
    expectNothingBeside();
}

TEST_F(SettingsFileTest, AFullDiskLeavesTheOldSettings) {
    SKIP_UNLESS_MOUNTS_WORK();
    fs::create_directories(path.parent_path());
    const auto disk = TestMount::memory(path.parent_path(), "size=32k");
    const Json before{{"kept", std::string(2000, 'x')}};
    file.write("kept", before["kept"]);
    std::ofstream filler(path.parent_path() / "filler");
    filler << std::string(1 << 20, 'x');
    filler.flush();
    EXPECT_EQ(failure(), "There is no room left on the disk for the settings in “" + path.native() + "”.");
    EXPECT_EQ(file.read().values, before);
    fs::remove(path.parent_path() / "filler");
    filler.close();
    EXPECT_FALSE(file.write("key", true));
    expectNothingBeside();
}

TEST_F(SettingsFileTest, ThoseWhoWriteAtOnceLoseNothingOfEachOthers) {
    constexpr int writers = 4;
    constexpr int writes = 25;
    {
        std::vector<std::jthread> threads;
        for (int writer = 0; writer < writers; ++writer)
            threads.emplace_back([&, writer] {
                for (int i = 0; i < writes; ++i) file.write(fmt::format("{}.{}", writer, i), i);
            });
    }
    EXPECT_EQ(file.read().values.size(), writers * writes);
}

TEST_F(SettingsFileTest, ALockThatIsNotGivenBackIsToldInTime) {
    contain("{}");
    const auto lock = FileLock::tryToTake(path.native() + ".lock");
    EXPECT_EQ(failure(),
              "Another program is changing the settings in “" + path.native() + "”. Try again later.");
    EXPECT_EQ(contentsOf(path), "{}");
}

}  // namespace
}  // namespace brindle
