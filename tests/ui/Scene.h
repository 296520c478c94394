#pragma once

#include "support/TempFolder.h"
#include "ui/theme/Appearance.h"

#include <QByteArray>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <memory>
#include <string>

namespace brindle {

/// A window of its own that shows a piece of QML, with settings and an appearance of its own.
class Scene {
public:
    explicit Scene(const Preferences& preferences = {});
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    [[nodiscard]] Settings& settings() { return settings_; }
    [[nodiscard]] Appearance& appearance() { return appearance_; }
    [[nodiscard]] QQuickWindow& window() { return window_; }

    /// Shows one item with these properties, which fills the window; modules of QtQuick and Brindle are
    /// imported already. Throws std::runtime_error with the engine's words when it cannot be made.
    QQuickItem& show(const QByteArray& qml, QSize size = {960, 680}, const QVariantMap& properties = {});
    /// What was last shown, or an item in it, by its objectName. Throws when there is none.
    [[nodiscard]] QQuickItem& item(const QString& name = {});
    /// What the engine warned of since the scene was made.
    [[nodiscard]] std::string warnings() const { return warnings_.join('\n').toStdString(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void click(QQuickItem& item);
    void hover(QQuickItem& item);

private:
    TempFolder folder_;
    Settings settings_;
    Appearance appearance_;
    QStringList warnings_;
    QQmlEngine engine_;
    QQuickWindow window_;
    std::unique_ptr<QQuickItem> shown_;
};

}  // namespace brindle
