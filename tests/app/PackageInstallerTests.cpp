#include "app/EventLoop.h"
#include "app/PackageInstaller.h"
#include "app/PrivateBus.h"
#include "app/SoftwareManager.h"
#include "platform/WholeFile.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(PackageInstaller, AsksTheSoftwareManagerAndElseOpensThePackage) {
    const TempFolder folder;
    PrivateBus bus;
    const std::string openedFile = folder.path() / "opened";
    const std::string opener = folder.path() / "opener";
    std::ofstream(opener) << "#!/bin/sh\nprintf %s \"$*\" >" << openedFile << ".new\nmv " << openedFile
                          << ".new " << openedFile << "\n";
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);

    const auto install = [&](const std::string& package, const std::string& program) {
        SystemPackageInstaller installer(bus.connect(), QString::fromStdString(program));
        std::optional<bool> taken;
        installer.install(package, [&taken](bool isTaken) { taken = isTaken; });
        EXPECT_TRUE(runUntil([&taken] { return taken.has_value(); }));
        return taken;
    };
    const auto opened = [&openedFile] {
        EXPECT_TRUE(runUntil([&] { return std::filesystem::exists(openedFile); }));
        const auto text = readWholeFile(openedFile, 1000);
        std::filesystem::remove(openedFile);
        return text;
    };

    EXPECT_EQ(install("/tmp/a b.deb", opener), true);
    EXPECT_EQ(opened(), "/tmp/a b.deb");
    EXPECT_EQ(install("/tmp/a.deb", opener + "-gone"), false);
    EXPECT_EQ(install("/tmp/a\xff.deb", opener), false);  // no text that another program could be given

    SoftwareManager manager;
    auto itsBus = bus.connect();
    ASSERT_TRUE(
        itsBus.registerObject("/org/freedesktop/PackageKit", &manager, QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(itsBus.registerService("org.freedesktop.PackageKit"));
    EXPECT_EQ(install("/tmp/a.deb", opener), true);
    EXPECT_EQ(manager.installed, QStringList("/tmp/a.deb"));

    manager.error = "org.freedesktop.PackageKit.Modify.Failed";
    EXPECT_EQ(install("/tmp/b.deb", opener), true);
    EXPECT_EQ(opened(), "/tmp/b.deb");
    manager.error = "org.freedesktop.PackageKit.Modify.Cancelled";
    EXPECT_EQ(install("/tmp/c.deb", opener + "-gone"), true) << "the user said no";
    EXPECT_FALSE(std::filesystem::exists(openedFile));
}

}  // namespace
}  // namespace brindle
