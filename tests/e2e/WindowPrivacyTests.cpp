#include "e2e/Desktop.h"
#include "e2e/SystemCalls.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

namespace fs = std::filesystem;

// A window that checks, and looks for no updates because nobody allowed it.
TEST(WindowPrivacy, ItOpensNoFileOfTheLocationAndNoConnectionAndWritesOnlyItsOwn) {
    const TempFolder folder;
    const fs::path tree = folder.path() / "tree";
    const fs::path trace = folder.path() / "trace";
    for (int i = 0; i < 20; ++i) writeFile(tree / std::to_string(i % 5) / std::to_string(i), 10);
    Desktop desktop;
    static_cast<void>(runProgram(SystemCalls::traced(desktop.brindle.launch({"--version"}), trace)));
    if (SystemCalls::in(trace).empty()) GTEST_SKIP() << "there is no strace, or it may not trace";
    desktop.track({tree});
    writeFile(tree / "0/new", 10);

    desktop.program = std::make_unique<RunningProgram>(SystemCalls::traced(desktop.launch(), trace));
    ASSERT_TRUE(eventually([&] { return desktop.session.hasService("org.brindle.brindle"); }));
    desktop.check();
    EXPECT_EQ(desktop.quit().exitCode, 0);
    // Qt keeps its own of the window in the program's cache.
    const fs::path home = desktop.brindle.home();
    EXPECT_GE(expectPrivate(SystemCalls::in(trace), tree,
                            {desktop.brindle.dataDirectory(), desktop.brindle.settingsFile().parent_path(),
                             home / ".cache", home / "run"}),
              6)
        << "the test sees the walk";
}

}  // namespace
}  // namespace brindle
