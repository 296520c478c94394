#include "platform/PrivateFiles.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace brindle {
namespace {

namespace fs = std::filesystem;

int permissionsOf(const fs::path& path) {
    return static_cast<int>(fs::status(path).permissions());
}

TEST(PrivateFiles, AreTheirOwnersAloneAndWhatIsThereIsLeftAsItIs) {
    const TempFolder folder;
    const mode_t umask = ::umask(0777);
    createPrivateDirectory((folder.path() / "a/./b//c/").native());
    createPrivateFile((folder.path() / "a/b/c/file").native());
    ::umask(umask);
    for (const auto* made : {"a", "a/b", "a/b/c"})
        EXPECT_EQ(permissionsOf(folder.path() / made), 0700) << made;
    EXPECT_EQ(permissionsOf(folder.path() / "a/b/c/file"), 0600);

    const auto open = folder.path() / "open";
    fs::create_directory(open);
    fs::permissions(open, fs::perms::all);
    fs::create_directory_symlink(open, folder.path() / "link");
    std::ofstream(open / "file") << "kept";
    fs::permissions(open / "file", fs::perms(0644));
    createPrivateDirectory(open);
    createPrivateDirectory(folder.path() / "link");
    createPrivateFile(open / "file");
    EXPECT_EQ(permissionsOf(open), 0777);
    EXPECT_EQ(permissionsOf(open / "file"), 0644);
    EXPECT_EQ(fs::file_size(open / "file"), 4U);
}

TEST(PrivateFiles, AFailureNamesThePath) {
    const TempFolder folder;
    std::ofstream(folder.path() / "file").close();
    fs::create_symlink(folder.path() / "elsewhere", folder.path() / "dangling");
    fs::create_symlink(folder.path() / "file", folder.path() / "link");

    const struct {
        const char* name;
        void (*act)(const std::string&);
        std::errc error;
    } cases[] = {
        {"file", createPrivateDirectory, std::errc::not_a_directory},
        {"dangling", createPrivateDirectory, std::errc::not_a_directory},
        {"link", createPrivateFile, std::errc::too_many_symbolic_link_levels},
        {"dangling", createPrivateFile, std::errc::too_many_symbolic_link_levels},
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

}  // namespace
}  // namespace brindle
