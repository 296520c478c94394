#include "app/EventLoop.h"
#include "ui/windows/FrameKeeper.h"

#include <QWindow>
#include <gtest/gtest.h>
#include <vector>

namespace brindle {
namespace {

TEST(FrameKeeper, ReadsWhatItWroteAndNothingElse) {
    const QRect frame(-20, 40, 1180, 820);
    EXPECT_EQ(frameFrom(frameText(frame)), frame);
    for (const char* text : {"", "1 2 3", "1 2 3 4 5", "1 2 0 4", "1 2 3 -4", "a b c d", "1 2 3 4x"})
        EXPECT_EQ(frameFrom(text), std::nullopt) << text;
}

TEST(FrameKeeper, AWindowIsNeverOutOfReach) {
    const QList<QRect> screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
    struct Case {
        QRect stored;
        QRect shown;
    };
    for (const auto& [stored, shown] : {Case{{100, 50, 960, 680}, {100, 50, 960, 680}},
                                        {{2000, 100, 960, 680}, {2000, 100, 960, 680}},  // on the second
                                        {{1800, 100, 960, 680}, {1920, 100, 960, 680}},  // mostly there
                                        {{-500, -300, 960, 680}, {0, 0, 960, 680}},      // half outside
                                        {{9000, 9000, 960, 680}, {960, 400, 960, 680}},  // its screen is gone
                                        {{0, 0, 4000, 3000}, {0, 0, 1920, 1080}}})       // was a larger one
        EXPECT_EQ(fitted(stored, screens), shown) << frameText(stored);
}

TEST(FrameKeeper, StoresOnceAfterAMoveAndWhenHidden) {
    std::vector<std::string> stored;
    QWindow window;
    const FrameKeeper keeper(window, "30 40 300 200",
                             [&](const std::string& frame) { stored.push_back(frame); });
    EXPECT_EQ(window.geometry(), QRect(30, 40, 300, 200));
    window.show();
    stored.clear();
    for (int width = 310; width <= 350; width += 10) window.resize(width, 200);
    EXPECT_TRUE(runUntil([&] { return !stored.empty(); }));
    EXPECT_EQ(stored, std::vector<std::string>{"30 40 350 200"});

    bool isResized = false;
    QObject::connect(&window, &QWindow::heightChanged, [&] { isResized = true; });
    window.resize(400, 250);
    EXPECT_TRUE(runUntil([&] { return isResized; }));
    window.hide();
    EXPECT_EQ(stored.back(), "30 40 400 250");
}

}  // namespace
}  // namespace brindle
