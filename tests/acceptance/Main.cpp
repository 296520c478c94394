#include "acceptance/UserSession.h"
#include "support/TestMounts.h"
#include "ui/DesktopApplication.h"

#include <gtest/gtest.h>

namespace brindle {

UserSession* session = nullptr;

}  // namespace brindle

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
    // Before there are other threads, which would keep the mounts that they have.
    static_cast<void>(brindle::enterOwnMountTable());
    brindle::UserSession session;
    brindle::session = &session;
    brindle::DesktopApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
