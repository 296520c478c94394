#pragma once

#include <QDBusConnection>
#include <QObject>

namespace brindle {

/// Knows whether the desktop shows tray items that are offered over the session bus. Nothing here waits.
class TrayHost : public QObject {
    Q_OBJECT

public:
    explicit TrayHost(QDBusConnection sessionBus);

    /// False until the answer has come.
    [[nodiscard]] bool isThere() const { return isThere_; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void ask();

private:
    void tell(bool isThere);

    QDBusConnection bus_;
    int questions_ = 0;  // only the answer to the last one counts
    bool isThere_ = false;
};

}  // namespace brindle
