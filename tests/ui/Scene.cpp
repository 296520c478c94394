#include "ui/Scene.h"

#include <QQmlComponent>
#include <QTest>
#include <stdexcept>

namespace brindle {
namespace {

// Not findChild(): what a Repeater makes is a child of the window's tree only.
QQuickItem* find(QQuickItem& item, const QString& name) {
    if (item.objectName() == name) return &item;
    for (QQuickItem* child : item.childItems())
        if (QQuickItem* found = find(*child, name)) return found;
    return nullptr;
}

}  // namespace

Scene::Scene(const Preferences& preferences)
    : settings_(preferences, SettingsFile((folder_.path() / "preferences.json").string())),
      appearance_(settings_) {
    engine_.addImportPath("qrc:/qt/qml");
    QObject::connect(&engine_, &QQmlEngine::warnings, [this](const QList<QQmlError>& warnings) {
        for (const QQmlError& warning : warnings) warnings_ += warning.toString();
    });
}

Scene::~Scene() = default;

QQuickItem& Scene::show(const QByteArray& qml, QSize size, const QVariantMap& properties) {
    shown_.reset();
    QQmlComponent component(&engine_);
    component.setData(
        "import QtQuick\nimport QtQuick.Layouts\nimport Brindle.Theme\nimport Brindle.Marks\n"
        "import Brindle.Parts\nimport Brindle.Pages\n" +
            qml,
        QUrl());
    if (component.isReady())
        shown_.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(properties)));
    if (!shown_) throw std::runtime_error(component.errorString().toStdString());
    shown_->setParentItem(window_.contentItem());
    shown_->setSize(size);
    window_.resize(size);
    window_.setColor(appearance_.color(ColorToken::ground));
    window_.show();
    window_.requestActivate();
    if (!QTest::qWaitForWindowActive(&window_)) throw std::runtime_error("the window does not come up");
    return *shown_;
}

QQuickItem& Scene::item(const QString& name) {
    if (name.isEmpty()) return *shown_;
    QQuickItem* found = find(*shown_, name);
    if (found == nullptr) throw std::runtime_error("there is no " + name.toStdString());
    return *found;
}

void Scene::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&window_, key, modifiers);
}

void Scene::click(QQuickItem& item) {
    const QPointF middle = item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
    QTest::mouseClick(&window_, Qt::LeftButton, {}, middle.toPoint());
}

void Scene::hover(QQuickItem& item) {
    QTest::mouseMove(&window_, item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint());
}

}  // namespace brindle
