#include "ui/windows/FrameKeeper.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <sstream>

namespace brindle {

std::string frameText(const QRect& frame) {
    return fmt::format("{} {} {} {}", frame.x(), frame.y(), frame.width(), frame.height());
}

std::optional<QRect> frameFrom(const std::string& text) {
    std::istringstream words(text);
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (!(words >> x >> y >> width >> height) || !(words >> std::ws).eof() || width <= 0 || height <= 0)
        return {};
    return QRect(x, y, width, height);
}

QRect fitted(QRect frame, const QList<QRect>& screens) {
    const auto shown = [&](const QRect& screen) {
        const QRect common = screen.intersected(frame);
        return std::int64_t{common.width()} * common.height();
    };
    const QRect screen = *std::ranges::max_element(screens, {}, shown);
    frame.setSize(frame.size().boundedTo(screen.size()));
    frame.moveLeft(std::clamp(frame.left(), screen.left(), screen.right() - frame.width() + 1));
    frame.moveTop(std::clamp(frame.top(), screen.top(), screen.bottom() - frame.height() + 1));
    return frame;
}

FrameKeeper::FrameKeeper(QWindow& window, const std::string& stored,
                         std::function<void(const std::string&)> store)
    : window_(window), store_(std::move(store)) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) screens.append(screen->availableGeometry());
    if (const auto frame = frameFrom(stored); frame && !screens.empty())
        window.setGeometry(fitted(*frame, screens));

    timer_.setSingleShot(true);
    timer_.setInterval(std::chrono::milliseconds(500));
    connect(&timer_, &QTimer::timeout, this, &FrameKeeper::storeNow);
    for (const auto signal :
         {&QWindow::xChanged, &QWindow::yChanged, &QWindow::widthChanged, &QWindow::heightChanged})
        connect(&window, signal, this, &FrameKeeper::changed);
    connect(&window, &QWindow::visibleChanged, this, [this] {
        if (timer_.isActive()) storeNow();
        // Window managers find a place of their own for a window that has not said where it belongs.
        if (!window_.isVisible()) window_.setGeometry(window_.geometry());
    });
}

void FrameKeeper::changed() {
    if (window_.isVisible() && window_.visibility() == QWindow::Windowed) timer_.start();
}

void FrameKeeper::storeNow() {
    timer_.stop();
    if (window_.visibility() == QWindow::Windowed || window_.visibility() == QWindow::Hidden)
        store_(frameText(window_.geometry()));
}

}  // namespace brindle
