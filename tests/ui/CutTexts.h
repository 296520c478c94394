#pragma once

#include <QQuickItem>
#include <QString>
#include <string>

namespace brindle {

/// The texts in `item` that do not show whole within `all`, a line each: shortened, larger than their place,
/// or beyond its edges. Empty when all do.
inline std::string cutTexts(QQuickItem& item, QQuickItem& all) {
    if (!item.isVisible()) return "";
    std::string found;
    if (item.inherits("QQuickText") && item.property("text").toString() != "") {
        const QRectF place = item.mapRectToItem(&all, {0, 0, item.width(), item.height()});
        const char* fault = nullptr;
        if (item.property("truncated").toBool()) fault = "is shortened";
        if (item.property("contentWidth").toDouble() > item.width() + 1) fault = "is wider than its place";
        if (item.property("contentHeight").toDouble() > item.height() + 1) fault = "is higher than its place";
        if (!QRectF(-1, -1, all.width() + 2, all.height() + 2).contains(place)) fault = "is beyond the edge";
        if (fault != nullptr)
            found = item.property("text").toString().simplified().toStdString() + " " + fault + "\n";
    }
    for (QQuickItem* child : item.childItems()) found += cutTexts(*child, all);
    return found;
}

inline std::string cutTexts(QQuickItem& all) {
    return cutTexts(all, all);
}

}  // namespace brindle
