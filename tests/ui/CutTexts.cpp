#include "ui/CutTexts.h"

#include <QString>
#include <QTest>

namespace brindle {
namespace {

std::string cutNow(QQuickItem& item, QQuickItem& all, BeyondTheEdge beyond) {
    if (!item.isVisible()) return "";
    std::string found;
    if (item.inherits("QQuickText") && item.property("text").toString() != "") {
        const QRectF place = item.mapRectToItem(&all, {0, 0, item.width(), item.height()});
        const bool isInside = QRectF(-1, -1, all.width() + 2, all.height() + 2).contains(place);
        const char* fault = nullptr;
        if (item.property("truncated").toBool()) fault = "is shortened";
        if (item.property("contentWidth").toDouble() > item.width() + 1) fault = "is wider than its place";
        if (item.property("contentHeight").toDouble() > item.height() + 1) fault = "is higher than its place";
        if (!isInside) fault = beyond == BeyondTheEdge::isCut ? "is beyond the edge" : nullptr;
        if (fault != nullptr)
            found = item.property("text").toString().simplified().toStdString() + " " + fault + "\n";
    }
    for (QQuickItem* child : item.childItems()) found += cutNow(*child, all, beyond);
    return found;
}

}  // namespace

std::string cutTexts(QQuickItem& item, BeyondTheEdge beyond) {
    std::string found;
    static_cast<void>(QTest::qWaitFor([&] { return (found = cutNow(item, item, beyond)).empty(); }, 5000));
    return found;
}

}  // namespace brindle
