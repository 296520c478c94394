#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantMap>
#include <optional>

namespace brindle {

/// How the user wants all programs to look.
struct SystemAppearance {
    std::optional<bool> prefersDark;  // nothing where the desktop does not tell
    bool isContrastIncreased = false;
    bool isMotionReduced = false;

    bool operator==(const SystemAppearance&) const = default;
};

/// Follows the desktop's settings for appearance, as its portal tells them.
///
/// The first answer comes through the event loop; without a portal there is none. Thread: main.
class AppearanceWatch : public QObject {
    Q_OBJECT

public:
    /// A bus that is not connected is no error.
    explicit AppearanceWatch(const QDBusConnection& sessionBus);

    [[nodiscard]] const SystemAppearance& appearance() const { return appearance_; }

Q_SIGNALS:
    void appearanceChanged();

private Q_SLOTS:
    void settingChanged(const QDBusMessage& signal);

private:
    void readAll();
    void update();

    QDBusConnection bus_;
    QDBusServiceWatcher portal_;
    QMap<QString, QVariantMap> settings_;  // by name space and key
    SystemAppearance appearance_;
};

}  // namespace brindle
