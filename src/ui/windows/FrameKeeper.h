#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>

class QWindow;

namespace brindle {

/// A window's place and size as text: "x y width height", in device-independent pixels.
[[nodiscard]] std::string frameText(const QRect& frame);
/// Nothing for other texts, and for a window without any size.
[[nodiscard]] std::optional<QRect> frameFrom(const std::string& text);

/// The frame, moved and made smaller as it takes to lie within one of the screens: the one that it was on,
/// or the first when that one is gone. `screens` is not empty.
[[nodiscard]] QRect fitted(QRect frame, const QList<QRect>& screens);

/// Has a window remember its size and place. Where the window system refuses to tell or set the place, the
/// size is still kept.
/// Thread: main.
class FrameKeeper : public QObject {
    Q_OBJECT

public:
    /// Places the window as `stored` says, and calls `store` a moment after it was moved or resized, and
    /// when it is hidden. What it is while maximised or full screen is not remembered.
    FrameKeeper(QWindow& window, const std::string& stored, std::function<void(const std::string&)> store);

private:
    void changed();
    void storeNow();

    QWindow& window_;
    std::function<void(const std::string&)> store_;
    QTimer timer_;
};

}  // namespace brindle
