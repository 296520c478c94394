#include "platform/PrivateFiles.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace brindle {
namespace {

namespace fs = std::filesystem;

int modeOf(const fs::path& path) {
    return static_cast<int>(fs::status(path).permissions());
}

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class WithUmask {
public:
    explicit WithUmask(mode_t mask) : old_(::umask(mask)) {}
    ~WithUmask() { ::umask(old_); }
    WithUmask(const WithUmask&) = delete;
    WithUmask& operator=(const WithUmask&) = delete;

private:
    mode_t old_;
};

TEST(PrivateFiles, AreTheirOwnersAloneWhateverTheUmask) {
    for (const mode_t mask : {mode_t{0}, mode_t{0022}, mode_t{0777}}) {
        const TempFolder folder;
        {
            const WithUmask umask(mask);
            createPrivateDirectory((folder.path() / "a/./b//c/").native());
            createPrivateFile((folder.path() / "a/b/c/file").native());
        }
        for (const auto* made : {"a", "a/b", "a/b/c"}) EXPECT_EQ(modeOf(folder.path() / made), 0700) << mask;
        EXPECT_EQ(modeOf(folder.path() / "a/b/c/file"), 0600) << mask;
    }
}

TEST(PrivateFiles, WhatIsThereIsLeftAsItIs) {
    const TempFolder folder;
    const auto open = folder.path() / "open";
    fs::create_directory(open);
    fs::permissions(open, fs::perms::all);
    std::ofstream(open / "file") << "kept";
    fs::permissions(open / "file", fs::perms(0644));
    fs::create_directory_symlink(open, folder.path() / "link");

    createPrivateDirectory(open);
    createPrivateDirectory(folder.path() / "link");
    createPrivateFile(open / "file");
    EXPECT_EQ(modeOf(open), 0777);
    EXPECT_EQ(modeOf(open / "file"), 0644);
    EXPECT_EQ(contentsOf(open / "file"), "kept");
}

TEST(PrivateFiles, AFailureNamesThePath) {
    const TempFolder folder;
    std::ofstream(folder.path() / "file").close();
    fs::create_symlink(folder.path() / "elsewhere", folder.path() / "dangling");
    fs::create_symlink(folder.path() / "file", folder.path() / "link");
    fs::create_directory(folder.path() / "folder");

    const struct {
        const char* name;
        void (*act)(const std::string&);
        std::errc error;
    } cases[] = {
        {"file", createPrivateDirectory, std::errc::not_a_directory},
        {"file/below", createPrivateDirectory, std::errc::not_a_directory},
        {"dangling", createPrivateDirectory, std::errc::not_a_directory},
        {"link", createPrivateFile, std::errc::too_many_symbolic_link_levels},
        {"dangling", createPrivateFile, std::errc::too_many_symbolic_link_levels},
        {"folder", createPrivateFile, std::errc::file_exists},
        {"absent/file", createPrivateFile, std::errc::no_such_file_or_directory},
        {"absent", syncToDisk, std::errc::no_such_file_or_directory},
    };
    for (const auto& [name, act, error] : cases) {
        const auto path = (folder.path() / name).native();
        try {
            act(path);
            ADD_FAILURE() << name << " did not fail";
        } catch (const std::system_error& failure) {
            EXPECT_EQ(failure.code(), error) << name << ": " << failure.what();
            EXPECT_THAT(failure.what(), testing::HasSubstr(path));
        }
    }
    EXPECT_FALSE(fs::exists(folder.path() / "elsewhere"));
}

TEST(PrivateFiles, OneTakesThePlaceOfAnother) {
    const TempFolder folder;
    std::ofstream(folder.path() / "old") << "old";
    std::ofstream(folder.path() / "new") << "new";
    syncToDisk(folder.path() / "new");
    replaceFile(folder.path() / "new", folder.path() / "old");
    EXPECT_EQ(contentsOf(folder.path() / "old"), "new");
    EXPECT_FALSE(fs::exists(folder.path() / "new"));
    EXPECT_THROW(replaceFile(folder.path() / "new", folder.path() / "old"), std::system_error);
    EXPECT_EQ(contentsOf(folder.path() / "old"), "new");
}

}  // namespace
}  // namespace brindle
