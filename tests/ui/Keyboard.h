#pragma once

#include "ui/Scene.h"

#include <QAccessible>
#include <string>
#include <vector>

namespace brindle {

/// The item that has the keyboard, as a screen reader calls it.
[[nodiscard]] inline std::string focusedName(Scene& scene) {
    QQuickItem* item = scene.window().activeFocusItem();
    auto* reader = item == nullptr ? nullptr : QAccessible::queryAccessibleInterface(item);
    return reader == nullptr ? std::string() : reader->text(QAccessible::Name).toStdString();
}

/// What the keyboard comes to with Tab, once around, in this order.
[[nodiscard]] inline std::vector<std::string> tabbedNames(Scene& scene) {
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i) {
        scene.press(Qt::Key_Tab);
        const std::string name = focusedName(scene);
        if (!names.empty() && name == names.front()) break;
        names.push_back(name);
    }
    return names;
}

/// Moves the keyboard on to the item of this name. False when it does not come there.
[[nodiscard]] inline bool tabTo(Scene& scene, const std::string& name) {
    for (int i = 0; i < 40; ++i) {
        if (focusedName(scene) == name) return true;
        scene.press(Qt::Key_Tab);
    }
    return false;
}

}  // namespace brindle
