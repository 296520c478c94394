#include "app/DesktopEntry.h"
#include "app/LoginItem.h"
#include "platform/WholeFile.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>

namespace brindle {
namespace {

constexpr auto enabled = PlainLoginItemStatus::enabled;
constexpr auto disabled = PlainLoginItemStatus::disabled;
const LoginItemUnavailable noProgram{
    "Brindle's program file can't be found to open at login. Install Brindle and try again."};

class LoginItem : public testing::Test {
protected:
    LoginItem() { makeProgram("brindle-desktop"); }

    void makeProgram(const std::string& name) const {
        std::ofstream(folder_.path() / name) << "#!/bin/sh\n";
        std::filesystem::permissions(folder_.path() / name, std::filesystem::perms::owner_all);
    }
    [[nodiscard]] std::string inFolder(const std::string& name) const { return folder_.path() / name; }
    [[nodiscard]] SystemLoginItem item(const std::string& program = "brindle-desktop") const {
        const auto environment = [this](const char* name) -> std::optional<std::string> {
            const std::map<std::string, std::string> values{{"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"},
                                                            {"PATH", "/nowhere:" + inFolder("")}};
            const auto value = values.find(name);
            return value == values.end() ? std::nullopt : std::optional(value->second);
        };
        return {entryPath(), inFolder(program), environment};
    }
    [[nodiscard]] std::string entryPath() const {
        return inFolder("config/autostart/org.brindle.brindle.desktop");
    }
    void writeEntry(const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(entryPath()).parent_path());
        std::ofstream(entryPath(), std::ios::binary) << text;
    }
    [[nodiscard]] std::string entryText() const { return readWholeFile(entryPath(), 1U << 20U).value_or(""); }

    TempFolder folder_;
};

TEST_F(LoginItem, IsSwitchedOnAndOff) {
    auto login = item();
    EXPECT_EQ(login.status(), LoginItemStatus(disabled));
    login.disable();
    login.enable();
    EXPECT_EQ(login.status(), LoginItemStatus(enabled));
    EXPECT_EQ(entryText(),
              "[Desktop Entry]\nType=Application\nName=Brindle\nIcon=org.brindle.brindle\nExec=" +
                  inFolder("brindle-desktop") + " --launched-at-login\n");
    login.disable();
    EXPECT_EQ(login.status(), LoginItemStatus(disabled));
    EXPECT_FALSE(std::filesystem::exists(entryPath()));
}

TEST_F(LoginItem, UnderstandsEntriesOfOthersAndMendsThem) {
    const std::string head = "[Desktop Entry]\nType=Application\nName=Brindle\n";
    const std::string fresh = head + "Icon=org.brindle.brindle\n";
    const std::string exec = "Exec=" + inFolder("brindle-desktop") + " --launched-at-login\n";
    const struct {
        const char* name;
        std::string text;
        LoginItemStatus status;
        std::string switchedOn;
    } cases[] = {
        {"Hidden", head + exec + "Hidden=true\nX-Delay=5\n", disabled, head + exec + "X-Delay=5\n"},
        {"NotHidden", head + exec + "Hidden=false\n", enabled, head + exec + "Hidden=false\n"},
        {"SwitchedOffByGnome", head + "X-GNOME-Autostart-enabled = false\n" + exec, disabled, head + exec},
        {"ForOthers", head + exec + "OnlyShowIn=KDE;XFCE;\n", disabled, head + exec},
        {"ForThis", head + exec + "OnlyShowIn=KDE;GNOME\n", enabled, head + exec + "OnlyShowIn=KDE;GNOME\n"},
        {"NotForThis", head + exec + "NotShowIn=GNOME;\n", disabled, head + exec},
        {"WithoutExec", head, disabled, head + exec},
        {"ProgramGone", head + "Exec=/opt/gone/brindle-desktop --launched-at-login\n", disabled, head + exec},
        {"TriedProgramGone", head + "TryExec=gone\n" + exec, disabled, head + exec},
        {"FoundInPath", head + "TryExec=brindle-desktop\nExec=brindle-desktop --launched-at-login %U\n",
         enabled, head + "TryExec=brindle-desktop\nExec=brindle-desktop --launched-at-login %U\n"},
        {"QuotationWithoutEnd", head + "Exec=\"brindle-desktop\n", disabled, head + exec},
        {"DoesNotTellLogin", head + "Exec=brindle-desktop\n", enabled, head + exec},
        {"WithoutType",
         "# mine\n\n[Desktop Entry]\r\nName=My Brindle\r\nName[pl]=Mój\n" + exec +
             "\n[Desktop Action Quit]\nExec=kill\n",
         disabled,
         "# mine\n\n[Desktop Entry]\r\nName=My Brindle\r\nName[pl]=Mój\n" + exec +
             "Type=Application\n\n[Desktop Action Quit]\nExec=kill\n"},
        {"LastOfTwo", head + "Hidden=true\nHidden=false\n" + exec, enabled,
         head + "Hidden=true\nHidden=false\n" + exec},
        {"Empty", "", disabled, fresh + exec},
        {"AnotherGroup", "[Other]\n" + exec, disabled, fresh + exec},
        {"NoKeys", "[Desktop Entry]\nExec\n", disabled, fresh + exec},
        {"Bytes", std::string("[Desktop Entry]\n\0\n", 18), disabled, fresh + exec},
        {"Huge", head + exec + std::string(1U << 17U, '\n'), disabled, fresh + exec},
    };
    for (const auto& [name, text, status, switchedOn] : cases) {
        SCOPED_TRACE(name);
        writeEntry(text);
        auto login = item();
        EXPECT_EQ(login.status(), status);
        login.enable();
        EXPECT_EQ(login.status(), LoginItemStatus(enabled));
        EXPECT_EQ(entryText(), switchedOn);
    }
}

TEST_F(LoginItem, IsUnavailableWithoutAProgramToStart) {
    auto login = item("gone");
    EXPECT_EQ(login.status(), LoginItemStatus(noProgram));
    EXPECT_THROW(login.enable(), LoginItemError);
    EXPECT_FALSE(std::filesystem::exists(entryPath()));

    writeEntry("[Desktop Entry]\nType=Application\nExec=" + inFolder("gone") + "\n");
    EXPECT_EQ(login.status(), LoginItemStatus(noProgram));
    writeEntry("[Desktop Entry]\nType=Application\nExec=brindle-desktop\n");
    EXPECT_EQ(login.status(), LoginItemStatus(enabled));  // it starts, whoever was asked

    UnavailableLoginItem inert;
    inert.enable();
    inert.disable();
    EXPECT_EQ(inert.status(), LoginItemStatus(LoginItemUnavailable{"Open at login isn't available here."}));
}

TEST_F(LoginItem, TellsWhatKeepsItFromChanging) {
    std::ofstream(inFolder("config")) << "a file where the folder should be";
    auto login = item();
    EXPECT_EQ(login.status(), LoginItemStatus(disabled));
    try {
        login.enable();
        FAIL();
    } catch (const LoginItemError& error) {
        EXPECT_EQ(error.what(), "“" + entryPath() + "” can't be changed (Not a directory).");
    }
}

TEST(DesktopEntryExec, IsQuotedAndReadBack) {
    const struct {
        const char* value;
        std::vector<std::string> command;
    } cases[] = {
        {"/usr/bin/brindle-desktop -x", {"/usr/bin/brindle-desktop", "-x"}},
        {"\"/opt/My Programs/brindle\"", {"/opt/My Programs/brindle"}},
        {R"("/opt/a\\\\b")", {R"(/opt/a\b)"}},
        {R"("/opt/\\$HOME\\`\\"")", {"/opt/$HOME`\""}},
        {"\"/opt/it's\"", {"/opt/it's"}},
        {"/opt/100%% \"\"", {"/opt/100%", ""}},
        {R"("/opt/a\nb")", {"/opt/a\nb"}},
        {"/opt/grün", {"/opt/grün"}},
    };
    for (const auto& [value, command] : cases) {
        EXPECT_EQ(commandOfExec(value), command) << value;
        EXPECT_EQ(execOfCommand(command), value);
    }
    // What others write, and what is no command at all.
    EXPECT_EQ(commandOfExec("  env  'A B=1' /bin/br\\\\ le %U --icon=%i "),
              (std::vector<std::string>{"env", "A B=1", "/bin/br le", "--icon="}));
    for (const char* broken : {"", "  ", "%U", "\"\"", "'/bin/true", "\"/bin/true\\\\\""})
        EXPECT_EQ(commandOfExec(broken), std::nullopt) << broken;
}

}  // namespace
}  // namespace brindle
